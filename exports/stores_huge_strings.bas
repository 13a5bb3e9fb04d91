' Huge strings: byte buffers of a fixed capacity, far larger than a VB String
' comfortably holds, written piece by piece and read back in pieces of at most 64000
' bytes. The program holds only a Long handle. The block begins with a 12-byte header -
' Length (bytes in use), WP (where cHugeStrAdd writes next) and NP (where cHugeStrNext
' reads next), 32-bit numbers - followed by the data. Positions given to the setters
' count from 1; the getters return the stored offsets, which count from 0 (set 5, read
' back 4).
'
' Note: the handle is a number of the library's handle table, not a memory handle; a
' freed, foreign or made-up handle gives the failure value (0, "" or -14). However the
' header was changed (through cHugeStrAddress, say), nothing is ever read or written
' outside the block.

' Creates a huge string of a given capacity.
' Capacity: the most bytes it can hold; 0 or more.
' Returns: the handle; 0 when the memory cannot be had or Capacity is negative.
' Example:
'   Dim H As Long
'   H = cHugeStrCreate(10000000)
'   If cHugeStrAdd(H, "first line" & vbCrLf) Then Debug.Print cHugeStrLength(H)   ' 12
Declare Function cHugeStrCreate (ByVal Capacity As Long) As Long
' Frees a huge string.
' Handle: the handle; it names nothing afterwards.
' Returns: -1; 0 when the handle names no huge string (freed already, say).
Declare Function cHugeStrFree (ByVal Handle As Long) As Long
' Gives the capacity of a huge string.
' Handle: the handle.
' Returns: the capacity in bytes; 0 for a handle that names no huge string.
Declare Function cHugeStrSize (ByVal Handle As Long) As Long
' Gives the memory address of a huge string's block (its header).
' Handle: the handle.
' Returns: the address; 0 for a handle that names no huge string, and in the 64-bit
'   library whenever the address does not fit in a Long.
Declare Function cHugeStrAddress (ByVal Handle As Long) As Long
' Gives the number of bytes in use.
' Handle: the handle.
' Returns: Length; 0 for a handle that names no huge string.
Declare Function cHugeStrLength (ByVal Handle As Long) As Long
' Gives the write pointer as stored, counted from 0.
' Handle: the handle.
' Returns: WP; 0 for a handle that names no huge string.
Declare Function cHugeStrGetWP (ByVal Handle As Long) As Long
' Moves the write pointer to a position counted from 1.
' Handle: the handle.
' Position: the position, 1 to Length; WP becomes Position - 1.
' Returns: -1; 0 when Position is outside 1 to Length or the handle names nothing.
Declare Function cHugeStrSetWP (ByVal Handle As Long, ByVal Position As Long) As Integer
' Gives the next-read pointer as stored, counted from 0.
' Handle: the handle.
' Returns: NP; 0 for a handle that names no huge string.
Declare Function cHugeStrGetNP (ByVal Handle As Long) As Long
' Moves the next-read pointer to a position counted from 1.
' Handle: the handle.
' Position: the position, 1 to Length; NP becomes Position - 1.
' Returns: -1; 0 when Position is outside 1 to Length or the handle names nothing.
Declare Function cHugeStrSetNP (ByVal Handle As Long, ByVal Position As Long) As Integer
' Empties a huge string: Length, WP and NP become 0; the data stays as it was.
' Handle: the handle.
' Returns: -1; 0 for a handle that names no huge string.
Declare Function cHugeStrClear (ByVal Handle As Long) As Integer
' Writes text at the write pointer, over what is there.
' Length becomes the larger of itself and WP plus the text's length; WP moves past the
' text.
' Handle: the handle.
' Txt: the text, as bytes.
' Returns: -1; 0 for an empty text, a text that would pass the capacity (nothing is
'   written), or a handle that names nothing.
Declare Function cHugeStrAdd (ByVal Handle As Long, Txt As String) As Integer
' Writes text after the last byte in use; WP does not move.
' Handle: the handle.
' Txt: the text, as bytes.
' Returns: -1; 0 for an empty text, a text that would pass the capacity, or a handle
'   that names nothing.
Declare Function cHugeStrAppend (ByVal Handle As Long, Txt As String) As Integer
' Gives the number of 64000-byte blocks the bytes in use span.
' Handle: the handle.
' Returns: Length / 64000, plus 1 for a remainder; 0 when empty or the handle names
'   nothing.
Declare Function cHugeStrBlocks (ByVal Handle As Long) As Long
' Reads one 64000-byte block of the text.
' Handle: the handle.
' Block: the block, counted from 1.
' Returns: the block's bytes (the last one shorter); "" for a block below 1 or past
'   Length / 64000 + 1, or a handle that names nothing.
Declare Function cHugeStrRead (ByVal Handle As Long, ByVal Block As Long) As String
' Reads on from the next-read pointer, which moves on.
' Handle: the handle.
' Count: the bytes wanted, 1 to 64000.
' Returns: Count bytes from NP; when NP + Count passes Length, only NP + Count - Length
'   bytes (the overshoot, not what remains - kept as the family always gave it), which
'   may lie beyond Length; "" when NP is at or past Length, for a Count outside 1 to
'   64000, or a handle that names nothing.
' Note: the bytes never come from beyond the capacity: a piece that would reach past it
'   is cut there.
Declare Function cHugeStrNext (ByVal Handle As Long, ByVal Count As Long) As String
' Takes bytes from a position of the text; the pointers do not move.
' Handle: the handle.
' Start: the first byte, counted from 1, at most Length.
' Count: the bytes wanted, 1 to 63999.
' Returns: Count bytes; when Start + Count passes Length, Start + Count - Length bytes,
'   as cHugeStrNext counts them; "" for Start outside 1 to Length, Count of 64000 or
'   more or below 1, or a handle that names nothing.
' Note: as for cHugeStrNext, never a byte beyond the capacity.
Declare Function cHugeStrMid (ByVal Handle As Long, ByVal Start As Long, ByVal Count As Long) As String
' Saves a huge string to a file, or loads it from one.
' The whole block goes, header included (capacity + 12 bytes), so loading brings
' Length, WP and NP back too.
' Handle: the handle.
' FileName: the file.
' LoadFlag: 0 saves; any other value loads.
' Returns: the bytes transferred, or:
'   - -1: FileName is empty.
'   - -2: FileName fails the syntax check of cIsFilenameValid.
'   - -3: an old file of that name cannot be deleted (saving).
'   - -4: the file cannot be created or opened.
'   - -11, -12: writing failed (the file is deleted).
'   - -14: the handle names no huge string.
'   - -16: the file's size is not capacity + 12 (loading), or its header says more bytes
'   are in use, or a write position further, than the capacity holds.
'   - -19, -20: reading failed.
' Note: a file refused on loading leaves the huge string as it was.
Declare Function cHugeStrOnDisk (ByVal Handle As Long, ByVal FileName As String, ByVal LoadFlag As Integer) As Long
