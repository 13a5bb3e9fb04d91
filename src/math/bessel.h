// Bessel functions of the first and second kind of integer order, computed
// by the library itself so that every platform gives the same accuracy
// (the C libraries' own j0, y0, jn ... differ between platforms and lose
// relative accuracy near the zeros of the functions).
//
// Accuracy, against 40-digit values: within 1e-14 relative for J0, J1, Y0
// and Y1 for 0 <= x <= 50, zeros included; beyond 50, within 1e-14 relative
// away from the zeros and within a few units in the last place of the
// envelope sqrt(2 / (pi x)) near them, where no relative bound is possible
// with an argument reduction in double precision.
#pragma once

namespace brindle::math {

double bessel_j0(double x) noexcept; // even
double bessel_j1(double x) noexcept; // odd
double bessel_y0(double x) noexcept; // -inf at 0, NaN below 0
double bessel_y1(double x) noexcept;

// Order n: J(-n) = (-1)^n J(n) and J(n)(-x) = (-1)^n J(n)(x). The power
// series for |x| <= 1; forward recurrence from J0 and J1 where x > n;
// otherwise Miller's backward
// recurrence (A&S 9.12, example 1) from well above n, normalised by J0 or
// J1, whichever is larger at x, and rescaled on the way down so that
// nothing overflows. 1 for n = 0 at 0, else 0 at 0; 0 at infinity.
double bessel_jn(int n, double x) noexcept;

// Order n by forward recurrence from Y0 and Y1, which is stable for Y.
// Y(-n) = (-1)^n Y(n); infinite at 0 and once the value passes the largest
// double (-inf for n >= 1, +inf for odd negative n); NaN below 0.
double bessel_yn(int n, double x) noexcept;

} // namespace brindle::math
