// DIAMOND, DIAMOND2 and RUBY through the library as a client calls them:
// a published Diamond2 vector through the mode, the layout and round trips
// of strings and files for both blocks, the modes whose rounds the cipher
// refuses, and RUBY's length-preserving feedback over chunk boundaries.
#include "crypto/cipher_calls.h"
#include "crypto/vector_file.h"
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

using namespace brindle::test;

namespace {

// The mode forms below overload the shared calls of the plain forms.
using brindle::test::call;
using brindle::test::file_call;
using ModeStringFn = BSTR(BRINDLE_CALL *)(BSTR *, BSTR *, int16_t);
using ModeFileFn = int32_t(BRINDLE_CALL *)(BSTR, BSTR, BSTR *, int16_t);
struct Family {
    const char *name;
    ModeStringFn encrypt, decrypt;
    ModeFileFn encrypt_file, decrypt_file;
};
const Family kFamilies[] = {
    {"DIAMOND", cDIAMONDencrypt, cDIAMONDdecrypt, cDIAMONDencryptFile, cDIAMONDdecryptFile},
    {"DIAMOND2", cDIAMOND2encrypt, cDIAMOND2decrypt, cDIAMOND2encryptFile, cDIAMOND2decryptFile},
};

std::string call(ModeStringFn f, const std::string &text, const std::string &key, int16_t mode) {
    Bstr t(text), k(key);
    return str(f(t.ref(), k.ref(), mode));
}
int32_t file_call(ModeFileFn f, const std::string &source, const std::string &target, const std::string &key,
                  int16_t mode) {
    Bstr s(source), t(target), k(key);
    return f(s.val(), t.val(), k.ref(), mode);
}
std::string bytes(const std::vector<uint8_t> &v) { return std::string(v.begin(), v.end()); }

std::string sample(std::size_t size) {
    std::string s(size, '\0');
    for (std::size_t i = 0; i < size; ++i)
        s[i] = static_cast<char>((i * 151 + (i >> 9) * 7 + 3) & 0xFF);
    return s;
}

const std::string kKey = "Diamond key, any length";

class KeyedCipherFiles : public TempDirTest {};

// Mode 1 (and -1) is Diamond2 with the 16-byte block and 15 rounds: the
// published record with those parameters comes out, followed by the count
// byte 0; and goes back.
TEST(KeyedCiphers, Diamond2ModeOneIsThePublishedCipher) {
    for (const auto &r : read_vector_file("diamond2.txt")) {
        if (r.at("BLOCK") != "16" || r.at("ROUNDS") != "15")
            continue;
        const std::string key = bytes(from_hex(r.at("KEY"))), pt = bytes(from_hex(r.at("PT")));
        const std::string ct = bytes(from_hex(r.at("CT")));
        for (int16_t mode : {1, -1}) {
            EXPECT_EQ(call(cDIAMOND2encrypt, pt, key, mode), ct + std::string(1, '\0')) << mode;
            EXPECT_EQ(call(cDIAMOND2decrypt, ct + std::string(1, '\0'), key, mode), pt) << mode;
        }
        // A short text: padded with zeros, the count byte says how many.
        const std::string one = pt.substr(0, 1);
        const std::string enc = call(cDIAMOND2encrypt, one, key, 1);
        ASSERT_EQ(enc.size(), 17u);
        EXPECT_EQ(enc.back(), '\x0F');
        EXPECT_EQ(call(cDIAMOND2decrypt, enc, key, 1), one);
        return;
    }
    FAIL() << "no 16-byte, 15-round record";
}

// Lengths around the block, both blocks, each family: the layout (padded
// length + 1, the count byte) and the way back.
TEST(KeyedCiphers, StringRoundTripsAndLayout) {
    for (const Family &f : kFamilies) {
        for (int16_t mode : {1, 2, 4}) {
            const std::size_t block = mode % 2 != 0 ? 16 : 8;
            for (std::size_t n : {1u, 7u, 8u, 9u, 15u, 16u, 17u, 40u, 32768u, 32769u}) {
                const std::string text = sample(n);
                const std::string enc = call(f.encrypt, text, kKey, mode);
                const std::size_t padded = (n + block - 1) / block * block;
                ASSERT_EQ(enc.size(), padded + 1) << f.name << " mode " << mode << " n " << n;
                EXPECT_EQ(static_cast<uint8_t>(enc.back()), padded - n);
                EXPECT_NE(enc.substr(0, n), text);
                EXPECT_EQ(call(f.decrypt, enc, kKey, mode), text) << f.name << " mode " << mode << " n " << n;
                EXPECT_NE(call(f.decrypt, enc, kKey + "x", mode), text);
            }
        }
        // The modes choose different ciphers.
        EXPECT_NE(call(f.encrypt, "sixteen bytes..!", kKey, 1), call(f.encrypt, "sixteen bytes..!", kKey, 3));
        EXPECT_NE(call(f.encrypt, "eight by", kKey, 2), call(f.encrypt, "eight by", kKey, 4));
    }
}

// DIAMOND's odd modes from 3 ask for 30 rounds on the 16-byte block,
// beyond its limit of 15: "" and -2. Every other failure keeps its value.
TEST_F(KeyedCipherFiles, Refusals) {
    write_file("plain.bin", sample(100));
    for (int16_t mode : {3, 5, 99}) {
        EXPECT_EQ(call(cDIAMONDencrypt, "text", kKey, mode), "") << mode;
        EXPECT_EQ(call(cDIAMONDdecrypt, std::string(17, 'x'), kKey, mode), "") << mode;
        EXPECT_EQ(file_call(cDIAMONDencryptFile, "plain.bin", "out.bin", kKey, mode), -2) << mode;
        EXPECT_EQ(file_call(cDIAMONDdecryptFile, "plain.bin", "out.bin", kKey, mode), -2) << mode;
        EXPECT_FALSE(std::filesystem::exists("out.bin"));
        // DIAMOND2 takes 8 rounds there.
        EXPECT_EQ(call(cDIAMOND2encrypt, "text", kKey, mode).size(), 17u) << mode;
    }
    for (const Family &f : kFamilies) {
        EXPECT_EQ(call(f.encrypt, "", kKey, 1), "");
        EXPECT_EQ(call(f.encrypt, "text", "four", 1), "");
        EXPECT_EQ(call(f.decrypt, call(f.encrypt, "text", kKey, 2), "four", 2), "");
        EXPECT_EQ(call(f.decrypt, std::string(10, 'x'), kKey, 2), ""); // not whole blocks + 1
        EXPECT_EQ(call(f.decrypt, std::string(8, 'x') + '\x08', kKey, 2), ""); // count of a block
        EXPECT_EQ(file_call(f.encrypt_file, "plain.bin", "out.bin", "four", 1), -1);
        EXPECT_EQ(file_call(f.encrypt_file, "missing.bin", "out.bin", kKey, 1), -21);
        EXPECT_EQ(file_call(f.decrypt_file, "plain.bin", "out.bin", kKey, 1), -31); // 100 bytes: not 16k + 1
        EXPECT_FALSE(std::filesystem::exists("out.bin"));
    }
    EXPECT_EQ(call(cRUBYencrypt, "", kKey), "");
    EXPECT_EQ(call(cRUBYencrypt, "text", "four"), "");
    EXPECT_EQ(call(cRUBYdecrypt, "text", "four"), "");
    EXPECT_EQ(file_call(cRUBYencryptFile, "plain.bin", "out.bin", "four"), -1);
    EXPECT_EQ(file_call(cRUBYdecryptFile, "missing.bin", "out.bin", kKey), -21);
    EXPECT_EQ(file_call(cRUBYencryptFile, "plain.bin", "plain.bin", kKey), -22);
    EXPECT_EQ(read_file("plain.bin"), sample(100));
}

// Files: the same bytes as the string form up to one chunk, a round trip
// over more than a chunk for both blocks, and the empty file.
TEST_F(KeyedCipherFiles, RoundTripsAndLayout) {
    for (const Family &f : kFamilies) {
        for (int16_t mode : {1, 2}) {
            const std::size_t block = mode == 1 ? 16 : 8;
            write_file("small.bin", sample(1000));
            EXPECT_EQ(file_call(f.encrypt_file, "small.bin", "small.enc", kKey, mode), static_cast<int32_t>((1000 + block - 1) / block * block + 1));
            EXPECT_EQ(read_file("small.enc"), call(f.encrypt, sample(1000), kKey, mode)) << f.name << mode;
            const std::string big = sample(3 * 32768 + 5);
            write_file("big.bin", big);
            const int32_t written = file_call(f.encrypt_file, "big.bin", "big.enc", kKey, mode);
            EXPECT_EQ(written, static_cast<int32_t>((big.size() + block - 1) / block * block + 1));
            EXPECT_EQ(file_call(f.decrypt_file, "big.enc", "big.out", kKey, mode), static_cast<int32_t>(big.size()));
            EXPECT_EQ(read_file("big.out"), big) << f.name << mode;
            write_file("empty.bin", "");
            EXPECT_EQ(file_call(f.encrypt_file, "empty.bin", "empty.enc", kKey, mode), 1);
            EXPECT_EQ(read_file("empty.enc"), std::string(1, '\0'));
            EXPECT_EQ(file_call(f.decrypt_file, "empty.enc", "empty.out", kKey, mode), 0);
        }
    }
}

// RUBY keeps the length, goes back for every length up to 40 and around a
// chunk, depends on every key byte, and reads its files as one stream: the
// file is the string form of the whole data.
TEST_F(KeyedCipherFiles, RubyFeedbackStringsAndFiles) {
    std::vector<std::size_t> lengths;
    for (std::size_t n = 1; n <= 40; ++n)
        lengths.push_back(n);
    for (std::size_t n : {32767u, 32768u, 32769u, 65543u})
        lengths.push_back(n);
    for (std::size_t n : lengths) {
        const std::string text = sample(n);
        const std::string enc = call(cRUBYencrypt, text, kKey);
        ASSERT_EQ(enc.size(), n);
        EXPECT_EQ(call(cRUBYdecrypt, enc, kKey), text) << n;
    }
    // Prefixes agree (a stream), and the key's last byte matters.
    const std::string long_enc = call(cRUBYencrypt, sample(40), kKey);
    EXPECT_EQ(call(cRUBYencrypt, sample(13), kKey), long_enc.substr(0, 13));
    EXPECT_NE(call(cRUBYencrypt, sample(40), kKey.substr(0, kKey.size() - 1) + "!"), long_enc);

    const std::string data = sample(2 * 32768 + 11);
    write_file("data.bin", data);
    EXPECT_EQ(file_call(cRUBYencryptFile, "data.bin", "data.enc", kKey), static_cast<int32_t>(data.size()));
    EXPECT_EQ(read_file("data.enc"), call(cRUBYencrypt, data, kKey));
    EXPECT_EQ(file_call(cRUBYdecryptFile, "data.enc", "data.out", kKey), static_cast<int32_t>(data.size()));
    EXPECT_EQ(read_file("data.out"), data);
    write_file("empty.bin", "");
    EXPECT_EQ(file_call(cRUBYencryptFile, "empty.bin", "empty.enc", kKey), 0);
    EXPECT_EQ(read_file("empty.enc"), "");
}

} // namespace
