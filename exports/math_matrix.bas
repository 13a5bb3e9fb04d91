' Matrices: determinant, inverse, products and the other operations on square matrices
' of Doubles. Every export takes the order N first, then its arrays. A matrix of order N
' is the first N x N Doubles of an array in memory order, whatever its shape; dimension it
' (1 To N, 1 To N), and A(i, j) is row i, column j, for every export of the family. An
' array may be larger (the rest is neither read nor written) and may have any number of
' dimensions. An order below 2, an array with fewer than N x N elements, an array of
' another type than Double, or one never dimensioned makes the export fail before
' anything is read or written; a result array is written only when the whole result is
' ready, so a failure leaves it as it was. A result array may be one of the argument
' arrays. Work is held in memory only during the call.

' Gives the determinant of a square matrix.
' The matrix is decomposed by LU decomposition with partial pivoting (at each column the
' row with the largest absolute value becomes the pivot), and the determinant is the
' product of the pivots, its sign changed for an odd number of row exchanges. The work
' grows as N ^ 3: order 500 takes a small fraction of a second.
' N: the order of the matrix, at least 2.
' A: the matrix, at least N x N Doubles; it is not changed.
' Returns: the determinant; 0 for a singular matrix (a pivot that is exactly 0, as with
'   two equal rows); -1 when N is below 2 or A is refused (too small, not Double, never
'   dimensioned) or memory runs out. A determinant may itself be -1, so check N and the
'   array first when that matters.
' Example:
'   Dim A(1 To 2, 1 To 2) As Double
'   A(1, 1) = 1: A(1, 2) = 2: A(2, 1) = 3: A(2, 2) = 4
'   Debug.Print cMatrixDet(2, A())   ' -2
Declare Function cMatrixDet (ByVal N As Integer, A() As Double) As Double
' Inverts a square matrix.
' The matrix is decomposed as cMatrixDet decomposes it, and each column of the inverse
' is the solution for the matching column of the identity matrix, found by forward and
' back substitution. The work grows as N ^ 3: order 500 takes a small fraction of a
' second.
' N: the order of the matrix, at least 2.
' A: the matrix, at least N x N Doubles; it is not changed (unless it is Result too).
' Result: the array that receives the inverse, at least N x N Doubles; it may be A.
' Returns: -1 when Result holds the inverse; 0, with Result unchanged, for a singular
'   matrix, an order below 2, an array that is refused, or memory that runs out.
' Note: a matrix that is singular only through rounding (its pivot is tiny but not
'   exactly 0) is inverted, with huge elements; check the determinant or multiply back
'   with cMatrixMul when the matrix may be nearly singular.
Declare Function cMatrixInv (ByVal N As Integer, A() As Double, Result() As Double) As Integer
' Builds the symmetric Toeplitz matrix of a vector.
' Element (i, j) of the result is V(|i - j|), counting the elements of V from 0: the
' first value of V runs down the diagonal, the second along both neighbouring diagonals,
' and so on.
' N: the order of the matrix, at least 2.
' V: the vector; its first N Doubles in memory order are used.
' Result: the array that receives the matrix, at least N x N Doubles; it may be V.
' Returns: -1 when Result holds the matrix; 0, with Result unchanged, for an order
'   below 2 or an array that is refused (V with fewer than N elements, Result with
'   fewer than N x N, either not Double).
' Example:
'   Dim V(1 To 3) As Double, T(1 To 3, 1 To 3) As Double
'   V(1) = 4: V(2) = 1: V(3) = 0.5
'   If cMatrixSymToeplitz(3, V(), T()) Then Debug.Print T(1, 3); T(2, 3)   ' 0.5  1
Declare Function cMatrixSymToeplitz (ByVal N As Integer, V() As Double, Result() As Double) As Integer
' Adds two square matrices element by element.
' N: the order of the matrices, at least 2.
' A: the first matrix, at least N x N Doubles.
' B: the second matrix, at least N x N Doubles.
' Result: the array that receives A + B, at least N x N Doubles; it may be A or B.
' Returns: -1 when Result holds the sum; 0, with Result unchanged, for an order below 2
'   or an array that is refused.
Declare Function cMatrixAdd (ByVal N As Integer, A() As Double, B() As Double, Result() As Double) As Integer
' Subtracts one square matrix from another element by element.
' N: the order of the matrices, at least 2.
' A: the matrix subtracted from, at least N x N Doubles.
' B: the matrix subtracted, at least N x N Doubles.
' Result: the array that receives A - B, at least N x N Doubles; it may be A or B.
' Returns: -1 when Result holds the difference; 0, with Result unchanged, for an order
'   below 2 or an array that is refused.
Declare Function cMatrixSub (ByVal N As Integer, A() As Double, B() As Double, Result() As Double) As Integer
' Copies a square matrix into another array.
' The first N x N Doubles of Source replace the first N x N of Target; the rest of
' Target is left as it was.
' N: the order of the matrix, at least 2.
' Source: the matrix copied, at least N x N Doubles.
' Target: the array that receives the copy, at least N x N Doubles.
' Returns: -1 when the matrix is copied; 0, with Target unchanged, for an order below 2
'   or an array that is refused.
Declare Function cMatrixCopy (ByVal N As Integer, Source() As Double, Target() As Double) As Integer
' Tells whether two square matrices are equal, element by element, within a tolerance.
' N: the order of the matrices, at least 2.
' A: the first matrix, at least N x N Doubles.
' B: the second matrix, at least N x N Doubles.
' Tolerance: the largest difference allowed between two elements at the same place; 0
'   asks for exact equality. Equal infinities are equal; a NaN element equals nothing.
' Returns: -1 (True) when every element of A equals the one of B or differs from it by
'   at most Tolerance; 0 (False) when one differs by more, and for an order below 2 or
'   an array that is refused.
' Note: the comparison takes a tolerance because results of arithmetic on Doubles (an
'   inverse multiplied back, say) are seldom exactly equal to what they should be.
Declare Function cMatrixCompare (ByVal N As Integer, A() As Double, B() As Double, ByVal Tolerance As Double) As Integer
' Multiplies two square matrices.
' Element (i, j) of the product is the sum over k of A(i, k) * B(k, j), row by column as
' in mathematics, for arrays dimensioned (1 To N, 1 To N).
' N: the order of the matrices, at least 2.
' A: the left factor, at least N x N Doubles.
' B: the right factor, at least N x N Doubles.
' Result: the array that receives A x B, at least N x N Doubles; it may be A or B (the
'   product is made aside first).
' Returns: -1 when Result holds the product; 0, with Result unchanged, for an order
'   below 2, an array that is refused, or memory that runs out.
' Example:
'   ' A x Inverse(A) gives the identity matrix, up to rounding:
'   If cMatrixInv(N, A(), Inv()) Then cMatrixMul N, A(), Inv(), I()
Declare Function cMatrixMul (ByVal N As Integer, A() As Double, B() As Double, Result() As Double) As Integer
' Transposes a square matrix: element (i, j) of the result is element (j, i) of A.
' N: the order of the matrix, at least 2.
' A: the matrix, at least N x N Doubles.
' Result: the array that receives the transpose, at least N x N Doubles; it may be A,
'   which is then transposed in place.
' Returns: -1 when Result holds the transpose; 0, with Result unchanged, for an order
'   below 2 or an array that is refused.
Declare Function cMatrixTranspose (ByVal N As Integer, A() As Double, Result() As Double) As Integer
' Gives the minor matrix of a square matrix: the matrix of order N - 1 left when one row
' and one column are taken out.
' The elements keep their order; the result fills the first (N - 1) x (N - 1) Doubles of
' Result in memory order, so dimension Result (1 To N - 1, 1 To N - 1) to read it with
' its own subscripts.
' N: the order of the matrix, at least 2.
' A: the matrix, at least N x N Doubles.
' Row: the row taken out, from 1 to N (the first subscript of A(1 To N, 1 To N)).
' Col: the column taken out, from 1 to N (the second subscript).
' Result: the array that receives the minor matrix, at least (N - 1) x (N - 1) Doubles;
'   it may be A.
' Returns: -1 when Result holds the minor matrix; 0, with Result unchanged, for an order
'   below 2, Row or Col outside 1 to N, or an array that is refused.
' Note: the determinant of the minor matrix (the minor in the narrow sense) is what
'   cMatrixCoFactor gives, with its sign.
Declare Function cMatrixMinor (ByVal N As Integer, A() As Double, ByVal Row As Integer, ByVal Col As Integer, Result() As Double) As Integer
' Gives a cofactor of a square matrix: the determinant of the matrix left when one row
' and one column are taken out, with the sign (-1) ^ (Row + Col).
' The determinant is worked out as cMatrixDet works it out, so the work grows as N ^ 3.
' The cofactors of a row, multiplied by that row's elements and added up, give the
' determinant of A.
' N: the order of the matrix, at least 2 (a matrix of order 2 leaves a single element).
' A: the matrix, at least N x N Doubles; it is not changed.
' Row: the row taken out, from 1 to N (the first subscript of A(1 To N, 1 To N)).
' Col: the column taken out, from 1 to N (the second subscript).
' Returns: the cofactor; -1 when N is below 2, Row or Col lies outside 1 to N, A is
'   refused, or memory runs out (a cofactor may itself be -1).
' Example:
'   ' Cofactor (1, 2) of ((1, 2), (3, 4)) is -3.
'   Debug.Print cMatrixCoFactor(2, A(), 1, 2)
Declare Function cMatrixCoFactor (ByVal N As Integer, A() As Double, ByVal Row As Integer, ByVal Col As Integer) As Double
' Sets every element of a square matrix to one value.
' N: the order of the matrix, at least 2.
' A: the matrix, at least N x N Doubles; only its first N x N are set.
' Value: the value given to every element.
' Returns: -1 when the matrix is filled; 0, with A unchanged, for an order below 2 or an
'   array that is refused.
Declare Function cMatrixFill (ByVal N As Integer, A() As Double, ByVal Value As Double) As Integer
