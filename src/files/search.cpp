// Directory enumeration: step-by-step listings, counts and sizes of the
// entries a system pattern matches, listings into a string array or a text
// file, and volume space. Patterns and names arrive by value and are read up
// to their first zero byte.
#include "files/file_sets.h"
#include "files/listing_writer.h"
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

bool is_dir(const platform::DirEntry &e) { return (e.attributes & platform::kAttrDirectory) != 0; }

// The next entry of the kept search whose directory bit is `want_dirs`;
// empty at the end. A first call starts the search anew.
BSTR step(DirectorySearch &search, BSTR pattern, int16_t first, bool want_dirs) {
    bool ok;
    if (flag16(first)) {
        search.close();
        ok = search.first(StrArg::by_val(pattern).text(), EntryDetail::Kind);
    } else {
        ok = search.is_open() && search.next();
    }
    for (; ok; ok = search.next())
        if (is_dir(search.entry()) == want_dirs)
            return new_string(search.entry().name);
    return empty_string();
}

// Byte total (32-bit, wrapping as the size fields always did) and the total
// rounded to clusters of every entry a pattern matches.
struct Sizes {
    uint32_t bytes = 0;
    double on_disk = 0;
};
Sizes pattern_sizes(std::string_view pattern, bool on_disk) {
    Sizes s;
    const uint64_t cluster = on_disk ? ClusterSize(pattern_volume_root(pattern)) : 0;
    DirectorySearch search;
    for (bool ok = search.first(pattern, EntryDetail::Size); ok; ok = search.next()) {
        const auto size = static_cast<uint32_t>(search.entry().size);
        s.bytes += size;
        if (on_disk)
            s.on_disk += static_cast<double>(RoundToClusters(size, cluster));
    }
    return s;
}

EntryDetail detail_for(int16_t selector) { return selector == 255 ? EntryDetail::Kind : EntryDetail::Full; }

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
    return guarded(int16_t{0}, [&] {
        uint16_t count = 0;
        DirectorySearch search;
        for (bool ok = search.first(StrArg::by_val(Pattern).text(), EntryDetail::Kind); ok; ok = search.next())
            ++count;
        return static_cast<int16_t>(count);
    });
}

// Matching entries that the system reports as directories when asked for
// the pattern's directory part plus the entry's name.
BRINDLE_EXPORT(int16_t) cCountDirectories(BSTR Pattern) {
    return guarded(int16_t{0}, [&] {
        const std::string_view pattern = StrArg::by_val(Pattern).text();
        const size_t sep = pattern.rfind('\\');
        const std::string dir(sep == std::string_view::npos ? std::string_view() : pattern.substr(0, sep + 1));
        uint16_t count = 0;
        DirectorySearch search;
        for (bool ok = search.first(pattern, EntryDetail::Kind); ok; ok = search.next()) {
            uint32_t attributes = 0;
            if (platform::get_attributes(dir + search.entry().name, &attributes) == 0 &&
                (attributes & platform::kAttrDirectory))
                ++count;
        }
        return static_cast<int16_t>(count);
    });
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
        const Sizes s = pattern_sizes(StrArg::by_val(Pattern).text(), true);
        if (Size)
            *Size = s.bytes;
        if (SizeOnDisk)
            *SizeOnDisk = s.on_disk;
        return SlackPercent(s.bytes, s.on_disk);
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
        DirectorySearch search;
        if (!search.first(pattern, detail_for(Selector)))
            return int16_t{-1};
        int64_t index = names.lower();
        int32_t stored = 0;
        for (bool ok = true; ok; ok = search.next()) {
            const platform::DirEntry &e = search.entry();
            if (is_dir(e) || !selector_accepts(Selector, e.attributes))
                continue;
            if (index > names.upper())
                return int16_t{0}; // an empty array: nowhere to store at all
            if (!names.put_string(static_cast<int32_t>(index), e.name))
                return static_cast<int16_t>(stored);
            ++stored;
            if (index == names.upper())
                return static_cast<int16_t>(stored - 1);
            ++index;
        }
        for (; index <= names.upper(); ++index)
            if (!names.put_string(static_cast<int32_t>(index), {}))
                break;
        return static_cast<int16_t>(stored);
    });
}

// Accepted names, one per line ending CR LF, into a new output file.
BRINDLE_EXPORT(int16_t) cFilesInDirOnDisk(BSTR OutputFile, BSTR Pattern, int16_t Selector) {
    return guarded(int16_t{-1}, [&]() -> int16_t {
        const std::string_view output = StrArg::by_val(OutputFile).text();
        if (output.empty())
            return -1;
        if (FilenameValidity(output) != kNameValid)
            return -2;
        DirectorySearch search;
        if (!search.first(StrArg::by_val(Pattern).text(), detail_for(Selector)))
            return -1;
        if (platform::file_exists(output)) {
            platform::set_attributes(output, platform::kAttrNormal);
            if (!platform::delete_if_exists(output))
                return -3;
        }
        platform::File out = platform::File::open(output, platform::OpenMode::Create);
        if (!out.is_open())
            return -32750;
        ListingWriter listing(std::move(out));
        uint16_t count = 0;
        for (bool ok = true; ok; ok = search.next()) {
            const platform::DirEntry &e = search.entry();
            if (is_dir(e) || !selector_accepts(Selector, e.attributes))
                continue;
            ++count;
            if (!listing.add({}, e.name))
                return -32740;
        }
        if (!listing.finish())
            return -32740;
        return static_cast<int16_t>(count);
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
        return as_currency(volume(Root, &v) ? static_cast<int64_t>(SubtractWithoutBorrow(v.total_bytes, v.free_bytes))
                                            : -1);
    });
}

BRINDLE_EXPORT(CY) cGetDiskFreeEx(BSTR Root) {
    return guarded(as_currency(-1), [&] {
        platform::VolumeSpace v;
        return as_currency(volume(Root, &v) ? static_cast<int64_t>(v.free_bytes) : -1);
    });
}
