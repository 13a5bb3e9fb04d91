// The CRC-32 engine's plain and chained forms against the standard check
// values. The bare update, both code paths, chaining across any split and
// large buffers are compared with zlib in crc32_paths_engine_test.
#include "compress/crc32.h"

#include <gtest/gtest.h>

using namespace brindle::compress;

TEST(Crc32Engine, KnownValues) {
    EXPECT_EQ(crc32_plain("123456789", 9), 0xCBF43926u);
    EXPECT_EQ(crc32_plain("", 0), 0u);
    EXPECT_EQ(crc32_plain("a", 1), 0xE8B7BE43u);
    EXPECT_EQ(crc32_chained(0xFFFFFFFFu, "123456789", 9), 0xCBF43926u);
}
