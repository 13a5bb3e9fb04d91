// Directory enumeration: step-by-step listings, counts and sizes of the
// entries a system pattern matches, listings into a string array or a text
// file, and volume space. Patterns and names arrive by value and are read up
// to their first zero byte.
#include "files/file_sets.h"
#include "files/pattern_listing.h"
#include "files/path_names.h"
#include "frame/frame.h"
#include "platform/directory.h"
#include "platform/file.h"
#include "platform/file_info.h"

#include <utility>
#include <vector>

using namespace brindle::frame;
using namespace brindle::files;
namespace platform = brindle::platform;
using platform::DirectorySearch;
using platform::EntryDetail;

namespace {

// The two enumerations' searches: process-wide, each living from one first
// call to the next first call of the same function. VB callers are
// single-threaded; no lock is taken.
DirectorySearch &files_search() {
    static DirectorySearch search;
    return search;
}
DirectorySearch &subdir_search() {
    static DirectorySearch search;
    return search;
}

// The next entry of the kept search whose directory bit is `want_dirs`;
// empty at the end. A first call starts the search anew.
BSTR step(DirectorySearch &search, BSTR pattern, int16_t first, bool want_dirs) {
    const std::optional<std::string> name =
        next_listed_name(search, StrArg::by_val(pattern).text(), flag16(first), want_dirs);
    return name ? new_string(*name) : empty_string();
}

} // namespace

BRINDLE_EXPORT(BSTR) cFilesInDirectory(BSTR Pattern, int16_t First) {
    return guarded_string([&] { return step(files_search(), Pattern, First, false); });
}

// "." and ".." are directories and come back like any other.
BRINDLE_EXPORT(BSTR) cSubDirectory(BSTR Pattern, int16_t First) {
    return guarded_string([&] { return step(subdir_search(), Pattern, First, true); });
}

// Every entry the pattern matches, directories and "." and ".." included.
BRINDLE_EXPORT(int16_t) cCountFiles(BSTR Pattern) {
    return guarded(int16_t{0}, [&] { return static_cast<int16_t>(count_entries(StrArg::by_val(Pattern).text())); });
}

// Matching entries that the system reports as directories when asked for
// the pattern's directory part plus the entry's name.
BRINDLE_EXPORT(int16_t) cCountDirectories(BSTR Pattern) {
    return guarded(int16_t{0}, [&] { return static_cast<int16_t>(count_directories(StrArg::by_val(Pattern).text())); });
}

BRINDLE_EXPORT(double) cFilesSize(BSTR Pattern) {
    return guarded(0.0, [&] { return static_cast<double>(pattern_sizes(StrArg::by_val(Pattern).text(), false).bytes); });
}

BRINDLE_EXPORT(double) cFilesSizeOnDisk(BSTR Pattern) {
    return guarded(0.0, [&] { return pattern_sizes(StrArg::by_val(Pattern).text(), true).on_disk; });
}

// Both totals go back through the arguments; the result is the slack in per
// cent, -1 when nothing occupies the disk.
BRINDLE_EXPORT(int16_t) cFilesSlack(BSTR Pattern, double *Size, double *SizeOnDisk) {
    return guarded(int16_t{-1}, [&] {
        const PatternSizes s = pattern_sizes(StrArg::by_val(Pattern).text(), true);
        if (Size)
            *Size = s.bytes;
        if (SizeOnDisk)
            *SizeOnDisk = s.on_disk;
        return slack_percent(s.bytes, s.on_disk);
    });
}

