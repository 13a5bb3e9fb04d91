// The timer tables on a tick source the test drives, so elapsed times are
// exact and a wrap of the 32-bit counter can be staged.
#include "datetime/timer_tables.h"

#include "support/ole_helpers.h"

#include <gtest/gtest.h>

#include <ctime>

using namespace brindle::datetime;

namespace {

uint32_t g_now = 0;
uint32_t fake_ticks() { return g_now; }

class FakeTicks : public ::testing::Test {
  protected:
    void SetUp() override {
        reset_timers_for_tests();
        g_now = 1000;
        replace_tick_source_for_tests(fake_ticks);
    }
    void TearDown() override {
        replace_tick_source_for_tests(nullptr);
        reset_timers_for_tests();
    }
};

} // namespace

TEST_F(FakeTicks, NumberedTimersMeasureExactly) {
    EXPECT_EQ(cStartBasisTimer(), 1000);
    g_now = 1250;
    EXPECT_EQ(cReadBasisTimer(), 250);
    EXPECT_EQ(cReadTimer(0), 250) << "the basis timer is timer 0";
    g_now = 1300;
    EXPECT_EQ(cStopBasisTimer(), 300);
    g_now = 5000;
    EXPECT_EQ(cStopTimer(0), 4000) << "stopping again measures from the same start";
    EXPECT_EQ(cStartTimer(65), -1);
    EXPECT_EQ(cStartTimer(7), -1);
    g_now = 5123;
    EXPECT_EQ(cReadTimer(65), 123);
    EXPECT_EQ(cStopTimer(7), 123);
    EXPECT_EQ(cReadTimer(0), 4123) << "timers are independent";
}

// Numbers outside 0..65 and handles outside 1..64 are refused rather than
// read or written outside the tables.
TEST_F(FakeTicks, StrangeNumbersAndHandlesAreRefused) {
    for (int16_t n : {int16_t{66}, int16_t{-1}, int16_t{-32768}, int16_t{32767}}) {
        EXPECT_EQ(cStartTimer(n), 0) << n;
        EXPECT_EQ(cStopTimer(n), 0) << n;
        EXPECT_EQ(cReadTimer(n), 0) << n;
        EXPECT_EQ(cSetWait(n, 5), 0) << n;
        EXPECT_EQ(cStartWait(n), 0) << n;
        EXPECT_EQ(cCheckWait(n), 0) << n;
    }
    for (int16_t bad : {int16_t{0}, int16_t{65}, int16_t{-1}, int16_t{32767}}) {
        EXPECT_EQ(cTimerStart(bad), 0) << bad;
        EXPECT_EQ(cTimerReset(bad), 0) << bad;
        EXPECT_EQ(cTimerRead(bad), -1) << bad;
        EXPECT_EQ(cTimerClose(bad), 0) << bad;
    }
}

TEST_F(FakeTicks, ElapsedTimesSurviveAWrapOfTheCounter) {
    g_now = 0xFFFFFF00u;
    EXPECT_EQ(cStartTimer(3), -1);
    EXPECT_EQ(cSetWait(0, 0x200), -1);
    EXPECT_EQ(cStartWait(0), -1);
    const int16_t h = cTimerOpen();
    EXPECT_EQ(cTimerStart(h), -1);
    g_now = 0x00000100u; // 0x200 ticks later, past the wrap
    EXPECT_EQ(cReadTimer(3), 0x200);
    EXPECT_EQ(cTimerRead(h), 0x200);
    EXPECT_EQ(cCheckWait(0), 0) << "the deadline is now, not before now";
    g_now = 0x00000101u;
    EXPECT_EQ(cCheckWait(0), -1);
    EXPECT_EQ(cStopTimer(3), 0x201);
}

TEST_F(FakeTicks, WaitsExpireStrictlyAfterTheirDeadline) {
    EXPECT_EQ(cSetWait(65, 100), -1);
    EXPECT_EQ(cStartWait(65), -1);
    for (const auto &[now, expired] : {std::pair{1099u, 0}, {1100u, 0}, {1101u, -1}}) {
        g_now = now;
        EXPECT_EQ(cCheckWait(65), expired) << now;
    }
    EXPECT_EQ(cStartWait(65), -1) << "restarting keeps the stored duration";
    EXPECT_EQ(cCheckWait(65), 0);
    g_now = 1202;
    EXPECT_EQ(cCheckWait(65), -1);
}

// Handles open lowest first; a reopened handle keeps the previous user's
// start tick (never started: tick 0).
TEST_F(FakeTicks, HandleTimersOpenLowestFirstAndKeepTheirStart) {
    for (int i = 1; i <= 64; ++i)
        EXPECT_EQ(cTimerOpen(), i);
    EXPECT_EQ(cTimerOpen(), 0) << "all 64 are in use";
    g_now = 4000;
    EXPECT_EQ(cTimerRead(10), 4000) << "never started: measured from tick 0";
    EXPECT_EQ(cTimerReset(10), -1);
    g_now = 4500;
    EXPECT_EQ(cTimerClose(10), -1);
    EXPECT_EQ(cTimerClose(10), 0) << "already closed";
    EXPECT_EQ(cTimerReset(10), 0);
    EXPECT_EQ(cTimerRead(10), -1);
    EXPECT_EQ(cTimerOpen(), 10) << "the lowest free handle again";
    EXPECT_EQ(cTimerRead(10), 500) << "opening does not set the start tick";
    EXPECT_EQ(cTimerStart(10), -1);
    EXPECT_EQ(cTimerRead(10), 0);
    for (int16_t h = 1; h <= 64; ++h)
        EXPECT_EQ(cTimerClose(h), -1) << h;
}

namespace {

// Processor time used by the process, in milliseconds. Windows' clock()
// counts wall time since the start, so there it comes from GetProcessTimes.
double cpu_time_ms() {
#ifdef _WIN32
    FILETIME created, exited, kernel, user;
    if (!GetProcessTimes(GetCurrentProcess(), &created, &exited, &kernel, &user))
        return 0.0;
    const auto ms = [](const FILETIME &t) {
        return static_cast<double>((static_cast<uint64_t>(t.dwHighDateTime) << 32) | t.dwLowDateTime) / 10000.0;
    };
    return ms(kernel) + ms(user);
#else
    return 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
#endif
}

} // namespace

// cSleep on the real clock: it waits at least the time asked (the tick count
// has to pass start + ms) and returns true, waiting in the system rather than
// spinning; a negative time is refused at once. A spinning wait gets only its
// share of a busy machine's processors, so the bound is well below half.
TEST(Sleep, WaitsAtLeastTheTimeAskedWithoutSpinning) {
    EXPECT_EQ(cSleep(-1), 0);
    EXPECT_EQ(cSleep(INT32_MIN), 0);
    EXPECT_EQ(cSleep(0), -1);
    const double cpu_before = cpu_time_ms();
    const uint32_t before = ticks();
    EXPECT_EQ(cSleep(300), -1);
    const double cpu_ms = cpu_time_ms() - cpu_before;
    const uint32_t wall_ms = ticks() - before;
    EXPECT_GE(wall_ms, 301u) << "the tick count must exceed start + 300";
    EXPECT_LT(cpu_ms, 0.15 * wall_ms) << "a busy loop would use much of the wait";
}
