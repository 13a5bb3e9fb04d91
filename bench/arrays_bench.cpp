// The typed-array sorts beside their anchors: std::sort for the numeric
// sorts, qsort with an equivalent comparator for the multi-key record sort,
// std::sort + std::unique for the de-duplication. Each benchmark times both
// on the same data and reports "speedup" = anchor time / our time.
#include "arrays/sort_engine.h"
#include "arrays/typed_sort.h"
#include "platform/ole.h"

#include <brindle/exports.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <random>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double seconds_since(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

template <class T> std::vector<T> random_data(size_t n) {
    std::mt19937_64 rng(42);
    std::vector<T> v(n);
    for (auto &x : v) {
        if constexpr (std::is_floating_point_v<T>)
            x = static_cast<T>(std::uniform_real_distribution<double>(-1e6, 1e6)(rng));
        else
            x = static_cast<T>(rng());
    }
    return v;
}

template <class T> void BM_NumericSort(benchmark::State &state) {
    const auto source = random_data<T>(static_cast<size_t>(state.range(0)));
    double ours = 0, anchor = 0;
    for (auto _ : state) {
        std::vector<T> a = source, b = source;
        auto t0 = Clock::now();
        brindle::arrays::sort_numbers(a.data(), a.size(), false);
        const double t = seconds_since(t0);
        state.SetIterationTime(t);
        ours += t;
        t0 = Clock::now();
        std::sort(b.begin(), b.end());
        anchor += seconds_since(t0);
        benchmark::DoNotOptimize(a.data());
        benchmark::DoNotOptimize(b.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["speedup_vs_std_sort"] = anchor / ours;
}
BENCHMARK(BM_NumericSort<int32_t>)->Arg(10'000'000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_NumericSort<double>)->Arg(10'000'000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

// 32-byte records: a Long key ascending, then a Double key descending.
#pragma pack(push, 4)
struct Record {
    int32_t key;
    int32_t id;
    double value;
    char text[16];
};
#pragma pack(pop)
static_assert(sizeof(Record) == 32);

int qsort_compare(const void *x, const void *y) {
    const auto *a = static_cast<const Record *>(x);
    const auto *b = static_cast<const Record *>(y);
    if (a->key != b->key)
        return a->key > b->key ? 1 : -1;
    const double va = a->value, vb = b->value;
    if (va != vb)
        return va > vb ? -1 : 1;
    return 0;
}

void BM_TypedSort(benchmark::State &state) {
    const size_t n = static_cast<size_t>(state.range(0));
    std::mt19937 rng(7);
    std::vector<Record> source(n);
    for (size_t i = 0; i < n; ++i)
        source[i] = {static_cast<int32_t>(rng() % (n / 4)), static_cast<int32_t>(i), static_cast<double>(rng() % 1000), {}};
    TypedSortDescriptor keys{};
    keys.KeyOffset[0] = 0, keys.KeyType[0] = 4, keys.KeyOrder[0] = 1;
    keys.KeyOffset[1] = 8, keys.KeyType[1] = 6, keys.KeyOrder[1] = -1;
    double ours = 0, anchor = 0;
    for (auto _ : state) {
        std::vector<Record> a = source, b = source;
        auto t0 = Clock::now();
        brindle::arrays::typed_sort(reinterpret_cast<unsigned char *>(a.data()), n, sizeof(Record), keys);
        const double t = seconds_since(t0);
        state.SetIterationTime(t);
        ours += t;
        t0 = Clock::now();
        std::qsort(b.data(), n, sizeof(Record), qsort_compare);
        anchor += seconds_since(t0);
        benchmark::DoNotOptimize(a.data());
        benchmark::DoNotOptimize(b.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["speedup_vs_qsort"] = anchor / ours;
}
BENCHMARK(BM_TypedSort)->Arg(1'000'000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

// cRmvDupL through the export, in place, with the shrink flag.
void BM_RemoveDuplicates(benchmark::State &state) {
    const size_t n = static_cast<size_t>(state.range(0));
    std::vector<int32_t> source = random_data<int32_t>(n);
    for (auto &x : source)
        x %= static_cast<int32_t>(n / 2); // about half duplicates
    double ours = 0, anchor = 0;
    BSTR none = nullptr;
    for (auto _ : state) {
        SAFEARRAY *array = SafeArrayCreateVector(VT_I4, 0, static_cast<ULONG>(n));
        std::memcpy(array->pvData, source.data(), n * sizeof(int32_t));
        std::vector<int32_t> b = source;
        auto t0 = Clock::now();
        benchmark::DoNotOptimize(cRmvDupL(&array, 0, &none, -1));
        const double t = seconds_since(t0);
        state.SetIterationTime(t);
        ours += t;
        t0 = Clock::now();
        std::sort(b.begin(), b.end());
        b.erase(std::unique(b.begin(), b.end()), b.end());
        b.shrink_to_fit();
        anchor += seconds_since(t0);
        SafeArrayDestroy(array);
        benchmark::DoNotOptimize(b.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["speedup_vs_sort_unique"] = anchor / ours;
}
BENCHMARK(BM_RemoveDuplicates)->Arg(10'000'000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace

