// Standard streams on Windows: the process's standard handles. The runtime
// keeps them in text mode, which the stream family applies itself.
#include "platform/std_streams.h"

#include <windows.h>

namespace brindle::platform {

int64_t std_read(void *buffer, size_t size) noexcept {
    HANDLE h = GetStdHandle(STD_INPUT_HANDLE);
    if (h == nullptr || h == INVALID_HANDLE_VALUE)
        return -1;
    DWORD got = 0;
    const DWORD want = size > 0x40000000u ? 0x40000000u : static_cast<DWORD>(size);
    if (!ReadFile(h, buffer, want, &got, nullptr))
        return GetLastError() == ERROR_BROKEN_PIPE ? 0 : -1;
    return got;
}

bool std_write(StdStream which, const void *buffer, size_t size) noexcept {
    HANDLE h = GetStdHandle(which == StdStream::Error ? STD_ERROR_HANDLE : STD_OUTPUT_HANDLE);
    if (h == nullptr || h == INVALID_HANDLE_VALUE)
        return false;
    const auto *p = static_cast<const char *>(buffer);
    while (size > 0) {
        const DWORD want = size > 0x40000000u ? 0x40000000u : static_cast<DWORD>(size);
        DWORD put = 0;
        if (!WriteFile(h, p, want, &put, nullptr) || put == 0)
            return false;
        p += put;
        size -= put;
    }
    return true;
}

bool std_text_mode() noexcept { return true; }

} // namespace brindle::platform
