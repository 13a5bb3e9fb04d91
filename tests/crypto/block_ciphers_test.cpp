// The block-cipher exports through the library: the layout's edge cases,
// the dispatcher's codes, the 15-byte CBC, the file forms and their codes,
// and the known-answer files of tests/data/crypto (made by make_samples.py
// with the Python cryptography package: OpenSSL's AES, DES and IDEA, the
// layout applied by the script), checked both ways on every target.
#include "crypto/cipher_calls.h"
#include "crypto/vector_file.h"
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

#ifndef _WIN32
#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

using namespace brindle::test;

namespace {

const std::string kAesKey = [] {
    std::string k;
    for (int i = 0x20; i < 0x20 + 40; ++i)
        k += static_cast<char>(i);
    return k;
}();
const std::string kDesKey = "DESkey!!+ignored";
const std::string kIdeaKey = "IDEA key 128 bit+ignored";
const std::string kIv = [] {
    std::string v;
    for (int i = 0xA0; i < 0xB0; ++i)
        v += static_cast<char>(i);
    return v;
}();

// The plaintext of the known-answer files (make_samples.py: sample()).
std::string sample(std::size_t size = 32768 + 1005) {
    std::string s(size, '\0');
    for (std::size_t i = 0; i < size; ++i)
        s[i] = static_cast<char>((i * 167 + (i >> 7) * 31 + 11) & 0xFF);
    return s;
}

std::string data_file(const std::string &name) {
    return read_whole_file(std::string(BRINDLE_TEST_DATA) + "/crypto/" + name);
}

int32_t cbc_file(bool decrypt, int16_t code, const std::string &source, const std::string &target,
                 const std::string &key, const std::string &iv) {
    Bstr s(source), t(target), k(key), v(iv);
    return (decrypt ? cAES2RNDdecryptFileCBC : cAES2RNDencryptFileCBC)(code, s.val(), t.val(), k.ref(), v.ref());
}

struct Family {
    const char *name;
    StringFn encrypt, decrypt;
    FileFn encrypt_file, decrypt_file;
    std::string key;
    std::size_t block;
    const char *sample;
};

std::vector<Family> families() {
    return {{"Rijndael", cRIJNDAELencrypt, cRIJNDAELdecrypt, cRIJNDAELencryptFile, cRIJNDAELdecryptFile, kAesKey, 16,
             "sample.rijndael"},
            {"DES", cDESencrypt, cDESdecrypt, cDESencryptFile, cDESdecryptFile, kDesKey, 8, "sample.des"},
            {"IDEA", cIDEAencrypt, cIDEAdecrypt, cIDEAencryptFile, cIDEAdecryptFile, kIdeaKey, 16 / 2, "sample.idea"}};
}

class BlockCipherFiles : public TempDirTest {};

} // namespace

TEST(BlockCiphers, LengthsCountByteAndRoundTrips) {
    for (const Family &f : families()) {
        SCOPED_TRACE(f.name);
        for (std::size_t n : {std::size_t{1}, f.block - 1, f.block, f.block + 1, std::size_t{100}, std::size_t{70000}}) {
            const std::string text = sample(n);
            const std::string c = call(f.encrypt, text, f.key);
            const std::size_t padded = (n + f.block - 1) / f.block * f.block;
            ASSERT_EQ(c.size(), padded + 1) << n;
            EXPECT_EQ(static_cast<uint8_t>(c.back()), padded - n) << n;
            EXPECT_EQ(call(f.decrypt, c, f.key), text) << n;
        }
        // Only the first key bytes count; one byte fewer is refused.
        const std::size_t need = f.block == 16 ? 32 : f.name[0] == 'D' ? 8 : 16;
        EXPECT_EQ(call(f.encrypt, "x", f.key.substr(0, need)), call(f.encrypt, "x", f.key.substr(0, need) + "zz"));
        EXPECT_EQ(call(f.encrypt, "x", f.key.substr(0, need - 1)), "");
        EXPECT_EQ(call(f.decrypt, call(f.encrypt, "x", f.key), f.key.substr(0, need - 1)), "");
        EXPECT_EQ(call(f.encrypt, "", f.key), "");
        Bstr null_text, key(f.key);
        EXPECT_EQ(str(f.encrypt(null_text.ref(), key.ref())), "");
        EXPECT_EQ(str(f.decrypt(null_text.ref(), key.ref())), "");
    }
}

