// Square matrices of Doubles: determinant and inverse by LU decomposition,
// the symmetric Toeplitz matrix, and the order-first family (sum,
// difference, copy, comparison, product, transpose, minor, cofactor, fill).
// A matrix of order n is the first n x n Doubles of the caller's array in
// memory order, whatever its shape; an array with fewer, one of another
// element type, or none at all is refused before anything is read, and a
// result array is written only when the whole answer is ready.
#include "frame/double_block.h"
#include "frame/frame.h"
#include "math/lu_decomposition.h"
#include "math/matrix_ops.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <vector>

using namespace brindle::frame;
using namespace brindle::math;

namespace {

// A matrix argument: the caller's Doubles, usable when there are at least
// `need` of them. The array stays locked while the object lives.
class MatrixArg {
  public:
    MatrixArg(SAFEARRAY **ref, size_t need) noexcept : block_(ref), need_(need) {}
    bool usable() const noexcept { return block_.ok() && block_.data() != nullptr && block_.count() >= need_; }
    std::span<double> values() const noexcept { return {block_.data(), need_}; }

  private:
    DoubleBlock block_;
    size_t need_;
};

// Orders below 2 are refused by every matrix export.
bool order_ok(int16_t n) { return n >= 2; }

size_t squared(int16_t n) { return static_cast<size_t>(n) * static_cast<size_t>(n); }

// The client's (Row, Col), counted from 1 with the first subscript the row,
// as a row and a column of the row-major matrix of the memory order: the
// element (Row, Col) of an (n x n) array sits at (Row - 1) + (Col - 1) x n,
// that is in memory row Col - 1, column Row - 1.
bool subscripts_ok(int16_t n, int16_t row, int16_t col) { return row >= 1 && row <= n && col >= 1 && col <= n; }

} // namespace

BRINDLE_EXPORT(double) cMatrixDet(int16_t N, SAFEARRAY **A) {
    return guarded(-1.0, [&] {
        if (!order_ok(N))
            return -1.0;
        const MatrixArg a(A, squared(N));
        if (!a.usable())
            return -1.0;
        return lu_determinant(a.values(), static_cast<size_t>(N));
    });
}

BRINDLE_EXPORT(int16_t) cMatrixInv(int16_t N, SAFEARRAY **A, SAFEARRAY **Result) {
    return guarded<int16_t>(0, [&]() -> int16_t {
        if (!order_ok(N))
            return 0;
        const MatrixArg a(A, squared(N)), out(Result, squared(N));
        if (!a.usable() || !out.usable())
            return 0;
        return lu_inverse(a.values(), static_cast<size_t>(N), out.values()) ? -1 : 0;
    });
}

BRINDLE_EXPORT(int16_t) cMatrixSymToeplitz(int16_t N, SAFEARRAY **V, SAFEARRAY **Result) {
    return guarded<int16_t>(0, [&]() -> int16_t {
        if (!order_ok(N))
            return 0;
        const size_t n = static_cast<size_t>(N);
        const MatrixArg v(V, n), out(Result, squared(N));
        if (!v.usable() || !out.usable())
            return 0;
        // The vector may be the result array itself: its values are taken first.
        const std::vector<double> first(v.values().begin(), v.values().end());
        matrix_sym_toeplitz(first, out.values(), n);
        return -1;
    });
}

BRINDLE_EXPORT(int16_t) cMatrixAdd(int16_t N, SAFEARRAY **A, SAFEARRAY **B, SAFEARRAY **Result) {
    if (!order_ok(N))
        return 0;
    const MatrixArg a(A, squared(N)), b(B, squared(N)), out(Result, squared(N));
    if (!a.usable() || !b.usable() || !out.usable())
        return 0;
    matrix_add(a.values(), b.values(), out.values(), static_cast<size_t>(N));
    return -1;
}

BRINDLE_EXPORT(int16_t) cMatrixSub(int16_t N, SAFEARRAY **A, SAFEARRAY **B, SAFEARRAY **Result) {
    if (!order_ok(N))
        return 0;
    const MatrixArg a(A, squared(N)), b(B, squared(N)), out(Result, squared(N));
    if (!a.usable() || !b.usable() || !out.usable())
        return 0;
    matrix_sub(a.values(), b.values(), out.values(), static_cast<size_t>(N));
    return -1;
}

