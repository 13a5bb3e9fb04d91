// Variant arguments. The caller's VARIANT is never changed: the value is
// copied into a local, the copy is coerced (VariantChangeType, flags 0) and
// read, and the copy is cleared. A coercion that fails reads as 0 (or the
// empty string); the library does not report it.
#pragma once

#include "platform/ole.h"

#include <cstdint>
#include <string>

namespace brindle::frame {

int32_t variant_to_long(const VARIANT *value) noexcept;
double variant_to_double(const VARIANT *value) noexcept;
// The value as text in the caller's ANSI bytes.
std::string variant_to_bytes(const VARIANT *value);

} // namespace brindle::frame
