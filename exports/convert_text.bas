' Text and number conversions: interest factors, hexadecimal and base-36
' text, Roman numerals, Morse code, ASCII and EBCDIC.
Declare Function cAtoF (ByVal Rate As Double, ByVal Periods As Integer) As Double
Declare Function cAtoP (ByVal Rate As Double, ByVal Periods As Integer) As Double
Declare Function cFtoA (ByVal Rate As Double, ByVal Periods As Integer) As Double
Declare Function cFtoP (ByVal Rate As Double, ByVal Periods As Integer) As Double
Declare Function cPtoA (ByVal Rate As Double, ByVal Periods As Integer) As Double
Declare Function cPtoF (ByVal Rate As Double, ByVal Periods As Integer) As Double
Declare Function cAtoFC (ByVal Rate As Double, ByVal Periods As Integer) As Double
Declare Function cAtoPC (ByVal Rate As Double, ByVal Periods As Integer) As Double
Declare Function cFtoAC (ByVal Rate As Double, ByVal Periods As Integer) As Double
Declare Function cFtoPC (ByVal Rate As Double, ByVal Periods As Integer) As Double
Declare Function cPtoAC (ByVal Rate As Double, ByVal Periods As Integer) As Double
Declare Function cPtoFC (ByVal Rate As Double, ByVal Periods As Integer) As Double
Declare Function cToHexa (Txt As String) As String
Declare Function cFromHexa (Txt As String) As String
Declare Function cH2I (ByVal Txt As String) As Integer
Declare Function cH2L (ByVal Txt As String) As Long
Declare Function cToZ9 (Txt As String) As String
Declare Function cFromZ9 (Txt As String) As String
Declare Function cArabicToRoman (Number As Variant) As String
Declare Function cRomanToArabic (Txt As String) As Variant
Declare Function cMorse (ByVal Txt As String) As String
Declare Function cCnvASCIItoEBCDIC (Txt As String) As Integer
Declare Function cCnvEBCDICtoASCII (Txt As String) As Integer