BRINDLE_EXPORT(int16_t) cMatrixCopy(int16_t N, SAFEARRAY **Source, SAFEARRAY **Target) {
    if (!order_ok(N))
        return 0;
    const MatrixArg from(Source, squared(N)), to(Target, squared(N));
    if (!from.usable() || !to.usable())
        return 0;
    std::memmove(to.values().data(), from.values().data(), squared(N) * sizeof(double));
    return -1;
}

BRINDLE_EXPORT(int16_t) cMatrixCompare(int16_t N, SAFEARRAY **A, SAFEARRAY **B, double Tolerance) {
    if (!order_ok(N))
        return 0;
    const MatrixArg a(A, squared(N)), b(B, squared(N));
    if (!a.usable() || !b.usable())
        return 0;
    return matrix_equal(a.values(), b.values(), Tolerance, static_cast<size_t>(N)) ? -1 : 0;
}

BRINDLE_EXPORT(int16_t) cMatrixMul(int16_t N, SAFEARRAY **A, SAFEARRAY **B, SAFEARRAY **Result) {
    return guarded<int16_t>(0, [&]() -> int16_t {
        if (!order_ok(N))
            return 0;
        const MatrixArg a(A, squared(N)), b(B, squared(N)), out(Result, squared(N));
        if (!a.usable() || !b.usable() || !out.usable())
            return 0;
        // Memory row r holds the client's column r, so the client's A x B is
        // the row-major product B x A of the memory order. The product is
        // made aside: Result may be A or B.
        std::vector<double> product(squared(N));
        matrix_mul(b.values(), a.values(), product, static_cast<size_t>(N));
        std::copy(product.begin(), product.end(), out.values().begin());
        return -1;
    });
}

BRINDLE_EXPORT(int16_t) cMatrixTranspose(int16_t N, SAFEARRAY **A, SAFEARRAY **Result) {
    if (!order_ok(N))
        return 0;
    const MatrixArg a(A, squared(N)), out(Result, squared(N));
    if (!a.usable() || !out.usable())
        return 0;
    matrix_transpose(a.values(), out.values(), static_cast<size_t>(N));
    return -1;
}

BRINDLE_EXPORT(int16_t) cMatrixMinor(int16_t N, SAFEARRAY **A, int16_t Row, int16_t Col, SAFEARRAY **Result) {
    return guarded<int16_t>(0, [&]() -> int16_t {
        if (!order_ok(N) || !subscripts_ok(N, Row, Col))
            return 0;
        const size_t n = static_cast<size_t>(N);
        const MatrixArg a(A, n * n), out(Result, (n - 1) * (n - 1));
        if (!a.usable() || !out.usable())
            return 0;
        std::vector<double> minor((n - 1) * (n - 1));
        matrix_minor(a.values(), static_cast<size_t>(Col - 1), static_cast<size_t>(Row - 1), minor, n);
        std::copy(minor.begin(), minor.end(), out.values().begin());
        return -1;
    });
}

BRINDLE_EXPORT(double) cMatrixCoFactor(int16_t N, SAFEARRAY **A, int16_t Row, int16_t Col) {
    return guarded(-1.0, [&] {
        if (!order_ok(N) || !subscripts_ok(N, Row, Col))
            return -1.0;
        const size_t n = static_cast<size_t>(N);
        const MatrixArg a(A, n * n);
        if (!a.usable())
            return -1.0;
        std::vector<double> minor((n - 1) * (n - 1));
        matrix_minor(a.values(), static_cast<size_t>(Col - 1), static_cast<size_t>(Row - 1), minor, n);
        const double det = lu_determinant(minor, n - 1);
        return (Row + Col) % 2 == 0 ? det : -det;
    });
}

BRINDLE_EXPORT(int16_t) cMatrixFill(int16_t N, SAFEARRAY **A, double Value) {
    if (!order_ok(N))
        return 0;
    const MatrixArg a(A, squared(N));
    if (!a.usable())
        return 0;
    std::fill(a.values().begin(), a.values().end(), Value);
    return -1;
}
