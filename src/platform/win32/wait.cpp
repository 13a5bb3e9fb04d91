// Waiting on Windows: dispatch the thread's window messages, then sleep in
// the message wait until a new message or the time-out, so a caller's
// windows keep painting and the processor stays idle.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include "platform/wait.h"

namespace brindle::platform {

void pump_wait(uint32_t ms) noexcept {
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
    if (ms == 0)
        return;
    // Wakes for any input that arrives from now on; the caller loops on the
    // tick count and calls again, which dispatches it.
    MsgWaitForMultipleObjectsEx(0, nullptr, ms, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}

} // namespace brindle::platform
