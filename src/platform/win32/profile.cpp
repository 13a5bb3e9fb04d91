// Profile files through the system's own calls.
#include "platform/profile.h"
#include "platform/win32/read_only.h"

#include <windows.h>

#include <string>

namespace brindle::platform {

uint32_t profile_read(const char *section, const char *key, const char *fallback, char *buffer, uint32_t size,
                      const char *file) {
    return GetPrivateProfileStringA(section, key, fallback, buffer, size, file);
}

namespace {

// The file a profile call works on: a name without a backslash or slash
// lives in the Windows directory, any other is taken as it stands.
std::string profile_path(const char *file) {
    const std::string name = file == nullptr ? "win.ini" : file;
    if (name.find_first_of("\\/") != std::string::npos)
        return name;
    char dir[MAX_PATH + 1];
    const UINT n = GetWindowsDirectoryA(dir, sizeof dir);
    if (n == 0 || n >= sizeof dir)
        return name;
    std::string path(dir, n);
    if (path.back() != '\\')
        path.push_back('\\');
    return path + name;
}

} // namespace

int32_t profile_write(const char *section, const char *key, const char *value, const char *file) {
    // A read-only profile is not rewritten, whoever asks (a flush, with no
    // section, writes nothing of its own).
    if (section != nullptr && win32::read_only_entry(profile_path(file))) {
        SetLastError(ERROR_ACCESS_DENIED);
        return 0;
    }
    return WritePrivateProfileStringA(section, key, value, file);
}

uint32_t system_directory(char *buffer, uint32_t size) { return GetSystemDirectoryA(buffer, size); }

uint32_t windows_directory(char *buffer, uint32_t size) { return GetWindowsDirectoryA(buffer, size); }

} // namespace brindle::platform
