// The caller's "ANSI code page" on POSIX is Latin-1: every byte is the
// Unicode character of the same number, so the round trip is exact for
// bytes and anything beyond U+00FF becomes "?" (as a best-fit mapping does).
#include "platform/ole.h"

#include <vector>

namespace brindle::platform {

std::string wide_to_ansi(const OLECHAR *text, size_t length) {
    std::string out(length, '\0');
    for (size_t i = 0; i < length; ++i)
        out[i] = text[i] < 256 ? static_cast<char>(text[i]) : '?';
    return out;
}

BSTR ansi_to_wide(const char *bytes, size_t length) {
    BSTR wide = SysAllocStringLen(nullptr, static_cast<UINT>(length));
    if (wide == nullptr)
        return nullptr;
    for (size_t i = 0; i < length; ++i)
        wide[i] = static_cast<unsigned char>(bytes[i]);
    return wide;
}

} // namespace brindle::platform
