// Delete, directories, the system's copy and move on Windows: the runtime's
// and the system's own calls, after the library's own check of the
// read-only rule (platform/win32/read_only.h).
#include "platform/file_ops.h"
#include "platform/win32/read_only.h"

#include <windows.h>

#include <cerrno>
#include <direct.h>
#include <io.h>
#include <string>

namespace brindle::platform {

namespace {

bool usable(const std::string &path) { return !path.empty() && path.find('\0') == std::string::npos; }

int runtime_of(int e) {
    switch (e) {
    case ENOENT:
        return kNoSuchFile;
    case EACCES:
        return kAccessDenied;
    case EEXIST:
        return kFileExists;
    default:
        return e > 0 ? e : kIoError;
    }
}

} // namespace

int remove_file(std::string_view path) {
    const std::string native = native_path(path);
    if (!usable(native))
        return native.empty() ? kNoSuchFile : kInvalid;
    if (win32::read_only_entry(native))
        return kAccessDenied;
    return ::_unlink(native.c_str()) == 0 ? kNoError : runtime_of(errno);
}

int make_directory(std::string_view path) {
    const std::string native = native_path(path);
    if (!usable(native))
        return native.empty() ? kNoSuchFile : kInvalid;
    return ::_mkdir(native.c_str()) == 0 ? kNoError : runtime_of(errno);
}

int remove_directory(std::string_view path) {
    const std::string native = native_path(path);
    if (!usable(native))
        return native.empty() ? kNoSuchFile : kInvalid;
    if (win32::read_only_entry(native, true))
        return kAccessDenied; // a read-only directory stays, as the rule says everywhere
    return ::_rmdir(native.c_str()) == 0 ? kNoError : runtime_of(errno);
}

uint32_t system_copy_file(std::string_view from, std::string_view to, bool fail_if_exists) {
    const std::string a = native_path(from), b = native_path(to);
    if (!usable(a) || !usable(b))
        return a.empty() || b.empty() ? kSysPathNotFound : kSysInvalidName;
    if (!fail_if_exists && same_file(a, b))
        return kSysSharingViolation; // never truncate the source through a second name
    if (!fail_if_exists && win32::read_only_entry(b))
        return kSysAccessDenied;
    if (::CopyFileExA(a.c_str(), b.c_str(), nullptr, nullptr, nullptr, fail_if_exists ? COPY_FILE_FAIL_IF_EXISTS : 0))
        return kSysOk;
    const DWORD e = ::GetLastError();
    return e != 0 ? static_cast<uint32_t>(e) : static_cast<uint32_t>(kSysAccessDenied);
}

uint32_t system_move_file(std::string_view from, std::string_view to, bool replace, bool allow_copy) {
    const std::string a = native_path(from), b = native_path(to);
    if (!usable(a) || !usable(b))
        return a.empty() || b.empty() ? kSysPathNotFound : kSysInvalidName;
    if (replace && same_file(a, b) && a != b)
        return kSysAccessDenied; // two names of one file
    if (replace && win32::read_only_entry(b) && !same_file(a, b))
        return kSysAccessDenied;
    DWORD flags = 0;
    if (replace)
        flags |= MOVEFILE_REPLACE_EXISTING;
    if (allow_copy)
        flags |= MOVEFILE_COPY_ALLOWED;
    if (::MoveFileExA(a.c_str(), b.c_str(), flags))
        return kSysOk;
    const DWORD e = ::GetLastError();
    return e != 0 ? static_cast<uint32_t>(e) : static_cast<uint32_t>(kSysAccessDenied);
}

Offload copy_offload(File &, File &, int64_t *copied) noexcept {
    *copied = 0;
    return Offload::Unsupported;
}

} // namespace brindle::platform
