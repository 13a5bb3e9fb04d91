// Standard streams on POSIX: descriptors 0, 1 and 2, bytes unchanged.
#include "platform/std_streams.h"

#include <cerrno>
#include <unistd.h>

namespace brindle::platform {

int64_t std_read(void *buffer, size_t size) noexcept {
    for (;;) {
        const ssize_t got = ::read(0, buffer, size);
        if (got >= 0)
            return got;
        if (errno != EINTR)
            return -1;
    }
}

bool std_write(StdStream which, const void *buffer, size_t size) noexcept {
    const int fd = which == StdStream::Error ? 2 : 1;
    const auto *p = static_cast<const char *>(buffer);
    while (size > 0) {
        const ssize_t put = ::write(fd, p, size);
        if (put < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        p += put;
        size -= static_cast<size_t>(put);
    }
    return true;
}

bool std_text_mode() noexcept { return false; }

} // namespace brindle::platform
