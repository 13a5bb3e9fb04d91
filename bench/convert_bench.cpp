// Btoa encoding and decoding of a 50 MB file beside a plain block copy of the
// same file (the disk-speed anchor).
#include "convert/btoa_coder.h"
#include "platform/file.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr size_t kSize = 50u << 20;

// A 50 MB input in the temporary directory, made once per run.
const std::string &input_file() {
    static const std::string path = [] {
        const std::string p = (std::filesystem::temp_directory_path() / "brindle_bench_input.bin").string();
        std::mt19937 rng(3);
        std::vector<char> data(kSize);
        // Random bytes, without Ctrl-Z, which ends a text-mode input.
        for (char &c : data) {
            c = static_cast<char>(rng() & 0xFF);
            if (c == 0x1A)
                c = 0x1B;
        }
        std::ofstream(p, std::ios::binary).write(data.data(), static_cast<std::streamsize>(data.size()));
        return p;
    }();
    return path;
}

std::string temp(const char *name) { return (std::filesystem::temp_directory_path() / name).string(); }

void BM_BlockCopy(benchmark::State &state) {
    const std::string out = temp("brindle_bench_copy.bin");
    std::vector<char> buffer(1 << 16);
    for (auto _ : state) {
        auto in = brindle::platform::File::open(input_file(), brindle::platform::OpenMode::Read);
        auto to = brindle::platform::File::open(out, brindle::platform::OpenMode::Create);
        for (int64_t got; (got = in.read(buffer.data(), buffer.size())) > 0;)
            to.write(buffer.data(), static_cast<size_t>(got));
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kSize));
    std::filesystem::remove(out);
}

void BM_BtoaEncode(benchmark::State &state) {
    const std::string out = temp("brindle_bench.btoa");
    for (auto _ : state)
        benchmark::DoNotOptimize(brindle::convert::btoa_encode_file(input_file(), out));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kSize));
}

void BM_BtoaDecode(benchmark::State &state) {
    const std::string encoded = temp("brindle_bench.btoa");
    brindle::convert::btoa_encode_file(input_file(), encoded);
    const auto old = std::filesystem::current_path();
    std::filesystem::current_path(std::filesystem::temp_directory_path());
    for (auto _ : state)
        benchmark::DoNotOptimize(brindle::convert::btoa_decode_file(encoded));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kSize));
    std::filesystem::current_path(old);
}

} // namespace

BENCHMARK(BM_BlockCopy)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BtoaEncode)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BtoaDecode)->Unit(benchmark::kMillisecond);
