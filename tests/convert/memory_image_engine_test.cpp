// Memory images: byte order against values assembled by hand, short texts,
// and elements that lie partly or wholly outside the bytes.
#include "convert/memory_image.h"

#include <gtest/gtest.h>

#include <string>

using namespace brindle::convert;
using namespace std::string_literals;

TEST(MemoryImageEngine, LittleEndianBothWays) {
    EXPECT_EQ(image_of(int32_t{0x01020304}), "\x04\x03\x02\x01"s);
    EXPECT_EQ(image_of(int16_t{-2}), "\xFE\xFF"s);
    EXPECT_EQ(image_of(1.0), "\0\0\0\0\0\0\xF0\x3F"s); // IEEE 754 binary64 of 1
    EXPECT_EQ(value_from_image<int32_t>("\x04\x03\x02\x01"s), 0x01020304);
    EXPECT_EQ(value_from_image<double>(image_of(-2.5)), -2.5);
    // Missing high bytes read as zero; an offset past the end gives 0.
    EXPECT_EQ(value_from_image<int32_t>("\xFF\xFF"s), 0xFFFF);
    EXPECT_EQ(value_from_image<int32_t>(""), 0);
    EXPECT_EQ(value_from_image<int16_t>("abc", 3), 0);
    EXPECT_EQ(value_from_image<int16_t>("abc", 2), 'c');
}

TEST(MemoryImageEngine, ElementsOnlyWhollyInside) {
    const std::string bytes = "\x01\x00\x02\x00\x03"s; // two Integers and a stray byte
    EXPECT_EQ(element_value<int16_t>(bytes, 1), 1);
    EXPECT_EQ(element_value<int16_t>(bytes, 2), 2);
    EXPECT_EQ(element_value<int16_t>(bytes, 3), 0); // only one byte of it is there
    EXPECT_EQ(element_value<int16_t>(bytes, 0), 0);
    EXPECT_EQ(element_value<int16_t>(bytes, -1), 0);
    EXPECT_EQ(element_offset(32767, 8, 8 * 32767), 8 * 32766);
    EXPECT_EQ(element_offset(32767, 8, 8 * 32767 - 1), -1);

    std::string buffer = "........"s;
    EXPECT_TRUE(write_element(buffer.data(), buffer.size(), 2, int32_t{0x41424344}));
    EXPECT_EQ(buffer, "....DCBA");
    EXPECT_FALSE(write_element(buffer.data(), buffer.size(), 3, int32_t{0}));
    EXPECT_FALSE(write_element(buffer.data(), buffer.size(), 0, int32_t{0}));
    EXPECT_EQ(buffer, "....DCBA"); // refused writes leave it as it was
}
