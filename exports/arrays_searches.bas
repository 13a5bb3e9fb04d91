' Typed arrays: counting and searching values, string arrays and look-up tables.
Declare Function cCountI (Arr() As Integer, ByVal Value As Integer) As Long
Declare Function cCountL (Arr() As Long, ByVal Value As Long) As Long
Declare Function cCountS (Arr() As Single, ByVal Value As Single) As Long
Declare Function cCountD (Arr() As Double, ByVal Value As Double) As Long
Declare Function cSearchI (Arr() As Integer, ByVal Value As Integer) As Long
Declare Function cSearchL (Arr() As Long, ByVal Value As Long) As Long
Declare Function cSearchS (Arr() As Single, ByVal Value As Single) As Long
Declare Function cSearchD (Arr() As Double, ByVal Value As Double) As Long
Declare Function cSearchStr (Arr() As String, Key As String, ByVal CaseSensitive As Integer) As Long
Declare Function cArrayLookUp (Arr() As String, Key As String, ByVal CaseSensitive As Integer) As String