// Names of accepted files, from the array's lower bound on; the remaining
// elements are emptied. When the array fills up, the result is one less
// than the names it holds - clients count on that rule. -1 when the pattern
// matches nothing (or the array is not a string array). A 2-dimensional
// array takes the names along dimension 1 at the lower bound of the others
// (its first column), as every element-by-element routine reads it. A name
// the system refuses to store ends the listing, and only the names stored
// are counted.
BRINDLE_EXPORT(int16_t) cFilesInDirToArray(BSTR Pattern, int16_t Selector, SAFEARRAY **Names) {
    return guarded(int16_t{-1}, [&] {
        std::string_view pattern = StrArg::by_val(Pattern).text();
        if (pattern.empty())
            pattern = "*.*";
        ArrayElements names(Names);
        if (!names.holds_strings())
            return int16_t{-1};
        int64_t index = names.lower();
        int32_t stored = 0;
        int16_t full = -2; // set when the listing ends early
        const bool matched = for_each_accepted_file(pattern, Selector, [&](std::string_view name) {
            if (index > names.upper()) {
                full = 0; // an empty array: nowhere to store at all
                return false;
            }
            if (!names.put_string(static_cast<int32_t>(index), name)) {
                full = static_cast<int16_t>(stored);
                return false;
            }
            ++stored;
            if (index == names.upper()) {
                full = static_cast<int16_t>(stored - 1);
                return false;
            }
            ++index;
            return true;
        });
        if (!matched)
            return int16_t{-1};
        if (full != -2)
            return full;
        for (; index <= names.upper(); ++index)
            if (!names.put_string(static_cast<int32_t>(index), {}))
                break;
        return static_cast<int16_t>(stored);
    });
}

// Accepted names, one per line ending CR LF, into a new output file.
BRINDLE_EXPORT(int16_t) cFilesInDirOnDisk(BSTR OutputFile, BSTR Pattern, int16_t Selector) {
    return guarded(int16_t{-1}, [&] {
        return list_files_to_file(StrArg::by_val(OutputFile).text(), StrArg::by_val(Pattern).text(), Selector);
    });
}

// ---------------------------------------------------------------------------
// Volume space. The root is "" (current drive), a letter, "X:" or a path.

namespace {

bool volume(BSTR Root, platform::VolumeSpace *space) {
    return platform::volume_space(volume_root(StrArg::by_val(Root).text()), space);
}

double cluster_bytes(const platform::VolumeSpace &v) {
    return static_cast<double>(v.sectors_per_cluster) * static_cast<double>(v.bytes_per_sector);
}

CY as_currency(int64_t value) {
    CY c;
    c.int64 = value;
    return c;
}

} // namespace

BRINDLE_EXPORT(double) cGetDiskSpace(BSTR Root) {
    return guarded(0.0, [&] {
        platform::VolumeSpace v;
        return volume(Root, &v) ? static_cast<double>(v.total_clusters) * cluster_bytes(v) : 0.0;
    });
}

BRINDLE_EXPORT(double) cGetDiskUsed(BSTR Root) {
    return guarded(0.0, [&] {
        platform::VolumeSpace v;
        return volume(Root, &v) ? static_cast<double>(v.total_clusters - v.free_clusters) * cluster_bytes(v) : 0.0;
    });
}

BRINDLE_EXPORT(double) cGetDiskFree(BSTR Root) {
    return guarded(0.0, [&] {
        platform::VolumeSpace v;
        return volume(Root, &v) ? static_cast<double>(v.free_clusters) * cluster_bytes(v) : 0.0;
    });
}

BRINDLE_EXPORT(double) cGetDiskClusterSize(BSTR Root) {
    return guarded(0.0, [&] {
        platform::VolumeSpace v;
        return volume(Root, &v) ? cluster_bytes(v) : 0.0;
    });
}

BRINDLE_EXPORT(CY) cGetDiskSpaceEx(BSTR Root) {
    return guarded(as_currency(-1), [&] {
        platform::VolumeSpace v;
        return as_currency(volume(Root, &v) ? static_cast<int64_t>(v.total_bytes) : -1);
    });
}

// Total less free, the halves subtracted without a borrow between them.
BRINDLE_EXPORT(CY) cGetDiskUsedEx(BSTR Root) {
    return guarded(as_currency(-1), [&] {
        platform::VolumeSpace v;
        return as_currency(volume(Root, &v) ? static_cast<int64_t>(subtract_without_borrow(v.total_bytes, v.free_bytes))
                                            : -1);
    });
}

BRINDLE_EXPORT(CY) cGetDiskFreeEx(BSTR Root) {
    return guarded(as_currency(-1), [&] {
        platform::VolumeSpace v;
        return as_currency(volume(Root, &v) ? static_cast<int64_t>(v.free_bytes) : -1);
    });
}
