// Bit strings, bits of numbers and binary text. Every string is taken by
// reference and read counted (a bit string holds zero bytes like any other);
// the exports that change a bit string write into the caller's bytes and
// never change its length.
#include "arrays/binary_text.h"
#include "arrays/bit_string.h"
#include "arrays/number_bits.h"
#include "frame/frame.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <new>

using namespace brindle::frame;
using namespace brindle::arrays;

namespace {

// The caller's bit string as bytes to edit in place.
unsigned char *edit(const StrArg &bits) { return reinterpret_cast<unsigned char *>(bits.writable()); }

// A bit number for a Long result: a bit past 2^31 - 1 cannot be named.
int32_t bit_number(int64_t index) {
    return index > std::numeric_limits<int32_t>::max() ? -1 : static_cast<int32_t>(index);
}

// The characters for 1 and 0 of a caller's pair, "1" and "0" standing in
// for the missing ones.
char one_of(const StrArg &pair) { return pair.first_or('1'); }
char zero_of(const StrArg &pair) { return pair.size() >= 2 ? pair.data()[1] : '0'; }

BSTR to_binary(const StrArg &text, char one, char zero) {
    if (text.empty())
        return empty_string();
    if (text.size() > std::numeric_limits<size_t>::max() / 8)
        throw std::bad_alloc();
    StringResult result(text.size() * 8);
    write_binary(text.bytes(), one, zero, result.data());
    return result.take();
}

BSTR from_binary(const StrArg &text, char one) {
    if (text.size() < 8)
        return empty_string();
    StringResult result(text.size() / 8);
    read_binary(text.bytes(), one, reinterpret_cast<unsigned char *>(result.data()));
    return result.take();
}

BSTR number_text(uint32_t value, int width, BSTR *Pair, bool lowest_first) {
    const StrArg pair = StrArg::by_ref(Pair);
    return new_string(number_binary(value, width, one_of(pair), zero_of(pair), lowest_first));
}

int16_t set_bit(BSTR *Bits, int32_t index, bool on) {
    const StrArg bits = StrArg::by_ref(Bits);
    return vb_bool(put_bit(edit(bits), bits.size(), index, on));
}

} // namespace

BRINDLE_EXPORT(BSTR) cCreateBits(int32_t Bits) {
    return guarded_string([&] {
        if (Bits < 1)
            return empty_string();
        StringResult result(static_cast<size_t>((int64_t{Bits} + 7) / 8));
        std::memset(result.data(), 0, result.size());
        return result.take();
    });
}

BRINDLE_EXPORT(int32_t) cGetBit(BSTR *Bits, int32_t Index) {
    return get_bit(StrArg::by_ref(Bits).bytes(), Index) ? -1 : 0;
}

BRINDLE_EXPORT(int16_t) cSetBit(BSTR *Bits, int32_t Index, int16_t Value) { return set_bit(Bits, Index, Value != 0); }
BRINDLE_EXPORT(int16_t) cSetBitToTrue(BSTR *Bits, int32_t Index) { return set_bit(Bits, Index, true); }
BRINDLE_EXPORT(int16_t) cSetBitToFalse(BSTR *Bits, int32_t Index) { return set_bit(Bits, Index, false); }

BRINDLE_EXPORT(int32_t) cToggleBit(BSTR *Bits, int32_t Index) {
    const StrArg bits = StrArg::by_ref(Bits);
    return toggle_bit(edit(bits), bits.size(), Index);
}

BRINDLE_EXPORT(int16_t) cSetAllBits(BSTR *Bits, int16_t Value) {
    const StrArg bits = StrArg::by_ref(Bits);
    if (bits.empty())
        return 0;
    fill_bits(edit(bits), bits.size(), Value != 0);
    return -1;
}

BRINDLE_EXPORT(int16_t) cToggleAllBits(BSTR *Bits) {
    const StrArg bits = StrArg::by_ref(Bits);
    if (bits.empty())
        return 0;
    complement_bits(edit(bits), bits.size());
    return -1;
}

BRINDLE_EXPORT(int16_t) cReverseAllBits(BSTR *Bits) {
    const StrArg bits = StrArg::by_ref(Bits);
    if (bits.empty())
        return 0;
    reverse_bits(edit(bits), bits.size());
    return -1;
}

BRINDLE_EXPORT(int16_t) cReverseAllBitsByChar(BSTR *Bits) {
    const StrArg bits = StrArg::by_ref(Bits);
    if (bits.empty())
        return 0;
    reverse_bits_by_byte(edit(bits), bits.size());
    return -1;
}

BRINDLE_EXPORT(int32_t) cFindBitSet(BSTR *Bits, int32_t Start) {
    return bit_number(find_bit(StrArg::by_ref(Bits).bytes(), Start, true));
}

BRINDLE_EXPORT(int32_t) cFindBitReset(BSTR *Bits, int32_t Start) {
    return bit_number(find_bit(StrArg::by_ref(Bits).bytes(), Start, false));
}

BRINDLE_EXPORT(int16_t) cIsBitPalindrome(BSTR *Bits) { return vb_bool(is_bit_palindrome(StrArg::by_ref(Bits).bytes())); }

BRINDLE_EXPORT(BSTR) cGiveBitPalindrome() {
    return guarded_string([] { return new_string(palindrome_bytes()); });
}

