// The MARS, RC6 and CAST-256 exports through the library: the known-answer
// records through the string layout, the dispatcher's codes 1, 2, 21 and 22
// (ECB and the 15-byte CBC, the chain rebuilt here from single ECB blocks),
// short keys, and the file forms with their codes.
#include "crypto/cipher_calls.h"
#include "crypto/vector_file.h"
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <cstdint>
#include <string>
#include <vector>

using namespace brindle::test;

namespace {

struct Family {
    const char *name;
    const char *vectors;
    int16_t code; // 0: not in the dispatcher
    StringFn encrypt, decrypt;
    FileFn encrypt_file, decrypt_file;
};

const Family kFamilies[] = {
    {"MARS", "mars.txt", 1, cMARSencrypt, cMARSdecrypt, cMARSencryptFile, cMARSdecryptFile},
    {"RC6", "rc6.txt", 2, cRC6encrypt, cRC6decrypt, cRC6encryptFile, cRC6decryptFile},
    {"CAST-256", "cast256.txt", 0, cCAST256encrypt, cCAST256decrypt, cCAST256encryptFile, cCAST256decryptFile},
};

const std::string kKey = "MARS RC6 CAST-256 shared test key, 40 b";

std::string bytes(const std::vector<uint8_t> &v) { return std::string(v.begin(), v.end()); }

std::string sample(std::size_t size) {
    std::string s(size, '\0');
    for (std::size_t i = 0; i < size; ++i)
        s[i] = static_cast<char>((i * 151 + (i >> 9) * 7 + 3) & 0xFF);
    return s;
}

std::string by_code(bool decrypt, int16_t code, const std::string &text, const std::string &key) {
    Bstr t(text), k(key);
    return str((decrypt ? cAES2RNDdecrypt : cAES2RNDencrypt)(code, t.ref(), k.ref()));
}

class AesCandidateFiles : public TempDirTest {};

} // namespace

TEST(AesCandidates, KnownAnswersThroughTheStringLayout) {
    // Two copies of each record's block: ECB gives the record's ciphertext
    // twice, then the count byte 0.
    for (const Family &f : kFamilies) {
        for (const auto &rec : read_vector_file(f.vectors)) {
            SCOPED_TRACE(std::string(f.name) + " KEY=" + rec.at("KEY"));
            const std::string key = bytes(from_hex(rec.at("KEY")));
            const std::string pt = bytes(from_hex(rec.at("PT")));
            const std::string ct = bytes(from_hex(rec.at("CT")));
            const std::string expected = ct + ct + std::string(1, '\0');
            EXPECT_TRUE(call(f.encrypt, pt + pt, key) == expected);
            EXPECT_TRUE(call(f.decrypt, expected, key) == pt + pt);
            if (f.code != 0) {
                EXPECT_TRUE(by_code(false, static_cast<int16_t>(f.code + 40), pt + pt, key) == expected);
                EXPECT_TRUE(by_code(true, f.code, expected, key) == pt + pt);
            }
        }
    }
}

TEST(AesCandidates, LengthsKeysAndEmptyInput) {
    for (const Family &f : kFamilies) {
        SCOPED_TRACE(f.name);
        for (std::size_t n : {1, 15, 16, 17, 63, 64, 65, 1000}) {
            const std::string text = sample(n);
            const std::string c = call(f.encrypt, text, kKey);
            const std::size_t padded = (n + 15) / 16 * 16;
            ASSERT_EQ(c.size(), padded + 1) << n;
            EXPECT_EQ(static_cast<uint8_t>(c.back()), padded - n) << n;
            EXPECT_TRUE(call(f.decrypt, c, kKey) == text) << n;
        }
        // 40 bytes of key encipher as their first 32; 31 are refused.
        EXPECT_EQ(call(f.encrypt, "abc", kKey), call(f.encrypt, "abc", kKey.substr(0, 32)));
        EXPECT_NE(call(f.encrypt, "abc", kKey), call(f.encrypt, "abc", "x" + kKey.substr(1)));
        EXPECT_EQ(call(f.encrypt, "abc", kKey.substr(0, 31)), "");
        EXPECT_EQ(call(f.decrypt, call(f.encrypt, "abc", kKey), kKey.substr(0, 31)), "");
        EXPECT_EQ(call(f.encrypt, "", kKey), "");
        Bstr null_text, null_key, key(kKey), text("abc");
        EXPECT_EQ(str(f.encrypt(null_text.ref(), key.ref())), "");
        EXPECT_EQ(str(f.decrypt(null_text.ref(), key.ref())), "");
        EXPECT_EQ(str(f.encrypt(text.ref(), null_key.ref())), "");
        // A count byte of a block or more is refused.
        std::string bad = call(f.encrypt, "abc", kKey);
        bad.back() = '\x10';
        EXPECT_EQ(call(f.decrypt, bad, kKey), "");
    }
}

