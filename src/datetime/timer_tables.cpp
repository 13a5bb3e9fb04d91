#include "datetime/timer_tables.h"

#include "platform/clock.h"
#include "platform/wait.h"

namespace brindle::datetime {

namespace {

struct Stopwatch {
    uint32_t start, stop, elapsed;
};
struct Wait {
    uint32_t deadline, duration;
};
struct HandleTimer {
    bool open;
    uint32_t start;
};

uint32_t platform_ticks() { return platform::tick_count(); }

TickSource g_ticks = platform_ticks;
Stopwatch g_timers[kTimerCount];
Wait g_waits[kTimerCount];
HandleTimer g_handles[kHandleTimerCount + 1]; // slot 0 unused: handles count from 1

bool numbered(int32_t n) { return n >= 0 && n < kTimerCount; }
bool open_handle(int32_t h) { return h >= 1 && h <= kHandleTimerCount && g_handles[h].open; }

} // namespace

uint32_t ticks() { return g_ticks(); }

void replace_tick_source_for_tests(TickSource source) { g_ticks = source != nullptr ? source : platform_ticks; }

void reset_timers_for_tests() {
    for (Stopwatch &t : g_timers)
        t = {};
    for (Wait &w : g_waits)
        w = {};
    for (HandleTimer &h : g_handles)
        h = {};
}

bool start_timer(int32_t n, uint32_t *start_tick) {
    if (!numbered(n))
        return false;
    g_timers[n].start = ticks();
    if (start_tick != nullptr)
        *start_tick = g_timers[n].start;
    return true;
}

uint32_t stop_timer(int32_t n) {
    if (!numbered(n))
        return 0;
    Stopwatch &t = g_timers[n];
    t.stop = ticks();
    t.elapsed = t.stop - t.start;
    return t.elapsed;
}

uint32_t read_timer(int32_t n) {
    if (!numbered(n))
        return 0;
    Stopwatch &t = g_timers[n];
    t.elapsed = ticks() - t.start;
    return t.elapsed;
}

bool set_wait(int32_t n, uint32_t duration_ms) {
    if (!numbered(n))
        return false;
    g_waits[n].duration = duration_ms;
    return true;
}

bool start_wait(int32_t n) {
    if (!numbered(n))
        return false;
    g_waits[n].deadline = ticks() + g_waits[n].duration;
    return true;
}

bool check_wait(int32_t n) {
    // Callers are meant to pass 0..65 here; anything else is refused rather
    // than read outside the table.
    if (!numbered(n))
        return false;
    // "Strictly before now", as a signed distance so a wrap between the
    // start and the check does not matter.
    return static_cast<int32_t>(ticks() - g_waits[n].deadline) > 0;
}

int32_t open_handle_timer() {
    for (int32_t h = 1; h <= kHandleTimerCount; ++h) {
        if (!g_handles[h].open) {
            g_handles[h].open = true;
            return h;
        }
    }
    return 0;
}

bool restart_handle_timer(int32_t handle) {
    if (!open_handle(handle))
        return false;
    g_handles[handle].start = ticks();
    return true;
}

int64_t read_handle_timer(int32_t handle) {
    if (!open_handle(handle))
        return -1;
    return ticks() - g_handles[handle].start;
}

bool close_handle_timer(int32_t handle) {
    if (!open_handle(handle))
        return false;
    g_handles[handle].open = false;
    return true;
}

bool sleep_pumping(int32_t ms) {
    if (ms < 0)
        return false;
    const uint32_t deadline = ticks() + static_cast<uint32_t>(ms);
    for (;;) {
        // Remaining time as a signed distance: survives a wrap of the counter.
        const int32_t left = static_cast<int32_t>(deadline - ticks());
        // Pump first, so even a wait of 0 dispatches what is waiting. Done
        // once the tick count exceeds the deadline, so wait one tick past it.
        platform::pump_wait(left >= 0 ? static_cast<uint32_t>(left) + 1u : 0u);
        if (static_cast<int32_t>(ticks() - deadline) > 0)
            return true;
    }
}

} // namespace brindle::datetime
