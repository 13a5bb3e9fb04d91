// Long repetitive input through the similarity score and the date pictures,
// beside a linear anchor over the same bytes, at several sizes:
//   similarity of two words of one letter     vs std::count over both words
//   a date picture of one letter repeated     vs copying the picture
// The ratio of each pair should stay the same from size to size (both
// linear); a ratio growing with the size means a quadratic path.
#include "datetime/dt_picture.h"
#include "strings/similarity.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>

namespace {

void BM_Similarity_OneLetter(benchmark::State &state) {
    const std::string a(static_cast<size_t>(state.range(0)), 'q'), b(a.size(), 'Q');
    for (auto _ : state)
        benchmark::DoNotOptimize(brindle::strings::similarity(a, b));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * 2 * state.range(0));
}

void BM_Similarity_Anchor_Count(benchmark::State &state) {
    const std::string a(static_cast<size_t>(state.range(0)), 'q'), b(a.size(), 'Q');
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::count(a.begin(), a.end(), 'q') + std::count(b.begin(), b.end(), 'q'));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * 2 * state.range(0));
}

void BM_DatePicture_OneLetter(benchmark::State &state) {
    const std::string picture(static_cast<size_t>(state.range(0)), 'd');
    for (auto _ : state)
        benchmark::DoNotOptimize(brindle::datetime::dt::format_date_picture(picture, 20000101));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}

void BM_DatePicture_Anchor_Copy(benchmark::State &state) {
    const std::string picture(static_cast<size_t>(state.range(0)), 'd');
    for (auto _ : state) {
        std::string copy(picture);
        benchmark::DoNotOptimize(copy.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}

} // namespace

BENCHMARK(BM_Similarity_OneLetter)->Arg(70000)->Arg(1 << 20)->Arg(8 << 20);
BENCHMARK(BM_Similarity_Anchor_Count)->Arg(70000)->Arg(1 << 20)->Arg(8 << 20);
BENCHMARK(BM_DatePicture_OneLetter)->Arg(70000)->Arg(1 << 20)->Arg(8 << 20);
BENCHMARK(BM_DatePicture_Anchor_Copy)->Arg(70000)->Arg(1 << 20)->Arg(8 << 20);
