// Text and number conversions: compound-interest factors, hexadecimal and
// base-36 text, hexadecimal numbers, Roman numerals, Morse code and the
// ASCII/EBCDIC conversions in place. Texts by reference are read counted;
// cH2I, cH2L and cMorse take theirs by value.
#include "convert/ebcdic.h"
#include "frame/frame.h"
#include "common/hex_digits.h"

#include <cmath>
#include <string>

using namespace brindle::frame;
using brindle::common::hex_digit_value;

namespace {

// ---------------------------------------------------------------------------
// Interest factors. D = (1 + i)^n for discrete compounding; K = e^(i n) for
// continuous compounding, with e rounded to 2.718281828459 as the factors
// have always been computed (the full constant gives slightly other values).

constexpr double kE = 2.718281828459;

bool factor_refused(double rate, int16_t periods) { return rate == 0.0 || periods < 1; }

double discrete(double i, int16_t n) { return std::pow(1.0 + i, n); }
double continuous(double i, int16_t n) { return std::pow(kE, i * n); }
double continuous_step(double i) { return std::pow(kE, i) - 1.0; }

// ---------------------------------------------------------------------------
// Digits

// The digit value of a hexadecimal or base-36 character, unchecked: the
// character code minus 48 below "A", minus 55 from "A" below "a", minus 87
// from "a" up. Any byte gives some value; pairs are combined modulo 256.
int loose_digit(unsigned char c) {
    if (c < 'A')
        return c - 48;
    if (c < 'a')
        return c - 55;
    return c - 87;
}

// Pairs of loose digits to bytes, high digit first: byte = hi * base + lo
// modulo 256. A last odd character is ignored.
BSTR from_digit_pairs(BSTR *txt, int base) {
    const StrArg text = StrArg::by_ref(txt);
    if (text.size() < 2)
        return empty_string();
    StringResult result(text.size() / 2);
    const auto *in = reinterpret_cast<const unsigned char *>(text.data());
    for (size_t k = 0; k < result.size(); ++k) {
        const int value = loose_digit(in[2 * k]) * base + loose_digit(in[2 * k + 1]);
        result.data()[k] = static_cast<char>(static_cast<uint8_t>(value));
    }
    return result.take();
}

// A base-36 digit character of v (0..255): "0" + v below 10, otherwise the
// character v + 55 modulo 256 (so values above 35 give other characters).
char z9_char(uint8_t v) { return v < 10 ? static_cast<char>('0' + v) : static_cast<char>(static_cast<uint8_t>(v + 55)); }

// Up to max_digits hexadecimal digits from the start of the text, stopping
// at the first character that is not one; 0 for an empty or longer text.
uint32_t hex_number(BSTR txt, size_t max_digits) {
    const StrArg text = StrArg::by_val(txt);
    if (text.empty() || text.size() > max_digits)
        return 0;
    uint32_t value = 0;
    for (const char ch : text.bytes()) {
        const int digit = hex_digit_value(ch);
        if (digit < 0)
            break;
        value = value * 16 + static_cast<uint32_t>(digit);
    }
    return value;
}

// ---------------------------------------------------------------------------
// Roman numerals. The 40 step writes "xx", not "xl": 40 is "xx" and 49 is
// "xxix". Callers' stored numerals depend on it, so it stays.

struct RomanStep {
    int32_t value;
    const char *letters;
};

constexpr RomanStep kRomanSteps[] = {
    {1000, "m"}, {900, "cm"}, {500, "d"}, {400, "cd"}, {100, "c"}, {90, "xc"}, {50, "l"},
    {40, "xx"},  {10, "x"},   {9, "ix"},  {5, "v"},   {4, "iv"},  {1, "i"},
};

// The numeral is built in a growing buffer, so nothing overruns; numbers of
// 256,000 and more (256 or more "m"s, which the original 256-byte buffer
// could never hold) are refused with the empty string, as are numbers below 1.
constexpr int32_t kRomanLimit = 256000;

std::string arabic_to_roman(int32_t number) {
    std::string out;
    if (number < 1 || number >= kRomanLimit)
        return out;
    for (const RomanStep &step : kRomanSteps)
        for (; number >= step.value; number -= step.value)
            out += step.letters;
    return out;
}

// Left to right over lower-case letters only; other characters add nothing.
// "vx" counts 9, as it always has. The sum wraps modulo 2^32 like the 32-bit
// Long it is returned in (only a text of millions of "m"s gets there).
int32_t roman_to_arabic(std::string_view text) {
    uint32_t total = 0;
    size_t i = 0;
    while (i < text.size()) {
        const char c = text[i];
        const char next = i + 1 < text.size() ? text[i + 1] : '\0';
        // A pair: (first, second, value); otherwise the single letter.
        uint32_t pair = 0;
        if (c == 'c' && next == 'm')
            pair = 900;
        else if (c == 'c' && next == 'd')
            pair = 400;
        else if (c == 'x' && next == 'c')
            pair = 90;
        else if (c == 'x' && next == 'l')
            pair = 40;
        else if (c == 'i' && next == 'v')
            pair = 4;
        else if ((c == 'i' || c == 'v') && next == 'x')
            pair = 9;
        if (pair != 0) {
            total += pair;
            i += 2;
            continue;
        }
        switch (c) {
        case 'm': total += 1000; break;
        case 'd': total += 500; break;
        case 'c': total += 100; break;
        case 'l': total += 50; break;
        case 'x': total += 10; break;
        case 'v': total += 5; break;
        case 'i': total += 1; break;
        default: break;
        }
        ++i;
    }
    return static_cast<int32_t>(total);
}

// ---------------------------------------------------------------------------
// Morse code of the characters 32 to 90 (after toupper). Dots and dashes are
// exchanged with respect to the international code (E is a dash, T a dot):
// that is the code this library has always written. nullptr: no code.

const char *morse_of(unsigned char c) {
    static const char *const kDigits[10] = {".....", "-....", "--...", "---..", "----.",
                                            "-----", ".----", "..---", "...--", "....-"};
    static const char *const kLetters[26] = {"-.",   ".---", ".-.-", ".--",  "-",    "--.-", "..-",
                                             "----", "--",   "-...", ".-.",  "-.--", "..",   ".-",
                                             "...",  "-..-", "..-.", "-.-",  "---",  ".",    "--.",
                                             "---.", "-..",  ".--.", ".-..", "..--"};
    if (c >= '0' && c <= '9')
        return kDigits[c - '0'];
    if (c >= 'A' && c <= 'Z')
        return kLetters[c - 'A'];
    switch (c) {
    case ',': return "..--..";
    case '-': return ".---.";
    case '.': return "-.-.-.";
    case '/': return ".--.-";
    case '?': return "--..--";
    default: return nullptr;
    }
}

} // namespace

