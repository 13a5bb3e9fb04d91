// Number texts read as the Windows C runtime reads them, written out in
// portable code so that every platform, and every locale a client process
// has chosen, gives the same number.
#pragma once

#include <cstdint>
#include <string_view>

namespace brindle::runtime {

// strtod(text, NULL) of the runtime in its "C" locale: the longest leading
// number of `text` after white space (space, tab, line feed, vertical tab,
// form feed, carriage return): an optional sign, decimal digits with an
// optional full stop (at least one digit on either side of it), then an
// optional exponent (e or E, an optional sign, digits). A zero byte ends the
// text. No number gives 0; "inf", "nan" and hexadecimal forms are no
// numbers, as with that runtime. The value is the nearest double (ties to
// even); beyond the largest double it is an infinity (the runtime's
// HUGE_VAL), below the smallest denormal a zero, both with the sign.
// The locale is never consulted: the decimal point is always a full stop.
double crt_strtod(std::string_view text) noexcept;

// atol(text) of the runtime, whose long has 32 bits: white space as above,
// an optional sign, decimal digits; anything else ends the number (no
// number gives 0). Values out of range give LONG_MAX or LONG_MIN.
int32_t crt_atol(std::string_view text) noexcept;

} // namespace brindle::runtime
