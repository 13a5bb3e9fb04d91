// Packed decimal dates and times: the DT family's exports over its engine.
// Dates are YYYYMMDD and times HHMMSSCC in one Long. The arithmetic does not
// validate its input (cDT_ValidDate and cDT_ValidTime are there for that);
// nothing these exports take can make them fail, so only the ByRef results
// need a guard against a null reference from a C caller.
#include "datetime/dt_engine.h"
#include "frame/frame.h"

namespace dt = brindle::datetime::dt;
using brindle::frame::vb_bool;

BRINDLE_EXPORT(int32_t) cDT_DateNow() { return dt::today(); }

BRINDLE_EXPORT(int32_t) cDT_TimeNow() { return dt::time_now(); }

BRINDLE_EXPORT(int32_t) cDT_JulianDate(int32_t DtDate) { return dt::day_of_year(DtDate); }

// Mode 0 counts from Sunday (0 Sunday .. 6 Saturday); any other mode from
// Monday (0 Monday .. 6 Sunday).
BRINDLE_EXPORT(int32_t) cDT_DayOfWeek(int32_t DtDate, int16_t Mode) {
    const int w = dt::day_of_week(DtDate);
    return Mode == 0 ? w : (w + 6) % 7;
}

BRINDLE_EXPORT(int32_t) cDT_AddDays(int32_t DtDate, int32_t Days) {
    return dt::days_to_date(static_cast<int64_t>(dt::date_to_days(DtDate)) + Days);
}

BRINDLE_EXPORT(int32_t) cDT_NextDay(int32_t DtDate) {
    return dt::days_to_date(static_cast<int64_t>(dt::date_to_days(DtDate)) + 1);
}

BRINDLE_EXPORT(int32_t) cDT_PrevDay(int32_t DtDate) {
    return dt::days_to_date(static_cast<int64_t>(dt::date_to_days(DtDate)) - 1);
}

BRINDLE_EXPORT(int32_t) cDT_NextWeekDay(int32_t DtDate) { return dt::next_week_day(DtDate); }

BRINDLE_EXPORT(int32_t) cDT_PrevWeekDay(int32_t DtDate) { return dt::prev_week_day(DtDate); }

BRINDLE_EXPORT(int32_t) cDT_WeekOfYear(int32_t DtDate) { return dt::week_of_year(DtDate); }

BRINDLE_EXPORT(int32_t) cDT_YearQuarter(int32_t DtDate) { return dt::quarter(DtDate); }

BRINDLE_EXPORT(int32_t) cDT_PackDate(int32_t DtDate) { return dt::pack_date(DtDate); }

// Only the low 16 bits of the argument are read, so a packed date that VB
// holds in a negative Integer (years from 2044) unpacks the same.
BRINDLE_EXPORT(int32_t) cDT_UnpackDate(int32_t Packed) { return dt::unpack_date(Packed & 0xFFFF); }

BRINDLE_EXPORT(int32_t) cDT_PackTime(int32_t DtTime) { return dt::pack_time(DtTime); }

BRINDLE_EXPORT(int32_t) cDT_UnpackTime(int32_t Packed) { return dt::unpack_time(Packed & 0xFFFF); }

BRINDLE_EXPORT(int32_t) cDT_DateToDays(int32_t DtDate) { return dt::date_to_days(DtDate); }

BRINDLE_EXPORT(int32_t) cDT_DaysToDate(int32_t Days) { return dt::days_to_date(Days); }

BRINDLE_EXPORT(int32_t) cDT_TimeToCentiSecs(int32_t DtTime) { return dt::time_to_centiseconds(DtTime); }

BRINDLE_EXPORT(int32_t) cDT_CentiSecsToTime(int32_t CentiSecs) { return dt::centiseconds_to_time(CentiSecs); }

// Both move the caller's date and time (0 and 0 start at now) and return the
// new time; a null reference leaves everything alone and returns 0.
BRINDLE_EXPORT(int32_t) cDT_FutureDate(int32_t *DtDate, int32_t *DtTime, int32_t Days, int32_t CentiSecs) {
    if (DtDate == nullptr || DtTime == nullptr)
        return 0;
    const dt::Moment m = dt::future(dt::Moment{*DtDate, *DtTime}, Days, CentiSecs);
    *DtDate = m.date;
    *DtTime = m.time;
    return m.time;
}

BRINDLE_EXPORT(int32_t) cDT_PastDate(int32_t *DtDate, int32_t *DtTime, int32_t Days, int32_t CentiSecs) {
    if (DtDate == nullptr || DtTime == nullptr)
        return 0;
    const dt::Moment m = dt::past(dt::Moment{*DtDate, *DtTime}, Days, CentiSecs);
    *DtDate = m.date;
    *DtTime = m.time;
    return m.time;
}

// Days = day number 1 - day number 2 and CentiSecs = centiseconds of time 1
// - of time 2, not normalised (the two may have opposite signs). Returns the
// days as well; a null reference gets nothing written.
BRINDLE_EXPORT(int32_t)
cDT_DateDiff(int32_t DtDate1, int32_t DtTime1, int32_t DtDate2, int32_t DtTime2, int32_t *Days, int32_t *CentiSecs) {
    const int32_t days = static_cast<int32_t>(static_cast<uint32_t>(dt::date_to_days(DtDate1)) -
                                              static_cast<uint32_t>(dt::date_to_days(DtDate2)));
    const int32_t cs = static_cast<int32_t>(static_cast<uint32_t>(dt::time_to_centiseconds(DtTime1)) -
                                            static_cast<uint32_t>(dt::time_to_centiseconds(DtTime2)));
    if (Days != nullptr)
        *Days = days;
    if (CentiSecs != nullptr)
        *CentiSecs = cs;
    return days;
}

BRINDLE_EXPORT(int16_t) cDT_ValidDate(int32_t DtDate) { return vb_bool(dt::valid_date(DtDate)); }

BRINDLE_EXPORT(int16_t) cDT_ValidTime(int32_t DtTime) { return vb_bool(dt::valid_time(DtTime)); }

// Against the clock: the date and time compare with one reading of now.
BRINDLE_EXPORT(int16_t) cDT_DateIsFuture(int32_t DtDate, int32_t DtTime) {
    const dt::Moment now = dt::now();
    return vb_bool(DtDate > now.date || (DtDate == now.date && DtTime > now.time));
}

BRINDLE_EXPORT(int16_t) cDT_DateIsPast(int32_t DtDate, int32_t DtTime) {
    const dt::Moment now = dt::now();
    return vb_bool(DtDate < now.date || (DtDate == now.date && DtTime < now.time));
}
