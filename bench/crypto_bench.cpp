// The cipher cores over 1 MiB beside OpenSSL (where the bench links it):
// Rijndael-256 ECB on the best path and on the portable one against
// OpenSSL's AES-256 ECB, MD5 against OpenSSL's MD5; DES and IDEA alone
// (OpenSSL 3 keeps them in its legacy provider). Throughput is in bytes/s;
// "ratio" = our speed / OpenSSL's.
#include "crypto/des.h"
#include "crypto/idea.h"
#include "crypto/md5.h"
#include "crypto/rijndael.h"

#include <benchmark/benchmark.h>

#ifdef BRINDLE_BENCH_OPENSSL
#include <openssl/evp.h>
#endif

#include <chrono>
#include <random>
#include <vector>

using namespace brindle::crypto;

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::size_t kBytes = 1 << 20;

std::vector<uint8_t> random_bytes(std::size_t n) {
    std::mt19937_64 rng(7);
    std::vector<uint8_t> v(n);
    for (auto& b : v) b = static_cast<uint8_t>(rng());
    return v;
}

double seconds_since(Clock::time_point t0) { return std::chrono::duration<double>(Clock::now() - t0).count(); }

template <class Key, std::size_t Block, class... Path>
double our_ecb(const Key& k, const std::vector<uint8_t>& in, std::vector<uint8_t>& out) {
    const auto t0 = Clock::now();
    for (std::size_t i = 0; i < in.size(); i += Block)
        k.encrypt(std::span<const uint8_t, Block>(in.data() + i, Block), std::span<uint8_t, Block>(out.data() + i, Block));
    return seconds_since(t0);
}

#ifdef BRINDLE_BENCH_OPENSSL
double openssl_aes(const uint8_t* key, const std::vector<uint8_t>& in, std::vector<uint8_t>& out) {
    EVP_CIPHER_CTX* ctx = EVP_CIPHER_CTX_new();
    const auto t0 = Clock::now();
    EVP_EncryptInit_ex(ctx, EVP_aes_256_ecb(), nullptr, key, nullptr);
    EVP_CIPHER_CTX_set_padding(ctx, 0);
    int n = 0;
    EVP_EncryptUpdate(ctx, out.data(), &n, in.data(), static_cast<int>(in.size()));
    const double t = seconds_since(t0);
    EVP_CIPHER_CTX_free(ctx);
    return t;
}
#endif

void BM_RijndaelEcb(benchmark::State& state) {
    const auto path = state.range(0) == 0 ? RijndaelPath::best : RijndaelPath::portable;
    const auto data = random_bytes(kBytes);
    std::vector<uint8_t> out(kBytes), theirs(kBytes);
    uint8_t key[32] = {1, 2, 3};
    const RijndaelKey k(key, path);
    double ours = 0, anchor = 0;
    for (auto _ : state) {
        const double t = our_ecb<RijndaelKey, 16>(k, data, out);
        state.SetIterationTime(t);
        ours += t;
#ifdef BRINDLE_BENCH_OPENSSL
        anchor += openssl_aes(key, data, theirs);
#endif
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kBytes));
    if (anchor > 0) state.counters["ratio"] = anchor / ours;
    state.SetLabel(path == RijndaelPath::best && rijndael_uses_hardware() ? "AES instructions" : "portable");
}
BENCHMARK(BM_RijndaelEcb)->Arg(0)->Arg(1)->UseManualTime();

void BM_Md5(benchmark::State& state) {
    const auto data = random_bytes(kBytes);
    double ours = 0, anchor = 0;
    for (auto _ : state) {
        auto t0 = Clock::now();
        benchmark::DoNotOptimize(md5(data));
        const double t = seconds_since(t0);
        state.SetIterationTime(t);
        ours += t;
#ifdef BRINDLE_BENCH_OPENSSL
        uint8_t d[16];
        unsigned int n = 0;
        t0 = Clock::now();
        EVP_Digest(data.data(), data.size(), d, &n, EVP_md5(), nullptr);
        anchor += seconds_since(t0);
        benchmark::DoNotOptimize(d);
#endif
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kBytes));
    if (anchor > 0) state.counters["ratio"] = anchor / ours;
}
BENCHMARK(BM_Md5)->UseManualTime();

template <class Key, std::size_t KeyBytes> void BM_Ecb8(benchmark::State& state) {
    const auto data = random_bytes(kBytes);
    std::vector<uint8_t> out(kBytes);
    uint8_t key[KeyBytes] = {9, 8, 7};
    const Key k(std::span<const uint8_t, KeyBytes>(key, KeyBytes));
    for (auto _ : state) state.SetIterationTime(our_ecb<Key, 8>(k, data, out));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kBytes));
}
BENCHMARK(BM_Ecb8<DesKey, 8>)->Name("BM_DesEcb")->UseManualTime();
BENCHMARK(BM_Ecb8<IdeaKey, 16>)->Name("BM_IdeaEcb")->UseManualTime();

} // namespace
