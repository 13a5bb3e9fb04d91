// Files on Windows, through the C runtime's descriptors so that error numbers
// are the runtime's own. Paths are the caller's ANSI bytes and go to the
// system unchanged. Every descriptor is opened in binary mode: the text mode
// of the runtime is done portably by TextReader/TextWriter, and a descriptor
// in the runtime's own text mode would translate a second time.
#include "platform/file.h"
#include "platform/file_ops.h"
#include "platform/ole.h"
#include "platform/win32/read_only.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>

namespace brindle::platform {

namespace {

// The runtime's errno values are the numbers the library reports; anything
// unexpected becomes a plain I/O error.
int runtime_error(int crt_errno) {
    switch (crt_errno) {
    case kNoSuchFile:
    case kBadHandle:
    case kNoMemory:
    case kAccessDenied:
    case kFileExists:
    case kInvalid:
    case kTooManyFiles:
    case kNoSpace:
        return crt_errno;
    case kIsDirectory:
        return kAccessDenied;
    case ENAMETOOLONG:
        return kInvalid;
    default:
        return kIoError;
    }
}

int open_flags(OpenMode mode) {
    switch (mode) {
    case OpenMode::Read:
        return _O_RDONLY;
    case OpenMode::ReadWrite:
        return _O_RDWR;
    case OpenMode::Create:
        return _O_WRONLY | _O_CREAT | _O_TRUNC;
    case OpenMode::CreateReadWrite:
        return _O_RDWR | _O_CREAT | _O_TRUNC;
    case OpenMode::CreateNew:
        return _O_RDWR | _O_CREAT | _O_EXCL;
    case OpenMode::Append:
        return _O_WRONLY | _O_CREAT | _O_APPEND;
    case OpenMode::Overwrite:
        return _O_WRONLY | _O_CREAT;
    }
    return _O_RDONLY;
}

// One read or write moves at most this much (the runtime counts in unsigned int).
constexpr size_t kChunk = size_t{1} << 30;

bool usable(const std::string &path) { return !path.empty() && path.find('\0') == std::string::npos; }

DWORD attributes(std::string_view path) {
    const std::string native = native_path(path);
    return usable(native) ? GetFileAttributesA(native.c_str()) : INVALID_FILE_ATTRIBUTES;
}

} // namespace

std::string native_path(std::string_view path) { return std::string(path); }

File File::open(std::string_view path, OpenMode mode, int *error) {
    const std::string native = native_path(path);
    if (!usable(native)) {
        if (error)
            *error = native.empty() ? kNoSuchFile : kInvalid;
        return File();
    }
    // A read-only file is not opened for writing, whoever asks. The file is
    // opened without truncation first and checked through its handle, so
    // that a refused open leaves it whole; only then is it emptied.
    const int flags = open_flags(mode);
    const bool writes = (flags & (_O_WRONLY | _O_RDWR)) != 0;
    int fd = -1;
    errno_t rc = _sopen_s(&fd, native.c_str(), (flags & ~_O_TRUNC) | _O_BINARY | _O_NOINHERIT, _SH_DENYNO,
                          _S_IREAD | _S_IWRITE);
    if (rc == 0 && fd >= 0 && writes) {
        const HANDLE h = reinterpret_cast<HANDLE>(::_get_osfhandle(fd));
        if (win32::read_only_handle(h))
            rc = kAccessDenied;
        else if ((flags & _O_TRUNC) != 0)
            rc = ::_chsize_s(fd, 0);
        if (rc != 0) {
            ::_close(fd);
            fd = -1;
        }
    }
    if (rc != 0 || fd < 0) {
        if (error)
            *error = runtime_error(rc != 0 ? rc : errno);
        return File();
    }
    if (error)
        *error = kNoError;
    return File(fd);
}

int64_t File::read(void *buffer, size_t size) noexcept {
    if (fd_ < 0)
        return -1;
    auto *p = static_cast<char *>(buffer);
    size_t done = 0;
    while (done < size) {
        const size_t want = size - done < kChunk ? size - done : kChunk;
        const int got = ::_read(fd_, p + done, static_cast<unsigned>(want));
        if (got < 0)
            return done > 0 ? static_cast<int64_t>(done) : -1;
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
        const size_t want = size - done < kChunk ? size - done : kChunk;
        const int put = ::_write(fd_, p + done, static_cast<unsigned>(want));
        if (put <= 0)
            return false; // a full disk writes nothing rather than failing on some runtimes
        done += static_cast<size_t>(put);
    }
    return true;
}

bool File::seek(int64_t offset) noexcept { return fd_ >= 0 && offset >= 0 && ::_lseeki64(fd_, offset, SEEK_SET) == offset; }

// The runtime has no positioned transfer: a seek and a read or write, which
// is what the callers would do themselves.
bool File::read_at(int64_t offset, void *buffer, size_t size) noexcept {
    return seek(offset) && read(buffer, size) == static_cast<int64_t>(size);
}

bool File::write_at(int64_t offset, const void *buffer, size_t size) noexcept {
    return seek(offset) && write(buffer, size);
}

int64_t File::tell() const noexcept { return fd_ < 0 ? -1 : ::_telli64(fd_); }

int64_t File::size() const noexcept { return fd_ < 0 ? -1 : ::_filelengthi64(fd_); }

bool File::truncate(int64_t size) noexcept { return fd_ >= 0 && size >= 0 && ::_chsize_s(fd_, size) == 0; }

bool File::flush() noexcept { return fd_ >= 0 && ::_commit(fd_) == 0; }

bool File::close() noexcept {
    if (fd_ < 0)
        return true;
    const int rc = ::_close(fd_);
    fd_ = -1;
    return rc == 0;
}

bool file_exists(std::string_view path) {
    const DWORD a = attributes(path);
    return a != INVALID_FILE_ATTRIBUTES && (a & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool directory_exists(std::string_view path) {
    const DWORD a = attributes(path);
    return a != INVALID_FILE_ATTRIBUTES && (a & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

int64_t file_size(std::string_view path) {
    const std::string native = native_path(path);
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!usable(native) || !GetFileAttributesExA(native.c_str(), GetFileExInfoStandard, &data) ||
        (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return -1;
    return static_cast<int64_t>((static_cast<uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow);
}

// A read-only file stays (platform/file_ops.h).
bool delete_file(std::string_view path) { return remove_file(path) == kNoError; }

bool rename_file(std::string_view from, std::string_view to, int *error) {
    const std::string a = native_path(from), b = native_path(to);
    if (!usable(a) || !usable(b)) {
        if (error)
            *error = a.empty() || b.empty() ? kNoSuchFile : kInvalid;
        return false;
    }
    // The runtime's rename refuses an existing target, as the library's
    // rule wants; Microsoft's runtime says EACCES, Wine's EEXIST, and the
    // library says 13 on every system.
    if (std::rename(a.c_str(), b.c_str()) != 0) {
        if (error)
            *error = errno == EEXIST ? kAccessDenied : runtime_error(errno);
        return false;
    }
    if (error)
        *error = kNoError;
    return true;
}

} // namespace brindle::platform
