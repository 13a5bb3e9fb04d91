// Stopwatches and countdown waits on the millisecond tick counter.
//
// Two independent sets: numbered timers and waits 0..65 that need no
// opening (timer 0 doubles as the basis timer), and handle timers 1..64 that
// are opened and closed. Every elapsed time is an unsigned 32-bit difference
// of two tick readings, so one wrap of the counter (every 49.7 days) is
// harmless. The tables are process-wide and unlocked, like the rest of the
// library's state: VB callers are single-threaded.
#pragma once

#include <cstdint>

namespace brindle::datetime {

inline constexpr int32_t kTimerCount = 66;      // numbered timers and waits 0..65
inline constexpr int32_t kHandleTimerCount = 64; // handle timers 1..64

// The tick counter every timer reads (the platform's, unless a test
// replaced it with replace_tick_source_for_tests).
uint32_t ticks();
using TickSource = uint32_t (*)();
void replace_tick_source_for_tests(TickSource source); // nullptr: the platform's
// Clears every table, as at load time (tests only).
void reset_timers_for_tests();

// Numbered timers. Out-of-range numbers are refused (false, 0).
bool start_timer(int32_t n, uint32_t *start_tick = nullptr);
uint32_t stop_timer(int32_t n);  // elapsed ms, also kept as the last elapsed time
uint32_t read_timer(int32_t n);  // elapsed ms so far, also kept as the last elapsed time

// Waits. check_wait is true once the deadline lies strictly in the past.
bool set_wait(int32_t n, uint32_t duration_ms);
bool start_wait(int32_t n);
bool check_wait(int32_t n);

// Handle timers: open gives the lowest free handle (0 when none is free)
// and leaves its start tick as the previous user left it; the others refuse
// a handle that is out of range or not open.
int32_t open_handle_timer();
bool restart_handle_timer(int32_t handle);
int64_t read_handle_timer(int32_t handle); // -1 when refused
bool close_handle_timer(int32_t handle);

// Waits `ms` milliseconds, dispatching the caller's window messages all the
// while (at least once, even for 0), until the tick count has passed
// start + ms; false at once for a negative value.
bool sleep_pumping(int32_t ms);

} // namespace brindle::datetime
