' Editing and layout: replace, delete, pad, fill, resize, align, tabs, hexadecimal packing, capitals, single characters.
Declare Function cStringReplace (ByVal Txt As String, ByVal Pairs As String, ByVal CaseSensitive As Integer) As String
Declare Function cDeleteSubString (ByVal Txt As String, ByVal SubString As String, ByVal CaseSensitive As Integer) As String
Declare Function cLFill (ByVal Txt As String, ByVal FillChar As String, ByVal FieldWidth As Long) As String
Declare Function cRFill (ByVal Txt As String, ByVal FillChar As String, ByVal FieldWidth As Long) As String
Declare Function cLSetIn (ByVal Txt As String, ByVal Separator As String, ByVal Position As Long, ByVal Value As String) As String
Declare Function cRSetIn (ByVal Txt As String, ByVal Separator As String, ByVal Position As Long, ByVal Value As String) As String
Declare Function cFill (Txt As String, Pattern As String) As Integer
Declare Function cCreateAndFill (ByVal Length As Long, Pattern As String) As String
Declare Function cResizeString (Txt As String, ByVal Length As Long) As String
Declare Function cResizeStringAndFill (Txt As String, ByVal Length As Long, FillChar As String) As String
Declare Function cAlign (Txt As String, ByVal Mode As Integer, ByVal FieldWidth As Long) As String
Declare Function cCompress (Txt As String) As String
Declare Function cExpandTab (Txt As String, ByVal Spaces As Long) As String
Declare Function cCompressTab (Txt As String, ByVal Spaces As Long) As String
Declare Function cCompact (Txt As String) As String
Declare Function cUncompact (Txt As String) As String
Declare Function cProperName (Txt As String) As String
Declare Function cReplaceChar (Txt As String, ByVal Position As Long, Char As String) As Integer
Declare Function cReplaceLastChar (Txt As String, Char As String) As Integer
Declare Function cRemoveLastChar (Txt As String) As String
