// Directory enumeration as the system's find-first/find-next calls give it,
// with Windows patterns on every platform.
//
// A pattern is a Windows path whose last component may hold wildcards:
// "*" any run of characters, "?" one character (or none before a full stop
// or at the end of the name), "*.*" every name, a trailing "." names without
// extension, and ".*" at the end also names without extension. Matching
// ignores case. A "*" pattern lists the entries "." and ".." as directories.
//
// On POSIX the entries of one directory come sorted without regard to case
// (as an NTFS directory lists them), "." and ".." first; on Windows in the
// system's order.
#pragma once

#include "platform/file_info.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace brindle::platform {

struct DirEntry {
    std::string name;        // without directory
    uint32_t attributes = 0; // FileAttribute bits
    uint64_t size = 0;       // 0 for a directory
    FileTimes times;
};

// How much of each entry the caller needs. On Windows every entry comes
// whole for free; on POSIX each level costs more system calls per entry, so
// walkers that only count or add sizes ask for less.
enum class EntryDetail {
    Kind, // name, the directory and link bits, hidden by name; size 0
    Size, // also size, read-only and times
    Full, // also the DOS bits kept in the extended attribute
};

class DirectorySearch {
  public:
    DirectorySearch() noexcept;
    ~DirectorySearch();
    DirectorySearch(const DirectorySearch &) = delete;
    DirectorySearch &operator=(const DirectorySearch &) = delete;

    // Starts a new search (closing any earlier one); true with entry() set
    // to the first match, false when nothing matches or the directory is
    // missing.
    bool first(std::string_view pattern, EntryDetail detail = EntryDetail::Full);
    // The next match; false at the end (the search stays open until close()
    // or the next first()).
    bool next();
    void close() noexcept;
    bool is_open() const noexcept;

    const DirEntry &entry() const noexcept { return entry_; }

  private:
    struct State;
    std::unique_ptr<State> state_;
    DirEntry entry_;
};

// Whether a name matches a system pattern (the last component of a search
// pattern), with the rules above. Portable; the POSIX search uses it.
bool system_pattern_match(std::string_view name, std::string_view pattern);

// True when the pattern holds a wildcard ("*" or "?").
bool has_wildcard(std::string_view pattern) noexcept;

} // namespace brindle::platform
