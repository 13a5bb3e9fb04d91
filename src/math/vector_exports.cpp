// Plane and space vectors in the caller's records of two and three Doubles.
// An operation that gives a vector writes it into its last record argument
// (which may also be an operand) and returns that record's address;
// cV2Neg, cV3Neg and the Normalized and ScaledNewLength operations change
// their one record in place. Null records (which VB never passes) give 0 and
// nothing is written.
#include "frame/frame.h"
#include "math/linear_records.h"
#include "math/vector_ops.h"
#include "math/weighted_average.h"

#include <cstdint>

using namespace brindle::math;

namespace {

Vec<2> get(const PlaneVector *v) { return {v->X, v->Y}; }
Vec<3> get(const SpaceVector *v) { return {v->X, v->Y, v->Z}; }

intptr_t put(PlaneVector *to, const Vec<2> &v) {
    to->X = v[0];
    to->Y = v[1];
    return reinterpret_cast<intptr_t>(to);
}
intptr_t put(SpaceVector *to, const Vec<3> &v) {
    to->X = v[0];
    to->Y = v[1];
    to->Z = v[2];
    return reinterpret_cast<intptr_t>(to);
}

template <class... R> bool present(const R *...records) { return ((records != nullptr) && ...); }

// result := op(a, b) for both families.
template <class V, class Op> intptr_t binary(const V *a, const V *b, V *result, Op op) {
    return present(a, b, result) ? put(result, op(get(a), get(b))) : 0;
}

// v := op(v) in place.
template <class V, class Op> intptr_t in_place(V *v, Op op) { return present(v) ? put(v, op(get(v))) : 0; }

} // namespace

// Plane vectors.

BRINDLE_EXPORT(intptr_t) cV2Add(PlaneVector *A, PlaneVector *B, PlaneVector *Result) {
    return binary(A, B, Result, vec_add<2>);
}
BRINDLE_EXPORT(intptr_t) cV2Sub(PlaneVector *A, PlaneVector *B, PlaneVector *Result) {
    return binary(A, B, Result, vec_sub<2>);
}
BRINDLE_EXPORT(intptr_t) cV2Mul(PlaneVector *A, PlaneVector *B, PlaneVector *Result) {
    return binary(A, B, Result, vec_mul<2>);
}
BRINDLE_EXPORT(intptr_t) cV2Combine(PlaneVector *A, double S, PlaneVector *B, double T, PlaneVector *Result) {
    return present(A, B, Result) ? put(Result, vec_combine(get(A), S, get(B), T)) : 0;
}
BRINDLE_EXPORT(intptr_t) cV2LinearIp(PlaneVector *A, PlaneVector *B, double T, PlaneVector *Result) {
    return present(A, B, Result) ? put(Result, vec_lerp(get(A), get(B), T)) : 0;
}
BRINDLE_EXPORT(intptr_t) cV2Copy(PlaneVector *Source, PlaneVector *Target) {
    return present(Source, Target) ? put(Target, get(Source)) : 0;
}
BRINDLE_EXPORT(intptr_t) cV2Neg(PlaneVector *V) { return in_place(V, vec_neg<2>); }
BRINDLE_EXPORT(double) cV2Dot(PlaneVector *A, PlaneVector *B) { return present(A, B) ? vec_dot(get(A), get(B)) : 0.0; }
BRINDLE_EXPORT(intptr_t) cV2Ortho(PlaneVector *V, PlaneVector *Result) {
    return present(V, Result) ? put(Result, vec_ortho(get(V))) : 0;
}
BRINDLE_EXPORT(double) cV2Length(PlaneVector *V) { return present(V) ? vec_length(get(V)) : 0.0; }
BRINDLE_EXPORT(double) cV2LengthSquared(PlaneVector *V) { return present(V) ? vec_dot(get(V), get(V)) : 0.0; }
BRINDLE_EXPORT(double) cV2SegmentLength(PlaneVector *A, PlaneVector *B) {
    return present(A, B) ? vec_length(vec_sub(get(B), get(A))) : 0.0;
}
BRINDLE_EXPORT(intptr_t) cV2Normalized(PlaneVector *V) { return in_place(V, vec_normalized<2>); }
BRINDLE_EXPORT(intptr_t) cV2ScaledNewLength(PlaneVector *V, double NewLength) {
    return present(V) ? put(V, vec_with_length(get(V), NewLength)) : 0;
}

// Space vectors.

BRINDLE_EXPORT(intptr_t) cV3Add(SpaceVector *A, SpaceVector *B, SpaceVector *Result) {
    return binary(A, B, Result, vec_add<3>);
}
BRINDLE_EXPORT(intptr_t) cV3Sub(SpaceVector *A, SpaceVector *B, SpaceVector *Result) {
    return binary(A, B, Result, vec_sub<3>);
}
BRINDLE_EXPORT(intptr_t) cV3Mul(SpaceVector *A, SpaceVector *B, SpaceVector *Result) {
    return binary(A, B, Result, vec_mul<3>);
}
BRINDLE_EXPORT(intptr_t) cV3Combine(SpaceVector *A, double S, SpaceVector *B, double T, SpaceVector *Result) {
    return present(A, B, Result) ? put(Result, vec_combine(get(A), S, get(B), T)) : 0;
}
BRINDLE_EXPORT(intptr_t) cV3LinearIp(SpaceVector *A, SpaceVector *B, double T, SpaceVector *Result) {
    return present(A, B, Result) ? put(Result, vec_lerp(get(A), get(B), T)) : 0;
}
BRINDLE_EXPORT(intptr_t) cV3Copy(SpaceVector *Source, SpaceVector *Target) {
    return present(Source, Target) ? put(Target, get(Source)) : 0;
}
BRINDLE_EXPORT(intptr_t) cV3Neg(SpaceVector *V) { return in_place(V, vec_neg<3>); }
BRINDLE_EXPORT(double) cV3Dot(SpaceVector *A, SpaceVector *B) { return present(A, B) ? vec_dot(get(A), get(B)) : 0.0; }
BRINDLE_EXPORT(intptr_t) cV3Cross(SpaceVector *A, SpaceVector *B, SpaceVector *Result) {
    return binary(A, B, Result, vec_cross);
}
BRINDLE_EXPORT(double) cV3Length(SpaceVector *V) { return present(V) ? vec_length(get(V)) : 0.0; }
BRINDLE_EXPORT(double) cV3LengthSquared(SpaceVector *V) { return present(V) ? vec_dot(get(V), get(V)) : 0.0; }
BRINDLE_EXPORT(double) cV3SegmentLength(SpaceVector *A, SpaceVector *B) {
    return present(A, B) ? vec_length(vec_sub(get(B), get(A))) : 0.0;
}
BRINDLE_EXPORT(intptr_t) cV3Normalized(SpaceVector *V) { return in_place(V, vec_normalized<3>); }
BRINDLE_EXPORT(intptr_t) cV3ScaledNewLength(SpaceVector *V, double NewLength) {
    return present(V) ? put(V, vec_with_length(get(V), NewLength)) : 0;
}

BRINDLE_EXPORT(double) c3DWeightAverage(SpaceVector *P1, SpaceVector *P2, SpaceVector *P3, PlaneVector *At,
                                        SpaceVector *Result) {
    if (!present(P1, P2, P3, At, Result))
        return 0.0;
    const Vec<3> points[3] = {get(P1), get(P2), get(P3)};
    const Vec<2> at = get(At);
    const double value = inverse_distance_value(points, at);
    put(Result, Vec<3>{at[0], at[1], value});
    return value;
}
