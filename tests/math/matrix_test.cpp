// Square matrices through the exported interface. Matrices are built as a
// VB program builds them, Double arrays dimensioned (1 To n, 1 To n) and
// read as A(row, col); the oracles are hand computations (in the comments),
// exact integer determinants by the permutation expansion, and identities
// that hold whatever the algorithm (A x inv(A) = I, cofactor expansion,
// det(AB) = det(A) det(B)).
#include "support/ole_helpers.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>
#include <random>
#include <vector>

using namespace brindle::test;

namespace {

// A Double array (1 To n, 1 To n), read and written with the client's
// subscripts: A(i, j) is at (i - 1) + (j - 1) x n in memory.
struct Matrix : SafeArray {
    explicit Matrix(size_t order, double fill = 0.0)
        : SafeArray(VT_R8, {{static_cast<ULONG>(order), 1}, {static_cast<ULONG>(order), 1}}), n(order) {
        std::fill(data<double>(), data<double>() + n * n, fill);
    }
    Matrix(size_t order, std::initializer_list<std::initializer_list<double>> rows) : Matrix(order) {
        size_t i = 1;
        for (const auto &row : rows) {
            size_t j = 1;
            for (double v : row)
                (*this)(i, j++) = v;
            ++i;
        }
    }
    double &operator()(size_t i, size_t j) const { return data<double>()[(i - 1) + (j - 1) * n]; }
    std::vector<double> values() const { return {data<double>(), data<double>() + n * n}; }
    size_t n;
};

// Random entries in [-1, 1] and n added to the diagonal: strictly
// diagonally dominant, so well conditioned.
void fill_dominant(Matrix &m, uint64_t seed) {
    std::mt19937_64 rng(seed);
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    for (size_t i = 1; i <= m.n; ++i)
        for (size_t j = 1; j <= m.n; ++j)
            m(i, j) = u(rng) + (i == j ? static_cast<double>(m.n) : 0.0);
}

// sum over k of A(i, k) B(k, j), computed here.
double product_element(const Matrix &a, const Matrix &b, size_t i, size_t j) {
    double s = 0.0;
    for (size_t k = 1; k <= a.n; ++k)
        s += a(i, k) * b(k, j);
    return s;
}

// The determinant of a small integer matrix by the permutation expansion:
// the sum over all permutations p of sign(p) x product of A(i, p(i)),
// exact in 64-bit integers for entries up to 9 and n up to 7.
int64_t leibniz(const std::vector<std::vector<int64_t>> &a) {
    const size_t n = a.size();
    std::vector<size_t> p(n);
    std::iota(p.begin(), p.end(), size_t{0});
    int64_t total = 0;
    do {
        int inversions = 0;
        for (size_t i = 0; i < n; ++i)
            for (size_t j = i + 1; j < n; ++j)
                inversions += p[i] > p[j];
        int64_t term = inversions % 2 ? -1 : 1;
        for (size_t i = 0; i < n; ++i)
            term *= a[i][p[i]];
        total += term;
    } while (std::next_permutation(p.begin(), p.end()));
    return total;
}

} // namespace

