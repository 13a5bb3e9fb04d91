// Checksum and search engines beside their anchors: zlib's crc32 and the
// standard library's case-sensitive search.
#include "compress/crc32.h"
#include "strings/str_find.h"

#include <benchmark/benchmark.h>
#include <zlib.h>

#include <random>
#include <string>

namespace {

std::string random_bytes(size_t n) {
    std::mt19937 rng(1);
    std::string s(n, '\0');
    for (char &c : s)
        c = static_cast<char>('a' + rng() % 26);
    return s;
}

void BM_Crc32Brindle(benchmark::State &state) {
    const std::string data = random_bytes(static_cast<size_t>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(brindle::compress::crc32_plain(data.data(), data.size()));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}

void BM_Crc32Zlib(benchmark::State &state) {
    const std::string data = random_bytes(static_cast<size_t>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(
            ::crc32(0, reinterpret_cast<const Bytef *>(data.data()), static_cast<uInt>(data.size())));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}

void BM_StrFindNoCase(benchmark::State &state) {
    std::string text = random_bytes(static_cast<size_t>(state.range(0)));
    text += "NeedleInTheHay";
    for (auto _ : state)
        benchmark::DoNotOptimize(brindle::strings::StrFindNoCase(text, "needleinthehay"));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}

void BM_StdFind(benchmark::State &state) {
    std::string text = random_bytes(static_cast<size_t>(state.range(0)));
    text += "needleinthehay";
    for (auto _ : state)
        benchmark::DoNotOptimize(text.find("needleinthehay"));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}

} // namespace

BENCHMARK(BM_Crc32Brindle)->Arg(1 << 20);
BENCHMARK(BM_Crc32Zlib)->Arg(1 << 20);
BENCHMARK(BM_StrFindNoCase)->Arg(1 << 20);
BENCHMARK(BM_StdFind)->Arg(1 << 20);
