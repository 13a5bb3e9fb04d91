// The OLE Automation types and calls, from the system on Windows and from the
// library's own subset on POSIX. Everything above the platform layer includes
// this header, never the system's.
#pragma once

#ifdef _WIN32
#include "platform/win32/ole_system.h"
#else
#include <brindle/ole.h>
#endif

#include <cstddef>
#include <string>

namespace brindle::platform {

// Wide (UTF-16) text as the caller's ANSI bytes: the system code page on
// Windows; on POSIX Latin-1, with "?" for characters beyond it.
std::string wide_to_ansi(const OLECHAR *text, size_t length);

// ANSI bytes as a wide string (the inverse mapping), as a new BSTR or null.
BSTR ansi_to_wide(const char *bytes, size_t length);

} // namespace brindle::platform
