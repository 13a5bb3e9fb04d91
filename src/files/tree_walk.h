// The recursive walk behind the searches, totals and tree listings: every
// directory of a tree in two passes, first its own entries, then each of its
// subdirectories in turn, depth first.
//
// The walk keeps its own stack of pending directory names instead of
// recursing, so a deep or wide tree costs heap for the names it still has to
// visit and no stack, and at most one directory is open at a time. Names
// beginning with a full stop ("." and "..", and POSIX hidden names) are
// skipped, as the walkers always did. Symbolic links and junctions (entries
// with the reparse-point bit) are reported but never walked into, so a link
// that points back up the tree cannot make the walk run for ever.
#pragma once

#include "platform/directory.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace brindle::files {

// The directory prefix a walk starts from: the root with a backslash
// appended unless it already ends in one.
inline std::string walk_prefix(std::string_view root) {
    std::string dir(root);
    if (dir.empty() || dir.back() != '\\')
        dir.push_back('\\');
    return dir;
}

// Walks the tree below `root`. For each directory (the root first):
//   pass one  entry(dir, e) for every entry whose name does not begin with
//             "."; dir is the directory's prefix ending in a backslash.
//             Returning false stops the whole walk.
//   pass two  when `recurse`, for each subdirectory seen in pass one,
//             enter(dir, e) and then the walk of that directory, before the
//             next subdirectory. Returning false from enter skips that
//             subdirectory; the walk goes on. A link is entered but never
//             walked.
// `walk_on` is checked before each directory is opened; false stops the
// walk (a full table, say).
template <class Entry, class Enter, class WalkOn>
void walk_tree(std::string_view root, platform::EntryDetail detail, bool recurse, Entry &&entry, Enter &&enter,
              WalkOn &&walk_on) {
    struct Frame {
        std::string dir;                  // prefix of this directory
        std::vector<platform::DirEntry> subdirs; // found in pass one
        size_t next = 0;
    };
    std::vector<Frame> stack;
    platform::DirectorySearch search;
    bool stopped = false;

    // Pass one over a directory; the frame keeps its subdirectories.
    auto read = [&](std::string dir) {
        Frame frame;
        frame.dir = std::move(dir);
        for (bool ok = search.first(frame.dir + "*.*", detail); ok && !stopped; ok = search.next()) {
            const platform::DirEntry &e = search.entry();
            if (e.name.empty() || e.name[0] == '.')
                continue;
            if (!entry(std::as_const(frame.dir), e)) {
                stopped = true;
                break;
            }
            if (recurse && (e.attributes & platform::kAttrDirectory))
                frame.subdirs.push_back(e);
        }
        search.close();
        stack.push_back(std::move(frame));
    };

    if (!walk_on())
        return;
    read(walk_prefix(root));
    while (!stack.empty() && !stopped) {
        Frame &top = stack.back();
        if (top.next >= top.subdirs.size()) {
            stack.pop_back();
            continue;
        }
        const platform::DirEntry sub = std::move(top.subdirs[top.next++]);
        if (!enter(std::as_const(top.dir), sub) || (sub.attributes & platform::kAttrReparsePoint))
            continue;
        if (!walk_on())
            break;
        read(top.dir + sub.name + "\\"); // may reallocate the stack: `top` is not used after
    }
}

// The common case: no hook before descending, no stop condition.
template <class Entry> void walk_tree(std::string_view root, platform::EntryDetail detail, bool recurse, Entry &&entry) {
    walk_tree(
        root, detail, recurse, std::forward<Entry>(entry), [](const std::string &, const platform::DirEntry &) { return true; },
        [] { return true; });
}

} // namespace brindle::files
