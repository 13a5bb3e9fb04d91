// Plane and space vectors through the exported interface: hand-computed
// results (in the comments), mpmath for the irrational ones, in-place and
// aliased records, and the inverse-distance estimate of c3DWeightAverage.
#include "support/ole_helpers.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace {

struct V2 {
    double x, y;
};
struct V3 {
    double x, y, z;
};
PlaneVector *rec(V2 *v) { return reinterpret_cast<PlaneVector *>(v); }
SpaceVector *rec(V3 *v) { return reinterpret_cast<SpaceVector *>(v); }
intptr_t addr(const void *p) { return reinterpret_cast<intptr_t>(p); }

void expect_v3(const V3 &got, const V3 &want, double tol, const char *what) {
    EXPECT_NEAR(got.x, want.x, tol) << what;
    EXPECT_NEAR(got.y, want.y, tol) << what;
    EXPECT_NEAR(got.z, want.z, tol) << what;
}

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

} // namespace

TEST(PlaneVectors, ArithmeticAndTheQuarterTurn) {
    // a = (1.5, -2), b = (4, 0.5). The space forms share these rules (their
    // own test checks Z).
    V2 a{1.5, -2}, b{4, 0.5}, r{};
    struct Row {
        intptr_t(BRINDLE_CALL *op)(PlaneVector *, PlaneVector *, PlaneVector *);
        V2 want;
        const char *name;
    } const rows[] = {{cV2Add, {5.5, -1.5}, "add"}, {cV2Sub, {-2.5, -2.5}, "sub"}, {cV2Mul, {6, -1}, "mul"}};
    for (const Row &row : rows) {
        EXPECT_EQ(row.op(rec(&a), rec(&b), rec(&r)), addr(&r)) << row.name;
        EXPECT_TRUE(r.x == row.want.x && r.y == row.want.y) << row.name;
    }
    cV2Combine(rec(&a), 2, rec(&b), -0.5, rec(&r)); // (3 - 2, -4 - 0.25)
    EXPECT_TRUE(r.x == 1 && r.y == -4.25);
    cV2LinearIp(rec(&a), rec(&b), 0.25, rec(&r)); // (2.5 x 0.25 + 1.5, 2.5 x 0.25 - 2)
    EXPECT_TRUE(r.x == 2.125 && r.y == -1.375);
    EXPECT_EQ(cV2Dot(rec(&a), rec(&b)), 5.0); // 6 - 1
    V2 e{1, 0};
    cV2Ortho(rec(&e), rec(&r));
    EXPECT_TRUE(r.x == 0 && r.y == 1);
    cV2Ortho(rec(&a), rec(&a)); // in place: (2, 1.5)
    EXPECT_TRUE(a.x == 2 && a.y == 1.5);
    EXPECT_EQ(cV2Copy(rec(&b), rec(&r)), addr(&r));
    EXPECT_EQ(cV2Neg(rec(&r)), addr(&r));
    EXPECT_TRUE(r.x == -4 && r.y == -0.5);
}

TEST(PlaneVectors, LengthsNormalisationAndScaling) {
    V2 v{3, 4}, p{1, 1}, q{4, -3};
    EXPECT_EQ(cV2Length(rec(&v)), 5);
    EXPECT_EQ(cV2LengthSquared(rec(&v)), 25);
    EXPECT_EQ(cV2SegmentLength(rec(&p), rec(&q)), 5); // (3, -4) apart
    cV2Normalized(rec(&v));
    EXPECT_NEAR(v.x, 0.6, 1e-16);
    EXPECT_NEAR(v.y, 0.8, 1e-16);
    V2 zero{0, 0};
    cV2Normalized(rec(&zero));
    cV2ScaledNewLength(rec(&zero), 7);
    EXPECT_EQ(zero.x, 0);
    EXPECT_EQ(zero.y, 0);
    V2 w{-6, 8};
    cV2ScaledNewLength(rec(&w), 2.5);
    EXPECT_NEAR(w.x, -1.5, 1e-15);
    EXPECT_NEAR(w.y, 2, 1e-15);
    cV2ScaledNewLength(rec(&w), -5); // a negative length turns it round
    EXPECT_NEAR(w.x, 3, 1e-15);
    EXPECT_NEAR(w.y, -4, 1e-15);
    // Beyond the range of the squares: 3-4-5 at 1e200 and at 1e-200.
    V2 big{3e200, 4e200}, tiny{3e-200, -4e-200};
    EXPECT_DOUBLE_EQ(cV2Length(rec(&big)), 5e200);
    EXPECT_DOUBLE_EQ(cV2Length(rec(&tiny)), 5e-200);
    cV2Normalized(rec(&tiny));
    EXPECT_NEAR(tiny.x, 0.6, 1e-15);
    EXPECT_NEAR(tiny.y, -0.8, 1e-15);
}

