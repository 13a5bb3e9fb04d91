// Files joined end to end into a new file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace brindle::files {

inline constexpr int32_t kMergeSecondNotOpened = -32752;

// `first` then `second` into `target`: bytes written, or kTextNoBuffer,
// kTextSourceNotOpened (the first), kMergeSecondNotOpened,
// kTextTargetNotCreated (also when it is one of the sources),
// kTextReadError, kTextWriteError. A partial target is deleted.
int32_t merge_two(std::string_view first, std::string_view second, std::string_view target);

enum MergeListCode : int32_t {
    kMergeNoNames = -2,        // no names, or an empty one
    kMergeSourceNotOpened = -3,
    kMergeTargetNotCreated = -4, // also when it is one of the sources
    kMergeFailed = -5,         // a read or write error, or no buffer
};

// Every file of `sources` in order into `target`: the number of files
// joined, or a MergeListCode (nothing is created before every source has
// been opened once; a partial target is deleted).
int32_t merge_list(const std::vector<std::string> &sources, std::string_view target);

} // namespace brindle::files
