// Recursive walkers: the table of all subdirectories, totals of the files a
// mask selects in a tree, and searches that list what they find in a file.
// Masks are matched by the simple wildcard matcher without regard to case;
// names beginning with "." are skipped, and links are never walked into
// (see files/tree_walk.h). An empty root is refused instead of being read as
// the root of the current drive.
#include "files/file_sets.h"
#include "files/listing_writer.h"
#include "files/tree_walk.h"
#include "common/ascii.h"
#include "frame/frame.h"
#include "platform/file.h"
#include "strings/wildcard.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

using namespace brindle::frame;
using namespace brindle::files;
namespace platform = brindle::platform;
using platform::DirEntry;
using platform::EntryDetail;

namespace {

bool is_dir(const DirEntry &e) { return (e.attributes & platform::kAttrDirectory) != 0; }

using brindle::common::ascii_upper;
using brindle::common::less_no_case;

bool mask_match(std::string_view name, std::string_view mask) {
    return brindle::strings::WildcardMatch(name, mask, false);
}

// The table of cAllSubDirectories: 3,000 slots, never more.
constexpr size_t kSubdirSlots = 3000;
constexpr int32_t kNoTable = -32760;

// ---------------------------------------------------------------------------
// Recursive totals.

struct Totals {
    int32_t files = 0;
    int32_t dirs = 0;
    double bytes = 0;
    double on_disk = 0;
};

// An empty mask or "*.*" takes every file; another mask is upper-cased.
std::string totals_mask(std::string_view mask) {
    if (mask.empty() || mask == "*.*")
        return "*";
    std::string m(mask);
    for (char &c : m)
        c = ascii_upper(c);
    return m;
}

Totals walk_totals(BSTR Root, BSTR Mask, int32_t recurse, EntryDetail detail, bool on_disk) {
    Totals t;
    const std::string_view root = StrArg::by_val(Root).text();
    if (root.empty())
        return t;
    const std::string mask = totals_mask(StrArg::by_val(Mask).text());
    const uint64_t cluster = on_disk ? ClusterSize(pattern_volume_root(root)) : 0;
    walk_tree(root, detail, recurse != 0, [&](const std::string &, const DirEntry &e) {
        if (is_dir(e)) {
            ++t.dirs;
        } else if (mask_match(e.name, mask)) {
            ++t.files;
            const auto size = static_cast<uint32_t>(e.size);
            t.bytes += size;
            if (on_disk)
                t.on_disk += static_cast<double>(RoundToClusters(size, cluster));
        }
        return true;
    });
    return t;
}

// ---------------------------------------------------------------------------
// Searches into listing files.

constexpr int32_t kNoAttributeTest = -1;

int32_t search_tree(BSTR Root, BSTR Mask, BSTR OutputFile, bool want_dirs, int32_t attributes) {
    const std::string_view root = StrArg::by_val(Root).text();
    const std::string_view mask = StrArg::by_val(Mask).text();
    if (root.empty() || mask.empty())
        return -1;
    // No output file: count only. A failed write ends the search.
    std::optional<ListingWriter> listing;
    if (const std::string_view output = StrArg::by_val(OutputFile).text(); !output.empty()) {
        platform::File file = platform::File::open(output, platform::OpenMode::CreateReadWrite);
        if (!file.is_open())
            return -1;
        listing.emplace(std::move(file));
    }
    const auto wanted = static_cast<uint32_t>(static_cast<uint16_t>(attributes));
    const bool test_attributes = attributes != kNoAttributeTest;
    int32_t count = 0;
    walk_tree(root, test_attributes ? EntryDetail::Full : EntryDetail::Kind, true,
             [&](const std::string &dir, const DirEntry &e) {
                 if (is_dir(e) != want_dirs)
                     return true;
                 if (test_attributes && (e.attributes & wanted) != wanted)
                     return true;
                 if (!mask_match(e.name, mask))
                     return true;
                 if (listing && !listing->add(dir, e.name))
                     return false;
                 ++count;
                 return true;
             });
    if (listing)
        listing->finish();
    return count;
}

} // namespace

