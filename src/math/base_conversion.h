// Whole numbers written in one base read and written in another.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace brindle::math {

inline constexpr int kLowestBase = 2;
inline constexpr int kHighestBase = 34; // 35 and 36 are refused, as they always were

// The text read as the C runtime's strtol reads it in base `from`, written
// in base `to` with the digits 0-9a-z. A negative value has a minus sign in
// base 10 and is written as its unsigned 32-bit two's complement in every
// other base. Empty when a base is outside 2..34 and when the value read is 0.
std::string convert_base(std::string_view text, int from, int to);

// `value` in base `base` (2..36) as _ltoa writes it, lower-case letters:
// minus sign in base 10 only, two's complement otherwise.
std::string format_in_base(int32_t value, int base);

} // namespace brindle::math
