' Array checksums: the CRC-32 of the bytes that hold the elements of a numeric array,
' taken as they lie in memory (low byte first).

' Gives the CRC-32 of the elements of dimension 1 of an array.
' The checksum is the standard CRC-32 (the one of zip and gzip files) over the bytes of
' the elements, from the lower bound to the upper bound. The five forms differ only in
' the array type VB accepts: the element size always comes from the array itself.
' Arr: the array. Of a two-dimensional array A(i, j), only the first column (every i,
'   with j at its lower bound) is covered.
' Returns: the CRC-32 as a Long (values of &H80000000 and above come out negative); 0 for
'   an array with no elements, one never dimensioned, or one of more than two dimensions.
' Example:
'   Dim B() As Byte
'   B = StrConv("123456789", vbFromUnicode)
'   Debug.Print Hex(cCrc32B(B()))   ' CBF43926
Declare Function cCrc32B (Arr() As Byte) As Long
' Like cCrc32B, for Integer arrays.
Declare Function cCrc32I (Arr() As Integer) As Long
' Like cCrc32B, for Long arrays.
Declare Function cCrc32L (Arr() As Long) As Long
' Like cCrc32B, for Single arrays.
Declare Function cCrc32S (Arr() As Single) As Long
' Like cCrc32B, for Double arrays.
Declare Function cCrc32D (Arr() As Double) As Long
