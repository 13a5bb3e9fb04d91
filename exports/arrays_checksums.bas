' Typed arrays: the CRC-32 of the data bytes of dimension 1.
Declare Function cCrc32B (Arr() As Byte) As Long
Declare Function cCrc32I (Arr() As Integer) As Long
Declare Function cCrc32L (Arr() As Long) As Long
Declare Function cCrc32S (Arr() As Single) As Long
Declare Function cCrc32D (Arr() As Double) As Long
