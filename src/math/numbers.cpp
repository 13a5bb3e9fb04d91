// Number functions: rounding, digits and divisors, primes, combinations,
// number bases, rotations, floating-point parts, the random sequence, check
// digits, comparisons, increments, swaps and Bessel functions.
#include "frame/frame.h"
#include "math/base_conversion.h"
#include "math/bessel.h"
#include "math/check_digits.h"
#include "math/combinations.h"
#include "math/comparisons.h"
#include "math/counters.h"
#include "math/digits.h"
#include "math/divisors.h"
#include "math/float_parts.h"
#include "math/fractions.h"
#include "math/primes.h"
#include "math/random_sequence.h"
#include "math/roots.h"
#include "math/rotations.h"
#include "math/rounding.h"

#include <utility>

using namespace brindle::frame;
using namespace brindle::math;

namespace {

// A by-reference number the caller passes; VB never passes a null one, but
// a C client might, and then nothing is read or written.
template <class T> void swap_values(T *a, T *b) {
    if (a != nullptr && b != nullptr)
        std::swap(*a, *b);
}

} // namespace

BRINDLE_EXPORT(double) cRound(double Value, int16_t Digits) { return round_to_digits(Value, Digits); }

BRINDLE_EXPORT(double) cRoundNearest(double Value, int32_t StepSize) { return round_to_step(Value, StepSize); }

BRINDLE_EXPORT(int32_t) cDecimalPosition(double Value) { return decimal_position(Value); }

BRINDLE_EXPORT(double) cGetMantissa(double Value) { return float_parts(Value).mantissa; }

BRINDLE_EXPORT(int16_t) cGetExponent(double Value) { return static_cast<int16_t>(float_parts(Value).exponent); }

BRINDLE_EXPORT(double) cComputeNumber(double Mantissa, int16_t Exponent) { return from_float_parts(Mantissa, Exponent); }

BRINDLE_EXPORT(int32_t) cSumDigits(int32_t Number) { return sum_digits(Number); }

BRINDLE_EXPORT(int32_t) cSumDigitsAlt(int32_t Number) { return sum_digits_alternating(Number); }

BRINDLE_EXPORT(int32_t) cSortDigits(int32_t Number) {
    return guarded(int32_t{0}, [&] { return sort_digits(Number); });
}

BRINDLE_EXPORT(int32_t) cSumDivisors(int32_t Number) { return sum_proper_divisors(Number); }

BRINDLE_EXPORT(int32_t) cGreatCommonDivisor(int32_t A, int32_t B) { return greatest_common_divisor(A, B); }

BRINDLE_EXPORT(int32_t) cRotate(int32_t Number, int16_t Count) {
    return guarded(int32_t{0}, [&] { return rotate_digits(Number, Count); });
}

BRINDLE_EXPORT(int16_t) cRotateLeftI(int16_t Value, int16_t Count) { return rotate_left_16_widened(Value, Count); }

BRINDLE_EXPORT(int16_t) cRotateRightI(int16_t Value, int16_t Count) { return rotate_right_16_widened(Value, Count); }

BRINDLE_EXPORT(int32_t) cRotateLeftL(int32_t Value, int16_t Count) { return rotate_left_32(Value, Count); }

BRINDLE_EXPORT(int32_t) cRotateRightL(int32_t Value, int16_t Count) { return rotate_right_32(Value, Count); }

BRINDLE_EXPORT(int32_t) cIsPrime(int32_t Number) { return is_prime(Number) ? -1 : 0; }

BRINDLE_EXPORT(double) cCombination(int16_t N, int16_t K) { return combination(N, K); }

// The text is read up to its first zero byte, as strtol reads it.
BRINDLE_EXPORT(BSTR) cBaseConversion(BSTR *Digits, int16_t FromBase, int16_t ToBase) {
    return guarded_string([&] {
        const std::string out = convert_base(StrArg::by_ref(Digits).text(), FromBase, ToBase);
        return out.empty() ? empty_string() : new_string(out);
    });
}

BRINDLE_EXPORT(int16_t) cSgn(int16_t Value) { return sign_of(Value); }

BRINDLE_EXPORT(int32_t) cBetween(VARIANT *Value, VARIANT *Low, VARIANT *High) {
    return between(variant_to_long(Value), variant_to_long(Low), variant_to_long(High)) ? -1 : 0;
}

BRINDLE_EXPORT(VARIANT) cMax(VARIANT *A, VARIANT *B) {
    return long_variant(larger(variant_to_long(A), variant_to_long(B)));
}

