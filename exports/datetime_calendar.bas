' Calendar and scalar dates: day numbers, integer dates, date-hour longs,
' taking dates apart, and the local clock.
'
' A scalar date is a Long day number in the Gregorian calendar carried back to
' year 1: 1 January of year 1 is day 1, 1 January 1900 is day 693596, and
' Scalar Mod 7 is the day of the week (0 Sunday). A scalar time is the number
' of seconds since midnight. Years are used as given (no two-digit windowing)
' and never range-checked; year 0 counts as leap, but dates before year 1
' give meaningless day numbers and weekdays.

' Gives the scalar date (day number) of a calendar date.
' Year: the year, from 1.
' Month: the month, 1 to 12.
' Day: the day of the month, from 1.
' Returns: the day number; -1 when Month is outside 1 to 12 or the month has no
'   such day (29 February only in a leap year).
' Example:
'   Debug.Print cDateToScalar(2000, 3, 1) - cDateToScalar(2000, 1, 1)   ' 60
Declare Function cDateToScalar (ByVal Year As Integer, ByVal Month As Integer, ByVal Day As Integer) As Long
' Splits a scalar date into year, month and day.
' Scalar: the day number, from 1; not checked. A day number below 1 gives a
'   meaningless date, and past 31 December 32767 (11967900) the year keeps only
'   its low 16 bits.
' Year: receives the year.
' Month: receives the month, 1 to 12.
' Day: receives the day of the month.
' Returns: the day of the month, as written to Day.
' Note: the year is found with 64-bit arithmetic, so every day number up to the
'   largest Long gives its true date, with no overflow in far-off years.
Declare Function cScalarToDate (ByVal Scalar As Long, Year As Integer, Month As Integer, Day As Integer) As Integer
' Gives the scalar time (seconds since midnight) of an hour, minute and second.
' Hour: the hour; not checked, so 30 gives a time past the end of the day and a
'   negative hour a negative result.
' Minute: the minute, 0 to 59.
' Second: the second, 0 to 59.
' Returns: (Hour * 60 + Minute) * 60 + Second; -1 when Minute or Second is outside
'   0 to 59.
Declare Function cTimeToScalar (ByVal Hour As Integer, ByVal Minute As Integer, ByVal Second As Integer) As Long
' Splits a scalar time (seconds since midnight) into hour, minute and second.
' Scalar: the seconds; not checked. A day or more gives hours of 24 and up;
'   a negative value gives negative fields (-3661 gives -1, -1, -1).
' Hour: receives Scalar \ 3600 (only the low 16 bits of an hour above 32767).
' Minute: receives the minutes, 0 to 59.
' Second: receives the seconds, 0 to 59.
' Returns: the seconds, as written to Second.
Declare Function cScalarToTime (ByVal Scalar As Long, Hour As Integer, Minute As Integer, Second As Integer) As Integer
' Gives the integer date of a calendar date: a day number that fits an Integer.
' The integer date is the scalar date less 761793: 0 is 19 September 2086, and
' -32768 to 32767 covers 1 January 1997 to 6 June 2176.
' Year: the year.
' Month: the month, 1 to 12.
' Day: the day of the month, from 1.
' Returns: the integer date. Dates outside the range wrap around (7 June 2176
'   gives -32768). A date that does not exist gives 24638 (day number -1),
'   which is also a real date: check the date first with cDateToScalar.
Declare Function cDateToInt (ByVal Year As Integer, ByVal Month As Integer, ByVal Day As Integer) As Integer
' Splits an integer date into year, month and day.
' IntDate: the integer date, -32768 (1 January 1997) to 32767 (6 June 2176).
' Year: receives the year.
' Month: receives the month, 1 to 12.
' Day: receives the day of the month.
' Returns: the day of the month, as written to Day.
Declare Function cIntToDate (ByVal IntDate As Integer, Year As Integer, Month As Integer, Day As Integer) As Integer
' Gives the day of the week of a date.
' Year: the year.
' Month: the month, 1 to 12.
' Day: the day of the month, from 1.
' Mode: the numbering: 0 gives 0 Sunday to 6 Saturday; 1 gives 1 Monday to
'   7 Sunday; any other value gives 0 Monday to 6 Sunday.
' Returns: the day of the week by Mode; -1 when the date does not exist.
' Example:
'   Debug.Print cDayOfWeek(2024, 1, 1, 0)   ' 1, a Monday
Declare Function cDayOfWeek (ByVal Year As Integer, ByVal Month As Integer, ByVal Day As Integer, ByVal Mode As Integer) As Integer
' Gives the day of the year of a date, 1 January being day 1.
' Year: the year.
' Month: the month, 1 to 12.
' Day: the day of the month, from 1.
' Returns: 1 to 366; -1 when the date does not exist.
Declare Function cDayOfYear (ByVal Year As Integer, ByVal Month As Integer, ByVal Day As Integer) As Integer
' Gives the week of the year of a date.
' Year: the year.
' Month: the month, 1 to 12.
' Day: the day of the month, from 1.
' Mode: 0: weeks start on Sunday and the week holding 1 January is week 1.
'   Any other value: weeks start on Monday and week 1 is the first week with at
'   least four days in the new year; the days before it are week 0. With 1 those
'   days get the week of 31 December of the same year instead (52 or 53), not a
'   week of the year before.
' Returns: the week: 1 to 54 in mode 0, 0 to 53 in the others; -1 when the date
'   does not exist. The last days of December can be week 53; they are never
'   counted as week 1 of the next year.
' Example:
'   Debug.Print cWeekOfYear(2005, 1, 1, 1)   ' 52, the week of 31 December 2005
Declare Function cWeekOfYear (ByVal Year As Integer, ByVal Month As Integer, ByVal Day As Integer, ByVal Mode As Integer) As Integer
' Gives the number of days in a month.
' Year: the year; used for February only, where 0 to 50 count as 2000 to 2050
'   and 51 to 99 as 1951 to 1999 (other values as given).
' Month: the month, 1 to 12.
' Returns: 28 to 31; -1 when Month is outside 1 to 12.
Declare Function cDaysInMonth (ByVal Year As Integer, ByVal Month As Integer) As Integer
' Tells whether a year is a leap year.
' Year: the year, as given (no two-digit windowing; 0 counts as leap).
' Returns: True (-1) when Year is divisible by 400, or by 4 but not by 100;
'   otherwise False (0).
Declare Function cIsLeapYear (ByVal Year As Integer) As Integer
' Gives the year of a scalar date.
' Scalar: the day number, from 1; not checked (see cScalarToDate).
' Returns: the year.
Declare Function cScalarYear (ByVal Scalar As Long) As Integer
' Like cScalarYear, for the month (1 to 12).
Declare Function cScalarMonth (ByVal Scalar As Long) As Integer
' Like cScalarYear, for the day of the month.
Declare Function cScalarDay (ByVal Scalar As Long) As Integer
' Gives the day of the week of a scalar date.
' The day number is first split into a date, so it is meaningful from 1 to
' 11967900 (31 December 32767).
' Scalar: the day number.
' Mode: as for cDayOfWeek: 0 gives 0 Sunday to 6 Saturday, 1 gives 1 Monday to
'   7 Sunday, any other value 0 Monday to 6 Sunday.
' Returns: the day of the week by Mode.
Declare Function cScalarDayOfWeek (ByVal Scalar As Long, ByVal Mode As Integer) As Integer
' Gives the day of the year of a scalar date, 1 January being day 1.
' Scalar: the day number, 1 to 11967900 (31 December 32767).
' Returns: 1 to 366.
Declare Function cScalarDayOfYear (ByVal Scalar As Long) As Integer
' Gives the week of the year of a scalar date.
' Scalar: the day number, 1 to 11967900 (31 December 32767).
' Mode: the week numbering, as for cWeekOfYear: 0 for weeks from Sunday, others
'   for weeks from Monday; with 1, week 0 becomes the week of 31 December of the
'   same year.
' Returns: the week, as cWeekOfYear gives it.
Declare Function cScalarWeekOfYear (ByVal Scalar As Long, ByVal Mode As Integer) As Integer
' Gives today's date, by the local clock, as a scalar date.
' Returns: the day number of today.
' Example:
'   Debug.Print cActualDateInScalar() - cDateToScalar(2000, 1, 1)   ' days since 2000
Declare Function cActualDateInScalar () As Long
' Packs a date, a time of day to the minute and a small value of your own into a Long.
' The top 16 bits count days from 1 January 1900 (0) to 6 June 2079 (65535), the
' next 11 bits hold Hour * 60 + Minute and the low 5 bits UserValue.
' Year: the year, 1900 to 2079; dates outside 1 January 1900 to 6 June 2079
'   wrap around by 65536 days.
' Month: the month, 1 to 12.
' Day: the day of the month, from 1.
' Hour: the hour, 0 to 23; not checked.
' Minute: the minute, 0 to 59; not checked. Hour * 60 + Minute keeps its low 11 bits.
' UserValue: any value 0 to 31, given back by cLongToDateHour; only its low 5 bits
'   are kept.
' Returns: the packed value; 0 is 1 January 1900 at 00:00 with UserValue 0. Dates
'   from 19 September 1989 on give negative Longs. A date that does not exist
'   packs as day number -1 and reads back as 29 September 1974.
Declare Function cDateHourToLong (ByVal Year As Integer, ByVal Month As Integer, ByVal Day As Integer, ByVal Hour As Integer, ByVal Minute As Integer, ByVal UserValue As Integer) As Long
' Splits a Long made by cDateHourToLong into its date, time and user value.
' DateHour: the packed value.
' Year: receives the year, 1900 to 2079.
' Month: receives the month.
' Day: receives the day of the month.
' Hour: receives the stored minutes \ 60 (0 to 23 for a value packed from a valid time).
' Minute: receives the stored minutes Mod 60.
' UserValue: receives the low 5 bits, 0 to 31.
' Returns: the user value, as written to UserValue.
Declare Function cLongToDateHour (ByVal DateHour As Long, Year As Integer, Month As Integer, Day As Integer, Hour As Integer, Minute As Integer, UserValue As Integer) As Integer
' Packs a scalar date and a time of day in minutes into a date-hour Long.
' The layout is that of cDateHourToLong, with a user value of 0.
' Scalar: the day number, 693596 (1 January 1900) to 759131 (6 June 2079); not
'   checked, others wrap around by 65536 days.
' Minutes: the minutes since midnight, 0 to 1439; only the low 11 bits are kept.
' Returns: the packed value.
Declare Function cDateHourToLongExt (ByVal Scalar As Long, ByVal Minutes As Integer) As Long
' Splits a date-hour Long into a scalar date and the minutes of the day.
' DateHour: the packed value, as made by cDateHourToLong or cDateHourToLongExt.
' Scalar: receives the day number, 693596 to 759131.
' Word: receives the minutes of the day as well (bits 5 to 15; the user value is
'   dropped).
' Returns: the minutes of the day, 0 to 2047 (0 to 1439 for a valid time).
Declare Function cLongToDateHourExt (ByVal DateHour As Long, Scalar As Long, Word As Integer) As Integer
' Reads the local date and time into eight Integers.
' Year: receives the year.
' Month: receives the month, 1 to 12.
' DayOfWeek: receives the day of the week, 0 Sunday to 6 Saturday.
' Day: receives the day of the month.
' Hour: receives the hour, 0 to 23.
' Minute: receives the minute, 0 to 59.
' Second: receives the second, 0 to 59.
' Milliseconds: receives the milliseconds, 0 to 999.
Declare Sub cGetLocalDateTime (Year As Integer, Month As Integer, DayOfWeek As Integer, Day As Integer, Hour As Integer, Minute As Integer, Second As Integer, Milliseconds As Integer)
' Sets the computer's local date and time, keeping the fields you leave out.
' Each field replaces the current one only when it is in its range below; pass
' -1 to keep a field.
' Year: the year; a value above 0 replaces it.
' Month: the month; a value above 0 replaces it.
' Day: the day of the month; a value above 0 replaces it.
' Hour: the hour, 0 to 23.
' Minute: the minute, 0 to 59.
' Second: the second, 0 to 59.
' Milliseconds: the milliseconds, 0 to 999.
' Returns: True (-1) when the clock was set; False (0) when the system refuses
'   (setting the clock needs administrator or root rights) or the merged date is
'   not a real one.
' Note: the merged date and time must be real and in the years 1601 to 30827;
'   otherwise (month 13, 30 February, 31 April) nothing is set and the result is
'   False, instead of the date rolling over into another one.
Declare Function cSetLocalDateTime (ByVal Year As Integer, ByVal Month As Integer, ByVal Day As Integer, ByVal Hour As Integer, ByVal Minute As Integer, ByVal Second As Integer, ByVal Milliseconds As Integer) As Integer
' Sets the time of day of the computer's local clock, keeping the date.
' The milliseconds are always set to 250.
' Hour: the hour, 0 to 23; any other value keeps the current hour.
' Minute: the minute, 0 to 59; any other value keeps the current minute.
' Second: the second, 0 to 59; any other value keeps the current second.
' Returns: True (-1) when the clock was set; False (0) when the system refuses
'   (setting the clock needs administrator or root rights).
Declare Function cSetLocalTime (ByVal Hour As Integer, ByVal Minute As Integer, ByVal Second As Integer) As Integer
