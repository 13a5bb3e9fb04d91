// Binary images of numbers and MBF singles, through the exported interface.
#include "support/ole_helpers.h"

#include <cmath>
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

template <class T> std::string image(T v) { return std::string(reinterpret_cast<const char *>(&v), sizeof v); }

CY cy(int64_t v) {
    CY c;
    c.int64 = v;
    return c;
}

} // namespace

TEST(BinaryImages, MakeGivesTheMemoryImageAndConvertReadsItBack) {
    EXPECT_EQ(str(cMKB(0xA5)), bytes({0xA5}));
    EXPECT_EQ(str(cMKI(-2)), bytes({0xFE, 0xFF}));
    EXPECT_EQ(str(cMKL(0x01020304)), bytes({4, 3, 2, 1}));
    EXPECT_EQ(str(cMKS(1.0f)), bytes({0, 0, 0x80, 0x3F}));
    EXPECT_EQ(str(cMKD(-2.5)), image(-2.5));
    EXPECT_EQ(str(cMKC(cy(-123456789012345))), image<int64_t>(-123456789012345));

    Bstr b(bytes({0xA5, 9})), i(bytes({0xFE, 0xFF, 9})), l(bytes({4, 3, 2, 1})), s(image(3.25f)), d(image(-1e300)),
        c(image<int64_t>(INT64_MIN));
    EXPECT_EQ(cCVB(b.ref()), 0xA5);
    EXPECT_EQ(cCVI(i.ref()), -2);
    EXPECT_EQ(cCVL(l.ref()), 0x01020304);
    EXPECT_EQ(cCVS(s.ref()), 3.25f);
    EXPECT_EQ(cCVD(d.ref()), -1e300);
    EXPECT_EQ(cCVC(c.ref()).int64, INT64_MIN);
}

TEST(BinaryImages, MknIsTheDoubleOfTheWholeNumberPlusTwoZeroBytes) {
    struct Row {
        const char *text;
        double value;
    } rows[] = {
        {"42", 42}, {"  -17xyz", -17}, {"+8", 8}, {"3.9", 3}, {"abc", 0}, {"", 0}, {"\t\n 12", 12},
        {"99999999999", 2147483647.0}, {"-99999999999", -2147483648.0}, {"- 5", 0},
    };
    for (const Row &r : rows) {
        Bstr t(r.text);
        const std::string out = str(cMKN(t.val()));
        ASSERT_EQ(out.size(), 10u) << r.text;
        EXPECT_EQ(out.substr(0, 8), image(r.value)) << r.text;
        EXPECT_EQ(out.substr(8), bytes({0, 0})) << r.text;
    }
    EXPECT_EQ(str(cMKN(nullptr)).substr(0, 8), image(0.0));
}

