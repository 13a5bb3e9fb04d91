' Byte-pair compression: strings and files in the "KOV" format.

' Compresses a file with byte-pair encoding.
' The data are packed in blocks of at most 5,000 bytes: in each block the most frequent
' pairs of neighbouring bytes are replaced, again and again, by byte values that the
' block does not use. The compressed file starts with "KOV"; cFileExpand restores it.
' Text shrinks well; data without repeated pairs grow a little.
' SourceFile: the file to compress.
' TargetFile: the compressed file to write; an existing one is replaced.
' Returns: the size of the compressed file in bytes (9 for an empty source), or a code:
'   -1 SourceFile is ""; -2 TargetFile is ""; -3 both name the same file; -4 the source
'   cannot be opened (the target has already been created, and stays, empty); -5 the
'   target cannot be created; -6 a read or write failed; -7 the size of the target
'   cannot be read afterwards. A target of 2 GB or more reports 2147483647.
' Note: two names count as the same file when they are equal ignoring case, and also when
'   they lead to the same existing file ("a.txt" and ".\a.txt"), so the source is never
'   overwritten. After -6 the part of the target already written stays.
Declare Function cFileCompress (SourceFile As String, TargetFile As String) As Long
' Restores a file compressed by cFileCompress.
' SourceFile: the compressed file.
' TargetFile: the file to write; an existing one is replaced.
' Returns: the size of the restored file in bytes, or a code: -1 to -5 and -7 as for
'   cFileCompress; -6 when the source does not start with "KOV", is cut short or
'   damaged, or a read or write failed.
' Note: a damaged source is refused, not trusted: a block whose pair table is out of
'   range or refers to itself, or that would expand beyond 5,000 bytes, gives -6. What
'   was restored before the damage stays in the target.
Declare Function cFileExpand (SourceFile As String, TargetFile As String) As Long
' Compresses a string with byte-pair encoding.
' The result holds "KOV", the length of the packed data in two bytes (high byte first)
' and the packed blocks, as cFileCompress writes them. Every byte counts, zero bytes
' included.
' Txt: the string to compress.
' Returns: the compressed string; "" when Txt is "".
' Note: the stored length has 16 bits, so a result longer than 65,540 bytes cannot be
'   expanded by cStringExpand; compress such data in parts, or with cGZIPStringCompress2.
Declare Function cStringCompress (Txt As String) As String
' Restores a string compressed by cStringCompress.
' Txt: the compressed string.
' Returns: the original string; "" when Txt does not start with "KOV", when its stored
'   length does not match the length of the rest, or when a block is cut short or
'   damaged.
' Note: the result grows as needed; it is not limited to 10 times the length of Txt.
Declare Function cStringExpand (Txt As String) As String
