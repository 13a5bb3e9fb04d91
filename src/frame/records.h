// Records: the caller's user-defined types, passed by reference with fixed
// layouts (each record family declares its records once per layout, 32-bit
// and 64-bit, with static_asserts on every offset: common/record_layout.h). Fixed-length text fields arrive as exactly N bytes, blank-padded,
// with no terminator.
#pragma once

#include "platform/ole.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace brindle::frame {

// A fixed-length field used as a name (a file name, say): the N bytes up to
// the first space or zero byte. An empty result is the family's to refuse.
std::string field_name(const char *field, size_t width);

// Stores `value` into a fixed-length field: cut to the width, blank-padded.
void put_field(char *field, size_t width, std::string_view value) noexcept;

// Replaces a String field of the caller's record with a new string holding
// `value`, freeing the old one; an empty value leaves a null string, which VB
// reads as "".
void put_string_field(BSTR *field, std::string_view value);

} // namespace brindle::frame
