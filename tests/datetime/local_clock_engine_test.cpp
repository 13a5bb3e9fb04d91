// The local clock as the date exports use it, with the reader and the setter
// replaced so that nothing here touches the machine's clock.
#include "datetime/local_clock.h"

#include "support/ole_helpers.h"

#include <gtest/gtest.h>

#include <string>

using namespace brindle::datetime;

namespace {

LocalTime g_fake_now{2001, 12, 24, 18, 5, 9, 7, 1};
LocalTime g_last_set{};
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
        g_fake_now = LocalTime{2001, 12, 24, 18, 5, 9, 7, 1};
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

bool same(const LocalTime &a, const LocalTime &b) {
    return a.year == b.year && a.month == b.month && a.day == b.day && a.hour == b.hour && a.minute == b.minute &&
           a.second == b.second && a.millisecond == b.millisecond;
}

} // namespace

TEST_F(FakeClock, EachValidFieldReplacesTheCurrentOne) {
    struct Row {
        int16_t y, mo, d, h, mi, s, ms;
        LocalTime expected;
    } rows[] = {
        {2030, 6, 15, 1, 2, 3, 4, {2030, 6, 15, 1, 2, 3, 4, 0}},
        {0, 0, 0, -1, -1, -1, -1, {2001, 12, 24, 18, 5, 9, 7, 0}},   // nothing valid: all kept
        {-5, 3, -1, 24, 60, 60, 1000, {2001, 3, 24, 18, 5, 9, 7, 0}}, // only the month
        {0, 0, 0, 0, 0, 0, 0, {2001, 12, 24, 0, 0, 0, 0, 0}},        // 0 is a valid time field
        {0, 0, 0, 23, 59, 59, 999, {2001, 12, 24, 23, 59, 59, 999, 0}},
        // Above 0 is all the date fields ask: the system refuses month 13.
        {0, 13, 40, -1, -1, -1, -1, {2001, 13, 40, 18, 5, 9, 7, 0}},
    };
    for (const Row &r : rows) {
        EXPECT_EQ(cSetLocalDateTime(r.y, r.mo, r.d, r.h, r.mi, r.s, r.ms), -1);
        EXPECT_TRUE(same(g_last_set, r.expected))
            << g_last_set.year << "-" << g_last_set.month << "-" << g_last_set.day << " " << g_last_set.hour << ":"
            << g_last_set.minute << ":" << g_last_set.second << "." << g_last_set.millisecond;
    }
}

TEST_F(FakeClock, SettingTheTimeAloneAlwaysSets250Milliseconds) {
    EXPECT_EQ(cSetLocalTime(7, 8, 9), -1);
    EXPECT_TRUE(same(g_last_set, LocalTime{2001, 12, 24, 7, 8, 9, 250, 0}));
    EXPECT_EQ(cSetLocalTime(-1, 99, 30), -1);
    EXPECT_TRUE(same(g_last_set, LocalTime{2001, 12, 24, 18, 5, 30, 250, 0}));
}

TEST_F(FakeClock, ARefusalIsReportedAsFalse) {
    g_accept = false;
    EXPECT_EQ(cSetLocalDateTime(2030, 1, 1, 0, 0, 0, 0), 0);
    EXPECT_EQ(cSetLocalTime(1, 2, 3), 0);
    EXPECT_EQ(g_set_calls, 2);
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
    int16_t f[8];
    cGetLocalDateTime(&f[0], &f[1], &f[2], &f[3], &f[4], &f[5], &f[6], &f[7]);
    const int16_t expected[8] = {1999, 1, 6, 2, 0, 0, 0, 999};
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(f[i], expected[i]) << "field " << i << " (year, month, day of week, day, h, m, s, ms)";
}

// Against the real clock: the platform refuses what is not a date, before
// asking the system, so this is safe even with the right to set the clock.
TEST(PlatformClock, ImpossibleDatesAreRefusedNotNormalised) {
    const LocalTime bad[] = {
        {2001, 2, 29, 0, 0, 0, 0, 0}, {2000, 2, 30, 0, 0, 0, 0, 0}, {2001, 4, 31, 0, 0, 0, 0, 0},
        {2001, 13, 1, 0, 0, 0, 0, 0}, {2001, 0, 1, 0, 0, 0, 0, 0},  {2001, 1, 0, 0, 0, 0, 0, 0},
        {2001, 1, 1, 24, 0, 0, 0, 0}, {2001, 1, 1, 0, 60, 0, 0, 0}, {2001, 1, 1, 0, 0, 60, 0, 0},
        {2001, 1, 1, 0, 0, 0, 1000, 0}, {1600, 1, 1, 0, 0, 0, 0, 0}, {30828, 1, 1, 0, 0, 0, 0, 0},
    };
    for (const LocalTime &b : bad)
        EXPECT_FALSE(brindle::platform::set_local_time(b)) << b.year << "-" << b.month << "-" << b.day;
}

TEST(PlatformClock, CalendarTimeAsLocalTime) {
    LocalTime t{};
    const int64_t now = brindle::platform::calendar_time();
    EXPECT_GT(now, int64_t{1600000000});
    ASSERT_TRUE(brindle::platform::local_time_at(now, t));
    EXPECT_GE(t.year, 2020);
    // A day later is another calendar day with the same weekday shift.
    LocalTime later{};
    ASSERT_TRUE(brindle::platform::local_time_at(now + 7 * 86400, later));
    EXPECT_EQ(later.day_of_week, t.day_of_week);
    // The corrected readers follow the offset (allow a second's tick and an
    // hour of daylight saving between the two readings).
    const int32_t base = cExtCurrentTimeCorrected(0), ahead = cExtCurrentTimeCorrected(600);
    const int32_t diff = ((ahead - base) % 86400 + 86400) % 86400;
    EXPECT_TRUE((diff >= 600 && diff <= 602) || (diff >= 600 + 3600 - 2 && diff <= 600 + 3600 + 2) ||
                (diff + 3600 >= 600 && diff + 3600 <= 602))
        << diff;
    const int32_t minutes = cCurrentTimeCorrected(0);
    EXPECT_TRUE(minutes >= 0 && minutes < 1440);
    EXPECT_EQ(cCurrentTimeCorrected(INT32_MIN) >= 0, true);
}
