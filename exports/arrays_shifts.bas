' Shifting: moving every element of dimension 1 of a numeric array one place along,
' the first or last element dropping out and a new value entering at the other end.

' Moves every element one place towards the lower bound and puts a value in the last.
' The element at the lower bound is lost; the others move down by one subscript, and
' Value goes to the upper bound, as in a window sliding over a stream of readings.
' Arr: the array. Of a two-dimensional array A(i, j), only the first column (every i,
'   with j at its lower bound) moves.
' Value: the value stored at the upper bound.
' Returns: True (-1), also for an array with no elements; 0 for an array never
'   dimensioned or of more than two dimensions (then unchanged).
' Example:
'   Dim W(1 To 3) As Long
'   W(1) = 1: W(2) = 2: W(3) = 3
'   r = cShiftLeftL(W(), 4)   ' W = 2, 3, 4
Declare Function cShiftLeftB (Arr() As Byte, ByVal Value As Byte) As Integer
' Like cShiftLeftB, for Integer arrays.
Declare Function cShiftLeftI (Arr() As Integer, ByVal Value As Integer) As Integer
' Like cShiftLeftB, for Long arrays.
Declare Function cShiftLeftL (Arr() As Long, ByVal Value As Long) As Integer
' Like cShiftLeftB, for Single arrays.
Declare Function cShiftLeftS (Arr() As Single, ByVal Value As Single) As Integer
' Like cShiftLeftB, for Double arrays.
Declare Function cShiftLeftD (Arr() As Double, ByVal Value As Double) As Integer
' Moves every element one place towards the upper bound and puts a value in the first.
' The element at the upper bound is lost; the others move up by one subscript, and Value
' goes to the lower bound.
' Arr: the array. Of a two-dimensional array A(i, j), only the first column (every i,
'   with j at its lower bound) moves.
' Value: the value stored at the lower bound.
' Returns: True (-1), also for an array with no elements; 0 for an array never
'   dimensioned or of more than two dimensions (then unchanged).
Declare Function cShiftRightB (Arr() As Byte, ByVal Value As Byte) As Integer
' Like cShiftRightB, for Integer arrays.
Declare Function cShiftRightI (Arr() As Integer, ByVal Value As Integer) As Integer
' Like cShiftRightB, for Long arrays.
Declare Function cShiftRightL (Arr() As Long, ByVal Value As Long) As Integer
' Like cShiftRightB, for Single arrays.
Declare Function cShiftRightS (Arr() As Single, ByVal Value As Single) As Integer
' Like cShiftRightB, for Double arrays.
Declare Function cShiftRightD (Arr() As Double, ByVal Value As Double) As Integer
