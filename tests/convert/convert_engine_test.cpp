// Engines of the conversions: every MBF pattern both ways, and the btoa
// encoder's text against hand-worked groups and Python's ascii85. The
// EBCDIC tables are checked against dd through the exports.
#include "convert/btoa_coder.h"
#include "convert/mbf.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <string>

using namespace brindle::convert;
using brindle::test::read_whole_file;

TEST(MbfEngine, RoundTripKeepsEveryPattern) {
    // Both directions are bijections of the 32-bit patterns.
    for (uint64_t p = 0; p <= 0xFFFFFFFFull; p += 0x00010101ull) {
        const auto bits = static_cast<uint32_t>(p);
        ASSERT_EQ(ieee_from_mbf(mbf_from_ieee(bits)), bits);
        ASSERT_EQ(mbf_from_ieee(ieee_from_mbf(bits)), bits);
    }
    // Known patterns (1.0, -0.5, MBF zero) are checked through the exports.
    EXPECT_EQ(mbf_from_ieee(0x12345678u) & 0x007FFFFFu, 0x345678u); // the mantissa is kept
}

namespace {

// The encoder's text for `data` fed in pieces of the given sizes (the rest
// in one piece).
std::string encode(const std::string &data, std::initializer_list<size_t> pieces = {}) {
    std::string out;
    BtoaEncoder e(out);
    e.header("f.bin");
    const auto *p = reinterpret_cast<const unsigned char *>(data.data());
    size_t done = 0;
    for (size_t n : pieces) {
        e.feed(p + done, n);
        done += n;
    }
    e.feed(p + done, data.size() - done);
    e.finish();
    return out;
}

} // namespace

TEST(BtoaEngine, GroupsWorkedByHand) {
    // Four zero bytes and the empty file are pinned through the exports.
    // Four spaces: "y"; check (sum of c + 1 = 122) mod 85 + 33 = 'F'.
    EXPECT_EQ(encode("    "), "xbtoa5 78 f.bin Begin\nyF\nxbtoa End N 4 4 E 79 S 7a R 79\n");
    // "ABCD" = 0x41424344 = 1094861636, base-85 digits 20 82 67 80 11: "5sdq,".
    // S = sum of c + 1 = 430; check 430 mod 85 + 33 = 38 = '&'.
    EXPECT_EQ(encode("ABCD"), "xbtoa5 78 f.bin Begin\n5sdq,&\nxbtoa End N 4 4 E 7f S 1ae R 986\n");
    // The name is the part after the last "\" or ":" (not "/").
    const struct {
        const char *path, *name;
    } rows[] = {{"C:\\data\\file.txt", "file.txt"}, {"C:file.txt", "file.txt"}, {"file.txt", "file.txt"},
                {"dir\\", "-"},                    {"dir/file.txt", "dir/file.txt"}};
    for (const auto &r : rows)
        EXPECT_EQ(btoa_name_of(r.path), r.name) << r.path;
}

TEST(BtoaEngine, LinesHoldSeventySevenCharactersAndACheck) {
    // 80 bytes of 0xFF: 20 groups of "s8W-!" (0xFFFFFFFF in base 85) = 100 characters.
    const std::string data(80, '\xff');
    const std::string text = encode(data);
    const size_t body = text.find('\n') + 1;
    const size_t end1 = text.find('\n', body);
    EXPECT_EQ(end1 - body, 78u);
    const size_t end2 = text.find('\n', end1 + 1);
    EXPECT_EQ(end2 - end1 - 1, 100u - 77u + 1u);
    EXPECT_EQ(text.substr(body, 10), "s8W-!s8W-!");
    EXPECT_EQ(text.substr(end2 + 1, 16), "xbtoa End N 80 5");
    EXPECT_EQ(encode(data, {3, 1, 6}), text) << "feeding in odd pieces gives the same text";
}

TEST(BtoaEngine, EncodingCharactersMatchPythonsAscii85) {
    // Python's base64.a85encode with "y" for four spaces and zero padding
    // writes the same base-85 characters; the line structure is ours.
    std::mt19937 rng(11);
    std::string data;
    for (int i = 0; i < 5000; ++i)
        data += static_cast<char>(rng() % 7 == 0 ? ' ' : rng() % 5 == 0 ? 0 : rng() & 0xFF);
    data += "    " + std::string(4, '\0') + "xy"; // a "y", a "z" and a short last group
    const std::string in = ::testing::TempDir() + "brindle_a85.bin", out = ::testing::TempDir() + "brindle_a85.txt";
    std::ofstream(in, std::ios::binary).write(data.data(), static_cast<std::streamsize>(data.size()));
    const std::string command = "python3 -c \"import base64,sys; d=open(sys.argv[1],'rb').read(); "
                                "open(sys.argv[2],'wb').write(base64.a85encode(d, foldspaces=True, pad=True))\" " +
                                in + " " + out + " 2>/dev/null";
    if (std::system(command.c_str()) != 0)
        GTEST_SKIP() << "python3 is not available";
    const std::string expected = read_whole_file(out);
    std::remove(in.c_str());
    std::remove(out.c_str());

    const std::string text = encode(data);
    std::string chars;
    size_t start = text.find('\n') + 1;
    for (size_t end; (end = text.find('\n', start)) != std::string::npos && text[start] != 'x'; start = end + 1) {
        ASSERT_LE(end - start, 78u);
        chars += text.substr(start, end - start - 1); // without the check character
    }
    EXPECT_EQ(chars, expected);
}
