// The entries a system pattern ("C:\Data\*.txt") matches: step-by-step
// listings, counts, byte totals and listings into a text file. The pattern
// is handed to the system's directory search as it is.
#pragma once

#include "platform/directory.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace brindle::files {

// The next name of `search` whose directory bit is `want_dirs`; nothing at
// the end. `first` closes the search and starts it anew on `pattern`.
std::optional<std::string> next_listed_name(platform::DirectorySearch &search, std::string_view pattern, bool first,
                                            bool want_dirs);

// Every entry the pattern matches, directories and "." and ".." included
// (16 bits, wrapping).
uint16_t count_entries(std::string_view pattern);

// The matching entries that the system reports as directories when asked
// for the pattern's directory part plus the entry's name.
uint16_t count_directories(std::string_view pattern);

// The byte total (32-bit, wrapping as the size fields always did) and, with
// `on_disk`, the total rounded to the volume's clusters.
struct PatternSizes {
    uint32_t bytes = 0;
    double on_disk = 0;
};
PatternSizes pattern_sizes(std::string_view pattern, bool on_disk);

// Calls `take` with the name of every file (no directory) the selector
// accepts (file_sets.h), until it returns false. False when the pattern
// matches nothing at all.
bool for_each_accepted_file(std::string_view pattern, int16_t selector,
                            const std::function<bool(std::string_view name)> &take);

// The accepted names, one per line ending CR LF, into a new file `output`
// (an old one is deleted, read-only or not): their count, -1 for an empty
// output name or a pattern that matches nothing, -2 for an output name that
// fails the syntax check, -3 when the old file stays, -32750 when the output
// cannot be created, -32740 when writing fails.
int16_t list_files_to_file(std::string_view output, std::string_view pattern, int16_t selector);

} // namespace brindle::files
