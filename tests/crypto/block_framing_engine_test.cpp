// The framing engine on the cipher cores: every known-answer record of
// rijndael, des and idea carried through the string layout (two equal
// plaintext blocks give two equal vector ciphertexts and the count 0), and,
// on Linux, random texts against OpenSSL's AES-256 ECB with the padding, the
// count byte and the 15-byte chaining applied here by the test.
#include "crypto/block_framing.h"
#include "crypto/cipher_table.h"
#include "crypto/rijndael.h"
#include "crypto/vector_file.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#ifdef BRINDLE_TEST_OPENSSL
#include <openssl/evp.h>
#endif

#include <random>
#include <string>
#include <vector>

using namespace brindle::crypto;
using brindle::test::from_hex;
using brindle::test::read_vector_file;

namespace {

std::vector<uint8_t> encipher(const BlockCipher &c, const std::vector<uint8_t> &plain, const ChainIv *iv = nullptr) {
    std::vector<uint8_t> out(enciphered_size(plain.size(), c.block_size()));
    encipher_bytes(c, plain, iv, out.data());
    return out;
}

std::optional<std::vector<uint8_t>> decipher(const BlockCipher &c, const std::vector<uint8_t> &in,
                                             const ChainIv *iv = nullptr) {
    const auto size = deciphered_size(in, c.block_size());
    if (!size)
        return std::nullopt;
    std::vector<uint8_t> out(*size);
    decipher_bytes(c, in, iv, out.data());
    return out;
}

} // namespace

TEST(BlockFraming, VectorRecordsThroughTheLayout) {
    const struct {
        const char *file;
        CipherId id;
    } files[] = {{"rijndael.txt", CipherId::rijndael}, {"des.txt", CipherId::des}, {"idea.txt", CipherId::idea}};
    for (const auto &f : files) {
        const CipherRow *row = cipher_row(f.id);
        ASSERT_NE(row, nullptr);
        int checked = 0;
        for (const auto &rec : read_vector_file(f.file)) {
            const auto key = from_hex(rec.at("KEY"));
            if (key.size() != row->key_bytes)
                continue;
            const auto pt = from_hex(rec.at("PT"));
            const auto ct = from_hex(rec.at("CT"));
            const auto cipher = row->make(key);
            std::vector<uint8_t> twice = pt, expected = ct;
            twice.insert(twice.end(), pt.begin(), pt.end());
            expected.insert(expected.end(), ct.begin(), ct.end());
            expected.push_back(0);
            ASSERT_EQ(encipher(*cipher, twice), expected) << f.file << " KEY=" << rec.at("KEY");
            ASSERT_EQ(decipher(*cipher, expected), twice) << f.file;
            ++checked;
        }
        EXPECT_GT(checked, 3) << f.file;
    }
}

TEST(BlockFraming, DamagedLayouts) {
    const std::vector<uint8_t> key(32, 7);
    const auto c = cipher_row(CipherId::rijndael)->make(key);
    struct Case {
        std::size_t length;
        uint8_t last;
        std::optional<std::size_t> size;
    };
    const Case cases[] = {
        {0, 0, std::nullopt}, {1, 0, 0},           {1, 1, std::nullopt},  {2, 0, std::nullopt},
        {16, 9, 16},          {17, 15, 1},         {17, 16, std::nullopt}, {17, 255, std::nullopt},
        {33, 0, 32},          {31, 0, std::nullopt}, {48, 200, 48},
    };
    for (const Case &t : cases) {
        std::vector<uint8_t> in(t.length, 0x5A);
        if (!in.empty())
            in.back() = t.last;
        EXPECT_EQ(deciphered_size(in, 16), t.size) << t.length << " " << int(t.last);
        if (t.size) {
            std::vector<uint8_t> out(*t.size + 1, 0xEE);
            decipher_bytes(*c, in, nullptr, out.data());
            EXPECT_EQ(out.back(), 0xEE) << "wrote past the result, length " << t.length;
        }
    }
    EXPECT_FALSE(chain_iv("fifteen bytes!!").has_value());
    EXPECT_EQ(*chain_iv(""), ChainIv{});
}

// Separate chains side by side give what one chain at a time gives, for
// every count of runs (the eight-, four- and one-lane passes) and on both
// paths of the core.
TEST(BlockFraming, ChainedRunsEqualOneChainAtATime) {
    std::mt19937_64 rng(7);
    std::vector<uint8_t> key(32), iv(16);
    for (auto &b : key)
        b = static_cast<uint8_t>(rng());
    for (auto &b : iv)
        b = static_cast<uint8_t>(rng());
    for (const RijndaelPath path : {RijndaelPath::best, RijndaelPath::portable}) {
        const RijndaelKey core(std::span<const uint8_t, 32>(key.data(), 32), path);
        for (const std::size_t runs : {1u, 3u, 4u, 7u, 8u, 9u, 13u}) {
            const std::size_t run_blocks = 5;
            std::vector<uint8_t> one(runs * run_blocks * 16);
            for (auto &b : one)
                b = static_cast<uint8_t>(rng());
            std::vector<uint8_t> side = one;
            for (std::size_t r = 0; r < runs; ++r)
                core.encrypt_chained(std::span<const uint8_t, 16>(iv.data(), 16), one.data() + r * run_blocks * 16,
                                     one.data() + r * run_blocks * 16, run_blocks, 15);
            core.encrypt_chained_runs(std::span<const uint8_t, 16>(iv.data(), 16), side.data(), run_blocks, runs, 15);
            EXPECT_EQ(side, one) << "runs " << runs << (path == RijndaelPath::portable ? " portable" : "");
        }
    }
}

