' Counting and searching: equal values in numeric arrays, keys in String arrays, and
' two-column look-up tables of strings. Subscripts are the array's own, not positions
' counted from 1.

' Counts the elements of dimension 1 of an array that equal a value.
' Single and Double elements must be exactly equal (results of calculations may differ
' in their last digit), and a NaN equals nothing.
' Arr: the array. Of a two-dimensional array A(i, j), only the first column (every i,
'   with j at its lower bound) is read.
' Value: the value to count.
' Returns: the number of equal elements; 0 when there is none, and for an array with no
'   elements, one never dimensioned, or one of Strings or Variants.
Declare Function cCountI (Arr() As Integer, ByVal Value As Integer) As Long
' Like cCountI, for Long arrays.
Declare Function cCountL (Arr() As Long, ByVal Value As Long) As Long
' Like cCountI, for Single arrays.
Declare Function cCountS (Arr() As Single, ByVal Value As Single) As Long
' Like cCountI, for Double arrays.
Declare Function cCountD (Arr() As Double, ByVal Value As Double) As Long
' Finds the first element of dimension 1 of an array that equals a value.
' The search runs from the lower bound up; Single and Double elements must be exactly
' equal, and a NaN equals nothing.
' Arr: the array. Of a two-dimensional array A(i, j), only the first column (every i,
'   with j at its lower bound) is searched.
' Value: the value to find.
' Returns: the subscript of the first equal element, in the array's own bounds; -1 when
'   none is equal, the array has no elements, was never dimensioned, or holds Strings or
'   Variants. In an array whose
'   bounds include -1, test A(-1) yourself to tell the two apart.
Declare Function cSearchI (Arr() As Integer, ByVal Value As Integer) As Long
' Like cSearchI, for Long arrays.
Declare Function cSearchL (Arr() As Long, ByVal Value As Long) As Long
' Like cSearchI, for Single arrays.
Declare Function cSearchS (Arr() As Single, ByVal Value As Single) As Long
' Like cSearchI, for Double arrays.
Declare Function cSearchD (Arr() As Double, ByVal Value As Double) As Long
' Finds the last element of a String array that equals a key.
' Every element is compared in subscript order and each match replaces the previous one,
' so the subscript of the last match comes back. Texts are compared up to their first
' Chr(0). An empty element (one never assigned included) matches only an empty Key.
' Arr: the String array. Of a two-dimensional array A(i, j), only the first column (every
'   i, with j at its lower bound) is searched.
' Key: the text to find.
' CaseSensitive: True (-1) compares byte for byte; any other value treats the capitals A
'   to Z as their small letters (accented letters are compared as they are).
' Returns: the subscript of the last matching element, in the array's own bounds; -1
'   when none matches, and for an array with no elements, never dimensioned, of more than
'   two dimensions or not of Strings.
Declare Function cSearchStr (Arr() As String, Key As String, ByVal CaseSensitive As Integer) As Long
' Gives the value paired with a key in a two-column table of strings.
' Each row i of the table holds a key in Arr(i, 1) and its value in Arr(i, 2); those are
' the subscripts 1 and 2 of dimension 2 whatever its lower bound, so declare the table
' as (first To last, 1 To 2). Rows are read from the lower bound of dimension 1 up and
' each match replaces the previous one: the last matching row wins. Keys are compared
' as by cSearchStr, except that a key cell never assigned matches every Key.
' Arr: the table, a two-dimensional String array.
' Key: the key to look up.
' CaseSensitive: True (-1) compares byte for byte; any other value treats the capitals A
'   to Z as their small letters.
' Returns: the value of the last matching row; "" when no row matches, when the matching
'   row has no value, or when Arr is not a two-dimensional String array.
' Example:
'   Dim T(1 To 3, 1 To 2) As String
'   T(1, 1) = "red": T(1, 2) = "FF0000"
'   T(2, 1) = "green": T(2, 2) = "00FF00"
'   T(3, 1) = "blue": T(3, 2) = "0000FF"
'   Debug.Print cArrayLookUp(T(), "GREEN", False)   ' 00FF00
Declare Function cArrayLookUp (Arr() As String, Key As String, ByVal CaseSensitive As Integer) As String
