// The recursive walk over a tree of 100,000 files beside `find` on the same
// tree: each iteration runs both and the "ratio" counter is walk time over
// find time (the walk in process, find as a child process reading the same
// directories; with sizes, find prints each size so it stats every file).
#include "files/tree_walk.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>

namespace fs = std::filesystem;
using brindle::platform::DirEntry;
using brindle::platform::EntryDetail;

namespace {

// 100 directories of 1,000 files, made once, in memory when possible.
const fs::path &tree() {
    static const fs::path root = [] {
        std::error_code e;
        const fs::path base = fs::is_directory("/dev/shm", e) ? fs::path("/dev/shm") : fs::temp_directory_path();
        fs::path r = base / "brindle-files-bench";
        fs::remove_all(r, e);
        for (int d = 0; d < 100; ++d) {
            const fs::path dir = r / ("d" + std::to_string(d));
            fs::create_directories(dir);
            for (int f = 0; f < 1000; ++f) {
                std::FILE *file = std::fopen((dir / ("f" + std::to_string(f))).c_str(), "wb");
                if (file) {
                    std::fputs("x", file);
                    std::fclose(file);
                }
            }
        }
        std::atexit([] {
            std::error_code ignored;
            fs::remove_all(fs::path("/dev/shm") / "brindle-files-bench", ignored);
            fs::remove_all(fs::temp_directory_path() / "brindle-files-bench", ignored);
        });
        return r;
    }();
    return root;
}

double seconds_since(std::chrono::steady_clock::time_point t0) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
}

void walk_vs_find(benchmark::State &state, EntryDetail detail, const char *find_args) {
    const fs::path &root = tree();
    const std::string command = "find '" + root.string() + "' " + find_args + " > /dev/null";
    double walk = 0, find = 0;
    size_t files = 0;
    for (auto _ : state) {
        auto t0 = std::chrono::steady_clock::now();
        files = 0;
        double bytes = 0;
        brindle::files::walk_tree(root.string(), detail, true, [&](const std::string &, const DirEntry &e) {
            if (!(e.attributes & brindle::platform::kAttrDirectory)) {
                ++files;
                bytes += static_cast<double>(e.size);
            }
            return true;
        });
        benchmark::DoNotOptimize(bytes);
        const double w = seconds_since(t0);
        walk += w;
        state.SetIterationTime(w);
        t0 = std::chrono::steady_clock::now();
        if (std::system(command.c_str()) != 0)
            state.SkipWithError("find failed");
        find += seconds_since(t0);
    }
    state.counters["files"] = static_cast<double>(files);
    state.counters["find_ms"] = find * 1000 / static_cast<double>(state.iterations());
    state.counters["ratio"] = find > 0 ? walk / find : 0;
}

void BM_WalkCountVsFind(benchmark::State &state) { walk_vs_find(state, EntryDetail::Kind, "-type f"); }
void BM_WalkSizesVsFind(benchmark::State &state) { walk_vs_find(state, EntryDetail::Size, "-type f -printf '%s\\n'"); }

} // namespace

BENCHMARK(BM_WalkCountVsFind)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_WalkSizesVsFind)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
