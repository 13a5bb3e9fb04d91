#include "platform/wait.h"

#include <cerrno>
#include <ctime>

namespace brindle::platform {

void pump_wait(uint32_t ms) noexcept {
    // No window messages on POSIX: just sleep, resuming after a signal.
    timespec left{static_cast<time_t>(ms / 1000u), static_cast<long>(ms % 1000u) * 1000000L};
    while (nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
}

} // namespace brindle::platform
