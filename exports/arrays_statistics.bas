' Statistics: sums, means, deviations, largest and smallest values over dimension 1 of a
' numeric array, and the parameters of any array. The elements are read one by one from
' the lower bound to the upper bound, whatever the bounds are; of a two-dimensional array
' A(i, j), only the first column (every i, with j at its lower bound) is read.

' Adds up the elements of dimension 1 of an array.
' Every element is turned into a Double before it is added, so Integer and Long sums
' never overflow.
' Arr: the array.
' Returns: the sum; 0 for an array with no elements, one never dimensioned, or one of
'   Strings or Variants.
Declare Function cSumI (Arr() As Integer) As Double
' Like cSumI, for Long arrays.
Declare Function cSumL (Arr() As Long) As Double
' Like cSumI, for Single arrays.
Declare Function cSumS (Arr() As Single) As Double
' Like cSumI, for Double arrays.
Declare Function cSumD (Arr() As Double) As Double
' Gives the mean (average) of the elements of dimension 1 of an array.
' The sum, worked out as by cSumI, is divided by the number of elements.
' Arr: the array.
' Returns: the mean; for an array with no elements or one never dimensioned, not a
'   number (NaN, from 0 / 0), so check the bounds first; 0 for an array of Strings or
'   Variants.
Declare Function cMeanI (Arr() As Integer) As Double
' Like cMeanI, for Long arrays.
Declare Function cMeanL (Arr() As Long) As Double
' Like cMeanI, for Single arrays.
Declare Function cMeanS (Arr() As Single) As Double
' Like cMeanI, for Double arrays.
Declare Function cMeanD (Arr() As Double) As Double
' Gives a measure of spread of the elements of dimension 1 of an array around their mean.
' With n elements and S the sum of the squared differences from the mean, the result is
' Sqr(S) / n. That is neither the population nor the sample standard deviation: for 1, 2
' and 3 it gives 0.4714 where those give 0.8165 and 1. Multiply it by Sqr(n) to get the
' population deviation, or by n / Sqr(n - 1) to get the sample deviation.
' Arr: the array.
' Returns: the measure; 0 for a single element; not a number (NaN) for an array with no
'   elements or one never dimensioned; 0 for an array of Strings or Variants.
' Example:
'   Dim A(1 To 3) As Double
'   A(1) = 1: A(2) = 2: A(3) = 3
'   Debug.Print cDeviationD(A()) * Sqr(3)   ' about 0.8165, the population deviation
Declare Function cDeviationI (Arr() As Integer) As Double
' Like cDeviationI, for Long arrays.
Declare Function cDeviationL (Arr() As Long) As Double
' Like cDeviationI, for Single arrays.
Declare Function cDeviationS (Arr() As Single) As Double
' Like cDeviationI, for Double arrays.
Declare Function cDeviationD (Arr() As Double) As Double
' Gives the largest element of dimension 1 of an array.
' Arr: the array.
' Returns: the largest element, in the array's own type; 0 for an array with no elements,
'   one never dimensioned, or one of Strings or Variants.
' Note: an empty array has no largest element; the library gives 0 rather than an
'   undefined value.
Declare Function cMaxI (Arr() As Integer) As Integer
' Like cMaxI, for Long arrays.
Declare Function cMaxL (Arr() As Long) As Long
' Like cMaxI, for Single arrays.
Declare Function cMaxS (Arr() As Single) As Single
' Like cMaxI, for Double arrays.
Declare Function cMaxD (Arr() As Double) As Double
' Gives the smallest element of dimension 1 of an array.
' Arr: the array.
' Returns: the smallest element, in the array's own type; 0 for an array with no
'   elements, one never dimensioned, or one of Strings or Variants.
' Note: an empty array has no smallest element; the library gives 0 rather than an
'   undefined value.
Declare Function cMinI (Arr() As Integer) As Integer
' Like cMinI, for Long arrays.
Declare Function cMinL (Arr() As Long) As Long
' Like cMinI, for Single arrays.
Declare Function cMinS (Arr() As Single) As Single
' Like cMinI, for Double arrays.
Declare Function cMinD (Arr() As Double) As Double
' Gives the largest element of dimension 1 of an array, leaving out every element
' equal to X.
' The search starts from a fixed value, which comes back when no element other than X
' is larger: -32768 for Integer, -2147483648 for Long, -1.1754944E-38 for Single and
' -2.2250738585072014E-308 for Double. The Single and Double start values are tiny
' negative numbers, not the most negative ones, so an array whose other elements are all
' below them (all negative, say) gives that start value, not its largest element.
' Arr: the array.
' X: the value to leave out; elements must equal it exactly to be skipped.
' Returns: the largest element not equal to X; the start value above when every element
'   equals X, and for an array with no elements or one never dimensioned; 0 for an array
'   of Strings or Variants.
Declare Function cMaxNotXI (Arr() As Integer, ByVal X As Integer) As Integer
' Like cMaxNotXI, for Long arrays.
Declare Function cMaxNotXL (Arr() As Long, ByVal X As Long) As Long
' Like cMaxNotXI, for Single arrays.
Declare Function cMaxNotXS (Arr() As Single, ByVal X As Single) As Single
' Like cMaxNotXI, for Double arrays.
Declare Function cMaxNotXD (Arr() As Double, ByVal X As Double) As Double
' Gives the smallest element of dimension 1 of an array, leaving out every element
' equal to X.
' The search starts from the largest value of the type, which comes back when no element
' other than X is smaller: 32767 for Integer, 2147483647 for Long, 3.4028235E+38 for
' Single and 1.7976931348623157E+308 for Double.
' Arr: the array.
' X: the value to leave out; elements must equal it exactly to be skipped.
' Returns: the smallest element not equal to X; the start value above when every element
'   equals X, and for an array with no elements or one never dimensioned; 0 for an array
'   of Strings or Variants.
Declare Function cMinNotXI (Arr() As Integer, ByVal X As Integer) As Integer
' Like cMinNotXI, for Long arrays.
Declare Function cMinNotXL (Arr() As Long, ByVal X As Long) As Long
' Like cMinNotXI, for Single arrays.
Declare Function cMinNotXS (Arr() As Single, ByVal X As Single) As Single
' Like cMinNotXI, for Double arrays.
Declare Function cMinNotXD (Arr() As Double, ByVal X As Double) As Double

' Receives the bounds, element size and dimension count of an array from cArrayPrm.
' The bounds and the count are Integers, so values outside -32768 to 32767 wrap around
' (a bound of 70000 reads as 4464).
' Reserved: always 0.
' LowerBound: the lower bound of dimension 1.
' UpperBound: the upper bound of dimension 1.
' ElementSize: the size of one element in bytes: 1 for Byte, 2 for Integer, 4 for Long
'   or Single, 8 for Double, the size of the record for a user-defined type.
' Dimensions: the number of dimensions.
' Count: the number of elements of dimension 1, UpperBound - LowerBound + 1 worked out
'   on the Integer fields, so above 32767 elements it turns negative or wrong.
Type ArrayParameters
    Reserved As Long
    LowerBound As Integer
    UpperBound As Integer
    ElementSize As Integer
    Dimensions As Integer
    Count As Integer
End Type
' Fills a record with the bounds, element size and dimension count of any array.
' Arr: the array, of any type and any number of dimensions; the bounds are those of
'   dimension 1.
' Prm: the record that receives the parameters.
' Returns: True (-1); for an array never dimensioned every field is set to 0.
Declare Function cArrayPrm (Arr() As Any, Prm As ArrayParameters) As Integer
