// The OLE Automation types and calls on Windows come from the system
// (oleaut32 and ole32). Only the platform layer includes this header, through
// platform/ole.h.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX // std::min and std::max stay usable everywhere above
#endif

#include <windows.h>
#include <oleauto.h>