TEST(BlockCiphers, RijndaelSpecimens) {
    // 16 bytes: 17 back, ending in the count 0; 1 byte: 17 back, ending in 15.
    const std::string sixteen = "0123456789ABCDEF";
    const std::string c16 = call(cRIJNDAELencrypt, sixteen, kAesKey);
    ASSERT_EQ(c16.size(), 17u);
    EXPECT_EQ(c16[16], '\0');
    const std::string c1 = call(cRIJNDAELencrypt, "Z", kAesKey);
    ASSERT_EQ(c1.size(), 17u);
    EXPECT_EQ(c1[16], '\x0F');
    EXPECT_EQ(call(cRIJNDAELdecrypt, c1, kAesKey), "Z");
    // FIPS 197 C.3: AES-256, key 00..1f, plaintext 00112233..ff.
    std::string key, pt;
    for (int i = 0; i < 32; ++i)
        key += static_cast<char>(i);
    for (int i = 0; i < 16; ++i)
        pt += static_cast<char>(i * 0x11);
    EXPECT_EQ(to_hex(reinterpret_cast<const uint8_t *>(call(cRIJNDAELencrypt, pt, key).data()), 16),
              "8EA2B7CA516745BFEAFC49904B496089");
}

TEST(BlockCiphers, DamagedTextsGiveEmptyOrWholeBlocks) {
    const std::string c = call(cRIJNDAELencrypt, std::string(20, 'q'), kAesKey); // 33 bytes, count 12
    for (std::size_t cut : {std::size_t{1}, std::size_t{2}, std::size_t{15}, std::size_t{18}, std::size_t{31}})
        EXPECT_EQ(call(cRIJNDAELdecrypt, c.substr(0, cut), kAesKey), "") << "length " << cut;
    // Count bytes of a block or more.
    for (int count : {16, 17, 200, 255}) {
        std::string bad = c;
        bad.back() = static_cast<char>(count);
        EXPECT_EQ(call(cRIJNDAELdecrypt, bad, kAesKey), "") << count;
    }
    // Whole blocks without the count byte: all deciphered (the count reads as 0).
    const std::string whole = call(cRIJNDAELdecrypt, c.substr(0, 32), kAesKey);
    EXPECT_EQ(whole, std::string(20, 'q') + std::string(12, '\0'));
    // The count byte alone.
    EXPECT_EQ(call(cRIJNDAELdecrypt, std::string(1, '\0'), kAesKey), "");
    EXPECT_EQ(call(cRIJNDAELdecrypt, std::string(1, '\x05'), kAesKey), "");
    EXPECT_EQ(call(cDESdecrypt, std::string(9, '\x08'), kDesKey), "");
}

TEST(BlockCiphers, DispatcherCodes) {
    const std::string text = "dispatch me";
    const std::string rijndael = call(cRIJNDAELencrypt, text, kAesKey);
    for (int16_t code : {int16_t{3}, int16_t{23}, int16_t{43}, int16_t{32763}})
        EXPECT_EQ(code_call(cAES2RNDencrypt, code, text, kAesKey), rijndael) << code;
    EXPECT_EQ(code_call(cAES2RNDdecrypt, 23, rijndael, kAesKey), text);
    // Not a cipher: nothing.
    for (int16_t code : {int16_t{0}, int16_t{6}, int16_t{19}, int16_t{20},
                         int16_t{-3}, int16_t{-17}, int16_t{-32768}}) {
        EXPECT_EQ(code_call(cAES2RNDencrypt, code, text, kAesKey), "") << code;
        EXPECT_EQ(code_call(cAES2RNDdecrypt, code, rijndael, kAesKey), "") << code;
        EXPECT_EQ(cbc(false, code, text, kAesKey, kIv), "") << code;
    }
}

