// The Serpent and Twofish exports through the library: a published known
// answer through the string form, the layout and key checks, the
// dispatcher's codes 4, 5, 24 and 25 against the ciphers' own exports, and
// the file forms against the string forms.
#include "crypto/cipher_calls.h"
#include "crypto/vector_file.h"
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <cstdint>
#include <filesystem>
#include <string>

using namespace brindle::test;

namespace {

std::string bytes(const std::string &hex) {
    const auto v = from_hex(hex);
    return std::string(v.begin(), v.end());
}

std::string sample(std::size_t size) {
    std::string s(size, '\0');
    for (std::size_t i = 0; i < size; ++i)
        s[i] = static_cast<char>((i * 131 + (i >> 9) * 7 + 3) & 0xFF);
    return s;
}

struct Cipher {
    const char *name;
    int16_t code;
    StringFn encrypt, decrypt;
    FileFn encrypt_file, decrypt_file;
    // One published record: key, plaintext, ciphertext (hex).
    const char *key, *pt, *ct;
};

// NESSIE Serpent-256 Set 4 vector 0; Twofish ecb_tbl 256-bit I=49.
const Cipher kCiphers[] = {
    {"Serpent", 4, cSERPENTencrypt, cSERPENTdecrypt, cSERPENTencryptFile, cSERPENTdecryptFile,
     "000102030405060708090A0B0C0D0E0F101112131415161718191A1B1C1D1E1F", "00112233445566778899AABBCCDDEEFF",
     "2868B7A2D28ECD5E4FDEFAC3C4330074"},
    {"Twofish", 5, cTWOFISHencrypt, cTWOFISHdecrypt, cTWOFISHencryptFile, cTWOFISHdecryptFile,
     "248A7F3528B168ACFDD1386E3F51E30C2E2158BC3E5FC714C1EEECA0EA696D48", "431058F4DBC7F734DA4F02F04CC4F459",
     "37FE26FF1CF66175F5DDF4C33B97A205"},
};

const std::string kKey = "Serpent/Twofish key of 32 bytes+ and more";
const std::string kIv = "initial vector 16";

class SerpentTwofishFiles : public TempDirTest {};

} // namespace

TEST(SerpentTwofish, KnownAnswerLayoutAndKeys) {
    for (const Cipher &c : kCiphers) {
        SCOPED_TRACE(c.name);
        // A whole block: the published ciphertext, then the count byte 0.
        const std::string key = bytes(c.key), pt = bytes(c.pt);
        EXPECT_EQ(call(c.encrypt, pt, key), bytes(c.ct) + std::string(1, '\0'));
        EXPECT_EQ(call(c.decrypt, bytes(c.ct) + std::string(1, '\0'), key), pt);
        // Lengths around the block, and the count byte.
        for (std::size_t n : {1, 15, 16, 17, 63, 64, 65, 1000}) {
            const std::string text = sample(n);
            const std::string e = call(c.encrypt, text, kKey);
            const std::size_t padded = (n + 15) / 16 * 16;
            ASSERT_EQ(e.size(), padded + 1) << n;
            EXPECT_EQ(static_cast<uint8_t>(e.back()), padded - n) << n;
            EXPECT_EQ(call(c.decrypt, e, kKey), text) << n;
        }
        // Only the first 32 key bytes count; 31 are refused; "" gives "".
        EXPECT_EQ(call(c.encrypt, "x", kKey.substr(0, 32)), call(c.encrypt, "x", kKey));
        EXPECT_EQ(call(c.encrypt, "x", kKey.substr(0, 31)), "");
        EXPECT_EQ(call(c.decrypt, call(c.encrypt, "x", kKey), kKey.substr(0, 31)), "");
        EXPECT_EQ(call(c.encrypt, "", kKey), "");
        // A count byte of 16 or more, and a cut text: damaged.
        std::string bad = call(c.encrypt, "damaged", kKey);
        EXPECT_EQ(call(c.decrypt, bad.substr(0, 10), kKey), "");
        bad.back() = '\x10';
        EXPECT_EQ(call(c.decrypt, bad, kKey), "");
    }
    // The two ciphers differ from each other and from Rijndael.
    const std::string t = sample(40);
    EXPECT_NE(call(cSERPENTencrypt, t, kKey), call(cTWOFISHencrypt, t, kKey));
    EXPECT_NE(call(cSERPENTencrypt, t, kKey), call(cRIJNDAELencrypt, t, kKey));
}

