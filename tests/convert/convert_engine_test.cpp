// Engines of the conversions: MBF patterns, the EBCDIC tables against the
// real dd, and the btoa encoder's text.
#include "convert/btoa_coder.h"
#include "convert/ebcdic.h"
#include "convert/mbf.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

using namespace brindle::convert;

TEST(MbfEngine, RoundTripKeepsEveryPattern) {
    // Both directions are bijections of the 32-bit patterns.
    for (uint64_t p = 0; p <= 0xFFFFFFFFull; p += 0x00010101ull) {
        const auto bits = static_cast<uint32_t>(p);
        ASSERT_EQ(ieee_from_mbf(mbf_from_ieee(bits)), bits);
        ASSERT_EQ(mbf_from_ieee(ieee_from_mbf(bits)), bits);
    }
    EXPECT_EQ(mbf_from_ieee(0x3F800000u), 0x81000000u);            // 1.0
    EXPECT_EQ(mbf_from_ieee(0xBF000000u), 0x80800000u);            // -0.5
    EXPECT_EQ(ieee_from_mbf(0x00000000u), 0x7F000000u);            // MBF zero: exponent 254
    EXPECT_EQ(mbf_from_ieee(0x12345678u) & 0x007FFFFFu, 0x345678u); // the mantissa is kept
}

