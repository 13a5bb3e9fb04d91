' Typed arrays: removing duplicate elements or record slices (sorted first).
Declare Function cRmvDupI (Arr() As Integer, ByVal UseFile As Integer, FileName As String, ByVal Shrink As Integer) As Long
Declare Function cRmvDupL (Arr() As Long, ByVal UseFile As Integer, FileName As String, ByVal Shrink As Integer) As Long
Declare Function cRmvDupS (Arr() As Single, ByVal UseFile As Integer, FileName As String, ByVal Shrink As Integer) As Long
Declare Function cRmvDupD (Arr() As Double, ByVal UseFile As Integer, FileName As String, ByVal Shrink As Integer) As Long
