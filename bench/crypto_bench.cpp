// The cipher cores over 1 MiB beside OpenSSL and Crypto++ (where the bench
// links them), each iteration timing ours and the anchor on the same data:
// - Rijndael-256 ECB through the many-block call, on the best path and on
//   the portable one, against OpenSSL's AES-256 ECB (and Crypto++'s AES);
// - a chain of single-block Rijndael encryptions, each input the next
//   plaintext block XORed with the previous output over 15 bytes (what the
//   chained mode of the block-cipher framing does), against OpenSSL's
//   AES-256 CBC encryption, which waits on the same chain;
// - MD5 against OpenSSL's MD5;
// - DES and IDEA ECB through the many-block calls against Crypto++'s ECB
//   (OpenSSL 3 keeps those two in its legacy provider).
// Throughput is in bytes/s; "ratio" = our speed / the anchor's.
#include "crypto/des.h"
#include "crypto/idea.h"
#include "crypto/md5.h"
#include "crypto/rijndael.h"

#include <benchmark/benchmark.h>

#ifdef BRINDLE_BENCH_OPENSSL
#include <openssl/evp.h>
#endif
#ifdef BRINDLE_BENCH_CRYPTOPP
#include <cryptopp/aes.h>
#include <cryptopp/des.h>
#include <cryptopp/idea.h>
#include <cryptopp/modes.h>
#endif

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include <chrono>
#include <cstring>
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

template <class Key, std::size_t Block>
double our_ecb(const Key& k, const std::vector<uint8_t>& in, std::vector<uint8_t>& out) {
    const auto t0 = Clock::now();
    k.encrypt_blocks(in.data(), out.data(), in.size() / Block);
    benchmark::ClobberMemory();
    return seconds_since(t0);
}

void report(benchmark::State& state, double ours, double anchor) {
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kBytes));
    if (anchor > 0) state.counters["ratio"] = anchor / ours;
}

#ifdef BRINDLE_BENCH_OPENSSL
double openssl_cipher(const EVP_CIPHER* cipher, const uint8_t* key, const std::vector<uint8_t>& in,
                      std::vector<uint8_t>& out) {
    EVP_CIPHER_CTX* ctx = EVP_CIPHER_CTX_new();
    const uint8_t iv[16] = {};
    const auto t0 = Clock::now();
    EVP_EncryptInit_ex(ctx, cipher, nullptr, key, iv);
    EVP_CIPHER_CTX_set_padding(ctx, 0);
    int n = 0;
    EVP_EncryptUpdate(ctx, out.data(), &n, in.data(), static_cast<int>(in.size()));
    benchmark::ClobberMemory();
    const double t = seconds_since(t0);
    EVP_CIPHER_CTX_free(ctx);
    return t;
}
#endif

#ifdef BRINDLE_BENCH_CRYPTOPP
template <class Cipher>
double cryptopp_ecb(const uint8_t* key, std::size_t key_bytes, const std::vector<uint8_t>& in,
                    std::vector<uint8_t>& out) {
    const auto t0 = Clock::now();
    typename CryptoPP::ECB_Mode<Cipher>::Encryption e(key, key_bytes);
    e.ProcessData(out.data(), in.data(), in.size());
    benchmark::ClobberMemory();
    return seconds_since(t0);
}
#endif

// Arg 0: the best path; 1: the portable rounds (bitsliced).
void BM_RijndaelEcb(benchmark::State& state) {
    const auto path = state.range(0) == 0 ? RijndaelPath::best : RijndaelPath::portable;
    const auto data = random_bytes(kBytes);
    std::vector<uint8_t> out(kBytes), theirs(kBytes);
    uint8_t key[32] = {1, 2, 3};
    const RijndaelKey k(key, path);
    double ours = 0, anchor = 0, cpp = 0;
    for (auto _ : state) {
        const double t = our_ecb<RijndaelKey, 16>(k, data, out);
        state.SetIterationTime(t);
        ours += t;
#ifdef BRINDLE_BENCH_OPENSSL
        anchor += openssl_cipher(EVP_aes_256_ecb(), key, data, theirs);
#endif
#ifdef BRINDLE_BENCH_CRYPTOPP
        cpp += cryptopp_ecb<CryptoPP::AES>(key, 32, data, theirs);
#endif
    }
    report(state, ours, anchor);
    if (cpp > 0) state.counters["ratio_cryptopp"] = cpp / ours;
    state.SetLabel(path == RijndaelPath::best && rijndael_uses_hardware() ? "AES instructions" : "portable");
}
BENCHMARK(BM_RijndaelEcb)->Arg(0)->Arg(1)->UseManualTime();