TEST(MatrixDeterminant, HandCasesAndOrdersBelowTwo) {
    // | 1 2 ; 3 4 | = 4 - 6.
    Matrix a(2, {{1, 2}, {3, 4}});
    EXPECT_NEAR(cMatrixDet(2, a.ref()), -2.0, 1e-15);
    // Two equal rows: the second pivot is exactly 0.
    Matrix eq(3, {{1, 2, 3}, {4, 5, 6}, {1, 2, 3}});
    EXPECT_EQ(cMatrixDet(3, eq.ref()), 0.0);
    // A zero column stops the decomposition at its first pivot.
    Matrix zc(3, {{0, 2, 3}, {0, 5, 6}, {0, 8, 9}});
    EXPECT_EQ(cMatrixDet(3, zc.ref()), 0.0);
    // Permutation matrices give the sign of their permutation: a 4-cycle is
    // odd (three exchanges), a 5-cycle even.
    for (size_t n : {4, 5}) {
        Matrix p(n);
        for (size_t i = 1; i <= n; ++i)
            p(i, i % n + 1) = 1.0;
        EXPECT_EQ(cMatrixDet(static_cast<int16_t>(n), p.ref()), n == 4 ? -1.0 : 1.0) << n;
    }
    // | 2 -3 1 ; 2 0 -1 ; 1 4 5 | = 2(0 + 4) + 3(10 + 1) + 1(8 - 0) = 49.
    Matrix b(3, {{2, -3, 1}, {2, 0, -1}, {1, 4, 5}});
    EXPECT_NEAR(cMatrixDet(3, b.ref()), 49.0, 1e-13);
    for (int16_t n : {1, 0, -1, -32768})
        EXPECT_EQ(cMatrixDet(n, a.ref()), -1.0) << n;
}

TEST(MatrixDeterminant, RandomIntegerMatricesAgainstThePermutationExpansion) {
    std::mt19937_64 rng(11);
    std::uniform_int_distribution<int> digit(-9, 9);
    for (size_t n = 2; n <= 7; ++n) {
        for (int trial = 0; trial < 6; ++trial) {
            std::vector<std::vector<int64_t>> m(n, std::vector<int64_t>(n));
            Matrix a(n);
            for (size_t i = 0; i < n; ++i)
                for (size_t j = 0; j < n; ++j)
                    a(i + 1, j + 1) = static_cast<double>(m[i][j] = digit(rng));
            const double want = static_cast<double>(leibniz(m));
            EXPECT_NEAR(cMatrixDet(static_cast<int16_t>(n), a.ref()), want, 1e-9 * std::max(1.0, std::fabs(want)))
                << "order " << n << " trial " << trial;
        }
    }
}

TEST(MatrixDeterminant, ProductRuleOnLargerMatrices) {
    // det(AB) = det(A) det(B), and det(A) det(inv A) = 1.
    for (size_t n : {9, 40}) {
        Matrix a(n), b(n), ab(n), inv(n);
        fill_dominant(a, n);
        fill_dominant(b, n + 100);
        for (size_t i = 1; i <= n; ++i)
            for (size_t j = 1; j <= n; ++j)
                ab(i, j) = product_element(a, b, i, j);
        const auto N = static_cast<int16_t>(n);
        const double da = cMatrixDet(N, a.ref()), db = cMatrixDet(N, b.ref());
        EXPECT_NEAR(cMatrixDet(N, ab.ref()) / (da * db), 1.0, 1e-12);
        ASSERT_EQ(cMatrixInv(N, a.ref(), inv.ref()), -1);
        EXPECT_NEAR(da * cMatrixDet(N, inv.ref()), 1.0, 1e-12);
    }
}

TEST(MatrixInverse, TimesTheMatrixGivesTheIdentity) {
    // inv | 1 2 ; 3 4 | = | -2 1 ; 1.5 -0.5 | (adjugate over -2).
    Matrix a(2, {{1, 2}, {3, 4}}), r(2);
    ASSERT_EQ(cMatrixInv(2, a.ref(), r.ref()), -1);
    const double want[2][2] = {{-2, 1}, {1.5, -0.5}};
    for (size_t i = 1; i <= 2; ++i)
        for (size_t j = 1; j <= 2; ++j)
            EXPECT_NEAR(r(i, j), want[i - 1][j - 1], 1e-15) << i << "," << j;
    for (size_t n : {3, 5, 17, 64, 150}) {
        Matrix m(n), inv(n);
        fill_dominant(m, 1000 + n);
        const std::vector<double> before = m.values();
        ASSERT_EQ(cMatrixInv(static_cast<int16_t>(n), m.ref(), inv.ref()), -1) << n;
        EXPECT_EQ(m.values(), before) << "the matrix itself is not changed";
        double worst = 0.0;
        for (size_t i = 1; i <= n; ++i)
            for (size_t j = 1; j <= n; ++j)
                worst = std::max(worst, std::fabs(product_element(m, inv, i, j) - (i == j ? 1.0 : 0.0)));
        EXPECT_LT(worst, 1e-13) << "order " << n;
    }
}

