' Title: Number functions: rounding, digits and divisors, primes and
' combinations, number bases, bit rotations, floating-point parts, a random
' sequence, check digits, comparisons, swaps and Bessel functions.
'
' Every function here is stateless except the random sequence (cRndInit, cRnd
' and its scaled forms), whose state is shared by the whole process. The random
' sequence, the check digits and the rotations give the same results on every
' platform. The Bessel functions are the library's own, not the C library's,
' and agree with the true values to 1E-14 on every platform.

' Rounds a number to a number of decimals, halves upwards.
' The value is Int(Value * 10 ^ Digits + 0.5) / 10 ^ Digits, so a half rounds
' towards plus infinity: 2.5 gives 3 and -2.5 gives -2.
' Value: the number.
' Digits: the decimals to keep; a negative count rounds to tens, hundreds and so on.
' Returns: the rounded number. Value itself when 10 ^ Digits or the scaled value
'   does not fit in a Double (nothing is left to round), 0 when 10 ^ Digits is
'   smaller than the smallest Double.
' Example:
'   Debug.Print cRound(1.25, 1)   ' 1.3
Declare Function cRound (ByVal Value As Double, ByVal Digits As Integer) As Double
' Rounds a number to the nearest multiple of a step, halves upwards.
' The value is Int((StepSize * 0.5 + Value) / StepSize) * StepSize.
' Value: the number.
' StepSize: the step; it may be negative.
' Returns: the multiple of StepSize nearest to Value; 0 when StepSize is 0.
' Example:
'   Debug.Print cRoundNearest(7.5, 5)   ' 10
Declare Function cRoundNearest (ByVal Value As Double, ByVal StepSize As Long) As Double
' Gives the position of the decimal point in a number that has a fractional part.
' The position is the number of digits before the point plus 1, from the
' number's 17 significant decimal digits: 123.45 gives 4, 0.5 gives 1 and 0.05
' gives 0. The sign does not count: -123.45 also gives 4.
' Value: the number.
' Returns: the position; 0 when Value has no fractional part (whole numbers,
'   infinities and values that are not numbers).
Declare Function cDecimalPosition (ByVal Value As Double) As Long
' Gives the mantissa of a number in base 2.
' Value is Mantissa * 2 ^ Exponent with 0.5 <= Abs(Mantissa) < 1; cGetExponent
' gives the exponent and cComputeNumber puts the two together again.
' Value: the number.
' Returns: the mantissa with the sign of Value; 0 for 0. An infinity or a value
'   that is not a number comes back as it is.
Declare Function cGetMantissa (ByVal Value As Double) As Double
' Gives the exponent of a number in base 2.
' Value is Mantissa * 2 ^ Exponent with 0.5 <= Abs(Mantissa) < 1 (see cGetMantissa).
' Value: the number.
' Returns: the exponent, from -1073 to 1024; 0 for 0, for infinities and for
'   values that are not numbers.
Declare Function cGetExponent (ByVal Value As Double) As Integer
' Multiplies a number by a power of 2.
' Mantissa: the number.
' Exponent: the power of 2.
' Returns: Mantissa * 2 ^ Exponent, exactly when it fits; an infinity when it is
'   too large, 0 when it is too small.
' Example:
'   Debug.Print cComputeNumber(cGetMantissa(6), cGetExponent(6))   ' 6
Declare Function cComputeNumber (ByVal Mantissa As Double, ByVal Exponent As Integer) As Double
' Adds the decimal digits of a number.
' Number: the number.
' Returns: the sum of its digits, 0 for 0.
' Note: the sign of a negative number is ignored: -123 gives 6.
' Example:
'   Debug.Print cSumDigits(1234)   ' 10
Declare Function cSumDigits (ByVal Number As Long) As Long
' Adds and subtracts the decimal digits of a number in turn.
' The first (most significant) digit is added, the second subtracted, the third
' added and so on.
' Number: the number.
' Returns: the alternating sum, 0 for 0.
' Note: the signs start at the most significant digit, so the last digit is
'   added for numbers with an odd count of digits and subtracted otherwise. The
'   sign of a negative number is ignored.
' Example:
'   Debug.Print cSumDigitsAlt(1234)   ' -2 (1 - 2 + 3 - 4)
Declare Function cSumDigitsAlt (ByVal Number As Long) As Long
' Sorts the decimal digits of a number into ascending order.
' Number: the number.
' Returns: the number made of the same digits from the smallest to the largest,
'   so zeros come first and vanish: 3021 gives 123. A negative number keeps its
'   sign: -3021 gives -123.
' Note: ascending order was chosen because it never gives a number larger than
'   the one passed, so every Long has an answer.
Declare Function cSortDigits (ByVal Number As Long) As Long
' Adds the proper divisors of a number (the divisors smaller than the number).
' Number: the number.
' Returns: the sum; 6 gives 6 (1 + 2 + 3) and a prime gives 1; 0 when Number is
'   below 2.
Declare Function cSumDivisors (ByVal Number As Long) As Long
' Gives the greatest common divisor of two numbers.
' A: the first number.
' B: the second number.
' Returns: the greatest common divisor; 0 when A or B is 0.
' Note: the result is never negative: the signs of A and B are ignored. The one
'   divisor that does not fit in a Long, 2147483648 (A and B both -2147483648),
'   comes back as -2147483648.
' Example:
'   Debug.Print cGreatCommonDivisor(12, -18)   ' 6
Declare Function cGreatCommonDivisor (ByVal A As Long, ByVal B As Long) As Long
' Rotates the decimal digits of a number to the right.
' The last Count digits move to the front: 12345 rotated by 2 gives 45123.
' Count is taken modulo the number of digits, so a negative Count rotates to
' the left. Zeros that come to the front vanish: 12300 rotated by 2 gives 123.
' Number: the number; a negative number's digits rotate and the sign stays.
' Count: the number of digits that move.
' Returns: the rotated number; 0 for 0.
' Note: a rotation whose result does not fit in a Long (1000000009 by 1) gives 0.
Declare Function cRotate (ByVal Number As Long, ByVal Count As Integer) As Long
' Rotates the bits of an Integer to the left, as a 32-bit number.
' Value is first widened to 32 bits with its sign, the 32 bits are rotated by
' Count Mod 32 and the low 16 bits are returned. This is not a 16-bit
' rotation: cRotateLeftI(1, 16) is 0 and cRotateLeftI(-32768, 1) is 1.
' Value: the Integer.
' Count: the number of places; only Count Mod 32 counts.
' Returns: the low 16 bits of the rotated number.
Declare Function cRotateLeftI (ByVal Value As Integer, ByVal Count As Integer) As Integer
' Like cRotateLeftI, to the right: cRotateRightI(1, 1) is 0.
Declare Function cRotateRightI (ByVal Value As Integer, ByVal Count As Integer) As Integer
' Rotates the 32 bits of a Long to the left.
' The bits that leave at the top come back at the bottom.
' Value: the Long.
' Count: the number of places; only Count Mod 32 counts.
' Returns: the rotated Long.
' Example:
'   Debug.Print cRotateLeftL(&H80000001, 1)   ' 3
Declare Function cRotateLeftL (ByVal Value As Long, ByVal Count As Integer) As Long
' Like cRotateLeftL, to the right.
Declare Function cRotateRightL (ByVal Value As Long, ByVal Count As Integer) As Long
' Tells whether a number is prime.
' Number: the number.
' Returns: True (-1) when Number is prime, else False (0).
' Note: 0, 1 and negative numbers are not prime.
Declare Function cIsPrime (ByVal Number As Long) As Long
' Gives the number of ways to choose K things out of N (the binomial coefficient).
' The product N * (N - 1) * ... / (1 * 2 * ...) is built in Doubles, one factor
' at a time, over the smaller of K and N - K factors.
' N: the number of things.
' K: the number chosen.
' Returns: the coefficient; -1 unless 0 <= K <= N. Coefficients beyond the
'   largest Double give infinity.
' Example:
'   Debug.Print cCombination(5, 2)   ' 10
Declare Function cCombination (ByVal N As Integer, ByVal K As Integer) As Double
' Writes a number given in one base in another base.
' Digits is read as the C library's strtol reads it: blanks first, then a sign,
' then the digits of FromBase (0 to 9, then the letters in either case); "0x"
' may precede base-16 digits, and the first character that is no digit ends
' the number. A value beyond the Long range counts as the nearest Long.
' Digits: the number as text.
' FromBase: the base of Digits, 2 to 34.
' ToBase: the base of the result, 2 to 34.
' Returns: the number in ToBase with lower-case letters; in base 10 a negative
'   number has a minus sign, in other bases it is written as its 32-bit two's
'   complement (-1 in base 16 is ffffffff). "" when a base is outside 2 to 34
'   (35 and 36 too) and when the value is 0, so "0" gives "".
' Example:
'   Debug.Print cBaseConversion("ff", 16, 2)   ' 11111111
Declare Function cBaseConversion (Digits As String, ByVal FromBase As Integer, ByVal ToBase As Integer) As String
' Gives the sign of a number.
' Value: the number.
' Returns: -1 when Value is negative, 0 for 0, 1 when it is positive.
Declare Function cSgn (ByVal Value As Integer) As Integer
' Tells whether a value lies between two bounds, the bounds included.
' The three values are compared as Longs, each converted as VB's CLng would.
' Value: the value, of any type that converts to a Long.
' Low: the lower bound.
' High: the upper bound.
' Returns: True (-1) when Low <= Value <= High, else False (0). A value that
'   does not convert (an object, an array) counts as 0.
Declare Function cBetween (Value As Variant, Low As Variant, High As Variant) As Long
' Gives the larger of two values, compared as Longs.
' Both values are converted as VB's CLng would (2.5 gives 2, "7" gives 7).
' A: the first value.
' B: the second value.
' Returns: the larger of the two converted values, as a Variant holding a Long
'   (A's when they are equal). A value that does not convert counts as 0.
' Note: the result is the converted Long rather than a copy of the Variant passed,
'   so that the comparison and the result always agree.
Declare Function cMax (A As Variant, B As Variant) As Variant
' Like cMax, for the smaller of the two values.
Declare Function cMin (A As Variant, B As Variant) As Variant
' Adds 1 to an Integer variable.
' Value: the variable; 32767 becomes -32768.
' Returns: the new value.
Declare Function cIncrI (Value As Integer) As Integer
' Like cIncrI, for a Long variable: 2147483647 becomes -2147483648.
Declare Function cIncrL (Value As Long) As Long
' Like cIncrI, subtracting 1: -32768 becomes 32767.
Declare Function cDecrI (Value As Integer) As Integer
' Like cIncrI, subtracting 1 from a Long variable: -2147483648 becomes 2147483647.
Declare Function cDecrL (Value As Long) As Long
' Exchanges the contents of two Byte variables.
' A: the first variable.
' B: the second variable.
Declare Sub cSwapB (A As Byte, B As Byte)
' Like cSwapB, for Integer variables.
Declare Sub cSwapI (A As Integer, B As Integer)
' Like cSwapB, for Long variables.
Declare Sub cSwapL (A As Long, B As Long)
' Like cSwapB, for Single variables.
Declare Sub cSwapS (A As Single, B As Single)
' Like cSwapB, for Double variables.
Declare Sub cSwapD (A As Double, B As Double)
' Like cSwapB, for String variables.
' The two variables exchange their strings as they are; nothing is copied.
Declare Sub cSwapStr (A As String, B As String)
' Gives the Bessel function of the first kind of order 0.
' The library computes the Bessel functions itself, to within 1E-14 of the true
' value relative to it on every platform. Near a zero of the function beyond
' X = 50 no relative bound holds; there the error stays within a few units in
' the last place of the function's envelope, Sqr(2 / (Pi * X)).
' X: the argument.
' Returns: J0(X); 1 at 0, 0 at either infinity.
' Note: the C library's own Bessel functions are not used: they differ from one
'   platform to the next and lose most of their relative accuracy near the zeros.
Declare Function cBesselJ0 (ByVal X As Double) As Double
' Like cBesselJ0, for order 1: J1(X), which is -J1(-X).
Declare Function cBesselJ1 (ByVal X As Double) As Double
' Gives the Bessel function of the second kind of order 0.
' The accuracy is that of cBesselJ0.
' X: the argument, above 0.
' Returns: Y0(X); minus infinity at 0; a value that is not a number (NaN) when X
'   is negative.
Declare Function cBesselY0 (ByVal X As Double) As Double
' Like cBesselY0, for order 1: Y1(X).
Declare Function cBesselY1 (ByVal X As Double) As Double
' Gives the Bessel function of the first kind of order N.
' Orders 0 and 1 are those of cBesselJ0 and cBesselJ1; higher orders are
' computed from them: by the power series for Abs(X) <= 1, by recurrence
' upwards where X is above N and downwards from a higher order otherwise. For
' orders up to 100 the error is within 1E-14 of the value where X < N, and
' within 5E-15 of the envelope where the function oscillates (X >= N).
' N: the order; a negative order gives (-1) ^ N times the order -N.
' X: the argument.
' Returns: Jn(X); 0 at either infinity and, for N other than 0, at 0.
Declare Function cBesselJN (ByVal N As Integer, ByVal X As Double) As Double
' Gives the Bessel function of the second kind of order N.
' Computed by recurrence upwards from cBesselY0 and cBesselY1, within the bounds
' given for cBesselJN.
' N: the order; a negative order gives (-1) ^ N times the order -N.
' X: the argument, above 0.
' Returns: Yn(X); an infinity at 0 and where the value passes the largest
'   Double (minus infinity for the orders from 1 up); NaN when X is negative.
Declare Function cBesselYN (ByVal N As Integer, ByVal X As Double) As Double
' Starts the random sequence again from a seed.
' The sequence is G = Frac(200140 / Pi * G + e): each value is the fractional
' part of the previous one times 200140 / Pi (computed as 200140 *
' 0.3183098861837907) plus e. The seed sets G and draws once, so the same seed
' always gives the same sequence, on every platform. The values are not random
' enough for statistics or security.
' Seed: a number from 1 sets G to Seed * e; 0 keeps the current G; a negative
'   number sets G to the current time in seconds, for a sequence that differs
'   from run to run.
' Note: the state is shared by the whole process. It also reseeds the C
'   library's rand generator from the clock, as it always has.
' Example:
'   cRndInit 1
'   Debug.Print cRnd()   ' 0.389454291857874
Declare Sub cRndInit (ByVal Seed As Long)
' Gives the next value of the random sequence (see cRndInit).
' Returns: the next value, from 0 up to but not including 1. Before any cRndInit
'   the sequence starts from G = 0, whose next value is e's fractional part.
Declare Function cRnd () As Double
' Gives the next value of the random sequence as a Long.
' Returns: the next value of cRnd times 2147483647, truncated: 0 to 2147483646.
Declare Function cRndI () As Long
' Gives the next value of the random sequence as a Single.
' Returns: the next value of cRnd times 3.4028234663852886E+38 (the largest Single).
Declare Function cRndS () As Single
' Gives the next value of the random sequence across the whole Double range.
' Returns: the next value of cRnd times 1.7976931348623157E+308 (the largest Double).
Declare Function cRndD () As Double
' Gives the weighted modulo-10 check digit of a text, weights 2, 1 from the left.
' Only hexadecimal digits count; other characters are skipped and do not use up
' a weight. The first digit that counts has weight 2, the next 1, then 2 and so
' on. A digit counts with the value of its code minus 48 when the code is below
' 65 (0 to 9 give 0 to 9), else its code minus 64: A to F give 1 to 6 and a to
' f give 33 to 38, as they always have. The products are added (not their
' digits).
' Txt: the text; every byte counts, zero bytes included (they are skipped).
' Returns: (10 - Sum Mod 10) Mod 10, from 0 to 9; -1 when Txt is "".
' Example:
'   Debug.Print cMod10("7992739871")   ' 9
Declare Function cMod10 (Txt As String) As Integer
' Like cMod10, with the weights 2, 1 from the last character backwards.
Declare Function cMod10R (Txt As String) As Integer
' Like cMod10, modulo 11: (11 - Sum Mod 11) Mod 11, from 0 to 10.
Declare Function cMod11 (Txt As String) As Integer
' Like cMod10, modulo 11 with the weights from the last character backwards.
Declare Function cMod11R (Txt As String) As Integer
' Gives the check digit of a text with the weights 1, 3, 7 from the left.
' Every character counts, with its character code taken as a signed byte (-128
' to 127): the digit "1" counts 49, not 1. The weights repeat 1, 3, 7, 1, 3, 7.
' Txt: the text.
' Returns: (10 - Sum Mod 10) Mod 10, from 0 to 9; -1 when Txt is "".
' Example:
'   Debug.Print cMod137("1")   ' 1
Declare Function cMod137 (Txt As String) As Integer
' Like cMod137, with the weights 1, 3, 7 from the last character backwards.
Declare Function cMod137R (Txt As String) As Integer
' Gives the N-th root of a number.
' X: the number.
' N: the root, from 1: 2 for the square root, 3 for the cube root.
' Returns: the root; a negative X has a negative root when N is odd. 0 when N is
'   below 1 or X is negative and N even (no real root).
' Note: the root is refined after the power function's first answer, so exact
'   powers give exact roots: cRootN(1E+15, 5) is 1000 and cRootN(27, 3) is 3.
Declare Function cRootN (ByVal X As Double, ByVal N As Integer) As Double
' Writes a number as a fraction.
' The fraction is the first convergent of the continued fraction of Value whose
' quotient, in Double arithmetic, is Value itself: 0.75 gives 3 / 4 and 1 / 3
' gives 1 / 3. When no convergent gets there, the exact binary fraction is used;
' below about 1E-292, where its denominator would pass the largest Double, the
' value itself over 1.
' Value: the number.
' Numerator: receives the numerator, with the sign of Value.
' Denominator: receives the denominator, from 1.
' Returns: Numerator / Denominator, which is Value; 0 with the fraction 0 / 1
'   for 0, and an infinity or a value that is not a number over 1 as itself.
' Example:
'   Debug.Print cFraction(0.375, n, d), n, d   ' 0.375  3  8
Declare Function cFraction (ByVal Value As Double, Numerator As Double, Denominator As Double) As Double
