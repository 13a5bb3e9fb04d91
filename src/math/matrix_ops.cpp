#include "math/matrix_ops.h"

#include <cmath>
#include <utility>

namespace brindle::math {

void matrix_add(std::span<const double> a, std::span<const double> b, std::span<double> out, size_t n) noexcept {
    for (size_t i = 0; i < n * n; ++i)
        out[i] = a[i] + b[i];
}

void matrix_sub(std::span<const double> a, std::span<const double> b, std::span<double> out, size_t n) noexcept {
    for (size_t i = 0; i < n * n; ++i)
        out[i] = a[i] - b[i];
}

void matrix_mul(std::span<const double> a, std::span<const double> b, std::span<double> out, size_t n) noexcept {
    // Row i of the product is the sum over k of a(i, k) times row k of b:
    // every inner pass runs along contiguous rows.
    for (size_t i = 0; i < n; ++i) {
        double *__restrict o = out.data() + i * n;
        for (size_t j = 0; j < n; ++j)
            o[j] = 0.0;
        for (size_t k = 0; k < n; ++k) {
            const double f = a[i * n + k];
            const double *__restrict bk = b.data() + k * n;
            for (size_t j = 0; j < n; ++j)
                o[j] += f * bk[j];
        }
    }
}

void matrix_transpose(std::span<const double> a, std::span<double> out, size_t n) noexcept {
    if (a.data() == out.data()) {
        for (size_t i = 0; i < n; ++i)
            for (size_t j = i + 1; j < n; ++j)
                std::swap(out[i * n + j], out[j * n + i]);
        return;
    }
    for (size_t i = 0; i < n; ++i)
        for (size_t j = 0; j < n; ++j)
            out[j * n + i] = a[i * n + j];
}

void matrix_minor(std::span<const double> a, size_t row, size_t col, std::span<double> out, size_t n) noexcept {
    size_t at = 0;
    for (size_t i = 0; i < n; ++i) {
        if (i == row)
            continue;
        for (size_t j = 0; j < n; ++j)
            if (j != col)
                out[at++] = a[i * n + j];
    }
}

bool matrix_equal(std::span<const double> a, std::span<const double> b, double tolerance, size_t n) noexcept {
    for (size_t i = 0; i < n * n; ++i)
        if (!(a[i] == b[i] || std::fabs(a[i] - b[i]) <= tolerance))
            return false;
    return true;
}

void matrix_sym_toeplitz(std::span<const double> v, std::span<double> out, size_t n) noexcept {
    for (size_t i = 0; i < n; ++i)
        for (size_t j = 0; j < n; ++j)
            out[i * n + j] = v[i > j ? i - j : j - i];
}

} // namespace brindle::math
