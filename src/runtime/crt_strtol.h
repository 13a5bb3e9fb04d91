// strtol of the Windows C runtime (whose long has 32 bits), written out so
// that every platform reads the same number from the same text.
#pragma once

#include <cstdint>
#include <string_view>

namespace brindle::runtime {

// strtol(text, NULL, base) for a base from 2 to 36: white space (space, tab,
// line feed, vertical tab, form feed, carriage return), an optional sign,
// for base 16 an optional "0x" or "0X", then the digits 0-9 and the letters
// of either case worth 10 and up, as long as they are below the base. A zero
// byte or the first other character ends the number; no digit gives 0. A
// value beyond the 32-bit range gives INT32_MAX or INT32_MIN by its sign.
// Other bases give 0.
int32_t crt_strtol(std::string_view text, int base) noexcept;

} // namespace brindle::runtime
