' Binary conversions: numbers to the bytes they occupy in memory and back,
' at the start of a string or at an element position inside it, and singles
' between IEEE and Microsoft Binary Format.
Declare Function cMKB (ByVal Value As Byte) As String
Declare Function cMKI (ByVal Value As Integer) As String
Declare Function cMKL (ByVal Value As Long) As String
Declare Function cMKS (ByVal Value As Single) As String
Declare Function cMKD (ByVal Value As Double) As String
Declare Function cMKC (ByVal Value As Currency) As String
Declare Function cMKN (ByVal Txt As String) As String
Declare Function cCVB (Txt As String) As Byte
Declare Function cCVI (Txt As String) As Integer
Declare Function cCVL (Txt As String) As Long
Declare Function cCVS (Txt As String) As Single
Declare Function cCVD (Txt As String) As Double
Declare Function cCVC (Txt As String) As Currency
Declare Function cGetCVB (Txt As String, ByVal Position As Integer) As Byte
Declare Function cGetCVI (Txt As String, ByVal Position As Integer) As Integer
Declare Function cGetCVL (Txt As String, ByVal Position As Integer) As Long
Declare Function cGetCVS (Txt As String, ByVal Position As Integer) As Single
Declare Function cGetCVD (Txt As String, ByVal Position As Integer) As Double
Declare Function cGetCVC (Txt As String, ByVal Position As Integer) As Currency
Declare Function cPutMKB (Txt As String, ByVal Position As Integer, ByVal Value As Byte) As Integer
Declare Function cPutMKI (Txt As String, ByVal Position As Integer, ByVal Value As Integer) As Integer
Declare Function cPutMKL (Txt As String, ByVal Position As Integer, ByVal Value As Long) As Integer
Declare Function cPutMKS (Txt As String, ByVal Position As Integer, ByVal Value As Single) As Integer
Declare Function cPutMKD (Txt As String, ByVal Position As Integer, ByVal Value As Double) As Integer
Declare Function cPutMKC (Txt As String, ByVal Position As Integer, ByVal Value As Currency) As Integer
Declare Function cPutMKBs (Txt As String, ByVal Position As Integer, ByVal Value As Byte) As String
Declare Function cPutMKIs (Txt As String, ByVal Position As Integer, ByVal Value As Integer) As String
Declare Function cPutMKLs (Txt As String, ByVal Position As Integer, ByVal Value As Long) As String
Declare Function cPutMKSs (Txt As String, ByVal Position As Integer, ByVal Value As Single) As String
Declare Function cPutMKDs (Txt As String, ByVal Position As Integer, ByVal Value As Double) As String
Declare Function cPutMKCs (Txt As String, ByVal Position As Integer, ByVal Value As Currency) As String
Declare Function cCVSMBF (Txt As String) As Single
Declare Function cMKSMBF (ByVal Value As Single) As String
