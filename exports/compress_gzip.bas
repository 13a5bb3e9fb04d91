' Gzip files and zlib streams in strings (with or without a 4-byte length prefix).
Declare Function cGZIPFileCompress (ByVal SourceFile As String, ByVal TargetFile As String) As Long
Declare Function cGZIPFileExpand (ByVal SourceFile As String, ByVal TargetFile As String) As Long
Declare Function cGZIPStringCompress (Txt As String) As String
Declare Function cGZIPStringExpand (Txt As String) As String
Declare Function cGZIPStringCompress2 (Txt As String) As String
Declare Function cGZIPStringExpand2 (Txt As String) As String
