' Text and number conversions: interest factors, hexadecimal and base-36
' text, Roman numerals, Morse code, ASCII and EBCDIC.
' The interest factors convert between a present sum (P), a future sum (F) and a
' series of equal payments at the end of each period (A); the names read "A to F"
' and so on, and the ones ending in C compound continuously.

' Gives the future value of a series of equal payments of 1 (F given A).
' The factor is ((1 + Rate) ^ Periods - 1) / Rate: multiply a payment by it to get
' the sum at the end of the last period.
' Rate: the interest rate per period as a fraction, 0.05 for 5 %; it may be negative.
' Periods: the number of periods, from 1.
' Returns: the factor; -1 when Rate is 0 or Periods is below 1.
' Example:
'   Debug.Print cAtoF(0.1, 2)   ' 2.1
Declare Function cAtoF (ByVal Rate As Double, ByVal Periods As Integer) As Double
' Gives the present value of a series of equal payments of 1 (P given A).
' The factor is ((1 + Rate) ^ Periods - 1) / Rate / (1 + Rate) ^ Periods.
' Rate: the interest rate per period as a fraction, 0.05 for 5 %; it may be negative.
' Periods: the number of periods, from 1.
' Returns: the factor; -1 when Rate is 0 or Periods is below 1.
Declare Function cAtoP (ByVal Rate As Double, ByVal Periods As Integer) As Double
' Gives the payment per period that builds up a future sum of 1 (A given F).
' The factor is Rate / ((1 + Rate) ^ Periods - 1), the inverse of cAtoF.
' Rate: the interest rate per period as a fraction, 0.05 for 5 %; it may be negative.
' Periods: the number of periods, from 1.
' Returns: the factor; -1 when Rate is 0 or Periods is below 1.
Declare Function cFtoA (ByVal Rate As Double, ByVal Periods As Integer) As Double
' Gives the present value of a future sum of 1 (P given F).
' The factor is 1 / (1 + Rate) ^ Periods.
' Rate: the interest rate per period as a fraction, 0.05 for 5 %; it may be negative.
' Periods: the number of periods, from 1.
' Returns: the factor; -1 when Rate is 0 or Periods is below 1.
Declare Function cFtoP (ByVal Rate As Double, ByVal Periods As Integer) As Double
' Gives the payment per period that pays off a present sum of 1 (A given P).
' The factor is (1 + Rate) ^ Periods / (((1 + Rate) ^ Periods - 1) / Rate), the
' inverse of cAtoP: the instalment of a loan of 1.
' Rate: the interest rate per period as a fraction, 0.05 for 5 %; it may be negative.
' Periods: the number of periods, from 1.
' Returns: the factor; -1 when Rate is 0 or Periods is below 1.
Declare Function cPtoA (ByVal Rate As Double, ByVal Periods As Integer) As Double
' Gives the future value of a present sum of 1 (F given P).
' The factor is (1 + Rate) ^ Periods.
' Rate: the interest rate per period as a fraction, 0.05 for 5 %; it may be negative.
' Periods: the number of periods, from 1.
' Returns: the factor; -1 when Rate is 0 or Periods is below 1 (even though the
'   growth at a zero rate would be 1).
' Example:
'   Debug.Print cPtoF(0.1, 2)   ' 1.21
Declare Function cPtoF (ByVal Rate As Double, ByVal Periods As Integer) As Double
' Gives the future value of a series of equal payments of 1, compounded continuously.
' Interest is compounded continuously at the nominal Rate, so a sum grows by e ^ Rate
' in each period. Every factor ending in C is its plain twin with e ^ (Rate * Periods)
' in place of (1 + Rate) ^ Periods and e ^ Rate - 1 in place of Rate; here that gives
' (e ^ (Rate * Periods) - 1) / (e ^ Rate - 1).
' Rate: the nominal interest rate per period as a fraction, 0.05 for 5 %.
' Periods: the number of periods, from 1.
' Returns: the factor; -1 when Rate is 0 or Periods is below 1.
' Note: e is taken as 2.718281828459 in all six continuous factors, as they have
'   always been computed; results differ from those of the exact constant in the last
'   few digits.
Declare Function cAtoFC (ByVal Rate As Double, ByVal Periods As Integer) As Double
' Like cAtoP, compounded continuously as cAtoFC explains.
Declare Function cAtoPC (ByVal Rate As Double, ByVal Periods As Integer) As Double
' Like cFtoA, compounded continuously as cAtoFC explains.
Declare Function cFtoAC (ByVal Rate As Double, ByVal Periods As Integer) As Double
' Like cFtoP, compounded continuously as cAtoFC explains.
Declare Function cFtoPC (ByVal Rate As Double, ByVal Periods As Integer) As Double
' Like cPtoA, compounded continuously as cAtoFC explains.
Declare Function cPtoAC (ByVal Rate As Double, ByVal Periods As Integer) As Double
' Like cPtoF, compounded continuously as cAtoFC explains.
Declare Function cPtoFC (ByVal Rate As Double, ByVal Periods As Integer) As Double
' Writes each byte of a string as two hexadecimal digits.
' The high half of the byte comes first, with the digits 0 to 9 and capital A to F;
' every byte counts, zero bytes included. cFromHexa reads the result back.
' Txt: the string.
' Returns: a string twice as long as Txt; "" for "".
' Example:
'   Debug.Print cToHexa("Hi")   ' 4869
Declare Function cToHexa (Txt As String) As String
' Turns pairs of hexadecimal digits into the bytes they stand for.
' Each pair of characters gives one byte, high digit first; letters may be capitals
' or small. A last odd character is ignored.
' Txt: the digits, with no spaces or prefix between them.
' Returns: a string half as long as Txt (rounded down); "" when Txt has fewer than 2
'   characters.
' Note: the digits are not checked. Any other character still gives a value (its
'   character code minus 48 below "A", minus 55 from "A" below "a", minus 87 from "a"
'   up, so "G" counts 16) and the byte is taken Mod 256; check Txt first when it may
'   hold other characters.
Declare Function cFromHexa (Txt As String) As String
' Gives the Integer value of a hexadecimal number of up to 4 digits.
' Digits, capitals or small, are read from the start; reading stops at the first
' character that is not a hexadecimal digit, so "1G" gives 1 and "G1" gives 0. The
' digits make the bit pattern of the Integer: "7FFF" gives 32767, "FFFF" gives -1.
' Txt: the digits, with no prefix ("&H" reads as 0).
' Returns: the value; 0 when Txt is "" or longer than 4 characters (every character
'   counts toward that limit, also those after the digits).
Declare Function cH2I (ByVal Txt As String) As Integer
' Like cH2I, for a Long of up to 8 digits ("FFFFFFFF" gives -1).
Declare Function cH2L (ByVal Txt As String) As Long
' Writes each byte of a string as two base-36 digits.
' A byte b gives the digits of b \ 36 and b Mod 36, each 0 to 9 or capital A to Z,
' so "A" (65) gives "1T". cFromZ9 reads the result back.
' Txt: the string.
' Returns: a string twice as long as Txt; "" for "".
' Note: only the bytes 0 to 127 give proper digits and come back through cFromZ9.
'   Bytes from 128 up are taken as negative numbers (the byte minus 256), as this
'   function always has, and give other characters: Chr$(255) gives "06" and
'   Chr$(128) gives "4#".
Declare Function cToZ9 (Txt As String) As String
' Turns pairs of base-36 digits into the bytes they stand for.
' Each pair gives (first digit * 36 + second digit) Mod 256; letters may be capitals
' or small (A is 10, Z is 35). A last odd character is ignored.
' Txt: the digits, as cToZ9 writes them.
' Returns: a string half as long as Txt (rounded down); "" when Txt has fewer than 2
'   characters.
' Note: the digits are not checked; any other character gives some value, counted as
'   in cFromHexa.
Declare Function cFromZ9 (Txt As String) As String
' Writes a whole number as a Roman numeral in small letters.
' Number: the number, in any type VB can turn into a Long (12.0 and "7" both work); a
'   fraction is rounded as CLng rounds it.
' Returns: the numeral, "mcmxcix" for 1999; "" when Number is below 1, is 256000 or
'   more, or cannot be turned into a number.
' Note: 40 is written "xx", not "xl", so 40 gives "xx" and 49 gives "xxix"; numerals
'   stored by earlier programs depend on it, so it is kept, and cRomanToArabic reads
'   them back as 20 and 29. The upper bound is the library's own: numbers from 256000
'   up, which would need 256 or more "m", are refused.
' Example:
'   Debug.Print cArabicToRoman(2024)   ' mmxxiv
Declare Function cArabicToRoman (Number As Variant) As String
' Reads a Roman numeral written in small letters.
' The letters are read left to right and their values added: m 1000, d 500, c 100,
' l 50, x 10, v 5, i 1, and the pairs cm 900, cd 400, xc 90, xl 40, ix 9, iv 4 and
' also vx 9. The order is not checked otherwise, so "iiii" gives 4.
' Txt: the numeral. Capitals and all other characters count nothing: "XIV" gives 0,
'   "m-m" gives 2000; use LCase$ for numerals in capitals.
' Returns: a Variant holding a Long; 0 for "" or a text without small Roman letters.
Declare Function cRomanToArabic (Txt As String) As Variant
' Writes a text in the library's Morse code.
' Small letters count as capitals. Each letter, digit and each of , - . / ? gives its
' dots and dashes followed by one space; any other character from the space up to
' "Z" (the space included) gives "~" with no space; all other characters are left
' out. The text is read up to its first zero byte.
' Txt: the text.
' Returns: the code; "" when Txt is "" or holds no character that gives output.
' Note: this code exchanges dots and dashes with respect to the international code
'   (E is "-", T is "."), and "-" and "/" have codes of their own. It is the code the
'   library has always written, kept so that existing output stays the same.
' Example:
'   Debug.Print cMorse("SOS")   ' --- ... ---   (each group followed by a space)
Declare Function cMorse (ByVal Txt As String) As String
' Converts a string from ASCII to EBCDIC in place.
' Every byte is replaced through the table of the POSIX dd utility (conv=ebcdic),
' which maps all 256 byte values, those from 128 up included. cCnvEBCDICtoASCII is
' its exact inverse, so the pair restores any string.
' Txt: the string variable to convert; its length does not change.
' Returns: True (-1) after converting; False (0) when Txt is "".
Declare Function cCnvASCIItoEBCDIC (Txt As String) As Integer
' Like cCnvASCIItoEBCDIC, the other way: from EBCDIC to ASCII, in place.
Declare Function cCnvEBCDICtoASCII (Txt As String) As Integer