TEST(MatrixInverse, PivotingHandlesAZeroLeadingElement) {
    // | 0 1 ; 1 0 | is its own inverse; without row exchanges the first
    // pivot would be 0. | 0 2 0 ; 0 0 3 ; 4 0 0 | inverts to
    // | 0 0 1/4 ; 1/2 0 0 ; 0 1/3 0 |.
    Matrix swap(2, {{0, 1}, {1, 0}}), r(2);
    ASSERT_EQ(cMatrixInv(2, swap.ref(), r.ref()), -1);
    EXPECT_EQ(r.values(), swap.values());
    Matrix p(3, {{0, 2, 0}, {0, 0, 3}, {4, 0, 0}}), q(3);
    ASSERT_EQ(cMatrixInv(3, p.ref(), q.ref()), -1);
    Matrix want(3, {{0, 0, 0.25}, {0.5, 0, 0}, {0, 1.0 / 3, 0}});
    EXPECT_EQ(cMatrixCompare(3, q.ref(), want.ref(), 1e-16), -1);
}

TEST(MatrixInverse, FailuresLeaveTheResultUnchanged) {
    Matrix singular(3, {{1, 2, 3}, {2, 4, 6}, {7, 8, 9}}), good(3, {{2, 0, 0}, {0, 2, 0}, {0, 0, 2}});
    Matrix result(3, 7.0);
    const std::vector<double> sevens = result.values();
    EXPECT_EQ(cMatrixInv(3, singular.ref(), result.ref()), 0);
    EXPECT_EQ(cMatrixInv(1, good.ref(), result.ref()), 0);
    EXPECT_EQ(cMatrixInv(-3, good.ref(), result.ref()), 0);
    EXPECT_EQ(cMatrixInv(4, good.ref(), result.ref()), 0); // 16 elements wanted, 9 given
    Matrix too_small(2);
    EXPECT_EQ(cMatrixInv(3, good.ref(), too_small.ref()), 0); // the result too small
    EXPECT_EQ(too_small.values(), std::vector<double>(4, 0.0));
    EXPECT_EQ(result.values(), sevens);
    // The inverse may replace the matrix itself.
    ASSERT_EQ(cMatrixInv(3, good.ref(), good.ref()), -1);
    EXPECT_EQ(good(2, 2), 0.5);
    EXPECT_EQ(good(1, 2), 0.0);
}

