' Path names: taking names apart and putting them together, checking them,
' and deriving the names other file functions need.
Type PathParts
    Drive As String
    Directory As String
    FileName As String
    Ext As String
End Type
Declare Function cSplitPath (ByVal Path As String, Parts As PathParts) As Integer
Declare Function cMakePath (ByVal Drive As String, ByVal Directory As String, ByVal FileName As String, ByVal Ext As String) As String
Declare Function cFullPath (ByVal Path As String) As String
Declare Function cTruncatePath (ByVal Path As String, ByVal MaxLength As Long) As String
Declare Function cDefaultExtension (ByVal FileName As String, ByVal Ext As String) As String
Declare Function cFixedExtension (ByVal FileName As String, ByVal Ext As String) As String
Declare Function cAddExtension (ByVal FileName As String, ByVal Ext As String) As String
Declare Function cStripExtension (ByVal FileName As String) As String
Declare Function cStripFilePath (ByVal FileName As String) As String
Declare Function cStripFileName (ByVal FileName As String) As String
Declare Function cFileDrive (ByVal FileName As String) As String
Declare Function cIsFilenameValid (ByVal FileName As String) As Integer
Declare Function cFileIsLegal (ByVal FileName As String) As Integer
Declare Function cUniqueFileName (Prefix As String) As String
Declare Function cFilePathExists (ByVal FileName As String) As Integer
