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
Declare Function cFileFilter (ByVal Source As String, ByVal Target As String, CharSet As String) As Long
Declare Function cFileFilterNot (ByVal Source As String, ByVal Target As String, CharSet As String) As Long