BRINDLE_EXPORT(double) cPtoF(double Rate, int16_t Periods) {
    return factor_refused(Rate, Periods) ? -1.0 : discrete(Rate, Periods);
}
BRINDLE_EXPORT(double) cFtoP(double Rate, int16_t Periods) {
    return factor_refused(Rate, Periods) ? -1.0 : 1.0 / discrete(Rate, Periods);
}
BRINDLE_EXPORT(double) cAtoF(double Rate, int16_t Periods) {
    return factor_refused(Rate, Periods) ? -1.0 : (discrete(Rate, Periods) - 1.0) / Rate;
}
BRINDLE_EXPORT(double) cFtoA(double Rate, int16_t Periods) {
    return factor_refused(Rate, Periods) ? -1.0 : Rate / (discrete(Rate, Periods) - 1.0);
}
BRINDLE_EXPORT(double) cAtoP(double Rate, int16_t Periods) {
    if (factor_refused(Rate, Periods))
        return -1.0;
    const double d = discrete(Rate, Periods);
    return ((d - 1.0) / Rate) / d;
}
BRINDLE_EXPORT(double) cPtoA(double Rate, int16_t Periods) {
    if (factor_refused(Rate, Periods))
        return -1.0;
    const double d = discrete(Rate, Periods);
    return d / ((d - 1.0) / Rate);
}

