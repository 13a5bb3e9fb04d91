#include "files/pattern_listing.h"

#include "files/file_sets.h"
#include "files/listing_writer.h"
#include "files/path_names.h"
#include "platform/file.h"
#include "platform/file_info.h"

#include <utility>

namespace brindle::files {

namespace {

using platform::DirectorySearch;
using platform::EntryDetail;

bool is_dir(const platform::DirEntry &e) { return (e.attributes & platform::kAttrDirectory) != 0; }

EntryDetail detail_for(int16_t selector) { return selector == 255 ? EntryDetail::Kind : EntryDetail::Full; }

} // namespace

std::optional<std::string> next_listed_name(DirectorySearch &search, std::string_view pattern, bool first,
                                            bool want_dirs) {
    bool ok;
    if (first) {
        search.close();
        ok = search.first(pattern, EntryDetail::Kind);
    } else {
        ok = search.is_open() && search.next();
    }
    for (; ok; ok = search.next())
        if (is_dir(search.entry()) == want_dirs)
            return search.entry().name;
    return std::nullopt;
}

uint16_t count_entries(std::string_view pattern) {
    uint16_t count = 0;
    DirectorySearch search;
    for (bool ok = search.first(pattern, EntryDetail::Kind); ok; ok = search.next())
        ++count;
    return count;
}

uint16_t count_directories(std::string_view pattern) {
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
    return count;
}

PatternSizes pattern_sizes(std::string_view pattern, bool on_disk) {
    PatternSizes s;
    const uint64_t cluster = on_disk ? cluster_size(pattern_volume_root(pattern)) : 0;
    DirectorySearch search;
    for (bool ok = search.first(pattern, EntryDetail::Size); ok; ok = search.next()) {
        const auto size = static_cast<uint32_t>(search.entry().size);
        s.bytes += size;
        if (on_disk)
            s.on_disk += static_cast<double>(round_to_clusters(size, cluster));
    }
    return s;
}

bool for_each_accepted_file(std::string_view pattern, int16_t selector,
                            const std::function<bool(std::string_view name)> &take) {
    DirectorySearch search;
    if (!search.first(pattern, detail_for(selector)))
        return false;
    for (bool ok = true; ok; ok = search.next()) {
        const platform::DirEntry &e = search.entry();
        if (!is_dir(e) && selector_accepts(selector, e.attributes) && !take(e.name))
            break;
    }
    return true;
}

int16_t list_files_to_file(std::string_view output, std::string_view pattern, int16_t selector) {
    if (output.empty())
        return -1;
    if (filename_validity(output) != kNameValid)
        return -2;
    DirectorySearch search;
    if (!search.first(pattern, detail_for(selector)))
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
        if (is_dir(e) || !selector_accepts(selector, e.attributes))
            continue;
        ++count;
        if (!listing.add({}, e.name))
            return -32740;
    }
    if (!listing.finish())
        return -32740;
    return static_cast<int16_t>(count);
}

} // namespace brindle::files