BRINDLE_EXPORT(VARIANT) cMin(VARIANT *A, VARIANT *B) {
    return long_variant(smaller(variant_to_long(A), variant_to_long(B)));
}

BRINDLE_EXPORT(int16_t) cIncrI(int16_t *Value) { return Value == nullptr ? int16_t{0} : (*Value = incremented(*Value)); }

BRINDLE_EXPORT(int32_t) cIncrL(int32_t *Value) { return Value == nullptr ? 0 : (*Value = incremented(*Value)); }

BRINDLE_EXPORT(int16_t) cDecrI(int16_t *Value) { return Value == nullptr ? int16_t{0} : (*Value = decremented(*Value)); }

BRINDLE_EXPORT(int32_t) cDecrL(int32_t *Value) { return Value == nullptr ? 0 : (*Value = decremented(*Value)); }

BRINDLE_EXPORT(void) cSwapB(uint8_t *A, uint8_t *B) { swap_values(A, B); }

BRINDLE_EXPORT(void) cSwapI(int16_t *A, int16_t *B) { swap_values(A, B); }

BRINDLE_EXPORT(void) cSwapL(int32_t *A, int32_t *B) { swap_values(A, B); }

BRINDLE_EXPORT(void) cSwapS(float *A, float *B) { swap_values(A, B); }

BRINDLE_EXPORT(void) cSwapD(double *A, double *B) { swap_values(A, B); }

BRINDLE_EXPORT(void) cSwapStr(BSTR *A, BSTR *B) { swap_string_refs(A, B); }

BRINDLE_EXPORT(double) cBesselJ0(double X) { return bessel_j0(X); }

BRINDLE_EXPORT(double) cBesselJ1(double X) { return bessel_j1(X); }

BRINDLE_EXPORT(double) cBesselY0(double X) { return bessel_y0(X); }

BRINDLE_EXPORT(double) cBesselY1(double X) { return bessel_y1(X); }

BRINDLE_EXPORT(double) cBesselJN(int16_t N, double X) { return bessel_jn(N, X); }

BRINDLE_EXPORT(double) cBesselYN(int16_t N, double X) { return bessel_yn(N, X); }

BRINDLE_EXPORT(void) cRndInit(int32_t Seed) { random_seed(Seed); }

BRINDLE_EXPORT(double) cRnd() { return random_next(0); }

BRINDLE_EXPORT(int32_t) cRndI() { return static_cast<int32_t>(random_next(0) * 2147483647.0); }

BRINDLE_EXPORT(float) cRndS() { return static_cast<float>(random_next(0) * 3.4028234663852886E+38); }

BRINDLE_EXPORT(double) cRndD() { return random_next(0) * 1.7976931348623157E+308; }

BRINDLE_EXPORT(int16_t) cMod10(BSTR *Txt) {
    return static_cast<int16_t>(weighted_hex_check(StrArg::by_ref(Txt).bytes(), 10, Direction::from_first));
}

BRINDLE_EXPORT(int16_t) cMod10R(BSTR *Txt) {
    return static_cast<int16_t>(weighted_hex_check(StrArg::by_ref(Txt).bytes(), 10, Direction::from_last));
}

BRINDLE_EXPORT(int16_t) cMod11(BSTR *Txt) {
    return static_cast<int16_t>(weighted_hex_check(StrArg::by_ref(Txt).bytes(), 11, Direction::from_first));
}

BRINDLE_EXPORT(int16_t) cMod11R(BSTR *Txt) {
    return static_cast<int16_t>(weighted_hex_check(StrArg::by_ref(Txt).bytes(), 11, Direction::from_last));
}

BRINDLE_EXPORT(int16_t) cMod137(BSTR *Txt) {
    return static_cast<int16_t>(check_137(StrArg::by_ref(Txt).bytes(), Direction::from_first));
}

BRINDLE_EXPORT(int16_t) cMod137R(BSTR *Txt) {
    return static_cast<int16_t>(check_137(StrArg::by_ref(Txt).bytes(), Direction::from_last));
}

BRINDLE_EXPORT(double) cRootN(double X, int16_t N) { return nth_root(X, N); }

BRINDLE_EXPORT(double) cFraction(double Value, double *Numerator, double *Denominator) {
    const Fraction f = fraction_of(Value);
    if (Numerator != nullptr)
        *Numerator = f.numerator;
    if (Denominator != nullptr)
        *Denominator = f.denominator;
    return f.numerator / f.denominator;
}
