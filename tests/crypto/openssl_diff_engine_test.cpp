// Rijndael-256 and MD5 against OpenSSL's AES-256 ECB and MD5 on random keys,
// blocks and message lengths (Linux only: OpenSSL is a test dependency there).
#ifdef BRINDLE_TEST_OPENSSL

#include "crypto/md5.h"
#include "crypto/rijndael.h"

#include <gtest/gtest.h>
#include <openssl/evp.h>

#include <array>
#include <fstream>
#include <string>
#include <memory>
#include <random>
#include <vector>

using namespace brindle::crypto;

namespace {

struct CtxFree {
    void operator()(EVP_CIPHER_CTX* c) const { EVP_CIPHER_CTX_free(c); }
};

// OpenSSL's AES-256 ECB (or CBC from iv) of whole blocks, without padding.
std::vector<uint8_t> openssl_aes256_ecb(const std::array<uint8_t, 32>& key,
                                        const std::vector<uint8_t>& in, bool encrypt,
                                        const uint8_t* iv = nullptr) {
    std::unique_ptr<EVP_CIPHER_CTX, CtxFree> ctx(EVP_CIPHER_CTX_new());
    EXPECT_EQ(EVP_CipherInit_ex(ctx.get(), iv ? EVP_aes_256_cbc() : EVP_aes_256_ecb(), nullptr, key.data(), iv,
                                encrypt ? 1 : 0), 1);
    EVP_CIPHER_CTX_set_padding(ctx.get(), 0);
    std::vector<uint8_t> out(in.size() + 16);
    int n = 0, tail = 0;
    EXPECT_EQ(EVP_CipherUpdate(ctx.get(), out.data(), &n, in.data(), static_cast<int>(in.size())), 1);
    EXPECT_EQ(EVP_CipherFinal_ex(ctx.get(), out.data() + n, &tail), 1);
    out.resize(static_cast<std::size_t>(n + tail));
    return out;
}

} // namespace

TEST(CipherDifferential, RijndaelMatchesOpenSslAes256Ecb) {
    std::mt19937_64 rng(20261124);
    for (int trial = 0; trial < 300; ++trial) {
        std::array<uint8_t, 32> key;
        for (auto& b : key) b = static_cast<uint8_t>(rng());
        std::vector<uint8_t> data(16 * (1 + rng() % 20));
        for (auto& b : data) b = static_cast<uint8_t>(rng());
        const auto expect_enc = openssl_aes256_ecb(key, data, true);
        const auto expect_dec = openssl_aes256_ecb(key, data, false);
        for (const auto path : {RijndaelPath::portable, RijndaelPath::best}) {
            const RijndaelKey k(key, path);
            std::vector<uint8_t> ours(data.size()), back(data.size());
            for (std::size_t i = 0; i < data.size(); i += 16) {
                k.encrypt(std::span<const uint8_t, 16>(data.data() + i, 16),
                          std::span<uint8_t, 16>(ours.data() + i, 16));
                k.decrypt(std::span<const uint8_t, 16>(data.data() + i, 16),
                          std::span<uint8_t, 16>(back.data() + i, 16));
            }
            ASSERT_EQ(ours, expect_enc) << "trial " << trial << (path == RijndaelPath::best ? " best" : " portable");
            ASSERT_EQ(back, expect_dec) << "trial " << trial << (path == RijndaelPath::best ? " best" : " portable");
            // The many-block calls, and the chained call over all 16 bytes
            // against OpenSSL's CBC.
            k.encrypt_blocks(data.data(), ours.data(), data.size() / 16);
            k.decrypt_blocks(data.data(), back.data(), data.size() / 16);
            ASSERT_EQ(ours, expect_enc) << "trial " << trial << " many blocks";
            ASSERT_EQ(back, expect_dec) << "trial " << trial << " many blocks";
            const std::array<uint8_t, 16> iv = {key[3], key[1], 7, 9, key[30]};
            k.encrypt_chained(iv, data.data(), ours.data(), data.size() / 16, 16);
            ASSERT_EQ(ours, openssl_aes256_ecb(key, data, true, iv.data())) << "trial " << trial << " CBC";
        }
    }
}

TEST(CipherDifferential, HardwarePathIsTakenWhereAvailable) {
    // The kernel's view of the processor: the "aes" flag in /proc/cpuinfo.
    std::ifstream cpuinfo("/proc/cpuinfo");
    std::string word;
    bool flag = false;
    while (cpuinfo >> word && !flag) flag = word == "aes";
#if defined(__x86_64__) || defined(__i386__)
    EXPECT_EQ(rijndael_uses_hardware(), flag);
#else
    EXPECT_FALSE(rijndael_uses_hardware());
#endif
}

TEST(CipherDifferential, Md5MatchesOpenSsl) {
    std::mt19937_64 rng(1321);
    for (int trial = 0; trial < 300; ++trial) {
        // Lengths around the 56- and 64-byte padding edges and beyond.
        const std::size_t len = trial < 200 ? static_cast<std::size_t>(trial) : rng() % 5000;
        std::vector<uint8_t> msg(len);
        for (auto& b : msg) b = static_cast<uint8_t>(rng());
        std::array<uint8_t, 16> theirs{};
        unsigned int n = 0;
        ASSERT_EQ(EVP_Digest(msg.data(), msg.size(), theirs.data(), &n, EVP_md5(), nullptr), 1);
        ASSERT_EQ(n, 16u);
        EXPECT_EQ(md5(msg), theirs) << "length " << len;
    }
}

#endif
