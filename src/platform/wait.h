// Waiting without burning a core while the caller's windows stay alive.
#pragma once

#include <cstdint>

namespace brindle::platform {

// Dispatches every window message waiting for the calling thread, then waits
// until another message arrives or `ms` milliseconds have passed, whichever
// comes first (on Windows). Where the system has no message queue it simply
// waits `ms` milliseconds. Either way it may return early; callers loop on
// the tick count.
void pump_wait(uint32_t ms) noexcept;

} // namespace brindle::platform