TEST(BlockCiphers, FifteenByteCbc) {
    const std::string text = sample(100);
    const std::string c = cbc(false, 23, text, kAesKey, kIv);
    ASSERT_EQ(c.size(), 113u);
    EXPECT_EQ(cbc(true, 3, c, kAesKey, kIv), text);
    // The 16th IV byte and anything after it do not count.
    std::string iv2 = kIv;
    iv2[15] = '\x55';
    EXPECT_EQ(cbc(false, 3, text, kAesKey, iv2), c);
    EXPECT_EQ(cbc(false, 3, text, kAesKey, kIv + "more"), c);
    // Any of the first 15 does.
    std::string iv3 = kIv;
    iv3[14] ^= 1;
    EXPECT_NE(cbc(false, 3, text, kAesKey, iv3), c);
    // Short IVs are refused; "" is 15 zero bytes.
    for (std::size_t n : {1, 8, 15})
        EXPECT_EQ(cbc(false, 3, text, kAesKey, kIv.substr(0, n)), "") << n;
    EXPECT_EQ(cbc(false, 3, text, kAesKey, ""), cbc(false, 3, text, kAesKey, std::string(16, '\0')));
    // With a zero IV the first block is the ECB block; byte 15 of a later
    // block is never chained, so ECB and CBC agree there whenever the
    // plaintext blocks agree there... checked through the decryption: a
    // flipped byte 15 of ciphertext block 1 damages only plaintext block 1
    // (all of it) and byte 15 of block 2 stays.
    const std::string z = cbc(false, 3, text, kAesKey, "");
    EXPECT_EQ(z.substr(0, 16), call(cRIJNDAELencrypt, text.substr(0, 16), kAesKey).substr(0, 16));
    std::string damaged = c;
    damaged[15] ^= 1;
    const std::string back = cbc(true, 3, damaged, kAesKey, kIv);
    EXPECT_NE(back.substr(0, 16), text.substr(0, 16));
    EXPECT_EQ(back.substr(16, 15), text.substr(16, 15)); // bytes 0..14 chain from bytes 0..14 only
    EXPECT_EQ(back.substr(32), text.substr(32));
}

TEST_F(BlockCipherFiles, KnownAnswerFilesBothWays) {
    const std::string plain = sample();
    write_file("plain.bin", plain);
    for (const Family &f : families()) {
        SCOPED_TRACE(f.name);
        const std::string expected = data_file(f.sample);
        ASSERT_EQ(expected.size(), (plain.size() + f.block - 1) / f.block * f.block + 1);
        EXPECT_EQ(file_call(f.encrypt_file, "plain.bin", "out.enc", f.key), static_cast<int32_t>(expected.size()));
        EXPECT_TRUE(read_file("out.enc") == expected);
        write_file("in.enc", expected);
        EXPECT_EQ(file_call(f.decrypt_file, "in.enc", "back.bin", f.key), static_cast<int32_t>(plain.size()));
        EXPECT_TRUE(read_file("back.bin") == plain);
        // Up to one chunk the file is the string form.
        write_file("small.bin", plain.substr(0, 1000));
        EXPECT_EQ(file_call(f.encrypt_file, "small.bin", "small.enc", f.key), static_cast<int32_t>((1000 + f.block - 1) / f.block * f.block + 1));
        EXPECT_EQ(read_file("small.enc"), call(f.encrypt, plain.substr(0, 1000), f.key));
    }
    const std::string cbc_expected = data_file("sample.rijndael_cbc");
    EXPECT_EQ(cbc_file(false, 23, "plain.bin", "cbc.enc", kAesKey, kIv), static_cast<int32_t>(cbc_expected.size()));
    EXPECT_TRUE(read_file("cbc.enc") == cbc_expected);
    EXPECT_EQ(cbc_file(true, 3, "cbc.enc", "cbc.bin", kAesKey, kIv), static_cast<int32_t>(plain.size()));
    EXPECT_TRUE(read_file("cbc.bin") == plain);
    // The dispatcher's ECB file is the Rijndael file.
    Bstr s("plain.bin"), t("disp.enc"), k(kAesKey);
    EXPECT_EQ(cAES2RNDencryptFile(43, s.val(), t.val(), k.ref()), static_cast<int32_t>(plain.size() / 16 * 16 + 17));
    EXPECT_TRUE(read_file("disp.enc") == data_file("sample.rijndael"));
}

