' Typed arrays: numeric sorts (elements or record slices), records packed in a
' string, and the multi-key sort of an array of records.
Declare Function cSortI (Arr() As Integer) As Integer
Declare Function cSortL (Arr() As Long) As Integer
Declare Function cSortS (Arr() As Single) As Integer
Declare Function cSortD (Arr() As Double) As Integer
Declare Function cReverseSortI (Arr() As Integer) As Integer
Declare Function cReverseSortL (Arr() As Long) As Integer
Declare Function cReverseSortS (Arr() As Single) As Integer
Declare Function cReverseSortD (Arr() As Double) As Integer
Declare Function cSortStr (Txt As String, ByVal Count As Long, ByVal RecordSize As Long) As Integer
Declare Function cReverseSortStr (Txt As String, ByVal Count As Long, ByVal RecordSize As Long) As Integer

Type TypedSortDescriptor
    RecordSize As Long
    CurrentKey As Long
    KeyOffset(0 To 9) As Integer
    KeyLength(0 To 9) As Integer
    KeyType(0 To 9) As Integer
    KeyOrder(0 To 9) As Integer
End Type
Declare Function cSortTypedArray (Arr() As Any, Descriptor As TypedSortDescriptor) As Integer
