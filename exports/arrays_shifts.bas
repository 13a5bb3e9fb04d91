' Typed arrays: shifting dimension 1 by one place, a new value entering at the end.
Declare Function cShiftLeftB (Arr() As Byte, ByVal Value As Byte) As Integer
Declare Function cShiftLeftI (Arr() As Integer, ByVal Value As Integer) As Integer
Declare Function cShiftLeftL (Arr() As Long, ByVal Value As Long) As Integer
Declare Function cShiftLeftS (Arr() As Single, ByVal Value As Single) As Integer
Declare Function cShiftLeftD (Arr() As Double, ByVal Value As Double) As Integer
Declare Function cShiftRightB (Arr() As Byte, ByVal Value As Byte) As Integer
Declare Function cShiftRightI (Arr() As Integer, ByVal Value As Integer) As Integer
Declare Function cShiftRightL (Arr() As Long, ByVal Value As Long) As Integer
Declare Function cShiftRightS (Arr() As Single, ByVal Value As Single) As Integer
Declare Function cShiftRightD (Arr() As Double, ByVal Value As Double) As Integer
