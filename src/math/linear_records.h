// The records of the complex-number and vector families
// (common/record_layout.h). They hold only Doubles, so the 32-bit layout
// (members aligned to at most 4) and the 64-bit one (to 8) place them alike;
// both are declared and checked all the same.
#pragma once

#include "common/record_layout.h"

#include <cstddef>

namespace brindle::math::layout32 {

#pragma pack(push, 4)
struct Complex {
    double Real;
    double Imaginary;
};
struct PlaneVector {
    double X;
    double Y;
};
struct SpaceVector {
    double X;
    double Y;
    double Z;
};
#pragma pack(pop)

static_assert(offsetof(Complex, Real) == 0 && offsetof(Complex, Imaginary) == 8 && sizeof(Complex) == 16);
static_assert(offsetof(PlaneVector, X) == 0 && offsetof(PlaneVector, Y) == 8 && sizeof(PlaneVector) == 16);
static_assert(offsetof(SpaceVector, X) == 0 && offsetof(SpaceVector, Y) == 8 && offsetof(SpaceVector, Z) == 16 &&
              sizeof(SpaceVector) == 24);

} // namespace brindle::math::layout32

namespace brindle::math::layout64 {

struct Complex {
    alignas(8) double Real;
    alignas(8) double Imaginary;
};
struct PlaneVector {
    alignas(8) double X;
    alignas(8) double Y;
};
struct SpaceVector {
    alignas(8) double X;
    alignas(8) double Y;
    alignas(8) double Z;
};

static_assert(offsetof(Complex, Real) == 0 && offsetof(Complex, Imaginary) == 8 && sizeof(Complex) == 16);
static_assert(offsetof(PlaneVector, X) == 0 && offsetof(PlaneVector, Y) == 8 && sizeof(PlaneVector) == 16);
static_assert(offsetof(SpaceVector, X) == 0 && offsetof(SpaceVector, Y) == 8 && offsetof(SpaceVector, Z) == 16 &&
              sizeof(SpaceVector) == 24);

} // namespace brindle::math::layout64

// The records as this build reads and writes them, under the names the
// export prototypes declare.
struct Complex : brindle::common::BuildRecord<brindle::math::layout32::Complex, brindle::math::layout64::Complex> {};
struct PlaneVector
    : brindle::common::BuildRecord<brindle::math::layout32::PlaneVector, brindle::math::layout64::PlaneVector> {};
struct SpaceVector
    : brindle::common::BuildRecord<brindle::math::layout32::SpaceVector, brindle::math::layout64::SpaceVector> {};
static_assert(sizeof(Complex) == 16 && sizeof(PlaneVector) == 16 && sizeof(SpaceVector) == 24);
