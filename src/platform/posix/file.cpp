// Files on POSIX: Windows paths mapped for the system call, error numbers
// mapped to the Windows runtime's.
#include "platform/file.h"
#include "platform/file_ops.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace brindle::platform {

namespace {

int runtime_error(int posix_errno) {
    switch (posix_errno) {
    case ENOENT:
    case ENOTDIR:
        return kNoSuchFile;
    case EACCES:
    case EPERM:
    case EROFS:
        return kAccessDenied;
    case EEXIST:
        return kFileExists;
    case EISDIR:
        return kAccessDenied; // Windows refuses a directory as a file with EACCES
    case ENOSPC:
        return kNoSpace;
    case EMFILE:
    case ENFILE:
        return kTooManyFiles;
    case ENOMEM:
        return kNoMemory;
    case EBADF:
        return kBadHandle;
    case EINVAL:
    case ENAMETOOLONG:
        return kInvalid;
    default:
        return kIoError;
    }
}

constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH; // none set: read-only

int open_flags(OpenMode mode) {
    switch (mode) {
    case OpenMode::Read:
        return O_RDONLY;
    case OpenMode::ReadWrite:
        return O_RDWR;
    case OpenMode::Create:
        return O_WRONLY | O_CREAT | O_TRUNC;
    case OpenMode::CreateReadWrite:
        return O_RDWR | O_CREAT | O_TRUNC;
    case OpenMode::CreateNew:
        return O_RDWR | O_CREAT | O_EXCL;
    case OpenMode::Append:
        return O_WRONLY | O_CREAT | O_APPEND;
    case OpenMode::Overwrite:
        return O_WRONLY | O_CREAT;
    }
    return O_RDONLY;
}

bool stat_path(std::string_view path, struct stat *st) {
    const std::string native = native_path(path);
    return !native.empty() && ::stat(native.c_str(), st) == 0;
}

} // namespace

std::string native_path(std::string_view path) {
    std::string out;
    out.reserve(path.size());
    size_t i = 0;
    if (path.size() >= 2 && path[1] == ':' &&
        ((path[0] >= 'A' && path[0] <= 'Z') || (path[0] >= 'a' && path[0] <= 'z'))) {
        i = 2;
        // "X:\\dir" is rooted; "X:dir" is relative to the current directory.
    }
    for (; i < path.size(); ++i)
        out.push_back(path[i] == '\\' ? '/' : path[i]);
    return out;
}

File File::open(std::string_view path, OpenMode mode, int *error) {
    const std::string native = native_path(path);
    if (native.empty() || native.find('\0') != std::string::npos) {
        if (error)
            *error = native.empty() ? kNoSuchFile : kInvalid;
        return File();
    }
    // A read-only file is not opened for writing, whoever asks (root
    // included, whom the permission bits do not stop). The file is opened
    // without truncation first, so that a refused open leaves it whole.
    const int flags = open_flags(mode);
    const bool writes = (flags & (O_WRONLY | O_RDWR)) != 0;
    struct stat before;
    const bool existed = writes && ::stat(native.c_str(), &before) == 0;
    int fd;
    do {
        fd = ::open(native.c_str(), (flags & ~O_TRUNC) | O_CLOEXEC, 0666);
    } while (fd < 0 && errno == EINTR);
    if (fd >= 0) {
        struct stat st;
        const bool known = ::fstat(fd, &st) == 0;
        const bool refused = known && (S_ISDIR(st.st_mode) ||
                                       (existed && S_ISREG(st.st_mode) && (st.st_mode & kAnyWrite) == 0));
        const bool truncate = (flags & O_TRUNC) && existed && known && S_ISREG(st.st_mode) && st.st_size > 0;
        if (refused || (truncate && ::ftruncate(fd, 0) != 0)) {
            const int e = refused ? kAccessDenied : runtime_error(errno);
            ::close(fd);
            if (error)
                *error = e;
            return File();
        }
    }
    if (error)
        *error = fd < 0 ? runtime_error(errno) : kNoError;
    return File(fd);
}