BRINDLE_EXPORT(double) cPtoFC(double Rate, int16_t Periods) {
    return factor_refused(Rate, Periods) ? -1.0 : continuous(Rate, Periods);
}
BRINDLE_EXPORT(double) cFtoPC(double Rate, int16_t Periods) {
    return factor_refused(Rate, Periods) ? -1.0 : 1.0 / continuous(Rate, Periods);
}
BRINDLE_EXPORT(double) cAtoFC(double Rate, int16_t Periods) {
    return factor_refused(Rate, Periods) ? -1.0 : (continuous(Rate, Periods) - 1.0) / continuous_step(Rate);
}
BRINDLE_EXPORT(double) cFtoAC(double Rate, int16_t Periods) {
    return factor_refused(Rate, Periods) ? -1.0 : continuous_step(Rate) / (continuous(Rate, Periods) - 1.0);
}
BRINDLE_EXPORT(double) cAtoPC(double Rate, int16_t Periods) {
    if (factor_refused(Rate, Periods))
        return -1.0;
    const double k = continuous(Rate, Periods);
    return ((k - 1.0) / continuous_step(Rate)) / k;
}
BRINDLE_EXPORT(double) cPtoAC(double Rate, int16_t Periods) {
    if (factor_refused(Rate, Periods))
        return -1.0;
    const double k = continuous(Rate, Periods);
    return k / ((k - 1.0) / continuous_step(Rate));
}

// Each byte as two hexadecimal digits, high half first.
BRINDLE_EXPORT(BSTR) cToHexa(BSTR *Txt) {
    return guarded_string([&] { return hex_string(StrArg::by_ref(Txt).bytes()); });
}

BRINDLE_EXPORT(BSTR) cFromHexa(BSTR *Txt) {
    return guarded_string([&] { return from_digit_pairs(Txt, 16); });
}

BRINDLE_EXPORT(int16_t) cH2I(BSTR Txt) { return static_cast<int16_t>(static_cast<uint16_t>(hex_number(Txt, 4))); }
BRINDLE_EXPORT(int32_t) cH2L(BSTR Txt) { return static_cast<int32_t>(hex_number(Txt, 8)); }

// Each byte, taken as a signed 8-bit number b, as the two base-36 digits of
// b / 36 and b mod 36 (truncating, so bytes from 128 up give negative parts
// and characters outside 0-9A-Z; they do not come back through cFromZ9).
BRINDLE_EXPORT(BSTR) cToZ9(BSTR *Txt) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        if (text.empty())
            return empty_string();
        StringResult result(text.size() * 2);
        char *out = result.data();
        for (const char ch : text.bytes()) {
            const int b = static_cast<signed char>(ch);
            *out++ = z9_char(static_cast<uint8_t>(b / 36));
            *out++ = z9_char(static_cast<uint8_t>(b % 36));
        }
        return result.take();
    });
}

BRINDLE_EXPORT(BSTR) cFromZ9(BSTR *Txt) {
    return guarded_string([&] { return from_digit_pairs(Txt, 36); });
}

BRINDLE_EXPORT(BSTR) cArabicToRoman(VARIANT *Number) {
    return guarded_string([&] { return new_string(arabic_to_roman(variant_to_long(Number))); });
}

BRINDLE_EXPORT(VARIANT) cRomanToArabic(BSTR *Txt) {
    return long_variant(roman_to_arabic(StrArg::by_ref(Txt).bytes()));
}

// Symbols and one space per coded character, "~" for a character from 32 to
// 90 without a code; other characters are skipped. The text is read up to
// its first zero byte.
BRINDLE_EXPORT(BSTR) cMorse(BSTR Txt) {
    return guarded_string([&] {
        std::string out;
        for (const char ch : StrArg::by_val(Txt).text()) {
            unsigned char c = static_cast<unsigned char>(ch);
            if (c >= 'a' && c <= 'z')
                c = static_cast<unsigned char>(c - 'a' + 'A');
            if (c < 32 || c > 90)
                continue;
            if (const char *code = morse_of(c)) {
                out += code;
                out += ' ';
            } else {
                out += '~';
            }
        }
        return new_string(out);
    });
}

BRINDLE_EXPORT(int16_t) cCnvASCIItoEBCDIC(BSTR *Txt) {
    const StrArg text = StrArg::by_ref(Txt);
    if (text.empty())
        return 0;
    brindle::convert::ascii_to_ebcdic(text.writable(), text.size());
    return -1;
}

BRINDLE_EXPORT(int16_t) cCnvEBCDICtoASCII(BSTR *Txt) {
    const StrArg text = StrArg::by_ref(Txt);
    if (text.empty())
        return 0;
    brindle::convert::ebcdic_to_ascii(text.writable(), text.size());
    return -1;
}
