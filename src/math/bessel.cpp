#include "math/bessel.h"

#include "math/bessel_tables.h"

#include <cmath>
#include <limits>

namespace brindle::math {

namespace {

namespace t = bessel_tables;

constexpr double kTwoOverPi = 0.63661977236758134308;
constexpr double kOneOverPi = 0.31830988618379067154;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

// c[0] / 2 + sum c[j] T_j(u), u in [-1, 1], by Clenshaw's recurrence.
double chebyshev(const double *c, size_t n, double u) {
    const double two_u = 2.0 * u;
    double b1 = 0.0, b2 = 0.0;
    for (size_t j = n; j-- > 1;) {
        const double b0 = two_u * b1 - b2 + c[j];
        b2 = b1;
        b1 = b0;
    }
    return u * b1 - b2 + 0.5 * c[0];
}

template <size_t N> double chebyshev(const double (&c)[N], double u) { return chebyshev(c, N, u); }

// x^2 mapped from [0, kSmall^2] onto [-1, 1].
double small_u(double x) { return 2.0 * (x * x) / (t::kSmall * t::kSmall) - 1.0; }

// The piece of [kSmall, kLarge] holding x, evaluated with its zero factored out.
template <size_t N> double by_pieces(const t::BesselPiece (&pieces)[N], double x) {
    size_t i = 0;
    while (i + 1 < N && x > pieces[i].hi)
        ++i;
    const t::BesselPiece &p = pieces[i];
    const double u = (2.0 * x - p.lo - p.hi) / (p.hi - p.lo);
    return chebyshev(p.series, p.terms, u) * ((x - p.zero_hi) - p.zero_lo);
}

// Hankel's form beyond kLarge: sqrt(1 / (pi x)) times the combination of
// P, Q, sin x and cos x that the caller gives (cos and sin of x - (2n+1) pi/4
// written through sin x and cos x, whose argument reduction the C library
// does exactly).
struct Hankel {
    double p, q, s, c, scale;
};

Hankel hankel(const double *pc, size_t pn, const double *qc, size_t qn, double x) {
    const double r = t::kLarge / x;
    const double u = 2.0 * (r * r) - 1.0;
    return {chebyshev(pc, pn, u), chebyshev(qc, qn, u) / x, std::sin(x), std::cos(x), std::sqrt(kOneOverPi / x)};
}

Hankel hankel0(double x) { return hankel(t::kP0, std::size(t::kP0), t::kQ0, std::size(t::kQ0), x); }
Hankel hankel1(double x) { return hankel(t::kP1, std::size(t::kP1), t::kQ1, std::size(t::kQ1), x); }

double j0_positive(double x) {
    if (x <= t::kSmall)
        return chebyshev(t::kJ0Small, small_u(x));
    if (x <= t::kLarge)
        return by_pieces(t::kJ0Pieces, x);
    if (std::isinf(x))
        return 0.0;
    const Hankel h = hankel0(x);
    return h.scale * (h.p * (h.c + h.s) - h.q * (h.s - h.c));
}

double j1_positive(double x) {
    if (x <= t::kSmall)
        return x * chebyshev(t::kJ1Small, small_u(x));
    if (x <= t::kLarge)
        return by_pieces(t::kJ1Pieces, x);
    if (std::isinf(x))
        return 0.0;
    const Hankel h = hankel1(x);
    return h.scale * (h.p * (h.s - h.c) + h.q * (h.s + h.c));
}

} // namespace

double bessel_j0(double x) noexcept { return j0_positive(std::fabs(x)); }

double bessel_j1(double x) noexcept {
    const double v = j1_positive(std::fabs(x));
    return std::signbit(x) ? -v : v;
}

double bessel_y0(double x) noexcept {
    if (std::isnan(x) || x < 0.0)
        return kNaN;
    if (x == 0.0)
        return -kInf;
    if (x <= t::kSmall)
        return kTwoOverPi * std::log(0.5 * x) * j0_positive(x) + chebyshev(t::kY0Small, small_u(x));
    if (x <= t::kLarge)
        return by_pieces(t::kY0Pieces, x);
    if (std::isinf(x))
        return 0.0;
    const Hankel h = hankel0(x);
    return h.scale * (h.p * (h.s - h.c) + h.q * (h.c + h.s));
}

double bessel_y1(double x) noexcept {
    if (std::isnan(x) || x < 0.0)
        return kNaN;
    if (x == 0.0)
        return -kInf;
    if (x <= t::kSmall) {
        // -2 / (pi x) dominates and overflows for the smallest x.
        return kTwoOverPi * std::log(0.5 * x) * j1_positive(x) - kTwoOverPi / x + x * chebyshev(t::kY1Small, small_u(x));
    }
    if (x <= t::kLarge)
        return by_pieces(t::kY1Pieces, x);
    if (std::isinf(x))
        return 0.0;
    const Hankel h = hankel1(x);
    return h.scale * (-h.p * (h.s + h.c) + h.q * (h.s - h.c));
}

double bessel_jn(int n, double x) noexcept {
    // J(-n) = (-1)^n J(n), J(n)(-x) = (-1)^n J(n)(x).
    bool negate = false;
    if (n < 0) {
        n = -n;
        negate = (n & 1) != 0;
    }
    if (x < 0.0) {
        x = -x;
        negate = negate != ((n & 1) != 0);
    }
    double value;
    if (std::isnan(x))
        return kNaN;
    if (n == 0)
        value = j0_positive(x);
    else if (n == 1)
        value = j1_positive(x);
    else if (x == 0.0 || std::isinf(x))
        value = 0.0;
    else if (x <= 1.0) {
        // The power series (A&S 9.1.10): (x/2)^n / n! times
        // sum (-x^2/4)^k / (k! (n+1)...(n+k)); each term is at most 1/12 of
        // the one before, so 20 terms reach far below the rounding. The
        // leading factor is built one quotient at a time and underflows to 0
        // where the value does.
        double lead = 1.0;
        for (int k = 1; k <= n && lead != 0.0; ++k)
            lead *= (0.5 * x) / k;
        const double q = -0.25 * x * x;
        double term = 1.0, sum = 1.0;
        for (int k = 1; k <= 20; ++k) {
            term *= q / (static_cast<double>(k) * (n + k));
            sum += term;
        }
        value = lead * sum;
    } else if (x > n) {
        // Forward: J(k+1) = 2k / x J(k) - J(k-1).
        double before = j0_positive(x), current = j1_positive(x);
        for (int k = 1; k < n; ++k) {
            const double next = (2.0 * k / x) * current - before;
            before = current;
            current = next;
        }
        value = current;
    } else {
        // 1 < x <= n. Backward from m, far enough above n that the start's error has
        // died away by n (A&S 9.12; the start as in Numerical Recipes'
        // bessj, with a wider margin), on an even index.
        constexpr double kBig = 1e250;
        const int m = 2 * ((n + static_cast<int>(std::sqrt(400.0 * n)) + 20) / 2);
        double above = 0.0, current = 1.0, at_n = 0.0, at_1 = 0.0;
        for (int k = m; k > 0; --k) {
            const double below = (2.0 * k / x) * current - above;
            above = current;
            current = below;
            // current is now the value at k - 1, above the value at k.
            if (std::fabs(current) > kBig) {
                current /= kBig;
                above /= kBig;
                at_n /= kBig;
                at_1 /= kBig;
            }
            if (k - 1 == n)
                at_n = current;
            if (k - 1 == 1)
                at_1 = current;
        }
        // current is J0 and at_1 is J1, both up to one common factor.
        const double j0 = j0_positive(x), j1 = j1_positive(x);
        value = std::fabs(j0) >= std::fabs(j1) ? at_n * (j0 / current) : at_n * (j1 / at_1);
    }
    return negate ? -value : value;
}

double bessel_yn(int n, double x) noexcept {
    bool negate = false;
    if (n < 0) {
        n = -n;
        negate = (n & 1) != 0;
    }
    if (std::isnan(x) || x < 0.0)
        return kNaN;
    double value;
    if (n == 0)
        value = bessel_y0(x);
    else if (n == 1 || x == 0.0)
        value = bessel_y1(x);
    else {
        double before = bessel_y0(x), current = bessel_y1(x);
        for (int k = 1; k < n && std::isfinite(current); ++k) {
            const double next = (2.0 * k / x) * current - before;
            before = current;
            current = next;
        }
        value = current;
    }
    return negate ? -value : value;
}

} // namespace brindle::math
