// Disk arrays beside the system calls underneath them:
//   - one million random cDAGet of Doubles on a 512 MB array in the page
//     cache, beside pread of the same 8 bytes at the same offsets (the
//     "ratio" counter is pread time over cDAGet time: 1.0 means no overhead);
//   - creating a 1 GB array (header and zero fill in 32 KB blocks) beside
//     writing the same bytes in 32 KB blocks with write(2), as dd bs=32k does
//     ("ratio": plain write time over cDACreate time).
// The files live in the temporary directory and are removed at exit.
#include "platform/ole.h"
#include "stores/store_records.h"

#include <benchmark/benchmark.h>
#include <brindle/exports.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <string>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr int32_t kSide = 8192; // 8192 x 8192 Doubles: 512 MB

DiskArray record_for(const fs::path &file, int32_t rows, int32_t cols) {
    DiskArray r{};
    // The library speaks Windows names: "\tmp\x" is /tmp/x here.
    std::string name = file.string();
    for (char &c : name)
        if (c == '/')
            c = '\\';
    std::memset(r.FileName, ' ', sizeof r.FileName);
    std::memcpy(r.FileName, name.data(), name.size());
    r.VarType = -5;
    r.Rows = rows;
    r.Cols = cols;
    r.Sheets = 1;
    return r;
}

fs::path bench_file(const char *name) { return fs::temp_directory_path() / name; }

// The 512 MB array, made once and left open.
DiskArray &big_array() {
    static DiskArray r = [] {
        DiskArray a = record_for(bench_file("brindle-bench-da.dat"), kSide, kSide);
        if (cDACreate(&a, -1) != -1)
            std::abort();
        std::atexit([] {
            std::error_code ignored;
            fs::remove(bench_file("brindle-bench-da.dat"), ignored);
        });
        return a;
    }();
    return r;
}

struct Index {
    int32_t row, col;
};

const std::vector<Index> &random_indices() {
    static const std::vector<Index> indices = [] {
        std::mt19937 random(7);
        std::vector<Index> v(1000000);
        for (Index &i : v)
            i = {static_cast<int32_t>(random() % kSide) + 1, static_cast<int32_t>(random() % kSide) + 1};
        return v;
    }();
    return indices;
}

double seconds_of_pread(const std::vector<Index> &indices) {
    const int fd = ::open(bench_file("brindle-bench-da.dat").c_str(), O_RDONLY);
    const auto start = std::chrono::steady_clock::now();
    double sum = 0, value;
    for (const Index &i : indices) {
        const off_t offset = 200 + ((off_t{i.row} - 1) * kSide + (i.col - 1)) * 8;
        if (::pread(fd, &value, 8, offset) == 8)
            sum += value;
    }
    benchmark::DoNotOptimize(sum);
    ::close(fd);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void BM_DiskArrayRandomGet(benchmark::State &state) {
    DiskArray &a = big_array();
    const std::vector<Index> &indices = random_indices();
    seconds_of_pread(indices); // both start from a warm page cache
    double ours = 0, theirs = 0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        double sum = 0;
        for (const Index &i : indices) {
            VARIANT v = cDAGet(&a, i.row, i.col, 1);
            sum += V_R8(&v);
        }
        benchmark::DoNotOptimize(sum);
        ours += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        theirs += seconds_of_pread(indices);
    }
    state.counters["ns_per_get"] = ours / state.iterations() / indices.size() * 1e9;
    state.counters["ns_per_pread"] = theirs / state.iterations() / indices.size() * 1e9;
    state.counters["ratio"] = theirs / ours;
}
BENCHMARK(BM_DiskArrayRandomGet)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

double seconds_of_plain_write(const fs::path &file, int64_t bytes) {
    const auto start = std::chrono::steady_clock::now();
    const int fd = ::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    std::vector<char> block(32768, 0);
    for (int64_t done = 0; done < bytes; done += 32768)
        if (::write(fd, block.data(), block.size()) != static_cast<ssize_t>(block.size()))
            break;
    ::close(fd);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void BM_DiskArrayCreateOneGigabyte(benchmark::State &state) {
    const fs::path ours_file = bench_file("brindle-bench-create.dat"), plain_file = bench_file("brindle-bench-dd.dat");
    double ours = 0, theirs = 0;
    for (auto _ : state) {
        DiskArray r = record_for(ours_file, 16384, 8192); // 1 GB of Doubles
        const auto start = std::chrono::steady_clock::now();
        if (cDACreate(&r, -1) != -1)
            state.SkipWithError("cDACreate failed");
        cDAClose(&r, 0);
        ours += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        theirs += seconds_of_plain_write(plain_file, int64_t{1} << 30);
        fs::remove(ours_file);
        fs::remove(plain_file);
    }
    state.counters["ratio"] = theirs / ours;
}
BENCHMARK(BM_DiskArrayCreateOneGigabyte)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

} // namespace

