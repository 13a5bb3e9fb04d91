// Time-slot ranges: availability calendars as bitmaps held in the caller's
// string, edited in place. A year range is 46 bytes, one bit per day of the
// year (slots 1..366; bits 0 and 367 exist but no day maps to them); a day
// range is 180 bytes, one bit per minute (slots 0..1439). Slot n is bit
// (n mod 8) of byte (n div 8), bit 0 the least significant; a set bit means
// the slot is taken.
//
// The range is checked only for its length, and from/to only for their
// order. The slot numbers are the caller's to keep in range, but a slot
// whose byte lies outside the caller's string is refused with false (and
// nothing is changed): an unchecked slot must never write, or read, beyond
// the string.
#include "datetime/dt_engine.h"
#include "datetime/slot_map.h"
#include "frame/frame.h"

#include <span>
#include <string>

using namespace brindle::frame;

namespace {

using namespace brindle::datetime;

// The caller's string as the bytes of a map (a null string has none).
std::span<unsigned char> map_of(BSTR *range) {
    const StrArg arg = StrArg::by_ref(range);
    return {reinterpret_cast<unsigned char *>(arg.writable()), arg.writable() ? arg.size() : 0};
}

int16_t fill(BSTR *range, size_t bytes, unsigned char value) { return vb_bool(slot_map_fill(map_of(range), bytes, value)); }

int16_t mark(BSTR *range, size_t bytes, int16_t from, int16_t to, bool set) {
    return vb_bool(slot_map_mark(map_of(range), bytes, from, to, set));
}

int16_t filled(BSTR *range, size_t bytes, int16_t slot) {
    return vb_bool(slot_map_filled(map_of(range), bytes, slot).value_or(false));
}

} // namespace

// Callers may not rely on a new range's content (they empty or fill it
// first); it comes back zeroed.
BRINDLE_EXPORT(BSTR) cTS_YearCreateRange() {
    return guarded_string([] { return new_string(std::string(kYearRangeBytes, '\0')); });
}

BRINDLE_EXPORT(BSTR) cTS_DayCreateRange() {
    return guarded_string([] { return new_string(std::string(kDayRangeBytes, '\0')); });
}

BRINDLE_EXPORT(int16_t) cTS_YearRangeEmpty(BSTR *Range) { return fill(Range, kYearRangeBytes, 0x00); }
BRINDLE_EXPORT(int16_t) cTS_DayRangeEmpty(BSTR *Range) { return fill(Range, kDayRangeBytes, 0x00); }
BRINDLE_EXPORT(int16_t) cTS_YearRangeFill(BSTR *Range) { return fill(Range, kYearRangeBytes, 0xFF); }
BRINDLE_EXPORT(int16_t) cTS_DayRangeFill(BSTR *Range) { return fill(Range, kDayRangeBytes, 0xFF); }

BRINDLE_EXPORT(int16_t) cTS_YearSlotSet(BSTR *Range, int16_t FromSlot, int16_t ToSlot) {
    return mark(Range, kYearRangeBytes, FromSlot, ToSlot, true);
}

BRINDLE_EXPORT(int16_t) cTS_DaySlotSet(BSTR *Range, int16_t FromSlot, int16_t ToSlot) {
    return mark(Range, kDayRangeBytes, FromSlot, ToSlot, true);
}

BRINDLE_EXPORT(int16_t) cTS_YearSlotClear(BSTR *Range, int16_t FromSlot, int16_t ToSlot) {
    return mark(Range, kYearRangeBytes, FromSlot, ToSlot, false);
}

BRINDLE_EXPORT(int16_t) cTS_DaySlotClear(BSTR *Range, int16_t FromSlot, int16_t ToSlot) {
    return mark(Range, kDayRangeBytes, FromSlot, ToSlot, false);
}

BRINDLE_EXPORT(int16_t) cTS_YearSlotFilled(BSTR *Range, int16_t Slot) { return filled(Range, kYearRangeBytes, Slot); }

BRINDLE_EXPORT(int16_t) cTS_DaySlotFilled(BSTR *Range, int16_t Slot) { return filled(Range, kDayRangeBytes, Slot); }

// The day of the year as cDT_JulianDate counts it (two-digit leap test).
BRINDLE_EXPORT(int32_t) cTS_DateToDay(int32_t DtDate) { return brindle::datetime::dt::day_of_year(DtDate); }

// hours * 60 + minutes of a DT time.
BRINDLE_EXPORT(int32_t) cTS_TimeToMinute(int32_t DtTime) {
    const brindle::datetime::dt::TimeFields t = brindle::datetime::dt::split_time(DtTime);
    return static_cast<int32_t>(static_cast<uint32_t>(t.hours * 60 + t.minutes));
}
