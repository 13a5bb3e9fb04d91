// Digit utilities: sums, digital roots and complements of the decimal digits
// in a text (other bytes are ignored or kept as they are).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace brindle::strings {

// The sum of the decimal digits of text, as its low 16 bits.
int16_t digit_sum16(std::string_view text) noexcept;

// The digital root: digits added one by one, 9 taken off whenever the sum
// passes 9; 0 when there is no digit (and 9 for a nonzero multiple of 9).
int16_t digital_root(std::string_view text) noexcept;

// Each decimal digit d replaced by 9 - d; other bytes unchanged.
std::string nines_complement(std::string_view text);

// Each byte b replaced by 255 - b.
std::string byte_complement(std::string_view text);

} // namespace brindle::strings