BRINDLE_EXPORT(BSTR) cToBinary(BSTR *Txt) {
    return guarded_string([&] { return to_binary(StrArg::by_ref(Txt), '1', '0'); });
}

BRINDLE_EXPORT(BSTR) cToBinary2(BSTR *Txt, BSTR *Pair) {
    return guarded_string([&] {
        const StrArg pair = StrArg::by_ref(Pair);
        return to_binary(StrArg::by_ref(Txt), one_of(pair), zero_of(pair));
    });
}

BRINDLE_EXPORT(BSTR) cFromBinary(BSTR *Txt) {
    return guarded_string([&] { return from_binary(StrArg::by_ref(Txt), '1'); });
}

BRINDLE_EXPORT(BSTR) cFromBinary2(BSTR *Txt, BSTR *Pair) {
    return guarded_string([&] { return from_binary(StrArg::by_ref(Txt), one_of(StrArg::by_ref(Pair))); });
}

BRINDLE_EXPORT(int16_t) cB2I(BSTR *Txt) { return static_cast<int16_t>(binary_number(StrArg::by_ref(Txt).bytes(), 16)); }
BRINDLE_EXPORT(int32_t) cB2L(BSTR *Txt) { return static_cast<int32_t>(binary_number(StrArg::by_ref(Txt).bytes(), 32)); }

BRINDLE_EXPORT(int32_t) cGetBitB(uint8_t Number, int16_t Index) { return first_scheme_bit(Number, 8, Index) ? -1 : 0; }
BRINDLE_EXPORT(int32_t) cGetBitI(int16_t Number, int16_t Index) {
    return first_scheme_bit(static_cast<uint16_t>(Number), 16, Index) ? -1 : 0;
}
BRINDLE_EXPORT(int32_t) cGetBitL(int32_t Number, int16_t Index) {
    return first_scheme_bit(static_cast<uint32_t>(Number), 32, Index) ? -1 : 0;
}
BRINDLE_EXPORT(int32_t) cGetBitD(double Number, int16_t Index) {
    uint64_t image;
    std::memcpy(&image, &Number, sizeof image);
    return first_scheme_bit(image, 64, Index) ? -1 : 0;
}

BRINDLE_EXPORT(int16_t) cSetBitB(uint8_t *Number, int16_t Index, int16_t Value) {
    if (Number != nullptr)
        *Number = first_scheme_set_byte(*Number, Index, Value != 0);
    return -1;
}

BRINDLE_EXPORT(int32_t) cGetBitB2(uint8_t Number, int32_t Index) { return second_scheme_bit(Number, 8, Index) ? -1 : 0; }
BRINDLE_EXPORT(int32_t) cGetBitI2(int16_t Number, int32_t Index) {
    return second_scheme_bit(static_cast<uint32_t>(int32_t{Number}), 16, Index) ? -1 : 0;
}
BRINDLE_EXPORT(int32_t) cGetBitL2(int32_t Number, int32_t Index) {
    return second_scheme_bit(static_cast<uint32_t>(Number), 32, Index) ? -1 : 0;
}

BRINDLE_EXPORT(int16_t) cSetBitB2(uint8_t *Number, int32_t Index, int16_t Value) {
    if (Number != nullptr)
        *Number = static_cast<uint8_t>(second_scheme_set(*Number, Index, flag16(Value)));
    return -1;
}
BRINDLE_EXPORT(int16_t) cSetBitI2(int16_t *Number, int32_t Index, int16_t Value) {
    if (Number != nullptr)
        *Number = static_cast<int16_t>(second_scheme_set(static_cast<uint32_t>(int32_t{*Number}), Index, flag16(Value)));
    return -1;
}
BRINDLE_EXPORT(int16_t) cSetBitL2(int32_t *Number, int32_t Index, int16_t Value) {
    if (Number != nullptr)
        *Number = static_cast<int32_t>(second_scheme_set(static_cast<uint32_t>(*Number), Index, flag16(Value)));
    return -1;
}

BRINDLE_EXPORT(BSTR) cI2B(int16_t Number) {
    return guarded_string([&] { return new_string(number_binary_trimmed(static_cast<uint16_t>(Number))); });
}
BRINDLE_EXPORT(BSTR) cL2B(int32_t Number) {
    return guarded_string([&] { return new_string(number_binary_trimmed(static_cast<uint32_t>(Number))); });
}

BRINDLE_EXPORT(BSTR) cI2Bext(int16_t Number, BSTR *Pair) {
    return guarded_string([&] { return number_text(static_cast<uint16_t>(Number), 16, Pair, false); });
}
BRINDLE_EXPORT(BSTR) cL2Bext(int32_t Number, BSTR *Pair) {
    return guarded_string([&] { return number_text(static_cast<uint32_t>(Number), 32, Pair, false); });
}
BRINDLE_EXPORT(BSTR) cI2BextRvs(int16_t Number, BSTR *Pair) {
    return guarded_string([&] { return number_text(static_cast<uint16_t>(Number), 16, Pair, true); });
}
BRINDLE_EXPORT(BSTR) cL2BextRvs(int32_t Number, BSTR *Pair) {
    return guarded_string([&] { return number_text(static_cast<uint32_t>(Number), 32, Pair, true); });
}