void BM_RijndaelDecryptEcb(benchmark::State& state) {
    const auto path = state.range(0) == 0 ? RijndaelPath::best : RijndaelPath::portable;
    const auto data = random_bytes(kBytes);
    std::vector<uint8_t> out(kBytes);
    uint8_t key[32] = {1, 2, 3};
    const RijndaelKey k(key, path);
    for (auto _ : state) {
        const auto t0 = Clock::now();
        k.decrypt_blocks(data.data(), out.data(), kBytes / 16);
        benchmark::ClobberMemory();
        state.SetIterationTime(seconds_since(t0));
    }
    report(state, 1, 0);
    state.SetLabel(path == RijndaelPath::best && rijndael_uses_hardware() ? "AES instructions" : "portable");
}
BENCHMARK(BM_RijndaelDecryptEcb)->Arg(0)->Arg(1)->UseManualTime();

// The chained mode: block i is enciphered from plaintext block i with its
// first 15 bytes XORed with ciphertext block i - 1. Arg 0: one single-block
// call per block, so every call waits for the one before (the XOR between
// the calls in 16-byte registers, so it adds no store-to-load stall);
// Arg 1: the chained entry point, which keeps the chain in a register.
void BM_RijndaelChain(benchmark::State& state) {
    const auto data = random_bytes(kBytes);
    std::vector<uint8_t> out(kBytes), theirs(kBytes);
    uint8_t key[32] = {1, 2, 3};
    const RijndaelKey k(key);
    const uint8_t iv[16] = {};
    double ours = 0, anchor = 0;
    for (auto _ : state) {
        const auto t0 = Clock::now();
        if (state.range(0) == 0) {
#ifdef __SSE2__
            const __m128i mask = _mm_set_epi32(0x00FFFFFF, -1, -1, -1);
            __m128i prev = _mm_setzero_si128();
            alignas(16) uint8_t x[16];
            for (std::size_t i = 0; i < kBytes; i += 16) {
                const __m128i p = _mm_loadu_si128(reinterpret_cast<const __m128i*>(data.data() + i));
                _mm_store_si128(reinterpret_cast<__m128i*>(x), _mm_xor_si128(p, _mm_and_si128(prev, mask)));
                uint8_t* o = out.data() + i;
                k.encrypt(x, std::span<uint8_t, 16>(o, 16));
                prev = _mm_loadu_si128(reinterpret_cast<const __m128i*>(o));
            }
#else
            uint8_t x[16] = {};
            for (std::size_t i = 0; i < kBytes; i += 16) {
                for (int j = 0; j < 15; ++j) x[j] ^= data[i + j];
                x[15] = data[i + 15];
                k.encrypt(x, std::span<uint8_t, 16>(out.data() + i, 16));
                std::memcpy(x, out.data() + i, 16);
            }
#endif
        } else {
            k.encrypt_chained(iv, data.data(), out.data(), kBytes / 16, 15);
        }
        benchmark::ClobberMemory();
        const double t = seconds_since(t0);
        state.SetIterationTime(t);
        ours += t;
#ifdef BRINDLE_BENCH_OPENSSL
        anchor += openssl_cipher(EVP_aes_256_cbc(), key, data, theirs);
#endif
    }
    report(state, ours, anchor);
    state.SetLabel(state.range(0) == 0 ? "single-block calls" : "encrypt_chained");
}
BENCHMARK(BM_RijndaelChain)->Arg(0)->Arg(1)->UseManualTime();

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
    report(state, ours, anchor);
}
BENCHMARK(BM_Md5)->UseManualTime();

template <class Key, class Anchor, std::size_t KeyBytes> void BM_Ecb8(benchmark::State& state) {
    const auto data = random_bytes(kBytes);
    std::vector<uint8_t> out(kBytes), theirs(kBytes);
    uint8_t key[KeyBytes] = {9, 8, 7};
    const Key k(std::span<const uint8_t, KeyBytes>(key, KeyBytes));
    double ours = 0, anchor = 0;
    for (auto _ : state) {
        const double t = our_ecb<Key, 8>(k, data, out);
        state.SetIterationTime(t);
        ours += t;
#ifdef BRINDLE_BENCH_CRYPTOPP
        anchor += cryptopp_ecb<Anchor>(key, KeyBytes, data, theirs);
#endif
    }
    report(state, ours, anchor);
}

#ifdef BRINDLE_BENCH_CRYPTOPP
using DesAnchor = CryptoPP::DES;
using IdeaAnchor = CryptoPP::IDEA;
#else
using DesAnchor = void;
using IdeaAnchor = void;
#endif
BENCHMARK(BM_Ecb8<DesKey, DesAnchor, 8>)->Name("BM_DesEcb")->UseManualTime();
BENCHMARK(BM_Ecb8<IdeaKey, IdeaAnchor, 16>)->Name("BM_IdeaEcb")->UseManualTime();

} // namespace
