// The element types of the stores, by the 16-bit code a record holds:
// -6 Currency, -5 Double, -4 Single, -3 Long, -2 Integer, -1 Byte; any other
// non-zero n is fixed-length 8-bit text (or a user-defined record) of abs(n)
// bytes; 0 names no type.
#pragma once

#include "frame/variants.h"

#include <cstdint>

namespace brindle::stores {

// Bytes per element of `var_type`; 0 for the code 0.
int32_t element_size(int16_t var_type) noexcept;

// How an element of `var_type` travels in a Variant.
frame::ElementKind element_kind(int16_t var_type) noexcept;

// The byte that creating and clearing write: a space for text types given
// by a positive code when NoSpaces is 0, a zero byte otherwise (numbers,
// text given by a negative code, NoSpaces set).
uint8_t fill_byte(int16_t var_type, int16_t no_spaces) noexcept;

} // namespace brindle::stores