// All directories below the root (at most 3,000), sorted without regard to
// case, each followed by a carriage return; Count gets their number.
BRINDLE_EXPORT(BSTR) cAllSubDirectories(BSTR Root, int32_t *Count) {
    int32_t dummy = 0;
    int32_t &count = Count != nullptr ? *Count : dummy;
    return guarded_string([&] {
        std::vector<std::string> table;
        try {
            table.reserve(kSubdirSlots);
        } catch (const std::bad_alloc &) {
            count = kNoTable;
            return empty_string();
        }
        count = 0;
        const std::string_view root = StrArg::by_val(Root).text();
        if (root.empty())
            return empty_string();
        // A directory is stored just before it is walked (depth first), and
        // the walk ends once the table is full: nothing after that could
        // change the result.
        walk_tree(
            root, EntryDetail::Kind, true, [](const std::string &, const DirEntry &) { return true; },
            [&](const std::string &dir, const DirEntry &e) {
                if (table.size() >= kSubdirSlots)
                    return false;
                table.push_back(dir + e.name);
                return true;
            },
            [&] { return table.size() < kSubdirSlots; });
        if (table.empty())
            return empty_string();
        std::sort(table.begin(), table.end(), less_no_case);
        size_t length = 0;
        for (const std::string &path : table)
            length += path.size() + 1;
        StringResult out(length);
        char *p = out.data();
        for (const std::string &path : table) {
            p = std::copy(path.begin(), path.end(), p);
            *p++ = '\r';
        }
        count = static_cast<int32_t>(table.size());
        return out.take();
    });
}

// Files (Which = 0) or directories (any other Which) of the walk.
BRINDLE_EXPORT(int32_t) cRcsCountFileDir(int16_t Which, BSTR Root, BSTR Mask, int32_t Recurse) {
    return guarded(int32_t{0}, [&] {
        const Totals t = walk_totals(Root, Mask, Recurse, EntryDetail::Kind, false);
        return Which == 0 ? t.files : t.dirs;
    });
}

BRINDLE_EXPORT(double) cRcsFilesSize(BSTR Root, BSTR Mask, int32_t Recurse) {
    return guarded(0.0, [&] { return walk_totals(Root, Mask, Recurse, EntryDetail::Size, false).bytes; });
}

BRINDLE_EXPORT(double) cRcsFilesSizeOnDisk(BSTR Root, BSTR Mask, int32_t Recurse) {
    return guarded(0.0, [&] { return walk_totals(Root, Mask, Recurse, EntryDetail::Size, true).on_disk; });
}

BRINDLE_EXPORT(int16_t) cRcsFilesSlack(BSTR Root, BSTR Mask, int32_t Recurse, double *Size, double *SizeOnDisk) {
    return guarded(int16_t{-1}, [&] {
        const Totals t = walk_totals(Root, Mask, Recurse, EntryDetail::Size, true);
        if (Size)
            *Size = t.bytes;
        if (SizeOnDisk)
            *SizeOnDisk = t.on_disk;
        return SlackPercent(t.bytes, t.on_disk);
    });
}

// Every file of the tree whose name matches the mask, as root\...\name, one
// per line ending CR LF, into the output file (none: only counted).
BRINDLE_EXPORT(int32_t) cSearchFile(BSTR Root, BSTR Mask, BSTR OutputFile) {
    return guarded(int32_t{-1}, [&] { return search_tree(Root, Mask, OutputFile, false, kNoAttributeTest); });
}

// As cSearchFile, for files whose attribute word holds all the given bits
// (-1: no test).
BRINDLE_EXPORT(int32_t) cSearchFileAttrib(BSTR Root, BSTR Mask, int16_t Attributes, BSTR OutputFile) {
    return guarded(int32_t{-1}, [&] { return search_tree(Root, Mask, OutputFile, false, Attributes); });
}

// Directories of the tree whose name matches the mask, as root\...\name.
BRINDLE_EXPORT(int32_t) cSearchDir(BSTR Root, BSTR Mask, BSTR OutputFile) {
    return guarded(int32_t{-1}, [&] { return search_tree(Root, Mask, OutputFile, true, kNoAttributeTest); });
}
