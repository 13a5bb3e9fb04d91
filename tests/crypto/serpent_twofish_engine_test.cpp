// Serpent and Twofish against their published known answers (NESSIE and the
// designers' submission files; Serpent's submission file prints every value
// byte-reversed, so it is read reversed, and it must not match unreversed),
// the many-block calls against single blocks for every group remainder, and,
// where the tests link Crypto++, both cores against its Serpent and Twofish
// on random keys and data.
#include "crypto/serpent.h"
#include "crypto/twofish.h"
#include "crypto/vector_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

#ifdef BRINDLE_TEST_CRYPTOPP
#include <cryptopp/serpent.h>
#include <cryptopp/twofish.h>
#endif

using namespace brindle::crypto;
using brindle::test::from_hex;
using brindle::test::read_vector_file;
using brindle::test::stated_record_count;
using brindle::test::to_hex;

namespace {

// Every record both ways, one block and through the many-block calls (nine
// copies: two SIMD groups and a remainder). `reversed`: the file prints
// key, plaintext and ciphertext in reverse byte order.
template <class Key> void check_file(const std::string &file, bool reversed) {
    const auto records = read_vector_file(file);
    ASSERT_EQ(static_cast<int>(records.size()), stated_record_count(file)) << file;
    for (const auto &rec : records) {
        auto key = from_hex(rec.at("KEY")), pt = from_hex(rec.at("PT")), ct = from_hex(rec.at("CT"));
        ASSERT_EQ(key.size(), 32u);
        ASSERT_EQ(pt.size(), 16u);
        ASSERT_EQ(ct.size(), 16u);
        if (reversed) {
            std::reverse(key.begin(), key.end());
            std::reverse(pt.begin(), pt.end());
            std::reverse(ct.begin(), ct.end());
        }
        const std::string want_ct = to_hex(ct.data(), 16), want_pt = to_hex(pt.data(), 16);
        const Key k(std::span<const uint8_t, 32>(key.data(), 32));
        std::array<uint8_t, 16> out{};
        k.encrypt(std::span<const uint8_t, 16>(pt.data(), 16), out);
        EXPECT_EQ(to_hex(out.data(), 16), want_ct) << file << " KEY=" << rec.at("KEY");
        k.decrypt(std::span<const uint8_t, 16>(ct.data(), 16), out);
        EXPECT_EQ(to_hex(out.data(), 16), want_pt) << file << " KEY=" << rec.at("KEY");
        std::vector<uint8_t> many(9 * 16);
        for (std::size_t i = 0; i < many.size(); ++i)
            many[i] = pt[i % 16];
        k.encrypt_blocks(many.data(), many.data(), 9);
        for (std::size_t b = 0; b < 9; ++b)
            EXPECT_EQ(to_hex(many.data() + 16 * b, 16), want_ct) << file << " many, block " << b;
        k.decrypt_blocks(many.data(), many.data(), 9);
        for (std::size_t b = 0; b < 9; ++b)
            EXPECT_EQ(to_hex(many.data() + 16 * b, 16), want_pt) << file << " many, block " << b;
    }
}

// Random blocks: a run of n blocks (n = 0..13, every remainder of the
// four-block groups) gives what single-block calls give, into a separate
// buffer and in place, and the bytes after the run are not touched.
template <class Key> void check_runs(uint32_t seed) {
    std::mt19937 rng(seed);
    std::array<uint8_t, 32> key;
    for (auto &b : key)
        b = static_cast<uint8_t>(rng());
    const Key k(key);
    for (std::size_t n = 0; n <= 13; ++n) {
        std::vector<uint8_t> in(16 * n + 16), out(16 * n + 16, 0xA5), single(16 * n);
        for (auto &b : in)
            b = static_cast<uint8_t>(rng());
        for (std::size_t b = 0; b < n; ++b)
            k.encrypt(std::span<const uint8_t, 16>(in.data() + 16 * b, 16),
                      std::span<uint8_t, 16>(single.data() + 16 * b, 16));
        k.encrypt_blocks(in.data(), out.data(), n);
        EXPECT_TRUE(std::equal(single.begin(), single.end(), out.begin())) << n << " blocks";
        EXPECT_TRUE(std::all_of(out.end() - 16, out.end(), [](uint8_t b) { return b == 0xA5; })) << n;
        std::vector<uint8_t> again(in.begin(), in.begin() + 16 * n);
        k.encrypt_blocks(again.data(), again.data(), n);
        EXPECT_TRUE(again == single) << n << " blocks in place";
        k.decrypt_blocks(again.data(), again.data(), n);
        EXPECT_TRUE(std::equal(again.begin(), again.end(), in.begin())) << n << " blocks back";
    }
}

} // namespace

