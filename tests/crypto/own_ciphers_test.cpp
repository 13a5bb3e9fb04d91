// The own ciphers through the library: the worked examples of the layered
// and autokey ciphers (hand computations in the comments), the per-block
// file rules, and the known-answer files of tests/data/crypto, made by
// make_samples.py from the definitions and the dd EBCDIC table.
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <cstdint>
#include <string>

using namespace brindle::test;

namespace {

std::string sample(std::size_t size = 32768 + 1005) {
    std::string s(size, '\0');
    for (std::size_t i = 0; i < size; ++i)
        s[i] = static_cast<char>((i * 167 + (i >> 7) * 31 + 11) & 0xFF);
    return s;
}

std::string data_file(const std::string &name) {
    return read_whole_file(std::string(BRINDLE_TEST_DATA) + "/" + name);
}

std::string layered(bool decrypt, const std::string &text, const std::string &key, int16_t level) {
    Bstr t(text), k(key);
    return str((decrypt ? cDecrypt : cEncrypt)(t.ref(), k.ref(), level));
}

// cCrypt; `key` is updated with what the call left in the caller's key.
std::string crypt(const std::string &text, std::string &key) {
    Bstr t(text), k(key);
    const std::string out = str(cCrypt(t.ref(), k.val()));
    key = k.bytes();
    return out;
}

int32_t layered_file(bool decrypt, const std::string &s, const std::string &t, const std::string &key, int16_t level) {
    Bstr a(s), b(t), k(key);
    return (decrypt ? cFileDecrypt : cFileEncrypt)(a.val(), b.val(), k.ref(), level);
}

int32_t crypt_file(const std::string &s, const std::string &t, const std::string &key) {
    Bstr a(s), b(t), k(key);
    return cFileCrypt(a.val(), b.val(), k.val());
}

class OwnCipherFiles : public TempDirTest {};

} // namespace

TEST(LayeredCipher, WorkedExamples) {
    // 0x41 XOR 0x20 = 0x61 at level -1.
    EXPECT_EQ(layered(false, "A", " ", -1), "a");
    EXPECT_EQ(layered(true, "a", " ", -1), "A");
    // Level 3 on 0x01 0x00 with the key byte 0 (the XOR leaves the data):
    // complement, exchange, complement = the exchange: 0x01 -> 0x80; then the
    // 16 bits 10000000 00000000 reversed: 00000000 00000001.
    const std::string zero_key(1, '\0');
    EXPECT_EQ(layered(false, std::string("\x01\x00", 2), zero_key, 3), std::string("\x00\x01", 2));
    // Level 2 is level -1 then the bit exchange: 0x0F, bits 7<->0 and 4<->3:
    // 0000 1111 -> 1001 0110 = 0x96.
    EXPECT_EQ(layered(false, "\x0F", zero_key, 2), "\x96");
    // Level 0: complement. 'A' ^ ' ' = 0x61 -> 0x9E.
    EXPECT_EQ(layered(false, "A", " ", 0), "\x9E");
    // Level 4 is level 3 then the dd ASCII-to-EBCDIC table.
    const std::string dd = data_file("ebcdic_dd.bin");
    ASSERT_EQ(dd.size(), 256u);
    const std::string text = sample(300), key = "key!";
    const std::string three = layered(false, text, key, 3);
    std::string four;
    for (char c : three)
        four += dd[static_cast<uint8_t>(c)];
    EXPECT_EQ(layered(false, text, key, 4), four);
    // Every level round-trips; 0 and 2 differ, 1 and 2 differ by a complement.
    for (int16_t level : {int16_t{-5}, int16_t{-1}, int16_t{0}, int16_t{1}, int16_t{2}, int16_t{3}, int16_t{4},
                          int16_t{9}, int16_t{32767}})
        EXPECT_EQ(layered(true, layered(false, text, key, level), key, level), text) << level;
    EXPECT_EQ(layered(false, text, key, 9), four);
    // Empty text or key: "".
    EXPECT_EQ(layered(false, "", key, 1), "");
    EXPECT_EQ(layered(false, text, "", 1), "");
    Bstr null_text, k(key);
    EXPECT_EQ(str(cEncrypt(null_text.ref(), k.ref(), 1)), "");
}

TEST(AutokeyCipher, WorkedExamplesAndKeyChange) {
    // Key 0x6B, two zero bytes: out 0x6B (t = 0), K0 = 0xD6, p wraps to 0,
    // out 0xD6; then K0 = 0xD6 + 0xD6 = 0xAC is left in the caller's key.
    std::string key = "\x6B";
    EXPECT_EQ(crypt(std::string(2, '\0'), key), "\x6B\xD6");
    EXPECT_EQ(key, "\xAC");
    // Key "ab": p0: out 0x61, K0 = 0x61 + 0x62 = 0xC3; p1: t = 1 * 0xC3,
    // out 0x62 ^ 0xC3 = 0xA1, K1 = 0x62 + 0xC3 = 0x25 (mod 256); p0: out
    // 0xC3, K0 = 0xC3 + 0x25 = 0xE8.
    key = "ab";
    EXPECT_EQ(crypt(std::string(3, '\0'), key), "\x61\xA1\xC3");
    EXPECT_EQ(key, "\xE8\x25");
    // A sum of 0 becomes 1: key 0x80 -> 0x100 = 0 -> 1.
    key = "\x80";
    EXPECT_EQ(crypt(std::string(2, '\0'), key), "\x80\x01");
    // Self-inverse with the original key; the key ends at its first zero.
    const std::string text = sample(1000);
    std::string k1 = std::string("secret\0tail", 11), k2 = "secret";
    const std::string c = crypt(text, k1);
    EXPECT_EQ(crypt(c, k2), text);
    EXPECT_EQ(k1.substr(6), std::string("\0tail", 5)); // past the zero untouched
    // Empty text: ""; empty key: the text itself.
    std::string none;
    EXPECT_EQ(crypt("", k2), "");
    Bstr t("abc"), empty_key("");
    const Returned same = returned(cCrypt(t.ref(), empty_key.val()), {&t});
    EXPECT_TRUE(same.is_input);
    Bstr null_key;
    EXPECT_TRUE(returned(cCrypt(t.ref(), null_key.val()), {&t}).is_input);
}

