' Number spelling: numbers and amounts in English words.
Declare Function cSpellNumber (ByVal Value As Double, ByVal Digits As Integer, ByVal Word As String) As String
Declare Function cSpellMoney (ByVal Value As Double, ByVal CurrencyName As String, ByVal CentsName As String) As String
