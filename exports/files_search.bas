' Directory enumeration and search: step-by-step listings, counts and sizes
' of file sets, recursive searches and totals, listings into arrays and
' files, volume space, and byte filters of files.
Declare Function cFilesInDirectory (ByVal Pattern As String, ByVal First As Integer) As String
Declare Function cSubDirectory (ByVal Pattern As String, ByVal First As Integer) As String
Declare Function cAllSubDirectories (ByVal Root As String, Count As Long) As String
Declare Function cCountFiles (ByVal Pattern As String) As Integer
Declare Function cCountDirectories (ByVal Pattern As String) As Integer
Declare Function cFilesSize (ByVal Pattern As String) As Double
Declare Function cFilesSizeOnDisk (ByVal Pattern As String) As Double
Declare Function cFilesSlack (ByVal Pattern As String, Size As Double, SizeOnDisk As Double) As Integer
Declare Function cRcsCountFileDir (ByVal Which As Integer, ByVal Root As String, ByVal Mask As String, ByVal Recurse As Long) As Long
Declare Function cRcsFilesSize (ByVal Root As String, ByVal Mask As String, ByVal Recurse As Long) As Double
Declare Function cRcsFilesSizeOnDisk (ByVal Root As String, ByVal Mask As String, ByVal Recurse As Long) As Double
Declare Function cRcsFilesSlack (ByVal Root As String, ByVal Mask As String, ByVal Recurse As Long, Size As Double, SizeOnDisk As Double) As Integer
Declare Function cSearchFile (ByVal Root As String, ByVal Mask As String, ByVal OutputFile As String) As Long
Declare Function cSearchFileAttrib (ByVal Root As String, ByVal Mask As String, ByVal Attributes As Integer, ByVal OutputFile As String) As Long
Declare Function cSearchDir (ByVal Root As String, ByVal Mask As String, ByVal OutputFile As String) As Long
Declare Function cFilesInDirToArray (ByVal Pattern As String, ByVal Selector As Integer, Names() As String) As Integer
Declare Function cFilesInDirOnDisk (ByVal OutputFile As String, ByVal Pattern As String, ByVal Selector As Integer) As Integer
Declare Function cGetDiskSpace (ByVal Root As String) As Double
Declare Function cGetDiskUsed (ByVal Root As String) As Double
Declare Function cGetDiskFree (ByVal Root As String) As Double
Declare Function cGetDiskClusterSize (ByVal Root As String) As Double
' The Ex forms return a 64-bit byte count in a Currency: multiply by 10000.
Declare Function cGetDiskSpaceEx (ByVal Root As String) As Currency
Declare Function cGetDiskUsedEx (ByVal Root As String) As Currency
Declare Function cGetDiskFreeEx (ByVal Root As String) As Currency
' Copies a file, leaving out every byte that occurs in a character set.
' The file is copied in blocks of 32,768 bytes; the set is taken byte for byte, zero
' bytes included. An existing target is replaced.
' Source: the file to read.
' Target: the file to write.
' CharSet: the bytes to leave out, as vbCr & vbLf.
' Returns: the number of bytes written, 2,147,483,647 for 2 GiB or more; -1 when CharSet
'   is ""; -32750 when the source cannot be opened; -32751 when the target cannot be
'   created; -32730 when a read fails and -32740 when a write fails (the target is deleted
'   then); -32760 or -32761 when memory for the buffers cannot be had.
' Note: a Long cannot hold a count of 2 GiB or more, and one wrapped round would read as a
'   negative code, so such a count is given as the largest Long; the target is complete
'   all the same.
Declare Function cFileFilter (ByVal Source As String, ByVal Target As String, CharSet As String) As Long
' Copies a file, keeping only the bytes that occur in a character set.
' The file is copied in blocks of 32,768 bytes; the set is taken byte for byte, zero
' bytes included. A set of a single character is the exception: that character is left
' out and all others kept, as cFileFilter does. An existing target is replaced.
' Source: the file to read.
' Target: the file to write.
' CharSet: the bytes to keep, two or more; one byte is left out instead.
' Returns: the number of bytes written, 2,147,483,647 for 2 GiB or more (as for
'   cFileFilter); -1 when CharSet is ""; -32750 when the source cannot be opened; -32751
'   when the target cannot be created; -32730 when a read fails and -32740 when a write
'   fails (the target is deleted then); -32760 or -32761 when memory for the buffers
'   cannot be had.
Declare Function cFileFilterNot (ByVal Source As String, ByVal Target As String, CharSet As String) As Long
