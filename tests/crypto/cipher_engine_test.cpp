// The block ciphers and MD5 against the published known answers in
// tests/data/vectors (FIPS 197, SP 800-38A, AESAVS, the NBS DES validation
// set, Lai's IDEA vectors, NESSIE, RFC 1321): every record, both ways.
#include "crypto/des.h"
#include "crypto/idea.h"
#include "crypto/md5.h"
#include "crypto/rijndael.h"
#include "crypto/secure_wipe.h"
#include "crypto/vector_file.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <vector>

using namespace brindle::crypto;
using brindle::test::from_hex;
using brindle::test::read_vector_file;
using brindle::test::stated_record_count;
using brindle::test::to_hex;

namespace {

// Runs every record of a block-cipher file through Key in both directions,
// also in place (in and out the same bytes).
template <class Key, std::size_t KeyBytes, std::size_t BlockBytes, class... Path>
void check_block_file(const std::string& file, Path... path) {
    const auto records = read_vector_file(file);
    ASSERT_EQ(static_cast<int>(records.size()), stated_record_count(file)) << file;
    for (const auto& rec : records) {
        const auto key = from_hex(rec.at("KEY"));
        const auto pt = from_hex(rec.at("PT"));
        const auto ct = from_hex(rec.at("CT"));
        ASSERT_EQ(key.size(), KeyBytes);
        ASSERT_EQ(pt.size(), BlockBytes);
        ASSERT_EQ(ct.size(), BlockBytes);
        const Key k(std::span<const uint8_t, KeyBytes>(key.data(), KeyBytes), path...);
        std::array<uint8_t, BlockBytes> out{};
        k.encrypt(std::span<const uint8_t, BlockBytes>(pt.data(), BlockBytes), out);
        EXPECT_EQ(to_hex(out.data(), BlockBytes), rec.at("CT")) << file << " KEY=" << rec.at("KEY");
        k.decrypt(std::span<const uint8_t, BlockBytes>(ct.data(), BlockBytes), out);
        EXPECT_EQ(to_hex(out.data(), BlockBytes), rec.at("PT")) << file << " KEY=" << rec.at("KEY");
        std::array<uint8_t, BlockBytes> in_place;
        std::copy(pt.begin(), pt.end(), in_place.begin());
        k.encrypt(in_place, in_place);
        k.decrypt(in_place, in_place);
        EXPECT_EQ(to_hex(in_place.data(), BlockBytes), rec.at("PT")) << file << " in place";
        // Nine copies through the many-block calls (their interleaved and
        // bitsliced groups, and the rest after them).
        std::vector<uint8_t> many(9 * BlockBytes);
        for (std::size_t i = 0; i < many.size(); ++i) many[i] = pt[i % BlockBytes];
        k.encrypt_blocks(many.data(), many.data(), 9);
        for (std::size_t b = 0; b < 9; ++b)
            EXPECT_EQ(to_hex(many.data() + b * BlockBytes, BlockBytes), rec.at("CT")) << file << " many, block " << b;
        k.decrypt_blocks(many.data(), many.data(), 9);
        for (std::size_t b = 0; b < 9; ++b)
            EXPECT_EQ(to_hex(many.data() + b * BlockBytes, BlockBytes), rec.at("PT")) << file << " many, block " << b;
    }
}

// Random keys and blocks: decryption inverts encryption, and one flipped
// key bit changes the ciphertext.
template <class Key, std::size_t KeyBytes, std::size_t BlockBytes>
void check_random_round_trips(uint32_t seed) {
    std::mt19937 rng(seed);
    for (int trial = 0; trial < 200; ++trial) {
        std::array<uint8_t, KeyBytes> key;
        std::array<uint8_t, BlockBytes> pt, ct, back, other;
        for (auto& b : key) b = static_cast<uint8_t>(rng());
        for (auto& b : pt) b = static_cast<uint8_t>(rng());
        const Key k(key);
        k.encrypt(pt, ct);
        k.decrypt(ct, back);
        ASSERT_EQ(back, pt);
        // Bit 1 of a byte is DES parity, so flip the high bit.
        key[rng() % KeyBytes] ^= 0x80;
        const Key k2(key);
        k2.encrypt(pt, other);
        EXPECT_NE(other, ct);
    }
}

} // namespace

