' Gzip and zlib: gzip files, and zlib streams in strings with or without a 4-byte length prefix.

' Compresses a file into a gzip file.
' The target is a standard gzip file (deflate at zlib's default level) that gzip and
' other tools read.
' SourceFile: the file to compress.
' TargetFile: the gzip file to write; an existing one is replaced.
' Returns: the size of the gzip file in bytes, or a code: -1 SourceFile is ""; -2
'   TargetFile is ""; -3 both name the same file; -4 the source cannot be opened (an
'   empty gzip file is left under the target name); -5 the target cannot be created; -6
'   a read, write or close failed; -7 the size of the target cannot be read afterwards.
'   A target of 2 GB or more reports 2147483647.
' Note: both names may use slashes, and a trailing backslash is dropped. Two names count
'   as the same file when they are equal ignoring case, and also when they lead to the
'   same existing file, so the source is never overwritten. After -6 the part of the
'   target already written stays.
Declare Function cGZIPFileCompress (ByVal SourceFile As String, ByVal TargetFile As String) As Long
' Expands a gzip file.
' A file of several gzip members one after the other (as appending makes) expands to all
' of them in order. A source that is not gzip at all is copied unchanged.
' SourceFile: the gzip file.
' TargetFile: the file to write; an existing one is replaced.
' Returns: the size of the expanded file in bytes, or a code: -1, -2, -3 and -7 as for
'   cGZIPFileCompress; -4 the source cannot be opened (the target has already been
'   created, and stays, empty); -5 the target cannot be created; -6 the gzip data are
'   cut short or damaged (a wrong check value included), or a read, write or close
'   failed; -8 the source file is empty (the target is not touched).
' Note: names are taken as for cGZIPFileCompress. After -6 the part of the target
'   already written stays.
Declare Function cGZIPFileExpand (ByVal SourceFile As String, ByVal TargetFile As String) As Long
' Compresses a string into a zlib stream.
' The result is the standard zlib format (RFC 1950: a 2-byte header, deflate data at the
' default level and an Adler-32 check value). It does not hold the original length, so
' cGZIPStringExpand has to limit the room for the result; cGZIPStringCompress2 stores
' the length.
' Txt: the string to compress; every byte counts, zero bytes included.
' Returns: the compressed string; "" when Txt is "" or compression fails.
Declare Function cGZIPStringCompress (Txt As String) As String
' Expands a zlib stream, as cGZIPStringCompress makes it.
' Txt: the zlib stream; bytes after its end are ignored.
' Returns: the expanded string; "" when Txt is "", when the stream is cut short or
'   damaged, and when it would expand to more than 75 times its own length.
' Note: data that compressed better than 75 to 1 (long runs of one character, say) come
'   back as ""; use cGZIPStringCompress2 and cGZIPStringExpand2 for them.
Declare Function cGZIPStringExpand (Txt As String) As String
' Compresses a string into a zlib stream preceded by its original length.
' The first 4 bytes hold the length of Txt, least significant byte first; the rest is the
' stream that cGZIPStringCompress gives.
' Txt: the string to compress; every byte counts, zero bytes included.
' Returns: the compressed string; "" when Txt is "" or compression fails.
Declare Function cGZIPStringCompress2 (Txt As String) As String
' Expands a string made by cGZIPStringCompress2.
' Txt: the length prefix and the zlib stream.
' Returns: the expanded string; "" when Txt is shorter than 5 bytes, when the stream is
'   cut short or damaged, and when it expands to more bytes than the prefix states. A
'   prefix larger than the real length is no error: the real data come back.
' Note: memory is taken as the data arrive, so a damaged prefix that claims gigabytes
'   does not make the call allocate them.
Declare Function cGZIPStringExpand2 (Txt As String) As String
