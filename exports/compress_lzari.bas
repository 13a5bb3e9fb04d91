' LZARI compression of files.
Declare Function cLZARIcompress (ByVal SourceFile As String, ByVal TargetFile As String) As Long
Declare Function cLZARIexpand (ByVal SourceFile As String, ByVal TargetFile As String) As Long
