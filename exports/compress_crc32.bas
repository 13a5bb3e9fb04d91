' CRC-32 of strings and files: plain, chained from a start value, and without
' the last four bytes.

' Gives the CRC-32 checksum of a string.
' The checksum is the standard CRC-32 of zip files and Ethernet (reflected polynomial
' EDB88320 hexadecimal). Every byte counts, zero bytes included.
' Txt: the string.
' Returns: the checksum, negative when its top bit is set; -1 when Txt is "".
' Note: -1 is also the checksum of some strings; only for "" does it mean failure.
' Example:
'   Debug.Print Hex$(cStringCRC32("123456789"))   ' CBF43926
Declare Function cStringCRC32 (Txt As String) As Long
' Continues a CRC-32 checksum over a further string.
' The checksum register starts at StartValue as given, and the result is inverted as
' usual. So StartValue = -1 gives the plain checksum of Txt, and a checksum over several
' pieces is continued by passing the result so far inverted (Not). Leave empty pieces
' out of a chain: for "" the result is -1, the failure value, not a checksum to go on from.
' StartValue: -1 for a new checksum, or Not the checksum of the pieces before Txt.
' Txt: the string.
' Returns: the checksum; -1 when Txt is "".
' Example:
'   Dim Crc As Long
'   Crc = cStringCRC32(Part1)
'   Crc = cStringBlockCRC32(Not Crc, Part2)   ' equals cStringCRC32(Part1 & Part2)
Declare Function cStringBlockCRC32 (ByVal StartValue As Long, Txt As String) As Long
' Gives the CRC-32 checksum of a whole file.
' The file is read in blocks of 32,768 bytes.
' FileName: the file.
' Mode: 1 reads the file as text: each carriage return and line feed pair counts as a
'   line feed alone, and a Ctrl-Z byte (26) ends the data; any other value reads every
'   byte as it is.
' Returns: the checksum; 0 for an empty file; -1 when FileName is "", and when the file
'   cannot be opened (a directory included) or a read fails.
Declare Function cFileCRC32 (FileName As String, ByVal Mode As Integer) As Long
' Continues a CRC-32 checksum over a whole file.
' StartValue works as for cStringBlockCRC32. The file is read byte for byte, as binary.
' StartValue: -1 for a new checksum, or Not the checksum of the data before the file.
' FileName: the file; it must hold at least 5 bytes.
' Returns: the checksum; -1 when FileName is "", the file is missing or shorter than 5
'   bytes, or it cannot be opened or read.
' Example:
'   Crc = cFileCRC32Ext(Not cStringCRC32(Header), "C:\Data\body.bin")
Declare Function cFileCRC32Ext (ByVal StartValue As Long, FileName As String) As Long
' Gives the CRC-32 checksum of a file without its last four bytes.
' It serves records that carry their own checksum, as a Long, in their last four bytes:
' the result equals that Long when the record is intact. The file is read as binary.
' FileName: the file; it must hold at least 5 bytes.
' Returns: the checksum of all bytes but the last four; -1 when FileName is "", the file
'   is missing or shorter than 5 bytes, or it cannot be opened or read.
Declare Function cFileCRC32Minus4 (FileName As String) As Long
' Continues a CRC-32 checksum over a file without its last four bytes.
' StartValue works as for cStringBlockCRC32; the file is read as for cFileCRC32Minus4.
' StartValue: -1 for a new checksum, or Not the checksum of the data before the file.
' FileName: the file; it must hold at least 5 bytes.
' Returns: the checksum; -1 when FileName is "", the file is missing or shorter than 5
'   bytes, or it cannot be opened or read.
Declare Function cFileCRC32Minus4Ext (ByVal StartValue As Long, FileName As String) As Long
