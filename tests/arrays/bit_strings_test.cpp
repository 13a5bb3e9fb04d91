// Bit strings, bits of numbers and binary text, through the exported
// interface. Expected values come from Python (the snippet stands beside each
// table) or from hand computation written out in the comment.
#include "support/ole_helpers.h"

#include <climits>
#include <cstring>
#include <string>

using namespace brindle::test;

namespace {

std::string bytes(std::initializer_list<int> list) {
    std::string s;
    for (int b : list)
        s += static_cast<char>(b);
    return s;
}

// The two bytes past a string's last one: its terminator, which a write past
// the length would be the first to hit.
std::string past_end(Bstr &s) {
    const auto *p = reinterpret_cast<const char *>(*s.ref());
    return std::string(p + s.bytes().size(), 2);
}

} // namespace

TEST(BitStrings, CreateGivesZeroBytesForTheBitsAsked) {
    const std::pair<int32_t, size_t> rows[] = {{1, 1}, {8, 1}, {9, 2}, {1000, 125}, {0, 0}, {-1, 0}, {INT32_MIN, 0}};
    for (const auto &[bits, length] : rows)
        EXPECT_EQ(str(cCreateBits(bits)), std::string(length, '\0')) << bits;
    // (2^31 - 1 + 7) / 8 = 268435456 bytes: the count does not overflow.
    const Returned big = returned(cCreateBits(INT32_MAX));
    EXPECT_TRUE(!big.is_null && (big.bytes.empty() || big.bytes.size() == 268435456u));
}

TEST(BitStrings, BitsAreNumberedFromTheHighBitOfTheFirstByte) {
    // Python: b = bytearray(3); b[n // 8] |= 128 >> (n % 8) for n in (0, 9, 17, 23)
    // gives 80 40 41.
    Bstr made(std::string(3, '\0'));
    for (int32_t n : {0, 9, 17, 23})
        EXPECT_EQ(cSetBitToTrue(made.ref(), n), -1) << n;
    EXPECT_EQ(made.bytes(), bytes({0x80, 0x40, 0x41}));
    for (int32_t n = 0; n < 24; ++n)
        EXPECT_EQ(cGetBit(made.ref(), n), (n == 0 || n == 9 || n == 17 || n == 23) ? -1 : 0) << n;
    // cSetBit: any non-zero value sets, 0 clears. cToggleBit answers with
    // the state before, 1 or 0.
    EXPECT_EQ(cSetBit(made.ref(), 1, 1) + cSetBit(made.ref(), 0, 0) + cSetBit(made.ref(), 22, -32768), -3);
    EXPECT_EQ(cSetBitToFalse(made.ref(), 23), -1);
    EXPECT_EQ(made.bytes(), bytes({0x40, 0x40, 0x42}));
    EXPECT_EQ(cToggleBit(made.ref(), 1), 1);
    EXPECT_EQ(cToggleBit(made.ref(), 15), 0);
    EXPECT_EQ(made.bytes(), bytes({0x00, 0x41, 0x42}));
}

TEST(BitStrings, IndexesOutsideTheStringAreNeverReadOrWritten) {
    Bstr bits(bytes({0xFF, 0xFF})), null_bits, empty(std::string{});
    for (int32_t n : {16, 23, 24, -1, -8, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(cGetBit(bits.ref(), n) + cSetBit(bits.ref(), n, -1) + cSetBitToTrue(bits.ref(), n) +
                      cSetBitToFalse(bits.ref(), n) + cToggleBit(bits.ref(), n),
                  0) << n;
        EXPECT_EQ(cFindBitSet(bits.ref(), n) + cFindBitReset(bits.ref(), n), -2) << n;
        EXPECT_EQ(bits.bytes() + past_end(bits), bytes({0xFF, 0xFF, 0, 0})) << n;
    }
    for (Bstr *b : {&null_bits, &empty}) {
        EXPECT_EQ(cGetBit(b->ref(), 0) + cSetBit(b->ref(), 0, -1) + cToggleBit(b->ref(), 0) + cSetAllBits(b->ref(), -1) +
                      cToggleAllBits(b->ref()) + cReverseAllBits(b->ref()) + cReverseAllBitsByChar(b->ref()) +
                      cIsBitPalindrome(b->ref()),
                  0);
        EXPECT_EQ(cFindBitSet(b->ref(), 0) + cFindBitReset(b->ref(), 0), -2);
    }
    EXPECT_EQ(cSetBit(nullptr, 0, -1), 0);
}

TEST(BitStrings, WholeStringOperations) {
    // Python, for d in the inputs:
    //   reversed: int(''.join(format(b, '08b') for b in d)[::-1], 2).to_bytes(len(d), 'big')
    //   by byte:  bytes(int(format(b, '08b')[::-1], 2) for b in d)
    //   toggled:  bytes(255 - b for b in d)
    struct Row {
        std::string in, reversed, by_byte, toggled;
    } rows[] = {
        {bytes({0x80, 0x01, 0x35}), bytes({0xAC, 0x80, 0x01}), bytes({0x01, 0x80, 0xAC}), bytes({0x7F, 0xFE, 0xCA})},
        {bytes({0x01, 0x02, 0x03, 0x04, 0xF0}), bytes({0x0F, 0x20, 0xC0, 0x40, 0x80}),
         bytes({0x80, 0x40, 0xC0, 0x20, 0x0F}), bytes({0xFE, 0xFD, 0xFC, 0xFB, 0x0F})},
    };
    for (const Row &r : rows) {
        Bstr a(r.in), b(r.in), c(r.in);
        EXPECT_EQ(cReverseAllBits(a.ref()) + cReverseAllBitsByChar(b.ref()) + cToggleAllBits(c.ref()), -3);
        EXPECT_EQ(a.bytes(), r.reversed);
        EXPECT_EQ(b.bytes(), r.by_byte);
        EXPECT_EQ(c.bytes(), r.toggled);
        EXPECT_EQ(past_end(a) + past_end(b) + past_end(c), std::string(6, '\0'));
    }
    Bstr all(bytes({0x12, 0x00, 0x34}));
    EXPECT_EQ(cSetAllBits(all.ref(), 2), -1); // any non-zero value sets
    EXPECT_EQ(all.bytes(), bytes({0xFF, 0xFF, 0xFF}));
    EXPECT_EQ(cSetAllBits(all.ref(), 0), -1);
    EXPECT_EQ(all.bytes(), std::string(3, '\0'));
}

TEST(BitStrings, FindTheNextSetOrClearBit) {
    // The bytes 00 10 FF FE; Python, with s = ''.join(format(b, '08b') for b in d):
    //   next((i for i in range(start, len(s)) if s[i] == '1'), -1), and the same for '0'.
    Bstr bits(bytes({0x00, 0x10, 0xFF, 0xFE}));
    const int32_t rows[][3] = {{0, 11, 0}, {1, 11, 1}, {11, 11, 12}, {12, 16, 12}, {16, 16, 31}, {24, 24, 31}, {31, -1, 31}};
    for (const auto &r : rows) {
        EXPECT_EQ(cFindBitSet(bits.ref(), r[0]), r[1]) << r[0];
        EXPECT_EQ(cFindBitReset(bits.ref(), r[0]), r[2]) << r[0];
    }
}

TEST(BitStrings, Palindromes) {
    // Bit i against bit 8L - 1 - i; worked out by hand from the binary digits.
    // 10000000 00000001 and 10100000 00111100 00000101 are palindromes;
    // 10100000 00111101 00000101 and 00000001 00000001 are not.
    const std::pair<std::string, int16_t> rows[] = {{bytes({0x80, 0x01}), -1}, {bytes({0xA0, 0x3C, 0x05}), -1},
                                                    {bytes({0xA0, 0x3D, 0x05}), 0}, {bytes({0x01, 0x01}), 0}};
    for (const auto &[bits, palindrome] : rows) {
        Bstr b(bits);
        EXPECT_EQ(cIsBitPalindrome(b.ref()), palindrome) << testing::PrintToString(bits);
    }
    // Python: [v for v in range(256) if format(v, '08b') == format(v, '08b')[::-1]]
    EXPECT_EQ(str(cGiveBitPalindrome()),
              bytes({0, 24, 36, 60, 66, 90, 102, 126, 129, 153, 165, 189, 195, 219, 231, 255}));
}

TEST(BinaryText, BytesToDigitsAndBack) {
    // Python: ''.join(format(b, '08b') for b in b'\x00\xff\x5a')
    Bstr a("A"), three(bytes({0x00, 0xFF, 0x5A})), empty(std::string{}), null_text;
    EXPECT_EQ(str(cToBinary(a.ref())), "01000001");
    EXPECT_EQ(str(cToBinary(three.ref())), "000000001111111101011010");
    EXPECT_EQ(str(cToBinary(empty.ref())) + str(cToBinary(null_text.ref())), "");

    Bstr hash_dot("#."), only_hash("#"), long_pair("xyz");
    EXPECT_EQ(str(cToBinary2(a.ref(), hash_dot.ref())), ".#.....#");
    EXPECT_EQ(str(cToBinary2(a.ref(), only_hash.ref())), "0#00000#"); // "0" for the missing second
    EXPECT_EQ(str(cToBinary2(a.ref(), long_pair.ref())), "yxyyyyyx");

    // 7 characters make no whole byte; a trailing part is ignored; anything
    // but "1" is a 0-bit.
    const std::pair<const char *, std::string> rows[] = {
        {"01000001", "A"}, {"0100000", ""}, {"0100000101000010101", "AB"}, {"2x1 1111", bytes({0x2F})}, {"", ""}};
    for (const auto &[digits, out] : rows) {
        Bstr t(digits);
        EXPECT_EQ(str(cFromBinary(t.ref())), out) << digits;
    }
    Bstr dots(".#.....#"), ones_as_zero("01000001");
    EXPECT_EQ(str(cFromBinary2(dots.ref(), hash_dot.ref())), "A");
    EXPECT_EQ(str(cFromBinary2(ones_as_zero.ref(), hash_dot.ref())), std::string(1, '\0'));
    EXPECT_EQ(str(cFromBinary2(ones_as_zero.ref(), null_text.ref())), "A"); // "1" by default
}

TEST(BinaryText, DigitsToNumbers) {
    struct Row {
        std::string text;
        int16_t i;
        int32_t l;
    } rows[] = {
        // The first character other than "0" or "1" ends the number (a zero
        // byte too); 17 characters are too many for cB2I, 33 for cB2L.
        {"101", 5, 5}, {"101x11", 5, 5}, {"0110", 6, 6}, {" 1", 0, 0}, {"2", 0, 0}, {"", 0, 0},
        {std::string("11\0" "11", 5), 3, 3}, {std::string(16, '1'), -1, 65535},
        {"1" + std::string(15, '0'), -32768, 32768}, {std::string(17, '1'), 0, 131071},
        {std::string(32, '1'), 0, -1}, {"1" + std::string(31, '0'), 0, INT32_MIN}, {std::string(33, '1'), 0, 0}};
    for (const Row &r : rows) {
        Bstr t(r.text);
        EXPECT_EQ(cB2I(t.ref()), r.i) << r.text;
        EXPECT_EQ(cB2L(t.ref()), r.l) << r.text;
    }
    EXPECT_EQ(cB2I(nullptr), 0);
    EXPECT_EQ(cB2L(nullptr), 0);
}

TEST(BinaryText, NumbersToDigits) {
    // Python: bin(v & 0xFFFF)[2:] and bin(v & 0xFFFFFFFF)[2:]
    EXPECT_EQ(str(cI2B(5)), "101");
    EXPECT_EQ(str(cI2B(0)), "0");
    EXPECT_EQ(str(cI2B(-1)), "1111111111111111");
    EXPECT_EQ(str(cI2B(32767)), std::string(15, '1'));
    EXPECT_EQ(str(cL2B(1234567)), "100101101011010000111");
    EXPECT_EQ(str(cL2B(-1234567)), "11111111111011010010100101111001");
    EXPECT_EQ(str(cL2B(INT32_MIN)), "1" + std::string(31, '0'));

    // format(5, '016b') with "#" for 1 and "." for 0.
    Bstr hash_dot("#."), null_pair, one("x");
    EXPECT_EQ(str(cI2Bext(5, hash_dot.ref())), std::string(13, '.') + "#.#");
    EXPECT_EQ(str(cI2BextRvs(5, hash_dot.ref())), "#.#" + std::string(13, '.'));
    // format(-21846 & 0xFFFF, '016b')
    EXPECT_EQ(str(cI2Bext(-21846, null_pair.ref())), "1010101010101010");
    EXPECT_EQ(str(cI2BextRvs(-21846, one.ref())), "0x0x0x0x0x0x0x0x");
    // format(0x12345678, '032b') and its reverse
    EXPECT_EQ(str(cL2Bext(0x12345678, null_pair.ref())), "00010010001101000101011001111000");
    EXPECT_EQ(str(cL2BextRvs(0x12345678, null_pair.ref())), "00011110011010100010110001001000");
    EXPECT_EQ(str(cL2BextRvs(1, hash_dot.ref())), "#" + std::string(31, '.'));
}

TEST(BitsOfNumbers, FirstSchemeReadsTheBytesInMemoryOrderHighBitFirst) {
    // Python: b = v.to_bytes(w // 8, 'little', signed=True) (struct.pack('<d', v)
    // for the Double); ''.join(str((b[n // 8] >> (7 - n % 8)) & 1) for n in range(w)).
    struct Row {
        int width;
        double v;
        const char *bits;
    } rows[] = {
        {8, 0x81, "10000001"},
        {16, 128, "1000000000000000"},
        {16, 1, "0000000100000000"},
        {16, -32768, "0000000010000000"},
        {16, 0x1234, "0011010000010010"},
        {32, 0x01020304, "00000100000000110000001000000001"},
        {32, 0x12345678, "01111000010101100011010000010010"},
        {32, INT32_MIN, "00000000000000000000000010000000"},
        {64, 1.0, "0000000000000000000000000000000000000000000000001111000000111111"},
        {64, -2.5, "0000000000000000000000000000000000000000000000000000010011000000"},
    };
    auto get = [](int width, double v, int16_t n) {
        switch (width) {
        case 8: return cGetBitB(static_cast<uint8_t>(v), n);
        case 16: return cGetBitI(static_cast<int16_t>(v), n);
        case 32: return cGetBitL(static_cast<int32_t>(v), n);
        default: return cGetBitD(v, n);
        }
    };
    // The index counts as abs(n) mod the width.
    for (const Row &r : rows)
        for (int16_t n = 0; n < r.width; ++n) {
            const int32_t want = r.bits[n] == '1' ? -1 : 0;
            EXPECT_EQ(get(r.width, r.v, n), want) << r.v << " bit " << n;
            EXPECT_EQ(get(r.width, r.v, static_cast<int16_t>(-n)), want) << r.v << " bit -" << n;
            EXPECT_EQ(get(r.width, r.v, static_cast<int16_t>(n + 7 * r.width)), want) << r.v << " bit +" << n;
        }
    EXPECT_EQ(cGetBitB(0x80, -32768), -1); // abs(-32768) mod 8 = 0
}

TEST(BitsOfNumbers, FirstSchemeSetNeverWritesPastTheCallersByte) {
    // The Byte sits between guard bytes; an index that lands past it (abs(n)
    // mod 32 from 8 to 31) leaves every byte as it was.
    struct Row {
        uint8_t start;
        int16_t n, value;
        uint8_t after;
    } rows[] = {
        {0x00, 0, -1, 0x80},  {0x00, 7, 1, 0x01},   {0xFF, 0, 0, 0x7F},   {0xFF, 7, 0, 0xFE},
        {0x00, -3, 5, 0x10},  {0x00, 33, -1, 0x40}, {0x00, 39, -1, 0x01}, {0xFF, -34, 0, 0xDF},
        {0x00, 8, -1, 0x00},  {0x00, 15, -1, 0x00}, {0xFF, 31, 0, 0xFF},  {0x00, 40, -1, 0x00},
        {0x00, -8, -1, 0x00}, {0x5A, 32767, 0, 0x5A}, {0x00, -32768, -1, 0x80}, // 32767 mod 32 = 31
    };
    for (const Row &r : rows) {
        uint8_t cell[5] = {0xEE, 0xEE, r.start, 0xEE, 0xEE};
        EXPECT_EQ(cSetBitB(&cell[2], r.n, r.value), -1);
        EXPECT_EQ(cell[2], r.after) << "start " << int(r.start) << " n " << r.n;
        EXPECT_TRUE(cell[0] == 0xEE && cell[1] == 0xEE && cell[3] == 0xEE && cell[4] == 0xEE) << r.n;
    }
    EXPECT_EQ(cSetBitB(nullptr, 0, -1), -1);
}

TEST(BitsOfNumbers, SecondSchemeNumbersBitsTheOrdinaryWay) {
    // Reading: bit n mod 8, 16 or 32 (the engine test holds the rest); an
    // Integer's -2 is 0xFFFE; a negative index names no bit.
    EXPECT_EQ(cGetBitI2(128, 7) + cGetBitI2(128, 23) + cGetBitB2(0x81, 8) + cGetBitL2(INT32_MIN, 63), -4);
    EXPECT_EQ(cGetBitI2(-2, 15) * 2 + cGetBitI2(-2, 16), -2); // bit 15 set, bit 0 clear
    EXPECT_EQ(cGetBitL2(-1, -1) + cGetBitB2(255, INT32_MIN), 0);

    // Setting: only True (-1) sets; the index is taken modulo 32 for every
    // width, so a Byte's bits 8 to 31 and an Integer's 16 to 31 are out of
    // sight; nothing next to the variable is touched.
    struct ByteRow {
        uint8_t start;
        int32_t n;
        int16_t value;
        uint8_t after;
    } bytes_rows[] = {{0x00, 7, -1, 0x80}, {0x80, 7, 1, 0x00}, {0x00, 0, 2, 0x00},  {0x00, 39, -1, 0x80},
                      {0x00, 8, -1, 0x00}, {0x00, 31, -1, 0x00}, {0xFF, 8, 0, 0xFF}, {0xFF, -1, 0, 0xFF},
                      {0x0F, 33, 0, 0x0D}};
    for (const ByteRow &r : bytes_rows) {
        uint8_t cell[3] = {0xEE, r.start, 0xEE};
        EXPECT_EQ(cSetBitB2(&cell[1], r.n, r.value), -1);
        EXPECT_EQ(cell[1], r.after) << "start " << int(r.start) << " n " << r.n << " value " << r.value;
        EXPECT_TRUE(cell[0] == 0xEE && cell[2] == 0xEE) << r.n;
    }
    int16_t i[3] = {0x1111, -1, 0x1111};
    EXPECT_EQ(cSetBitI2(&i[1], 15, 1), -1);  // 0x7FFF
    EXPECT_EQ(cSetBitI2(&i[1], 16, -1), -1); // out of sight
    EXPECT_EQ(cSetBitI2(&i[1], 32, 0), -1);  // bit 0: 0x7FFE
    EXPECT_TRUE(i[0] == 0x1111 && i[1] == 32766 && i[2] == 0x1111);
    int32_t l = 0;
    EXPECT_EQ(cSetBitL2(&l, 31, -1), -1);
    EXPECT_EQ(cSetBitL2(&l, 36, -1), -1);
    EXPECT_EQ(l, INT32_MIN + 16);
    EXPECT_EQ(cSetBitB2(nullptr, 0, -1) + cSetBitI2(nullptr, 0, -1) + cSetBitL2(nullptr, 0, -1), -3);
}
