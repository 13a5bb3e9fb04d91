// Directory search on POSIX: the directory is read once at the first call,
// the names that match the Windows pattern are kept sorted without regard to
// case, and each entry's status is taken as the caller steps onto it.
#include "platform/directory.h"

#include "common/ascii.h"
#include "platform/file.h"
#include "platform/posix/dos_attributes.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace brindle::platform {

using namespace posix;

namespace {

struct Item {
    std::string name;
    unsigned char type; // d_type
};

bool less_no_case(const Item &a, const Item &b) { return common::less_no_case(a.name, b.name); }

} // namespace

struct DirectorySearch::State {
    DIR *dir = nullptr;
    std::string native_dir; // with a trailing slash, for the extended attribute
    std::vector<Item> items;
    size_t next = 0;
    EntryDetail detail = EntryDetail::Full;

    ~State() {
        if (dir != nullptr)
            ::closedir(dir);
    }

    // Status of one item into `out`; false when it vanished meanwhile.
    bool fill(const Item &item, DirEntry &out) const {
        const int fd = ::dirfd(dir);
        out.name = item.name;
        out.size = 0;
        out.times = FileTimes{};
        struct stat st;
        bool link = item.type == DT_LNK;
        if (detail == EntryDetail::Kind && (item.type == DT_DIR || item.type == DT_REG)) {
            out.attributes = item.type == DT_DIR ? static_cast<uint32_t>(kAttrDirectory) : 0u;
            if (dotted_name(item.name))
                out.attributes |= kAttrHidden;
            if (out.attributes == 0)
                out.attributes = kAttrNormal;
            return true;
        }
        if (item.type == DT_UNKNOWN) {
            if (::fstatat(fd, item.name.c_str(), &st, AT_SYMLINK_NOFOLLOW) != 0)
                return false;
            link = S_ISLNK(st.st_mode);
        }
        if (item.type != DT_UNKNOWN || link) {
            if (::fstatat(fd, item.name.c_str(), &st, 0) != 0) {
                // A dangling link: the link itself.
                if (!link || ::fstatat(fd, item.name.c_str(), &st, AT_SYMLINK_NOFOLLOW) != 0)
                    return false;
            }
        }
        std::string full;
        if (detail == EntryDetail::Full)
            full = native_dir + item.name;
        out.attributes = dos_attributes(st, link, item.name, detail == EntryDetail::Full ? full.c_str() : nullptr);
        if (!S_ISDIR(st.st_mode))
            out.size = static_cast<uint64_t>(st.st_size);
        out.times = times_of(st);
        return true;
    }
};

DirectorySearch::DirectorySearch() noexcept = default;
DirectorySearch::~DirectorySearch() = default;

void DirectorySearch::close() noexcept { state_.reset(); }

bool DirectorySearch::is_open() const noexcept { return state_ != nullptr; }

bool DirectorySearch::first(std::string_view pattern, EntryDetail detail) {
    close();
    size_t sep = std::string_view::npos;
    for (size_t i = 0; i < pattern.size(); ++i)
        if (pattern[i] == '\\' || pattern[i] == '/')
            sep = i;
    std::string_view dir_part, name_part;
    if (sep != std::string_view::npos) {
        dir_part = pattern.substr(0, sep + 1);
        name_part = pattern.substr(sep + 1);
    } else if (pattern.size() >= 2 && pattern[1] == ':') {
        dir_part = pattern.substr(0, 2);
        name_part = pattern.substr(2);
    } else {
        name_part = pattern;
    }
    if (name_part.empty() || name_part.find('\0') != std::string_view::npos ||
        dir_part.find('\0') != std::string_view::npos)
        return false;

    auto state = std::make_unique<State>();
    state->detail = detail;
    state->native_dir = native_path(dir_part);
    if (state->native_dir.empty())
        state->native_dir = "./";
    else if (state->native_dir.back() != '/')
        state->native_dir.push_back('/');
    state->dir = ::opendir(state->native_dir.c_str());
    if (state->dir == nullptr)
        return false;

    const std::string literal(name_part);
    struct stat st;
    if (!has_wildcard(name_part) && ::fstatat(::dirfd(state->dir), literal.c_str(), &st, AT_SYMLINK_NOFOLLOW) == 0) {
        // An exact name needs no listing.
        state->items.push_back({literal, DT_UNKNOWN});
    } else {
        // "." and ".." first, whatever order the system reads them in.
        for (const char *dot : {".", ".."})
            if (system_pattern_match(dot, name_part))
                state->items.push_back({dot, DT_DIR});
        const size_t dots = state->items.size();
        errno = 0;
        while (const dirent *d = ::readdir(state->dir)) {
            const std::string_view name(d->d_name);
            if (name == "." || name == "..")
                continue;
            if (system_pattern_match(name, name_part))
                state->items.push_back({std::string(name), d->d_type});
        }
        std::sort(state->items.begin() + static_cast<std::ptrdiff_t>(dots), state->items.end(), less_no_case);
    }
    state_ = std::move(state);
    return next();
}

bool DirectorySearch::next() {
    if (!state_)
        return false;
    while (state_->next < state_->items.size()) {
        const Item &item = state_->items[state_->next++];
        if (state_->fill(item, entry_))
            return true;
    }
    return false;
}

} // namespace brindle::platform
