// Time-slot ranges: bitmaps in the caller's string, edited in place.
#include "support/ole_helpers.h"

#include <cstdint>
#include <string>

using brindle::test::Bstr;
using brindle::test::str;

namespace {

// The two kinds of range behind one set of calls, so every rule is
// checked for both.
struct Kind {
    const char *name;
    size_t bytes;
    int16_t last_slot;
    int16_t(BRINDLE_CALL *empty)(BSTR *);
    int16_t(BRINDLE_CALL *fill)(BSTR *);
    int16_t(BRINDLE_CALL *set)(BSTR *, int16_t, int16_t);
    int16_t(BRINDLE_CALL *clear)(BSTR *, int16_t, int16_t);
    int16_t(BRINDLE_CALL *filled)(BSTR *, int16_t);
    BSTR(BRINDLE_CALL *create)();
};

const Kind kKinds[] = {
    {"year", 46, 367, cTS_YearRangeEmpty, cTS_YearRangeFill, cTS_YearSlotSet, cTS_YearSlotClear, cTS_YearSlotFilled,
     cTS_YearCreateRange},
    {"day", 180, 1439, cTS_DayRangeEmpty, cTS_DayRangeFill, cTS_DaySlotSet, cTS_DaySlotClear, cTS_DaySlotFilled,
     cTS_DayCreateRange},
};

class TimeSlots : public ::testing::TestWithParam<Kind> {};

TEST_P(TimeSlots, CreateGivesARangeOfTheRightLength) {
    const Kind &k = GetParam();
    EXPECT_EQ(str(k.create()).size(), k.bytes);
}

TEST_P(TimeSlots, EmptyAndFillSetEveryBitOfTheRange) {
    const Kind &k = GetParam();
    Bstr range(std::string(k.bytes, '\x5A'));
    ASSERT_EQ(k.fill(range.ref()), -1);
    EXPECT_EQ(range.bytes(), std::string(k.bytes, '\xFF'));
    EXPECT_EQ(k.filled(range.ref(), 0), -1);
    EXPECT_EQ(k.filled(range.ref(), k.last_slot), -1);
    ASSERT_EQ(k.empty(range.ref()), -1);
    EXPECT_EQ(range.bytes(), std::string(k.bytes, '\0'));
    EXPECT_EQ(k.filled(range.ref(), 0), 0);
    EXPECT_EQ(k.filled(range.ref(), k.last_slot), 0);
}

TEST_P(TimeSlots, ALongerStringKeepsItsTail) {
    const Kind &k = GetParam();
    Bstr range(std::string(k.bytes, '\0') + "tail");
    ASSERT_EQ(k.fill(range.ref()), -1);
    EXPECT_EQ(range.bytes(), std::string(k.bytes, '\xFF') + "tail");
}

TEST_P(TimeSlots, AShortStringIsRefusedEverywhere) {
    const Kind &k = GetParam();
    const std::string before(k.bytes - 1, '\xFF');
    Bstr range(before);
    EXPECT_EQ(k.empty(range.ref()), 0);
    EXPECT_EQ(k.fill(range.ref()), 0);
    EXPECT_EQ(k.set(range.ref(), 1, 2), 0);
    EXPECT_EQ(k.clear(range.ref(), 1, 2), 0);
    EXPECT_EQ(k.filled(range.ref(), 1), 0); // the bit is set, the string too short
    EXPECT_EQ(range.bytes(), before);
    Bstr none;
    EXPECT_EQ(k.fill(none.ref()), 0);
    EXPECT_EQ(k.set(none.ref(), 1, 0), 0);
    EXPECT_EQ(k.filled(none.ref(), 1), 0);
    EXPECT_EQ(k.empty(nullptr), 0);
}

TEST_P(TimeSlots, SetAndClearRanges) {
    const Kind &k = GetParam();
    Bstr range(std::string(k.bytes, '\0'));
    // 10 to 0 is the single slot 10.
    ASSERT_EQ(k.set(range.ref(), 10, 0), -1);
    for (int16_t s = 0; s <= k.last_slot; ++s)
        ASSERT_EQ(k.filled(range.ref(), s), s == 10 ? -1 : 0) << s;
    // 10 to 9 is out of order: refused, nothing changes.
    const std::string before = range.bytes();
    EXPECT_EQ(k.set(range.ref(), 10, 9), 0);
    EXPECT_EQ(k.clear(range.ref(), 10, 9), 0);
    EXPECT_EQ(range.bytes(), before);
    // An inclusive run across byte boundaries.
    ASSERT_EQ(k.set(range.ref(), 5, 20), -1);
    for (int16_t s = 0; s <= 30; ++s)
        EXPECT_EQ(k.filled(range.ref(), s), s >= 5 && s <= 20 ? -1 : 0) << s;
    ASSERT_EQ(k.clear(range.ref(), 7, 16), -1);
    for (int16_t s = 0; s <= 30; ++s)
        EXPECT_EQ(k.filled(range.ref(), s), (s >= 5 && s <= 6) || (s >= 17 && s <= 20) ? -1 : 0) << s;
    // Clearing the whole range frees every slot.
    ASSERT_EQ(k.fill(range.ref()), -1);
    ASSERT_EQ(k.clear(range.ref(), 0, k.last_slot), -1);
    EXPECT_EQ(range.bytes(), std::string(k.bytes, '\0'));
    ASSERT_EQ(k.set(range.ref(), 0, k.last_slot), -1);
    EXPECT_EQ(range.bytes(), std::string(k.bytes, '\xFF'));
}

// Slot numbers are not checked against the calendar, but a slot outside
// the caller's string is refused, so nothing is written or read beyond it.
TEST_P(TimeSlots, SlotsOutsideTheStringAreRefused) {
    const Kind &k = GetParam();
    const std::string before(k.bytes, '\0');
    Bstr range(before);
    const int16_t outside = static_cast<int16_t>(k.bytes * 8);
    EXPECT_EQ(k.set(range.ref(), outside, 0), 0);
    EXPECT_EQ(k.set(range.ref(), 0, outside), 0);
    EXPECT_EQ(k.set(range.ref(), -1, 5), 0);
    EXPECT_EQ(k.set(range.ref(), -8, 0), 0);
    EXPECT_EQ(k.set(range.ref(), 0, INT16_MAX), 0);
    EXPECT_EQ(k.clear(range.ref(), INT16_MIN, -1), 0);
    EXPECT_EQ(range.bytes(), before);
    EXPECT_EQ(k.fill(range.ref()), -1);
    EXPECT_EQ(k.filled(range.ref(), outside), 0);
    EXPECT_EQ(k.filled(range.ref(), -1), 0);
    EXPECT_EQ(k.filled(range.ref(), INT16_MAX), 0);
    // A longer string holds more slots, and they work.
    Bstr longer(std::string(k.bytes + 1, '\0'));
    EXPECT_EQ(k.set(longer.ref(), outside, 0), -1);
    EXPECT_EQ(k.filled(longer.ref(), outside), -1);
    EXPECT_EQ(longer.bytes().back(), '\x01');
}

INSTANTIATE_TEST_SUITE_P(Ranges, TimeSlots, ::testing::ValuesIn(kKinds),
                         [](const ::testing::TestParamInfo<Kind> &p) { return std::string(p.param.name); });

// Slot n is bit n mod 8 of byte n div 8, least significant first.
TEST(TimeSlotBits, SlotToBitLayout) {
    struct Row {
        int16_t slot;
        size_t byte;
        unsigned char bit;
    } rows[] = {{0, 0, 0x01}, {1, 0, 0x02}, {7, 0, 0x80}, {8, 1, 0x01}, {366, 45, 0x40}, {367, 45, 0x80}};
    for (const Row &r : rows) {
        Bstr range(std::string(46, '\0'));
        ASSERT_EQ(cTS_YearSlotSet(range.ref(), r.slot, 0), -1);
        std::string want(46, '\0');
        want[r.byte] = static_cast<char>(r.bit);
        EXPECT_EQ(range.bytes(), want) << r.slot;
    }
    Bstr day(std::string(180, '\0'));
    ASSERT_EQ(cTS_DaySlotSet(day.ref(), 1439, 0), -1);
    EXPECT_EQ(static_cast<unsigned char>(day.bytes()[179]), 0x80);
}

TEST(TimeSlotBits, DatesAndTimesToSlots) {
    struct Row {
        int32_t value;
        int32_t want;
    };
    const Row days[] = {{20000101, 1}, {20001231, 366}, {20010301, 60}, {19000301, 61}};
    for (const Row &r : days)
        EXPECT_EQ(cTS_DateToDay(r.value), r.want) << r.value;
    const Row minutes[] = {{0, 0}, {5999, 0}, {10000, 1}, {100000, 10}, {1000000, 60}, {23595999, 1439}, {12304500, 750}};
    for (const Row &r : minutes)
        EXPECT_EQ(cTS_TimeToMinute(r.value), r.want) << r.value;
}

} // namespace
