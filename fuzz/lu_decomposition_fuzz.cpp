// The LU decomposition behind cMatrixDet and cMatrixInv on matrices made
// from the input: the row order is a permutation, the factors reproduce the
// permuted matrix within the rounding bound of Gaussian elimination, the
// determinant is the signed product of the pivots, and the inverse equals,
// value for value, the forward and back substitution of each unit vector
// done one column at a time (written out here), or is refused for a
// singular matrix with its output untouched. Layout of an input: one byte
// for the order (1 to 12) and the mode, then the elements: small integers
// from single bytes (mode 0, where ties and zero pivots are common) or raw
// 8-byte Doubles (mode 1: NaN, infinities, subnormals).
#include "fuzz_target.h"
#include "math/lu_decomposition.h"

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <algorithm>
#include <cstring>
#include <vector>

namespace {

using brindle::math::LuFactors;

bool all_finite(const std::vector<double> &v) {
    for (double x : v)
        if (!std::isfinite(x))
            return false;
    return true;
}

// Elements zero or between 1e-50 and 1e50 in magnitude: elimination of
// order 12 then neither overflows nor underflows (an underflowed multiplier
// is outside the rounding bound checked below).
bool moderate(const std::vector<double> &v) {
    for (double x : v)
        if (x != 0.0 && !(std::fabs(x) >= 1e-50 && std::fabs(x) <= 1e50))
            return false;
    return true;
}

bool same(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

// Column c of the inverse: solve L y = P e_c, then U x = y, one element at
// a time.
std::vector<double> column_by_column(const LuFactors &f) {
    const size_t n = f.n;
    const double *a = f.lu.data();
    std::vector<double> inv(n * n), y(n), x(n);
    for (size_t c = 0; c < n; ++c) {
        for (size_t i = 0; i < n; ++i) {
            double s = f.rows[i] == c ? 1.0 : 0.0;
            for (size_t k = 0; k < i; ++k)
                s -= a[i * n + k] * y[k];
            y[i] = s;
        }
        for (size_t i = n; i-- > 0;) {
            double s = y[i];
            for (size_t k = i + 1; k < n; ++k)
                s -= a[i * n + k] * x[k];
            x[i] = s / a[i * n + i];
        }
        for (size_t i = 0; i < n; ++i)
            inv[i * n + c] = x[i];
    }
    return inv;
}

} // namespace

BRINDLE_FUZZ_TARGET(lu_decomposition) {
    if (size < 1)
        return 0;
    const size_t n = 1 + data[0] % 12;
    const bool raw = (data[0] / 12) % 2 == 1;
    std::vector<double> m(n * n, 0.0);
    for (size_t i = 0; i < n * n; ++i) {
        if (raw) {
            if (1 + 8 * (i + 1) <= size)
                std::memcpy(&m[i], data + 1 + 8 * i, 8);
        } else if (1 + i < size) {
            m[i] = static_cast<double>(static_cast<int8_t>(data[1 + i]) % 5);
        }
    }

    const LuFactors f = brindle::math::lu_decompose(m, n);
    std::vector<bool> seen(n, false);
    for (size_t r : f.rows) {
        FUZZ_CHECK(r < n && !seen[r]);
        seen[r] = true;
    }
    FUZZ_CHECK(f.exchanges < n);

    const double det = brindle::math::lu_determinant(m, n);
    std::vector<double> out(n * n, 12345.0);
    const bool inverted = brindle::math::lu_inverse(m, n, out);
    FUZZ_CHECK(inverted == !f.singular);
    if (f.singular) {
        FUZZ_CHECK(det == 0.0);
        for (double v : out)
            FUZZ_CHECK(v == 12345.0);
        return 0;
    }

    double product = 1.0;
    for (size_t k = 0; k < n; ++k)
        product *= f.lu[k * n + k];
    if (f.exchanges % 2)
        product = -product;
    FUZZ_CHECK(same(det, product)); // the sign is exact, whenever it is applied

    if (!moderate(m) || !all_finite(f.lu))
        return 0;
    // |P A - L U| <= gamma |L| |U| element by element, gamma = 2 n eps.
    const double gamma = 2.0 * static_cast<double>(n) * DBL_EPSILON;
    for (size_t r = 0; r < n; ++r)
        for (size_t c = 0; c < n; ++c) {
            double lu = 0.0, bound = 0.0;
            for (size_t k = 0; k <= std::min(r, c); ++k) {
                const double l = k == r ? 1.0 : f.lu[r * n + k];
                lu += l * f.lu[k * n + c];
                bound += std::fabs(l * f.lu[k * n + c]);
            }
            if (std::isfinite(bound))
                FUZZ_CHECK(std::fabs(lu - m[f.rows[r] * n + c]) <= gamma * bound + DBL_MIN);
        }

    const std::vector<double> want = column_by_column(f);
    if (all_finite(want))
        for (size_t i = 0; i < n * n; ++i)
            FUZZ_CHECK(same(out[i], want[i]));
    return 0;
}