// The file forms read eight chunks at a time; whatever the size, the file is
// the string form of each 32,768-byte chunk (each chained from the IV again)
// laid end to end, with one count byte after the short last chunk or a zero
// byte at the end.
class BlockFramingFiles : public brindle::test::TempDirTest {};

TEST_F(BlockFramingFiles, BatchesKeepTheChunkLayout) {
    std::mt19937_64 rng(9);
    std::vector<uint8_t> key(32);
    for (auto &b : key)
        b = static_cast<uint8_t>(rng());
    ChainIv iv;
    for (auto &b : iv)
        b = static_cast<uint8_t>(rng());
    const auto cipher = cipher_row(CipherId::rijndael)->make(key);
    const std::size_t chunk = kChunkBytes;
    for (const std::size_t size : {chunk - 1, chunk, 7 * chunk + 5, 8 * chunk - 1, 8 * chunk, 8 * chunk + 1,
                                   8 * chunk + 16, 9 * chunk + 17, 16 * chunk, 17 * chunk + 3}) {
        std::string plain(size, '\0');
        for (auto &c : plain)
            c = static_cast<char>(rng());
        write_file("p.bin", plain);
        for (const ChainIv *chain : std::initializer_list<const ChainIv *>{nullptr, &iv}) {
            std::string expected;
            for (std::size_t at = 0; at < size; at += chunk) {
                const std::string_view piece = std::string_view(plain).substr(at, chunk);
                const auto enc = encipher(*cipher, std::vector<uint8_t>(piece.begin(), piece.end()), chain);
                expected.append(enc.begin(), enc.end() - (piece.size() % 16 == 0 ? 1 : 0));
            }
            if (size % 16 == 0)
                expected.push_back('\0');
            const std::string mode = chain ? "CBC" : "ECB";
            ASSERT_EQ(encipher_file(*cipher, "p.bin", "p.enc", chain), static_cast<int32_t>(expected.size()))
                << mode << " " << size;
            EXPECT_TRUE(read_file("p.enc") == expected) << mode << " " << size;
            ASSERT_EQ(decipher_file(*cipher, "p.enc", "p.back", chain), static_cast<int32_t>(size)) << mode << " " << size;
            EXPECT_TRUE(read_file("p.back") == plain) << mode << " " << size;
        }
    }
}

#ifdef BRINDLE_TEST_OPENSSL
namespace {

std::vector<uint8_t> openssl_ecb_block(const std::vector<uint8_t> &key, const uint8_t *block, bool encrypt) {
    EVP_CIPHER_CTX *ctx = EVP_CIPHER_CTX_new();
    EVP_CipherInit_ex(ctx, EVP_aes_256_ecb(), nullptr, key.data(), nullptr, encrypt ? 1 : 0);
    EVP_CIPHER_CTX_set_padding(ctx, 0);
    std::vector<uint8_t> out(32);
    int n = 0;
    EVP_CipherUpdate(ctx, out.data(), &n, block, 16);
    EVP_CIPHER_CTX_free(ctx);
    out.resize(16);
    return out;
}

// The layout made here: zero padding, then block by block through OpenSSL,
// bytes 0..14 XORed with the IV or the ciphertext before (CBC), then the
// count byte.
std::vector<uint8_t> reference_encipher(const std::vector<uint8_t> &key, const std::vector<uint8_t> &plain,
                                        const ChainIv *iv) {
    std::vector<uint8_t> padded = plain;
    padded.resize((plain.size() + 15) / 16 * 16, 0);
    std::vector<uint8_t> out;
    std::vector<uint8_t> previous;
    if (iv)
        previous.assign(iv->begin(), iv->end());
    for (std::size_t b = 0; b < padded.size(); b += 16) {
        std::vector<uint8_t> block(padded.begin() + b, padded.begin() + b + 16);
        if (iv)
            for (int i = 0; i < 15; ++i)
                block[i] ^= previous[i];
        previous = openssl_ecb_block(key, block.data(), true);
        out.insert(out.end(), previous.begin(), previous.end());
    }
    out.push_back(static_cast<uint8_t>(padded.size() - plain.size()));
    return out;
}

} // namespace

TEST(BlockFraming, MatchesOpenSslWithTheLayoutAppliedByTheTest) {
    std::mt19937_64 rng(22);
    for (int trial = 0; trial < 200; ++trial) {
        std::vector<uint8_t> key(32);
        for (auto &b : key)
            b = static_cast<uint8_t>(rng());
        std::vector<uint8_t> plain(trial < 40 ? trial : rng() % 3000);
        for (auto &b : plain)
            b = static_cast<uint8_t>(rng());
        ChainIv iv;
        for (auto &b : iv)
            b = static_cast<uint8_t>(rng());
        const auto cipher = cipher_row(CipherId::rijndael)->make(key);
        const auto ecb = encipher(*cipher, plain);
        ASSERT_EQ(ecb, reference_encipher(key, plain, nullptr)) << "ECB, length " << plain.size();
        const auto cbc = encipher(*cipher, plain, &iv);
        ASSERT_EQ(cbc, reference_encipher(key, plain, &iv)) << "CBC, length " << plain.size();
        ASSERT_EQ(decipher(*cipher, ecb), plain);
        ASSERT_EQ(decipher(*cipher, cbc, &iv), plain);
    }
}
#endif