TEST(CipherEngine, RijndaelKnownAnswers) {
    // The portable rounds, and the processor's AES instructions where it has them.
    check_block_file<RijndaelKey, 32, 16>("rijndael.txt", RijndaelPath::portable);
    check_block_file<RijndaelKey, 32, 16>("rijndael.txt", RijndaelPath::best);
}
TEST(CipherEngine, DesKnownAnswers) { check_block_file<DesKey, 8, 8>("des.txt"); }
TEST(CipherEngine, IdeaKnownAnswers) { check_block_file<IdeaKey, 16, 8>("idea.txt"); }

TEST(CipherEngine, RandomRoundTrips) {
    check_random_round_trips<RijndaelKey, 32, 16>(1);
    check_random_round_trips<DesKey, 8, 8>(2);
    check_random_round_trips<IdeaKey, 16, 8>(3);
}

TEST(CipherEngine, DesIgnoresParityBits) {
    // FIPS 81 example key 0123456789ABCDEF with every low bit flipped.
    const uint8_t a[8] = {0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF};
    uint8_t b[8];
    for (int i = 0; i < 8; ++i) b[i] = static_cast<uint8_t>(a[i] ^ 1);
    const uint8_t pt[8] = {'N', 'o', 'w', ' ', 'i', 's', ' ', 't'};
    std::array<uint8_t, 8> ca, cb;
    DesKey(std::span<const uint8_t, 8>(a)).encrypt(pt, ca);
    DesKey(std::span<const uint8_t, 8>(b)).encrypt(pt, cb);
    EXPECT_EQ(ca, cb);
    EXPECT_EQ(to_hex(ca.data(), 8), "3FA40E8A984D4815"); // FIPS 81 Appendix B, block 1
}

TEST(Md5Engine, KnownAnswersWholeAndInPieces) {
    const auto records = read_vector_file("md5.txt");
    ASSERT_EQ(static_cast<int>(records.size()), stated_record_count("md5.txt"));
    for (const auto& rec : records) {
        const auto msg = from_hex(rec.count("MSG") ? rec.at("MSG") : "");
        const auto d = md5(msg);
        EXPECT_EQ(to_hex(d.data(), 16), rec.at("DIGEST")) << "length " << msg.size();
        // The same message fed in uneven pieces (1, 2, 3, ... bytes).
        Md5 h;
        std::size_t pos = 0;
        for (std::size_t step = 1; pos < msg.size(); ++step) {
            const std::size_t n = std::min(step, msg.size() - pos);
            h.update(std::span<const uint8_t>(msg.data() + pos, n));
            pos += n;
        }
        const auto d2 = h.finish();
        EXPECT_EQ(d2, d) << "length " << msg.size();
        // finish() leaves a fresh object: an empty message next.
        EXPECT_EQ(to_hex(h.finish().data(), 16), "D41D8CD98F00B204E9800998ECF8427E");
    }
}

TEST(Md5Engine, MillionA) {
    // Python: hashlib.md5(b"a" * 1000000).hexdigest()
    const std::vector<uint8_t> chunk(1000, 'a');
    Md5 h;
    for (int i = 0; i < 1000; ++i) h.update(chunk);
    const auto d = h.finish();
    EXPECT_EQ(to_hex(d.data(), 16), "7707D6AE4E027C70EEA2A935C2296F21");
}

TEST(SecureWipe, ZeroesAndToleratesNull) {
    uint8_t buf[37];
    for (int i = 0; i < 37; ++i) buf[i] = static_cast<uint8_t>(i + 1);
    secure_wipe(buf + 3, 30);
    for (int i = 0; i < 37; ++i) EXPECT_EQ(buf[i], (i >= 3 && i < 33) ? 0 : i + 1) << i;
    secure_wipe(nullptr, 10);
    secure_wipe(buf, 0);
    EXPECT_EQ(buf[0], 1);
}
