' Tokens and character filters: token tests, filters, translations, insertions, blocks, shuffles, bytewise logic.
Declare Function cOrToken (ByVal Txt As String, ByVal Tokens As String) As Integer
Declare Function cOrTokenIn (ByVal Txt As String, ByVal Tokens As String, ByVal Separator As String) As Integer
Declare Function cAndToken (ByVal Txt As String, ByVal Tokens As String) As Integer
Declare Function cAndTokenIn (ByVal Txt As String, ByVal Tokens As String, ByVal Separator As String) As Integer
Declare Function cTokenIn (Txt As String, Separators As String, ByVal Position As Long) As String
Declare Function cFilterChars (Txt As String, CharSet As String) As String
Declare Function cFilterNotChars (Txt As String, CharSet As String) As String
Declare Function cFilterFirstChars (Txt As String, Prefix As String) As String
Declare Function cFilterBlocks (Txt As String, Delimiters As String) As String
Declare Function cChangeChars (Txt As String, FromChars As String, ToChars As String) As Integer
Declare Function cChangeCharsUntil (Txt As String, FromChars As String, ToChars As String, StopChar As String) As Integer
Declare Function cCheckChars (Txt As String, CharSet As String) As Integer
Declare Function cRemoveOneChar (Txt As String, ByVal Position As Long) As String
Declare Function cRemoveBlockChar (Txt As String, ByVal Position As Long, ByVal Count As Long) As String
Declare Function cInsertChars (Txt As String, ByVal Position As Long, Insert As String) As String
Declare Function cInsertByMask (Txt As String, Mask As String, Data As String) As String
Declare Function cInsertBlocks (Txt As String, Blocks As String) As String
Declare Function cInsertBlocksBy (Txt As String, Blocks As String, Separator As String) As String
Declare Function cInsertBlocksExt (Txt As String, Blocks As String) As String
Declare Function cGetBlock (Txt As String, ByVal Position As Long, ByVal Size As Long) As String
Declare Function cMixChars (Txt As String) As String
Declare Function cStrAND (Txt1 As String, Txt2 As String) As String
Declare Function cStrOR (Txt1 As String, Txt2 As String) As String
Declare Function cStrXOR (Txt1 As String, Txt2 As String) As String