TEST_F(BlockCipherFiles, ChunksChainFromTheIvAgain) {
    // 32,768 + 16 bytes: the second chunk is one block, chained from the IV,
    // so it is the string form of those 16 bytes; the file ends in count 0.
    const std::string plain = sample(32768 + 16);
    write_file("p.bin", plain);
    ASSERT_EQ(cbc_file(false, 3, "p.bin", "p.enc", kAesKey, kIv), 32768 + 16 + 1);
    const std::string file = read_file("p.enc");
    EXPECT_EQ(file.substr(0, 32768), cbc(false, 3, plain.substr(0, 32768), kAesKey, kIv).substr(0, 32768));
    EXPECT_EQ(file.substr(32768), cbc(false, 3, plain.substr(32768), kAesKey, kIv));
    // An empty source gives the single zero byte, and back the empty file.
    write_file("empty.bin", "");
    EXPECT_EQ(file_call(cRIJNDAELencryptFile, "empty.bin", "empty.enc", kAesKey), 1);
    EXPECT_EQ(read_file("empty.enc"), std::string(1, '\0'));
    EXPECT_EQ(file_call(cRIJNDAELdecryptFile, "empty.enc", "empty.back", kAesKey), 0);
    EXPECT_TRUE(std::filesystem::exists("empty.back"));
    // A source of whole chunks: the zero count byte follows the last chunk.
    write_file("two.bin", sample(65536));
    EXPECT_EQ(file_call(cDESencryptFile, "two.bin", "two.enc", kDesKey), 65537);
    EXPECT_EQ(file_call(cDESdecryptFile, "two.enc", "two.back", kDesKey), 65536);
    EXPECT_TRUE(read_file("two.back") == sample(65536));
}

// An existing target is written over and cut where the new contents end:
// nothing of a longer old file survives, a shorter one grows, and other
// names of the file (a hard link) see the new contents, as after "wb".
TEST_F(BlockCipherFiles, ExistingTargetsAreReplacedWhole) {
    const std::string plain = sample(70005); // two chunks and a padded part
    write_file("p.bin", plain);
    const std::string expected = call(cRIJNDAELencrypt, plain, kAesKey);
    ASSERT_EQ(expected.size(), 70017u);
    for (const size_t old_size : {size_t{300000}, size_t{70017}, size_t{10}, size_t{0}}) {
        SCOPED_TRACE(old_size);
        write_file("t.enc", std::string(old_size, 'X'));
        std::filesystem::remove("link.enc");
        std::filesystem::create_hard_link("t.enc", "link.enc");
        ASSERT_EQ(file_call(cRIJNDAELencryptFile, "p.bin", "t.enc", kAesKey), 70017);
        EXPECT_TRUE(read_file("t.enc") == expected);
        EXPECT_TRUE(read_file("link.enc") == expected);
        write_file("back.bin", std::string(old_size + 5, 'Y'));
        ASSERT_EQ(file_call(cRIJNDAELdecryptFile, "t.enc", "back.bin", kAesKey), 70005);
        EXPECT_TRUE(read_file("back.bin") == plain);
    }
    // A failure still deletes the target it wrote over.
    write_file("bad.enc", expected.substr(0, 40000));
    write_file("old.bin", std::string(100000, 'Z'));
    EXPECT_EQ(file_call(cRIJNDAELdecryptFile, "bad.enc", "old.bin", kAesKey), -31);
    EXPECT_FALSE(std::filesystem::exists("old.bin"));
}

