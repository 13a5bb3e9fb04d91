// The coders on a corpus gathered from the machine: manual pages (text),
// documentation and programs (binary). zlib's compress2 and gzwrite run
// beside our zlib paths as anchors. The published byte-pair and LZARI
// programs are measured outside the repository; their figures are in the
// notes of the compression work.
#include "compress/byte_pair.h"
#include "compress/lzari.h"
#include "platform/ole.h"

#include <benchmark/benchmark.h>
#include <brindle/exports.h>
#include <zlib.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace brindle::compress;

// Files of a folder in name order, appended (gzip files expanded) until
// `limit` bytes are gathered.
void gather(const char *folder, const std::string &suffix, size_t limit, std::string &out) {
    std::vector<fs::path> files;
    std::error_code ec;
    for (const auto &entry : fs::directory_iterator(folder, ec))
        if (entry.is_regular_file(ec) && entry.path().string().ends_with(suffix))
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    const size_t stop = out.size() + limit;
    std::vector<char> buffer(1 << 16);
    for (const fs::path &file : files) {
        gzFile in = gzopen(file.c_str(), "rb"); // plain files are read as they are
        if (in == nullptr)
            continue;
        int got;
        while (out.size() < stop && (got = gzread(in, buffer.data(), static_cast<unsigned>(buffer.size()))) > 0)
            out.append(buffer.data(), static_cast<size_t>(std::min<size_t>(got, stop - out.size())));
        gzclose(in);
        if (out.size() >= stop)
            break;
    }
}

const std::string &text_corpus() {
    static const std::string corpus = [] {
        std::string s;
        gather("/usr/share/man/man1", ".gz", 6u << 20, s);
        gather("/usr/share/man/man3", ".gz", 2u << 20, s);
        return s;
    }();
    return corpus;
}

const std::string &mixed_corpus() {
    static const std::string corpus = [] {
        std::string s = text_corpus();
        gather("/usr/bin", "", 4u << 20, s);
        return s;
    }();
    return corpus;
}

const std::string &pick(int which) { return which == 0 ? text_corpus() : mixed_corpus(); }

void label(benchmark::State &state, const std::string &data) {
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(data.size()));
    state.SetLabel(state.range(0) == 0 ? "man pages" : "man pages + programs");
}

