' CRC-32 of strings and files: plain, chained from a start value, and without the last four bytes.
Declare Function cStringCRC32 (Txt As String) As Long
Declare Function cStringBlockCRC32 (ByVal StartValue As Long, Txt As String) As Long
Declare Function cFileCRC32 (FileName As String, ByVal Mode As Integer) As Long
Declare Function cFileCRC32Ext (ByVal StartValue As Long, FileName As String) As Long
Declare Function cFileCRC32Minus4 (FileName As String) As Long
Declare Function cFileCRC32Minus4Ext (ByVal StartValue As Long, FileName As String) As Long