TEST_F(BlockCipherFiles, CodesAndNoTargetLeftBehind) {
    write_file("p.bin", sample(5000));
    struct Case {
        const char *what;
        int32_t got, expected;
    };
    const Case cases[] = {
        {"short key", file_call(cRIJNDAELencryptFile, "p.bin", "t1", kAesKey.substr(0, 31)), -1},
        {"short DES key", file_call(cDESdecryptFile, "p.bin", "t2", "1234567"), -1},
        {"short IDEA key", file_call(cIDEAencryptFile, "p.bin", "t3", std::string(15, 'k')), -1},
        {"short IV", cbc_file(false, 3, "p.bin", "t4", kAesKey, "short"), -3},
        {"short IV, decrypting", cbc_file(true, 23, "p.bin", "t5", kAesKey, std::string(15, 'v')), -3},
        {"missing source", file_call(cRIJNDAELencryptFile, "missing.bin", "t6", kAesKey), -21},
        {"empty source name", file_call(cRIJNDAELencryptFile, "", "t7", kAesKey), -21},
        {"target in a missing folder", file_call(cRIJNDAELencryptFile, "p.bin", "nofolder\\t8", kAesKey), -22},
        {"target is the source", file_call(cRIJNDAELencryptFile, "p.bin", ".\\p.bin", kAesKey), -22},
        {"code naming nothing", cbc_file(false, 6, "p.bin", "t9", kAesKey, kIv), 0},
        {"code naming nothing, negative", cbc_file(false, -21, "p.bin", "t10", kAesKey, kIv), 0},
    };
    for (const Case &c : cases)
        EXPECT_EQ(c.got, c.expected) << c.what;
    for (const char *t : {"t1", "t2", "t3", "t4", "t5", "t6", "t7", "t9", "t10"})
        EXPECT_FALSE(std::filesystem::exists(t)) << t;
    EXPECT_TRUE(read_file("p.bin") == sample(5000)); // the source survived
}

TEST_F(BlockCipherFiles, DamagedSourcesAreRefusedAndTheTargetDeleted) {
    write_file("p.bin", sample(40000));
    ASSERT_EQ(file_call(cRIJNDAELencryptFile, "p.bin", "p.enc", kAesKey), 40001);
    const std::string good = read_file("p.enc");
    std::vector<std::pair<std::string, std::string>> damaged = {
        {"empty", ""},
        {"cut by one", good.substr(0, good.size() - 1)},
        {"cut inside the first chunk", good.substr(0, 1000)},
        {"cut after the first chunk", good.substr(0, 32768)},
        {"one byte more", good + "x"},
        {"a block more", good + std::string(16, 'x')},
    };
    for (int count : {16, 255}) {
        std::string bad = good;
        bad.back() = static_cast<char>(count);
        damaged.push_back({"count " + std::to_string(count), bad});
    }
    for (const auto &[what, bytes] : damaged) {
        write_file("bad.enc", bytes);
        EXPECT_EQ(file_call(cRIJNDAELdecryptFile, "bad.enc", "bad.out", kAesKey), -31) << what;
        EXPECT_FALSE(std::filesystem::exists("bad.out")) << what;
    }
    // A DES file cut to a whole number of blocks plus one but with count 8.
    write_file("d.enc", std::string(17, '\x08'));
    EXPECT_EQ(file_call(cDESdecryptFile, "d.enc", "d.out", kDesKey), -31);
}

#ifndef _WIN32
// A write that fails (the file size limit of the process): -41, and the
// partial target is gone. Run in a child so the limit stays there.
TEST_F(BlockCipherFiles, FailedWriteDeletesTheTarget) {
    write_file("p.bin", sample(100000));
    ASSERT_EQ(file_call(cRIJNDAELencryptFile, "p.bin", "p.enc", kAesKey), 100001);
    const pid_t pid = fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{40000, 40000};
        setrlimit(RLIMIT_FSIZE, &limit);
        const int32_t r = file_call(cRIJNDAELencryptFile, "p.bin", "big.enc", kAesKey);
        const int32_t d = file_call(cRIJNDAELdecryptFile, "p.enc", "big.out", kAesKey);
        _exit(r == -41 && d == -41 && !std::filesystem::exists("big.enc") && !std::filesystem::exists("big.out") ? 0 : 1);
    }
    int status = 0;
    waitpid(pid, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
}
#endif
