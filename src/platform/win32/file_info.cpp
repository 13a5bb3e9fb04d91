// Attributes, times, status and volume space on Windows: the system's own
// calls, with its error values turned into the runtime's error numbers.
#include "platform/file_info.h"
#include "platform/file.h"

#include <windows.h>

#include <cerrno>
#include <cstdlib>
#include <sys/stat.h>
#include <sys/types.h>
#include <process.h>

namespace brindle::platform {

namespace {

int last_error_to_runtime(DWORD e) {
    switch (e) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_PATHNAME:
    case ERROR_INVALID_DRIVE:
        return kNoSuchFile;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
        return kAccessDenied;
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
        return kNoMemory;
    default:
        return kIoError;
    }
}

int errno_to_runtime(int e) {
    switch (e) {
    case ENOENT:
        return kNoSuchFile;
    case EACCES:
        return kAccessDenied;
    default:
        return e > 0 ? e : kIoError;
    }
}

bool usable(std::string_view path) { return !path.empty() && path.find('\0') == std::string_view::npos; }

int64_t as_int64(const FILETIME &t) {
    return static_cast<int64_t>((static_cast<uint64_t>(t.dwHighDateTime) << 32) | t.dwLowDateTime);
}

FILETIME as_filetime(int64_t v) {
    FILETIME t;
    t.dwLowDateTime = static_cast<DWORD>(static_cast<uint64_t>(v) & 0xFFFFFFFFu);
    t.dwHighDateTime = static_cast<DWORD>(static_cast<uint64_t>(v) >> 32);
    return t;
}

} // namespace

int get_attributes(std::string_view path, uint32_t *attributes) {
    if (!usable(path))
        return kNoSuchFile;
    const std::string text(path);
    const DWORD a = ::GetFileAttributesA(text.c_str());
    if (a == INVALID_FILE_ATTRIBUTES)
        return last_error_to_runtime(::GetLastError());
    *attributes = a;
    return kNoError;
}

int set_attributes(std::string_view path, uint32_t attributes) {
    if (!usable(path))
        return kNoSuchFile;
    const std::string text(path);
    const DWORD before = ::GetFileAttributesA(text.c_str());
    if (before == INVALID_FILE_ATTRIBUTES)
        return last_error_to_runtime(::GetLastError());
    // The system takes the directory and compressed bits from the object
    // itself; asking for nothing else means "normal".
    const DWORD kept = kAttrDirectory | kAttrCompressed | kAttrReparsePoint | kAttrNormal;
    DWORD a = attributes & ~kept;
    if (a == 0)
        a = FILE_ATTRIBUTE_NORMAL;
    if (!::SetFileAttributesA(text.c_str(), a))
        return last_error_to_runtime(::GetLastError());
    // A bit the system accepted but does not keep (Wine keeps no read-only
    // bit on a directory) is a failure, as it is on POSIX: the caller must
    // not believe a directory protected that is not.
    // The file goes back to what it was. Archive is the exception the other
    // way: Wine reports it on every file, and a bit that cannot be cleared
    // is reported as it stands.
    const DWORD wanted = attributes & (kAttrReadOnly | kAttrHidden | kAttrSystem | kAttrArchive | kAttrTemporary);
    const DWORD after = ::GetFileAttributesA(text.c_str());
    if (after != INVALID_FILE_ATTRIBUTES && (after & wanted) != wanted) {
        const DWORD old = before & ~kept;
        ::SetFileAttributesA(text.c_str(), old != 0 ? old : FILE_ATTRIBUTE_NORMAL);
        return kAccessDenied;
    }
    return kNoError;
}

int get_file_times(std::string_view path, FileTimes *times) {
    if (!usable(path))
        return kNoSuchFile;
    const std::string text(path);
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!::GetFileAttributesExA(text.c_str(), GetFileExInfoStandard, &data))
        return last_error_to_runtime(::GetLastError());
    times->created = as_int64(data.ftCreationTime);
    times->accessed = as_int64(data.ftLastAccessTime);
    times->written = as_int64(data.ftLastWriteTime);
    return kNoError;
}

