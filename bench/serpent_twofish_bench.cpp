// Serpent and Twofish ECB over 1 MiB through the many-block calls, each
// iteration timing ours and Crypto++'s ECB (where the bench links it) on
// the same data, one after the other, so that the load of the machine hits
// both alike. Throughput is in bytes/s; "ratio_cryptopp" = our speed /
// Crypto++'s (above 1: ours is faster).
#include "crypto/serpent.h"
#include "crypto/twofish.h"

#include <benchmark/benchmark.h>

#ifdef BRINDLE_BENCH_CRYPTOPP
#include <cryptopp/modes.h>
#include <cryptopp/serpent.h>
#include <cryptopp/twofish.h>
#endif

#include <chrono>
#include <random>
#include <vector>

using namespace brindle::crypto;

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::size_t kBytes = 1 << 20;

std::vector<uint8_t> random_bytes(std::size_t n) {
    std::mt19937_64 rng(11);
    std::vector<uint8_t> v(n);
    for (auto &b : v)
        b = static_cast<uint8_t>(rng());
    return v;
}

double seconds_since(Clock::time_point t0) { return std::chrono::duration<double>(Clock::now() - t0).count(); }

// Arg 0: encryption; 1: decryption.
template <class Key, class Theirs> void run(benchmark::State &state) {
    const bool decrypt = state.range(0) != 0;
    const auto data = random_bytes(kBytes);
    std::vector<uint8_t> out(kBytes), theirs(kBytes);
    const uint8_t key[32] = {9, 8, 7, 6, 5};
    const Key k(key);
#ifdef BRINDLE_BENCH_CRYPTOPP
    typename CryptoPP::ECB_Mode<Theirs>::Encryption enc(key, 32);
    typename CryptoPP::ECB_Mode<Theirs>::Decryption dec(key, 32);
#endif
    double ours = 0, cpp = 0;
    for (auto _ : state) {
        auto t0 = Clock::now();
        if (decrypt)
            k.decrypt_blocks(data.data(), out.data(), kBytes / 16);
        else
            k.encrypt_blocks(data.data(), out.data(), kBytes / 16);
        benchmark::ClobberMemory();
        const double t = seconds_since(t0);
        state.SetIterationTime(t);
        ours += t;
#ifdef BRINDLE_BENCH_CRYPTOPP
        t0 = Clock::now();
        if (decrypt)
            dec.ProcessData(theirs.data(), data.data(), kBytes);
        else
            enc.ProcessData(theirs.data(), data.data(), kBytes);
        benchmark::ClobberMemory();
        cpp += seconds_since(t0);
#endif
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kBytes));
    if (cpp > 0)
        state.counters["ratio_cryptopp"] = cpp / ours;
    state.SetLabel(decrypt ? "decrypt" : "encrypt");
}

#ifndef BRINDLE_BENCH_CRYPTOPP
namespace CryptoPP {
struct Serpent;
struct Twofish;
} // namespace CryptoPP
#endif

void BM_SerpentEcb(benchmark::State &state) { run<SerpentKey, CryptoPP::Serpent>(state); }
void BM_TwofishEcb(benchmark::State &state) { run<TwofishKey, CryptoPP::Twofish>(state); }

} // namespace

BENCHMARK(BM_SerpentEcb)->Arg(0)->Arg(1)->UseManualTime();
BENCHMARK(BM_TwofishEcb)->Arg(0)->Arg(1)->UseManualTime();
