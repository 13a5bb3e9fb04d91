// Complex numbers through the exported interface. Expected values come from
// mpmath at 30 digits on the same binary inputs (the script is in each
// comment) or from hand computation where the library's own conventions
// (the plain arc tangent, the upper square root) differ from mpmath's.
#include "support/ole_helpers.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

namespace {

struct Cpx {
    double re, im;
};

Complex *as_record(Cpx *c) { return reinterpret_cast<Complex *>(c); }

// Each operation writes into the record it is given first and returns its
// address.
Cpx binary(intptr_t(BRINDLE_CALL *op)(Complex *, Complex *, Complex *), Cpx a, Cpx b) {
    Cpx r{-99, -99};
    EXPECT_EQ(op(as_record(&r), as_record(&a), as_record(&b)), reinterpret_cast<intptr_t>(&r));
    return r;
}

Cpx unary(intptr_t(BRINDLE_CALL *op)(Complex *, Complex *), Cpx z) {
    Cpx r{-99, -99};
    EXPECT_EQ(op(as_record(&r), as_record(&z)), reinterpret_cast<intptr_t>(&r));
    return r;
}

Cpx power(Cpx z, int16_t n) {
    Cpx r{-99, -99};
    EXPECT_EQ(cCpxPowerN(as_record(&r), as_record(&z), n), reinterpret_cast<intptr_t>(&r));
    return r;
}

void expect_near(Cpx got, Cpx want, double tol, const char *what) {
    EXPECT_NEAR(got.re, want.re, tol * std::max(1.0, std::fabs(want.re))) << what;
    EXPECT_NEAR(got.im, want.im, tol * std::max(1.0, std::fabs(want.im))) << what;
}

constexpr double kPi = std::numbers::pi;

} // namespace

TEST(ComplexNumbers, ArithmeticAgainstMpmath) {
    // a = mpc(1.5, -2.25), b = mpc(0.3, 4.0); print a+b, a-b, a*b, a/b (dps 30).
    const Cpx a{1.5, -2.25}, b{0.3, 4.0};
    expect_near(binary(cCpxAdd, a, b), {1.7999999999999999889, 1.75}, 1e-15, "add");
    expect_near(binary(cCpxSub, a, b), {1.2000000000000000111, -6.25}, 1e-15, "sub");
    expect_near(binary(cCpxMul, a, b), {9.4499999999999999833, 5.325000000000000025}, 1e-15, "mul");
    expect_near(binary(cCpxDiv, a, b), {-0.53138595400870105781, -0.41485394655065257786}, 1e-15, "div");
    expect_near(unary(cCpxConjugue, a), {1.5, 2.25}, 0, "conjugate");
    Cpx z = a;
    // abs(a) and atan(-2.25 / 1.5).
    EXPECT_NEAR(cCpxModulus(as_record(&z)), 2.7041634565979919698, 1e-15);
    EXPECT_NEAR(cCpxArgument(as_record(&z)), -0.98279372324732906799, 1e-15);
    // mpc(1.2, 0.5) ** 5 and ** -3: inside the right half-plane the library's
    // powers are the true ones.
    expect_near(power({1.2, 0.5}, 5), {-1.4566799999999999947, 3.4152499999999993658}, 1e-14, "power 5");
    expect_near(power({1.2, 0.5}, -3), {0.17154190273532679626, -0.42160358945216192005}, 1e-14, "power -3");
}

TEST(ComplexNumbers, TheArgumentIsThePlainArcTangent) {
    struct Row {
        Cpx z;
        double want;
    } const rows[] = {
        {{-1, 0}, 0.0},          // not pi
        {{0, 1}, kPi / 2},       // 1 / 0 = +Inf
        {{0, -3}, -kPi / 2},     // -3 / 0 = -Inf
        {{-1, 1}, -kPi / 4},     // not 3 pi / 4
        {{-2, -2}, kPi / 4},     // not -3 pi / 4
        {{1, 1}, kPi / 4},
        {{1e-300, 1e300}, kPi / 2}, // the quotient overflows to +Inf
    };
    for (const Row &r : rows) {
        Cpx z = r.z;
        EXPECT_NEAR(cCpxArgument(as_record(&z)), r.want, 1e-15) << r.z.re << ", " << r.z.im;
    }
    Cpx zero{0, 0};
    EXPECT_TRUE(std::isnan(cCpxArgument(as_record(&zero))));
}

