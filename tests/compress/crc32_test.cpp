// The string and file CRC-32 exports, with known values and zlib's crc32 as
// the oracle (the same polynomial and conventions as Python's zlib.crc32).
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <zlib.h>

#include <random>
#include <string>

using namespace brindle::test;

namespace {

int32_t zcrc(std::string_view bytes) {
    return static_cast<int32_t>(crc32(0L, reinterpret_cast<const Bytef *>(bytes.data()), static_cast<uInt>(bytes.size())));
}

std::string random_bytes(size_t n, unsigned seed) {
    std::mt19937 rng(seed);
    std::string s(n, '\0');
    for (char &c : s)
        c = static_cast<char>(rng());
    return s;
}

int32_t file_crc(std::string_view name, int16_t mode) {
    Bstr n(name);
    return cFileCRC32(n.ref(), mode);
}

class FileCrc : public TempDirTest {};

} // namespace

TEST(StringCrc, KnownValuesAndChaining) {
    Bstr check("123456789"), empty;
    EXPECT_EQ(static_cast<uint32_t>(cStringCRC32(check.ref())), 0xCBF43926u);
    EXPECT_EQ(cStringCRC32(empty.ref()), -1);
    EXPECT_EQ(cStringBlockCRC32(-1, check.ref()), cStringCRC32(check.ref()));
    EXPECT_EQ(cStringBlockCRC32(12345, empty.ref()), -1);

    const std::string a = random_bytes(1000, 1), b = random_bytes(777, 2);
    Bstr ba(a), bb(b), joined(a + b);
    EXPECT_EQ(cStringCRC32(ba.ref()), zcrc(a));
    EXPECT_EQ(cStringCRC32(joined.ref()), zcrc(a + b));
    // Continuing takes the previous result inverted.
    EXPECT_EQ(cStringBlockCRC32(~cStringCRC32(ba.ref()), bb.ref()), cStringCRC32(joined.ref()));
    // The start value is used as given (not inverted): 0 is not the plain value.
    EXPECT_NE(cStringBlockCRC32(0, ba.ref()), cStringCRC32(ba.ref()));
    // zlib inverts its start value on entry, so its start ~0 is a register
    // of 0.
    EXPECT_EQ(cStringBlockCRC32(0, ba.ref()),
              static_cast<int32_t>(crc32(0xFFFFFFFFuL, reinterpret_cast<const Bytef *>(a.data()), static_cast<uInt>(a.size()))));
}

TEST(StringCrc, ZeroBytesAndEveryLength) {
    for (size_t n = 1; n < 100; ++n) {
        const std::string s = random_bytes(n, static_cast<unsigned>(n));
        Bstr b(s);
        ASSERT_EQ(cStringCRC32(b.ref()), zcrc(s)) << n;
    }
}

TEST_F(FileCrc, WholeFileBinaryAndText) {
    const std::string data = random_bytes(100000, 3);
    write_file("data.bin", data);
    EXPECT_EQ(file_crc("data.bin", 0), zcrc(data));
    EXPECT_EQ(file_crc("data.bin", 2), zcrc(data)); // any mode but 1 is binary
    write_file("empty.bin", "");
    EXPECT_EQ(file_crc("empty.bin", 0), 0);
    EXPECT_EQ(file_crc("missing.bin", 0), -1);
    EXPECT_EQ(file_crc("", 0), -1);
    std::filesystem::create_directory("folder");
    EXPECT_EQ(file_crc("folder", 0), -1);
    EXPECT_EQ(file_crc("folder", 1), -1);
    Bstr folder("folder");
    EXPECT_EQ(cFileCRC32Ext(-1, folder.ref()), -1);

    // Text mode: CR LF reads as LF, a Ctrl-Z ends the data.
    write_file("text.txt", "A\r\n");
    EXPECT_EQ(file_crc("text.txt", 1), zcrc("A\n"));
    EXPECT_EQ(file_crc("text.txt", 0), zcrc("A\r\n"));
    write_file("ctrlz.txt", "one\r\ntwo\x1Arest");
    EXPECT_EQ(file_crc("ctrlz.txt", 1), zcrc("one\ntwo"));
    write_file("lone.txt", "a\rb\n\r");
    EXPECT_EQ(file_crc("lone.txt", 1), zcrc("a\rb\n\r"));
    // A CR LF pair split across the 32,768-byte chunks.
    std::string big(32767, 'x');
    big += "\r\nend";
    write_file("split.txt", big);
    EXPECT_EQ(file_crc("split.txt", 1), zcrc(std::string(32767, 'x') + "\nend"));
}

TEST_F(FileCrc, ExtAndMinus4NeedFiveBytes) {
    write_file("four.bin", "abcd");
    Bstr four("four.bin");
    EXPECT_EQ(cFileCRC32Minus4(four.ref()), -1);
    EXPECT_EQ(cFileCRC32Minus4Ext(-1, four.ref()), -1);
    EXPECT_EQ(cFileCRC32Ext(-1, four.ref()), -1);
    EXPECT_EQ(file_crc("four.bin", 0), zcrc("abcd"));

    write_file("five.bin", "abcde");
    Bstr five("five.bin");
    EXPECT_EQ(cFileCRC32Minus4(five.ref()), zcrc("a"));
    EXPECT_EQ(cFileCRC32Ext(-1, five.ref()), zcrc("abcde"));

    Bstr missing("nope.bin"), empty;
    EXPECT_EQ(cFileCRC32Ext(-1, missing.ref()), -1);
    EXPECT_EQ(cFileCRC32Minus4(missing.ref()), -1);
    EXPECT_EQ(cFileCRC32Minus4(empty.ref()), -1);
}

TEST_F(FileCrc, BodiesAcrossChunks) {
    // 32,768 + 4 bytes: Minus4 is the checksum of the first 32,768.
    const std::string data = random_bytes(32768 + 4, 4);
    write_file("rec.bin", data);
    Bstr rec("rec.bin");
    EXPECT_EQ(cFileCRC32Minus4(rec.ref()), zcrc(data.substr(0, 32768)));
    EXPECT_EQ(cFileCRC32Minus4Ext(-1, rec.ref()), zcrc(data.substr(0, 32768)));
    EXPECT_EQ(cFileCRC32Ext(-1, rec.ref()), zcrc(data));

    // Chaining over a file continues a string's checksum.
    const std::string head = "header:";
    Bstr h(head);
    EXPECT_EQ(cFileCRC32Ext(~cStringCRC32(h.ref()), rec.ref()), zcrc(head + data));
    EXPECT_EQ(cFileCRC32Minus4Ext(~cStringCRC32(h.ref()), rec.ref()), zcrc(head + data.substr(0, 32768)));

    const std::string large = random_bytes(3 * 32768 + 1234, 5);
    write_file("large.bin", large);
    Bstr l("large.bin");
    EXPECT_EQ(cFileCRC32Minus4(l.ref()), zcrc(large.substr(0, large.size() - 4)));
    EXPECT_EQ(file_crc("large.bin", 0), zcrc(large));
    // Windows-style names reach the same file.
    EXPECT_EQ(file_crc(".\\large.bin", 0), zcrc(large));
}

TEST_F(FileCrc, RecordCarryingItsOwnChecksum) {
    // The use the Minus4 form exists for: a record whose last 4 bytes hold
    // the checksum of the rest.
    std::string record = "some record body";
    const int32_t c = zcrc(record);
    record.append(reinterpret_cast<const char *>(&c), 4);
    write_file("record.bin", record);
    Bstr name("record.bin");
    EXPECT_EQ(cFileCRC32Minus4(name.ref()), c);
}