TEST(SpaceVectors, ArithmeticCrossProductAndLengths) {
    V3 a{1, 2, 3}, b{-2, 0.5, 4}, r{};
    EXPECT_EQ(cV3Add(rec(&a), rec(&b), rec(&r)), addr(&r));
    expect_v3(r, {-1, 2.5, 7}, 0, "add");
    cV3Sub(rec(&a), rec(&b), rec(&r));
    expect_v3(r, {3, 1.5, -1}, 0, "sub");
    cV3Mul(rec(&a), rec(&b), rec(&r));
    expect_v3(r, {-2, 1, 12}, 0, "mul");
    cV3Combine(rec(&a), -1, rec(&b), 2, rec(&r)); // (-1 - 4, -2 + 1, -3 + 8)
    expect_v3(r, {-5, -1, 5}, 0, "combine");
    V3 o{0, 0, 0}, t{2, 4, 6};
    cV3LinearIp(rec(&o), rec(&t), 0.5, rec(&r));
    expect_v3(r, {1, 2, 3}, 0, "midpoint");
    cV3LinearIp(rec(&o), rec(&t), -1, rec(&r)); // beyond the start
    expect_v3(r, {-2, -4, -6}, 0, "t = -1");
    EXPECT_EQ(cV3Dot(rec(&a), rec(&b)), 11.0); // -2 + 1 + 12
    V3 x{1, 0, 0}, y{0, 1, 0};
    cV3Cross(rec(&x), rec(&y), rec(&r));
    expect_v3(r, {0, 0, 1}, 0, "x cross y");
    cV3Cross(rec(&y), rec(&x), rec(&r));
    expect_v3(r, {0, 0, -1}, 0, "y cross x");
    // a x b = (2 x 4 - 3 x 0.5, 3 x -2 - 1 x 4, 1 x 0.5 - 2 x -2) = (6.5, -10, 4.5),
    // written over a itself.
    cV3Cross(rec(&a), rec(&b), rec(&a));
    expect_v3(a, {6.5, -10, 4.5}, 0, "a x b into a");
    V3 u{2, 3, 6};
    EXPECT_EQ(cV3Length(rec(&u)), 7);
    EXPECT_EQ(cV3LengthSquared(rec(&u)), 49);
    // mpmath: sqrt(1.5^2 + 2.25^2 + 0.3^2) on the binary values.
    V3 p{0, 0, 0}, q{1.5, -2.25, 0.3};
    EXPECT_NEAR(cV3SegmentLength(rec(&p), rec(&q)), 2.7207535720825581336, 1e-15);
    cV3Normalized(rec(&u));
    expect_v3(u, {2.0 / 7, 3.0 / 7, 6.0 / 7}, 1e-16, "normalized");
    cV3ScaledNewLength(rec(&u), 14);
    expect_v3(u, {4, 6, 12}, 1e-14, "length 14");
    cV3Neg(rec(&u));
    expect_v3(u, {-4, -6, -12}, 1e-14, "negated");
    cV3Copy(rec(&u), rec(&p));
    expect_v3(p, u, 0, "copy");
    V3 big{2e200, 3e200, 6e200};
    EXPECT_DOUBLE_EQ(cV3Length(rec(&big)), 7e200);
    V3 zero{0, 0, 0};
    cV3Normalized(rec(&zero));
    expect_v3(zero, {0, 0, 0}, 0, "zero stays");
}