TEST(AesCandidates, FifteenByteCbcByCode) {
    for (const Family &f : kFamilies) {
        if (f.code == 0)
            continue;
        SCOPED_TRACE(f.name);
        const std::string text = sample(40); // blocks of 16, 16 and 8 (+ 8 padding)
        const std::string iv = sample(16).substr(0, 15) + "\x7F";
        const std::string c = cbc(false, static_cast<int16_t>(f.code + 20), text, kKey, iv);
        ASSERT_EQ(c.size(), 49u);
        // Rebuild the chain from single ECB blocks: XOR bytes 0..14 with the
        // IV or the previous ciphertext block, byte 15 untouched.
        std::string expected, previous = iv;
        std::string padded = text + std::string(8, '\0');
        for (std::size_t b = 0; b < 3; ++b) {
            std::string block = padded.substr(16 * b, 16);
            for (int i = 0; i < 15; ++i)
                block[i] = static_cast<char>(block[i] ^ previous[i]);
            previous = call(f.encrypt, block, kKey).substr(0, 16);
            expected += previous;
        }
        expected += '\x08';
        EXPECT_TRUE(c == expected);
        EXPECT_TRUE(cbc(true, f.code, c, kKey, iv) == text);
        // Byte 16 of the IV does not count; an IV of 1..15 bytes is refused.
        EXPECT_TRUE(cbc(false, f.code, text, kKey, iv.substr(0, 15) + "!extra") == c);
        EXPECT_EQ(cbc(false, f.code, text, kKey, iv.substr(0, 15)), "");
    }
}

TEST_F(AesCandidateFiles, FilesMatchTheStringFormAndComeBack) {
    // ECB files of more than one chunk are the string form of the whole
    // data: the first chunks are whole blocks, only the last is padded.
    for (const Family &f : kFamilies) {
        SCOPED_TRACE(f.name);
        for (std::size_t n : {std::size_t{0}, std::size_t{16}, std::size_t{1000}, std::size_t{32768 + 21}}) {
            const std::string plain = sample(n);
            write_file("plain.bin", plain);
            const int32_t written = file_call(f.encrypt_file, "plain.bin", "out.enc", kKey);
            ASSERT_EQ(written, static_cast<int32_t>((n + 15) / 16 * 16 + 1)) << n;
            const std::string enc = read_file("out.enc");
            if (n == 0) {
                EXPECT_EQ(enc, std::string(1, '\0'));
            } else {
                EXPECT_TRUE(enc == call(f.encrypt, plain, kKey)) << n;
            }
            EXPECT_EQ(file_call(f.decrypt_file, "out.enc", "back.bin", kKey), static_cast<int32_t>(n));
            EXPECT_TRUE(read_file("back.bin") == plain) << n;
            // The string form reads the file form's bytes.
            if (n != 0) {
                EXPECT_TRUE(call(f.decrypt, enc, kKey) == plain) << n;
            }
        }
    }
}

TEST_F(AesCandidateFiles, CbcChunksAndFailureCodes) {
    // 32,768 + 16 bytes by code 21/22: the second chunk is chained from the
    // IV again, so it is the string form of its 16 bytes alone.
    const std::string iv = sample(16);
    const std::string plain = sample(32768 + 16);
    write_file("p.bin", plain);
    for (int16_t code : {int16_t{21}, int16_t{22}}) {
        SCOPED_TRACE(code);
        Bstr s("p.bin"), t("p.enc"), k(kKey), v(iv);
        ASSERT_EQ(cAES2RNDencryptFileCBC(code, s.val(), t.val(), k.ref(), v.ref()), 32768 + 17);
        const std::string file = read_file("p.enc");
        EXPECT_TRUE(file.substr(32768) == cbc(false, code, plain.substr(32768), kKey, iv));
        Bstr s2("p.enc"), t2("p.back");
        EXPECT_EQ(cAES2RNDdecryptFileCBC(code, s2.val(), t2.val(), k.ref(), v.ref()), 32768 + 16);
        EXPECT_TRUE(read_file("p.back") == plain);
    }
    for (const Family &f : kFamilies) {
        SCOPED_TRACE(f.name);
        EXPECT_EQ(file_call(f.encrypt_file, "p.bin", "t1", kKey.substr(0, 31)), -1);
        EXPECT_EQ(file_call(f.decrypt_file, "p.bin", "t2", kKey.substr(0, 31)), -1);
        EXPECT_EQ(file_call(f.encrypt_file, "missing.bin", "t3", kKey), -21);
        // p.bin is 32,784 bytes: not whole blocks plus one.
        EXPECT_EQ(file_call(f.decrypt_file, "p.bin", "t4", kKey), -31);
        for (const char *t : {"t1", "t2", "t3", "t4"})
            EXPECT_FALSE(std::filesystem::exists(t)) << t;
    }
}
