// What the file system under the tests keeps of the attribute bits, asked
// of the system directly (not through the library), so that a test can
// tell a library fault from a system that stores less. Windows keeps every
// bit; Wine reports archive on every file whatever was set, and keeps no
// read-only bit on a directory. On POSIX the library stores the bits itself
// and keeps them all.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>

#ifdef _WIN32
#include <windows.h>
#endif

namespace brindle::test {

#ifdef _WIN32
// Makes `name` (a scratch file or directory), asks the system for `asked`
// and tells whether the system reports it back exactly (with the directory
// bit for a directory). The entry is left with the normal attributes.
inline bool system_keeps_attributes(const std::string &name, bool directory, DWORD asked) {
    if (directory) {
        std::filesystem::create_directory(name);
    } else {
        std::ofstream(name, std::ios::binary) << "probe";
    }
    const DWORD want = asked | (directory ? FILE_ATTRIBUTE_DIRECTORY : 0);
    const bool kept = ::SetFileAttributesA(name.c_str(), asked) && ::GetFileAttributesA(name.c_str()) == want;
    ::SetFileAttributesA(name.c_str(), FILE_ATTRIBUTE_NORMAL);
    std::error_code ignored;
    std::filesystem::remove(name, ignored);
    return kept;
}
// A file whose attributes are set to "normal" no longer reports archive.
inline bool system_clears_archive() { return system_keeps_attributes("~archive.probe", false, FILE_ATTRIBUTE_NORMAL); }
// A directory keeps a read-only bit set on it.
inline bool system_keeps_read_only_directories() {
    return system_keeps_attributes("~readonly.probe", true, FILE_ATTRIBUTE_READONLY);
}
#else
inline bool system_clears_archive() { return true; }
inline bool system_keeps_read_only_directories() { return true; }
#endif

} // namespace brindle::test
