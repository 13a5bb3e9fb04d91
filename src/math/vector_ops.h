// Plane and space vector arithmetic on fixed-size arrays of Doubles (X, Y
// and, in space, Z). The plane and space forms share every rule; the cross
// product exists only in space and the quarter turn only in the plane.
#pragma once

#include <array>
#include <cfloat>
#include <cmath>
#include <cstddef>

namespace brindle::math {

template <size_t D> using Vec = std::array<double, D>;

template <size_t D> Vec<D> vec_add(const Vec<D> &a, const Vec<D> &b) noexcept {
    Vec<D> r;
    for (size_t i = 0; i < D; ++i)
        r[i] = a[i] + b[i];
    return r;
}

template <size_t D> Vec<D> vec_sub(const Vec<D> &a, const Vec<D> &b) noexcept {
    Vec<D> r;
    for (size_t i = 0; i < D; ++i)
        r[i] = a[i] - b[i];
    return r;
}

// The component-wise product.
template <size_t D> Vec<D> vec_mul(const Vec<D> &a, const Vec<D> &b) noexcept {
    Vec<D> r;
    for (size_t i = 0; i < D; ++i)
        r[i] = a[i] * b[i];
    return r;
}

// s x a + t x b.
template <size_t D> Vec<D> vec_combine(const Vec<D> &a, double s, const Vec<D> &b, double t) noexcept {
    Vec<D> r;
    for (size_t i = 0; i < D; ++i)
        r[i] = s * a[i] + t * b[i];
    return r;
}

// (b - a) x t + a: a at t = 0, b at t = 1, and beyond them outside 0 .. 1.
template <size_t D> Vec<D> vec_lerp(const Vec<D> &a, const Vec<D> &b, double t) noexcept {
    Vec<D> r;
    for (size_t i = 0; i < D; ++i)
        r[i] = (b[i] - a[i]) * t + a[i];
    return r;
}

template <size_t D> Vec<D> vec_neg(const Vec<D> &v) noexcept {
    Vec<D> r;
    for (size_t i = 0; i < D; ++i)
        r[i] = -v[i];
    return r;
}

template <size_t D> double vec_dot(const Vec<D> &a, const Vec<D> &b) noexcept {
    double s = 0.0;
    for (size_t i = 0; i < D; ++i)
        s += a[i] * b[i];
    return s;
}

// sqrt(v . v). Where the sum of squares overflows, or falls below the normal
// range and loses its digits, the same length is taken without squaring.
template <size_t D> double vec_length(const Vec<D> &v) noexcept {
    const double s = vec_dot(v, v);
    if (s >= DBL_MIN && s <= DBL_MAX)
        return std::sqrt(s);
    if constexpr (D == 2)
        return std::hypot(v[0], v[1]);
    else
        return std::hypot(v[0], v[1], v[2]);
}

// v scaled to the length `length` (negative turns it round); a vector of
// length 0 comes back unchanged.
template <size_t D> Vec<D> vec_with_length(const Vec<D> &v, double length) noexcept {
    const double now = vec_length(v);
    if (now == 0.0)
        return v;
    Vec<D> r;
    for (size_t i = 0; i < D; ++i)
        r[i] = v[i] / now * length;
    return r;
}

// v over its own length; a vector of length 0 comes back unchanged.
template <size_t D> Vec<D> vec_normalized(const Vec<D> &v) noexcept {
    const double now = vec_length(v);
    if (now == 0.0)
        return v;
    Vec<D> r;
    for (size_t i = 0; i < D; ++i)
        r[i] = v[i] / now;
    return r;
}

inline Vec<3> vec_cross(const Vec<3> &a, const Vec<3> &b) noexcept {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

// The quarter turn counter-clockwise: (-y, x).
inline Vec<2> vec_ortho(const Vec<2> &v) noexcept { return {-v[1], v[0]}; }

} // namespace brindle::math
