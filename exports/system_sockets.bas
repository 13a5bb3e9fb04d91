' Sockets: TCP and UDP connections over IPv4, for small clients and servers.
'
' A socket is named by a Long that the library gives out when it opens one and
' forgets when it is closed; a closed, random or foreign number is refused with the
' function's failure value and never reaches another program's or file's descriptor.
' The number is the library's own (it fits a Long on 32-bit and 64-bit Office alike),
' not the system's socket handle. Every socket is non-blocking: a read with nothing
' waiting and a write the system cannot take at once fail at once with errno 11 (try
' again), so a program polls (with a short wait between tries).
'
' Error numbers are those of Windows Sockets on every system: on Linux the library
' translates the system's errors to them (a reset connection is 10054 there too).
' Failed reads and writes set the C runtime's errno: 11 for "would block" and "in
' progress", 10054 for a reset or aborted connection, the Windows Sockets number
' otherwise. On Windows a program may call cSKT_Init before the first socket and
' cSKT_Terminate after the last; the library also keeps its own start-up of Windows
' Sockets while it is loaded, so a program that forgets cSKT_Init still works and an
' extra cSKT_Terminate never invalidates an open socket. On Linux both do nothing.

' Starts Windows Sockets for the program (version 1.1 asked for).
' Returns: True (-1) when the socket layer started; on Linux always True.
' Note: each successful call should be balanced by one cSKT_Terminate.
Declare Function cSKT_Init () As Integer
' Ends one start of Windows Sockets made by cSKT_Init.
' A call without a matching cSKT_Init does nothing. Open sockets stay usable.
' Returns: True (-1), always.
Declare Function cSKT_Terminate () As Integer
' Opens a TCP socket that listens for connections on a port of every local address.
' Service: a service name the system knows for "tcp" ("http"), or a port number
'   ("8080"): blanks, digits, read as far as they go; it must give 1 to 65535.
' Backlog: how many connections may wait to be accepted; below 1 counts as 1.
' Returns: the socket's number; 0 when the service is unknown or not a port, or the
'   port cannot be bound (in use) or listened on.
' Example:
'   Dim S As Long
'   S = cSKT_PassiveTCP("8080", 5)
Declare Function cSKT_PassiveTCP (ByVal Service As String, ByVal Backlog As Long) As Long
' Opens a UDP socket bound to a port of every local address.
' Service: a service name the system knows for "udp", or a port number 1 to 65535.
' Returns: the socket's number; 0 when the service is unknown or the port cannot be
'   bound.
Declare Function cSKT_PassiveUDP (ByVal Service As String) As Long
' Opens a TCP connection to a host.
' The connection is started without waiting: a socket whose connection is still
' under way is returned, and a refusal shows on the first read or write. Up to three
' attempts are made at once, one after the other, when the system refuses at once.
' Host: a dotted IPv4 address ("192.168.1.5") or a host name (letters, digits, "-",
'   "_" and "." only, at most 255 characters) that the system resolves; "" means
'   "127.0.0.1".
' Service: a service name the system knows for "tcp", or a port number 1 to 65535.
' Returns: the socket's number; 0 when the host does not resolve, the service is
'   unknown, or every attempt failed.
' Example:
'   S = cSKT_ConnectTCP("127.0.0.1", "8080")
Declare Function cSKT_ConnectTCP (ByVal Host As String, ByVal Service As String) As Long
' Opens a UDP socket whose datagrams go to one host and port.
' Host: a dotted IPv4 address or a host name, as for cSKT_ConnectTCP; "" means
'   "127.0.0.1".
' Service: a service name the system knows for "udp", or a port number 1 to 65535.
' Returns: the socket's number; 0 when the host does not resolve or the service is
'   unknown.
Declare Function cSKT_ConnectUDP (ByVal Host As String, ByVal Service As String) As Long
' Gives the local IPv4 address of a socket in dotted form.
' A socket listening on every address gives "0.0.0.0".
' Socket: the socket's number.
' Returns: the address, as "192.168.1.5"; "127.0.0.1" when the number names no open
'   socket or the address cannot be read.
Declare Function cSKT_LocalAddress (ByVal Socket As Long) As String
' Switches Nagle's algorithm off for a TCP socket, so small writes go out at once.
' Socket: the socket's number.
' Returns: True (-1) when it was switched off; False (0) for a UDP socket or a
'   number that names no open socket.
Declare Function cSKT_NodeDelay (ByVal Socket As Long) As Integer
' Tells whether a socket is open.
' Socket: the socket's number.
' Returns: True (-1) when the number names an open socket the system still knows;
'   False (0) otherwise.
Declare Function cSKT_IsAlive (ByVal Socket As Long) As Integer
' Reads the bytes that have arrived on a socket, without waiting.
' Socket: the socket's number.
' MaxLength: the most bytes to read; one call takes at most 1,048,576.
' Count: receives the number of bytes read; 0 when the peer has closed the
'   connection; -1 on failure (nothing waiting: errno 11; a reset: errno 10054), for
'   a number that names no open socket, or when MaxLength is below 1.
' Returns: the bytes read (zero bytes kept); "" when Count is 0 or -1.
' Example:
'   Dim N As Long, Data As String
'   Data = cSKT_ReadTCP(S, 4096, N)
Declare Function cSKT_ReadTCP (ByVal Socket As Long, ByVal MaxLength As Long, Count As Long) As String
' Sends bytes on a socket, without waiting.
' The system may take fewer bytes than given when its buffer is full; send the rest
' later.
' Socket: the socket's number.
' Data: the bytes to send (zero bytes included); "" sends nothing and gives 0.
' Returns: the number of bytes the system took; -1 on failure (buffer full: errno 11;
'   the peer gone: errno 10054) or for a number that names no open socket.
Declare Function cSKT_WriteTCP (ByVal Socket As Long, ByVal Data As String) As Long
' Shuts both directions of a socket down and closes it.
' The number is free afterwards: later calls with it fail.
' Socket: the socket's number.
' Returns: 0 when the socket was closed, and 0 when the number names no open socket
'   (nothing done); -1 when the system failed to close it.
Declare Function cSKT_Close (ByVal Socket As Long) As Long
' Gives the symbolic name of a Windows Sockets error number.
' ErrorCode: the error number, 10004 to 10101.
' Returns: the name as the Windows header spells it ("WSAEWOULDBLOCK" for 10035,
'   "WSAECONNRESET" for 10054); "No error" for 0 and every number without a name.
Declare Function cSKT_Message (ByVal ErrorCode As Long) As String
' Checks an address against a permission list.
' The list holds patterns separated by blanks or commas, tried from the left; the first
' pattern that matches decides. A pattern admits the addresses it matches; one that
' starts with "!" denies them. A pattern without "*" matches only the whole address
' (so "192.168.1" does not match "192.168.1.5"); a "*" matches whatever follows, and
' what comes after the "*" in the pattern is ignored. Letters are compared without
' regard to case.
' Address: the address to check, as "192.168.1.5"; blanks around it do not count.
' PatternList: the patterns, as "!192.168.1.13, 192.168.1.*, 10.0.0.1".
' Returns: True (-1) when the first matching pattern admits the address; False (0)
'   when it denies it, when no pattern matches, or when the list or the address is
'   empty.
' Note: an address no pattern matches is denied, so a list names what is allowed;
'   end the list with "*" to allow everything not denied before it.
' Example:
'   Debug.Print cSKT_IsPermitted("192.168.1.7", "!192.168.1.13 192.168.1.*")   ' True
Declare Function cSKT_IsPermitted (ByVal Address As String, ByVal PatternList As String) As Integer
