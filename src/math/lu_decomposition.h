// LU decomposition with partial pivoting (Doolittle form, the multipliers
// kept in place of the eliminated elements), and the determinant and the
// inverse built on it. Matrices are n x n runs of Doubles in row-major order:
// row r is the n values from r x n.
//
// The pivot of column k is the row, among the rows not yet used, whose
// element in column k has the largest absolute value (the first of them on
// ties); a pivot that is exactly 0 means the matrix is singular. Rows are
// exchanged in storage, so every row operation runs over contiguous memory,
// and the inverse solves for all the unit vectors together, one row of
// right-hand sides at a time: each column comes out as the forward and back
// substitution of its own unit vector would give it, in n^3 work.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace brindle::math {

struct LuFactors {
    size_t n = 0;
    std::vector<double> lu;     // L below the diagonal (unit diagonal implied), U on and above it
    std::vector<size_t> rows;   // rows[r]: the row of the original matrix now at row r
    size_t exchanges = 0;       // the row exchanges made
    bool singular = false;      // a zero pivot stopped the decomposition
};

// Decomposes `matrix` (n x n values, n >= 1); allocation failure throws.
LuFactors lu_decompose(std::span<const double> matrix, size_t n);

// The product of U's diagonal, negated for an odd number of exchanges;
// 0.0 for a singular matrix. n >= 1.
double lu_determinant(std::span<const double> matrix, size_t n);

// Writes the inverse of `matrix` into `inverse` (n x n values; it may be the
// same memory as `matrix`) and gives true; gives false for a singular matrix
// and leaves `inverse` as it was. n >= 1; allocation failure throws before
// anything is written.
bool lu_inverse(std::span<const double> matrix, size_t n, std::span<double> inverse);

} // namespace brindle::math
