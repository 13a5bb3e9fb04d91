// Formatting of DT dates and times by a picture (the letters are described
// in docs/date-pictures.md), and the day and month names the pictures use.
// The picture is read counted: a zero byte in it is ordinary text.
#include "datetime/dt_engine.h"
#include "datetime/dt_picture.h"
#include "frame/frame.h"

namespace dt = brindle::datetime::dt;
using namespace brindle::frame;

// An empty picture, or the date 0 (no date), gives the empty string.
BRINDLE_EXPORT(BSTR) cDT_FormatDate(int32_t DtDate, BSTR *Picture) {
    return guarded_string([&] {
        const StrArg picture = StrArg::by_ref(Picture);
        if (picture.empty())
            return empty_string();
        return new_string(dt::format_date_picture(picture.bytes(), DtDate));
    });
}

BRINDLE_EXPORT(BSTR) cDT_FormatTime(int32_t DtTime, BSTR *Picture) {
    return guarded_string([&] {
        const StrArg picture = StrArg::by_ref(Picture);
        if (picture.empty())
            return empty_string();
        return new_string(dt::format_time_picture(picture.bytes(), DtTime));
    });
}

// Names: days 0 Sunday .. 6 Saturday (as cDT_DayOfWeek gives them in mode
// 0), months 1 .. 12; any other number gives the empty string.
BRINDLE_EXPORT(BSTR) cGetTinyDay(int16_t Day) {
    return guarded_string([&] { return new_string(dt::day_name(Day, dt::NameForm::Tiny)); });
}

BRINDLE_EXPORT(BSTR) cGetSmallDay(int16_t Day) {
    return guarded_string([&] { return new_string(dt::day_name(Day, dt::NameForm::Small)); });
}

BRINDLE_EXPORT(BSTR) cGetShortDay(int16_t Day) {
    return guarded_string([&] { return new_string(dt::day_name(Day, dt::NameForm::Short)); });
}

BRINDLE_EXPORT(BSTR) cGetLongDay(int16_t Day) {
    return guarded_string([&] { return new_string(dt::day_name(Day, dt::NameForm::Long)); });
}

BRINDLE_EXPORT(BSTR) cGetTinyMonth(int16_t Month) {
    return guarded_string([&] { return new_string(dt::month_name(Month, dt::NameForm::Tiny)); });
}

BRINDLE_EXPORT(BSTR) cGetShortMonth(int16_t Month) {
    return guarded_string([&] { return new_string(dt::month_name(Month, dt::NameForm::Short)); });
}

BRINDLE_EXPORT(BSTR) cGetLongMonth(int16_t Month) {
    return guarded_string([&] { return new_string(dt::month_name(Month, dt::NameForm::Long)); });
}

// "Sat Jan  1 12:30:05 2000" (C's asctime layout, without the newline) for a
// DT date and time; 0 and 0 mean now. An invalid date or time gives the
// empty string.
BRINDLE_EXPORT(BSTR) cGetAscTime(int32_t DtDate, int32_t DtTime) {
    return guarded_string([&] {
        dt::Moment at{DtDate, DtTime};
        if (at.date == 0 && at.time == 0)
            at = dt::now();
        return new_string(dt::asc_time(at.date, at.time));
    });
}
