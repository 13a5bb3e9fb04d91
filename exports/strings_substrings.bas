' Substrings and positions: pieces by position, by field and between tags.
Declare Function cOneCharFromLeft (Txt As String, ByVal Position As Long) As String
Declare Function cOneCharFromRight (Txt As String, ByVal Position As Long) As String
Declare Function cBlockCharFromLeft (Txt As String, ByVal Position As Long) As String
Declare Function cBlockCharFromRight (Txt As String, ByVal Position As Long) As String
Declare Function cScrollL (Txt As String) As String
Declare Function cScrollR (Txt As String) As String
Declare Function cReverse (Txt As String) As String
Declare Function cSetDefaultSeparator (Separator As String) As Long
Declare Function cGet (Txt As String, ByVal Position As Long) As String
Declare Function cGetIn (Txt As String, Separator As String, ByVal Position As Long) As String
Declare Function cGetInR (Txt As String, Separator As String, ByVal Position As Long) As String
Declare Function cGetInPart (Txt As String, Separator As String, ByVal Before As Long) As String
Declare Function cGetInPartR (Txt As String, Separator As String, ByVal After As Long) As String
Declare Function cCount (Txt As String, Char As String) As Long
Declare Function cInStr (ByVal Start As Long, ByVal Txt As String, ByVal Find As String, ByVal CaseSensitive As Integer) As Long
Declare Function cExtract (ByVal Txt As String, ByVal OpenTag As String, ByVal CloseTag As String, ByVal CaseSensitive As Integer) As String
Declare Function cExtractTag (ByVal Txt As String, ByVal OpenTag As String, ByVal CloseTag As String, ByVal CaseSensitive As Integer) As String
Declare Function cExtractIsolate (ByVal Txt As String, ByVal FirstTag As String, ByVal SecondTag As String, ByVal LeftPart As Integer, ByVal CaseSensitive As Integer) As String
