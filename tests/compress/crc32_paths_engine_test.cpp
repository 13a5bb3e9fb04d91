// Both ways of the CRC-32 engine (carry-less multiplication where the
// processor has it, tables otherwise) against zlib, over every length up to
// several folding steps, every alignment and arbitrary start registers.
#include "compress/crc32.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <random>
#include <string>

using namespace brindle::compress;

namespace {

// zlib inverts on entry and exit: the bare update is ~zlib(~reg).
uint32_t zlib_update(uint32_t reg, const unsigned char *p, size_t n) {
    return ~static_cast<uint32_t>(::crc32_z(~reg & 0xFFFFFFFFuL, p, n));
}

} // namespace

TEST(Crc32Paths, EveryLengthAlignmentAndStart) {
    std::mt19937 rng(21);
    std::string data(700, '\0');
    for (char &c : data)
        c = static_cast<char>(rng());
    const auto *base = reinterpret_cast<const unsigned char *>(data.data());
    for (size_t offset = 0; offset < 16; ++offset) {
        for (size_t length = 0; length + offset <= 600; ++length) {
            const uint32_t start = (length % 3 == 0) ? 0xFFFFFFFFu : static_cast<uint32_t>(rng());
            const uint32_t expected = zlib_update(start, base + offset, length);
            ASSERT_EQ(crc32_update(start, base + offset, length), expected) << offset << "+" << length;
            ASSERT_EQ(crc32_update_portable(start, base + offset, length), expected) << offset << "+" << length;
        }
    }
}

TEST(Crc32Paths, LargeBuffersAndPieces) {
    std::mt19937 rng(22);
    std::string data((1 << 20) + 37, '\0');
    for (char &c : data)
        c = static_cast<char>(rng());
    const auto *p = reinterpret_cast<const unsigned char *>(data.data());
    const uint32_t whole = crc32_plain(p, data.size());
    EXPECT_EQ(whole, static_cast<uint32_t>(::crc32_z(0, p, data.size())));
    // Any split continues exactly.
    for (size_t cut : {size_t{1}, size_t{15}, size_t{64}, size_t{65}, size_t{4097}, data.size() - 3}) {
        const uint32_t first = crc32_plain(p, cut);
        EXPECT_EQ(crc32_chained(~first, p + cut, data.size() - cut), whole) << cut;
    }
}