namespace {

std::string read_all(const std::string &path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::string table_bytes() {
    std::string t;
    for (int i = 0; i < 256; ++i)
        t += static_cast<char>(kAsciiToEbcdic[static_cast<size_t>(i)]);
    return t;
}

} // namespace

TEST(EbcdicEngine, TableIsTheOneOfDd) {
    // Committed output of dd (tests/data/ebcdic_dd.md tells how it was made).
    const std::string committed = read_all(BRINDLE_TEST_DATA "/ebcdic_dd.bin");
    ASSERT_EQ(committed.size(), 256u);
    EXPECT_EQ(table_bytes(), committed);

    // And the real dd, when the machine has it.
    const std::string in = ::testing::TempDir() + "brindle_ebcdic_in.bin";
    const std::string out = ::testing::TempDir() + "brindle_ebcdic_out.bin";
    {
        std::ofstream f(in, std::ios::binary);
        for (int i = 0; i < 256; ++i)
            f.put(static_cast<char>(i));
    }
    const std::string command = "dd if=" + in + " of=" + out + " conv=ebcdic status=none 2>/dev/null";
    if (std::system(command.c_str()) != 0)
        GTEST_SKIP() << "dd is not available; checked against the committed table only";
    EXPECT_EQ(table_bytes(), read_all(out));
    std::remove(in.c_str());
    std::remove(out.c_str());
}

TEST(EbcdicEngine, InverseInvertsAllBytes) {
    for (int i = 0; i < 256; ++i) {
        const auto c = static_cast<uint8_t>(i);
        EXPECT_EQ(ebcdic_to_ascii(ascii_to_ebcdic(c)), c);
        EXPECT_EQ(ascii_to_ebcdic(ebcdic_to_ascii(c)), c);
    }
    char text[] = "ABC abc 0129";
    ascii_to_ebcdic(text, sizeof text - 1);
    EXPECT_EQ(std::string(text), "\xC1\xC2\xC3\x40\x81\x82\x83\x40\xF0\xF1\xF2\xF9");
    ebcdic_to_ascii(text, sizeof text - 1);
    EXPECT_EQ(std::string(text), "ABC abc 0129");
}

namespace {

std::string encode(const std::string &data, std::string_view name = "f.bin") {
    std::string out;
    BtoaEncoder e(out);
    e.header(name);
    e.feed(reinterpret_cast<const unsigned char *>(data.data()), data.size());
    e.finish();
    return out;
}

} // namespace

TEST(BtoaEngine, SmallInputsByHand) {
    // Four zero bytes: "z"; check (123 mod 85) + 33 = 'G'; E = R = 0x7a, S = 0x7b.
    EXPECT_EQ(encode(std::string(4, '\0')), "xbtoa5 78 f.bin Begin\nzG\nxbtoa End N 4 4 E 7a S 7b R 7a\n");
    // Four spaces: "y".
    EXPECT_EQ(encode("    "), "xbtoa5 78 f.bin Begin\nyF\nxbtoa End N 4 4 E 79 S 7a R 79\n");
    // Nothing: no body line.
    EXPECT_EQ(encode(""), "xbtoa5 78 f.bin Begin\nxbtoa End N 0 0 E 0 S 0 R 0\n");
    // "ABCD" = 0x41424344 = 1094861636, base-85 digits 20 82 67 80 11: "5sdq,".
    // S = sum of c + 1 = 430; check 430 mod 85 + 33 = 38 = '&'.
    EXPECT_EQ(encode("ABCD"), "xbtoa5 78 f.bin Begin\n5sdq,&\nxbtoa End N 4 4 E 7f S 1ae R 986\n");
}

TEST(BtoaEngine, LinesHoldSeventySevenCharactersAndACheck) {
    // 80 bytes of 0xFF: 20 groups of "s8W-!" (0xFFFFFFFF in base 85) = 100 characters.
    const std::string text = encode(std::string(80, '\xff'));
    const size_t body = text.find('\n') + 1;
    const size_t end1 = text.find('\n', body);
    EXPECT_EQ(end1 - body, 78u);
    const size_t end2 = text.find('\n', end1 + 1);
    EXPECT_EQ(end2 - end1 - 1, 100u - 77u + 1u);
    EXPECT_EQ(text.substr(body, 10), "s8W-!s8W-!");
    EXPECT_EQ(text.substr(end2 + 1, 16), "xbtoa End N 80 5");
    // Feeding in odd pieces gives the same text.
    std::string pieces;
    BtoaEncoder e(pieces);
    e.header("f.bin");
    const std::string data(80, '\xff');
    const auto *p = reinterpret_cast<const unsigned char *>(data.data());
    e.feed(p, 3);
    e.feed(p + 3, 1);
    e.feed(p + 4, 6);
    e.feed(p + 10, 70);
    e.finish();
    EXPECT_EQ(pieces, text);
}

TEST(BtoaEngine, NameIsThePartAfterTheLastSeparator) {
    EXPECT_EQ(btoa_name_of("C:\\data\\file.txt"), "file.txt");
    EXPECT_EQ(btoa_name_of("C:file.txt"), "file.txt");
    EXPECT_EQ(btoa_name_of("file.txt"), "file.txt");
    EXPECT_EQ(btoa_name_of("dir\\"), "-");
    EXPECT_EQ(btoa_name_of("dir/file.txt"), "dir/file.txt"); // only "\" and ":" separate
}

TEST(BtoaEngine, EncodingCharactersMatchPythonsAscii85) {
    // Python's base64.a85encode with "y" for four spaces and zero padding
    // writes the same base-85 characters; the line structure is ours.
    std::mt19937 rng(11);
    std::string data;
    for (int i = 0; i < 5000; ++i)
        data += static_cast<char>(rng() % 7 == 0 ? ' ' : rng() % 5 == 0 ? 0 : rng() & 0xFF);
    data += "    " + std::string(4, '\0') + "xy"; // a "y", a "z" and a short last group
    const std::string dir = ::testing::TempDir();
    {
        std::ofstream(dir + "brindle_a85.bin", std::ios::binary).write(data.data(), static_cast<std::streamsize>(data.size()));
    }
    const std::string command = "python3 -c \"import base64,sys; d=open(sys.argv[1],'rb').read(); "
                                "open(sys.argv[2],'wb').write(base64.a85encode(d, foldspaces=True, pad=True))\" " +
                                dir + "brindle_a85.bin " + dir + "brindle_a85.txt 2>/dev/null";
    if (std::system(command.c_str()) != 0)
        GTEST_SKIP() << "python3 is not available";
    const std::string expected = read_all(dir + "brindle_a85.txt");

    const std::string text = encode(data);
    std::string chars;
    size_t start = text.find('\n') + 1;
    for (size_t end; (end = text.find('\n', start)) != std::string::npos && text[start] != 'x'; start = end + 1) {
        ASSERT_LE(end - start, 78u);
        chars += text.substr(start, end - start - 1); // without the check character
    }
    EXPECT_EQ(chars, expected);
    std::remove((dir + "brindle_a85.bin").c_str());
    std::remove((dir + "brindle_a85.txt").c_str());
}
