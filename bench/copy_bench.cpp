// The block copy of a 1 GiB file beside `cp`, and the set copy of 10,000
// small files (100 directories of 100) beside `cp -r`. Each iteration runs
// both on the same source; the "speed_vs_cp" counter is cp's time over the
// library's (above 1: the library is faster). The files are made in the
// temporary directory and deleted at the end.
#ifndef _WIN32
#include "files/block_copy.h"
#include "files/set_copy.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

const fs::path &base() {
    static const fs::path b = [] {
        fs::path p = fs::temp_directory_path() / "brindle-copy-bench";
        std::error_code e;
        fs::remove_all(p, e);
        fs::create_directories(p);
        std::atexit([] {
            std::error_code ignored;
            fs::remove_all(fs::temp_directory_path() / "brindle-copy-bench", ignored);
        });
        return p;
    }();
    return b;
}

void write_bytes(const fs::path &name, size_t size, uint32_t seed) {
    std::vector<char> block(1 << 20);
    std::FILE *f = std::fopen(name.c_str(), "wb");
    if (!f)
        return;
    for (size_t done = 0; done < size;) {
        for (char &c : block) {
            seed = seed * 1103515245u + 12345u;
            c = static_cast<char>(seed >> 24);
        }
        const size_t n = size - done < block.size() ? size - done : block.size();
        std::fwrite(block.data(), 1, n, f);
        done += n;
    }
    std::fclose(f);
}

double seconds_since(std::chrono::steady_clock::time_point t0) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
}

void BM_FileCopy1GiBVsCp(benchmark::State &state) {
    const fs::path source = base() / "big.bin", ours = base() / "big.ours", theirs = base() / "big.cp";
    if (!fs::exists(source))
        write_bytes(source, size_t{1} << 30, 7);
    const std::string command = "cp '" + source.string() + "' '" + theirs.string() + "'";
    double lib = 0, cp = 0;
    for (auto _ : state) {
        std::error_code e;
        fs::remove(ours, e);
        fs::remove(theirs, e);
        auto t0 = std::chrono::steady_clock::now();
        const int32_t copied = brindle::files::block_copy(source.string(), ours.string());
        const double t = seconds_since(t0);
        if (copied != (int32_t{1} << 30))
            state.SkipWithError("copy failed");
        lib += t;
        state.SetIterationTime(t);
        t0 = std::chrono::steady_clock::now();
        if (std::system(command.c_str()) != 0)
            state.SkipWithError("cp failed");
        cp += seconds_since(t0);
    }
    std::error_code e;
    fs::remove(ours, e);
    fs::remove(theirs, e);
    fs::remove(source, e);
    state.counters["cp_ms"] = cp * 1000 / static_cast<double>(state.iterations());
    state.counters["speed_vs_cp"] = lib > 0 ? cp / lib : 0;
}

void BM_FilesCopy10kVsCpR(benchmark::State &state) {
    const fs::path source = base() / "small", ours = base() / "small.ours", theirs = base() / "small.cp";
    if (!fs::exists(source))
        for (int d = 0; d < 100; ++d) {
            const fs::path dir = source / ("d" + std::to_string(d));
            fs::create_directories(dir);
            for (int f = 0; f < 100; ++f)
                write_bytes(dir / ("f" + std::to_string(f) + ".dat"), 1000 + static_cast<size_t>(f) * 10,
                            static_cast<uint32_t>(d * 100 + f));
        }
    const std::string command = "cp -r '" + source.string() + "' '" + theirs.string() + "'";
    double lib = 0, cp = 0;
    for (auto _ : state) {
        std::error_code e;
        fs::remove_all(ours, e);
        fs::remove_all(theirs, e);
        fs::create_directory(ours);
        auto t0 = std::chrono::steady_clock::now();
        const int32_t copied = brindle::files::copy_file_set(source.string(), ours.string(), "*", 2, false, {});
        const double t = seconds_since(t0);
        if (copied != 10000)
            state.SkipWithError("set copy failed");
        lib += t;
        state.SetIterationTime(t);
        t0 = std::chrono::steady_clock::now();
        if (std::system(command.c_str()) != 0)
            state.SkipWithError("cp -r failed");
        cp += seconds_since(t0);
    }
    std::error_code e;
    fs::remove_all(ours, e);
    fs::remove_all(theirs, e);
    fs::remove_all(source, e);
    state.counters["cp_ms"] = cp * 1000 / static_cast<double>(state.iterations());
    state.counters["speed_vs_cp"] = lib > 0 ? cp / lib : 0;
}

} // namespace

BENCHMARK(BM_FileCopy1GiBVsCp)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_FilesCopy10kVsCpR)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);
#endif