namespace {

// Huge strings: 1 GB appended in 64000-byte pieces and read back by blocks,
// beside memcpy of the same pieces into and out of a plain buffer ("ratio":
// memcpy time over ours); then the block saved and loaded, beside write(2)
// and read(2) of the same bytes in 32 KB pieces.
constexpr int32_t kHugeBytes = 1 << 30;
constexpr size_t kPiece = 64000;

void BM_HugeStringAppendAndRead(benchmark::State &state) {
    const std::string piece(kPiece, 'h');
    BSTR text = SysAllocStringByteLen(piece.data(), kPiece);
    std::vector<char> plain(static_cast<size_t>(kHugeBytes)), out(kPiece);
    double ours = 0, theirs = 0;
    // Both buffers are touched once before timing: page faults are the
    // system's cost, not the library's.
    const int32_t h = cHugeStrCreate(kHugeBytes);
    while (cHugeStrAppend(h, &text) == -1) {
    }
    std::fill(plain.begin(), plain.end(), 'x');
    for (auto _ : state) {
        cHugeStrClear(h);
        auto start = std::chrono::steady_clock::now();
        while (cHugeStrAppend(h, &text) == -1) {
        }
        const int32_t blocks = cHugeStrBlocks(h);
        for (int32_t b = 1; b <= blocks; ++b)
            SysFreeString(cHugeStrRead(h, b));
        ours += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        start = std::chrono::steady_clock::now();
        size_t at = 0;
        for (; at + kPiece <= plain.size(); at += kPiece)
            std::memcpy(plain.data() + at, piece.data(), kPiece);
        for (size_t from = 0; from < at; from += kPiece)
            std::memcpy(out.data(), plain.data() + from, kPiece);
        benchmark::DoNotOptimize(out.data());
        theirs += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }
    cHugeStrFree(h);
    SysFreeString(text);
    state.counters["ratio"] = theirs / ours;
}
BENCHMARK(BM_HugeStringAppendAndRead)->Unit(benchmark::kMillisecond)->Iterations(2)->UseRealTime();

double seconds_of_plain_save_load(const fs::path &file, std::vector<char> &bytes) {
    const auto start = std::chrono::steady_clock::now();
    int fd = ::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    for (size_t at = 0; at < bytes.size(); at += 32768)
        if (::write(fd, bytes.data() + at, std::min<size_t>(32768, bytes.size() - at)) < 0)
            break;
    ::close(fd);
    fd = ::open(file.c_str(), O_RDONLY);
    for (size_t at = 0; at < bytes.size(); at += 32768)
        if (::read(fd, bytes.data() + at, std::min<size_t>(32768, bytes.size() - at)) < 0)
            break;
    ::close(fd);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void BM_HugeStringSaveAndLoad(benchmark::State &state) {
    const fs::path ours_file = bench_file("brindle-bench-hs.bin"), plain_file = bench_file("brindle-bench-hs-plain.bin");
    std::string name = ours_file.string();
    for (char &c : name)
        if (c == '/')
            c = '\\';
    BSTR bname = SysAllocStringByteLen(name.data(), static_cast<UINT>(name.size()));
    const int32_t h = cHugeStrCreate(kHugeBytes);
    std::vector<char> plain(static_cast<size_t>(kHugeBytes) + 12, 'p');
    double ours = 0, theirs = 0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        if (cHugeStrOnDisk(h, bname, 0) < 0 || cHugeStrOnDisk(h, bname, 1) < 0)
            state.SkipWithError("cHugeStrOnDisk failed");
        ours += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        theirs += seconds_of_plain_save_load(plain_file, plain);
    }
    cHugeStrFree(h);
    SysFreeString(bname);
    fs::remove(ours_file);
    fs::remove(plain_file);
    state.counters["ratio"] = theirs / ours;
}
BENCHMARK(BM_HugeStringSaveAndLoad)->Unit(benchmark::kMillisecond)->Iterations(2)->UseRealTime();

} // namespace
