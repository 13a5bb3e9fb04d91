// The fast paths of the cipher cores against the simple ones: the
// many-block calls (which interleave 2, 4, 8 blocks or bitslice four)
// against block-by-block single calls, the portable Rijndael against the
// AES instructions, and the chained entry point against single blocks
// chained by hand. Block counts straddle every group size; data include
// runs of the 16-bit words 0, 1 and 0xFFFF, the special cases of IDEA's
// multiplication.
#include "crypto/des.h"
#include "crypto/idea.h"
#include "crypto/rijndael.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <vector>

using namespace brindle::crypto;

namespace {

constexpr std::size_t kCounts[] = {0, 1, 2, 3, 4, 5, 7, 8, 9, 12, 15, 16, 17, 31, 33};
constexpr std::size_t kGuard = 24; // bytes after the blocks that no call may touch
constexpr uint8_t kGuardByte = 0xA5;

std::vector<uint8_t> test_data(std::mt19937& rng, std::size_t n, bool sparse) {
    std::vector<uint8_t> v(n);
    for (auto& b : v) b = static_cast<uint8_t>(rng());
    if (sparse) {
        // Most 16-bit words become 0x0000, 0x0001 or 0xFFFF.
        for (std::size_t i = 0; i + 1 < n; i += 2) {
            const uint32_t pick = rng() % 4;
            if (pick == 3) continue;
            const uint16_t w = pick == 0 ? 0x0000 : pick == 1 ? 0x0001 : 0xFFFF;
            v[i] = static_cast<uint8_t>(w >> 8);
            v[i + 1] = static_cast<uint8_t>(w);
        }
    }
    return v;
}

template <std::size_t N> std::array<uint8_t, N> random_key(std::mt19937& rng, bool sparse) {
    std::array<uint8_t, N> k;
    for (auto& b : k) b = static_cast<uint8_t>(sparse && rng() % 2 ? 0 : rng());
    return k;
}

// Block by block through the single-block calls.
template <class Key, std::size_t Block>
std::vector<uint8_t> one_by_one(const Key& k, const std::vector<uint8_t>& in, bool decrypting) {
    std::vector<uint8_t> out(in.size());
    for (std::size_t i = 0; i < in.size(); i += Block) {
        const std::span<const uint8_t, Block> src(in.data() + i, Block);
        const std::span<uint8_t, Block> dst(out.data() + i, Block);
        if (decrypting)
            k.decrypt(src, dst);
        else
            k.encrypt(src, dst);
    }
    return out;
}

// The many-block call, out of place into a guarded buffer and in place.
template <class Key, std::size_t Block>
void check_many_blocks(const Key& k, const std::vector<uint8_t>& in, bool decrypting, const char* what) {
    const std::size_t blocks = in.size() / Block;
    const auto expect = one_by_one<Key, Block>(k, in, decrypting);
    std::vector<uint8_t> out(in.size() + kGuard, kGuardByte);
    if (decrypting)
        k.decrypt_blocks(in.data(), out.data(), blocks);
    else
        k.encrypt_blocks(in.data(), out.data(), blocks);
    EXPECT_TRUE(std::equal(expect.begin(), expect.end(), out.begin())) << what << " blocks=" << blocks;
    for (std::size_t i = in.size(); i < out.size(); ++i)
        ASSERT_EQ(out[i], kGuardByte) << what << " wrote past " << blocks << " blocks";
    auto same = in;
    if (decrypting)
        k.decrypt_blocks(same.data(), same.data(), blocks);
    else
        k.encrypt_blocks(same.data(), same.data(), blocks);
    EXPECT_EQ(same, expect) << what << " in place, blocks=" << blocks;
}

template <class Key, std::size_t KeyBytes, std::size_t Block, class... Path>
void check_cipher(uint32_t seed, const char* what, Path... path) {
    std::mt19937 rng(seed);
    for (int trial = 0; trial < 6; ++trial) {
        const bool sparse = trial % 2 == 1;
        const auto key = random_key<KeyBytes>(rng, sparse);
        const Key k(key, path...);
        for (const std::size_t n : kCounts) {
            const auto data = test_data(rng, n * Block, sparse);
            check_many_blocks<Key, Block>(k, data, false, what);
            check_many_blocks<Key, Block>(k, data, true, what);
            // And the two directions undo each other over many blocks.
            std::vector<uint8_t> ct(data.size()), back(data.size());
            k.encrypt_blocks(data.data(), ct.data(), n);
            k.decrypt_blocks(ct.data(), back.data(), n);
            EXPECT_EQ(back, data) << what << " round trip, blocks=" << n;
        }
    }
}

} // namespace

