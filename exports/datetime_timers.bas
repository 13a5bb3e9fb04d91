' Timers and waits: numbered stopwatches 0..65 (0 is the basis timer),
' countdown waits 0..65, handle timers 1..64 and a message-pumping pause.
Declare Function cStartBasisTimer () As Long
Declare Function cStopBasisTimer () As Long
Declare Function cReadBasisTimer () As Long
Declare Function cStartTimer (ByVal Timer As Integer) As Integer
Declare Function cStopTimer (ByVal Timer As Integer) As Long
Declare Function cReadTimer (ByVal Timer As Integer) As Long
Declare Function cSetWait (ByVal Timer As Integer, ByVal Duration As Long) As Integer
Declare Function cStartWait (ByVal Timer As Integer) As Integer
Declare Function cCheckWait (ByVal Timer As Integer) As Integer
Declare Function cSleep (ByVal Milliseconds As Long) As Integer
Declare Function cTimerOpen () As Integer
Declare Function cTimerReset (ByVal Handle As Integer) As Integer
Declare Function cTimerStart (ByVal Handle As Integer) As Integer
Declare Function cTimerRead (ByVal Handle As Integer) As Long
Declare Function cTimerClose (ByVal Handle As Integer) As Integer
