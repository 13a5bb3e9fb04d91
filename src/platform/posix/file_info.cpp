// Attributes, times, status and volume space on POSIX (see
// platform/file_info.h for the attribute convention).
#include "platform/file_info.h"
#include "platform/file.h"
#include "platform/posix/dos_attributes.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <vector>

namespace brindle::platform {

namespace posix {

namespace {
constexpr const char *kDosAttribName = "user.DOSATTRIB";
constexpr uint32_t kStoredBits = kAttrHidden | kAttrSystem | kAttrArchive | kAttrTemporary;
// Read-only is a file nobody may write.
constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
} // namespace

int errno_to_runtime(int e) {
    switch (e) {
    case ENOENT:
    case ENOTDIR:
    case ENAMETOOLONG:
    case ELOOP:
        return kNoSuchFile;
    case EACCES:
    case EPERM:
    case EROFS:
    case ENOTSUP:
        return kAccessDenied;
    case ENOMEM:
        return kNoMemory;
    case EINVAL:
        return kInvalid;
    default:
        return kIoError;
    }
}

bool dotted_name(std::string_view name) {
    return !name.empty() && name[0] == '.' && name != "." && name != "..";
}

std::string_view last_component(std::string_view native) {
    while (native.size() > 1 && native.back() == '/')
        native.remove_suffix(1);
    const size_t slash = native.rfind('/');
    return slash == std::string_view::npos ? native : native.substr(slash + 1);
}

bool read_stored_bits(const char *native, uint32_t *bits) {
    char value[64];
    const ssize_t n = ::getxattr(native, kDosAttribName, value, sizeof value - 1);
    if (n < 3 || value[0] != '0' || (value[1] != 'x' && value[1] != 'X'))
        return false;
    value[n] = '\0';
    char *end = nullptr;
    const unsigned long v = std::strtoul(value + 2, &end, 16);
    if (end == value + 2)
        return false;
    *bits = static_cast<uint32_t>(v) & kStoredBits;
    return true;
}

uint32_t dos_attributes(const struct stat &st, bool is_link, std::string_view name, const char *native_for_xattr) {
    uint32_t a = 0;
    const bool dir = S_ISDIR(st.st_mode);
    if (dir)
        a |= kAttrDirectory;
    if ((st.st_mode & kAnyWrite) == 0)
        a |= kAttrReadOnly;
    uint32_t stored = 0;
    if (native_for_xattr != nullptr && read_stored_bits(native_for_xattr, &stored))
        a |= stored;
    else if (!dir)
        a |= kAttrArchive;
    if (dotted_name(name))
        a |= kAttrHidden;
    if (is_link)
        a |= kAttrReparsePoint;
    return a == 0 ? kAttrNormal : a;
}

FileTimes times_of(const struct stat &st) {
    FileTimes t;
    t.accessed = file_time_from_unix(st.st_atim.tv_sec, st.st_atim.tv_nsec);
    t.written = file_time_from_unix(st.st_mtim.tv_sec, st.st_mtim.tv_nsec);
    // No birth time in stat(): the last status change is the oldest time the
    // system keeps that a later write cannot move back before the write.
    t.created = file_time_from_unix(st.st_ctim.tv_sec, st.st_ctim.tv_nsec);
    if (t.created > t.written)
        t.created = t.written;
    return t;
}

} // namespace posix

using namespace posix;

namespace {

// stat() following links, with lstat() telling whether the name is a link;
// a dangling link reads as the link itself.
int stat_native(const std::string &native, struct stat *st, bool *is_link) {
    if (native.empty())
        return kNoSuchFile;
    struct stat lst;
    if (::lstat(native.c_str(), &lst) != 0)
        return errno_to_runtime(errno);
    *is_link = S_ISLNK(lst.st_mode);
    if (!*is_link || ::stat(native.c_str(), st) != 0)
        *st = lst;
    return kNoError;
}

// A path's native name and its stat() as stat_native reads it.
struct PathStat {
    std::string native;
    struct stat st;
    bool link = false;
};

int stat_path(std::string_view path, PathStat *out) {
    out->native = native_path(path);
    return stat_native(out->native, &out->st, &out->link);
}

// The times of a stat, with the creation time the file system keeps (its
// birth time, through statx) where it keeps one.
FileTimes times_with_birth(const PathStat &p) {
    FileTimes t = times_of(p.st);
#ifdef STATX_BTIME
    struct statx sx;
    if (::statx(AT_FDCWD, p.native.c_str(), 0, STATX_BTIME, &sx) == 0 && (sx.stx_mask & STATX_BTIME) != 0)
        t.created = file_time_from_unix(sx.stx_btime.tv_sec, sx.stx_btime.tv_nsec);
#endif
    return t;
}

void to_nsec_field(int64_t file_time, struct timespec *ts) {
    const int64_t since = file_time - kUnixEpochAsFileTime;
    int64_t sec = since / 10000000LL, rest = since % 10000000LL;
    if (rest < 0) {
        rest += 10000000LL;
        --sec;
    }
    ts->tv_sec = static_cast<time_t>(sec);
    ts->tv_nsec = static_cast<long>(rest * 100);
}

} // namespace

int get_attributes(std::string_view path, uint32_t *attributes) {
    PathStat p;
    if (const int e = stat_path(path, &p))
        return e;
    *attributes = dos_attributes(p.st, p.link, last_component(p.native), p.native.c_str());
    return kNoError;
}

int set_attributes(std::string_view path, uint32_t attributes) {
    PathStat p;
    if (const int e = stat_path(path, &p))
        return e;
    if (attributes & kAttrCompressed)
        return kAccessDenied;
    if (dotted_name(last_component(p.native)) && !(attributes & kAttrHidden))
        return kAccessDenied; // the name itself says hidden
    const bool dir = S_ISDIR(p.st.st_mode);
    const uint32_t wanted = attributes & kStoredBits;
    uint32_t stored = 0;
    const bool has_stored = read_stored_bits(p.native.c_str(), &stored);
    const uint32_t plain = dir ? 0u : static_cast<uint32_t>(kAttrArchive);
    // What a file without the extended attribute reads as needs no store,
    // so plain read-only changes work on file systems without them.
    if (has_stored ? stored != wanted : wanted != plain) {
        char value[16];
        const int n = std::snprintf(value, sizeof value, "0x%x", static_cast<unsigned>(wanted));
        if (::setxattr(p.native.c_str(), kDosAttribName, value, static_cast<size_t>(n), 0) != 0)
            return kAccessDenied;
    }
    const bool read_only = (p.st.st_mode & kAnyWrite) == 0;
    const bool want_read_only = (attributes & kAttrReadOnly) != 0;
    if (read_only != want_read_only) {
        const mode_t mode = want_read_only ? (p.st.st_mode & ~kAnyWrite)
                                           : (p.st.st_mode | S_IWUSR);
        if (::chmod(p.native.c_str(), mode & 07777) != 0)
            return errno_to_runtime(errno);
    }
    return kNoError;
}

int get_file_times(std::string_view path, FileTimes *times) {
    PathStat p;
    if (const int e = stat_path(path, &p))
        return e;
    *times = times_with_birth(p);
    return kNoError;
}

int set_file_times(std::string_view path, const int64_t *created, const int64_t *accessed, const int64_t *written) {
    const std::string native = native_path(path);
    if (native.empty())
        return kNoSuchFile;
    if (!accessed && !written) {
        struct stat st;
        if (::stat(native.c_str(), &st) != 0)
            return errno_to_runtime(errno);
    }
    struct timespec ts[2];
    ts[0].tv_sec = ts[1].tv_sec = 0;
    ts[0].tv_nsec = ts[1].tv_nsec = UTIME_OMIT;
    if (accessed)
        to_nsec_field(*accessed, &ts[0]);
    if (written)
        to_nsec_field(*written, &ts[1]);
    if ((accessed || written) && ::utimensat(AT_FDCWD, native.c_str(), ts, 0) != 0)
        return errno_to_runtime(errno);
    // POSIX has no call that sets a creation time: asking for the one the
    // file already reports is no change; any other is refused, honestly,
    // after the other two times were set.
    if (created) {
        FileTimes now;
        if (const int e = get_file_times(path, &now))
            return e;
        if (now.created / 10000 != *created / 10000) // compared to the millisecond
            return kAccessDenied;
    }
    return kNoError;
}

int file_status(std::string_view path, FileStatus *status) {
    PathStat p;
    if (const int e = stat_path(path, &p))
        return e;
    status->is_directory = S_ISDIR(p.st.st_mode);
    status->size = status->is_directory ? 0 : p.st.st_size;
    status->times = times_with_birth(p);
    status->drive = 2;
    return kNoError;
}

bool volume_space(std::string_view root, VolumeSpace *space) {
    std::string native = native_path(root);
    if (native.empty())
        native = "."; // the current drive: the file system of the current directory
    struct statvfs vs;
    if (::statvfs(native.c_str(), &vs) != 0)
        return false;
    const uint64_t cluster = vs.f_frsize != 0 ? vs.f_frsize : vs.f_bsize;
    if (cluster == 0)
        return false;
    space->bytes_per_sector = cluster % 512 == 0 ? 512u : static_cast<uint32_t>(cluster);
    space->sectors_per_cluster = static_cast<uint32_t>(cluster / space->bytes_per_sector);
    auto cap = [](uint64_t v) { return v > UINT32_MAX ? UINT32_MAX : static_cast<uint32_t>(v); };
    space->total_clusters = cap(vs.f_blocks);
    space->free_clusters = cap(vs.f_bavail);
    space->total_bytes = static_cast<uint64_t>(vs.f_blocks) * cluster;
    space->free_bytes = static_cast<uint64_t>(vs.f_bfree) * cluster;
    space->caller_free_bytes = static_cast<uint64_t>(vs.f_bavail) * cluster;
    return true;
}

std::string current_directory() {
    std::string buf(PATH_MAX, '\0');
    if (::getcwd(buf.data(), buf.size()) == nullptr)
        return std::string();
    buf.resize(std::strlen(buf.c_str()));
    std::string out = "C:";
    for (char c : buf)
        out.push_back(c == '/' ? '\\' : c);
    if (out.size() == 2)
        out.push_back('\\');
    return out;
}

// The runtime's full-path rules, worked out on the text: a drive-rooted or
// rooted name starts at its root, a UNC name keeps its server and share, a
// relative one starts at the current directory; "." goes, ".." takes one
// component off (never the root), runs of separators count as one, and a
// trailing separator stays.
bool full_path(std::string_view path, std::string *out, size_t limit) {
    if (path.empty())
        return false;
    const std::string cwd = current_directory();
    if (cwd.empty())
        return false;
    std::string root, rest;
    auto is_sep = [](char c) { return c == '\\' || c == '/'; };
    if (path.size() >= 2 && is_sep(path[0]) && is_sep(path[1])) {
        // \\server\share\...: the root is the server and share.
        size_t i = 2, parts = 0;
        root = "\\\\";
        while (i < path.size() && parts < 2) {
            if (is_sep(path[i])) {
                ++parts;
                if (parts < 2)
                    root.push_back('\\');
            } else {
                root.push_back(path[i]);
            }
            ++i;
        }
        root.push_back('\\');
        rest.assign(path.substr(i));
    } else if (path.size() >= 2 && path[1] == ':') {
        const char drive = static_cast<char>(path[0] >= 'a' && path[0] <= 'z' ? path[0] - 32 : path[0]);
        if (path.size() >= 3 && is_sep(path[2])) {
            root = std::string(1, drive) + ":\\";
            rest.assign(path.substr(3));
        } else if (drive == cwd[0]) {
            root = cwd.substr(0, 3);
            rest = cwd.substr(3) + "\\" + std::string(path.substr(2));
        } else {
            root = std::string(1, drive) + ":\\";
            rest.assign(path.substr(2));
        }
    } else if (is_sep(path[0])) {
        root = cwd.substr(0, 3);
        rest.assign(path.substr(1));
    } else {
        root = cwd.substr(0, 3);
        rest = cwd.substr(3) + "\\" + std::string(path);
    }
    std::vector<std::string_view> parts;
    const std::string_view r(rest);
    size_t from = 0;
    while (from <= r.size()) {
        size_t to = from;
        while (to < r.size() && !is_sep(r[to]))
            ++to;
        const std::string_view part = r.substr(from, to - from);
        if (part == "..") {
            if (!parts.empty())
                parts.pop_back();
        } else if (!part.empty() && part != ".") {
            parts.push_back(part);
        }
        from = to + 1;
    }
    std::string result = root;
    for (size_t i = 0; i < parts.size(); ++i) {
        if (i > 0)
            result.push_back('\\');
        result.append(parts[i]);
    }
    if (is_sep(path.back()) && result.back() != '\\')
        result.push_back('\\');
    if (result.size() + 1 > limit)
        return false;
    *out = std::move(result);
    return true;
}

uint32_t process_id() noexcept { return static_cast<uint32_t>(::getpid()); }

} // namespace brindle::platform
