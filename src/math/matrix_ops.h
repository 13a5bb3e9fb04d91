// Element-wise and structural operations on square matrices held as n x n
// runs of Doubles, row r being the n values from r x n. Every output span
// holds the values its operation writes and may be the same memory as an
// input where the contract says so.
#pragma once

#include <cstddef>
#include <span>

namespace brindle::math {

// out := a + b and out := a - b, element by element (out may be a or b).
void matrix_add(std::span<const double> a, std::span<const double> b, std::span<double> out, size_t n) noexcept;
void matrix_sub(std::span<const double> a, std::span<const double> b, std::span<double> out, size_t n) noexcept;

// out := a x b, the row-by-column product (out must not overlap a or b).
void matrix_mul(std::span<const double> a, std::span<const double> b, std::span<double> out, size_t n) noexcept;

// out := the transpose of a (out may be a itself).
void matrix_transpose(std::span<const double> a, std::span<double> out, size_t n) noexcept;

// The (n - 1) x (n - 1) matrix left when row `row` and column `col`
// (counted from 0) are taken out of a, in the same row-major order.
// n >= 2; out must not overlap a.
void matrix_minor(std::span<const double> a, size_t row, size_t col, std::span<double> out, size_t n) noexcept;

// True when every element of a equals the one of b, or differs from it by
// at most `tolerance` (a NaN element equals nothing).
bool matrix_equal(std::span<const double> a, std::span<const double> b, double tolerance, size_t n) noexcept;

// out(i, j) := v(|i - j|): the symmetric Toeplitz matrix of v's first n values.
void matrix_sym_toeplitz(std::span<const double> v, std::span<double> out, size_t n) noexcept;

} // namespace brindle::math
