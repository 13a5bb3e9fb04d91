' Processes: start, watch and end other programs, open documents, and the calls bound
' to a program's windows.
'
' The library tracks one child process, started by cProcessCreate and ended or let go
' by cProcessKill and cProcessClose. On Linux a child the program lets go is still
' collected by the library when it ends, so no finished child stays behind as a
' zombie. The calls bound to windows (cSetPriority, cMenuKillClose, cSetFocus) do
' their work on Windows only and give their failure value on Linux, which has no
' such windows.

' Opens a document, a program or an address with the system's "open" action.
' On Windows this is the shell's Open verb with the active window as owner. On Linux
' the file is handed to xdg-open (which must be installed) without waiting for it.
' File: the document, program or address ("https://..." or "mailto:..." are passed on
'   as they are); a relative name is taken in Directory when one is given.
' Parameters: the arguments for a program (Windows); not used on Linux.
' Directory: the working directory; "" for the current one.
' Show: how the window of the program shows (Windows: 1 normal, 3 maximised, 7
'   minimised, ...); not used on Linux.
' Returns: a value above 32 on success; 2 when the file does not exist or File is "";
'   31 when no program is associated with it (on Linux: xdg-open is missing); other
'   values at or below 32 for the shell's other failures.
' Example:
'   If cRunFile("C:\Docs\report.txt", "", "", 1) <= 32 Then MsgBox "Cannot open"
Declare Function cRunFile (ByVal File As String, ByVal Parameters As String, ByVal Directory As String, ByVal Show As Integer) As Long
' Starts a program as the tracked child.
' The first word of the command line names the program, the others are its arguments;
' words are separated by blanks, and a part in double quotes keeps its blanks. A name
' without "\" or "/" is looked for in the directories of the environment variable
' PATH (on Windows with the extensions .exe, .com, .bat and .cmd when it has none);
' otherwise it is used as given. The line never goes through a command interpreter:
' to run a shell command, name the interpreter ("cmd /c dir", "sh -c ...").
' A child already tracked goes on running and is let go, as by cProcessClose.
' CommandLine: the program and its arguments.
' Mode: not used; kept for programs that pass one.
' Returns: True (-1), always. When the program cannot start (not found, not
'   executable, out of memory) nothing is tracked, and the C runtime's errno is 2, 13
'   or 12.
' Example:
'   Call cProcessCreate("notepad.exe C:\Docs\report.txt", 0)
Declare Function cProcessCreate (ByVal CommandLine As String, ByVal Mode As Integer) As Integer
' Ends the tracked child and waits for its end.
' On Windows the child ends at once with exit code 1. On Linux it is sent SIGTERM,
' and SIGKILL when it has not ended 2 seconds later; the call waits at most 5
' seconds in all, looking every 100 milliseconds, so a child that ignores the request
' cannot hold the program up longer. Afterwards nothing is tracked.
' Returns: True (-1), always; at once when no child is tracked.
Declare Function cProcessKill () As Integer
' Lets the tracked child go without stopping it.
' Returns: True (-1), always.
Declare Function cProcessClose () As Integer
' Ends any process, given its identifier.
' The process ends at once (exit code 0 on Windows; SIGKILL on Linux).
' ProcessId: the process's identifier; identifiers below 1 name no process and are
'   never acted on.
' Returns: True (-1) when the process was ended, and also when it cannot be opened
'   (it does not exist, or the program may not touch it); False (0) for the
'   identifier 0, or when the process was opened but would not end.
' Note: the program ends itself when it passes its own identifier.
Declare Function cKillProcess (ByVal ProcessId As Long) As Integer
' Sets the priority class of the program that owns a window.
' Window: the window's handle (hWnd).
' Priority: 64 idle, 128 high, 256 real time; any other value normal.
' Returns: True (-1) on Windows, whether the class could be set or not; False (0) on
'   Linux.
Declare Function cSetPriority (ByVal Window As LongPtr, ByVal Priority As Integer) As Integer
' Removes the Close command from a window's system menu.
' Window: the window's handle (hWnd).
' Returns: True (-1) when the command was removed; False (0) when the window has no
'   system menu or no Close command, and always on Linux.
Declare Function cMenuKillClose (ByVal Window As LongPtr) As Integer
' Gives the keyboard focus to a window of the program.
' Window: the window's handle (hWnd).
' Returns: the handle of the window that had the focus before; 0 when none had it,
'   on failure, and always on Linux.
Declare Function cSetFocus (ByVal Window As LongPtr) As LongPtr
' Shows an environment variable and sets the variable TEST, as a demonstration.
' When the variable VariableName exists, its value is shown in a message box captioned
' "Original LIB variable is"; then the variable TEST of the program is set to
' "c:\mylib;c:\yourlib" and shown in a message box captioned "TEST variable is".
' On Linux no message box is shown; TEST is still set.
' VariableName: the name of the variable.
' Returns: "", always.
Declare Function cDosGetEnvVariable (ByVal VariableName As String) As String
