// The 16-byte block cores that OpenSSL does not carry (MARS, RC6, CAST-256,
// Serpent, Twofish): ECB over 4 MiB through the many-block calls, each
// iteration timing ours and Crypto++'s ECB (where the bench links it) on the
// same data one after the other, so that the load of the machine hits both
// alike. Throughput is in bytes/s; "ratio_cryptopp" = our speed / Crypto++'s
// (above 1: ours is faster).
#include "crypto/cast256.h"
#include "crypto/mars.h"
#include "crypto/rc6.h"
#include "crypto/serpent.h"
#include "crypto/twofish.h"

#include <benchmark/benchmark.h>

#ifdef BRINDLE_BENCH_CRYPTOPP
#include <cryptopp/cast.h>
#include <cryptopp/mars.h>
#include <cryptopp/modes.h>
#include <cryptopp/rc6.h>
#include <cryptopp/serpent.h>
#include <cryptopp/twofish.h>
#endif

#include <chrono>
#include <random>
#include <vector>

using namespace brindle::crypto;

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::size_t kBytes = 4 << 20;

std::vector<uint8_t> random_bytes(std::size_t n) {
    std::mt19937_64 rng(11);
    std::vector<uint8_t> v(n);
    for (auto& b : v) b = static_cast<uint8_t>(rng());
    return v;
}

double seconds_since(Clock::time_point t0) { return std::chrono::duration<double>(Clock::now() - t0).count(); }

// Arg 0: encryption, 1: decryption.
template <class Key, class Anchor>
void BM_Ecb16(benchmark::State& state) {
    const bool decrypting = state.range(0) != 0;
    const auto data = random_bytes(kBytes);
    std::vector<uint8_t> out(kBytes), theirs(kBytes);
    const auto key_bytes = random_bytes(32);
    const Key k(std::span<const uint8_t, 32>(key_bytes.data(), 32));
    double ours = 0, anchor = 0;
    for (auto _ : state) {
        auto t0 = Clock::now();
        if (decrypting)
            k.decrypt_blocks(data.data(), out.data(), kBytes / 16);
        else
            k.encrypt_blocks(data.data(), out.data(), kBytes / 16);
        benchmark::ClobberMemory();
        const double t = seconds_since(t0);
        state.SetIterationTime(t);
        ours += t;
#ifdef BRINDLE_BENCH_CRYPTOPP
        if constexpr (!std::is_void_v<Anchor>) {
            t0 = Clock::now();
            if (decrypting) {
                typename CryptoPP::ECB_Mode<Anchor>::Decryption d(key_bytes.data(), 32);
                d.ProcessData(theirs.data(), data.data(), kBytes);
            } else {
                typename CryptoPP::ECB_Mode<Anchor>::Encryption e(key_bytes.data(), 32);
                e.ProcessData(theirs.data(), data.data(), kBytes);
            }
            benchmark::ClobberMemory();
            anchor += seconds_since(t0);
        }
#endif
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kBytes));
    if (anchor > 0)
        state.counters["ratio_cryptopp"] = anchor / ours;
    state.SetLabel(decrypting ? "decrypt" : "encrypt");
}

#ifdef BRINDLE_BENCH_CRYPTOPP
using MarsAnchor = CryptoPP::MARS;
using Rc6Anchor = CryptoPP::RC6;
using Cast256Anchor = CryptoPP::CAST256;
using SerpentAnchor = CryptoPP::Serpent;
using TwofishAnchor = CryptoPP::Twofish;
#else
using MarsAnchor = void;
using Rc6Anchor = void;
using Cast256Anchor = void;
using SerpentAnchor = void;
using TwofishAnchor = void;
#endif

} // namespace

BENCHMARK(BM_Ecb16<MarsKey, MarsAnchor>)->Name("BM_MarsEcb")->Arg(0)->Arg(1)->UseManualTime();
BENCHMARK(BM_Ecb16<Rc6Key, Rc6Anchor>)->Name("BM_Rc6Ecb")->Arg(0)->Arg(1)->UseManualTime();
BENCHMARK(BM_Ecb16<Cast256Key, Cast256Anchor>)->Name("BM_Cast256Ecb")->Arg(0)->Arg(1)->UseManualTime();
BENCHMARK(BM_Ecb16<SerpentKey, SerpentAnchor>)->Name("BM_SerpentEcb")->Arg(0)->Arg(1)->UseManualTime();
BENCHMARK(BM_Ecb16<TwofishKey, TwofishAnchor>)->Name("BM_TwofishEcb")->Arg(0)->Arg(1)->UseManualTime();