int64_t File::read(void *buffer, size_t size) noexcept {
    if (fd_ < 0)
        return -1;
    auto *p = static_cast<char *>(buffer);
    size_t done = 0;
    while (done < size) {
        const ssize_t got = ::read(fd_, p + done, size - done);
        if (got < 0) {
            if (errno == EINTR)
                continue;
            return done > 0 ? static_cast<int64_t>(done) : -1;
        }
        if (got == 0)
            break;
        done += static_cast<size_t>(got);
    }
    return static_cast<int64_t>(done);
}

bool File::write(const void *buffer, size_t size) noexcept {
    if (fd_ < 0)
        return false;
    const auto *p = static_cast<const char *>(buffer);
    size_t done = 0;
    while (done < size) {
        const ssize_t put = ::write(fd_, p + done, size - done);
        if (put < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        done += static_cast<size_t>(put);
    }
    return true;
}

bool File::seek(int64_t offset) noexcept { return fd_ >= 0 && offset >= 0 && ::lseek(fd_, offset, SEEK_SET) == offset; }

bool File::read_at(int64_t offset, void *buffer, size_t size) noexcept {
    if (fd_ < 0 || offset < 0)
        return false;
    auto *p = static_cast<char *>(buffer);
    size_t done = 0;
    while (done < size) {
        const ssize_t got = ::pread(fd_, p + done, size - done, static_cast<off_t>(offset + static_cast<int64_t>(done)));
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return false;
        done += static_cast<size_t>(got);
    }
    return true;
}

bool File::write_at(int64_t offset, const void *buffer, size_t size) noexcept {
    if (fd_ < 0 || offset < 0)
        return false;
    const auto *p = static_cast<const char *>(buffer);
    size_t done = 0;
    while (done < size) {
        const ssize_t put = ::pwrite(fd_, p + done, size - done, static_cast<off_t>(offset + static_cast<int64_t>(done)));
        if (put < 0 && errno == EINTR)
            continue;
        if (put <= 0)
            return false;
        done += static_cast<size_t>(put);
    }
    return true;
}

int64_t File::tell() const noexcept { return fd_ < 0 ? -1 : ::lseek(fd_, 0, SEEK_CUR); }

int64_t File::size() const noexcept {
    struct stat st;
    return fd_ >= 0 && ::fstat(fd_, &st) == 0 ? st.st_size : -1;
}

bool File::truncate(int64_t size) noexcept { return fd_ >= 0 && size >= 0 && ::ftruncate(fd_, size) == 0; }

bool File::flush() noexcept { return fd_ >= 0 && ::fsync(fd_) == 0; }

bool File::close() noexcept {
    if (fd_ < 0)
        return true;
    const int rc = ::close(fd_);
    fd_ = -1;
    return rc == 0;
}

bool file_exists(std::string_view path) {
    struct stat st;
    return stat_path(path, &st) && !S_ISDIR(st.st_mode);
}

bool directory_exists(std::string_view path) {
    struct stat st;
    return stat_path(path, &st) && S_ISDIR(st.st_mode);
}

int64_t file_size(std::string_view path) {
    struct stat st;
    return stat_path(path, &st) && !S_ISDIR(st.st_mode) ? st.st_size : -1;
}

// A read-only file stays, as on Windows (platform/file_ops.h).
bool delete_file(std::string_view path) { return remove_file(path) == kNoError; }

bool rename_file(std::string_view from, std::string_view to, int *error) {
    const std::string a = native_path(from), b = native_path(to);
    // Windows' rename refuses an existing target; keep that rule.
    struct stat st;
    if (::lstat(b.c_str(), &st) == 0) {
        if (error)
            *error = kAccessDenied;
        return false;
    }
    if (::rename(a.c_str(), b.c_str()) != 0) {
        if (error)
            *error = runtime_error(errno);
        return false;
    }
    if (error)
        *error = kNoError;
    return true;
}

} // namespace brindle::platform
