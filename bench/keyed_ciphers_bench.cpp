// The keyed ciphers over 1 MiB: Diamond2 and Diamond2 Lite ECB at the
// exports' round counts (Crypto++ 8.7 no longer has Diamond2, so these are
// plain MB/s), the Diamond2 key setup (done once per export call), and
// RUBY's cipher feedback against Crypto++'s RC5 with 20 rounds in 64-bit
// CFB, timed in the same iteration ("ratio" = our speed / Crypto++'s).
#include "crypto/cipher_feedback.h"
#include "crypto/diamond.h"
#include "crypto/diamond2.h"
#include "crypto/ruby.h"

#include <benchmark/benchmark.h>

#ifdef BRINDLE_BENCH_CRYPTOPP
#include <cryptopp/modes.h>
#include <cryptopp/rc5.h>
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
    for (auto &b : v)
        b = static_cast<uint8_t>(rng());
    return v;
}

double seconds_since(Clock::time_point t0) { return std::chrono::duration<double>(Clock::now() - t0).count(); }

// Args: block, rounds.
void BM_Diamond2Ecb(benchmark::State &state) {
    const auto block = static_cast<std::size_t>(state.range(0));
    const auto rounds = static_cast<unsigned>(state.range(1));
    const auto data = random_bytes(kBytes);
    std::vector<uint8_t> out(kBytes);
    const auto key = random_bytes(16);
    const auto k = make_diamond2_key(key, rounds, block);
    for (auto _ : state) {
        const auto t0 = Clock::now();
        k->encrypt_blocks(data.data(), out.data(), kBytes / block);
        benchmark::ClobberMemory();
        state.SetIterationTime(seconds_since(t0));
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kBytes));
}
BENCHMARK(BM_Diamond2Ecb)->Args({16, 15})->Args({16, 8})->Args({8, 15})->Args({8, 8})->UseManualTime();

void BM_Diamond2Decrypt(benchmark::State &state) {
    const auto data = random_bytes(kBytes);
    std::vector<uint8_t> out(kBytes);
    const auto k = make_diamond2_key(random_bytes(16), 15, 16);
    for (auto _ : state) {
        const auto t0 = Clock::now();
        k->decrypt_blocks(data.data(), out.data(), kBytes / 16);
        benchmark::ClobberMemory();
        state.SetIterationTime(seconds_since(t0));
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kBytes));
}
BENCHMARK(BM_Diamond2Decrypt)->UseManualTime();

// The key setup of the 16-byte block at 15 rounds (240 boxes).
void BM_Diamond2KeySetup(benchmark::State &state) {
    const auto key = random_bytes(32);
    for (auto _ : state)
        benchmark::DoNotOptimize(make_diamond2_key(key, 15, 16));
}
BENCHMARK(BM_Diamond2KeySetup);

void BM_RubyFeedback(benchmark::State &state) {
    const auto data = random_bytes(kBytes);
    std::vector<uint8_t> out(kBytes), theirs(kBytes);
    const auto key = random_bytes(16);
    const RubyKey k(key);
    double ours = 0, anchor = 0;
    for (auto _ : state) {
        auto t0 = Clock::now();
        FeedbackStream(k).encrypt(data.data(), out.data(), kBytes);
        benchmark::ClobberMemory();
        const double t = seconds_since(t0);
        state.SetIterationTime(t);
        ours += t;
#ifdef BRINDLE_BENCH_CRYPTOPP
        t0 = Clock::now();
        const uint8_t iv[8] = {};
        CryptoPP::RC5::Encryption rc5(key.data(), key.size(), kRubyRounds);
        CryptoPP::CFB_Mode_ExternalCipher::Encryption e(rc5, iv);
        e.ProcessData(theirs.data(), data.data(), kBytes);
        benchmark::ClobberMemory();
        anchor += seconds_since(t0);
#endif
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kBytes));
    if (anchor > 0)
        state.counters["ratio"] = anchor / ours;
}
BENCHMARK(BM_RubyFeedback)->UseManualTime();

} // namespace