TEST(SerpentTwofishEngine, SerpentKnownAnswers) {
    check_file<SerpentKey>("serpent.txt", false);
    check_file<SerpentKey>("serpent_aes_submission.txt", true);
}

TEST(SerpentTwofishEngine, SerpentSubmissionOrderIsNotTheByteOrder) {
    // Read as printed, no record of the submission file matches: the core
    // takes bytes low byte first, not the printed big numbers.
    const auto records = read_vector_file("serpent_aes_submission.txt");
    for (const auto &rec : records) {
        const auto key = from_hex(rec.at("KEY")), pt = from_hex(rec.at("PT"));
        const SerpentKey k(std::span<const uint8_t, 32>(key.data(), 32));
        std::array<uint8_t, 16> out{};
        k.encrypt(std::span<const uint8_t, 16>(pt.data(), 16), out);
        EXPECT_NE(to_hex(out.data(), 16), rec.at("CT")) << rec.at("KEY");
    }
}

TEST(SerpentTwofishEngine, TwofishKnownAnswers) { check_file<TwofishKey>("twofish.txt", false); }

TEST(SerpentTwofishEngine, TwofishSubmissionChain) {
    // The designers' ecb_tbl chain for 256-bit keys: starting from an
    // all-zero key and block, each step's key is (previous plaintext,
    // plaintext before it) and its plaintext the previous ciphertext; step
    // 49 gives 37FE26FF1CF66175F5DDF4C33B97A205 (Twofish paper, ecb_tbl.txt).
    std::array<uint8_t, 16> prev{}, pt{}, ct{};
    std::array<uint8_t, 32> key{};
    for (int i = 1; i <= 49; ++i) {
        const TwofishKey k(key);
        k.encrypt(pt, ct);
        std::copy(pt.begin(), pt.end(), key.begin());
        std::copy(prev.begin(), prev.end(), key.begin() + 16);
        prev = pt;
        pt = ct;
    }
    EXPECT_EQ(to_hex(ct.data(), 16), "37FE26FF1CF66175F5DDF4C33B97A205");
}

TEST(SerpentTwofishEngine, RunsMatchSingleBlocks) {
    check_runs<SerpentKey>(21);
    check_runs<TwofishKey>(22);
}

#ifdef BRINDLE_TEST_CRYPTOPP
namespace {

template <class Ours, class TheirEnc, class TheirDec> void compare_with_cryptopp(uint32_t seed) {
    std::mt19937 rng(seed);
    for (int trial = 0; trial < 40; ++trial) {
        std::array<uint8_t, 32> key;
        for (auto &b : key)
            b = static_cast<uint8_t>(rng());
        const std::size_t blocks = 1 + rng() % 100;
        std::vector<uint8_t> pt(16 * blocks), ours(pt.size()), theirs(pt.size());
        for (auto &b : pt)
            b = static_cast<uint8_t>(rng());
        const Ours k(key);
        TheirEnc enc(key.data(), key.size());
        TheirDec dec(key.data(), key.size());
        k.encrypt_blocks(pt.data(), ours.data(), blocks);
        for (std::size_t b = 0; b < blocks; ++b)
            enc.ProcessBlock(pt.data() + 16 * b, theirs.data() + 16 * b);
        ASSERT_TRUE(ours == theirs) << "trial " << trial;
        k.decrypt_blocks(theirs.data(), ours.data(), blocks);
        for (std::size_t b = 0; b < blocks; ++b)
            dec.ProcessBlock(theirs.data() + 16 * b, theirs.data() + 16 * b);
        ASSERT_TRUE(ours == pt) << "trial " << trial;
        ASSERT_TRUE(theirs == pt) << "trial " << trial;
    }
}

} // namespace

TEST(SerpentTwofishEngine, SameAsCryptopp) {
    compare_with_cryptopp<SerpentKey, CryptoPP::Serpent::Encryption, CryptoPP::Serpent::Decryption>(31);
    compare_with_cryptopp<TwofishKey, CryptoPP::Twofish::Encryption, CryptoPP::Twofish::Decryption>(32);
}
#endif
