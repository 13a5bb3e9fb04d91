// Variant arguments. The caller's VARIANT is never changed: the value is
// copied into a local, the copy is coerced (VariantChangeType, flags 0) and
// read, and the copy is cleared. A coercion that fails reads as 0 (or the
// empty string); the library does not report it.
#pragma once

#include "platform/ole.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace brindle::frame {

int32_t variant_to_long(const VARIANT *value) noexcept;

// An Empty Variant result.
VARIANT empty_variant() noexcept;

// A Variant result holding the Long `value` (VT_I4).
VARIANT long_variant(int32_t value) noexcept;

// A shallow copy of a Variant stored inside a caller's record; nothing unless
// it holds a value of its own (numbers, dates, Strings, Empty, Null, Decimal,
// Error). The record's bytes are the caller's and may be anything: objects
// (whose interfaces a copy would call), values by reference and arrays all
// lead through a pointer that nothing vouches for, so such a field - like a
// type code that names no type - is refused before anything reads through
// it. A String's pointer is kept: a record holding a Variant of a String
// holds a real one by contract.
std::optional<VARIANT> variant_in_record(const void *bytes) noexcept;
double variant_to_double(const VARIANT *value) noexcept;
// The value as text in the caller's ANSI bytes.
std::string variant_to_bytes(const VARIANT *value);

// The value coerced to the numeric variant type `vt` (VT_BOOL, VT_I1, VT_I2,
// VT_I4, VT_R4, VT_R8, VT_CY through VarR8FromCy, VT_DATE) and read as a
// double; nothing when the coercion fails or `vt` is not one of those.
std::optional<double> variant_number(const VARIANT *value, VARTYPE vt) noexcept;

// The value coerced to a string, as the wide text it holds; nothing when the
// coercion fails.
std::optional<std::basic_string<OLECHAR>> variant_wide(const VARIANT *value);

// Fixed-size elements of the stores (disk arrays, huge arrays): numbers in
// their natural little-endian bytes, or 8-bit text of the element's width.
enum class ElementKind : uint8_t { Currency, Double, Single, Long, Integer, Byte, Text };

// Bytes of a number element of `kind` (Text: 0).
size_t number_size(ElementKind kind) noexcept;

// A Variant holding the element whose bytes are `bytes` (number_size bytes
// for a number; the whole element for text): Currency, Double, Single, Long,
// Integer or Byte, or a String of the text up to its first zero byte with
// trailing blanks kept. An Empty Variant when no memory is left for the text.
VARIANT element_variant(ElementKind kind, const uint8_t *bytes, size_t size) noexcept;

// The caller's value converted (VariantChangeType, flags 0) to the element's
// type and stored into `out` (`size` bytes): a number in its bytes; text cut
// to the width or padded with blanks. False, with `out` untouched, when the
// value does not convert.
bool element_from_variant(ElementKind kind, const VARIANT *value, uint8_t *out, size_t size);

} // namespace brindle::frame
