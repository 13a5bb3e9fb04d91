// The CRC-32 engine against known values and zlib's crc32 as an oracle.
#include "compress/crc32.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <random>
#include <string>

using namespace brindle::compress;

TEST(Crc32Engine, KnownValues) {
    EXPECT_EQ(crc32_plain("123456789", 9), 0xCBF43926u);
    EXPECT_EQ(crc32_plain("", 0), 0u);
    EXPECT_EQ(crc32_plain("a", 1), 0xE8B7BE43u);
    EXPECT_EQ(crc32_chained(0xFFFFFFFFu, "123456789", 9), 0xCBF43926u);
}

TEST(Crc32Engine, ChainingContinuesWithTheInvertedResult) {
    const std::string a = "The quick brown fox ", b = "jumps over the lazy dog";
    const uint32_t first = crc32_plain(a.data(), a.size());
    EXPECT_EQ(crc32_chained(~first, b.data(), b.size()), crc32_plain((a + b).data(), a.size() + b.size()));
}

TEST(Crc32Engine, MatchesZlibOnEveryLengthAndAlignment) {
    std::mt19937 rng(7);
    std::string data(4096 + 16, '\0');
    for (char &c : data)
        c = static_cast<char>(rng());
    for (size_t offset = 0; offset < 8; ++offset)
        for (size_t length : {0, 1, 7, 8, 9, 15, 16, 17, 63, 64, 1000, 4096}) {
            const auto *p = reinterpret_cast<const Bytef *>(data.data() + offset);
            EXPECT_EQ(crc32_plain(p, length), ::crc32(0, p, static_cast<uInt>(length)))
                << "offset " << offset << " length " << length;
        }
}
