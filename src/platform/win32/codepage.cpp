// The caller's ANSI bytes are in the system's ANSI code page (CP_ACP), as VB
// converts its strings for a Declare call. Characters the code page lacks
// become the code page's default character (best fit, as VB does).
#include "platform/ole.h"

#include <climits>
#include <new>

namespace brindle::platform {

std::string wide_to_ansi(const OLECHAR *text, size_t length) {
    if (length == 0 || text == nullptr)
        return {};
    if (length > static_cast<size_t>(INT_MAX))
        throw std::bad_alloc();
    const int wide = static_cast<int>(length);
    const int needed = WideCharToMultiByte(CP_ACP, 0, text, wide, nullptr, 0, nullptr, nullptr);
    if (needed <= 0)
        return std::string(length, '?');
    std::string out(static_cast<size_t>(needed), '\0');
    const int written = WideCharToMultiByte(CP_ACP, 0, text, wide, out.data(), needed, nullptr, nullptr);
    out.resize(written > 0 ? static_cast<size_t>(written) : 0);
    return out;
}

BSTR ansi_to_wide(const char *bytes, size_t length) {
    if (length == 0 || bytes == nullptr)
        return SysAllocStringLen(nullptr, 0);
    if (length > static_cast<size_t>(INT_MAX))
        return nullptr;
    const int narrow = static_cast<int>(length);
    const int needed = MultiByteToWideChar(CP_ACP, 0, bytes, narrow, nullptr, 0);
    if (needed <= 0)
        return nullptr;
    BSTR wide = SysAllocStringLen(nullptr, static_cast<UINT>(needed));
    if (wide == nullptr)
        return nullptr;
    if (MultiByteToWideChar(CP_ACP, 0, bytes, narrow, wide, needed) != needed) {
        SysFreeString(wide);
        return nullptr;
    }
    return wide;
}

} // namespace brindle::platform
