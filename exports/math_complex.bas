' Complex numbers: arithmetic, modulus, argument, whole powers and square roots of complex
' numbers held in a record of two Doubles. VB cannot declare a function that returns a
' record, so an operation that gives a complex number takes the record that receives it
' first (Result) and returns that record's address; call it as a statement
' ("cCpxAdd Z, A, B") and read Z. Result may be one of the operands ("cCpxMul Z, Z, Z"
' squares Z). For C callers the first-argument result and the returned address are what
' the Windows x86 and x64 conventions use for a function that returns a 16-byte structure,
' so such a caller may declare, for example, "Complex __stdcall cCpxAdd(const Complex *a,
' const Complex *b)". The argument is the plain arc tangent of Imaginary / Real, never a
' four-quadrant angle, and the powers inherit that convention.

' A complex number.
' Real: the real part.
' Imaginary: the imaginary part.
Type Complex
    Real As Double
    Imaginary As Double
End Type
' Adds two complex numbers.
' Result: the record that receives (A.Real + B.Real, A.Imaginary + B.Imaginary); it may
'   be A or B.
' A: the first number.
' B: the second number.
' Returns: the address of Result (ignore it in VB).
' Example:
'   Dim A As Complex, B As Complex, Z As Complex
'   A.Real = 1: A.Imaginary = 2: B.Real = 3: B.Imaginary = -1
'   cCpxAdd Z, A, B
'   Debug.Print Z.Real; Z.Imaginary   ' 4  1
Declare Function cCpxAdd (Result As Complex, A As Complex, B As Complex) As LongPtr
' Subtracts one complex number from another.
' Result: the record that receives (A.Real - B.Real, A.Imaginary - B.Imaginary); it may
'   be A or B.
' A: the number subtracted from.
' B: the number subtracted.
' Returns: the address of Result (ignore it in VB).
Declare Function cCpxSub (Result As Complex, A As Complex, B As Complex) As LongPtr
' Multiplies two complex numbers.
' Result: the record that receives (A.Real * B.Real - A.Imaginary * B.Imaginary,
'   A.Imaginary * B.Real + A.Real * B.Imaginary); it may be A or B.
' A: the first factor.
' B: the second factor.
' Returns: the address of Result (ignore it in VB).
Declare Function cCpxMul (Result As Complex, A As Complex, B As Complex) As LongPtr
' Divides one complex number by another.
' With d = B.Real ^ 2 + B.Imaginary ^ 2 the quotient is ((A.Real * B.Real + A.Imaginary
' * B.Imaginary) / d, (A.Imaginary * B.Real - A.Real * B.Imaginary) / d). A zero divisor
' is not checked: dividing by (0, 0) gives parts that are not numbers (NaN) or
' infinite, and no error is raised.
' Result: the record that receives the quotient; it may be A or B.
' A: the dividend.
' B: the divisor.
' Returns: the address of Result (ignore it in VB).
Declare Function cCpxDiv (Result As Complex, A As Complex, B As Complex) As LongPtr
' Gives the conjugate of a complex number.
' Result: the record that receives (Z.Real, -Z.Imaginary); it may be Z.
' Z: the number.
' Returns: the address of Result (ignore it in VB).
Declare Function cCpxConjugue (Result As Complex, Z As Complex) As LongPtr
' Gives the modulus (absolute value) of a complex number.
' Z: the number.
' Returns: Sqr(Z.Real ^ 2 + Z.Imaginary ^ 2).
' Note: where the sum of squares would overflow (parts beyond about 1E+154) or fall
'   below the normal range of Doubles, the library takes the same modulus without
'   squaring, so (3E+200, 4E+200) gives 5E+200 rather than infinity.
Declare Function cCpxModulus (Z As Complex) As Double
' Gives the argument of a complex number as the plain arc tangent of Imaginary / Real.
' This is not the four-quadrant angle: the result always lies between -pi/2 and pi/2,
' so (-1, 0) gives 0 and (-1, 1) gives -pi/4, as Atn(Z.Imaginary / Z.Real) would. A zero
' real part gives pi/2 or -pi/2 by the sign of the imaginary part.
' Z: the number.
' Returns: the argument in radians; not a number (NaN) for (0, 0).
Declare Function cCpxArgument (Z As Complex) As Double
' Raises a complex number to a whole power.
' With r the modulus and t the argument as cCpxArgument gives it, the power is
' (r ^ N * Cos(N * t), r ^ N * Sin(N * t)). Because that argument never leaves -pi/2 ..
' pi/2, odd powers of a number with a negative real part come out in the other
' half-plane: (-1, 0) to the power 1 gives (1, 0).
' Result: the record that receives the power; it may be Z.
' Z: the number.
' N: the exponent; 0 gives (1, 0) (NaN parts for Z = (0, 0)), a negative one the
'   reciprocal power.
' Returns: the address of Result (ignore it in VB).
' Example:
'   Dim Z As Complex, P As Complex
'   Z.Imaginary = 1                    ' i
'   cCpxPowerN P, Z, 2
'   Debug.Print Round(P.Real, 12)      ' -1
Declare Function cCpxPowerN (Result As Complex, Z As Complex, ByVal N As Integer) As LongPtr
' Gives a square root of a complex number, the one whose imaginary part is not negative.
' With m the modulus, the root is (Sqr((m + Z.Real) / 2), Sqr((m - Z.Real) / 2)). The
' sign of Z.Imaginary is not used: (3, 4) and (3, -4) both give (2, 1), and (-4, 0) gives
' (0, 2).
' Result: the record that receives the root; it may be Z.
' Z: the number.
' Returns: the address of Result (ignore it in VB).
Declare Function cCpxSqrt (Result As Complex, Z As Complex) As LongPtr
