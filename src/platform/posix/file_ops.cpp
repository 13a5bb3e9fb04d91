// Delete, directories, the system's copy and move, and copy offload on
// POSIX, with the Windows rules the library keeps (see platform/file_ops.h).
#include "platform/file_ops.h"
#include "platform/file_info.h"
#include "platform/posix/dos_attributes.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <memory>
#include <string>

namespace brindle::platform {

namespace {

constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr int kNotEmpty = 41; // the runtime's ENOTEMPTY

bool usable(const std::string &native) { return !native.empty() && native.find('\0') == std::string::npos; }

int runtime_of(int e) {
    if (e == ENOTEMPTY || e == EEXIST)
        return e == EEXIST ? kFileExists : kNotEmpty;
    if (e == EISDIR)
        return kAccessDenied;
    return posix::errno_to_runtime(e);
}

uint32_t system_of(int e) {
    switch (e) {
    case ENOENT:
        return kSysFileNotFound;
    case ENOTDIR:
        return kSysPathNotFound;
    case EEXIST:
        return kSysAlreadyExists;
    case ENOSPC:
    case EFBIG:
    case EDQUOT:
        return kSysDiskFull;
    case EXDEV:
        return kSysNotSameDevice;
    case ENAMETOOLONG:
    case EINVAL:
        return kSysInvalidName;
    default:
        return kSysAccessDenied;
    }
}

} // namespace

int remove_file(std::string_view path) {
    const std::string native = native_path(path);
    if (!usable(native))
        return native.empty() ? kNoSuchFile : kInvalid;
    struct stat st;
    if (::lstat(native.c_str(), &st) != 0)
        return runtime_of(errno);
    if (S_ISDIR(st.st_mode))
        return kAccessDenied;
    if (!S_ISLNK(st.st_mode) && (st.st_mode & kAnyWrite) == 0)
        return kAccessDenied; // read-only
    return ::unlink(native.c_str()) == 0 ? kNoError : runtime_of(errno);
}

int make_directory(std::string_view path) {
    const std::string native = native_path(path);
    if (!usable(native))
        return native.empty() ? kNoSuchFile : kInvalid;
    return ::mkdir(native.c_str(), 0777) == 0 ? kNoError : runtime_of(errno);
}

int remove_directory(std::string_view path) {
    std::string native = native_path(path);
    if (!usable(native))
        return native.empty() ? kNoSuchFile : kInvalid;
    while (native.size() > 1 && native.back() == '/')
        native.pop_back();
    struct stat st;
    if (::lstat(native.c_str(), &st) != 0)
        return runtime_of(errno);
    if (S_ISLNK(st.st_mode)) {
        // A link to a directory goes as the link; its target is not touched.
        struct stat target;
        if (::stat(native.c_str(), &target) != 0 || !S_ISDIR(target.st_mode))
            return kNoSuchFile;
        return ::unlink(native.c_str()) == 0 ? kNoError : runtime_of(errno);
    }
    if (!S_ISDIR(st.st_mode))
        return kNoSuchFile;
    if ((st.st_mode & kAnyWrite) == 0)
        return kAccessDenied; // read-only
    return ::rmdir(native.c_str()) == 0 ? kNoError : runtime_of(errno);
}

Offload copy_offload(File &from, File &to, int64_t *copied) noexcept {
    *copied = 0;
#ifdef __linux__
    // Only a regular file with bytes to copy: files whose size the system
    // does not know (those of /proc, say) read as empty to the offload.
    struct stat st;
    if (::fstat(from.native(), &st) != 0 || !S_ISREG(st.st_mode) || st.st_size == 0)
        return Offload::Unsupported;
    constexpr size_t kStep = size_t{1} << 30;
    for (;;) {
        const ssize_t n = ::copy_file_range(from.native(), nullptr, to.native(), nullptr, kStep, 0);
        if (n > 0) {
            *copied += n;
            continue;
        }
        if (n == 0)
            return *copied == 0 ? Offload::Unsupported : Offload::Done;
        if (errno == EINTR)
            continue;
        // Not offered here (an old kernel, another file system pair, a
        // special file): nothing has moved yet, the loop takes over.
        if (*copied == 0 && (errno == ENOSYS || errno == EXDEV || errno == EINVAL || errno == EOPNOTSUPP ||
                             errno == ENOTSUP || errno == EBADF || errno == EPERM))
            return Offload::Unsupported;
        return Offload::Failed;
    }
#else
    (void)from;
    (void)to;
    return Offload::Unsupported;
#endif
}

namespace {

// Copies the bytes of an open source to an open target; 0 or errno.
int copy_bytes(File &in, File &out) {
    int64_t copied = 0;
    switch (copy_offload(in, out, &copied)) {
    case Offload::Done:
        return 0;
    case Offload::Failed:
        return errno != 0 ? errno : EIO;
    case Offload::Unsupported:
        break;
    }
    constexpr size_t kBlock = size_t{1} << 20;
    std::unique_ptr<char[]> buffer(new (std::nothrow) char[kBlock]);
    if (!buffer)
        return ENOMEM;
    for (;;) {
        const int64_t got = in.read(buffer.get(), kBlock);
        if (got < 0)
            return errno != 0 ? errno : EIO;
        if (got == 0)
            return 0;
        errno = 0;
        if (!out.write(buffer.get(), static_cast<size_t>(got)))
            return errno != 0 ? errno : ENOSPC;
    }
}

// The DOS bits kept beside the permission bits go with the copy.
void copy_stored_bits(const std::string &from, const std::string &to) {
    char value[64];
    const ssize_t n = ::getxattr(from.c_str(), "user.DOSATTRIB", value, sizeof value);
    if (n > 0)
        (void)::setxattr(to.c_str(), "user.DOSATTRIB", value, static_cast<size_t>(n), 0);
}

// What stands in the way of writing `to` from `from`: 0, or a last-error value.
uint32_t target_refusal(const std::string &from, const std::string &to, bool fail_if_exists, bool *exists) {
    struct stat ts, ss;
    *exists = ::stat(to.c_str(), &ts) == 0;
    if (!*exists)
        return kSysOk;
    if (fail_if_exists)
        return kSysFileExists;
    if (S_ISDIR(ts.st_mode) || (ts.st_mode & kAnyWrite) == 0)
        return kSysAccessDenied;
    if (::stat(from.c_str(), &ss) == 0 && ss.st_dev == ts.st_dev && ss.st_ino == ts.st_ino)
        return kSysSharingViolation; // the source under another name
    return kSysOk;
}

} // namespace

uint32_t system_copy_file(std::string_view from, std::string_view to, bool fail_if_exists) {
    const std::string a = native_path(from), b = native_path(to);
    if (!usable(a) || !usable(b))
        return a.empty() || b.empty() ? kSysPathNotFound : kSysInvalidName;
    int err = 0;
    File in = File::open(from, OpenMode::Read, &err);
    if (!in.is_open())
        return err == kNoSuchFile ? kSysFileNotFound : kSysAccessDenied;
    struct stat ss;
    if (::fstat(in.native(), &ss) != 0)
        return kSysAccessDenied;
    bool exists = false;
    if (const uint32_t refused = target_refusal(a, b, fail_if_exists, &exists))
        return refused;
    File out = File::open(to, OpenMode::Create, &err);
    if (!out.is_open())
        return err == kNoSuchFile ? kSysPathNotFound : err == kNoSpace ? kSysDiskFull : kSysAccessDenied;
    int e = copy_bytes(in, out);
    if (e == 0) {
        // Last-write and access times, and the read-only state, as the source's.
        const struct timespec times[2] = {ss.st_atim, ss.st_mtim};
        (void)::futimens(out.native(), times);
        if (!out.close())
            e = EIO;
    }
    if (e != 0) {
        out.close();
        ::unlink(b.c_str());
        return system_of(e);
    }
    copy_stored_bits(a, b);
    (void)::chmod(b.c_str(), ss.st_mode & 07777);
    return kSysOk;
}

uint32_t system_move_file(std::string_view from, std::string_view to, bool replace, bool allow_copy) {
    const std::string a = native_path(from), b = native_path(to);
    if (!usable(a) || !usable(b))
        return a.empty() || b.empty() ? kSysPathNotFound : kSysInvalidName;
    struct stat ss;
    if (::lstat(a.c_str(), &ss) != 0)
        return system_of(errno);
    struct stat ts;
    if (::lstat(b.c_str(), &ts) == 0) {
        if (ss.st_dev == ts.st_dev && ss.st_ino == ts.st_ino && a == b)
            return kSysOk; // a file moved onto its own name stays
        if (!replace)
            return kSysAlreadyExists;
        if (S_ISDIR(ts.st_mode) || (!S_ISLNK(ts.st_mode) && (ts.st_mode & kAnyWrite) == 0))
            return kSysAccessDenied;
        if (ss.st_dev == ts.st_dev && ss.st_ino == ts.st_ino)
            return kSysAccessDenied; // two names of one file: the system would drop a name, not move
    }
    if (::rename(a.c_str(), b.c_str()) == 0)
        return kSysOk;
    if (errno != EXDEV)
        return system_of(errno);
    if (!allow_copy || S_ISDIR(ss.st_mode))
        return kSysNotSameDevice;
    if (const uint32_t e = system_copy_file(from, to, false))
        return e;
    if (::unlink(a.c_str()) != 0) {
        const int e = errno;
        ::unlink(b.c_str()); // the source stays whole; the copy goes
        return system_of(e);
    }
    return kSysOk;
}

} // namespace brindle::platform
