// A copy of a file with every letter turned to upper or lower case (the
// runtime's case functions in the default "C" locale: A-Z and a-z only).
#pragma once

#include <cstdint>
#include <string_view>

namespace brindle::files {

// Bytes written, or a TextFileCode: kTextNoBuffer, kTextSourceNotOpened,
// kTextTargetNotCreated (also when both names are one file; the source is
// then untouched), kTextReadError, kTextWriteError. A partial target is
// deleted.
int32_t copy_changing_case(std::string_view source, std::string_view target, bool upper);

} // namespace brindle::files