TEST(BinaryElements, ReadsNeverGoPastTheText) {
    Bstr t(bytes({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16})), seven(bytes({1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(cGetCVB(t.ref(), 3), 3);
    EXPECT_EQ(cGetCVI(t.ref(), 2), 0x0403); // bytes 3 and 4
    EXPECT_EQ(cGetCVL(t.ref(), 4), 0x100F0E0D);
    double high;
    const unsigned char last[8] = {9, 10, 11, 12, 13, 14, 15, 16};
    std::memcpy(&high, last, 8);
    EXPECT_EQ(cGetCVD(t.ref(), 2), high);
    EXPECT_EQ(cGetCVC(t.ref(), 1).int64, 0x0807060504030201);
    for (int16_t pos : {0, -1, -32768})
        EXPECT_EQ(cGetCVI(t.ref(), pos), 0) << pos;
    // An element that does not fit whole reads zero.
    EXPECT_EQ(cGetCVL(seven.ref(), 2), 0); // bytes 5..8: one is missing
    EXPECT_EQ(cGetCVI(seven.ref(), 3), 0x0605);
    EXPECT_EQ(cGetCVI(seven.ref(), 4), 0); // bytes 7..8
    EXPECT_EQ(cGetCVB(seven.ref(), 8), 0);
    EXPECT_EQ(cGetCVD(seven.ref(), 32767), 0.0);
    EXPECT_EQ(cGetCVS(seven.ref(), 2), 0.0f);
    // The plain conversions read missing high bytes as zero instead.
    Bstr empty, one(bytes({0x7F})), three(bytes({1, 2, 3}));
    EXPECT_EQ(cGetCVL(empty.ref(), 1), 0);
    EXPECT_EQ(cCVL(empty.ref()), 0);
    EXPECT_EQ(cCVD(empty.ref()), 0.0);
    EXPECT_EQ(cCVI(one.ref()), 0x7F);
    EXPECT_EQ(cCVL(three.ref()), 0x030201);
    EXPECT_EQ(cCVC(three.ref()).int64, 0x030201);
}

TEST(BinaryElements, PutInPlaceWritesOnlyInsideTheText) {
    Bstr t(bytes({0, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(cPutMKI(t.ref(), 2, 0x0102), 2);
    EXPECT_EQ(t.bytes(), bytes({0, 0, 2, 1, 0, 0, 0, 0}));
    EXPECT_EQ(cPutMKB(t.ref(), 8, 0xEE), 8);
    EXPECT_EQ(cPutMKL(t.ref(), 1, -1), 1);
    EXPECT_EQ(t.bytes(), bytes({255, 255, 255, 255, 0, 0, 0, 0xEE}));
    EXPECT_EQ(cPutMKS(t.ref(), 2, 1.0f), 2);
    EXPECT_EQ(t.bytes().substr(4), image(1.0f));
    EXPECT_EQ(cPutMKD(t.ref(), 1, 0.5), 1);
    EXPECT_EQ(t.bytes(), image(0.5));
    EXPECT_EQ(cPutMKC(t.ref(), 1, cy(7)), 1);
    EXPECT_EQ(t.bytes(), image<int64_t>(7));

    // Refusals leave the text as it was.
    const std::string before = t.bytes();
    EXPECT_EQ(cPutMKL(t.ref(), 0, 5), 0);
    EXPECT_EQ(cPutMKL(t.ref(), -3, 5), -3); // pos < 1 comes back unchanged
    EXPECT_EQ(cPutMKL(t.ref(), 3, 5), 0);   // past the end
    EXPECT_EQ(cPutMKD(t.ref(), 2, 5), 0);
    EXPECT_EQ(cPutMKB(t.ref(), 9, 5), 0);
    EXPECT_EQ(cPutMKI(t.ref(), 32767, 5), 0);
    EXPECT_EQ(t.bytes(), before);
    Bstr empty;
    EXPECT_EQ(cPutMKL(empty.ref(), 1, 5), 0);
}

TEST(BinaryElements, PutCopyLeavesTheInputAlone) {
    Bstr t(bytes({1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(str(cPutMKIs(t.ref(), 3, -1)), bytes({1, 2, 3, 4, 255, 255}));
    EXPECT_EQ(str(cPutMKBs(t.ref(), 1, 9)), bytes({9, 2, 3, 4, 5, 6}));
    EXPECT_EQ(str(cPutMKLs(t.ref(), 1, 0)), bytes({0, 0, 0, 0, 5, 6}));
    EXPECT_EQ(str(cPutMKSs(t.ref(), 1, -0.0f)), bytes({0, 0, 0, 0x80, 5, 6}));
    EXPECT_EQ(t.bytes(), bytes({1, 2, 3, 4, 5, 6}));
    Bstr eight(std::string(8, 'x'));
    EXPECT_EQ(str(cPutMKDs(eight.ref(), 1, 2.0)), image(2.0));
    EXPECT_EQ(str(cPutMKCs(eight.ref(), 1, cy(-1))), image<int64_t>(-1));

    // Nothing to do: the caller's own handle comes back.
    for (int16_t pos : {0, -1, 2, 100}) {
        const Returned r = returned(cPutMKLs(t.ref(), pos, 7), {&t});
        EXPECT_TRUE(r.is_input) << pos;
    }
    EXPECT_TRUE(returned(cPutMKDs(t.ref(), 1, 1.0), {&t}).is_input); // 8 bytes do not fit in 6
    Bstr empty;
    const Returned r = returned(cPutMKIs(empty.ref(), 1, 1));
    EXPECT_FALSE(r.is_null);
    EXPECT_EQ(r.bytes, "");
}

TEST(Mbf, KnownPatternsBothWays) {
    struct Row {
        float ieee;
        std::string mbf;
    } rows[] = {
        {1.0f, bytes({0, 0, 0, 0x81})},     {-0.5f, bytes({0, 0, 0x80, 0x80})},
        {2.0f, bytes({0, 0, 0, 0x82})},     {-3.0f, bytes({0, 0, 0xC0, 0x82})},
        {10.0f, bytes({0, 0, 0x20, 0x84})}, {0.15625f, bytes({0, 0, 0x20, 0x7E})},
    };
    for (const Row &r : rows) {
        EXPECT_EQ(str(cMKSMBF(r.ieee)), r.mbf) << r.ieee;
        Bstr m(r.mbf);
        EXPECT_EQ(cCVSMBF(m.ref()), r.ieee) << r.ieee;
    }
}

TEST(Mbf, ZeroAndOverflowWrapAsTheFormatDefines) {
    // IEEE zero becomes MBF exponent 2, a tiny value that reads back as zero.
    EXPECT_EQ(str(cMKSMBF(0.0f)), bytes({0, 0, 0, 2}));
    Bstr tiny(bytes({0, 0, 0, 2}));
    EXPECT_EQ(cCVSMBF(tiny.ref()), 0.0f);
    // An MBF zero is not zero: exponent 254.
    Bstr zero(bytes({0, 0, 0, 0}));
    const float z = cCVSMBF(zero.ref());
    EXPECT_NE(z, 0.0f);
    EXPECT_EQ(z, std::ldexp(1.0f, 127));
    // Exponent 1 becomes 255: infinity with a zero mantissa, NaN otherwise.
    Bstr one(bytes({0, 0, 0, 1})), one_nan(bytes({1, 0, 0, 1}));
    EXPECT_TRUE(std::isinf(cCVSMBF(one.ref())));
    EXPECT_TRUE(std::isnan(cCVSMBF(one_nan.ref())));
    // IEEE exponents 254 and 255 wrap to MBF 0 and 1.
    EXPECT_EQ(str(cMKSMBF(std::ldexp(1.0f, 127))), bytes({0, 0, 0, 0}));
    EXPECT_EQ(str(cMKSMBF(-INFINITY)), bytes({0, 0, 0x80, 1}));
    Bstr empty;
    EXPECT_EQ(cCVSMBF(empty.ref()), 0.0f);
}
