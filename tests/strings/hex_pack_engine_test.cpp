// Packing hexadecimal digits undoes writing bytes as hexadecimal.
#include "strings/hex_pack.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

using namespace brindle::strings;

TEST(HexPackEngine, UndoesPrintfHex) {
    std::string bytes, upper, lower;
    for (int v = 0; v < 256; ++v) {
        bytes.push_back(static_cast<char>(v));
        char buf[8];
        std::snprintf(buf, sizeof buf, "%02X", v);
        upper += buf;
        std::snprintf(buf, sizeof buf, "%02x", v);
        lower += buf;
    }
    EXPECT_EQ(pack_hex_digits(upper), bytes);
    EXPECT_EQ(pack_hex_digits(lower), bytes);
}

TEST(HexPackEngine, OddCountsAndOtherBytes) {
    EXPECT_EQ(pack_hex_digits("ABC"), "\x0A\xBC");
    EXPECT_EQ(pack_hex_digits("7"), "\x07");
    // (c - 55) mod 16 for a byte that is not a decimal digit: 'G' gives 0.
    EXPECT_EQ(pack_hex_digits("1G"), "\x10");
}
