// Changes to a file in place that never leave it half done: the new
// content is written to a uniquely named file beside it, which replaces the
// original only once it is complete. A failure, a full disk included,
// leaves the original as it was and removes the new file; so does a change
// that changes nothing.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace brindle::files {

// Replaces every occurrence of `search` with `replacement` in the lines of
// `path` (pieces ending after a line feed, of at most 8,191 bytes; a match
// does not span two pieces; the matches in a piece do not overlap). The
// bytes outside the matches are kept exactly, line endings included.
// Without `exact` the search ignores the case of A-Z. The number of
// replacements; 0 for an empty path or search; kTextSourceNotOpened (also
// for a file that may not be written), kTextTargetNotCreated (the new file
// cannot be made), kTextReadError, kTextWriteError (also when the new file
// cannot take the original's place).
int32_t replace_in_file(std::string_view path, std::string_view search, std::string_view replacement, bool exact);

// Changes every byte of `path` through `map`, in 32,768-byte blocks. The
// number of bytes changed, or the codes of replace_in_file.
int32_t map_file_bytes(std::string_view path, const std::array<unsigned char, 256> &map);

// The map of pairs applied one after the other, each to the result of those
// before it (as the string function does): from "ab" to "bc" maps a and b to
// c. Pairs beyond the shorter list are ignored.
std::array<unsigned char, 256> chained_byte_map(std::string_view from, std::string_view to);

} // namespace brindle::files