TEST(VectorRecords, NullRecordsAreRefusedAndNothingIsWritten) {
    V2 a{1, 2};
    V3 b{1, 2, 3};
    EXPECT_EQ(cV2Add(rec(&a), nullptr, rec(&a)), 0);
    EXPECT_EQ(cV3Add(rec(&b), rec(&b), nullptr), 0);
    EXPECT_EQ(cV2Combine(nullptr, 1, rec(&a), 1, rec(&a)), 0);
    EXPECT_EQ(cV3LinearIp(rec(&b), nullptr, 1, rec(&b)), 0);
    EXPECT_EQ(cV2Neg(nullptr), 0);
    EXPECT_EQ(cV3Normalized(nullptr), 0);
    EXPECT_EQ(cV2Copy(nullptr, rec(&a)), 0);
    EXPECT_EQ(cV3Dot(nullptr, rec(&b)), 0.0);
    EXPECT_EQ(cV2Length(nullptr), 0.0);
    EXPECT_EQ(cV3SegmentLength(rec(&b), nullptr), 0.0);
    EXPECT_EQ(c3DWeightAverage(rec(&b), rec(&b), rec(&b), nullptr, rec(&b)), 0.0);
    EXPECT_EQ(a.x, 1);
    EXPECT_EQ(a.y, 2);
    expect_v3(b, {1, 2, 3}, 0, "untouched");
}

TEST(WeightAverage, InverseDistanceWeightingOfThreeValues) {
    // Heights 10 at (0, 0), 20 at (4, 0), 30 at (0, 3). mpmath, with
    // d = plane distances to the point: sum(z / d) / sum(1 / d).
    V3 p1{0, 0, 10}, p2{4, 0, 20}, p3{0, 3, 30}, r{};
    struct Row {
        V2 at;
        double want;
    } const rows[] = {
        {{0, 1}, 17.130618204780894034},  // d = 1, sqrt 17, 2
        {{1, 1}, 18.232678154903369562},  // d = sqrt 2, sqrt 10, sqrt 5
        {{0, 0}, 10},                     // on P1: its own value
        {{4, 0}, 20},
        {{0, 3}, 30},
    };
    for (const Row &row : rows) {
        V2 at = row.at;
        EXPECT_NEAR(c3DWeightAverage(rec(&p1), rec(&p2), rec(&p3), rec(&at), rec(&r)), row.want, 1e-13)
            << row.at.x << ", " << row.at.y;
        expect_v3(r, {row.at.x, row.at.y, row.want}, 1e-13, "result record");
    }
    // Only the plane position counts: another Z of the query changes nothing,
    // and points coinciding with the query give the first one's value.
    V3 q1{5, 5, -1}, q2{5, 5, -2};
    V2 at{5, 5};
    EXPECT_EQ(c3DWeightAverage(rec(&p1), rec(&q1), rec(&q2), rec(&at), rec(&r)), -1);
    // Equal values give that value wherever the estimate is taken; far away
    // the three weights tend to equal and the estimate to the plain mean.
    V3 e1{0, 0, 7}, e2{1, 0, 7}, e3{0, 1, 7};
    V2 anywhere{-3.25, 11};
    EXPECT_NEAR(c3DWeightAverage(rec(&e1), rec(&e2), rec(&e3), rec(&anywhere), rec(&r)), 7, 1e-14);
    V2 distant{1e12, 1e12};
    EXPECT_NEAR(c3DWeightAverage(rec(&p1), rec(&p2), rec(&p3), rec(&distant), rec(&r)), 20, 1e-9);
    // A query a hair from P1 (the smallest Double): P1's weight is huge but
    // finite relative to the others, so the estimate is P1's value.
    V2 hair{4.9406564584124654e-324, 0};
    EXPECT_EQ(c3DWeightAverage(rec(&p1), rec(&p2), rec(&p3), rec(&hair), rec(&r)), 10);
    V3 bad{kNaN, 0, 1};
    EXPECT_TRUE(std::isnan(c3DWeightAverage(rec(&bad), rec(&p2), rec(&p3), rec(&at), rec(&r))));
}
