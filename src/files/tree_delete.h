// Deletes of files and trees: a set of files by a system pattern, the files
// of one directory by a mask, and whole trees.
#pragma once

#include <cstdint>
#include <string_view>

namespace brindle::files {

// Deletes every file the system pattern matches ("C:\tmp\*.bak"); directories
// are left. With `clear_first` the bits read-only, hidden, system, archive,
// normal and temporary (423) are cleared first, and a file where that fails
// is skipped. The number of files deleted.
int32_t delete_matching(std::string_view pattern, bool clear_first);

enum class TreeMode {
    FilesOnly, // the files of the directory that match the mask; every success and failure counted
    Tree,      // the files (mask "*.*") and every subdirectory, depth first
    ForcedTree // as Tree, clearing read-only, hidden, system and archive (39) first
};

// Deletes in `dir` (names beginning with "." are left alone, as are files
// the mask does not match, by the wildcard matcher ignoring case). The tree
// forms count only the files that cannot be deleted as failures, and every
// directory removed as a success; a subdirectory that cannot be removed is
// a failure. With `remove_top` the directory itself is removed at the end.
// The result is minus the number of failures when there was one, else the
// number of successes.
//
// Symbolic links and junctions are removed as links and never entered, and
// a `dir` that is itself one is not entered either. An empty name and a
// root ("\", "C:\", "\\server\share", or whatever resolves to one) are
// refused with -1: a tree delete stays inside the directory it was given.
int32_t delete_tree(std::string_view dir, std::string_view mask, TreeMode mode, bool remove_top);

// True when a directory name names the root of a volume (or is empty).
bool is_root_or_empty(std::string_view dir);

} // namespace brindle::files
