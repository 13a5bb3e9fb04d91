// Character classes: whether every character of a string belongs to a class,
// palindromes, ISBN-10 numbers, and the digit utilities. Every function reads
// its text counted.
//
// The classes are those of the C runtime in the "C" locale (the locale a VB
// program's runtime starts in): bytes 128..255, which arrive as negative
// signed characters, belong to no class.
#include "common/ascii.h"
#include "frame/frame.h"

#include <cstdint>

using namespace brindle::frame;

namespace {

using brindle::common::is_ascii_digit;
using brindle::common::is_c_space;
using brindle::common::is_ascii_lower;
using brindle::common::is_ascii_upper;
constexpr bool is_alpha(unsigned char c) { return is_ascii_lower(c) || is_ascii_upper(c); }
constexpr bool is_alnum(unsigned char c) { return is_alpha(c) || is_ascii_digit(c); }
constexpr bool is_xdigit(unsigned char c) {
    return is_ascii_digit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}
constexpr bool is_punct(unsigned char c) { return c > ' ' && c < 127 && !is_alnum(c); }

enum Class : int {
    kDigit = 1,
    kAlpha,
    kLower,
    kUpper,
    kXdigit,
    kAlnum,
    kCsym,
    kCsymf,
    kPunct,
    kSpace,
    kAscii,
};

bool in_class(int cls, unsigned char c) {
    switch (cls) {
    case kDigit:
        return is_ascii_digit(c);
    case kAlpha:
    case kCsymf:
        return is_alpha(c);
    case kLower:
        return is_ascii_lower(c);
    case kUpper:
        return is_ascii_upper(c);
    case kXdigit:
        return is_xdigit(c);
    case kAlnum:
    case kCsym:
        return is_alnum(c);
    case kPunct:
        return is_punct(c);
    case kSpace:
        return is_c_space(c);
    case kAscii:
        return c < 128;
    default:
        return true;
    }
}

// The shared class test: class numbers 1..12 in the order of the exports
// (12 is the ISBN test); any other number answers -1.
//
// For the identifier classes a failing byte followed by "_" is consumed
// together with it in one step, yet the walk still takes one step per byte
// of the text; after such a pair it would step past the end of the text.
// The walk stops there and answers 0, so in effect a consumed pair always
// gives 0 - which is also what reading the zero terminator would give.
int16_t class_test(const StrArg &text, int cls);

int16_t isbn_test(const StrArg &text) {
    if (text.empty())
        return 0;
    int digits = 0;
    int64_t sum = 0;
    for (const char c : text.bytes()) {
        const auto u = static_cast<unsigned char>(c);
        if (!is_ascii_digit(u))
            continue;
        ++digits;
        if (digits <= 10)
            sum += static_cast<int64_t>(u - '0') * digits;
    }
    if (digits != 10)
        return 0;
    const auto sum16 = static_cast<int16_t>(static_cast<uint16_t>(sum & 0xFFFF));
    return vb_bool(sum16 % 11 == 0);
}

int16_t class_test(const StrArg &text, int cls) {
    if (cls < 1 || cls > 12)
        return -1;
    if (cls == 12)
        return isbn_test(text);
    if (text.empty())
        return 0;
    const auto *t = reinterpret_cast<const unsigned char *>(text.data());
    const size_t n = text.size();
    const bool pairs = cls == kCsym || cls == kCsymf;
    size_t p = 0;
    for (size_t step = 0; step < n; ++step) {
        if (p >= n)
            return 0; // consumed pairs walked past the end
        if (in_class(cls, t[p])) {
            ++p;
            continue;
        }
        if (pairs && p + 1 < n && t[p + 1] == '_') {
            p += 2;
            continue;
        }
        return 0;
    }
    return -1;
}

#define CLASS_EXPORT(name, cls)                                                                                      \
    BRINDLE_EXPORT(int16_t) name(BSTR *Txt) { return class_test(StrArg::by_ref(Txt), cls); }

} // namespace

CLASS_EXPORT(cIsDigit, kDigit)
CLASS_EXPORT(cIsAlpha, kAlpha)
CLASS_EXPORT(cIsLower, kLower)
CLASS_EXPORT(cIsUpper, kUpper)
CLASS_EXPORT(cIsXdigit, kXdigit)
CLASS_EXPORT(cIsAlnum, kAlnum)
CLASS_EXPORT(cIsCsym, kCsym)
CLASS_EXPORT(cIsCsymf, kCsymf)
CLASS_EXPORT(cIsPunct, kPunct)
CLASS_EXPORT(cIsSpace, kSpace)
CLASS_EXPORT(cIsAscii, kAscii)
// Ten decimal digits (other bytes skipped), weighted 1..10, whose sum as a
// 16-bit number divides by 11. A final "X" is not a digit.
CLASS_EXPORT(cIsISBN, 12)

// The bytes read the same from both ends (exactly: case and spaces count).
BRINDLE_EXPORT(int16_t) cIsPalindrome(BSTR *Txt) {
    const StrArg text = StrArg::by_ref(Txt);
    if (text.empty())
        return 0;
    const char *t = text.data();
    for (size_t i = 0, j = text.size() - 1; i < j; ++i, --j)
        if (t[i] != t[j])
            return 0;
    return -1;
}

// -1 when every byte is a decimal digit.
BRINDLE_EXPORT(int16_t) cCheckNumericity(BSTR *Txt) { return class_test(StrArg::by_ref(Txt), kDigit); }

// The sum of the decimal digits, other bytes ignored; as a 16-bit Integer
// (the low 16 bits of the sum for texts of more than 3,640 nines).
BRINDLE_EXPORT(int16_t) cAddDigit(BSTR *Txt) {
    const StrArg text = StrArg::by_ref(Txt);
    uint32_t sum = 0;
    for (const char c : text.bytes())
        if (is_ascii_digit(static_cast<unsigned char>(c)))
            sum += static_cast<uint32_t>(c - '0');
    return static_cast<int16_t>(static_cast<uint16_t>(sum & 0xFFFFu));
}

// The digital root: digits added one by one, 9 taken off whenever the sum
// passes 9; 0 when there is no digit.
BRINDLE_EXPORT(int16_t) cNumDigit(BSTR *Txt) {
    const StrArg text = StrArg::by_ref(Txt);
    int sum = 0;
    for (const char c : text.bytes()) {
        if (!is_ascii_digit(static_cast<unsigned char>(c)))
            continue;
        sum += c - '0';
        if (sum > 9)
            sum -= 9;
    }
    return static_cast<int16_t>(sum);
}

// Nines' complement of every decimal digit; other bytes unchanged.
BRINDLE_EXPORT(BSTR) cCplDigit(BSTR *Txt) {
    return guarded_string([&] {
        return map_bytes(StrArg::by_ref(Txt).bytes(), [](char c) {
            return is_ascii_digit(static_cast<unsigned char>(c)) ? static_cast<char>('9' - (c - '0')) : c;
        });
    });
}

// Every byte complemented (255 - b).
BRINDLE_EXPORT(BSTR) cCplAlpha(BSTR *Txt) {
    return guarded_string([&] {
        return map_bytes(StrArg::by_ref(Txt).bytes(), [](char c) { return ~static_cast<unsigned char>(c); });
    });
}
