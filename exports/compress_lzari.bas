' LZARI compression: files packed with the LZARI coder and unpacked again.

' Compresses a file with LZARI.
' LZARI replaces repeated strings of 3 to 80 bytes found in the last 4,096 bytes by
' references to them, and codes everything with adaptive arithmetic coding. The target
' holds the length of the source in 4 bytes, least significant byte first, and then the
' coded data; cLZARIexpand restores it.
' SourceFile: the file to compress.
' TargetFile: the compressed file to write; an existing one is replaced.
' Returns: the size of the compressed file in bytes (4 for an empty source), or a code:
'   -1 SourceFile is ""; -2 TargetFile is ""; -3 both name the same file; -4 the source
'   cannot be opened (the target has already been created, and stays, empty); -5 the
'   target cannot be created; -6 a read or write failed; -7 the size of the target
'   cannot be read afterwards. A target of 2 GB or more reports 2147483647.
' Note: the longest match is 80 bytes where the published 1989 LZARI program has 60, so
'   the files of the two cannot be exchanged. The length header has 32 bits: a source
'   of 4 GB or more cannot be restored whole. Two names count as the same file also
'   when they lead to the same existing file.
Declare Function cLZARIcompress (ByVal SourceFile As String, ByVal TargetFile As String) As Long
' Restores a file compressed by cLZARIcompress.
' SourceFile: the compressed file.
' TargetFile: the file to write; an existing one is replaced.
' Returns: the size of the restored file in bytes, or a code: -1 to -5 and -7 as for
'   cLZARIcompress; -6 when the source is shorter than 4 bytes, or a read or write
'   failed.
' Note: the format has no check value, so a damaged or foreign source is not detected:
'   it decodes into some bytes, never more than its first 4 bytes claim, and decoding
'   stops soon after the source runs out. Keep a checksum (cFileCRC32) of the original
'   where you must be sure.
Declare Function cLZARIexpand (ByVal SourceFile As String, ByVal TargetFile As String) As Long
