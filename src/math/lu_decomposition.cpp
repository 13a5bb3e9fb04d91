#include "math/lu_decomposition.h"

#include <cmath>
#include <utility>

namespace brindle::math {

namespace {

// to[0..count) -= f x from[0..count), four at a time so that the compiler
// can keep two pairs in vector registers. Each element gets exactly one
// multiply and one subtract, as the plain loop would give it.
inline void subtract_multiple(double *__restrict to, const double *__restrict from, double f, size_t count) {
    size_t j = 0;
    for (; j + 4 <= count; j += 4) {
        to[j] -= f * from[j];
        to[j + 1] -= f * from[j + 1];
        to[j + 2] -= f * from[j + 2];
        to[j + 3] -= f * from[j + 3];
    }
    for (; j < count; ++j)
        to[j] -= f * from[j];
}

} // namespace

LuFactors lu_decompose(std::span<const double> matrix, size_t n) {
    LuFactors f;
    f.n = n;
    f.lu.assign(matrix.begin(), matrix.begin() + static_cast<std::ptrdiff_t>(n * n));
    f.rows.resize(n);
    for (size_t r = 0; r < n; ++r)
        f.rows[r] = r;
    double *a = f.lu.data();
    for (size_t k = 0; k < n; ++k) {
        size_t pivot = k;
        double largest = std::fabs(a[k * n + k]);
        for (size_t r = k + 1; r < n; ++r) {
            const double v = std::fabs(a[r * n + k]);
            if (v > largest) {
                largest = v;
                pivot = r;
            }
        }
        if (pivot != k) {
            std::swap_ranges(a + pivot * n, a + pivot * n + n, a + k * n);
            std::swap(f.rows[pivot], f.rows[k]);
            ++f.exchanges;
        }
        const double p = a[k * n + k];
        if (p == 0.0) {
            f.singular = true;
            return f;
        }
        const double *pivot_row = a + k * n;
        for (size_t r = k + 1; r < n; ++r) {
            double *row = a + r * n;
            const double m = row[k] / p;
            row[k] = m;
            subtract_multiple(row + k + 1, pivot_row + k + 1, m, n - k - 1);
        }
    }
    return f;
}

double lu_determinant(std::span<const double> matrix, size_t n) {
    static const double kSign[2] = {1.0, -1.0};
    const LuFactors f = lu_decompose(matrix, n);
    if (f.singular)
        return 0.0;
    double product = 1.0;
    for (size_t k = 0; k < n; ++k)
        product *= f.lu[k * n + k];
    return product * kSign[f.exchanges % 2];
}

bool lu_inverse(std::span<const double> matrix, size_t n, std::span<double> inverse) {
    const LuFactors f = lu_decompose(matrix, n);
    if (f.singular)
        return false;
    const double *a = f.lu.data();
    // Column c of x solves (PA) x_c = e_c, where row r of PA is row rows[r]
    // of A; since A^-1 = (PA)^-1 P, it is column rows[c] of the inverse.
    std::vector<double> x(n * n, 0.0);
    // Forward: L y = I. Row i of y is zero right of the diagonal, so only
    // its first k + 1 columns take row k's contribution.
    for (size_t i = 0; i < n; ++i) {
        double *xi = x.data() + i * n;
        xi[i] = 1.0;
        for (size_t k = 0; k < i; ++k)
            subtract_multiple(xi, x.data() + k * n, a[i * n + k], k + 1);
    }
    // Back: U x = y, from the last row up; row i of y is overwritten by
    // row i of x once the rows below it are done.
    for (size_t i = n; i-- > 0;) {
        double *xi = x.data() + i * n;
        for (size_t k = i + 1; k < n; ++k)
            subtract_multiple(xi, x.data() + k * n, a[i * n + k], n);
        const double d = a[i * n + i];
        for (size_t c = 0; c < n; ++c)
            xi[c] /= d;
    }
    for (size_t r = 0; r < n; ++r) {
        const double *xr = x.data() + r * n;
        double *out = inverse.data() + r * n;
        for (size_t c = 0; c < n; ++c)
            out[f.rows[c]] = xr[c];
    }
    return true;
}

} // namespace brindle::math
