' Typed arrays: setting, adding and filling every element of dimension 1.
Declare Function cSetI (Arr() As Integer, ByVal Value As Integer) As Integer
Declare Function cSetD (Arr() As Double, ByVal Value As Double) As Integer
Declare Function cAddI (Arr() As Integer, ByVal Value As Integer) As Integer
Declare Function cAddS (Arr() As Single, ByVal Value As Single) As Integer
Declare Function cAddD (Arr() As Double, ByVal Value As Double) As Integer
Declare Function cFillI (Arr() As Integer, ByVal Start As Integer) As Integer
Declare Function cFillS (Arr() As Single, ByVal Start As Single) As Integer
Declare Function cFillD (Arr() As Double, ByVal Start As Double) As Integer
Declare Function cFillIncrI (Arr() As Integer, ByVal Start As Integer, ByVal Increment As Integer) As Integer
Declare Function cFillIncrS (Arr() As Single, ByVal Start As Single, ByVal Increment As Single) As Integer
Declare Function cFillIncrD (Arr() As Double, ByVal Start As Double, ByVal Increment As Double) As Integer
