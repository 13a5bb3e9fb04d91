// The Diamond, Diamond2 and RC5 cores and RUBY's cipher feedback, beside
// independent answers: the published Diamond2 vectors (both block sizes),
// Rivest's RC5-32/12/16 vectors, Crypto++'s RC5 on random keys, and the
// CFB relation built here from single-block calls.
#include "crypto/cipher_feedback.h"
#include "crypto/diamond.h"
#include "crypto/diamond2.h"
#include "crypto/ruby.h"
#include "crypto/vector_file.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#ifdef BRINDLE_TEST_CRYPTOPP
#include <cryptopp/rc5.h>
#endif

using namespace brindle::crypto;
using namespace brindle::test;

namespace {

std::vector<uint8_t> random_bytes(std::mt19937 &rng, std::size_t n) {
    std::vector<uint8_t> v(n);
    for (auto &b : v)
        b = static_cast<uint8_t>(rng());
    return v;
}

TEST(DiamondEngine, Diamond2VectorsBothWays) {
    const auto records = read_vector_file("diamond2.txt");
    ASSERT_EQ(static_cast<int>(records.size()), stated_record_count("diamond2.txt"));
    int lite = 0;
    for (const auto &r : records) {
        const std::size_t block = std::stoul(r.at("BLOCK"));
        const unsigned rounds = static_cast<unsigned>(std::stoul(r.at("ROUNDS")));
        const auto key = from_hex(r.at("KEY")), pt = from_hex(r.at("PT")), ct = from_hex(r.at("CT"));
        lite += block == 8;
        const auto k = make_diamond2_key(key, rounds, block);
        ASSERT_NE(k, nullptr) << r.at("KEY");
        std::vector<uint8_t> out(block);
        k->encrypt_blocks(pt.data(), out.data(), 1);
        EXPECT_EQ(out, ct) << "encrypt, block " << block << ", rounds " << rounds;
        k->decrypt_blocks(ct.data(), out.data(), 1);
        EXPECT_EQ(out, pt) << "decrypt, block " << block << ", rounds " << rounds;
        // Several blocks at once, in place: each block as alone.
        std::vector<uint8_t> many;
        for (int i = 0; i < 3; ++i)
            many.insert(many.end(), pt.begin(), pt.end());
        k->encrypt_blocks(many.data(), many.data(), 3);
        for (int i = 0; i < 3; ++i)
            EXPECT_TRUE(std::equal(ct.begin(), ct.end(), many.begin() + i * block));
    }
    EXPECT_EQ(lite, 3);
}

// The published limits: 5..15 rounds with the 16-byte block, 4..30 with
// the 8-byte block; other blocks and empty keys are refused.
TEST(DiamondEngine, KeySetupRefusesRoundsOutsideTheLimits) {
    const std::vector<uint8_t> key = {1, 2, 3, 4, 5};
    struct Case {
        unsigned rounds;
        std::size_t block;
        bool ok;
    } cases[] = {{4, 16, false}, {5, 16, true}, {15, 16, true}, {16, 16, false}, {30, 16, false},
                 {3, 8, false},  {4, 8, true},  {30, 8, true},  {31, 8, false},  {10, 12, false}};
    for (const auto &c : cases) {
        EXPECT_EQ(make_diamond_key(key, c.rounds, c.block) != nullptr, c.ok) << c.rounds << "/" << c.block;
        EXPECT_EQ(make_diamond2_key(key, c.rounds, c.block) != nullptr, c.ok) << c.rounds << "/" << c.block;
    }
    EXPECT_EQ(make_diamond_key({}, 10, 16), nullptr);
    EXPECT_EQ(make_diamond2_key({}, 10, 8), nullptr);
}

// The modes of the exports, as the reference text states them.
TEST(DiamondEngine, ModeChoosesBlockAndRounds) {
    struct Case {
        int mode;
        std::size_t block;
        unsigned diamond, diamond2;
    } cases[] = {{-3, 16, 15, 15}, {-2, 8, 15, 15}, {0, 8, 15, 15}, {1, 16, 15, 15}, {2, 8, 15, 15},
                 {3, 16, 30, 8},   {4, 8, 30, 8},   {5, 16, 30, 8}, {32767, 16, 30, 8}};
    for (const auto &c : cases) {
        EXPECT_EQ(diamond_mode_block(c.mode), c.block) << c.mode;
        EXPECT_EQ(diamond_mode_rounds(c.mode), c.diamond) << c.mode;
        EXPECT_EQ(diamond2_mode_rounds(c.mode), c.diamond2) << c.mode;
    }
}

// Decrypting undoes encrypting for both versions, both blocks and the edge
// round counts, and the two versions are different ciphers (the revised box
// generation changes every box after the first).
TEST(DiamondEngine, RoundTripsAndVersionsDiffer) {
    std::mt19937 rng(7);
    for (std::size_t block : {8u, 16u}) {
        for (unsigned rounds : {5u, 8u, 15u}) {
            const auto key = random_bytes(rng, 5 + rounds);
            const auto d1 = make_diamond_key(key, rounds, block);
            const auto d2 = make_diamond2_key(key, rounds, block);
            ASSERT_TRUE(d1 && d2);
            const auto pt = random_bytes(rng, block * 64);
            std::vector<uint8_t> c1(pt.size()), c2(pt.size()), back(pt.size());
            d1->encrypt_blocks(pt.data(), c1.data(), 64);
            d2->encrypt_blocks(pt.data(), c2.data(), 64);
            EXPECT_NE(c1, pt);
            EXPECT_NE(c1, c2);
            d1->decrypt_blocks(c1.data(), back.data(), 64);
            EXPECT_EQ(back, pt);
            d2->decrypt_blocks(c2.data(), back.data(), 64);
            EXPECT_EQ(back, pt);
        }
    }
    // The key length is an input: a key and the same key with a zero byte
    // appended give different ciphers.
    const std::vector<uint8_t> k5 = {9, 8, 7, 6, 5}, k6 = {9, 8, 7, 6, 5, 0};
    const uint8_t zero[16] = {};
    uint8_t a[16], b[16];
    make_diamond2_key(k5, 10, 16)->encrypt_blocks(zero, a, 1);
    make_diamond2_key(k6, 10, 16)->encrypt_blocks(zero, b, 1);
    EXPECT_NE(std::vector<uint8_t>(a, a + 16), std::vector<uint8_t>(b, b + 16));
}

// Rivest, "The RC5 Encryption Algorithm" (1994), appendix: RC5-32/12/16,
// each plaintext the ciphertext of the line before.
TEST(RubyEngine, Rc5PublishedVectors) {
    struct Case {
        const char *key, *pt, *ct;
    } cases[] = {
        {"00000000000000000000000000000000", "0000000000000000", "21A5DBEE154B8F6D"},
        {"915F4619BE41B2516355A50110A9CE91", "21A5DBEE154B8F6D", "F7C013AC5B2B8952"},
        {"783348E75AEB0F2FD7B169BB8DC16787", "F7C013AC5B2B8952", "2F42B3B70369FC92"},
        {"DC49DB1375A5584F6485B413B5F12BAF", "2F42B3B70369FC92", "65C178B284D197CC"},
        {"5269F149D41BA0152497574D7F153125", "65C178B284D197CC", "EB44E415DA319824"},
    };
    for (const auto &c : cases) {
        const RubyKey k(from_hex(c.key), 12);
        const auto pt = from_hex(c.pt), ct = from_hex(c.ct);
        uint8_t out[8];
        k.encrypt(pt.data(), out);
        EXPECT_EQ(std::vector<uint8_t>(out, out + 8), ct) << c.key;
        k.decrypt(ct.data(), out);
        EXPECT_EQ(std::vector<uint8_t>(out, out + 8), pt) << c.key;
    }
}

#ifdef BRINDLE_TEST_CRYPTOPP
// RUBY's 20 rounds on random keys of every length RC5 defines (0..255).
TEST(RubyEngine, MatchesCryptoppRc5With20Rounds) {
    std::mt19937 rng(11);
    for (std::size_t len = 0; len <= 255; ++len) {
        const auto key = random_bytes(rng, len);
        const RubyKey ours(key);
        CryptoPP::RC5::Encryption theirs(key.data(), key.size(), kRubyRounds);
        for (int i = 0; i < 12; ++i) {
            const auto pt = random_bytes(rng, 8);
            uint8_t a[8], b[8];
            ours.encrypt(pt.data(), a);
            theirs.ProcessBlock(pt.data(), b);
            ASSERT_EQ(std::vector<uint8_t>(a, a + 8), std::vector<uint8_t>(b, b + 8)) << "key length " << len;
            ours.decrypt(a, a);
            ASSERT_EQ(std::vector<uint8_t>(a, a + 8), pt);
        }
    }
}
#endif

// Ciphertext block i = plaintext block i XOR E(ciphertext block i - 1),
// with E(0) for the first; a short last block uses the first bytes.
TEST(RubyEngine, FeedbackFollowsTheCfbRelation) {
    std::mt19937 rng(3);
    const auto key_bytes = random_bytes(rng, 13);
    const RubyKey key(key_bytes);
    for (std::size_t n = 0; n <= 40; ++n) {
        const auto pt = random_bytes(rng, n);
        std::vector<uint8_t> ct(n), back(n);
        FeedbackStream(key).encrypt(pt.data(), ct.data(), n);
        uint8_t reg[8] = {}, pad[8];
        for (std::size_t i = 0; i < n; i += 8) {
            key.encrypt(reg, pad);
            for (std::size_t j = i; j < n && j < i + 8; ++j)
                ASSERT_EQ(ct[j], pt[j] ^ pad[j - i]) << "length " << n << " byte " << j;
            if (i + 8 <= n)
                std::copy(ct.begin() + i, ct.begin() + i + 8, reg);
        }
        FeedbackStream(key).decrypt(ct.data(), back.data(), n);
        EXPECT_EQ(back, pt) << n;
    }
}

// A stream fed in pieces of any size gives the bytes of one call.
TEST(RubyEngine, FeedbackInPiecesEqualsOneCall) {
    std::mt19937 rng(5);
    const RubyKey key(random_bytes(rng, 20));
    const auto pt = random_bytes(rng, 1000);
    std::vector<uint8_t> whole(pt.size()), pieces(pt.size()), back(pt.size());
    FeedbackStream(key).encrypt(pt.data(), whole.data(), pt.size());
    FeedbackStream enc(key), dec(key);
    for (std::size_t at = 0; at < pt.size();) {
        const std::size_t step = std::min<std::size_t>(rng() % 19, pt.size() - at);
        enc.encrypt(pt.data() + at, pieces.data() + at, step);
        dec.decrypt(pieces.data() + at, back.data() + at, step);
        at += step;
    }
    EXPECT_EQ(pieces, whole);
    EXPECT_EQ(back, pt);
}

} // namespace
