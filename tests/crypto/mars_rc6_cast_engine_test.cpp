// MARS, RC6 and CAST-256 against the published known answers (the
// designers' papers, the AES-submission tables, RFC 2612) in both
// directions and through the many-block calls, and against Crypto++'s
// classes on random keys and data where the test links it.
#include "crypto/cast256.h"
#include "crypto/cipher_table.h"
#include "crypto/mars.h"
#include "crypto/rc6.h"
#include "crypto/vector_file.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <vector>

#ifdef BRINDLE_TEST_CRYPTOPP
#include <cryptopp/cast.h>
#include <cryptopp/mars.h>
#include <cryptopp/modes.h>
#include <cryptopp/rc6.h>
#endif

using namespace brindle::crypto;
using brindle::test::from_hex;
using brindle::test::read_vector_file;
using brindle::test::stated_record_count;
using brindle::test::to_hex;

namespace {

template <class Key> Key make_key(const std::vector<uint8_t>& key) {
    return Key(std::span<const uint8_t, 32>(key.data(), 32));
}

// Every record of a file: one block each way, in place, and eleven copies
// through the many-block calls (the interleaved groups and the rest after
// them), each way.
template <class Key> void check_known_answers(const std::string& file) {
    const auto records = read_vector_file(file);
    ASSERT_EQ(static_cast<int>(records.size()), stated_record_count(file)) << file;
    for (const auto& rec : records) {
        SCOPED_TRACE(file + " KEY=" + rec.at("KEY") + " PT=" + rec.at("PT"));
        const auto key = from_hex(rec.at("KEY"));
        const auto pt = from_hex(rec.at("PT"));
        const auto ct = from_hex(rec.at("CT"));
        ASSERT_EQ(key.size(), 32u);
        ASSERT_EQ(pt.size(), 16u);
        const Key k = make_key<Key>(key);
        std::array<uint8_t, 16> out{};
        k.encrypt(std::span<const uint8_t, 16>(pt.data(), 16), out);
        EXPECT_EQ(to_hex(out.data(), 16), rec.at("CT"));
        k.decrypt(std::span<const uint8_t, 16>(ct.data(), 16), out);
        EXPECT_EQ(to_hex(out.data(), 16), rec.at("PT"));
        k.encrypt(out, out);
        EXPECT_EQ(to_hex(out.data(), 16), rec.at("CT")) << "in place";
        constexpr std::size_t kCopies = 11;
        std::vector<uint8_t> many(kCopies * 16);
        for (std::size_t i = 0; i < many.size(); ++i)
            many[i] = pt[i % 16];
        k.encrypt_blocks(many.data(), many.data(), kCopies);
        for (std::size_t b = 0; b < kCopies; ++b)
            EXPECT_EQ(to_hex(many.data() + 16 * b, 16), rec.at("CT")) << "many, block " << b;
        k.decrypt_blocks(many.data(), many.data(), kCopies);
        for (std::size_t b = 0; b < kCopies; ++b)
            EXPECT_EQ(to_hex(many.data() + 16 * b, 16), rec.at("PT")) << "many, block " << b;
    }
}

} // namespace

TEST(AesCandidateCores, KnownAnswers) {
    check_known_answers<MarsKey>("mars.txt");
    check_known_answers<Rc6Key>("rc6.txt");
    check_known_answers<Cast256Key>("cast256.txt");
}

TEST(AesCandidateCores, MarsMultiplicationKeyMask) {
    // Worked by hand from the rule: a bit is masked when it is inside a run
    // of ten or more equal bits (not at either end of the run) and 2..30.
    const struct {
        uint32_t w, mask;
    } cases[] = {
        {0xFFFFFFFFu, 0x7FFFFFFCu}, // one run of 32: bits 2..30
        {0x00000003u, 0x7FFFFFF8u}, // zeros at 2..31: interior 3..30
        {0xAAAAAAABu, 0},           // no runs at all
        // ones 0-1, zeros 2-9 (8), ones 10-19 (10): 11..18, zeros 20-31: 21..30
        {0x000FFC03u, 0x7FE7F800u},
        // zeros 2-20 (19): 3..19; ones 21-30 (10): 22..29; bit 31 alone
        {0x7FE00003u, 0x3FCFFFF8u},
        // runs of nine (zeros 2-10, ones 11-19) are not masked; zeros 20-31 are
        {0x000FF803u, 0x7FE00000u},
    };
    for (const auto& c : cases)
        EXPECT_EQ(mars_weak_key_mask(c.w), c.mask) << std::hex << c.w;
}

