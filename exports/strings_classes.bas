' Character classes: class predicates, palindrome and ISBN-10 tests, digit utilities.
' Every byte of the string is tested, Chr(0) included. The classes are those of plain ASCII:
' characters 128 to 255, accented letters among them, belong to none.

' Tells whether every character of a text is a decimal digit.
' Txt: the text.
' Returns: True (-1) when every character is 0 to 9; False (0) otherwise, and for "".
Declare Function cIsDigit (Txt As String) As Integer
' Tells whether every character of a text is a letter.
' Txt: the text.
' Returns: True (-1) when every character is A to Z or a to z; False (0) otherwise, and for
'   "".
Declare Function cIsAlpha (Txt As String) As Integer
' Tells whether every character of a text is a lower-case letter.
' Txt: the text.
' Returns: True (-1) when every character is a to z; False (0) otherwise, and for "".
Declare Function cIsLower (Txt As String) As Integer
' Tells whether every character of a text is a capital letter.
' Txt: the text.
' Returns: True (-1) when every character is A to Z; False (0) otherwise, and for "".
Declare Function cIsUpper (Txt As String) As Integer
' Tells whether every character of a text is a hexadecimal digit.
' Txt: the text.
' Returns: True (-1) when every character is 0 to 9, A to F or a to f; False (0) otherwise,
'   and for "".
Declare Function cIsXdigit (Txt As String) As Integer
' Tells whether every character of a text is a letter or a digit.
' Txt: the text.
' Returns: True (-1) when every character is A to Z, a to z or 0 to 9; False (0) otherwise,
'   and for "".
Declare Function cIsAlnum (Txt As String) As Integer
' Tells whether every character of a text is a letter or a digit, as cIsAlnum does.
' Despite the name, "_" is not accepted: any text holding it gives False (0).
' Txt: the text.
' Returns: True (-1) when every character is A to Z, a to z or 0 to 9; False (0) otherwise,
'   and for "".
' Note: a character that fails the test is taken together with a "_" that follows it, but the
'   test then runs out of characters before the end of the text, and the library answers
'   False (0) there rather than read past the string.
Declare Function cIsCsym (Txt As String) As Integer
' Tells whether every character of a text is a letter, as cIsAlpha does.
' Despite the name, "_" is not accepted: any text holding it gives False (0).
' Txt: the text.
' Returns: True (-1) when every character is A to Z or a to z; False (0) otherwise, and for
'   "".
' Note: a character that fails the test is taken together with a "_" that follows it, but the
'   test then runs out of characters before the end of the text, and the library answers
'   False (0) there rather than read past the string.
Declare Function cIsCsymf (Txt As String) As Integer
' Tells whether every character of a text is a punctuation mark.
' Punctuation is every visible character that is neither a letter nor a digit: codes 33 to
' 47, 58 to 64, 91 to 96 and 123 to 126, "_" among them.
' Txt: the text.
' Returns: True (-1) when every character is punctuation; False (0) otherwise, and for "".
Declare Function cIsPunct (Txt As String) As Integer
' Tells whether every character of a text is white space.
' White space is the space and the characters 9 to 13 (tab, line feed, vertical tab, form
' feed, carriage return).
' Txt: the text.
' Returns: True (-1) when every character is white space; False (0) otherwise, and for "".
Declare Function cIsSpace (Txt As String) As Integer
' Tells whether every character of a text is a 7-bit ASCII character.
' Txt: the text.
' Returns: True (-1) when every character has a code from 0 to 127; False (0) when one is 128
'   or more, and for "".
Declare Function cIsAscii (Txt As String) As Integer
' Tells whether a text holds a valid ten-digit book number (ISBN-10).
' The digits are taken in order and every other character (hyphens, spaces) is skipped. There
' must be exactly ten, and the sum of each digit times its place (1 to 10) must divide by 11.
' A final check character "X" is not a digit, so numbers that end in X are refused.
' Txt: the text.
' Returns: True (-1) for a valid number; False (0) otherwise, and for "".
' Example:
'   Debug.Print cIsISBN("0-306-40615-2")   ' -1
Declare Function cIsISBN (Txt As String) As Integer
' Tells whether a text reads the same backwards.
' The comparison is exact: case, spaces and punctuation all count.
' Txt: the text.
' Returns: True (-1) for a palindrome, which any one-character text is; False (0) otherwise,
'   and for "".
Declare Function cIsPalindrome (Txt As String) As Integer
' Tells whether a text holds only decimal digits.
' It answers as cIsDigit does.
' Txt: the text.
' Returns: True (-1) when every character is 0 to 9; False (0) otherwise, and for "".
Declare Function cCheckNumericity (Txt As String) As Integer
' Adds up the decimal digits of a text.
' Characters other than 0 to 9 are ignored. The sum is an Integer: past 32,767 (more than
' 3,640 nines) it wraps round, keeping its low 16 bits.
' Txt: the text.
' Returns: the sum of the digits; 0 when there is none or Txt is "".
' Example:
'   Debug.Print cAddDigit("12-34")   ' 10
Declare Function cAddDigit (Txt As String) As Integer
' Gives the digital root of the digits of a text.
' The digits are added one by one and 9 is taken off whenever the sum passes 9, which gives
' the digit sum repeated down to one digit. Other characters are ignored.
' Txt: the text.
' Returns: 1 to 9; 0 when Txt holds no digit other than 0, or is "".
' Example:
'   Debug.Print cNumDigit("9875")   ' 2 (9 + 8 + 7 + 5 = 29, 2 + 9 = 11, 1 + 1 = 2)
Declare Function cNumDigit (Txt As String) As Integer
' Replaces every decimal digit of a text by its nines' complement.
' Each digit d becomes 9 - d, so "0" gives "9" and "3" gives "6"; other characters are kept.
' Txt: the text.
' Returns: the complemented text; "" when Txt is "".
' Example:
'   Debug.Print cCplDigit("A-0189")   ' A-9810
Declare Function cCplDigit (Txt As String) As String
' Complements every byte of a string.
' The character of code b becomes the character of code 255 - b; complementing twice gives
' the string back.
' Txt: the string; every byte counts, Chr(0) included.
' Returns: the complemented string, as long as Txt; "" when Txt is "".
Declare Function cCplAlpha (Txt As String) As String
