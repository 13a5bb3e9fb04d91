' Typed arrays: statistics over dimension 1, and the parameters of an array.
Declare Function cSumI (Arr() As Integer) As Double
Declare Function cSumL (Arr() As Long) As Double
Declare Function cSumS (Arr() As Single) As Double
Declare Function cSumD (Arr() As Double) As Double
Declare Function cMeanI (Arr() As Integer) As Double
Declare Function cMeanL (Arr() As Long) As Double
Declare Function cMeanS (Arr() As Single) As Double
Declare Function cMeanD (Arr() As Double) As Double
Declare Function cDeviationI (Arr() As Integer) As Double
Declare Function cDeviationL (Arr() As Long) As Double
Declare Function cDeviationS (Arr() As Single) As Double
Declare Function cDeviationD (Arr() As Double) As Double
Declare Function cMaxI (Arr() As Integer) As Integer
Declare Function cMaxL (Arr() As Long) As Long
Declare Function cMaxS (Arr() As Single) As Single
Declare Function cMaxD (Arr() As Double) As Double
Declare Function cMinI (Arr() As Integer) As Integer
Declare Function cMinL (Arr() As Long) As Long
Declare Function cMinS (Arr() As Single) As Single
Declare Function cMinD (Arr() As Double) As Double
Declare Function cMaxNotXI (Arr() As Integer, ByVal X As Integer) As Integer
Declare Function cMaxNotXL (Arr() As Long, ByVal X As Long) As Long
Declare Function cMaxNotXS (Arr() As Single, ByVal X As Single) As Single
Declare Function cMaxNotXD (Arr() As Double, ByVal X As Double) As Double
Declare Function cMinNotXI (Arr() As Integer, ByVal X As Integer) As Integer
Declare Function cMinNotXL (Arr() As Long, ByVal X As Long) As Long
Declare Function cMinNotXS (Arr() As Single, ByVal X As Single) As Single
Declare Function cMinNotXD (Arr() As Double, ByVal X As Double) As Double

Type ArrayParameters
    Reserved As Long
    LowerBound As Integer
    UpperBound As Integer
    ElementSize As Integer
    Dimensions As Integer
    Count As Integer
End Type
Declare Function cArrayPrm (Arr() As Any, Prm As ArrayParameters) As Integer
