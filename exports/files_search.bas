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
' Copies a file without the bytes of a character set.
' The file is read and written in blocks of 32,768 bytes; every byte that occurs in CharSet
' is dropped and every other byte is copied.
' Source: the name of the file to read.
' Target: the name of the file to write; it is created, or emptied when it exists.
' CharSet: the bytes to drop; every byte counts, Chr(0) included.
' Returns: the number of bytes written to Target; 2,147,483,647 when that is 2 GiB or more;
'   -1 when CharSet is ""; -32750 when Source cannot be opened; -32751 when Target cannot be
'   created; -32730 on a read error and -32740 on a write error (Target is then deleted);
'   -32760 or -32761 when a buffer cannot be had.
' Note: a Long cannot hold a count of 2 GiB or more, and wrapped round it would read as a
'   negative code, so such a count is given as the largest Long; Target is complete all the
'   same.
' Example:
'   n = cFileFilter("report.txt", "report.lf", vbCr)   ' drops the carriage returns
Declare Function cFileFilter (ByVal Source As String, ByVal Target As String, CharSet As String) As Long
' Copies a file keeping only the bytes of a character set.
' The file is read and written in blocks of 32,768 bytes. A CharSet of exactly one
' character is the exception: that character is dropped and every other byte kept, as
' cFileFilter does.
' Source: the name of the file to read.
' Target: the name of the file to write; it is created, or emptied when it exists.
' CharSet: the bytes to keep (of two or more characters); every byte counts, Chr(0)
'   included.
' Returns: the number of bytes written to Target, given as for cFileFilter (2,147,483,647
'   for 2 GiB or more), or the codes of cFileFilter.
Declare Function cFileFilterNot (ByVal Source As String, ByVal Target As String, CharSet As String) As Long