TEST(MatrixArrays, AnyShapeHoldingEnoughDoublesOthersRefused) {
    // | 2 1 ; 1 1 | has determinant 1; laid out in memory order as 2, 1, 1, 1.
    const double cells[] = {2, 1, 1, 1};
    auto det_of = [&](SafeArray &s) {
        std::copy(std::begin(cells), std::end(cells), s.data<double>());
        return cMatrixDet(2, s.ref());
    };
    SafeArray flat(VT_R8, -3, 4);            // (-3 To 0)
    SafeArray cube(VT_R8, {{2, 0}, {2, 0}, {3, 5}}); // 12 elements, three dimensions
    SafeArray longer(VT_R8, 0, 100);
    EXPECT_NEAR(det_of(flat), 1.0, 1e-15);
    EXPECT_NEAR(det_of(cube), 1.0, 1e-15);
    EXPECT_NEAR(det_of(longer), 1.0, 1e-15);
    // The elements past n x n are neither read nor written.
    std::fill(longer.data<double>() + 4, longer.data<double>() + 100, -5.0);
    ASSERT_EQ(cMatrixFill(2, longer.ref(), 9.0), -1);
    EXPECT_EQ(longer.data<double>()[3], 9.0);
    EXPECT_EQ(longer.data<double>()[4], -5.0);

    SafeArray three(VT_R8, 0, 3), empty(VT_R8, 0, 0);
    SafeArray singles(VT_R4, 0, 8), longs(VT_I4, 0, 8), currency(VT_CY, 0, 8), dates(VT_DATE, 0, 8);
    SafeArray strings(VT_BSTR, 0, 8), variants(VT_VARIANT, 0, 8);
    SAFEARRAY *none = nullptr;
    for (SAFEARRAY **ref : {three.ref(), empty.ref(), singles.ref(), longs.ref(), currency.ref(), dates.ref(),
                            strings.ref(), variants.ref(), &none, static_cast<SAFEARRAY **>(nullptr)}) {
        EXPECT_EQ(cMatrixDet(2, ref), -1.0);
        EXPECT_EQ(cMatrixFill(2, ref, 1.0), 0);
        EXPECT_EQ(cMatrixInv(2, flat.ref(), ref), 0);
    }
    // An array that does not say what its elements are is taken when they
    // are 8 bytes wide, and refused otherwise.
    SafeArray plain(VT_R8, 0, 4), narrow(VT_I4, 0, 4);
    plain.get()->fFeatures &= ~FADF_HAVEVARTYPE;
    narrow.get()->fFeatures &= ~FADF_HAVEVARTYPE;
    EXPECT_NEAR(det_of(plain), 1.0, 1e-15);
    EXPECT_EQ(cMatrixDet(2, narrow.ref()), -1.0);
}

TEST(MatrixFamily, ProductIsRowByColumnInTheClientsSubscripts) {
    // A x B with B swapping columns: | 1 2 ; 3 4 | x | 0 1 ; 1 0 | = | 2 1 ; 4 3 |,
    // while B x A swaps rows: | 3 4 ; 1 2 |.
    Matrix a(2, {{1, 2}, {3, 4}}), b(2, {{0, 1}, {1, 0}}), r(2);
    ASSERT_EQ(cMatrixMul(2, a.ref(), b.ref(), r.ref()), -1);
    EXPECT_EQ(r.values(), Matrix(2, {{2, 1}, {4, 3}}).values());
    ASSERT_EQ(cMatrixMul(2, b.ref(), a.ref(), r.ref()), -1);
    EXPECT_EQ(r.values(), Matrix(2, {{3, 4}, {1, 2}}).values());
    // Random factors against the sum computed here; then in place (A := A x A).
    Matrix x(23), y(23), z(23);
    fill_dominant(x, 5);
    fill_dominant(y, 6);
    ASSERT_EQ(cMatrixMul(23, x.ref(), y.ref(), z.ref()), -1);
    for (size_t i = 1; i <= 23; ++i)
        for (size_t j = 1; j <= 23; ++j)
            EXPECT_NEAR(z(i, j), product_element(x, y, i, j), 1e-12 * 23 * 23);
    Matrix square(2, {{1, 2}, {3, 4}});
    ASSERT_EQ(cMatrixMul(2, square.ref(), square.ref(), square.ref()), -1);
    EXPECT_EQ(square.values(), Matrix(2, {{7, 10}, {15, 22}}).values());
}

