' Vectors: arithmetic on plane vectors (X, Y) and space vectors (X, Y, Z) held in records
' of Doubles, for geometry. Every vector is passed by reference. An operation that gives a
' vector writes it into its last record argument, which may also be one of its operands
' ("cV2Add P, D, P" moves P by D), and returns that record's address, which VB programs
' ignore by calling the export as a statement. cV2Neg, cV3Neg and the Normalized and
' ScaledNewLength operations change their one record in place. The space forms (cV3...)
' apply the rules of the plane forms (cV2...) to Z as well.

' A vector or a point in the plane.
' X: the first coordinate.
' Y: the second coordinate.
Type PlaneVector
    X As Double
    Y As Double
End Type
' A vector or a point in space.
' X: the first coordinate.
' Y: the second coordinate.
' Z: the third coordinate.
Type SpaceVector
    X As Double
    Y As Double
    Z As Double
End Type
' Adds two vectors.
' A: the first vector.
' B: the second vector.
' Result: the record that receives A + B; it may be A or B.
' Returns: the address of Result (ignore it in VB).
Declare Function cV2Add (A As PlaneVector, B As PlaneVector, Result As PlaneVector) As LongPtr
' Like cV2Add, for space vectors.
Declare Function cV3Add (A As SpaceVector, B As SpaceVector, Result As SpaceVector) As LongPtr
' Subtracts one vector from another.
' A: the vector subtracted from.
' B: the vector subtracted.
' Result: the record that receives A - B; it may be A or B.
' Returns: the address of Result (ignore it in VB).
Declare Function cV2Sub (A As PlaneVector, B As PlaneVector, Result As PlaneVector) As LongPtr
' Like cV2Sub, for space vectors.
Declare Function cV3Sub (A As SpaceVector, B As SpaceVector, Result As SpaceVector) As LongPtr
' Multiplies two vectors component by component.
' A: the first vector.
' B: the second vector.
' Result: the record that receives (A.X * B.X, A.Y * B.Y); it may be A or B.
' Returns: the address of Result (ignore it in VB).
' Note: this is neither the scalar product (cV2Dot) nor the cross product (cV3Cross); it
'   scales each axis separately, as a change of units per axis does.
Declare Function cV2Mul (A As PlaneVector, B As PlaneVector, Result As PlaneVector) As LongPtr
' Like cV2Mul, for space vectors (Z too).
Declare Function cV3Mul (A As SpaceVector, B As SpaceVector, Result As SpaceVector) As LongPtr
' Gives a linear combination of two vectors.
' A: the first vector.
' S: the factor of A.
' B: the second vector.
' T: the factor of B.
' Result: the record that receives S * A + T * B; it may be A or B.
' Returns: the address of Result (ignore it in VB).
Declare Function cV2Combine (A As PlaneVector, ByVal S As Double, B As PlaneVector, ByVal T As Double, Result As PlaneVector) As LongPtr
' Like cV2Combine, for space vectors.
Declare Function cV3Combine (A As SpaceVector, ByVal S As Double, B As SpaceVector, ByVal T As Double, Result As SpaceVector) As LongPtr
' Interpolates linearly between two points.
' The result is (B - A) * T + A: A for T = 0, B for T = 1, the midpoint for T = 0.5,
' and points on the same line beyond A or B for T outside 0 to 1.
' A: the starting point.
' B: the end point.
' T: the position between them.
' Result: the record that receives the point; it may be A or B.
' Returns: the address of Result (ignore it in VB).
' Example:
'   Dim A As SpaceVector, B As SpaceVector, M As SpaceVector
'   B.X = 2: B.Y = 4: B.Z = 6
'   cV3LinearIp A, B, 0.5, M
'   Debug.Print M.X; M.Y; M.Z   ' 1  2  3
Declare Function cV2LinearIp (A As PlaneVector, B As PlaneVector, ByVal T As Double, Result As PlaneVector) As LongPtr
' Like cV2LinearIp, for space vectors.
Declare Function cV3LinearIp (A As SpaceVector, B As SpaceVector, ByVal T As Double, Result As SpaceVector) As LongPtr
' Copies a vector into another record.
' Source: the vector copied.
' Target: the record that receives the copy.
' Returns: the address of Target (ignore it in VB).
Declare Function cV2Copy (Source As PlaneVector, Target As PlaneVector) As LongPtr
' Like cV2Copy, for space vectors.
Declare Function cV3Copy (Source As SpaceVector, Target As SpaceVector) As LongPtr
' Reverses a vector in place.
' V: the vector; it becomes -V.
' Returns: the address of V (ignore it in VB).
Declare Function cV2Neg (V As PlaneVector) As LongPtr
' Like cV2Neg, for space vectors.
Declare Function cV3Neg (V As SpaceVector) As LongPtr
' Gives the scalar (dot) product of two vectors.
' A: the first vector.
' B: the second vector.
' Returns: A.X * B.X + A.Y * B.Y; 0 for perpendicular vectors.
Declare Function cV2Dot (A As PlaneVector, B As PlaneVector) As Double
' Like cV2Dot, for space vectors (with A.Z * B.Z added).
Declare Function cV3Dot (A As SpaceVector, B As SpaceVector) As Double
' Gives the cross (vector) product of two space vectors.
' The product (A.Y * B.Z - A.Z * B.Y, A.Z * B.X - A.X * B.Z, A.X * B.Y - A.Y * B.X) is
' perpendicular to both, by the right-hand rule: X across Y gives Z.
' A: the first vector.
' B: the second vector.
' Result: the record that receives the product; it may be A or B.
' Returns: the address of Result (ignore it in VB).
Declare Function cV3Cross (A As SpaceVector, B As SpaceVector, Result As SpaceVector) As LongPtr
' Turns a plane vector a quarter turn counter-clockwise.
' V: the vector.
' Result: the record that receives (-V.Y, V.X); it may be V.
' Returns: the address of Result (ignore it in VB).
Declare Function cV2Ortho (V As PlaneVector, Result As PlaneVector) As LongPtr
' Gives the length of a vector.
' V: the vector.
' Returns: the square root of the scalar product of V with itself.
' Note: where the sum of squares would overflow (coordinates beyond about 1E+154) or
'   fall below the normal range of Doubles, the library takes the same length without
'   squaring.
Declare Function cV2Length (V As PlaneVector) As Double
' Like cV2Length, for space vectors.
Declare Function cV3Length (V As SpaceVector) As Double
' Gives the square of the length of a vector, the scalar product of the vector with
' itself.
' It needs no square root, so it is the quicker way to compare lengths.
' V: the vector.
' Returns: V.X ^ 2 + V.Y ^ 2.
Declare Function cV2LengthSquared (V As PlaneVector) As Double
' Like cV2LengthSquared, for space vectors (with V.Z ^ 2 added).
Declare Function cV3LengthSquared (V As SpaceVector) As Double
' Gives the distance between two points.
' A: the first point.
' B: the second point.
' Returns: the length of B - A, as cV2Length gives it.
Declare Function cV2SegmentLength (A As PlaneVector, B As PlaneVector) As Double
' Like cV2SegmentLength, for points in space.
Declare Function cV3SegmentLength (A As SpaceVector, B As SpaceVector) As Double
' Scales a vector in place to length 1, keeping its direction.
' V: the vector; it is divided by its length. A vector of length 0 has no direction and
'   is left unchanged.
' Returns: the address of V (ignore it in VB).
Declare Function cV2Normalized (V As PlaneVector) As LongPtr
' Like cV2Normalized, for space vectors.
Declare Function cV3Normalized (V As SpaceVector) As LongPtr
' Scales a vector in place to a given length, keeping its direction.
' V: the vector; it is multiplied by NewLength / (its length). A vector of length 0 has
'   no direction and is left unchanged.
' NewLength: the length wanted; a negative length also reverses the vector, 0 makes it
'   the zero vector.
' Returns: the address of V (ignore it in VB).
Declare Function cV2ScaledNewLength (V As PlaneVector, ByVal NewLength As Double) As LongPtr
' Like cV2ScaledNewLength, for space vectors.
Declare Function cV3ScaledNewLength (V As SpaceVector, ByVal NewLength As Double) As LongPtr
' Estimates a value at a point of the plane from three points that carry values, by
' inverse distance weighting.
' Each of P1, P2 and P3 is a point of the plane (X, Y) carrying a value in Z, such as a
' height or a temperature. With d1, d2 and d3 their plane distances to At (square roots
' of the squared differences of X and Y; their own Z plays no part), the estimate is
' (P1.Z / d1 + P2.Z / d2 + P3.Z / d3) / (1 / d1 + 1 / d2 + 1 / d3): the mean of the three
' values weighted by the inverse of the distance (Shepard's method with power 1), so
' nearer points count more, and the estimate always lies between the smallest and the
' largest of the three values.
' P1: the first point and its value.
' P2: the second point and its value.
' P3: the third point and its value.
' At: the point where the value is estimated.
' Result: the record that receives (At.X, At.Y, the estimate).
' Returns: the estimate. A distance of 0 (At on one of the points) gives that point's
'   own value (P1's before P2's before P3's when several points lie there); a
'   coordinate or value that is not a number (NaN) gives NaN.
' Example:
'   ' Heights 10 at (0, 0), 20 at (4, 0) and 30 at (0, 3); estimate at (0, 1):
'   ' distances 1, Sqr(17) and 2 give weights 1, 0.2425 and 0.5, so about 17.13.
'   Debug.Print c3DWeightAverage(P1, P2, P3, At, R)
Declare Function c3DWeightAverage (P1 As SpaceVector, P2 As SpaceVector, P3 As SpaceVector, At As PlaneVector, Result As SpaceVector) As Double