TEST(AesCandidateCores, RowsOfTheCipherTable) {
    // The dispatcher's codes 1 and 2 (and 21, 22 for CBC), and CAST-256 by
    // its own row, all with a 32-byte key and a 16-byte block; the rows use
    // the first 32 bytes of a longer key.
    const struct {
        CipherId id;
        int code;
    } rows[] = {{CipherId::mars, 1}, {CipherId::rc6, 2}, {CipherId::cast256, 0}};
    std::vector<uint8_t> key(40);
    for (std::size_t i = 0; i < key.size(); ++i)
        key[i] = static_cast<uint8_t>(7 * i + 1);
    for (const auto& r : rows) {
        const CipherRow* row = cipher_row(r.id);
        ASSERT_NE(row, nullptr);
        EXPECT_EQ(row->key_bytes, 32u);
        EXPECT_EQ(row->block_bytes, 16u);
        if (r.code != 0) {
            EXPECT_EQ(aes_candidate(r.code), row);
            EXPECT_EQ(aes_candidate(r.code + 20), row);
        }
        const auto a = row->make(key);
        const auto b = row->make(std::span<const uint8_t>(key.data(), 32));
        key[32] ^= 0xFF;
        const auto c = row->make(key);
        uint8_t block[3][16] = {};
        a->encrypt_blocks(block[0], block[0], 1);
        b->encrypt_blocks(block[1], block[1], 1);
        c->encrypt_blocks(block[2], block[2], 1);
        EXPECT_EQ(to_hex(block[0], 16), to_hex(block[1], 16)) << row->name;
        EXPECT_EQ(to_hex(block[0], 16), to_hex(block[2], 16)) << row->name;
    }
}

#ifdef BRINDLE_TEST_CRYPTOPP

namespace {

// Random keys and runs of random blocks (of every length up to 13 around
// the interleaved groups, and a long run): ours and Crypto++'s ECB agree
// both ways.
template <class Key, class Anchor> void compare_with_cryptopp(uint32_t seed) {
    std::mt19937 rng(seed);
    for (int trial = 0; trial < 40; ++trial) {
        std::vector<uint8_t> key(32);
        for (auto& b : key)
            b = static_cast<uint8_t>(rng());
        const std::size_t blocks = trial < 14 ? static_cast<std::size_t>(trial) : 100 + rng() % 200;
        std::vector<uint8_t> data(16 * blocks), ours(data.size()), theirs(data.size());
        for (auto& b : data)
            b = static_cast<uint8_t>(rng());
        const Key k = make_key<Key>(key);
        typename CryptoPP::ECB_Mode<Anchor>::Encryption e(key.data(), key.size());
        typename CryptoPP::ECB_Mode<Anchor>::Decryption d(key.data(), key.size());
        k.encrypt_blocks(data.data(), ours.data(), blocks);
        if (blocks != 0)
            e.ProcessData(theirs.data(), data.data(), data.size());
        ASSERT_EQ(ours, theirs) << "encrypt, trial " << trial;
        k.decrypt_blocks(data.data(), ours.data(), blocks);
        if (blocks != 0)
            d.ProcessData(theirs.data(), data.data(), data.size());
        ASSERT_EQ(ours, theirs) << "decrypt, trial " << trial;
    }
}

} // namespace

TEST(AesCandidateCores, SameAsCryptoppOnRandomData) {
    compare_with_cryptopp<MarsKey, CryptoPP::MARS>(11);
    compare_with_cryptopp<Rc6Key, CryptoPP::RC6>(12);
    compare_with_cryptopp<Cast256Key, CryptoPP::CAST256>(13);
}

#endif
