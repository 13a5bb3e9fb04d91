// Profile files on POSIX: the library's own reader and writer
// (profile_text.h), with the file handling of the system's calls. Every read
// parses the file afresh (no cached copy, so nothing to flush); a write
// builds the new text in a temporary file beside the old one and renames it
// over it, under a lock on the directory, so that a crash leaves the old or
// the new file and two writers never lose each other's values.
#include "platform/profile_text.h"
#include "platform/file.h"
#include "platform/profile.h"
#include "platform/posix/config_files.h"

#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <mutex>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace brindle::platform {

namespace {

using profile::ProfileText;
using posix::config_directory;
using posix::directory_of;
using posix::DirectoryLock;
using posix::replace_file;

// A native directory in the library's Windows form ("/usr/lib" is
// "C:\usr\lib").
std::string windows_form(const std::string &native) {
    std::string out = "C:";
    for (const char c : native)
        out.push_back(c == '/' ? '\\' : c);
    while (out.size() > 3 && out.back() == '\\')
        out.pop_back();
    return out;
}

uint32_t give_directory(const std::string &dir, char *buffer, uint32_t size) {
    if (dir.empty())
        return 0;
    if (buffer == nullptr || dir.size() + 1 > size)
        return static_cast<uint32_t>(dir.size() + 1);
    std::memcpy(buffer, dir.c_str(), dir.size() + 1);
    return static_cast<uint32_t>(dir.size());
}

struct Target {
    std::string path; // native
    bool in_config = false;
};

// A name with no backslash or slash (and no drive) lives in the Windows
// directory; any other is taken against the current directory.
Target target_of(const char *file) {
    const std::string_view name(file);
    const bool bare = name.find_first_of("\\/") == std::string_view::npos &&
                      !(name.size() >= 2 && name[1] == ':');
    if (!bare)
        return {native_path(name), false};
    const std::string dir = config_directory();
    if (dir.empty())
        return {};
    return {dir + "/" + std::string(name), true};
}

enum class Loaded { Text, Missing, Failed };

// The file's bytes. A missing file in an existing directory reads as an
// empty profile; any other failure (a missing directory, a directory, no
// permission) fails the call.
Loaded load(const std::string &path, std::string *text) {
    text->clear();
    if (path.empty())
        return Loaded::Failed;
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        if (errno != ENOENT)
            return Loaded::Failed;
        struct stat st{};
        const std::string dir = directory_of(path);
        return ::stat(dir.c_str(), &st) == 0 && S_ISDIR(st.st_mode) ? Loaded::Missing : Loaded::Failed;
    }
    struct stat st{};
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
        ::close(fd);
        return Loaded::Failed;
    }
    char chunk[65536];
    for (;;) {
        const ssize_t got = ::read(fd, chunk, sizeof chunk);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0) {
            ::close(fd);
            return Loaded::Failed;
        }
        if (got == 0)
            break;
        text->append(chunk, static_cast<size_t>(got));
    }
    ::close(fd);
    return Loaded::Text;
}

// The last file read, parsed, kept while the file is unchanged (same
// device, inode, size and change time): reading the values of a large
// section one by one then parses the file once, not once per value. A
// write replaces the file (a new inode), so it is never served stale.
struct FileStamp {
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = -1;
    long long seconds = 0, nanoseconds = 0;
    bool operator==(const FileStamp &) const = default;
};

struct CachedText {
    std::string path;
    FileStamp stamp;
    std::shared_ptr<const ProfileText> text;
};

std::mutex cache_lock;
CachedText cached;

bool stamp_of(const std::string &path, FileStamp *stamp) {
    struct stat st{};
    if (::stat(path.c_str(), &st) != 0 || !S_ISREG(st.st_mode))
        return false;
    *stamp = {st.st_dev, st.st_ino, st.st_size, static_cast<long long>(st.st_mtim.tv_sec),
              static_cast<long long>(st.st_mtim.tv_nsec)};
    return true;
}

