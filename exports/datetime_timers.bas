' Timers and waits: numbered stopwatches 0 to 65 (0 is the basis timer), countdown
' waits 0 to 65, handle timers 1 to 64 and a pause that keeps windows responsive.
' All count milliseconds on the system tick counter, and elapsed times survive one
' wrap of the counter (every 49.7 days). The tables are shared by the whole
' process and are not locked.

' Starts the basis timer, which is numbered timer 0.
' Returns: the tick count at the start, in milliseconds from an arbitrary origin
'   (on Windows, since the system started; negative after 24.8 days of uptime).
Declare Function cStartBasisTimer () As Long
' Stops the basis timer and gives the time since cStartBasisTimer.
' Stopping only records the time: cReadBasisTimer afterwards still counts from the
' start. The same as cStopTimer(0).
' Returns: the elapsed milliseconds.
Declare Function cStopBasisTimer () As Long
' Gives the time since cStartBasisTimer, leaving the timer running.
' The same as cReadTimer(0).
' Returns: the elapsed milliseconds.
Declare Function cReadBasisTimer () As Long
' Starts a numbered stopwatch.
' Timer: the stopwatch, 0 to 65; 0 is the basis timer.
' Returns: True (-1) when started; False (0) when Timer is outside 0 to 65.
' Example:
'   cStartTimer 5
'   ' ... the work to measure ...
'   Debug.Print cStopTimer(5); "ms"
Declare Function cStartTimer (ByVal Timer As Integer) As Integer
' Stops a numbered stopwatch and gives the time since cStartTimer.
' Stopping only records the time: cReadTimer afterwards still counts from the
' start. A stopwatch never started counts from the tick count 0.
' Timer: the stopwatch, 0 to 65.
' Returns: the elapsed milliseconds; 0 when Timer is outside 0 to 65.
Declare Function cStopTimer (ByVal Timer As Integer) As Long
' Gives the time since a numbered stopwatch was started, leaving it running.
' Timer: the stopwatch, 0 to 65.
' Returns: the elapsed milliseconds; 0 when Timer is outside 0 to 65.
Declare Function cReadTimer (ByVal Timer As Integer) As Long
' Sets the length of a countdown wait.
' Setting it does not start the wait: cStartWait does.
' Timer: the wait, 0 to 65; waits are separate from the stopwatches of the same
'   numbers.
' Duration: the length in milliseconds, 0 or more; a negative value is not
'   refused, but the wait then does not last as meant.
' Returns: True (-1) when set; False (0) when Timer is outside 0 to 65.
Declare Function cSetWait (ByVal Timer As Integer, ByVal Duration As Long) As Integer
' Starts or restarts a countdown wait.
' Its deadline becomes now plus the length given to cSetWait (0 when never set).
' Timer: the wait, 0 to 65.
' Returns: True (-1) when started; False (0) when Timer is outside 0 to 65.
Declare Function cStartWait (ByVal Timer As Integer) As Integer
' Tells whether a countdown wait has run out.
' Timer: the wait, 0 to 65.
' Returns: True (-1) once the deadline set by cStartWait has passed; False (0)
'   before it, and for a Timer outside 0 to 65.
' Note: the number is checked here as in the other wait calls, so a wrong one
'   answers False instead of reading outside the library's table.
' Example:
'   cSetWait 1, 5000
'   cStartWait 1
'   Do Until cCheckWait(1)
'     DoEvents
'   Loop
Declare Function cCheckWait (ByVal Timer As Integer) As Integer
' Pauses for a number of milliseconds while the program's windows stay responsive.
' Window messages waiting for the calling thread are dispatched all through the
' pause, so forms repaint and controls react; an event procedure may therefore run
' before cSleep returns. The pause ends once the tick count has passed the start
' plus Milliseconds, so it lasts a little longer than asked.
' Milliseconds: the length of the pause; 0 dispatches the waiting messages once.
' Returns: True (-1) after the pause; False (0) at once when Milliseconds is
'   negative.
' Note: between messages the library sleeps until the next message arrives or the
'   time is up, rather than keeping the processor busy, so a long pause costs no
'   processor time. On Linux, which has no window messages, it simply sleeps.
Declare Function cSleep (ByVal Milliseconds As Long) As Integer
' Opens a handle timer.
' Opening does not start it: call cTimerStart or cTimerReset before the first
' cTimerRead, or the reading counts from where the handle's previous user started
' it (or from the tick count 0).
' Returns: the lowest free handle, 1 to 64, now in use; 0 when all 64 are open.
' Example:
'   Dim h As Integer
'   h = cTimerOpen()
'   If h <> 0 Then
'     cTimerStart h
'     ' ... the work to measure ...
'     Debug.Print cTimerRead(h); "ms"
'     cTimerClose h
'   End If
Declare Function cTimerOpen () As Integer
' Restarts a handle timer from zero.
' Handle: a handle from cTimerOpen.
' Returns: True (-1) when restarted; False (0) when Handle is outside 1 to 64 or
'   not open.
Declare Function cTimerReset (ByVal Handle As Integer) As Integer
' Starts a handle timer; the same operation as cTimerReset under another name.
' Handle: a handle from cTimerOpen.
' Returns: True (-1) when started; False (0) when Handle is outside 1 to 64 or not
'   open.
Declare Function cTimerStart (ByVal Handle As Integer) As Integer
' Gives the time since a handle timer was last started or reset.
' Handle: a handle from cTimerOpen.
' Returns: the elapsed milliseconds; -1 when Handle is outside 1 to 64 or not
'   open.
Declare Function cTimerRead (ByVal Handle As Integer) As Long
' Closes a handle timer, so that cTimerOpen can hand it out again.
' Handle: a handle from cTimerOpen.
' Returns: True (-1) when closed; False (0) when Handle is outside 1 to 64 or not
'   open (closing twice gives False the second time).
Declare Function cTimerClose (ByVal Handle As Integer) As Integer
