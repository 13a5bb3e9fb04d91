// Profile files through the system's own calls.
#include "platform/profile.h"

#include <windows.h>

namespace brindle::platform {

uint32_t profile_read(const char *section, const char *key, const char *fallback, char *buffer, uint32_t size,
                      const char *file) {
    return GetPrivateProfileStringA(section, key, fallback, buffer, size, file);
}

int32_t profile_write(const char *section, const char *key, const char *value, const char *file) {
    return WritePrivateProfileStringA(section, key, value, file);
}

uint32_t system_directory(char *buffer, uint32_t size) { return GetSystemDirectoryA(buffer, size); }

uint32_t windows_directory(char *buffer, uint32_t size) { return GetWindowsDirectoryA(buffer, size); }

} // namespace brindle::platform
