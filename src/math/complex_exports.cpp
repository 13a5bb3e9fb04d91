// Complex numbers in the caller's two-Double record. An operation that gives
// a complex number writes it into the record passed first (Result) and
// returns that record's address, which is where and how the Windows x86 and
// x64 conventions return a 16-byte structure: a C caller may declare these
// exports as returning the record itself. Result may be one of the operands.
// Null records (which VB never passes) give 0 and nothing is written.
#include "frame/frame.h"
#include "math/complex_numbers.h"
#include "math/linear_records.h"

#include <cstdint>

using namespace brindle::math;

namespace {

ComplexValue value_of(const Complex *z) { return {z->Real, z->Imaginary}; }

intptr_t store(Complex *result, ComplexValue v) {
    result->Real = v.re;
    result->Imaginary = v.im;
    return reinterpret_cast<intptr_t>(result);
}

// result := op(a, b), unless a record is missing.
template <class Op> intptr_t binary(Complex *result, const Complex *a, const Complex *b, Op op) {
    if (result == nullptr || a == nullptr || b == nullptr)
        return 0;
    return store(result, op(value_of(a), value_of(b)));
}

} // namespace

BRINDLE_EXPORT(intptr_t) cCpxAdd(Complex *Result, Complex *A, Complex *B) { return binary(Result, A, B, complex_add); }

BRINDLE_EXPORT(intptr_t) cCpxSub(Complex *Result, Complex *A, Complex *B) { return binary(Result, A, B, complex_sub); }

BRINDLE_EXPORT(intptr_t) cCpxMul(Complex *Result, Complex *A, Complex *B) { return binary(Result, A, B, complex_mul); }

BRINDLE_EXPORT(intptr_t) cCpxDiv(Complex *Result, Complex *A, Complex *B) { return binary(Result, A, B, complex_div); }

BRINDLE_EXPORT(intptr_t) cCpxConjugue(Complex *Result, Complex *Z) {
    if (Result == nullptr || Z == nullptr)
        return 0;
    return store(Result, complex_conjugate(value_of(Z)));
}

BRINDLE_EXPORT(double) cCpxModulus(Complex *Z) { return Z == nullptr ? 0.0 : complex_modulus(value_of(Z)); }

BRINDLE_EXPORT(double) cCpxArgument(Complex *Z) { return Z == nullptr ? 0.0 : complex_argument(value_of(Z)); }

BRINDLE_EXPORT(intptr_t) cCpxPowerN(Complex *Result, Complex *Z, int16_t N) {
    if (Result == nullptr || Z == nullptr)
        return 0;
    return store(Result, complex_power(value_of(Z), N));
}

BRINDLE_EXPORT(intptr_t) cCpxSqrt(Complex *Result, Complex *Z) {
    if (Result == nullptr || Z == nullptr)
        return 0;
    return store(Result, complex_sqrt(value_of(Z)));
}
