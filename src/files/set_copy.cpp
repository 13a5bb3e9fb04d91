#include "files/set_copy.h"

#include "files/path_names.h"
#include "files/tree_walk.h"
#include "platform/directory.h"
#include "platform/file.h"
#include "platform/file_info.h"
#include "platform/file_ops.h"
#include "strings/wildcard.h"

#include <vector>

namespace brindle::files {

namespace {

struct Counts {
    int32_t done = 0;
    int32_t failed = 0;
};

constexpr int kMaxDepth = 4096;

struct SetCopy {
    std::string mask;
    int32_t options;
    bool move;
    const Progress &progress;
    std::string top_target; // never walked as a source

    void level(const std::string &source_dir, const std::string &target_dir, Counts &c, int depth) const {
        const std::string from_prefix = walk_prefix(source_dir), to_prefix = walk_prefix(target_dir);
        std::vector<platform::DirEntry> entries;
        {
            platform::DirectorySearch search;
            for (bool ok = search.first(from_prefix + "*.*", platform::EntryDetail::Kind); ok; ok = search.next())
                if (!search.entry().name.empty() && search.entry().name[0] != '.')
                    entries.push_back(search.entry());
        }
        for (const platform::DirEntry &e : entries) {
            if ((e.attributes & platform::kAttrDirectory) || !strings::WildcardMatch(e.name, mask, false))
                continue;
            const std::string from = from_prefix + e.name, to = to_prefix + e.name;
            if (progress)
                progress(progress_text(from, to, options));
            uint32_t attributes = 0;
            const bool exists = platform::get_attributes(to, &attributes) == platform::kNoError;
            if (exists && !(options & kSetOverwrite)) {
                ++c.failed;
                continue;
            }
            if (exists && !(options & kSetKeepAttributes) && !(attributes & platform::kAttrDirectory) &&
                !platform::same_file(from, to))
                platform::set_attributes(to, 0);
            const uint32_t e2 = move ? platform::system_move_file(from, to, true, true)
                                     : platform::system_copy_file(from, to, false);
            if (e2 == platform::kSysOk)
                ++c.done;
            else
                ++c.failed;
        }
        if (!(options & kSetSubdirs))
            return;
        for (const platform::DirEntry &e : entries) {
            if (!(e.attributes & platform::kAttrDirectory) || (e.attributes & platform::kAttrReparsePoint))
                continue;
            const std::string from = from_prefix + e.name, to = to_prefix + e.name;
            // The target inside the source: its copies are not copied again.
            if (platform::same_file(from, top_target))
                continue;
            if (depth >= kMaxDepth) {
                ++c.failed;
                continue;
            }
            if (!platform::directory_exists(to) && platform::make_directory(to) != platform::kNoError) {
                ++c.failed;
                continue;
            }
            level(from, to, c, depth + 1);
        }
    }
};

} // namespace

std::string progress_text(std::string_view source, std::string_view target, int32_t options) {
    std::string text(source);
    text += (options & kSetProgressLayout) ? "\r\n >>> " : " >>> ";
    text += target;
    return text;
}

int32_t copy_file_set(std::string_view source_dir, std::string_view target_dir, std::string_view mask,
                      int32_t options, bool move, const Progress &progress) {
    if (source_dir.empty() || target_dir.empty())
        return 0;
    const std::string m(mask.empty() || mask == "*.*" ? std::string_view("*") : mask);
    const std::string source = normalise_path(source_dir), target = normalise_path(target_dir);
    const SetCopy walk{m, options, move, progress, target};
    Counts c;
    walk.level(source, target, c, 0);
    return c.failed > 0 ? -c.failed : c.done;
}

} // namespace brindle::files
