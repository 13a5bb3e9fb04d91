// The enciphering file forms beside the string forms of the same cipher, on
// the same data, through the exports as a client calls them: Rijndael ECB,
// the 15-byte CBC (dispatcher code 23), DES and IDEA, each way. The file is
// written to /tmp (a disk, through the page cache), 1 GiB for Rijndael and
// 256 MiB for DES and IDEA (whose cores run at about 100 MB/s). The string
// form's time includes making its result string, as a client gets it.
// "file/string" = file bytes/s divided by string bytes/s on the wall clock,
// each form's best run of five; "file/string_cpu" the same on the thread's
// processor time (user + system, so the kernel's copies into and out of the
// page cache count). Best runs, because on a virtual machine the first touch
// of fresh memory (the string form's result, a new target's pages) now and
// then costs several times its usual time, in either form.
#include "platform/ole.h"

#include <benchmark/benchmark.h>
#include <brindle/exports.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <time.h>
#include <unistd.h>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double seconds_since(Clock::time_point t0) { return std::chrono::duration<double>(Clock::now() - t0).count(); }

// The thread's own processor time (user and system): on a machine shared
// with other work the wall clock measures the neighbours too.
double cpu_seconds() {
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) * 1e-9;
}

struct Form {
    BSTR(BRINDLE_CALL *encrypt)(BSTR *, BSTR *);
    BSTR(BRINDLE_CALL *decrypt)(BSTR *, BSTR *);
    int32_t(BRINDLE_CALL *encrypt_file)(BSTR, BSTR, BSTR *);
    int32_t(BRINDLE_CALL *decrypt_file)(BSTR, BSTR, BSTR *);
};

// The CBC dispatcher with code 23 (Rijndael) and a fixed IV, in the shape
// of the plain forms.
BSTR g_iv = nullptr;
BSTR BRINDLE_CALL cbc_encrypt(BSTR *t, BSTR *k) { return cAES2RNDencryptCBC(23, t, k, &g_iv); }
BSTR BRINDLE_CALL cbc_decrypt(BSTR *t, BSTR *k) { return cAES2RNDdecryptCBC(23, t, k, &g_iv); }
int32_t BRINDLE_CALL cbc_encrypt_file(BSTR s, BSTR d, BSTR *k) { return cAES2RNDencryptFileCBC(23, s, d, k, &g_iv); }
int32_t BRINDLE_CALL cbc_decrypt_file(BSTR s, BSTR d, BSTR *k) { return cAES2RNDdecryptFileCBC(23, s, d, k, &g_iv); }

const Form kForms[] = {
    {cRIJNDAELencrypt, cRIJNDAELdecrypt, cRIJNDAELencryptFile, cRIJNDAELdecryptFile},
    {cbc_encrypt, cbc_decrypt, cbc_encrypt_file, cbc_decrypt_file},
    {cDESencrypt, cDESdecrypt, cDESencryptFile, cDESdecryptFile},
    {cIDEAencrypt, cIDEAdecrypt, cIDEAencryptFile, cIDEAdecryptFile},
};

BSTR make(const std::string &s) { return SysAllocStringByteLen(s.data(), static_cast<UINT>(s.size())); }

void BM_CipherFileVsString(benchmark::State &state) {
    const Form &form = kForms[state.range(0)];
    const bool decrypting = state.range(1) != 0;
    const std::size_t size = static_cast<std::size_t>(state.range(2)) << 20;
    if (g_iv == nullptr)
        g_iv = make("0123456789abcdef");
    std::string data(size, '\0');
    std::mt19937_64 rng(5);
    for (std::size_t i = 0; i + 8 <= size; i += 8) {
        const uint64_t v = rng();
        std::memcpy(&data[i], &v, 8);
    }
    BSTR key = make("0123456789abcdef0123456789abcdef");
    const std::string dir = "/tmp/brindle-cipher-bench-" + std::to_string(getpid());
    std::filesystem::create_directories(dir);
    const std::string plain_name = dir + "/plain.bin", enc_name = dir + "/data.enc", out_name = dir + "/out.bin";
    BSTR plain_file = make(plain_name), enc_file = make(enc_name), out_file = make(out_name);
    {
        std::ofstream(plain_name, std::ios::binary).write(data.data(), static_cast<std::streamsize>(size));
    }
    BSTR text = make(data);
    BSTR enciphered = form.encrypt(&text, &key);
    if (decrypting)
        form.encrypt_file(plain_file, enc_file, &key);
    double string_s = 1e9, file_s = 1e9, string_cpu = 1e9, file_cpu = 1e9;
    for (auto _ : state) {
        auto t0 = Clock::now();
        double c0 = cpu_seconds();
        BSTR r = decrypting ? form.decrypt(&enciphered, &key) : form.encrypt(&text, &key);
        string_s = std::min(string_s, seconds_since(t0));
        string_cpu = std::min(string_cpu, cpu_seconds() - c0);
        benchmark::DoNotOptimize(r);
        SysFreeString(r);
        t0 = Clock::now();
        c0 = cpu_seconds();
        const int32_t n = decrypting ? form.decrypt_file(enc_file, out_file, &key)
                                     : form.encrypt_file(plain_file, out_file, &key);
        const double file_this = seconds_since(t0);
        file_s = std::min(file_s, file_this);
        file_cpu = std::min(file_cpu, cpu_seconds() - c0);
        benchmark::DoNotOptimize(n);
        state.SetIterationTime(file_this);
    }
    const double runs = static_cast<double>(state.iterations());
    state.counters["string_MBps"] = static_cast<double>(size) / string_s / 1e6;
    state.counters["file_MBps"] = static_cast<double>(size) / file_s / 1e6;
    state.counters["file/string"] = string_s / file_s;
    state.counters["file/string_cpu"] = string_cpu / file_cpu;
    state.SetBytesProcessed(static_cast<int64_t>(runs * static_cast<double>(size)));
    SysFreeString(text);
    SysFreeString(enciphered);
    SysFreeString(key);
    SysFreeString(plain_file);
    SysFreeString(enc_file);
    SysFreeString(out_file);
    std::error_code e;
    std::filesystem::remove_all(dir, e);
}

// Args: form (0 Rijndael ECB, 1 Rijndael CBC, 2 DES, 3 IDEA), decrypting, MiB.
BENCHMARK(BM_CipherFileVsString)
    ->Args({0, 0, 1024})->Args({0, 1, 1024})->Args({1, 0, 1024})->Args({1, 1, 1024})
    ->Args({2, 0, 256})->Args({2, 1, 256})->Args({3, 0, 256})->Args({3, 1, 256})
    ->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
