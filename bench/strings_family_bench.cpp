// The string family's hot paths beside their anchors, in one binary:
//   CRC-32 of 64 MiB and of 32-byte strings   vs zlib's crc32
//   cInStr over 44 MB (both case rules)        vs memmem
//   cStringReplace over 44 MB                  vs a find-and-append replace
//   cDeleteSubString over 44 MB                vs the same find-and-append
// Compare the bytes_per_second of each pair.
#include "compress/crc32.h"
#include "platform/ole.h"

#include <brindle/exports.h>

#include <benchmark/benchmark.h>
#include <zlib.h>

#include <cstring>
#include <random>
#include <string>

namespace {

std::string random_bytes(size_t n, unsigned seed) {
    std::mt19937 rng(seed);
    std::string s(n, '\0');
    for (char &c : s)
        c = static_cast<char>(rng());
    return s;
}

// 44 MB of "words": lower-case letters and spaces, the needle at the end.
const std::string &text44() {
    static const std::string text = [] {
        std::mt19937 rng(3);
        std::string s(44u << 20, ' ');
        for (char &c : s)
            c = (rng() % 6 == 0) ? ' ' : static_cast<char>('a' + rng() % 26);
        s += " needle";
        return s;
    }();
    return text;
}

void BM_Crc32_Brindle(benchmark::State &state) {
    const std::string data = random_bytes(static_cast<size_t>(state.range(0)), 1);
    for (auto _ : state)
        benchmark::DoNotOptimize(brindle::compress::crc32_plain(data.data(), data.size()));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}

void BM_Crc32_Zlib(benchmark::State &state) {
    const std::string data = random_bytes(static_cast<size_t>(state.range(0)), 1);
    for (auto _ : state)
        benchmark::DoNotOptimize(::crc32(0, reinterpret_cast<const Bytef *>(data.data()), static_cast<uInt>(data.size())));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}

// The export, with its argument handling, on a 32-byte string.
void BM_StringCRC32_Export(benchmark::State &state) {
    const std::string data = random_bytes(static_cast<size_t>(state.range(0)), 2);
    BSTR s = SysAllocStringByteLen(data.data(), static_cast<UINT>(data.size()));
    for (auto _ : state)
        benchmark::DoNotOptimize(cStringCRC32(&s));
    SysFreeString(s);
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}

void BM_InStr_Export(benchmark::State &state) {
    const std::string &text = text44();
    BSTR t = SysAllocStringByteLen(text.data(), static_cast<UINT>(text.size()));
    BSTR f = SysAllocStringByteLen("needle", 6);
    const auto cs = static_cast<int16_t>(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(cInStr(1, t, f, cs));
    SysFreeString(t);
    SysFreeString(f);
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size()));
}

void BM_InStr_Memmem(benchmark::State &state) {
    const std::string &text = text44();
    for (auto _ : state)
        benchmark::DoNotOptimize(memmem(text.data(), text.size(), "needle", 6));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size()));
}

// Replaces a two-letter "word" that occurs tens of thousands of times in the
// random text, by a longer one (the result grows).
constexpr const char *kOld = "ab";
constexpr const char *kNew = "XYZ";

void BM_StringReplace_Export(benchmark::State &state) {
    const std::string &text = text44();
    BSTR t = SysAllocStringByteLen(text.data(), static_cast<UINT>(text.size()));
    const std::string pairs = std::string(kOld) + "|" + kNew;
    BSTR p = SysAllocStringByteLen(pairs.data(), static_cast<UINT>(pairs.size()));
    const auto cs = static_cast<int16_t>(state.range(0));
    for (auto _ : state) {
        BSTR r = cStringReplace(t, p, cs);
        benchmark::DoNotOptimize(r);
        SysFreeString(r);
    }
    SysFreeString(t);
    SysFreeString(p);
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size()));
}

std::string find_and_append(const std::string &text, std::string_view old_text, std::string_view new_text) {
    std::string out;
    out.reserve(text.size() + text.size() / 8);
    size_t from = 0;
    for (size_t at = text.find(old_text); at != std::string::npos; at = text.find(old_text, from)) {
        out.append(text, from, at - from);
        out.append(new_text);
        from = at + old_text.size();
    }
    out.append(text, from, std::string::npos);
    return out;
}

void BM_StringReplace_FindAppend(benchmark::State &state) {
    const std::string &text = text44();
    for (auto _ : state) {
        // The anchor also makes its result a string, as the export must.
        std::string r = find_and_append(text, kOld, kNew);
        BSTR b = SysAllocStringByteLen(r.data(), static_cast<UINT>(r.size()));
        benchmark::DoNotOptimize(b);
        SysFreeString(b);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size()));
}

void BM_DeleteSubString_Export(benchmark::State &state) {
    const std::string &text = text44();
    BSTR t = SysAllocStringByteLen(text.data(), static_cast<UINT>(text.size()));
    BSTR s = SysAllocStringByteLen(kOld, 2);
    for (auto _ : state) {
        BSTR r = cDeleteSubString(t, s, -1);
        benchmark::DoNotOptimize(r);
        SysFreeString(r);
    }
    SysFreeString(t);
    SysFreeString(s);
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size()));
}

} // namespace

BENCHMARK(BM_Crc32_Brindle)->Arg(64 << 20)->Arg(32);
BENCHMARK(BM_Crc32_Zlib)->Arg(64 << 20)->Arg(32);
BENCHMARK(BM_StringCRC32_Export)->Arg(32);
BENCHMARK(BM_InStr_Export)->Arg(-1)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_InStr_Memmem)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StringReplace_Export)->Arg(-1)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StringReplace_FindAppend)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DeleteSubString_Export)->Unit(benchmark::kMillisecond);
