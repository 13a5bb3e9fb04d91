// The read-only rule on Windows, kept by the library itself. The system
// refuses to write, replace or delete a read-only file for an ordinary
// user, but not every system that runs the library does so for every user
// (Wine run as root lets root write, replace and remove read-only files), so
// each call that writes checks the attribute first and refuses as the
// system would: access denied.
#pragma once

#include <windows.h>

#include <string>

namespace brindle::platform::win32 {

// True when `native` names an existing entry whose read-only bit is set.
// A directory counts only when `directories` is true; a symbolic link or
// junction never does (removing a link leaves its target alone).
inline bool read_only_entry(const std::string &native, bool directories = false) {
    const DWORD a = ::GetFileAttributesA(native.c_str());
    if (a == INVALID_FILE_ATTRIBUTES || (a & FILE_ATTRIBUTE_READONLY) == 0 || (a & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
        return false;
    return directories || (a & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

// True when the open file behind `handle` is read-only (an open by handle
// has no window in which the name could come to mean another file).
inline bool read_only_handle(HANDLE handle) {
    BY_HANDLE_FILE_INFORMATION info{};
    return handle != INVALID_HANDLE_VALUE && ::GetFileInformationByHandle(handle, &info) != 0 &&
           (info.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0;
}

} // namespace brindle::platform::win32
