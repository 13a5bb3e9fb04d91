#include "files/tree_totals.h"

#include "common/ascii.h"
#include "files/file_sets.h"
#include "files/listing_writer.h"
#include "files/tree_walk.h"
#include "platform/file.h"
#include "strings/wildcard.h"

#include <algorithm>
#include <new>
#include <utility>

namespace brindle::files {

namespace {

using platform::DirEntry;
using platform::EntryDetail;

bool is_dir(const DirEntry &e) { return (e.attributes & platform::kAttrDirectory) != 0; }

bool mask_match(std::string_view name, std::string_view mask) { return strings::WildcardMatch(name, mask, false); }

// An empty mask or "*.*" takes every file; another mask is upper-cased.
std::string totals_mask(std::string_view mask) {
    if (mask.empty() || mask == "*.*")
        return "*";
    std::string m(mask);
    for (char &c : m)
        c = common::ascii_upper(c);
    return m;
}

} // namespace

std::optional<std::vector<std::string>> all_subdirectories(std::string_view root) {
    std::vector<std::string> table;
    try {
        table.reserve(kSubdirSlots);
    } catch (const std::bad_alloc &) {
        return std::nullopt;
    }
    if (root.empty())
        return table;
    // A directory is stored just before it is walked (depth first), and the
    // walk ends once the table is full: nothing after that could change the
    // result.
    walk_tree(
        root, EntryDetail::Kind, true, [](const std::string &, const DirEntry &) { return true; },
        [&](const std::string &dir, const DirEntry &e) {
            if (table.size() >= kSubdirSlots)
                return false;
            table.push_back(dir + e.name);
            return true;
        },
        [&] { return table.size() < kSubdirSlots; });
    std::sort(table.begin(), table.end(), common::less_no_case);
    return table;
}

TreeTotals tree_totals(std::string_view root, std::string_view mask_text, bool recurse, EntryDetail detail,
                       bool on_disk) {
    TreeTotals t;
    if (root.empty())
        return t;
    const std::string mask = totals_mask(mask_text);
    const uint64_t cluster = on_disk ? cluster_size(pattern_volume_root(root)) : 0;
    walk_tree(root, detail, recurse, [&](const std::string &, const DirEntry &e) {
        if (is_dir(e)) {
            ++t.dirs;
        } else if (mask_match(e.name, mask)) {
            ++t.files;
            const auto size = static_cast<uint32_t>(e.size);
            t.bytes += size;
            if (on_disk)
                t.on_disk += static_cast<double>(round_to_clusters(size, cluster));
        }
        return true;
    });
    return t;
}

int32_t search_tree(std::string_view root, std::string_view mask, std::string_view output, bool want_dirs,
                    int32_t attributes) {
    if (root.empty() || mask.empty())
        return -1;
    std::optional<ListingWriter> listing;
    if (!output.empty()) {
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

} // namespace brindle::files
