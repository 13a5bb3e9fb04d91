' Binary conversions: numbers to the bytes they occupy in memory and back,
' at the start of a string or at an element position inside it, and singles
' between IEEE and Microsoft Binary Format.
' The strings are byte buffers, one byte per character, lowest byte first as the
' numbers lie in memory; they suit record buffers and random-access file records.
' The types take Byte 1, Integer 2, Long 4, Single 4, Double 8 and Currency 8 bytes.

' Makes a string holding the bytes of a number.
' The string is as long as the type (1 byte for cMKB, 2 for cMKI, 4 for cMKL and cMKS,
' 8 for cMKD and cMKC) and holds the number as it lies in memory, lowest byte first.
' cCVB to cCVC read it back.
' Value: the number to store; a Currency is stored as its whole count of
'   ten-thousandths.
' Returns: the string of 1, 2, 4 or 8 bytes.
' Example:
'   Debug.Print Len(cMKL(1000)), cCVL(cMKL(1000))   ' 4  1000
Declare Function cMKB (ByVal Value As Byte) As String
' Like cMKB, for an Integer (2 bytes).
Declare Function cMKI (ByVal Value As Integer) As String
' Like cMKB, for a Long (4 bytes).
Declare Function cMKL (ByVal Value As Long) As String
' Like cMKB, for a Single (4 bytes).
Declare Function cMKS (ByVal Value As Single) As String
' Like cMKB, for a Double (8 bytes).
Declare Function cMKD (ByVal Value As Double) As String
' Like cMKB, for a Currency (8 bytes).
Declare Function cMKC (ByVal Value As Currency) As String
' Makes a 10-byte string holding, as a Double, the whole number written in a text.
' The text is read up to its first zero byte: leading spaces, tabs and line breaks are
' skipped, then come an optional sign and decimal digits; the first other character
' ends the number, so "3.9" gives 3, "-17 apples" gives -17 and "abc" gives 0.
' Txt: the text; "" gives 0.
' Returns: 10 bytes: the 8 bytes of the Double (cCVD reads them), then two zero bytes.
' Note: a number beyond the range of a Long is held at 2147483647 or -2147483648. The
'   last two bytes carry no value; the library makes them zero.
' Example:
'   Debug.Print cCVD(cMKN("  -17 apples"))   ' -17
Declare Function cMKN (ByVal Txt As String) As String
' Reads a number from the first bytes of a string.
' The string holds the number as cMKB to cMKC make it; only the first 1 (cCVB),
' 2 (cCVI), 4 (cCVL, cCVS) or 8 (cCVD, cCVC) bytes are read, the rest is ignored.
' Txt: the string.
' Returns: the number; 0 for "".
' Note: the library never reads past the end of the string: in a string shorter than
'   the type the missing high bytes count as zero bytes, so cCVL of a 3-byte string
'   gives the value of those 3 bytes.
Declare Function cCVB (Txt As String) As Byte
' Like cCVB, for an Integer (2 bytes).
Declare Function cCVI (Txt As String) As Integer
' Like cCVB, for a Long (4 bytes).
Declare Function cCVL (Txt As String) As Long
' Like cCVB, for a Single (4 bytes).
Declare Function cCVS (Txt As String) As Single
' Like cCVB, for a Double (8 bytes).
Declare Function cCVD (Txt As String) As Double
' Like cCVB, for a Currency (8 bytes).
Declare Function cCVC (Txt As String) As Currency
' Reads a number stored at an element position inside a string.
' The string is taken as a row of elements of the type's width (1 byte for cGetCVB,
' 2 for cGetCVI, 4 for cGetCVL and cGetCVS, 8 for cGetCVD and cGetCVC); element n
' starts at byte (n - 1) * width + 1, so cGetCVI(Txt, 2) reads bytes 3 and 4.
' Txt: the string, a record buffer for instance.
' Position: the element number, counted from 1 in elements of the type, not in bytes.
' Returns: the number; 0 when Txt is "", Position is below 1 or the element does not
'   lie wholly inside Txt.
' Note: the library never reads past the end of the string; an element that does not
'   fit whole gives 0.
Declare Function cGetCVB (Txt As String, ByVal Position As Integer) As Byte
' Like cGetCVB, for an Integer (2 bytes).
Declare Function cGetCVI (Txt As String, ByVal Position As Integer) As Integer
' Like cGetCVB, for a Long (4 bytes).
Declare Function cGetCVL (Txt As String, ByVal Position As Integer) As Long
' Like cGetCVB, for a Single (4 bytes).
Declare Function cGetCVS (Txt As String, ByVal Position As Integer) As Single
' Like cGetCVB, for a Double (8 bytes).
Declare Function cGetCVD (Txt As String, ByVal Position As Integer) As Double
' Like cGetCVB, for a Currency (8 bytes).
Declare Function cGetCVC (Txt As String, ByVal Position As Integer) As Currency
' Writes a number into a string at an element position, in place.
' The bytes of Value replace those of the element; the string keeps its length.
' Elements are counted as in cGetCVB: 1 byte wide for cPutMKB, 2 for cPutMKI, 4 for
' cPutMKL and cPutMKS, 8 for cPutMKD and cPutMKC.
' Txt: the string variable to change; it must already be long enough.
' Position: the element number, counted from 1 in elements of the type, not in bytes.
' Value: the number to write.
' Returns: Position after writing; 0 when Txt is "" or the element does not lie wholly
'   inside Txt; Position itself when it is below 1 (so 0 gives 0). Nothing is written
'   in these cases.
' Note: the library never writes past the end of the string; an element that does not
'   fit whole is refused with 0 and the string stays as it was.
' Example:
'   Dim Rec As String
'   Rec = String$(8, 0)
'   cPutMKL Rec, 2, 1000            ' bytes 5 to 8
'   Debug.Print cGetCVL(Rec, 2)     ' 1000
Declare Function cPutMKB (Txt As String, ByVal Position As Integer, ByVal Value As Byte) As Integer
' Like cPutMKB, for an Integer (2 bytes).
Declare Function cPutMKI (Txt As String, ByVal Position As Integer, ByVal Value As Integer) As Integer
' Like cPutMKB, for a Long (4 bytes).
Declare Function cPutMKL (Txt As String, ByVal Position As Integer, ByVal Value As Long) As Integer
' Like cPutMKB, for a Single (4 bytes).
Declare Function cPutMKS (Txt As String, ByVal Position As Integer, ByVal Value As Single) As Integer
' Like cPutMKB, for a Double (8 bytes).
Declare Function cPutMKD (Txt As String, ByVal Position As Integer, ByVal Value As Double) As Integer
' Like cPutMKB, for a Currency (8 bytes).
Declare Function cPutMKC (Txt As String, ByVal Position As Integer, ByVal Value As Currency) As Integer
' Gives a copy of a string with a number written at an element position.
' As cPutMKB, but Txt is left as it is and the result is a new string of the same
' length. Elements are 1 byte wide for cPutMKBs, 2 for cPutMKIs, 4 for cPutMKLs and
' cPutMKSs, 8 for cPutMKDs and cPutMKCs.
' Txt: the string; it is not changed.
' Position: the element number, counted from 1 in elements of the type, not in bytes.
' Value: the number to write.
' Returns: the changed copy; "" when Txt is ""; Txt unchanged when Position is below 1,
'   when the element does not lie wholly inside Txt, or when no memory is left for the
'   copy.
' Note: the library never writes past the end of the string; an element that does not
'   fit whole leaves the result equal to Txt.
Declare Function cPutMKBs (Txt As String, ByVal Position As Integer, ByVal Value As Byte) As String
' Like cPutMKBs, for an Integer (2 bytes).
Declare Function cPutMKIs (Txt As String, ByVal Position As Integer, ByVal Value As Integer) As String
' Like cPutMKBs, for a Long (4 bytes).
Declare Function cPutMKLs (Txt As String, ByVal Position As Integer, ByVal Value As Long) As String
' Like cPutMKBs, for a Single (4 bytes).
Declare Function cPutMKSs (Txt As String, ByVal Position As Integer, ByVal Value As Single) As String
' Like cPutMKBs, for a Double (8 bytes).
Declare Function cPutMKDs (Txt As String, ByVal Position As Integer, ByVal Value As Double) As String
' Like cPutMKBs, for a Currency (8 bytes).
Declare Function cPutMKCs (Txt As String, ByVal Position As Integer, ByVal Value As Currency) As String
' Reads a Single stored in Microsoft Binary Format, as older Basic data files hold it.
' The first 4 bytes are taken as an MBF single (sign in the top bit of byte 3,
' exponent in byte 4) and turned into an ordinary Single: the sign is moved, the
' exponent lowered by 2 and the 23 mantissa bits kept exactly.
' Txt: the string; bytes after the fourth are ignored, missing ones count as zero.
' Returns: the value; 0 for "".
' Note: zero and the exponent range get no special treatment, so that old data come
'   out exactly as they always have: byte 4 = 0, the MBF zero, gives a huge number
'   (2 ^ 127, about 1.7E+38), byte 4 = 1 an infinity or an invalid number, byte 4 = 2
'   zero or a tiny number; test byte 4 for 0 yourself where MBF zeros occur. A string
'   of "" gives 0 rather than that huge number: a choice of the library's own.
' Example:
'   Debug.Print cCVSMBF(cMKSMBF(-0.5))   ' -0.5
Declare Function cCVSMBF (Txt As String) As Single
' Makes the 4-byte Microsoft Binary Format image of a Single.
' The mantissa is kept, the sign moved to the top bit of byte 3 and the exponent
' raised by 2 into byte 4; cCVSMBF reads the result back.
' Value: the number.
' Returns: the string of 4 bytes.
' Note: zero and the exponent range get no special treatment, as old data files
'   expect: 0 gives the bytes 0, 0, 0, 2, a tiny MBF number rather than the MBF zero
'   (cCVSMBF turns it back into 0); values of 2 ^ 127 or more in size wrap to
'   exponent byte 0, infinities and invalid numbers to 1.
' Example:
'   Debug.Print cToHexa(cMKSMBF(1))   ' 00000081
Declare Function cMKSMBF (ByVal Value As Single) As String
