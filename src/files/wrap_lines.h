// Wrapping the long lines of a text file at a width, breaking after the last
// delimiter that fits (a word boundary) or, when none does, at the width.
#pragma once

#include <cstdint>
#include <string_view>

namespace brindle::files {

enum WrapCode : int32_t {
    kWrapBadArgument = -1, // width outside 1 .. kWrapMaxWidth, or a break text too long
    kWrapBadSource = -2,   // the name fails the validator
    kWrapBadTarget = -3,
    kWrapSameFile = -4,    // source and target are one file
    kWrapSourceNotOpened = -5,
    kWrapNoBuffer = -6,
    kWrapTargetNotCreated = -7,
    kWrapReadError = -8,
    kWrapWriteError = -9,
};

constexpr int32_t kWrapMaxWidth = 4096;
constexpr size_t kWrapMaxBreak = 255;

// Copies `source` to `target`, cutting every line (the bytes before a line
// feed, or before a carriage return and line feed; other carriage returns
// are text) into pieces of at most `width` bytes joined by `line_break`
// (empty: CR LF). The line endings of the source are kept as they are.
//
// `delimiters` (empty: space and tab) are the bytes a line may break at. A
// piece ends before the last space or tab delimiter that stands at most
// `width` bytes in (the run of them is dropped at the break), or after the
// last other delimiter that fits (a hyphen stays with its piece), whichever
// comes later; with none, the piece is cut at exactly `width` bytes. A line
// of at most `width` bytes is not changed, and no break is written where a
// line ends anyway.
//
// The number of breaks written, or a WrapCode; a target made by a failed
// call is deleted.
int32_t wrap_file_lines(std::string_view source, std::string_view target, int32_t width, std::string_view delimiters,
                        std::string_view line_break);

} // namespace brindle::files
