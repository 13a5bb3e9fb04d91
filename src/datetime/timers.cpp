// Timers and waits: the exports over the timer tables.
#include "datetime/timer_tables.h"
#include "frame/frame.h"

using namespace brindle::datetime;
using brindle::frame::vb_bool;

BRINDLE_EXPORT(int32_t) cStartBasisTimer() {
    uint32_t start = 0;
    start_timer(0, &start);
    return static_cast<int32_t>(start);
}

BRINDLE_EXPORT(int32_t) cStopBasisTimer() { return static_cast<int32_t>(stop_timer(0)); }
BRINDLE_EXPORT(int32_t) cReadBasisTimer() { return static_cast<int32_t>(read_timer(0)); }

BRINDLE_EXPORT(int16_t) cStartTimer(int16_t Timer) { return vb_bool(start_timer(Timer)); }
BRINDLE_EXPORT(int32_t) cStopTimer(int16_t Timer) { return static_cast<int32_t>(stop_timer(Timer)); }
BRINDLE_EXPORT(int32_t) cReadTimer(int16_t Timer) { return static_cast<int32_t>(read_timer(Timer)); }

// The duration is kept as an unsigned count of milliseconds.
BRINDLE_EXPORT(int16_t) cSetWait(int16_t Timer, int32_t Duration) {
    return vb_bool(set_wait(Timer, static_cast<uint32_t>(Duration)));
}
BRINDLE_EXPORT(int16_t) cStartWait(int16_t Timer) { return vb_bool(start_wait(Timer)); }
BRINDLE_EXPORT(int16_t) cCheckWait(int16_t Timer) { return vb_bool(check_wait(Timer)); }

BRINDLE_EXPORT(int16_t) cSleep(int32_t Milliseconds) { return vb_bool(sleep_pumping(Milliseconds)); }

BRINDLE_EXPORT(int16_t) cTimerOpen() { return static_cast<int16_t>(open_handle_timer()); }
// Reset and start are two names for one operation.
BRINDLE_EXPORT(int16_t) cTimerReset(int16_t Handle) { return vb_bool(restart_handle_timer(Handle)); }
BRINDLE_EXPORT(int16_t) cTimerStart(int16_t Handle) { return vb_bool(restart_handle_timer(Handle)); }
BRINDLE_EXPORT(int32_t) cTimerRead(int16_t Handle) { return static_cast<int32_t>(read_handle_timer(Handle)); }
BRINDLE_EXPORT(int16_t) cTimerClose(int16_t Handle) { return vb_bool(close_handle_timer(Handle)); }