int set_file_times(std::string_view path, const int64_t *created, const int64_t *accessed, const int64_t *written) {
    if (!usable(path))
        return kNoSuchFile;
    const std::string text(path);
    HANDLE h = ::CreateFileA(text.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                             nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (h == INVALID_HANDLE_VALUE)
        return last_error_to_runtime(::GetLastError());
    FILETIME c{}, a{}, w{};
    if (created)
        c = as_filetime(*created);
    if (accessed)
        a = as_filetime(*accessed);
    if (written)
        w = as_filetime(*written);
    const BOOL ok = ::SetFileTime(h, created ? &c : nullptr, accessed ? &a : nullptr, written ? &w : nullptr);
    const DWORD e = ::GetLastError();
    ::CloseHandle(h);
    return ok ? kNoError : last_error_to_runtime(e);
}

int file_status(std::string_view path, FileStatus *status) {
    if (!usable(path))
        return kNoSuchFile;
    const std::string text(path);
    struct _stati64 st;
    if (::_stati64(text.c_str(), &st) != 0)
        return errno_to_runtime(errno);
    status->is_directory = (st.st_mode & _S_IFDIR) != 0;
    status->size = status->is_directory ? 0 : static_cast<int64_t>(st.st_size);
    status->drive = static_cast<int>(st.st_dev);
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (::GetFileAttributesExA(text.c_str(), GetFileExInfoStandard, &data)) {
        status->times.created = as_int64(data.ftCreationTime);
        status->times.accessed = as_int64(data.ftLastAccessTime);
        status->times.written = as_int64(data.ftLastWriteTime);
    } else {
        status->times.created = file_time_from_unix(st.st_ctime);
        status->times.accessed = file_time_from_unix(st.st_atime);
        status->times.written = file_time_from_unix(st.st_mtime);
    }
    return kNoError;
}

bool volume_space(std::string_view root, VolumeSpace *space) {
    if (root.find('\0') != std::string_view::npos)
        return false;
    const std::string text(root);
    const char *name = text.empty() ? nullptr : text.c_str();
    DWORD sectors = 0, bytes = 0, free_clusters = 0, total_clusters = 0;
    if (!::GetDiskFreeSpaceA(name, &sectors, &bytes, &free_clusters, &total_clusters))
        return false;
    space->sectors_per_cluster = sectors;
    space->bytes_per_sector = bytes;
    space->free_clusters = free_clusters;
    space->total_clusters = total_clusters;
    ULARGE_INTEGER caller{}, total{}, free{};
    if (::GetDiskFreeSpaceExA(name, &caller, &total, &free)) {
        space->caller_free_bytes = caller.QuadPart;
        space->total_bytes = total.QuadPart;
        space->free_bytes = free.QuadPart;
    } else {
        const uint64_t cluster = uint64_t{sectors} * bytes;
        space->caller_free_bytes = space->free_bytes = cluster * free_clusters;
        space->total_bytes = cluster * total_clusters;
    }
    return true;
}

std::string current_directory() {
    const DWORD need = ::GetCurrentDirectoryA(0, nullptr);
    if (need == 0)
        return std::string();
    std::string out(need, '\0');
    const DWORD got = ::GetCurrentDirectoryA(need, out.data());
    if (got == 0 || got >= need)
        return std::string();
    out.resize(got);
    return out;
}

bool full_path(std::string_view path, std::string *out, size_t limit) {
    if (!usable(path) || limit == 0)
        return false;
    const std::string text(path);
    std::string buf(limit, '\0');
    if (::_fullpath(buf.data(), text.c_str(), limit) == nullptr)
        return false;
    buf.resize(std::char_traits<char>::length(buf.c_str()));
    *out = std::move(buf);
    return true;
}

uint32_t process_id() noexcept { return static_cast<uint32_t>(::GetCurrentProcessId()); }

} // namespace brindle::platform
