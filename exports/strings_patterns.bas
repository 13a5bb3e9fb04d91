' Pattern matching: simple and extended wildcards, similarity score, prefix test, table lookup.
Declare Function cPatternMatch (ByVal Txt As String, ByVal Pattern As String) As Long
Declare Function cPatternMatchS (ByVal Txt As String, ByVal Pattern As String, ByVal CaseSensitive As Integer) As Long
Declare Function cPatternExtMatch (ByVal Txt As String, ByVal Pattern As String) As Long
Declare Function cPatternExtMatchS (ByVal Txt As String, ByVal Pattern As String, ByVal CaseSensitive As Integer) As Long
Declare Function cStrMatch (ByVal Txt1 As String, ByVal Txt2 As String) As Integer
Declare Function cStrPrefixed (ByVal Txt As String, ByVal Prefix As String) As Integer
Declare Function cMatchTable (ByVal Word As String, ByVal Table As String, ByVal Separators As String, ByVal CaseSensitive As Integer) As Long
