' Buffered file streams: open a file as a stream, read and write lines, characters and
' blocks, move about in it, and index the lines of a text file to jump to any of them.
'
' A stream is a Long number that cFopen hands out and cFclose takes back. A number that
' names no open stream (0, a closed stream's, a made-up one) is refused by every export:
' the stream reads as one at its end with its error flag set, and nothing is written.
' Text mode, the default, is the Windows runtime's on every system: reading turns each
' carriage return and line feed into a line feed and stops at a Ctrl-Z byte, writing
' turns each line feed into a carriage return and a line feed. Positions are byte offsets
' in the file whatever the mode.

' Opens a file as a stream.
' Path: the file's name.
' Mode: "r" read an existing file, "w" create or empty a file and write, "a" write at the
'   end (creating the file); "+" after the letter allows reading and writing, "t" asks
'   for text mode (the default) and "b" for binary mode. The runtime's hint letters c,
'   n, S, R, T, D and N are accepted and change nothing.
' Returns: the stream's number; 0 when the mode is malformed (an unknown letter, both t
'   and b, a second +) or the file cannot be opened so (missing, a directory, read-only
'   for a writing mode).
' Note: "a" starts at the end of the file and "a+" at its start for reading; both write
'   every block at the end, wherever the position was moved.
' Example:
'   Dim F As Long
'   F = cFopen("C:\Data\log.txt", "a")
'   If F <> 0 Then cFputs "started" & vbLf, F: cFclose F
Declare Function cFopen (ByVal Path As String, ByVal Mode As String) As Long
' Closes a stream, writing out what it holds.
' Stream: the stream's number; it names nothing from then on.
' Returns: 0; -1 when a write failed, for a number that names no stream, and for a
'   standard stream.
' Note: a standard stream is flushed but stays open, so that the program's own output is
'   never lost.
Declare Function cFclose (ByVal Stream As Long) As Long
' Closes every stream that cFopen opened.
' Returns: the number of streams closed; the standard streams are not closed nor counted.
Declare Function cFcloseall () As Long
' Writes out what a stream holds for writing.
' Stream: the stream's number.
' Returns: 0; -1 when the write failed and for a number that names no stream.
Declare Function cFflush (ByVal Stream As Long) As Long
' Writes out every stream.
' Returns: the number of open streams, the three standard streams always included.
Declare Function cFflushall () As Long
' Writes a text to a stream.
' Text: the text; it ends at its first zero byte, and "" writes nothing.
' Stream: the stream's number.
' Returns: 0; -1 when the stream cannot be written or the write failed.
Declare Function cFputs (ByVal Text As String, ByVal Stream As Long) As Long
' Reads one line from a stream.
' Line: receives the line read, its line feed included when one was read; "" when nothing
'   was read.
' MaxLength: the buffer's size: at most MaxLength - 1 bytes are read, so a longer line
'   comes back in pieces.
' Stream: the stream's number.
' Returns: 0 when a line (or a piece) was read; -1 when MaxLength is below 1 (the stream
'   is not touched) or at the end of the stream; -32 on a read error and for a number that
'   names no stream.
' Example:
'   Dim Line As String
'   Do While cFgets(Line, 4096, F) = 0
'       Debug.Print Line;
'   Loop
Declare Function cFgets (Line As String, ByVal MaxLength As Long, ByVal Stream As Long) As Integer
' Reads one byte from a stream.
' Stream: the stream's number.
' Returns: the byte, 0 to 255; -1 at the end, on an error and for a number that names no
'   stream.
Declare Function cFgetc (ByVal Stream As Long) As Long
' Writes one byte to a stream.
' Character: the byte, taken from the low 8 bits.
' Stream: the stream's number.
' Returns: the byte written, 0 to 255; -1 when it could not be written.
Declare Function cFputc (ByVal Character As Integer, ByVal Stream As Long) As Long
' Reads a block of bytes from a stream.
' Buffer: receives the bytes read; "" when nothing was read.
' Count: the most bytes to read.
' Stream: the stream's number.
' Returns: the number of bytes read, in 16 bits (a count above 32,767 turns negative: add
'   65,536); 0 when Count is below 1, at the end and for a number that names no stream.
Declare Function cFread (Buffer As String, ByVal Count As Long, ByVal Stream As Long) As Integer
' Writes a whole string to a stream.
' Buffer: the bytes to write, zero bytes included.
' Stream: the stream's number.
' Returns: the number of bytes of Buffer written (all of them unless the write failed).
Declare Function cFwrite (Buffer As String, ByVal Stream As Long) As Long
' Moves a stream's position.
' Stream: the stream's number.
' Offset: the distance in bytes.
' Origin: 0 from the start, 1 from the current position, 2 from the end.
' Returns: 0, and the end-of-file flag is cleared; 1 when the position would fall before
'   the start, Origin is another value, the stream cannot move (a standard stream) or the
'   number names no stream.
Declare Function cFseek (ByVal Stream As Long, ByVal Offset As Long, ByVal Origin As Integer) As Long
' Gives a stream's position.
' Stream: the stream's number.
' Returns: the byte offset from the start of the file; -1 for a standard stream, a
'   position beyond 2,147,483,647 and a number that names no stream.
Declare Function cFtell (ByVal Stream As Long) As Long
' Moves a stream to its start and clears its end-of-file and error flags.
' Stream: the stream's number; a number that names no stream is ignored.
Declare Sub cFrewind (ByVal Stream As Long)
' Tells whether a read has met the end of a stream.
' Stream: the stream's number.
' Returns: True (-1) once a read has met the end (opening or moving does not set it);
'   False (0) otherwise. A number that names no stream gives True.
Declare Function cFeof (ByVal Stream As Long) As Integer
' Tells whether an operation on a stream has failed.
' Stream: the stream's number.
' Returns: -32 when the error flag is set (a failed read or write, a write to a stream
'   opened for reading only, or the other way round); 0 otherwise. A number that names no
'   stream gives -32.
Declare Function cFerror (ByVal Stream As Long) As Integer
' Clears a stream's end-of-file and error flags.
' Stream: the stream's number; a number that names no stream is ignored.
Declare Sub cFclearerr (ByVal Stream As Long)
' Gives the number of the standard input stream.
' Returns: the stream's number, the same on every call.
' Note: on Windows the standard streams are in text mode; elsewhere they pass bytes
'   unchanged.
Declare Function cFStdIn () As Long
' Gives the number of the standard output stream.
' Returns: the stream's number, the same on every call.
Declare Function cFStdOut () As Long
' Gives the number of the standard error stream.
' Returns: the stream's number, the same on every call.
Declare Function cFStdErr () As Long
' Indexes the lines of a text stream for cFGotoRecord.
' The stream is read from its position to its end, line by line (a line longer than
' 16,383 bytes counts as several); element k of the index receives the byte offset at
' which line k begins, element 1 holding 0. The stream is left at its end.
' Stream: the stream's number, normally just opened.
' LineIndex: a Long array; element 1 is the first used whatever the lower bound, and the
'   array holds as many lines as it has elements.
' Returns: the number of lines indexed; when the file has more lines than the array holds,
'   indexing stops at one line more than it holds. 0 for an empty file, an array that is
'   not of Longs, or no memory; -32 on a read error and for a number that names no stream.
' Note: offsets that fall outside the array are not written.
' Example:
'   Dim Index(1 To 10000) As Long, Line As String
'   N = cFProcessAsciiFile(F, Index())
'   If cFGotoRecord(F, Index(), 25) = -1 Then cFgets Line, 4096, F   ' line 25
Declare Function cFProcessAsciiFile (ByVal Stream As Long, LineIndex() As Long) As Long
' Moves a stream to the start of a line indexed by cFProcessAsciiFile.
' Stream: the stream's number.
' LineIndex: the index that cFProcessAsciiFile filled.
' LineNumber: the line, counted from 1.
' Returns: -1 when the stream was moved; 0 when LineNumber is below 1 or above the number
'   of elements, or the array is not of Longs (the stream is not moved); 1 when the move
'   failed or the number names no stream.
Declare Function cFGotoRecord (ByVal Stream As Long, LineIndex() As Long, ByVal LineNumber As Long) As Long
