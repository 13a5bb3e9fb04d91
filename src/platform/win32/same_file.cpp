// same_file on Windows: one volume and file index.
#include "platform/file.h"

#include <windows.h>

namespace brindle::platform {

namespace {

bool identity(const std::string &path, BY_HANDLE_FILE_INFORMATION &info) {
    // No access rights are needed to read the identity, and every sharing
    // mode is allowed so that an open file can be asked too.
    HANDLE h = CreateFileA(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                           OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (h == INVALID_HANDLE_VALUE)
        return false;
    const bool ok = GetFileInformationByHandle(h, &info) != 0;
    CloseHandle(h);
    return ok;
}

} // namespace

bool same_file(std::string_view a, std::string_view b) {
    const std::string na = native_path(a), nb = native_path(b);
    BY_HANDLE_FILE_INFORMATION ia{}, ib{};
    if (na.empty() || nb.empty() || !identity(na, ia) || !identity(nb, ib))
        return false;
    return ia.dwVolumeSerialNumber == ib.dwVolumeSerialNumber && ia.nFileIndexHigh == ib.nFileIndexHigh &&
           ia.nFileIndexLow == ib.nFileIndexLow;
}

} // namespace brindle::platform
