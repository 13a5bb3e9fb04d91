// Character classes: whether every character of a string belongs to a class,
// palindromes, ISBN-10 numbers, and the digit utilities. Every function reads
// its text counted.
//
// The classes are those of the C runtime in the "C" locale (the locale a VB
// program's runtime starts in): bytes 128..255, which arrive as negative
// signed characters, belong to no class.
#include "frame/frame.h"
#include "strings/char_classes.h"
#include "strings/digits.h"
#include "strings/isbn.h"

#include <cstdint>

using namespace brindle::frame;
using namespace brindle::strings;

namespace {

int16_t class_result(BSTR *Txt, CharClass cls) {
    return vb_bool(all_in_class(StrArg::by_ref(Txt).bytes(), cls));
}

} // namespace

#define CLASS_EXPORT(name, cls)                                                                                      \
    BRINDLE_EXPORT(int16_t) name(BSTR *Txt) { return class_result(Txt, CharClass::cls); }

CLASS_EXPORT(cIsDigit, Digit)
CLASS_EXPORT(cIsAlpha, Alpha)
CLASS_EXPORT(cIsLower, Lower)
CLASS_EXPORT(cIsUpper, Upper)
CLASS_EXPORT(cIsXdigit, Xdigit)
CLASS_EXPORT(cIsAlnum, Alnum)
CLASS_EXPORT(cIsCsym, Csym)
CLASS_EXPORT(cIsCsymf, Csymf)
CLASS_EXPORT(cIsPunct, Punct)
CLASS_EXPORT(cIsSpace, Space)
CLASS_EXPORT(cIsAscii, Ascii)
// Ten decimal digits (other bytes skipped), weighted 1..10, whose sum as a
// 16-bit number divides by 11. A final "X" is not a digit.
BRINDLE_EXPORT(int16_t) cIsISBN(BSTR *Txt) { return vb_bool(isbn10_valid(StrArg::by_ref(Txt).bytes())); }

// The bytes read the same from both ends (exactly: case and spaces count).
BRINDLE_EXPORT(int16_t) cIsPalindrome(BSTR *Txt) {
    return vb_bool(is_palindrome(StrArg::by_ref(Txt).bytes()));
}

// -1 when every byte is a decimal digit.
BRINDLE_EXPORT(int16_t) cCheckNumericity(BSTR *Txt) { return class_result(Txt, CharClass::Digit); }

// The sum of the decimal digits, other bytes ignored; as a 16-bit Integer
// (the low 16 bits of the sum for texts of more than 3,640 nines).
BRINDLE_EXPORT(int16_t) cAddDigit(BSTR *Txt) { return digit_sum16(StrArg::by_ref(Txt).bytes()); }

// The digital root: digits added one by one, 9 taken off whenever the sum
// passes 9; 0 when there is no digit.
BRINDLE_EXPORT(int16_t) cNumDigit(BSTR *Txt) { return digital_root(StrArg::by_ref(Txt).bytes()); }

// Nines' complement of every decimal digit; other bytes unchanged.
BRINDLE_EXPORT(BSTR) cCplDigit(BSTR *Txt) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        return text.empty() ? empty_string() : new_string(nines_complement(text.bytes()));
    });
}

// Every byte complemented (255 - b).
BRINDLE_EXPORT(BSTR) cCplAlpha(BSTR *Txt) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        return text.empty() ? empty_string() : new_string(byte_complement(text.bytes()));
    });
}
