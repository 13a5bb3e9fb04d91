' Removing duplicates: sorting a numeric array and keeping one of each value, or one of
' each record of a two-dimensional array.

' Sorts an array ascending and keeps one copy of each distinct value at its front.
' The array is first sorted as cSortI sorts it. Of a two-dimensional array A(i, j) each
' j is one record (all its i) and whole records are sorted and compared. Values or
' records count as duplicates only when their bytes are identical (for Single and Double,
' 0 and -0 stay two values). The distinct ones end up in ascending order from the lower
' bound (of dimension 2 for records).
' Arr: the array, of one or two dimensions.
' UseFile: True (-1) passes the distinct values through a scratch file instead of moving
'   them inside the array; any other value works in memory, which is faster.
' FileName: the scratch file when UseFile is True: a file of that name is overwritten
'   and then deleted. "" makes a new file with a name no file in the current directory
'   has (as cUniqueFileName does), so no file of the caller's is touched and calls at
'   once each have their own. Ignored when UseFile is not True.
' Shrink: True (-1) redimensions the array (as ReDim Preserve, the lower bound kept) so
'   that it holds just the distinct values or records; any other value leaves its size
'   alone. An array of fixed size is never resized.
' Returns: the number of distinct values or records; 0 for an array never dimensioned,
'   of more than two dimensions or not numeric (then unchanged). With UseFile True, a
'   scratch file that fails gives a negative code; the file is removed in every case,
'   and after -2 or -4 the array is left sorted but not reduced, after -5 its front may
'   be partly overwritten:
'   - -1: the scratch file could not be created (the array is unchanged).
'   - -2: writing to the scratch file failed.
'   - -4: the scratch file could not be read from its start.
'   - -5: reading the scratch file back failed.
'   The file is read back through the handle that wrote it, so -3 (a file that could
'   not be completed on closing) does not arise.
' Note: without Shrink, the elements behind the distinct ones keep what the sort left
'   there, so the array's end still holds sorted values, some of them repeated.
' Example:
'   Dim A() As Long
'   ReDim A(1 To 6): A(1) = 30: A(2) = 10: A(3) = 30: A(4) = 20: A(5) = 10: A(6) = 30
'   n = cRmvDupL(A(), False, "", True)   ' n = 3, A is now (1 To 3) = 10, 20, 30
Declare Function cRmvDupI (Arr() As Integer, ByVal UseFile As Integer, FileName As String, ByVal Shrink As Integer) As Long
' Like cRmvDupI, for Long arrays.
Declare Function cRmvDupL (Arr() As Long, ByVal UseFile As Integer, FileName As String, ByVal Shrink As Integer) As Long
' Like cRmvDupI, for Single arrays.
Declare Function cRmvDupS (Arr() As Single, ByVal UseFile As Integer, FileName As String, ByVal Shrink As Integer) As Long
' Like cRmvDupI, for Double arrays.
Declare Function cRmvDupD (Arr() As Double, ByVal UseFile As Integer, FileName As String, ByVal Shrink As Integer) As Long
