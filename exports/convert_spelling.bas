' Number spelling: numbers and amounts in English words.
' Whole numbers from 0 to 999,999,999,999,999 are spelled in groups of three digits with the
' scale words Thousand, Million, Billion and Trillion. Every word starts with a capital, tens
' and units are joined by a hyphen, and no "and" stands inside a number: 1234 gives
' "One Thousand Two Hundred Thirty-Four".

' Spells a number in English words, its fraction digit by digit.
' The whole part is spelled as a number; a fraction follows Word, each of its digits spelled
' as a word of its own. A zero among those digits adds no word, so 1.05 and 1.5 both give
' "One Point Five"; a fraction that rounds up to 1 leaves only Word ("Two Point" for 2.999 with
' Digits 2). A value without a fraction gets no Word.
' Value: the number, less than 1E+15 in size.
' Digits: how many significant digits of the fraction are kept, rounded; 1 to 17 (below 1
'   counts as 1, above 17 as 17). Keep within what a Double holds, about 15 digits with
'   those of the whole part: 1.1 with Digits 17 gives "One Point One Nine".
' Word: the word between the whole part and the fraction, such as "Point"; read up to its
'   first Chr(0). "" leaves two spaces there.
' Returns: the words, without a trailing space; "" when Value is 1E+15 or more in size, an
'   infinity or not a number.
' Note: a negative value is spelled as its size after "Minus ". Word is cut to 27 characters,
'   so that no result is longer than 255. A fraction below 0.1 is spelled from its plain
'   decimals, up to 30 of them (0.05 as the digits 0 and 5).
' Example:
'   Debug.Print cSpellNumber(21.25, 2, "Point")   ' Twenty-One Point Two Five
Declare Function cSpellNumber (ByVal Value As Double, ByVal Digits As Integer, ByVal Word As String) As String
' Spells an amount of money in English words, with a currency name and cents.
' The whole part is spelled as a number and followed by CurrencyName. When Value has a
' fraction, " and", the cents (the fraction times 100, rounded half up) and CentsName follow.
' The names are written as given, so 1 gives "One Dollars". Round the amount to cents first:
' a fraction below half a cent still writes "and" and CentsName ("Two Dollars and Cents" for
' 2.001), and one that rounds to 100 cents gives "One Hundred Cents".
' Value: the amount, less than 1E+15 in size.
' CurrencyName: the name of the currency, such as "Dollars"; read up to its first Chr(0).
'   "" writes no name.
' CentsName: the name of the cents, such as "Cents"; read up to its first Chr(0). "" writes
'   no name.
' Returns: the words, without a trailing space; "" when Value is 1E+15 or more in size, an
'   infinity or not a number.
' Note: a negative amount is spelled as its size after "Minus ". CurrencyName and CentsName
'   are cut to 19 characters, so that no result is longer than 255.
' Example:
'   Debug.Print cSpellMoney(Round(1234.5, 2), "Dollars", "Cents")
'   ' One Thousand Two Hundred Thirty-Four Dollars and Fifty Cents
Declare Function cSpellMoney (ByVal Value As Double, ByVal CurrencyName As String, ByVal CentsName As String) As String
