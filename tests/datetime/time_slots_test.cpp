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

// A new range has the kind's length; fill and empty set every bit of the
// range and leave the tail of a longer string alone.
TEST_P(TimeSlots, CreateEmptyAndFill) {
    const Kind &k = GetParam();
    EXPECT_EQ(str(k.create()).size(), k.bytes);
    Bstr range(std::string(k.bytes, '\x5A') + "tail");
    ASSERT_EQ(k.fill(range.ref()), -1);
    EXPECT_EQ(range.bytes(), std::string(k.bytes, '\xFF') + "tail");
    EXPECT_EQ(k.filled(range.ref(), 0), -1);
    EXPECT_EQ(k.filled(range.ref(), k.last_slot), -1);
    ASSERT_EQ(k.empty(range.ref()), -1);
    EXPECT_EQ(range.bytes(), std::string(k.bytes, '\0') + "tail");
    EXPECT_EQ(k.filled(range.ref(), k.last_slot), 0);
}

TEST_P(TimeSlots, SetAndClearRanges) {
    const Kind &k = GetParam();
    Bstr range(std::string(k.bytes, '\0'));
    // 10 to 0 is the single slot 10.
    ASSERT_EQ(k.set(range.ref(), 10, 0), -1);
    for (int16_t s = 0; s <= k.last_slot; ++s)
        ASSERT_EQ(k.filled(range.ref(), s), s == 10 ? -1 : 0) << s;
    // An inclusive run across byte boundaries, then a hole cleared in it.
    ASSERT_EQ(k.set(range.ref(), 5, 20), -1);
    ASSERT_EQ(k.clear(range.ref(), 7, 16), -1);
    for (int16_t s = 0; s <= 30; ++s)
        EXPECT_EQ(k.filled(range.ref(), s), (s >= 5 && s <= 6) || (s >= 17 && s <= 20) ? -1 : 0) << s;
    // The whole range, both ways.
    ASSERT_EQ(k.set(range.ref(), 0, k.last_slot), -1);
    EXPECT_EQ(range.bytes(), std::string(k.bytes, '\xFF'));
    ASSERT_EQ(k.clear(range.ref(), 0, k.last_slot), -1);
    EXPECT_EQ(range.bytes(), std::string(k.bytes, '\0'));
}

// A short string, slots out of order and slots outside the caller's string
// are refused and change nothing, so nothing is written or read beyond it.
// Slot numbers are not checked against the calendar: a longer string holds
// more slots, and they work.
TEST_P(TimeSlots, RefusalsChangeNothing) {
    const Kind &k = GetParam();
    const std::string short_before(k.bytes - 1, '\xFF');
    Bstr short_range(short_before), none;
    EXPECT_EQ(k.empty(short_range.ref()), 0);
    EXPECT_EQ(k.fill(short_range.ref()), 0);
    EXPECT_EQ(k.set(short_range.ref(), 1, 2), 0);
    EXPECT_EQ(k.clear(short_range.ref(), 1, 2), 0);
    EXPECT_EQ(k.filled(short_range.ref(), 1), 0) << "the bit is set, the string too short";
    EXPECT_EQ(short_range.bytes(), short_before);
    EXPECT_EQ(k.fill(none.ref()), 0);
    EXPECT_EQ(k.set(none.ref(), 1, 0), 0);
    EXPECT_EQ(k.filled(none.ref(), 1), 0);
    EXPECT_EQ(k.empty(nullptr), 0);

    Bstr range(std::string(k.bytes, '\0'));
    const int16_t outside = static_cast<int16_t>(k.bytes * 8);
    for (const auto &[from, to] : {std::pair<int16_t, int16_t>{10, 9}, {outside, 0}, {0, outside}, {-1, 5},
                                   {-8, 0}, {0, INT16_MAX}, {INT16_MIN, -1}}) {
        EXPECT_EQ(k.set(range.ref(), from, to), 0) << from << ".." << to;
        EXPECT_EQ(k.clear(range.ref(), from, to), 0) << from << ".." << to;
    }
    EXPECT_EQ(range.bytes(), std::string(k.bytes, '\0'));
    EXPECT_EQ(k.fill(range.ref()), -1);
    for (int16_t slot : {outside, int16_t{-1}, int16_t{INT16_MAX}})
        EXPECT_EQ(k.filled(range.ref(), slot), 0) << slot;

    Bstr longer(std::string(k.bytes + 1, '\0'));
    EXPECT_EQ(k.set(longer.ref(), outside, 0), -1);
    EXPECT_EQ(k.filled(longer.ref(), outside), -1);
    EXPECT_EQ(longer.bytes().back(), '\x01');
}

INSTANTIATE_TEST_SUITE_P(Ranges, TimeSlots, ::testing::ValuesIn(kKinds),
                         [](const ::testing::TestParamInfo<Kind> &p) { return std::string(p.param.name); });

// Slot n is bit n mod 8 of byte n div 8, least significant first. The day
// of the year of a date is walked against the reference calendar; here the
// minute of a time.
TEST(TimeSlotBits, SlotToBitLayoutAndMinutes) {
    const struct {
        int16_t slot;
        size_t byte;
        unsigned char bit;
    } rows[] = {{0, 0, 0x01}, {1, 0, 0x02}, {7, 0, 0x80}, {8, 1, 0x01}, {366, 45, 0x40}, {367, 45, 0x80}};
    for (const auto &r : rows) {
        Bstr range(std::string(46, '\0'));
        ASSERT_EQ(cTS_YearSlotSet(range.ref(), r.slot, 0), -1);
        std::string want(46, '\0');
        want[r.byte] = static_cast<char>(r.bit);
        EXPECT_EQ(range.bytes(), want) << r.slot;
    }
    Bstr day(std::string(180, '\0'));
    ASSERT_EQ(cTS_DaySlotSet(day.ref(), 1439, 0), -1);
    EXPECT_EQ(static_cast<unsigned char>(day.bytes()[179]), 0x80);
    const int32_t minutes[][2] = {{0, 0},       {5999, 0},        {10000, 1},      {100000, 10},
                                  {1000000, 60}, {23595999, 1439}, {12304500, 750}};
    for (const auto &r : minutes)
        EXPECT_EQ(cTS_TimeToMinute(r[0]), r[1]) << r[0];
}

} // namespace