// The parsed file for reading, or null when it cannot be read (a missing
// file in an existing directory reads as an empty profile).
std::shared_ptr<const ProfileText> parsed(const std::string &path) {
    FileStamp before;
    const bool exists = stamp_of(path, &before);
    std::shared_ptr<const ProfileText> candidate;
    if (exists) {
        const std::lock_guard<std::mutex> hold(cache_lock);
        if (cached.text != nullptr && cached.path == path && cached.stamp == before)
            candidate = cached.text;
    }
    // A file changed within the last two seconds may have been rewritten
    // in place without its time moving on (the clock behind file times is
    // coarse): then the bytes are compared, which is still cheaper than
    // parsing them.
    const bool recent = std::time(nullptr) - before.seconds < 2;
    if (candidate != nullptr && !recent)
        return candidate;
    std::string bytes;
    const Loaded loaded = load(path, &bytes);
    if (loaded == Loaded::Failed)
        return nullptr;
    if (candidate != nullptr && candidate->text() == bytes)
        return candidate;
    auto text = std::make_shared<const ProfileText>(std::move(bytes));
    FileStamp after;
    if (loaded == Loaded::Text && stamp_of(path, &after) && after == before) {
        const std::lock_guard<std::mutex> hold(cache_lock);
        cached = {path, after, text};
    }
    return text;
}

// The default as the system takes it: trailing blanks dropped.
std::string_view trimmed_default(const char *fallback) {
    std::string_view d = fallback == nullptr ? std::string_view() : std::string_view(fallback);
    while (!d.empty() && d.back() == ' ')
        d.remove_suffix(1);
    return d;
}

} // namespace

uint32_t profile_read(const char *section, const char *key, const char *fallback, char *buffer, uint32_t size,
                      const char *file) {
    if (buffer == nullptr || size == 0)
        return 0;
    const std::string_view fallback_text = trimmed_default(fallback);
    const Target target = target_of(file == nullptr ? "win.ini" : file);
    const std::shared_ptr<const ProfileText> parsed_text = parsed(target.path);
    if (parsed_text == nullptr) {
        // A file that cannot be opened gives the default as it stands.
        const size_t kept = std::min<size_t>(fallback_text.size(), size - 1);
        std::memcpy(buffer, fallback_text.data(), kept);
        buffer[kept] = '\0';
        return static_cast<uint32_t>(kept);
    }
    const ProfileText &text = *parsed_text;
    if (section == nullptr)
        return profile::copy_section_list(text.section_names(), buffer, size);
    if (key != nullptr) {
        // An empty key names no entry: the default.
        const profile::Line *line = key[0] == '\0' ? nullptr : text.find(section, key);
        return profile::copy_value(line != nullptr && line->has_value ? line->value : fallback_text, buffer, size);
    }
    if (section[0] == '\0') {
        buffer[0] = '\0';
        return 0;
    }
    const uint32_t placed = profile::copy_key_list(text.key_names(section), buffer, size);
    if (buffer[0] == '\0')
        return profile::copy_value(fallback_text, buffer, size);
    return placed;
}

int32_t profile_write(const char *section, const char *key, const char *value, const char *file) {
    // All three missing asks to flush a cached copy; there is none, and the
    // system reports 0 for a flush.
    if (section == nullptr)
        return 0;
    const Target target = target_of(file == nullptr ? "win.ini" : file);
    if (target.path.empty())
        return 0;
    const std::string dir = directory_of(target.path);
    if (target.in_config && key != nullptr && value != nullptr)
        ::mkdir(dir.c_str(), 0777); // the stand-in for the Windows directory may not exist yet
    const DirectoryLock lock(dir);
    std::string bytes;
    const Loaded loaded = load(target.path, &bytes);
    if (loaded == Loaded::Failed)
        return 0;
    // A read-only file is not written, whoever asks: root passes the
    // system's access test, so the permission bits are read as Windows
    // reads its attribute (no write bit at all: read-only).
    struct stat st;
    if (loaded == Loaded::Text &&
        (::stat(target.path.c_str(), &st) != 0 || (st.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0 ||
         ::access(target.path.c_str(), W_OK) != 0))
        return 0;
    ProfileText text(std::move(bytes));
    bool changed;
    if (key == nullptr)
        changed = text.erase_section(section);
    else if (value == nullptr)
        changed = text.erase_key(section, key);
    else
        changed = text.set_value(section, key, value);
    if (changed && !replace_file(target.path, text.text()))
        return 0;
    return 1;
}

uint32_t system_directory(char *buffer, uint32_t size) { return give_directory("C:\\usr\\lib", buffer, size); }

uint32_t windows_directory(char *buffer, uint32_t size) {
    const std::string dir = config_directory();
    return give_directory(dir.empty() ? std::string() : windows_form(dir), buffer, size);
}

} // namespace brindle::platform
