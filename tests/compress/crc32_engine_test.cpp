// The CRC-32 engine against known values and the bitwise definition.
#include "compress/crc32.h"

#include <gtest/gtest.h>

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

// The bare register update against the bitwise definition, from arbitrary
// start registers (the chained forms pass the caller's value unchanged).
TEST(Crc32Engine, UpdateMatchesTheBitwiseRuleFromAnyRegister) {
    const auto bitwise = [](uint32_t reg, const unsigned char *p, size_t n) {
        while (n-- > 0) {
            reg ^= *p++;
            for (int k = 0; k < 8; ++k)
                reg = (reg & 1u) ? 0xEDB88320u ^ (reg >> 1) : reg >> 1;
        }
        return reg;
    };
    std::mt19937 rng(7);
    std::string data(1000, '\0');
    for (char &c : data)
        c = static_cast<char>(rng());
    const auto *p = reinterpret_cast<const unsigned char *>(data.data());
    for (uint32_t start : {0u, 1u, 0xFFFFFFFFu, 0x12345678u, static_cast<uint32_t>(rng())})
        for (size_t length : {0, 1, 7, 8, 9, 64, 1000})
            EXPECT_EQ(crc32_update(start, p, length), bitwise(start, p, length))
                << "start " << start << " length " << length;
}