TEST(CipherBlocks, ManyBlockCallsMatchSingleBlocks) {
    check_cipher<RijndaelKey, 32, 16>(11, "rijndael best", RijndaelPath::best);
    check_cipher<RijndaelKey, 32, 16>(12, "rijndael portable", RijndaelPath::portable);
    check_cipher<DesKey, 8, 8>(13, "des");
    check_cipher<IdeaKey, 16, 8>(14, "idea");
}

TEST(CipherBlocks, IdeaAllZeroKeyAndData) {
    // Every subkey and every word 0 (standing for 65536): the multiplication's
    // special case in every lane, on the eight-lane path and the single one.
    const std::array<uint8_t, 16> key{};
    const IdeaKey k(key);
    for (const std::size_t n : {1, 8, 9}) {
        const std::vector<uint8_t> zeros(8 * n, 0);
        check_many_blocks<IdeaKey, 8>(k, zeros, false, "idea zero");
        check_many_blocks<IdeaKey, 8>(k, zeros, true, "idea zero");
    }
}

TEST(CipherBlocks, RijndaelPortableMatchesHardware) {
    // Without AES instructions both keys run the portable rounds and the
    // comparison is trivial; the known answers still cover that path.
    if (!rijndael_uses_hardware()) GTEST_SKIP() << "no AES instructions on this processor";
    std::mt19937 rng(21);
    for (int trial = 0; trial < 20; ++trial) {
        const auto key = random_key<32>(rng, trial % 4 == 3);
        const RijndaelKey hw(key, RijndaelPath::best), sw(key, RijndaelPath::portable);
        const std::size_t n = kCounts[static_cast<std::size_t>(trial) % std::size(kCounts)];
        const auto data = test_data(rng, 16 * n, false);
        std::vector<uint8_t> a(data.size()), b(data.size());
        hw.encrypt_blocks(data.data(), a.data(), n);
        sw.encrypt_blocks(data.data(), b.data(), n);
        EXPECT_EQ(a, b) << "encrypt, trial " << trial;
        hw.decrypt_blocks(data.data(), a.data(), n);
        sw.decrypt_blocks(data.data(), b.data(), n);
        EXPECT_EQ(a, b) << "decrypt, trial " << trial;
        const std::array<uint8_t, 16> iv = random_key<16>(rng, false);
        hw.encrypt_chained(iv, data.data(), a.data(), n, 15);
        sw.encrypt_chained(iv, data.data(), b.data(), n, 15);
        EXPECT_EQ(a, b) << "chained, trial " << trial;
    }
}

TEST(CipherBlocks, ChainedEncryptionMatchesHandChaining) {
    std::mt19937 rng(31);
    for (const auto path : {RijndaelPath::best, RijndaelPath::portable}) {
        const auto key = random_key<32>(rng, false);
        const RijndaelKey k(key, path);
        const std::array<uint8_t, 16> iv = random_key<16>(rng, false);
        for (const std::size_t chained : {0, 1, 8, 15, 16, 17, 1000}) {
            for (const std::size_t n : {0, 1, 2, 9}) {
                const auto data = test_data(rng, 16 * n, false);
                // By hand: XOR the first min(chained, 16) bytes with the
                // previous ciphertext (the IV first), then one block.
                std::vector<uint8_t> expect(data.size());
                std::array<uint8_t, 16> prev = iv, x;
                for (std::size_t i = 0; i < n; ++i) {
                    for (std::size_t j = 0; j < 16; ++j)
                        x[j] = static_cast<uint8_t>(data[16 * i + j] ^ (j < chained ? prev[j] : 0));
                    k.encrypt(x, prev);
                    std::copy(prev.begin(), prev.end(), expect.begin() + static_cast<std::ptrdiff_t>(16 * i));
                }
                std::vector<uint8_t> out(data.size() + kGuard, kGuardByte);
                k.encrypt_chained(iv, data.data(), out.data(), n, chained);
                EXPECT_TRUE(std::equal(expect.begin(), expect.end(), out.begin()))
                    << "chained=" << chained << " blocks=" << n;
                for (std::size_t i = data.size(); i < out.size(); ++i) ASSERT_EQ(out[i], kGuardByte);
                auto same = data;
                k.encrypt_chained(iv, same.data(), same.data(), n, chained);
                EXPECT_EQ(same, expect) << "in place, chained=" << chained << " blocks=" << n;
            }
        }
    }
}
