#include "files/tree_delete.h"

#include "files/path_names.h"
#include "files/tree_walk.h"
#include "platform/directory.h"
#include "platform/file_info.h"
#include "platform/file_ops.h"
#include "strings/wildcard.h"

#include <string>
#include <vector>

namespace brindle::files {

namespace {

constexpr uint32_t kForced = platform::kAttrReadOnly | platform::kAttrHidden | platform::kAttrSystem |
                             platform::kAttrArchive; // 39
constexpr uint32_t kAllPlain = kForced | platform::kAttrNormal | platform::kAttrTemporary; // 423

struct Counts {
    int32_t done = 0;
    int32_t failed = 0;
};

bool clear_bits(const std::string &path, uint32_t bits) {
    uint32_t now = 0;
    if (platform::get_attributes(path, &now) != platform::kNoError)
        return false;
    if ((now & bits) == 0)
        return true;
    return platform::set_attributes(path, now & ~bits) == platform::kNoError;
}

// A directory's entries, read whole before anything is deleted, so one
// search is open at a time and deleting does not disturb the listing.
std::vector<platform::DirEntry> entries_of(const std::string &prefix) {
    std::vector<platform::DirEntry> out;
    platform::DirectorySearch search;
    for (bool ok = search.first(prefix + "*.*", platform::EntryDetail::Full); ok; ok = search.next()) {
        const platform::DirEntry &e = search.entry();
        if (!e.name.empty() && e.name[0] != '.')
            out.push_back(e);
    }
    return out;
}

// Deep trees are limited by the length of their names (a few thousand
// levels at most); this guard keeps the recursion bounded whatever the
// system allows.
constexpr int kMaxDepth = 4096;

void delete_level(const std::string &dir, std::string_view mask, TreeMode mode, Counts &c, int depth) {
    const std::string prefix = walk_prefix(dir);
    const std::vector<platform::DirEntry> entries = entries_of(prefix);
    const bool forcing = mode == TreeMode::ForcedTree;
    for (const platform::DirEntry &e : entries) {
        if (e.attributes & platform::kAttrDirectory)
            continue;
        if (!strings::WildcardMatch(e.name, mask, false))
            continue;
        const std::string path = prefix + e.name;
        // A link's attributes are its target's on some systems: never touch them.
        if (forcing && !(e.attributes & platform::kAttrReparsePoint))
            clear_bits(path, kForced);
        if (platform::remove_file(path) == platform::kNoError) {
            if (mode == TreeMode::FilesOnly)
                ++c.done;
        } else {
            ++c.failed;
        }
    }
    if (mode == TreeMode::FilesOnly)
        return;
    for (const platform::DirEntry &e : entries) {
        if (!(e.attributes & platform::kAttrDirectory))
            continue;
        const std::string path = prefix + e.name;
        const bool link = (e.attributes & platform::kAttrReparsePoint) != 0;
        if (!link) {
            if (depth >= kMaxDepth) {
                ++c.failed;
                continue;
            }
            delete_level(path, mask, mode, c, depth + 1);
            if (forcing)
                clear_bits(path, kForced);
        }
        if (platform::remove_directory(path) == platform::kNoError)
            ++c.done;
        else
            ++c.failed;
    }
}

} // namespace

bool is_root_or_empty(std::string_view dir) {
    if (dir.empty() || dir.find('\0') != std::string_view::npos)
        return true;
    // "C:" is the root once normalised, as every tree function reads it.
    std::string full;
    if (!platform::full_path(normalise_path(dir), &full, 4096))
        return true;
    // What is left after the root: "C:\", "\\server\share\" end the root.
    size_t root = 0;
    if (full.size() >= 2 && full[0] == '\\' && full[1] == '\\') {
        size_t seps = 0;
        root = 2;
        while (root < full.size() && seps < 2) {
            if (full[root] == '\\')
                ++seps;
            ++root;
        }
    } else if (full.size() >= 3 && full[1] == ':') {
        root = 3;
    } else {
        root = 1;
    }
    for (size_t i = root; i < full.size(); ++i)
        if (full[i] != '\\' && full[i] != '/')
            return false;
    return true;
}

int32_t delete_matching(std::string_view pattern, bool clear_first) {
    if (pattern.empty() || pattern.size() > 32767) // the longest path any system accepts
        return 0;
    const PathPieces pieces = split_path(pattern);
    const std::string dir = pieces.drive + pieces.dir;
    std::vector<std::string> names;
    {
        platform::DirectorySearch search;
        for (bool ok = search.first(pattern, platform::EntryDetail::Full); ok; ok = search.next())
            if (!(search.entry().attributes & platform::kAttrDirectory))
                names.push_back(search.entry().name);
    }
    int32_t deleted = 0;
    for (const std::string &name : names) {
        const std::string path = dir + name;
        if (clear_first && !clear_bits(path, kAllPlain))
            continue;
        if (platform::remove_file(path) == platform::kNoError)
            ++deleted;
    }
    return deleted;
}

int32_t delete_tree(std::string_view dir_in, std::string_view mask_in, TreeMode mode, bool remove_top) {
    if (is_root_or_empty(dir_in))
        return -1;
    const std::string dir = normalise_path(dir_in);
    const std::string_view given = mode == TreeMode::FilesOnly ? mask_in : std::string_view("*");
    const std::string mask(given.empty() || given == "*.*" ? std::string_view("*") : given);
    uint32_t top = 0;
    if (platform::get_attributes(dir, &top) != platform::kNoError || !(top & platform::kAttrDirectory))
        return -1;
    Counts c;
    // A top that is a link is not entered: its target lies outside the tree.
    if (!(top & platform::kAttrReparsePoint))
        delete_level(dir, mask, mode, c, 0);
    if (remove_top) {
        if (mode == TreeMode::ForcedTree && !(top & platform::kAttrReparsePoint))
            clear_bits(dir, kForced);
        if (platform::remove_directory(dir) == platform::kNoError)
            ++c.done;
        else
            ++c.failed;
    }
    return c.failed > 0 ? -c.failed : c.done;
}

} // namespace brindle::files