TEST_F(OwnCipherFiles, KnownAnswerFiles) {
    const std::string plain = sample();
    write_file("plain.bin", plain);
    for (int16_t level : {int16_t{3}, int16_t{4}}) {
        const std::string expected = data_file("crypto/sample.layered" + std::to_string(level));
        EXPECT_EQ(layered_file(false, "plain.bin", "l.enc", "seven!!", level), static_cast<int32_t>(plain.size()));
        EXPECT_TRUE(read_file("l.enc") == expected) << level;
        write_file("l.in", expected);
        EXPECT_EQ(layered_file(true, "l.in", "l.out", "seven!!", level), static_cast<int32_t>(plain.size()));
        EXPECT_TRUE(read_file("l.out") == plain) << level;
    }
    const std::string expected = data_file("crypto/sample.autokey");
    EXPECT_EQ(crypt_file("plain.bin", "a.enc", "stream"), static_cast<int32_t>(plain.size()));
    EXPECT_TRUE(read_file("a.enc") == expected);
    EXPECT_EQ(crypt_file("a.enc", "a.out", "stream"), static_cast<int32_t>(plain.size()));
    EXPECT_TRUE(read_file("a.out") == plain);
}

TEST_F(OwnCipherFiles, BlockRules) {
    // Level -1 on zero bytes shows the key stream. Key "xyz": 32768 mod 3 =
    // 2, so the second block runs key[2], then two zero bytes past the key,
    // then wraps: z 0 0 x y z x y ...
    write_file("zeros.bin", std::string(32768 + 8, '\0'));
    ASSERT_EQ(layered_file(false, "zeros.bin", "z.enc", "xyz", -1), 32768 + 8);
    const std::string z = read_file("z.enc");
    EXPECT_EQ(z.substr(32762, 6), "zxyzxy"); // the first block: i mod 3, 32762 mod 3 = 2
    EXPECT_EQ(z.substr(32768), std::string("z\0\0xyzxy", 8));
    // With a key dividing 32,768 the file is the string form block by block,
    // level 3 reversing each block by itself.
    const std::string text = sample(32768 + 100);
    write_file("t.bin", text);
    ASSERT_EQ(layered_file(false, "t.bin", "t.enc", "four", 3), 32868);
    EXPECT_TRUE(read_file("t.enc") ==
                layered(false, text.substr(0, 32768), "four", 3) + layered(false, text.substr(32768), "four", 3));
    // The stream restarts at position 0 in each block with the key as the
    // blocks before left it: cCrypt block by block with one key variable.
    ASSERT_EQ(crypt_file("t.bin", "c.enc", "k3y"), 32868);
    std::string key = "k3y";
    const std::string first = crypt(text.substr(0, 32768), key);
    const std::string second = crypt(text.substr(32768), key);
    EXPECT_TRUE(read_file("c.enc") == first + second);
    std::string whole_key = "k3y";
    EXPECT_FALSE(read_file("c.enc") == crypt(text, whole_key));
}

TEST_F(OwnCipherFiles, Codes) {
    write_file("p.bin", "payload");
    EXPECT_EQ(layered_file(false, "p.bin", "t1", "", 2), -1);
    EXPECT_EQ(crypt_file("p.bin", "t2", ""), -1);
    EXPECT_EQ(crypt_file("p.bin", "t3", std::string("\0abc", 4)), -1); // zero-terminated key
    EXPECT_EQ(layered_file(true, "missing", "t4", "k", 2), -32750);
    EXPECT_EQ(layered_file(false, "p.bin", "no\\such\\t5", "k", 2), -32751);
    // Names that differ only in case are one file where the file system
    // ignores case (Windows): refused there, a second file elsewhere.
    const bool one_file = std::filesystem::exists("P.BIN");
    EXPECT_EQ(crypt_file("p.bin", "P.BIN", "k"), one_file ? -32751 : 7);
    EXPECT_EQ(layered_file(false, "p.bin", "p.bin", "k", 2), -32751);
    for (const char *t : {"t1", "t2", "t3", "t4"})
        EXPECT_FALSE(std::filesystem::exists(t)) << t;
    EXPECT_EQ(read_file("p.bin"), "payload");
    write_file("empty.bin", "");
    EXPECT_EQ(layered_file(false, "empty.bin", "e.enc", "k", 4), 0);
    EXPECT_TRUE(std::filesystem::exists("e.enc"));
}
