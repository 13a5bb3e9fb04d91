// Text and number conversions: compound-interest factors, hexadecimal and
// base-36 text, hexadecimal numbers, Roman numerals, Morse code and the
// ASCII/EBCDIC conversions in place. Texts by reference are read counted;
// cH2I, cH2L and cMorse take theirs by value.
#include "convert/base36_text.h"
#include "convert/ebcdic.h"
#include "convert/hex_text.h"
#include "convert/interest_factors.h"
#include "convert/morse.h"
#include "convert/roman_numerals.h"
#include "frame/frame.h"

using namespace brindle::frame;
using namespace brindle::convert;

BRINDLE_EXPORT(double) cPtoF(double Rate, int16_t Periods) {
    return discrete_factor(InterestFactor::p_to_f, Rate, Periods);
}
BRINDLE_EXPORT(double) cFtoP(double Rate, int16_t Periods) {
    return discrete_factor(InterestFactor::f_to_p, Rate, Periods);
}
BRINDLE_EXPORT(double) cAtoF(double Rate, int16_t Periods) {
    return discrete_factor(InterestFactor::a_to_f, Rate, Periods);
}
BRINDLE_EXPORT(double) cFtoA(double Rate, int16_t Periods) {
    return discrete_factor(InterestFactor::f_to_a, Rate, Periods);
}
BRINDLE_EXPORT(double) cAtoP(double Rate, int16_t Periods) {
    return discrete_factor(InterestFactor::a_to_p, Rate, Periods);
}
BRINDLE_EXPORT(double) cPtoA(double Rate, int16_t Periods) {
    return discrete_factor(InterestFactor::p_to_a, Rate, Periods);
}

BRINDLE_EXPORT(double) cPtoFC(double Rate, int16_t Periods) {
    return continuous_factor(InterestFactor::p_to_f, Rate, Periods);
}
BRINDLE_EXPORT(double) cFtoPC(double Rate, int16_t Periods) {
    return continuous_factor(InterestFactor::f_to_p, Rate, Periods);
}
BRINDLE_EXPORT(double) cAtoFC(double Rate, int16_t Periods) {
    return continuous_factor(InterestFactor::a_to_f, Rate, Periods);
}
BRINDLE_EXPORT(double) cFtoAC(double Rate, int16_t Periods) {
    return continuous_factor(InterestFactor::f_to_a, Rate, Periods);
}
BRINDLE_EXPORT(double) cAtoPC(double Rate, int16_t Periods) {
    return continuous_factor(InterestFactor::a_to_p, Rate, Periods);
}
BRINDLE_EXPORT(double) cPtoAC(double Rate, int16_t Periods) {
    return continuous_factor(InterestFactor::p_to_a, Rate, Periods);
}

// Each byte as two hexadecimal digits, high half first.
BRINDLE_EXPORT(BSTR) cToHexa(BSTR *Txt) {
    return guarded_string([&] { return hex_string(StrArg::by_ref(Txt).bytes()); });
}

BRINDLE_EXPORT(BSTR) cFromHexa(BSTR *Txt) {
    return guarded_string([&] { return new_string(bytes_from_hex_text(StrArg::by_ref(Txt).bytes())); });
}

BRINDLE_EXPORT(int16_t) cH2I(BSTR Txt) {
    return static_cast<int16_t>(static_cast<uint16_t>(hex_number_prefix(StrArg::by_val(Txt).bytes(), 4)));
}
BRINDLE_EXPORT(int32_t) cH2L(BSTR Txt) {
    return static_cast<int32_t>(hex_number_prefix(StrArg::by_val(Txt).bytes(), 8));
}

BRINDLE_EXPORT(BSTR) cToZ9(BSTR *Txt) {
    return guarded_string([&] { return new_string(base36_text(StrArg::by_ref(Txt).bytes())); });
}

BRINDLE_EXPORT(BSTR) cFromZ9(BSTR *Txt) {
    return guarded_string([&] { return new_string(bytes_from_base36_text(StrArg::by_ref(Txt).bytes())); });
}

BRINDLE_EXPORT(BSTR) cArabicToRoman(VARIANT *Number) {
    return guarded_string([&] { return new_string(roman_numeral(variant_to_long(Number))); });
}

BRINDLE_EXPORT(VARIANT) cRomanToArabic(BSTR *Txt) {
    return long_variant(roman_value(StrArg::by_ref(Txt).bytes()));
}

// The text is read up to its first zero byte.
BRINDLE_EXPORT(BSTR) cMorse(BSTR Txt) {
    return guarded_string([&] { return new_string(morse_text(StrArg::by_val(Txt).text())); });
}

BRINDLE_EXPORT(int16_t) cCnvASCIItoEBCDIC(BSTR *Txt) {
    const StrArg text = StrArg::by_ref(Txt);
    if (text.empty())
        return 0;
    ascii_to_ebcdic(text.writable(), text.size());
    return -1;
}

BRINDLE_EXPORT(int16_t) cCnvEBCDICtoASCII(BSTR *Txt) {
    const StrArg text = StrArg::by_ref(Txt);
    if (text.empty())
        return 0;
    ebcdic_to_ascii(text.writable(), text.size());
    return -1;
}
