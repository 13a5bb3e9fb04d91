// The recursive walkers' engines: the table of all subdirectories of a tree,
// totals of the files a mask selects, and searches that list what they find
// in a file. Masks are matched by the simple wildcard matcher without regard
// to case; names beginning with "." are skipped and links never walked into
// (files/tree_walk.h). An empty root finds nothing instead of being read as
// the root of the current drive.
#pragma once

#include "platform/directory.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brindle::files {

// The table of all_subdirectories: 3,000 slots, never more.
inline constexpr size_t kSubdirSlots = 3000;

// The directories below `root`, depth first, at most kSubdirSlots of them,
// sorted without regard to case; nothing when the table cannot be had.
std::optional<std::vector<std::string>> all_subdirectories(std::string_view root);

struct TreeTotals {
    int32_t files = 0;
    int32_t dirs = 0;
    double bytes = 0;   // sizes taken as 32-bit numbers, as the size fields always were
    double on_disk = 0; // each size rounded to the volume's clusters (with `on_disk`)
};

// The directories under `root` and the files whose names match `mask` (empty
// or "*.*": every file), in the root alone or, with `recurse`, in the whole
// tree.
TreeTotals tree_totals(std::string_view root, std::string_view mask, bool recurse, platform::EntryDetail detail,
                       bool on_disk);

// No attribute test in search_tree.
inline constexpr int32_t kNoAttributeTest = -1;

// Files (or, with `want_dirs`, directories) of the whole tree whose names
// match `mask` and whose attribute word holds all bits of `attributes` (low
// 16 bits; kNoAttributeTest for none), written as root\...\name, one per
// line ending CR LF, into `output` (empty: counted only). Their count; -1
// for an empty root or mask or an output that cannot be created. A failed
// write ends the search.
int32_t search_tree(std::string_view root, std::string_view mask, std::string_view output, bool want_dirs,
                    int32_t attributes);

} // namespace brindle::files
