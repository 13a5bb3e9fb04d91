// Matrix inversion through cMatrixInv beside a plain textbook inversion
// written here: LU decomposition with partial pivoting over a table of row
// vectors and a permutation vector, then forward and back substitution for
// each unit vector in turn. Both invert the same random well-conditioned
// matrix; "speedup_vs_textbook" = textbook time / our time.
#include "platform/ole.h"

#include <brindle/exports.h>

#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>
#include <cstring>
#include <random>
#include <utility>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double seconds_since(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

// Random entries in [-1, 1] with n added to the diagonal.
std::vector<double> random_matrix(size_t n) {
    std::mt19937_64 rng(7);
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    std::vector<double> m(n * n);
    for (auto &x : m)
        x = u(rng);
    for (size_t i = 0; i < n; ++i)
        m[i * n + i] += static_cast<double>(n);
    return m;
}

// The textbook: rows as separate vectors reached through the permutation.
bool textbook_inverse(const std::vector<double> &source, size_t n, std::vector<double> &inverse) {
    std::vector<std::vector<double>> a(n, std::vector<double>(n));
    for (size_t i = 0; i < n; ++i)
        for (size_t j = 0; j < n; ++j)
            a[i][j] = source[i * n + j];
    std::vector<size_t> p(n);
    for (size_t i = 0; i < n; ++i)
        p[i] = i;
    for (size_t k = 0; k < n; ++k) {
        size_t best = k;
        for (size_t i = k + 1; i < n; ++i)
            if (std::fabs(a[p[i]][k]) > std::fabs(a[p[best]][k]))
                best = i;
        std::swap(p[k], p[best]);
        const double pivot = a[p[k]][k];
        if (pivot == 0.0)
            return false;
        for (size_t i = k + 1; i < n; ++i) {
            std::vector<double> &row = a[p[i]];
            const double m = row[k] / pivot;
            row[k] = m;
            for (size_t j = k + 1; j < n; ++j)
                row[j] -= m * a[p[k]][j];
        }
    }
    std::vector<double> y(n), x(n);
    for (size_t c = 0; c < n; ++c) {
        for (size_t i = 0; i < n; ++i) {
            double s = p[i] == c ? 1.0 : 0.0;
            for (size_t k = 0; k < i; ++k)
                s -= a[p[i]][k] * y[k];
            y[i] = s;
        }
        for (size_t i = n; i-- > 0;) {
            double s = y[i];
            for (size_t k = i + 1; k < n; ++k)
                s -= a[p[i]][k] * x[k];
            x[i] = s / a[p[i]][i];
        }
        for (size_t i = 0; i < n; ++i)
            inverse[i * n + c] = x[i];
    }
    return true;
}

SAFEARRAY *double_array(size_t count) {
    SAFEARRAYBOUND b{static_cast<ULONG>(count), 0};
    return SafeArrayCreate(VT_R8, 1, &b);
}

void BM_MatrixInverse(benchmark::State &state) {
    const size_t n = static_cast<size_t>(state.range(0));
    const std::vector<double> source = random_matrix(n);
    SAFEARRAY *a = double_array(n * n), *r = double_array(n * n);
    std::memcpy(a->pvData, source.data(), n * n * sizeof(double));
    std::vector<double> textbook(n * n);
    double ours = 0, anchor = 0, largest_difference = 0;
    for (auto _ : state) {
        auto t0 = Clock::now();
        const int16_t ok = cMatrixInv(static_cast<int16_t>(n), &a, &r);
        const double t = seconds_since(t0);
        state.SetIterationTime(t);
        ours += t;
        t0 = Clock::now();
        const bool ok2 = textbook_inverse(source, n, textbook);
        anchor += seconds_since(t0);
        if (ok != -1 || !ok2)
            state.SkipWithError("a matrix that should invert did not");
        // Both sides work the same arithmetic in the same order.
        const double *mine = static_cast<const double *>(r->pvData);
        for (size_t i = 0; i < n * n; ++i)
            largest_difference = std::max(largest_difference, std::fabs(mine[i] - textbook[i]));
        benchmark::DoNotOptimize(textbook.data());
    }
    state.counters["speedup_vs_textbook"] = anchor / ours;
    state.counters["largest_difference"] = largest_difference;
    SafeArrayDestroy(a);
    SafeArrayDestroy(r);
}
BENCHMARK(BM_MatrixInverse)->Arg(100)->Arg(500)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace
