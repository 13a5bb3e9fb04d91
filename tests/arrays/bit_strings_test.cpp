// Bit strings, bits of numbers and binary text, through the exported
// interface. Expected values come from Python (the snippet stands beside each
// table) or from hand computation written out in the comment.
#include "support/ole_helpers.h"

#include <climits>
#include <cstring>
#include <string>
#include <vector>

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
    struct Row {
        int32_t bits;
        size_t length;
    } rows[] = {{1, 1}, {8, 1}, {9, 2}, {1000, 125}, {0, 0}, {-1, 0}, {INT32_MIN, 0}};
    for (const Row &r : rows)
        EXPECT_EQ(str(cCreateBits(r.bits)), std::string(r.length, '\0')) << r.bits;
    // (2^31 - 1 + 7) / 8 = 268435456 bytes: the count does not overflow.
    const Returned big = returned(cCreateBits(INT32_MAX));
    EXPECT_FALSE(big.is_null);
    EXPECT_TRUE(big.bytes.empty() || big.bytes.size() == 268435456u);
}

TEST(BitStrings, BitsAreNumberedFromTheHighBitOfTheFirstByte) {
    // Bits 0, 9, 17 and 23 of three bytes: bytearray(3); b[n // 8] |= 128 >> (n % 8)
    // gives 80 40 41.
    Bstr made(std::string(3, '\0'));
    for (int32_t n : {0, 9, 17, 23})
        EXPECT_EQ(cSetBitToTrue(made.ref(), n), -1) << n;
    EXPECT_EQ(made.bytes(), bytes({0x80, 0x40, 0x41}));
    for (int32_t n = 0; n < 24; ++n)
        EXPECT_EQ(cGetBit(made.ref(), n), (n == 0 || n == 9 || n == 17 || n == 23) ? -1 : 0) << n;

    Bstr one(bytes({128}));
    EXPECT_EQ(cGetBit(one.ref(), 0), -1);
    EXPECT_EQ(cGetBit(one.ref(), 7), 0);

    // cSetBit: any non-zero value sets, 0 clears.
    EXPECT_EQ(cSetBit(made.ref(), 1, 1), -1);
    EXPECT_EQ(cSetBit(made.ref(), 0, 0), -1);
    EXPECT_EQ(cSetBit(made.ref(), 22, -32768), -1);
    EXPECT_EQ(cSetBitToFalse(made.ref(), 23), -1);
    EXPECT_EQ(made.bytes(), bytes({0x40, 0x40, 0x42}));

    // cToggleBit answers with the state before: 1 or 0.
    EXPECT_EQ(cToggleBit(made.ref(), 1), 1);
    EXPECT_EQ(cToggleBit(made.ref(), 1), 0);
    EXPECT_EQ(cToggleBit(made.ref(), 15), 0);
    EXPECT_EQ(made.bytes(), bytes({0x40, 0x41, 0x42}));
}

TEST(BitStrings, IndexesOutsideTheStringAreNeverReadOrWritten) {
    Bstr bits(bytes({0xFF, 0xFF}));
    Bstr null_bits, empty(std::string{});
    for (int32_t n : {16, 17, 23, 24, 100, -1, -8, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(cGetBit(bits.ref(), n), 0) << n;
        EXPECT_EQ(cSetBit(bits.ref(), n, -1), 0) << n;
        EXPECT_EQ(cSetBitToTrue(bits.ref(), n), 0) << n;
        EXPECT_EQ(cSetBitToFalse(bits.ref(), n), 0) << n;
        EXPECT_EQ(cToggleBit(bits.ref(), n), 0) << n;
        EXPECT_EQ(cFindBitSet(bits.ref(), n), -1) << n;
        EXPECT_EQ(cFindBitReset(bits.ref(), n), -1) << n;
        EXPECT_EQ(bits.bytes(), bytes({0xFF, 0xFF})) << n;
        EXPECT_EQ(past_end(bits), std::string(2, '\0')) << n;
    }
    for (Bstr *b : {&null_bits, &empty}) {
        EXPECT_EQ(cGetBit(b->ref(), 0), 0);
        EXPECT_EQ(cSetBit(b->ref(), 0, -1), 0);
        EXPECT_EQ(cToggleBit(b->ref(), 0), 0);
        EXPECT_EQ(cSetAllBits(b->ref(), -1), 0);
        EXPECT_EQ(cToggleAllBits(b->ref()), 0);
        EXPECT_EQ(cReverseAllBits(b->ref()), 0);
        EXPECT_EQ(cReverseAllBitsByChar(b->ref()), 0);
        EXPECT_EQ(cFindBitSet(b->ref(), 0), -1);
        EXPECT_EQ(cFindBitReset(b->ref(), 0), -1);
        EXPECT_EQ(cIsBitPalindrome(b->ref()), 0);
    }
    EXPECT_EQ(null_bits.val(), nullptr);
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
        {bytes({0x80}), bytes({0x01}), bytes({0x01}), bytes({0x7F})},
        {bytes({0x80, 0x01, 0x35}), bytes({0xAC, 0x80, 0x01}), bytes({0x01, 0x80, 0xAC}), bytes({0x7F, 0xFE, 0xCA})},
        {bytes({0x01, 0x02, 0x03, 0x04, 0xF0}), bytes({0x0F, 0x20, 0xC0, 0x40, 0x80}),
         bytes({0x80, 0x40, 0xC0, 0x20, 0x0F}), bytes({0xFE, 0xFD, 0xFC, 0xFB, 0x0F})},
    };
    for (const Row &r : rows) {
        Bstr a(r.in), b(r.in), c(r.in);
        EXPECT_EQ(cReverseAllBits(a.ref()), -1);
        EXPECT_EQ(a.bytes(), r.reversed);
        EXPECT_EQ(cReverseAllBitsByChar(b.ref()), -1);
        EXPECT_EQ(b.bytes(), r.by_byte);
        EXPECT_EQ(cToggleAllBits(c.ref()), -1);
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
    struct Row {
        int32_t start, set, clear;
    } rows[] = {{0, 11, 0},   {1, 11, 1},   {11, 11, 12}, {12, 16, 12},
                {16, 16, 31}, {23, 23, 31}, {24, 24, 31}, {31, -1, 31}};
    for (const Row &r : rows) {
        EXPECT_EQ(cFindBitSet(bits.ref(), r.start), r.set) << r.start;
        EXPECT_EQ(cFindBitReset(bits.ref(), r.start), r.clear) << r.start;
    }
    Bstr ones(std::string(1000, '\xFF')), zeros(std::string(1000, '\0'));
    EXPECT_EQ(cFindBitReset(ones.ref(), 0), -1);
    EXPECT_EQ(cFindBitSet(zeros.ref(), 5), -1);
    EXPECT_EQ(cSetBitToTrue(zeros.ref(), 7999), -1);
    EXPECT_EQ(cFindBitSet(zeros.ref(), 5), 7999);
}

TEST(BitStrings, Palindromes) {
    // Bit i against bit 8L - 1 - i; worked out by hand from the binary digits.
    struct Row {
        std::string bits;
        int16_t palindrome;
    } rows[] = {
        {bytes({0x80, 0x01}), -1},        // 10000000 00000001
        {bytes({0x18}), -1},              // 00011000
        {bytes({0x80}), 0},               // 10000000
        {bytes({0xA0, 0x3C, 0x05}), -1},  // 10100000 00111100 00000101
        {bytes({0xA0, 0x3D, 0x05}), 0},   // the middle byte 00111101 is not its own mirror
        {bytes({0x01, 0x80}), -1},        // 00000001 10000000
        {bytes({0x01, 0x01}), 0},
    };
    for (const Row &r : rows) {
        Bstr b(r.bits);
        EXPECT_EQ(cIsBitPalindrome(b.ref()), r.palindrome) << testing::PrintToString(r.bits);
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
    EXPECT_EQ(str(cToBinary(empty.ref())), "");
    EXPECT_EQ(str(cToBinary(null_text.ref())), "");

    Bstr hash_dot("#."), only_hash("#"), long_pair("xyz");
    EXPECT_EQ(str(cToBinary2(a.ref(), hash_dot.ref())), ".#.....#");
    EXPECT_EQ(str(cToBinary2(a.ref(), only_hash.ref())), "0#00000#"); // "0" for the missing second
    EXPECT_EQ(str(cToBinary2(a.ref(), null_text.ref())), "01000001");
    EXPECT_EQ(str(cToBinary2(a.ref(), long_pair.ref())), "yxyyyyyx");

    struct Row {
        const char *digits;
        std::string bytes;
    } rows[] = {
        {"01000001", "A"},
        {"0100000", ""},                              // 7 characters: no whole byte
        {"0100000101000010" "101", "AB"},             // a trailing part is ignored
        {"2x1 1111", bytes({0x2F})},                  // anything but "1" is a 0-bit
        {"", ""},
    };
    for (const Row &r : rows) {
        Bstr t(r.digits);
        EXPECT_EQ(str(cFromBinary(t.ref())), r.bytes) << r.digits;
    }
    Bstr zeros(std::string(16, '\0')), dots(".#.....#"), ones_as_zero("01000001");
    EXPECT_EQ(str(cFromBinary(zeros.ref())), std::string(2, '\0'));
    EXPECT_EQ(str(cFromBinary2(dots.ref(), hash_dot.ref())), "A");
    EXPECT_EQ(str(cFromBinary2(ones_as_zero.ref(), hash_dot.ref())), std::string(1, '\0'));
    EXPECT_EQ(str(cFromBinary2(ones_as_zero.ref(), null_text.ref())), "A"); // "1" by default

    // Every byte value there and back.
    std::string all;
    for (int v = 0; v < 256; ++v)
        all += static_cast<char>(v);
    Bstr every(all);
    Bstr digits(str(cToBinary(every.ref())));
    EXPECT_EQ(digits.bytes().size(), 2048u);
    EXPECT_EQ(str(cFromBinary(digits.ref())), all);
}

TEST(BinaryText, DigitsToNumbers) {
    struct Row {
        std::string text;
        int16_t i;
        int32_t l;
    } rows[] = {
        {"101", 5, 5},
        {"101x11", 5, 5},                         // the first other character ends it
        {"0110", 6, 6},
        {" 1", 0, 0},
        {"2", 0, 0},
        {"", 0, 0},
        {std::string(16, '1'), -1, 65535},        // 16 bits: 0xFFFF
        {"1" + std::string(15, '0'), -32768, 32768},
        {std::string(17, '1'), 0, 131071},        // too long for cB2I only
        {std::string(32, '1'), 0, -1},
        {"1" + std::string(31, '0'), 0, INT32_MIN},
        {std::string(33, '0'), 0, 0},
        {std::string(33, '1'), 0, 0},             // too long for cB2L
        {std::string("11\0" "11", 5), 3, 3},     // a zero byte is one more other character
    };
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
    EXPECT_EQ(str(cI2B(-2)), "1111111111111110");
    EXPECT_EQ(str(cI2B(32767)), std::string(15, '1'));
    EXPECT_EQ(str(cL2B(0)), "0");
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
    EXPECT_EQ(str(cL2Bext(-1, hash_dot.ref())), std::string(32, '#'));
    EXPECT_EQ(str(cL2BextRvs(1, hash_dot.ref())), "#" + std::string(31, '.'));
}

TEST(BitsOfNumbers, FirstSchemeReadsTheBytesInMemoryOrderHighBitFirst) {
    // Python: b = v.to_bytes(w // 8, 'little', signed=True); n = abs(n) % w;
    //         (b[n // 8] >> (7 - n % 8)) & 1, for n in range(w).
    struct IRow {
        int16_t v;
        const char *bits;
    } ints[] = {
        {128, "1000000000000000"},  {1, "0000000100000000"},    {-32768, "0000000010000000"},
        {256, "0000000000000001"},  {0x1234, "0011010000010010"},
    };
    for (const IRow &r : ints)
        for (int16_t n = 0; n < 16; ++n) {
            const int32_t want = r.bits[n] == '1' ? -1 : 0;
            EXPECT_EQ(cGetBitI(r.v, n), want) << r.v << " bit " << n;
            EXPECT_EQ(cGetBitI(r.v, static_cast<int16_t>(-n)), want) << r.v << " bit -" << n;
            EXPECT_EQ(cGetBitI(r.v, static_cast<int16_t>(n + 16 * 7)), want) << r.v << " bit " << n + 112;
        }
    struct LRow {
        int32_t v;
        const char *bits;
    } longs[] = {
        {0x01020304, "00000100000000110000001000000001"},
        {0x12345678, "01111000010101100011010000010010"},
        {INT32_MIN, "00000000000000000000000010000000"},
    };
    for (const LRow &r : longs)
        for (int16_t n = 0; n < 32; ++n)
            EXPECT_EQ(cGetBitL(r.v, n), r.bits[n] == '1' ? -1 : 0) << r.v << " bit " << n;
    for (int16_t n = 0; n < 8; ++n) {
        EXPECT_EQ(cGetBitB(0x81, n), (n == 0 || n == 7) ? -1 : 0) << n;
        EXPECT_EQ(cGetBitB(0x40, static_cast<int16_t>(n + 8)), n == 1 ? -1 : 0) << n;
    }
    EXPECT_EQ(cGetBitB(0x80, -32768), -1); // abs(-32768) mod 8 = 0

    // Python: b = struct.pack('<d', d); [i for i in range(64) if (b[i // 8] >> (7 - i % 8)) & 1]
    struct DRow {
        double v;
        std::vector<int> set;
    } doubles[] = {{1.0, {48, 49, 50, 51, 58, 59, 60, 61, 62, 63}}, {-2.5, {53, 56, 57}}, {0.0, {}}};
    for (const DRow &r : doubles)
        for (int16_t n = 0; n < 64; ++n) {
            bool set = false;
            for (int s : r.set)
                set = set || s == n;
            EXPECT_EQ(cGetBitD(r.v, n), set ? -1 : 0) << r.v << " bit " << n;
            EXPECT_EQ(cGetBitD(r.v, static_cast<int16_t>(n + 64)), set ? -1 : 0) << r.v << " bit " << n + 64;
        }
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
    EXPECT_EQ(cGetBitI2(128, 7), -1);
    EXPECT_EQ(cGetBitI2(128, 0), 0);
    EXPECT_EQ(cGetBitI2(128, 23), -1);      // 23 mod 16 = 7
    EXPECT_EQ(cGetBitI2(-2, 15), -1);       // 0xFFFE
    EXPECT_EQ(cGetBitI2(-2, 0), 0);
    EXPECT_EQ(cGetBitI2(-2, 16), 0);        // 16 mod 16 = 0
    EXPECT_EQ(cGetBitB2(0x81, 7), -1);
    EXPECT_EQ(cGetBitB2(0x81, 8), -1);      // 8 mod 8 = 0
    EXPECT_EQ(cGetBitB2(0x81, 6), 0);
    EXPECT_EQ(cGetBitL2(INT32_MIN, 31), -1);
    EXPECT_EQ(cGetBitL2(INT32_MIN, 63), -1);
    EXPECT_EQ(cGetBitL2(0x12345678, 3), -1); // 8 = 1000
    EXPECT_EQ(cGetBitL2(0x12345678, 2), 0);
    // A negative index names no bit (VB's -1 Mod 32 is -1).
    EXPECT_EQ(cGetBitL2(-1, -1), 0);
    EXPECT_EQ(cGetBitB2(255, INT32_MIN), 0);

    // Setting: only True (-1) sets; the index is taken modulo 32 for every
    // width, so a Byte's bits 8 to 31 are out of sight.
    struct ByteRow {
        uint8_t start;
        int32_t n;
        int16_t value;
        uint8_t after;
    } bytes_rows[] = {
        {0x00, 7, -1, 0x80}, {0x80, 7, 1, 0x00},  {0x00, 0, 2, 0x00},   {0x00, 39, -1, 0x80},
        {0x00, 8, -1, 0x00}, {0x00, 31, -1, 0x00}, {0xFF, 8, 0, 0xFF},  {0xFF, -1, 0, 0xFF},
        {0x0F, 33, 0, 0x0D},
    };
    for (const ByteRow &r : bytes_rows) {
        uint8_t cell[3] = {0xEE, r.start, 0xEE};
        EXPECT_EQ(cSetBitB2(&cell[1], r.n, r.value), -1);
        EXPECT_EQ(cell[1], r.after) << "start " << int(r.start) << " n " << r.n << " value " << r.value;
        EXPECT_TRUE(cell[0] == 0xEE && cell[2] == 0xEE) << r.n;
    }
    struct IntRow {
        int16_t start;
        int32_t n;
        int16_t value;
        int16_t after;
    } int_rows[] = {
        {0, 15, -1, -32768}, {-1, 15, 1, 32767}, {-1, 0, 0, -2}, {0, 16, -1, 0}, {0, 47, -1, -32768},
        {5, -3, -1, 5},
    };
    for (const IntRow &r : int_rows) {
        int16_t cell[3] = {0x1111, r.start, 0x1111};
        EXPECT_EQ(cSetBitI2(&cell[1], r.n, r.value), -1);
        EXPECT_EQ(cell[1], r.after) << "start " << r.start << " n " << r.n;
        EXPECT_TRUE(cell[0] == 0x1111 && cell[2] == 0x1111) << r.n;
    }
    int32_t l = 0;
    EXPECT_EQ(cSetBitL2(&l, 31, -1), -1);
    EXPECT_EQ(l, INT32_MIN);
    EXPECT_EQ(cSetBitL2(&l, 63, 1), -1);
    EXPECT_EQ(l, 0);
    EXPECT_EQ(cSetBitL2(&l, 36, -1), -1);
    EXPECT_EQ(l, 16);
    EXPECT_EQ(cSetBitB2(nullptr, 0, -1), -1);
    EXPECT_EQ(cSetBitI2(nullptr, 0, -1), -1);
    EXPECT_EQ(cSetBitL2(nullptr, 0, -1), -1);
}
