' Btoa files: any file to printable base-85 text ("xbtoa5") and back.
Declare Function cBtoA (ByVal InputFile As String, ByVal OutputFile As String) As Long
Declare Function cAtoB (ByVal InputFile As String) As Long
