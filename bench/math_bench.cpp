// The library's Bessel functions beside the C library's j0, j1, y0, y1 and
// jn (the anchor, same arguments), and the check digits over 10 MB of text
// beside a plain byte sum of the same text.
#include "math/bessel.h"
#include "math/check_digits.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace {

// 4096 arguments spread over (0, 100), the range of the tables and beyond.
const std::vector<double> &arguments() {
    static const std::vector<double> xs = [] {
        std::mt19937 rng(5);
        std::uniform_real_distribution<double> u(0.0, 100.0);
        std::vector<double> v(4096);
        for (double &x : v)
            x = u(rng);
        return v;
    }();
    return xs;
}

template <double (*F)(double)> void run(benchmark::State &state) {
    const auto &xs = arguments();
    for (auto _ : state)
        for (const double x : xs)
            benchmark::DoNotOptimize(F(x));
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * xs.size()));
}

#ifndef _WIN32 // the anchors are the C library's POSIX functions
double libc_j0(double x) { return ::j0(x); }
double libc_y0(double x) { return ::y0(x); }
double libc_j1(double x) { return ::j1(x); }
double libc_y1(double x) { return ::y1(x); }
double libc_j5(double x) { return ::jn(5, x); }

BENCHMARK(run<libc_j0>)->Name("BesselJ0/libc");
BENCHMARK(run<libc_y0>)->Name("BesselY0/libc");
BENCHMARK(run<libc_j1>)->Name("BesselJ1/libc");
BENCHMARK(run<libc_y1>)->Name("BesselY1/libc");
BENCHMARK(run<libc_j5>)->Name("BesselJN5/libc");
#endif
double ours_j5(double x) { return brindle::math::bessel_jn(5, x); }
BENCHMARK(run<brindle::math::bessel_j0>)->Name("BesselJ0/ours");
BENCHMARK(run<brindle::math::bessel_y0>)->Name("BesselY0/ours");
BENCHMARK(run<brindle::math::bessel_j1>)->Name("BesselJ1/ours");
BENCHMARK(run<brindle::math::bessel_y1>)->Name("BesselY1/ours");
BENCHMARK(run<ours_j5>)->Name("BesselJN5/ours");

const std::string &text() {
    static const std::string t = [] {
        std::mt19937 rng(6);
        std::string s(10u << 20, '\0');
        for (char &c : s)
            c = static_cast<char>(rng() & 0xFF);
        return s;
    }();
    return t;
}

void BM_CheckMod10(benchmark::State &state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(brindle::math::weighted_hex_check(text(), 10, brindle::math::Direction::from_first));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text().size()));
}
BENCHMARK(BM_CheckMod10);

void BM_Check137(benchmark::State &state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(brindle::math::check_137(text(), brindle::math::Direction::from_last));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text().size()));
}
BENCHMARK(BM_Check137);

// The anchor: a plain sum of the bytes.
void BM_ByteSum(benchmark::State &state) {
    for (auto _ : state) {
        long long sum = 0;
        for (const char c : text())
            sum += static_cast<signed char>(c);
        benchmark::DoNotOptimize(sum);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text().size()));
}
BENCHMARK(BM_ByteSum);

} // namespace
