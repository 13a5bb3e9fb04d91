// Recursive walkers: the table of all subdirectories, totals of the files a
// mask selects in a tree, and searches that list what they find in a file.
// Masks are matched by the simple wildcard matcher without regard to case;
// names beginning with "." are skipped, and links are never walked into
// (see files/tree_walk.h). An empty root is refused instead of being read as
// the root of the current drive.
#include "files/file_sets.h"
#include "files/tree_totals.h"
#include "frame/frame.h"

#include <algorithm>

using namespace brindle::frame;
using namespace brindle::files;
using brindle::platform::EntryDetail;

namespace {

// cAllSubDirectories without memory for its table.
constexpr int32_t kNoTable = -32760;

TreeTotals walk_totals(BSTR Root, BSTR Mask, int32_t recurse, EntryDetail detail, bool on_disk) {
    return tree_totals(StrArg::by_val(Root).text(), StrArg::by_val(Mask).text(), recurse != 0, detail, on_disk);
}

int32_t search(BSTR Root, BSTR Mask, BSTR OutputFile, bool want_dirs, int32_t attributes) {
    return search_tree(StrArg::by_val(Root).text(), StrArg::by_val(Mask).text(), StrArg::by_val(OutputFile).text(),
                       want_dirs, attributes);
}

} // namespace

// All directories below the root (at most 3,000), sorted without regard to
// case, each followed by a carriage return; Count gets their number.
BRINDLE_EXPORT(BSTR) cAllSubDirectories(BSTR Root, int32_t *Count) {
    int32_t dummy = 0;
    int32_t &count = Count != nullptr ? *Count : dummy;
    return guarded_string([&] {
        const std::optional<std::vector<std::string>> table = all_subdirectories(StrArg::by_val(Root).text());
        if (!table) {
            count = kNoTable;
            return empty_string();
        }
        count = 0;
        if (table->empty())
            return empty_string();
        size_t length = 0;
        for (const std::string &path : *table)
            length += path.size() + 1;
        StringResult out(length);
        char *p = out.data();
        for (const std::string &path : *table) {
            p = std::copy(path.begin(), path.end(), p);
            *p++ = '\r';
        }
        count = static_cast<int32_t>(table->size());
        return out.take();
    });
}

// Files (Which = 0) or directories (any other Which) of the walk.
BRINDLE_EXPORT(int32_t) cRcsCountFileDir(int16_t Which, BSTR Root, BSTR Mask, int32_t Recurse) {
    return guarded(int32_t{0}, [&] {
        const TreeTotals t = walk_totals(Root, Mask, Recurse, EntryDetail::Kind, false);
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
        const TreeTotals t = walk_totals(Root, Mask, Recurse, EntryDetail::Size, true);
        if (Size)
            *Size = t.bytes;
        if (SizeOnDisk)
            *SizeOnDisk = t.on_disk;
        return slack_percent(t.bytes, t.on_disk);
    });
}

// Every file of the tree whose name matches the mask, as root\...\name, one
// per line ending CR LF, into the output file (none: only counted).
BRINDLE_EXPORT(int32_t) cSearchFile(BSTR Root, BSTR Mask, BSTR OutputFile) {
    return guarded(int32_t{-1}, [&] { return search(Root, Mask, OutputFile, false, kNoAttributeTest); });
}

// As cSearchFile, for files whose attribute word holds all the given bits
// (-1: no test).
BRINDLE_EXPORT(int32_t) cSearchFileAttrib(BSTR Root, BSTR Mask, int16_t Attributes, BSTR OutputFile) {
    return guarded(int32_t{-1}, [&] { return search(Root, Mask, OutputFile, false, Attributes); });
}

// Directories of the tree whose name matches the mask, as root\...\name.
BRINDLE_EXPORT(int32_t) cSearchDir(BSTR Root, BSTR Mask, BSTR OutputFile) {
    return guarded(int32_t{-1}, [&] { return search(Root, Mask, OutputFile, true, kNoAttributeTest); });
}