TEST(SerpentTwofish, DispatcherCodes) {
    const std::string text = sample(77);
    for (const Cipher &c : kCiphers) {
        SCOPED_TRACE(c.name);
        const std::string own = call(c.encrypt, text, kKey);
        for (int16_t code : {c.code, static_cast<int16_t>(c.code + 20), static_cast<int16_t>(c.code + 40)})
            EXPECT_EQ(code_call(cAES2RNDencrypt, code, text, kKey), own) << code;
        EXPECT_EQ(code_call(cAES2RNDdecrypt, static_cast<int16_t>(c.code + 20), own, kKey), text);
        // The 15-byte CBC: a round trip, not the ECB text, and byte 16 of the IV ignored.
        const std::string chained = cbc(false, static_cast<int16_t>(c.code + 20), text, kKey, kIv);
        ASSERT_EQ(chained.size(), own.size());
        EXPECT_NE(chained, own);
        EXPECT_EQ(cbc(true, c.code, chained, kKey, kIv), text);
        std::string iv2 = kIv;
        iv2[15] ^= 0x40;
        EXPECT_EQ(cbc(false, c.code, text, kKey, iv2), chained);
        // With an all-zero IV the first block is the ECB block.
        EXPECT_EQ(cbc(false, c.code, text, kKey, "").substr(0, 16), own.substr(0, 16));
    }
}

TEST_F(SerpentTwofishFiles, FileFormsMatchStringForms) {
    const std::string small = sample(3000), big = sample(32768 * 2 + 333);
    write_file("small.bin", small);
    write_file("big.bin", big);
    for (const Cipher &c : kCiphers) {
        SCOPED_TRACE(c.name);
        // Up to one chunk the file is the string form, and both read each other.
        ASSERT_EQ(file_call(c.encrypt_file, "small.bin", "small.enc", kKey), 3009);
        EXPECT_EQ(read_file("small.enc"), call(c.encrypt, small, kKey));
        write_file("string.enc", call(c.encrypt, small, kKey));
        EXPECT_EQ(file_call(c.decrypt_file, "string.enc", "string.back", kKey), 3000);
        EXPECT_TRUE(read_file("string.back") == small);
        // Several chunks, through the file forms and the dispatcher's.
        ASSERT_EQ(file_call(c.encrypt_file, "big.bin", "big.enc", kKey), static_cast<int32_t>(65536 + 336 + 1));
        EXPECT_EQ(read_file("big.enc").substr(0, 32768), call(c.encrypt, big.substr(0, 32768), kKey).substr(0, 32768));
        Bstr s("big.bin"), t("disp.enc"), k(kKey);
        EXPECT_EQ(cAES2RNDencryptFile(static_cast<int16_t>(c.code + 20), s.val(), t.val(), k.ref()), 65536 + 337);
        EXPECT_TRUE(read_file("disp.enc") == read_file("big.enc"));
        EXPECT_EQ(file_call(c.decrypt_file, "big.enc", "big.back", kKey), static_cast<int32_t>(big.size()));
        EXPECT_TRUE(read_file("big.back") == big);
        // Codes: a short key, a cut source; no target left behind.
        EXPECT_EQ(file_call(c.encrypt_file, "small.bin", "t1", kKey.substr(0, 31)), -1);
        EXPECT_EQ(file_call(c.decrypt_file, "small.enc", "t2", kKey.substr(0, 31)), -1);
        write_file("cut.enc", read_file("big.enc").substr(0, 40000));
        EXPECT_EQ(file_call(c.decrypt_file, "cut.enc", "t3", kKey), -31);
        for (const char *name : {"t1", "t2", "t3"})
            EXPECT_FALSE(std::filesystem::exists(name)) << name;
    }
}