TEST(ComplexNumbers, PowersInheritTheArgumentsHalfPlane) {
    // i^2 = -1 (the sine of pi leaves about 1.2e-16).
    expect_near(power({0, 1}, 2), {-1, 0}, 1e-15, "i^2");
    // (-1)^1: modulus 1, argument 0, so (1, 0), not -1.
    expect_near(power({-1, 0}, 1), {1, 0}, 0, "(-1)^1");
    // (-1 + i)^3 is truly (2, 2); with argument -pi/4 it is
    // 2 sqrt 2 (cos(-3 pi/4), sin(-3 pi/4)) = (-2, -2).
    expect_near(power({-1, 1}, 3), {-2, -2}, 1e-14, "(-1+i)^3");
    // Even powers land right: (-1 + i)^2 = -2i either way.
    expect_near(power({-1, 1}, 2), {0, -2}, 1e-14, "(-1+i)^2");
    // (2i)^-2: modulus 1/4, angle -pi, so (-0.25, 0).
    expect_near(power({0, 2}, -2), {-0.25, 0}, 1e-15, "(2i)^-2");
    expect_near(power({3, 4}, 0), {1, 0}, 0, "z^0");
    const Cpx nan = power({0, 0}, 0); // 0^0 = 1 times cos(0 x NaN)
    EXPECT_TRUE(std::isnan(nan.re) && std::isnan(nan.im));
    // 32767 as the exponent: the modulus 1 stays 1, the angle wraps.
    const Cpx big = power({1, 0}, 32767);
    EXPECT_DOUBLE_EQ(big.re, 1.0);
}

TEST(ComplexNumbers, SquareRootsHaveNonNegativeImaginaryParts) {
    struct Row {
        Cpx z, want;
    } const rows[] = {
        {{-4, 0}, {0, 2}},
        {{3, 4}, {2, 1}},
        {{3, -4}, {2, 1}}, // the principal root would be (2, -1)
        {{0, -2}, {1, 1}},
        {{-7, 24}, {3, 4}},
        {{-7, -24}, {3, 4}},
        {{0, 0}, {0, 0}},
        {{9, 0}, {3, 0}},
        // mpmath.sqrt(mpc(1.5, -2.25)) with the sign of its imaginary part dropped.
        {{1.5, -2.25}, {1.4498557612048848168, 0.77593925554710530119}},
    };
    for (const Row &r : rows)
        expect_near(unary(cCpxSqrt, r.z), r.want, 1e-15, "sqrt");
}

TEST(ComplexNumbers, DivisionByZeroAndExtremeMagnitudes) {
    const Cpx q = binary(cCpxDiv, {1, 1}, {0, 0});
    EXPECT_TRUE(!std::isfinite(q.re) && !std::isfinite(q.im));
    const Cpx z = binary(cCpxDiv, {0, 0}, {0, 0});
    EXPECT_TRUE(std::isnan(z.re) && std::isnan(z.im));
    // Moduli whose squares overflow or underflow: 3-4-5 at any scale.
    for (double scale : {1e200, 1e-200, 1e-310, 1.0}) {
        Cpx v{3 * scale, -4 * scale};
        EXPECT_NEAR(cCpxModulus(as_record(&v)), 5 * scale, 1e-12 * 5 * scale) << scale; // 1e-310 is subnormal
    }
    Cpx big{3e200, 4e200};
    expect_near(unary(cCpxSqrt, {-3e200, 4e200}), {std::sqrt(1e200), std::sqrt(4e200)}, 1e-15, "sqrt at 1e200");
    Cpx nan{std::numeric_limits<double>::quiet_NaN(), 1};
    EXPECT_TRUE(std::isnan(cCpxModulus(as_record(&nan))));
    EXPECT_DOUBLE_EQ(cCpxModulus(as_record(&big)), 5e200);
}

TEST(ComplexNumbers, ResultMayBeAnOperandAndNullRecordsAreRefused) {
    Cpx z{1, 2};
    cCpxMul(as_record(&z), as_record(&z), as_record(&z)); // (1 + 2i)^2 = -3 + 4i
    EXPECT_EQ(z.re, -3);
    EXPECT_EQ(z.im, 4);
    cCpxSqrt(as_record(&z), as_record(&z));
    EXPECT_EQ(z.re, 1);
    EXPECT_EQ(z.im, 2);
    cCpxDiv(as_record(&z), as_record(&z), as_record(&z));
    EXPECT_EQ(z.re, 1);
    EXPECT_EQ(z.im, 0);
    Cpx keep{7, 8};
    EXPECT_EQ(cCpxAdd(nullptr, as_record(&z), as_record(&z)), 0);
    EXPECT_EQ(cCpxAdd(as_record(&keep), nullptr, as_record(&z)), 0);
    EXPECT_EQ(cCpxPowerN(as_record(&keep), nullptr, 2), 0);
    EXPECT_EQ(cCpxSqrt(as_record(&keep), nullptr), 0);
    EXPECT_EQ(cCpxConjugue(nullptr, as_record(&z)), 0);
    EXPECT_EQ(keep.re, 7);
    EXPECT_EQ(keep.im, 8);
    EXPECT_EQ(cCpxModulus(nullptr), 0.0);
    EXPECT_EQ(cCpxArgument(nullptr), 0.0);
}
