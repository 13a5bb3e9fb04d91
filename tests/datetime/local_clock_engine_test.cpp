// The local clock as the date exports use it, with the reader and the setter
// replaced so that nothing here touches the machine's clock.
#include "datetime/calendar.h"
#include "datetime/local_clock.h"

#include "support/ole_helpers.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

using namespace brindle::datetime;

namespace {

const LocalTime kFakeStart{2001, 12, 24, 18, 5, 9, 7, 1};
LocalTime g_fake_now{}, g_last_set{};
int g_set_calls = 0;
bool g_accept = true;

LocalTime fake_now() { return g_fake_now; }
bool fake_set(const LocalTime &value) {
    ++g_set_calls;
    g_last_set = value;
    return g_accept;
}

class FakeClock : public ::testing::Test {
  protected:
    void SetUp() override {
        g_fake_now = kFakeStart;
        g_set_calls = 0;
        g_accept = true;
        replace_local_clock_for_tests(fake_now, fake_set);
    }
    void TearDown() override { replace_local_clock_for_tests(nullptr, nullptr); }
};

std::string text(BSTR b) {
    std::string s(reinterpret_cast<const char *>(b), SysStringByteLen(b));
    SysFreeString(b);
    return s;
}

// Year, month, day, hour, minute, second, millisecond: what the setter got.
using Fields = std::array<int, 7>;
Fields fields(const LocalTime &t) { return {t.year, t.month, t.day, t.hour, t.minute, t.second, t.millisecond}; }

} // namespace

TEST_F(FakeClock, EachValidFieldReplacesTheCurrentOne) {
    const struct {
        int16_t y, mo, d, h, mi, s, ms;
        Fields expected;
    } rows[] = {
        {2030, 6, 15, 1, 2, 3, 4, {2030, 6, 15, 1, 2, 3, 4}},
        {0, 0, 0, -1, -1, -1, -1, {2001, 12, 24, 18, 5, 9, 7}},    // nothing valid: all kept
        {-5, 3, -1, 24, 60, 60, 1000, {2001, 3, 24, 18, 5, 9, 7}}, // only the month
        {0, 0, 0, 0, 0, 0, 0, {2001, 12, 24, 0, 0, 0, 0}},         // 0 is a valid time field
        {0, 0, 0, 23, 59, 59, 999, {2001, 12, 24, 23, 59, 59, 999}},
        // Above 0 is all the date fields ask: the system refuses month 13.
        {0, 13, 40, -1, -1, -1, -1, {2001, 13, 40, 18, 5, 9, 7}},
    };
    for (const auto &r : rows) {
        EXPECT_EQ(cSetLocalDateTime(r.y, r.mo, r.d, r.h, r.mi, r.s, r.ms), -1);
        EXPECT_EQ(fields(g_last_set), r.expected);
    }
    // The time alone always sets 250 milliseconds.
    EXPECT_EQ(cSetLocalTime(7, 8, 9), -1);
    EXPECT_EQ(fields(g_last_set), (Fields{2001, 12, 24, 7, 8, 9, 250}));
    EXPECT_EQ(cSetLocalTime(-1, 99, 30), -1);
    EXPECT_EQ(fields(g_last_set), (Fields{2001, 12, 24, 18, 5, 30, 250}));
    // A refusal is reported as false.
    g_accept = false;
    EXPECT_EQ(cSetLocalDateTime(2030, 1, 1, 0, 0, 0, 0), 0);
    EXPECT_EQ(cSetLocalTime(1, 2, 3), 0);
    EXPECT_EQ(g_set_calls, static_cast<int>(std::size(rows)) + 4);
}

TEST_F(FakeClock, CurrentTimeReaders) {
    EXPECT_EQ(cCurrentTime(), 18 * 60 + 5);
    EXPECT_EQ(cExtCurrentTime(), (18 * 60 + 5) * 60 + 9);
    EXPECT_EQ(text(cFmtCurrentTime()), "18:05");
    EXPECT_EQ(text(cFmtExtCurrentTime()), "18:05:09");
    EXPECT_EQ(text(cFmtVeryExtCurrentTime()), "18:05:09.007");
    EXPECT_EQ(cActualDateInScalar(), 730843) << "24 December 2001";
    g_fake_now = LocalTime{1999, 1, 2, 0, 0, 0, 999, 6};
    EXPECT_EQ(cCurrentTime(), 0);
    EXPECT_EQ(text(cFmtVeryExtCurrentTime()), "00:00:00.999");
    std::array<int16_t, 8> f{};
    cGetLocalDateTime(&f[0], &f[1], &f[2], &f[3], &f[4], &f[5], &f[6], &f[7]);
    EXPECT_EQ(f, (std::array<int16_t, 8>{1999, 1, 6, 2, 0, 0, 0, 999}))
        << "year, month, day of week, day, h, m, s, ms";
}

// Against the real clock: the platform refuses what is not a date, before
// asking the system, so this is safe even with the right to set the clock.
TEST(PlatformClock, ImpossibleDatesAreRefusedNotNormalised) {
    const Fields bad[] = {
        {2001, 2, 29, 0, 0, 0, 0},  {2000, 2, 30, 0, 0, 0, 0}, {2001, 4, 31, 0, 0, 0, 0}, {2001, 13, 1, 0, 0, 0, 0},
        {2001, 0, 1, 0, 0, 0, 0},   {2001, 1, 0, 0, 0, 0, 0},  {2001, 1, 1, 24, 0, 0, 0}, {2001, 1, 1, 0, 60, 0, 0},
        {2001, 1, 1, 0, 0, 60, 0},  {2001, 1, 1, 0, 0, 0, 1000}, {1600, 1, 1, 0, 0, 0, 0}, {30828, 1, 1, 0, 0, 0, 0},
    };
    for (const Fields &b : bad)
        EXPECT_FALSE(brindle::platform::set_local_time(LocalTime{b[0], b[1], b[2], b[3], b[4], b[5], b[6], 0}))
            << b[0] << "-" << b[1] << "-" << b[2] << " " << b[3] << ":" << b[4] << ":" << b[5] << "." << b[6];
}

// The platform's local time carries the right day of the week (0 Sunday,
// as the scalar's), and the corrected readers follow the offset.
TEST(PlatformClock, CalendarTimeAsLocalTime) {
    LocalTime t{};
    const int64_t now = brindle::platform::calendar_time();
    EXPECT_GT(now, int64_t{1600000000});
    ASSERT_TRUE(brindle::platform::local_time_at(now, t));
    EXPECT_GE(t.year, 2020);
    EXPECT_EQ(t.day_of_week, day_of_week(scalar_from_date(t.year, t.month, t.day), 0));
    const LocalTime clock = brindle::platform::local_now();
    EXPECT_EQ(clock.day_of_week, day_of_week(scalar_from_date(clock.year, clock.month, clock.day), 0));
    // Allow a second's tick and an hour of daylight saving between readings.
    const int32_t base = cExtCurrentTimeCorrected(0), ahead = cExtCurrentTimeCorrected(600);
    const int32_t diff = ((ahead - base) % 86400 + 86400) % 86400;
    EXPECT_TRUE((diff >= 600 && diff <= 602) || (diff >= 600 + 3600 - 2 && diff <= 600 + 3600 + 2) ||
                (diff + 3600 >= 600 && diff + 3600 <= 602))
        << diff;
    const int32_t minutes = cCurrentTimeCorrected(0);
    EXPECT_TRUE(minutes >= 0 && minutes < 1440);
    EXPECT_GE(cCurrentTimeCorrected(INT32_MIN), 0);
}
