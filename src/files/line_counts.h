// Line, word and byte counts of whole files.
#pragma once

#include <cstdint>
#include <string_view>

namespace brindle::files {

enum LineCountCode : int32_t { kCountNotOpened = -1, kCountReadError = -2, kCountNoBuffer = -3 };

// Bytes of value 13 (carriage returns) in the file, read in binary: a file
// whose lines end in a line feed alone has none. A LineCountCode on failure;
// counts above 2^31 - 1 stay there.
int32_t count_carriage_returns(std::string_view path);

// Pieces the runtime's line reader gives with a 32,768-byte buffer in text
// mode: a line longer than 32,767 bytes counts more than once, and a last
// line without a line feed counts. A LineCountCode on failure.
int32_t count_line_pieces(std::string_view path);

struct TextStatistics {
    int64_t lines = 0; // line feeds
    int64_t words = 0; // starts of runs of non-space bytes; a line feed does not end a word
    int64_t bytes = 0;
};

// Statistics of a file read in binary; kTextNoBuffer, kTextSourceNotOpened or
// kTextReadError (TextFileCode), else 0 with *out filled.
int32_t text_statistics(std::string_view path, TextStatistics *out);

} // namespace brindle::files
