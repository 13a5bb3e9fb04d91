// Single-precision numbers between IEEE 754 binary32 and Microsoft Binary
// Format, as 32-bit patterns (byte 0 of the memory image in bits 0..7).
//
// MBF keeps the exponent (bias 129) in its top byte and the sign in bit 7 of
// byte 2, where IEEE has the low exponent bit. The conversion moves the sign,
// adds or subtracts 2 from the exponent byte modulo 256 and keeps the 23
// mantissa bits. Zero, infinities and exponents that leave the range are not
// treated specially: an MBF zero comes out as a huge IEEE number, and an IEEE
// zero as the smallest non-zero MBF value. Old data files depend on exactly
// this arithmetic, so it is kept.
#pragma once

#include <cstdint>

namespace brindle::convert {

// The MBF pattern of an IEEE single.
constexpr uint32_t mbf_from_ieee(uint32_t ieee) {
    const uint32_t sign = ieee >> 31;
    const uint32_t exponent = (ieee >> 23) & 0xFFu;
    const uint32_t mantissa_high = (ieee >> 16) & 0x7Fu;
    return (((exponent + 2u) & 0xFFu) << 24) | (sign << 23) | (mantissa_high << 16) | (ieee & 0xFFFFu);
}

// The IEEE pattern of an MBF single.
constexpr uint32_t ieee_from_mbf(uint32_t mbf) {
    const uint32_t exponent = mbf >> 24;
    const uint32_t sign = (mbf >> 23) & 1u;
    const uint32_t mantissa_high = (mbf >> 16) & 0x7Fu;
    return (sign << 31) | (((exponent - 2u) & 0xFFu) << 23) | (mantissa_high << 16) | (mbf & 0xFFFFu);
}

} // namespace brindle::convert
