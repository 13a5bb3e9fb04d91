' Byte-pair compression of strings and files (the "KOV" format).
Declare Function cFileCompress (SourceFile As String, TargetFile As String) As Long
Declare Function cFileExpand (SourceFile As String, TargetFile As String) As Long
Declare Function cStringCompress (Txt As String) As String
Declare Function cStringExpand (Txt As String) As String