void BM_BytePairCompress(benchmark::State &state) {
    const std::string &data = pick(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(byte_pair_compress(data));
    label(state, data);
}

void BM_BytePairExpand(benchmark::State &state) {
    const std::string &data = pick(static_cast<int>(state.range(0)));
    const std::string packed = byte_pair_compress(data);
    std::string out;
    for (auto _ : state) {
        out.clear();
        benchmark::DoNotOptimize(byte_pair_expand(packed, out));
    }
    label(state, data);
}

void BM_LzariEncode(benchmark::State &state) {
    const std::string &data = pick(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        MemorySource in(data);
        StringSink out;
        benchmark::DoNotOptimize(lzari_encode(in, static_cast<uint32_t>(data.size()), out));
    }
    label(state, data);
}

void BM_LzariDecode(benchmark::State &state) {
    const std::string &data = pick(static_cast<int>(state.range(0)));
    MemorySource source(data);
    StringSink packed;
    lzari_encode(source, static_cast<uint32_t>(data.size()), packed);
    for (auto _ : state) {
        MemorySource in(packed.str());
        StringSink out;
        benchmark::DoNotOptimize(lzari_decode(in, out));
    }
    label(state, data);
}

// zlib strings: our export beside zlib's own compress2 at the default level.
void BM_GzipStringCompress(benchmark::State &state) {
    const std::string &data = pick(static_cast<int>(state.range(0)));
    BSTR text = SysAllocStringByteLen(data.data(), static_cast<UINT>(data.size()));
    for (auto _ : state) {
        BSTR packed = cGZIPStringCompress(&text);
        benchmark::DoNotOptimize(packed);
        SysFreeString(packed);
    }
    SysFreeString(text);
    label(state, data);
}

void BM_ZlibCompress2Anchor(benchmark::State &state) {
    const std::string &data = pick(static_cast<int>(state.range(0)));
    std::vector<Bytef> out(compressBound(static_cast<uLong>(data.size())));
    for (auto _ : state) {
        uLongf size = static_cast<uLongf>(out.size());
        benchmark::DoNotOptimize(compress2(out.data(), &size, reinterpret_cast<const Bytef *>(data.data()),
                                           static_cast<uLong>(data.size()), Z_DEFAULT_COMPRESSION));
    }
    label(state, data);
}

void BM_GzipStringExpand(benchmark::State &state) {
    const std::string &data = pick(static_cast<int>(state.range(0)));
    BSTR text = SysAllocStringByteLen(data.data(), static_cast<UINT>(data.size()));
    BSTR packed = cGZIPStringCompress2(&text);
    for (auto _ : state) {
        BSTR out = cGZIPStringExpand2(&packed);
        benchmark::DoNotOptimize(out);
        SysFreeString(out);
    }
    SysFreeString(packed);
    SysFreeString(text);
    label(state, data);
}

void BM_ZlibUncompressAnchor(benchmark::State &state) {
    const std::string &data = pick(static_cast<int>(state.range(0)));
    std::vector<Bytef> packed(compressBound(static_cast<uLong>(data.size())));
    uLongf packed_size = static_cast<uLongf>(packed.size());
    compress2(packed.data(), &packed_size, reinterpret_cast<const Bytef *>(data.data()),
              static_cast<uLong>(data.size()), Z_DEFAULT_COMPRESSION);
    std::vector<Bytef> out(data.size());
    for (auto _ : state) {
        uLongf size = static_cast<uLongf>(out.size());
        benchmark::DoNotOptimize(uncompress(out.data(), &size, packed.data(), packed_size));
    }
    label(state, data);
}

// Gzip files: our export beside a plain gzwrite loop over the same file.
std::string corpus_file(int which) {
    const std::string name = (fs::temp_directory_path() / ("brindle-bench-" + std::to_string(which))).string();
    std::ofstream(name, std::ios::binary) << pick(which);
    return name;
}

void BM_GzipFileCompress(benchmark::State &state) {
    const std::string source = corpus_file(static_cast<int>(state.range(0)));
    const std::string target = source + ".gz";
    BSTR s = SysAllocStringByteLen(source.data(), static_cast<UINT>(source.size()));
    BSTR t = SysAllocStringByteLen(target.data(), static_cast<UINT>(target.size()));
    for (auto _ : state)
        benchmark::DoNotOptimize(cGZIPFileCompress(s, t));
    SysFreeString(s);
    SysFreeString(t);
    fs::remove(source);
    fs::remove(target);
    label(state, pick(static_cast<int>(state.range(0))));
}

void BM_GzwriteAnchor(benchmark::State &state) {
    const std::string source = corpus_file(static_cast<int>(state.range(0)));
    const std::string target = source + ".gz";
    std::vector<char> buffer(1 << 16);
    for (auto _ : state) {
        FILE *in = std::fopen(source.c_str(), "rb");
        gzFile out = gzopen(target.c_str(), "wb");
        size_t got;
        while ((got = std::fread(buffer.data(), 1, buffer.size(), in)) > 0)
            gzwrite(out, buffer.data(), static_cast<unsigned>(got));
        std::fclose(in);
        benchmark::DoNotOptimize(gzclose(out));
    }
    fs::remove(source);
    fs::remove(target);
    label(state, pick(static_cast<int>(state.range(0))));
}

// LZARI file to file through the exports, the form the published program
// takes (it reads and writes a byte at a time through stdio).
void lzari_file_bench(benchmark::State &state, bool expand) {
    const std::string plain = corpus_file(static_cast<int>(state.range(0)));
    const std::string packed = plain + ".lz", restored = plain + ".out";
    BSTR p = SysAllocStringByteLen(plain.data(), static_cast<UINT>(plain.size()));
    BSTR k = SysAllocStringByteLen(packed.data(), static_cast<UINT>(packed.size()));
    BSTR o = SysAllocStringByteLen(restored.data(), static_cast<UINT>(restored.size()));
    if (expand)
        cLZARIcompress(p, k);
    for (auto _ : state)
        benchmark::DoNotOptimize(expand ? cLZARIexpand(k, o) : cLZARIcompress(p, k));
    SysFreeString(p);
    SysFreeString(k);
    SysFreeString(o);
    for (const std::string &name : {plain, packed, restored})
        fs::remove(name);
    label(state, pick(static_cast<int>(state.range(0))));
}

void BM_LzariFileCompress(benchmark::State &state) { lzari_file_bench(state, false); }
void BM_LzariFileExpand(benchmark::State &state) { lzari_file_bench(state, true); }

} // namespace

BENCHMARK(BM_BytePairCompress)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BytePairExpand)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LzariEncode)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LzariDecode)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LzariFileCompress)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LzariFileExpand)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GzipStringCompress)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ZlibCompress2Anchor)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GzipStringExpand)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ZlibUncompressAnchor)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GzipFileCompress)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GzwriteAnchor)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
