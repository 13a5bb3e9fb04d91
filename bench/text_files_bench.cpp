// Whole-file text operations beside the system's tools on one generated
// file (BRINDLE_TEXT_BENCH_MB megabytes, 1,024 by default, in the temporary
// directory, deleted at exit): line counting against `wc -l`, case
// conversion against `tr`, search against `grep -c`, stream line reads
// against the C runtime's fgets, and the file sort of 10 million lines
// against `sort` with its peak memory beside the file's size. Each "ratio"
// counter is the tool's best time over ours (above 1: we are faster): the
// two run in turn in every iteration, so that a load from elsewhere on the
// machine falls on both alike, and the best of the iterations counts.
#ifndef _WIN32 // fork, wait4 and the POSIX tools
#include "files/case_copy.h"
#include "files/file_sort.h"
#include "files/file_text_search.h"
#include "files/line_counts.h"
#include "streams/stream.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

double seconds_since(std::chrono::steady_clock::time_point t0) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
}

// Lines of 10 to 70 letters, spaces and digits ending in CR LF, `lines`
// of them or up to `bytes`.
std::string make_file(const char *name, size_t bytes, size_t lines) {
    const std::string path = (fs::temp_directory_path() / name).string();
    std::FILE *f = std::fopen(path.c_str(), "wb");
    std::mt19937 rng(5);
    const char alphabet[] = "abcdefghijklmnopqrstuvwxyz ABCDEFGHIJKLMNOPQRSTUVWXYZ 0123456789";
    std::string line;
    size_t written = 0, count = 0;
    while ((bytes == 0 || written < bytes) && (lines == 0 || count < lines)) {
        line.clear();
        for (size_t n = 10 + rng() % 61; n > 0; --n)
            line.push_back(alphabet[rng() % (sizeof alphabet - 1)]);
        if (rng() % 1000 == 0)
            line += " needle";
        line += "\r\n";
        std::fwrite(line.data(), 1, line.size(), f);
        written += line.size();
        ++count;
    }
    std::fclose(f);
    return path;
}

const std::string &big_file() {
    static const std::string path = [] {
        const char *mb = std::getenv("BRINDLE_TEXT_BENCH_MB");
        const size_t size = static_cast<size_t>(mb != nullptr ? std::atol(mb) : 1024) << 20;
        std::string p = make_file("brindle-text-bench.txt", size, 0);
        std::atexit([] {
            std::error_code e;
            fs::remove(fs::temp_directory_path() / "brindle-text-bench.txt", e);
            fs::remove(fs::temp_directory_path() / "brindle-text-bench.out", e);
        });
        return p;
    }();
    return path;
}

std::string out_file() { return (fs::temp_directory_path() / "brindle-text-bench.out").string(); }

double run_tool(const std::string &command) {
    const auto t0 = std::chrono::steady_clock::now();
    if (std::system((command + " > /dev/null").c_str()) != 0)
        return -1;
    return seconds_since(t0);
}

template <class Ours> void versus(benchmark::State &state, Ours &&ours, const std::string &tool) {
    const std::string &file = big_file();
    double us = 1e30, them = 1e30;
    for (auto _ : state) {
        auto t0 = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(ours(file));
        us = std::min(us, seconds_since(t0));
        them = std::min(them, run_tool(tool));
    }
    state.counters["ratio"] = them / us;
    state.counters["ours_s"] = us;
    state.counters["tool_s"] = them;
    state.counters["MB/s"] = static_cast<double>(fs::file_size(file)) / us / 1e6;
}

void BM_LineCountVsWc(benchmark::State &state) {
    versus(state, [](const std::string &f) { return brindle::files::count_carriage_returns(f); }, "wc -l < " + big_file());
}

void BM_ToUpperVsTr(benchmark::State &state) {
    versus(state, [](const std::string &f) { return brindle::files::copy_changing_case(f, out_file(), true); },
           "tr a-z A-Z < " + big_file() + " > " + out_file() + " && echo");
}

void BM_SearchCountVsGrep(benchmark::State &state) {
    versus(state, [](const std::string &f) { return brindle::files::search_text_file(f, "needle", true, false); },
           "LC_ALL=C grep -c needle " + big_file() + "; true");
}

void BM_SearchCountNoCaseVsGrepI(benchmark::State &state) {
    versus(state, [](const std::string &f) { return brindle::files::search_text_file(f, "NEEDLE", false, false); },
           "LC_ALL=C grep -ci NEEDLE " + big_file() + "; true");
}

// Line reads: the stream (text or binary mode) against fgets on the same
// file, both with a 4,096-byte line buffer.
void BM_StreamLinesVsFgets(benchmark::State &state) {
    const std::string &file = big_file();
    const bool binary = state.range(0) != 0;
    double us = 0, them = 0;
    for (auto _ : state) {
        auto t0 = std::chrono::steady_clock::now();
        auto s = brindle::streams::Stream::open(file, binary ? "rb" : "r");
        std::string line;
        size_t lines = 0;
        for (;;) {
            line.clear();
            if (!s->get_line(&line, 4096))
                break;
            ++lines;
        }
        benchmark::DoNotOptimize(lines);
        us += seconds_since(t0);
        t0 = std::chrono::steady_clock::now();
        std::FILE *f = std::fopen(file.c_str(), "rb");
        char buffer[4096];
        size_t c_lines = 0;
        while (std::fgets(buffer, sizeof buffer, f) != nullptr)
            ++c_lines;
        std::fclose(f);
        benchmark::DoNotOptimize(c_lines);
        them += seconds_since(t0);
    }
    state.counters["ratio"] = them / us;
}

// The sort of 10 million lines in a child, so that its peak memory is its
// own; against `sort` on the same file.
void BM_FileSortTenMillionLines(benchmark::State &state) {
    static const std::string file = [] {
        std::string p = make_file("brindle-sort-bench.txt", 0, 10000000);
        std::atexit([] {
            std::error_code e;
            fs::remove(fs::temp_directory_path() / "brindle-sort-bench.txt", e);
        });
        return p;
    }();
    double us = 0, them = 0, peak_mb = 0;
    for (auto _ : state) {
        auto t0 = std::chrono::steady_clock::now();
        const pid_t child = fork();
        if (child == 0) {
            int32_t count = 0;
            _exit(brindle::files::sort_file(file, out_file(), brindle::files::FileSortRequest{}, &count) == 0 ? 0 : 1);
        }
        int status = 0;
        rusage usage{};
        wait4(child, &status, 0, &usage);
        us += seconds_since(t0);
        peak_mb = static_cast<double>(usage.ru_maxrss) / 1024;
        if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
            state.SkipWithError("the sort failed");
        them += run_tool("LC_ALL=C sort " + file + " > " + out_file() + " && echo");
    }
    state.counters["ratio"] = them / us;
    state.counters["peak_MB"] = peak_mb;
    state.counters["file_MB"] = static_cast<double>(fs::file_size(file)) / (1 << 20);
}

} // namespace

BENCHMARK(BM_LineCountVsWc)->Iterations(6)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ToUpperVsTr)->Iterations(2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SearchCountVsGrep)->Iterations(2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SearchCountNoCaseVsGrepI)->Iterations(6)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StreamLinesVsFgets)->Arg(0)->Arg(1)->Iterations(2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FileSortTenMillionLines)->Iterations(1)->Unit(benchmark::kMillisecond);

#endif