TEST(MatrixFamily, ElementWiseOperationsCopyCompareAndFill) {
    Matrix a(2, {{1, 2}, {3, 4}}), b(2, {{0.5, -1}, {10, 0}}), r(2);
    ASSERT_EQ(cMatrixAdd(2, a.ref(), b.ref(), r.ref()), -1);
    EXPECT_EQ(r.values(), Matrix(2, {{1.5, 1}, {13, 4}}).values());
    ASSERT_EQ(cMatrixSub(2, a.ref(), b.ref(), a.ref()), -1); // into A itself
    EXPECT_EQ(a.values(), Matrix(2, {{0.5, 3}, {-7, 4}}).values());
    ASSERT_EQ(cMatrixTranspose(2, a.ref(), r.ref()), -1);
    EXPECT_EQ(r.values(), Matrix(2, {{0.5, -7}, {3, 4}}).values());
    Matrix t(3, {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    ASSERT_EQ(cMatrixTranspose(3, t.ref(), t.ref()), -1); // in place
    EXPECT_EQ(t.values(), Matrix(3, {{1, 4, 7}, {2, 5, 8}, {3, 6, 9}}).values());

    // Copy into a larger target: the rest stays.
    SafeArray target(VT_R8, 1, 6);
    std::fill(target.data<double>(), target.data<double>() + 6, -1.0);
    ASSERT_EQ(cMatrixCopy(2, b.ref(), target.ref()), -1);
    EXPECT_EQ(std::vector<double>(target.data<double>(), target.data<double>() + 6),
              (std::vector<double>{0.5, 10, -1, 0, -1, -1}));

    // Compare: within the tolerance, exact at 0, infinities equal, NaN never.
    const double inf = std::numeric_limits<double>::infinity(), nan = std::numeric_limits<double>::quiet_NaN();
    Matrix p(2, {{1, inf}, {3, 4}}), q(2, {{1 + 1e-9, inf}, {3, 4}});
    EXPECT_EQ(cMatrixCompare(2, p.ref(), q.ref(), 1e-8), -1);
    EXPECT_EQ(cMatrixCompare(2, p.ref(), q.ref(), 1e-10), 0);
    EXPECT_EQ(cMatrixCompare(2, p.ref(), p.ref(), 0), -1);
    EXPECT_EQ(cMatrixCompare(2, p.ref(), q.ref(), -1), 0);
    q(1, 1) = 1;
    EXPECT_EQ(cMatrixCompare(2, p.ref(), q.ref(), 0), -1);
    q(2, 2) = nan;
    EXPECT_EQ(cMatrixCompare(2, q.ref(), q.ref(), inf), 0);
    EXPECT_EQ(cMatrixCompare(1, p.ref(), p.ref(), 0), 0);

    ASSERT_EQ(cMatrixFill(2, r.ref(), -2.5), -1);
    EXPECT_EQ(r.values(), std::vector<double>(4, -2.5));
    // Failures leave the result alone.
    Matrix three(3);
    EXPECT_EQ(cMatrixAdd(3, a.ref(), three.ref(), three.ref()), 0);
    EXPECT_EQ(cMatrixSub(2, a.ref(), b.ref(), nullptr), 0);
    EXPECT_EQ(cMatrixCopy(3, b.ref(), three.ref()), 0);
    EXPECT_EQ(cMatrixFill(1, r.ref(), 0), 0);
    EXPECT_EQ(r.values(), std::vector<double>(4, -2.5));
    EXPECT_EQ(three.values(), std::vector<double>(9, 0.0));
}

TEST(MatrixFamily, SymmetricToeplitz) {
    // V = (4, 1, 0.5): the diagonal 4, its neighbours 1, the corners 0.5.
    SafeArray v(VT_R8, 1, 3);
    v.data<double>()[0] = 4, v.data<double>()[1] = 1, v.data<double>()[2] = 0.5;
    Matrix t(3, -1.0);
    ASSERT_EQ(cMatrixSymToeplitz(3, v.ref(), t.ref()), -1);
    EXPECT_EQ(t.values(), Matrix(3, {{4, 1, 0.5}, {1, 4, 1}, {0.5, 1, 4}}).values());
    Matrix too_small(2, -1.0);
    EXPECT_EQ(cMatrixSymToeplitz(4, v.ref(), t.ref()), 0); // V holds 3 values, 4 wanted
    EXPECT_EQ(cMatrixSymToeplitz(3, v.ref(), too_small.ref()), 0);
    EXPECT_EQ(cMatrixSymToeplitz(1, v.ref(), t.ref()), 0);
    EXPECT_EQ(too_small.values(), std::vector<double>(4, -1.0));
    // V may be the result array: its first values are taken first.
    SafeArray both(VT_R8, 0, 4);
    both.data<double>()[0] = 2, both.data<double>()[1] = 3;
    ASSERT_EQ(cMatrixSymToeplitz(2, both.ref(), both.ref()), -1);
    EXPECT_EQ(std::vector<double>(both.data<double>(), both.data<double>() + 4), (std::vector<double>{2, 3, 3, 2}));
}

TEST(MatrixFamily, MinorsAndCofactors) {
    // A(i, j) = 10 i + j; taking out row 2 and column 1 leaves
    // | 12 13 ; 32 33 |, whose determinant is 396 - 416 = -20, and the
    // cofactor (2, 1) is -(-20) = 20.
    Matrix a(3);
    for (size_t i = 1; i <= 3; ++i)
        for (size_t j = 1; j <= 3; ++j)
            a(i, j) = 10.0 * i + j;
    Matrix m(2, -1.0);
    ASSERT_EQ(cMatrixMinor(3, a.ref(), 2, 1, m.ref()), -1);
    EXPECT_EQ(m.values(), Matrix(2, {{12, 13}, {32, 33}}).values());
    EXPECT_NEAR(cMatrixCoFactor(3, a.ref(), 2, 1), 20.0, 1e-12);
    // | 1 2 ; 3 4 |: cofactors 4, -3, -2, 1.
    Matrix b(2, {{1, 2}, {3, 4}});
    EXPECT_NEAR(cMatrixCoFactor(2, b.ref(), 1, 1), 4.0, 0);
    EXPECT_NEAR(cMatrixCoFactor(2, b.ref(), 1, 2), -3.0, 0);
    EXPECT_NEAR(cMatrixCoFactor(2, b.ref(), 2, 1), -2.0, 0);
    EXPECT_NEAR(cMatrixCoFactor(2, b.ref(), 2, 2), 1.0, 0);
    // A x adj(A) = det(A) I, with adj(A)(i, j) = cofactor (j, i).
    const size_t n = 6;
    Matrix r(n), adj(n);
    fill_dominant(r, 77);
    for (size_t i = 1; i <= n; ++i)
        for (size_t j = 1; j <= n; ++j)
            adj(i, j) = cMatrixCoFactor(6, r.ref(), static_cast<int16_t>(j), static_cast<int16_t>(i));
    const double det = cMatrixDet(6, r.ref());
    for (size_t i = 1; i <= n; ++i)
        for (size_t j = 1; j <= n; ++j)
            EXPECT_NEAR(product_element(r, adj, i, j), i == j ? det : 0.0, 1e-11 * std::fabs(det)) << i << "," << j;
    // Refusals: subscripts outside 1 .. N, orders below 2, a result too small.
    Matrix tiny(1, -1.0);
    for (auto [row, col] : {std::pair<int16_t, int16_t>{0, 1}, {1, 0}, {4, 1}, {1, 4}, {-1, -1}}) {
        EXPECT_EQ(cMatrixMinor(3, a.ref(), row, col, m.ref()), 0);
        EXPECT_EQ(cMatrixCoFactor(3, a.ref(), row, col), -1.0);
    }
    EXPECT_EQ(cMatrixCoFactor(1, a.ref(), 1, 1), -1.0);
    EXPECT_EQ(cMatrixMinor(3, a.ref(), 1, 1, tiny.ref()), 0);
    EXPECT_EQ(tiny(1, 1), -1.0);
    // Order 2 leaves one element.
    ASSERT_EQ(cMatrixMinor(2, b.ref(), 1, 2, tiny.ref()), -1);
    EXPECT_EQ(tiny(1, 1), 3.0);
}
