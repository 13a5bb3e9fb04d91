// Setting a value into a field of a separated text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace brindle::strings {

// Text with value inserted at the start (at_end = false) or at the end,
// before its separator, of field n (n >= 1), where any byte of seps ends a
// field. Whether field n exists is judged by the occurrences of the first
// byte of seps only; when it does not, text comes back unchanged. When it
// does, every byte 255 of text comes back as that first byte (the byte
// marked the separators while they were counted) and ends a field in the
// walk. seps must not be empty.
std::string set_in_field(std::string_view text, std::string_view seps, int32_t n, std::string_view value,
                         bool at_end);

} // namespace brindle::strings
