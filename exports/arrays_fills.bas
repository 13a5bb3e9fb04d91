' Setting and filling: giving every element of dimension 1 a value, adding to every
' element, and filling with a running series. The elements are visited one by one from
' the lower bound to the upper bound, whatever the bounds are.

' Sets every element of dimension 1 of an array to one value.
' Arr: the array. Of a two-dimensional array A(i, j), only the first column (every i,
'   with j at its lower bound) is set.
' Value: the value given to each element.
' Returns: True (-1), also for an array with no elements or one never dimensioned;
'   False (0) for an array of Strings or Variants, which is left alone.
Declare Function cSetI (Arr() As Integer, ByVal Value As Integer) As Integer
' Like cSetI, for Double arrays.
Declare Function cSetD (Arr() As Double, ByVal Value As Double) As Integer
' Adds one value to every element of dimension 1 of an array.
' Integer sums wrap around instead of overflowing (32767 + 1 gives -32768); Single sums
' are worked out in Single precision.
' Arr: the array. Of a two-dimensional array A(i, j), only the first column (every i,
'   with j at its lower bound) changes.
' Value: the amount added to each element; a negative one subtracts.
' Returns: True (-1), also for an array with no elements or one never dimensioned;
'   False (0) for an array of Strings or Variants, which is left alone.
Declare Function cAddI (Arr() As Integer, ByVal Value As Integer) As Integer
' Like cAddI, for Single arrays.
Declare Function cAddS (Arr() As Single, ByVal Value As Single) As Integer
' Like cAddI, for Double arrays.
Declare Function cAddD (Arr() As Double, ByVal Value As Double) As Integer
' Fills an array with a series that starts at a value and rises by 1.
' The element at the lower bound receives Start, the next Start + 1, and so on to the
' upper bound. An Integer series wraps around past 32767 to -32768.
' Arr: the array. Of a two-dimensional array A(i, j), only the first column (every i,
'   with j at its lower bound) is filled.
' Start: the value of the first element.
' Returns: True (-1), also for an array with no elements or one never dimensioned;
'   False (0) for an array of Strings or Variants, which is left alone.
' Example:
'   Dim A(1 To 4) As Double
'   r = cFillD(A(), 0.5)   ' A = 0.5, 1.5, 2.5, 3.5
Declare Function cFillI (Arr() As Integer, ByVal Start As Integer) As Integer
' Like cFillI, for Single arrays.
Declare Function cFillS (Arr() As Single, ByVal Start As Single) As Integer
' Like cFillI, for Double arrays.
Declare Function cFillD (Arr() As Double, ByVal Start As Double) As Integer
' Fills an array with a series that starts at a value and changes by a fixed step.
' The element at the lower bound receives Start and each next one the previous value plus
' Increment, in the array's own type: an Integer series wraps around past 32767 or
' -32768, and the rounding of Single and Double steps builds up as it would in a loop.
' Arr: the array. Of a two-dimensional array A(i, j), only the first column (every i,
'   with j at its lower bound) is filled.
' Start: the value of the first element.
' Increment: the step between neighbours; it may be negative or 0.
' Returns: True (-1), also for an array with no elements or one never dimensioned;
'   False (0) for an array of Strings or Variants, which is left alone.
' Example:
'   Dim A(1 To 3) As Integer
'   r = cFillIncrI(A(), 10, -7)   ' A = 10, 3, -4
Declare Function cFillIncrI (Arr() As Integer, ByVal Start As Integer, ByVal Increment As Integer) As Integer
' Like cFillIncrI, for Single arrays.
Declare Function cFillIncrS (Arr() As Single, ByVal Start As Single, ByVal Increment As Single) As Integer
' Like cFillIncrI, for Double arrays.
Declare Function cFillIncrD (Arr() As Double, ByVal Start As Double, ByVal Increment As Double) As Integer
