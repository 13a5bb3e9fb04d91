// The ISBN-10 check.
#pragma once

#include <string_view>

namespace brindle::strings {

// True when text holds exactly ten decimal digits (other bytes skipped,
// hyphens for instance) whose sum weighted 1..10 from the left, taken as a
// 16-bit signed number, divides by 11. A final "X" is not a digit, so an
// ISBN whose check digit is 10 is refused.
bool isbn10_valid(std::string_view text) noexcept;

} // namespace brindle::strings
