' Packed decimal dates and times: a date is the Long YYYYMMDD (20261124) and a
' time the Long HHMMSSCC, hours, minutes, seconds and hundredths (13054207), so
' both sort and compare as plain numbers. Date arithmetic goes through the Julian
' day number and follows the Gregorian calendar for every year. The arithmetic
' does not check its input; cDT_ValidDate and cDT_ValidTime are there for that.

' Gives today's date from the computer's local clock.
' Returns: today's date, YYYYMMDD, for instance 20261124.
Declare Function cDT_DateNow () As Long
' Gives the time now from the computer's local clock.
' Returns: the time, HHMMSSCC with hundredths, for instance 13054207 for
'   13:05:42.07.
Declare Function cDT_TimeNow () As Long
' Gives the day of the year of a date.
' Despite its name it does not give a Julian day number: cDT_DateToDays does.
' The leap test reads only the last two digits of the year, so every year ending
' in 00 counts as a leap year here: in 1900 and 2100 the days from March on come
' out one higher (19000301 gives 61).
' DtDate: the date, YYYYMMDD; the day is not checked (20000132 gives 32).
' Returns: the day of the year, 1 for 1 January up to 366; 0 when the month is
'   outside 1 to 12.
Declare Function cDT_JulianDate (ByVal DtDate As Long) As Long
' Gives the day of the week of a date.
' DtDate: the date, YYYYMMDD; any value gives some day.
' Mode: 0 to count from Sunday (0 Sunday to 6 Saturday); any other value to count
'   from Monday (0 Monday to 6 Sunday).
' Returns: the day of the week, 0 to 6.
' Example:
'   Debug.Print cDT_DayOfWeek(20000101, 0)   ' 6 (Saturday)
'   Debug.Print cDT_DayOfWeek(20000101, 1)   ' 5
Declare Function cDT_DayOfWeek (ByVal DtDate As Long, ByVal Mode As Integer) As Long
' Adds a number of days to a date.
' DtDate: the date, YYYYMMDD. An impossible date counts on from the month's
'   start (20000231 is taken as 2 March 2000).
' Days: the days to add; negative to go back.
' Returns: the new date, YYYYMMDD.
' Example:
'   Debug.Print cDT_AddDays(20000228, 2)   ' 20000301
Declare Function cDT_AddDays (ByVal DtDate As Long, ByVal Days As Long) As Long
' Gives the day after a date.
' DtDate: the date, YYYYMMDD.
' Returns: the next day, across month and year ends (20011231 gives 20020101).
Declare Function cDT_NextDay (ByVal DtDate As Long) As Long
' Gives the day before a date.
' DtDate: the date, YYYYMMDD.
' Returns: the previous day, across month and year ends (20000301 gives 20000229).
Declare Function cDT_PrevDay (ByVal DtDate As Long) As Long
' Gives the next working day, Monday to Friday, after a date.
' From a Friday, Saturday or Sunday it gives the following Monday; from any other
' day the next day. Holidays are not known.
' DtDate: the date, YYYYMMDD.
' Returns: the next working day, YYYYMMDD.
Declare Function cDT_NextWeekDay (ByVal DtDate As Long) As Long
' Gives the previous working day, Monday to Friday, before a date.
' From a Monday, Sunday or Saturday it gives the Friday before; from any other day
' the previous day. Holidays are not known.
' DtDate: the date, YYYYMMDD.
' Returns: the previous working day, YYYYMMDD.
Declare Function cDT_PrevWeekDay (ByVal DtDate As Long) As Long
' Gives the week of the year of a date.
' Weeks start on Sunday and the days before the year's first Sunday are week 0;
' in the years 2001 to 2200 and 2401 to 2600 the family's formula starts the weeks
' on Monday instead. It counts on the day of the year of cDT_JulianDate. This is
' not the ISO week number.
' DtDate: the date, YYYYMMDD.
' Returns: the week, 0 to 53.
' Example:
'   Debug.Print cDT_WeekOfYear(20261124)   ' 47
Declare Function cDT_WeekOfYear (ByVal DtDate As Long) As Long
' Gives the quarter of the year of a date.
' DtDate: the date, YYYYMMDD; the month is not checked (month 13 gives 5).
' Returns: 1 for January to March up to 4 for October to December.
Declare Function cDT_YearQuarter (ByVal DtDate As Long) As Long
' Packs a date into the 16-bit date word of a DOS or FAT directory entry.
' The word holds the year minus 1980 in bits 15 to 9, the month in bits 8 to 5
' and the day in bits 4 to 0. Each field is cut to its width, so only the years
' 1980 to 2107 fit (and 1980 unpacks as 2080, see cDT_UnpackDate).
' DtDate: the date, YYYYMMDD.
' Returns: the packed date, 0 to 65535; words from 32768 on are years from 2044.
Declare Function cDT_PackDate (ByVal DtDate As Long) As Long
' Turns the 16-bit date word of a DOS or FAT directory entry into a date.
' Packed: the date word, laid out as cDT_PackDate makes it.
' Returns: the date, YYYYMMDD. A year field of 1 to 127 gives 1981 to 2107, but
'   the field 0 gives 2080, not 1980; existing programs rely on that. Month and day
'   come through unchecked.
' Note: only the low 16 bits of Packed are read, so a word that VB holds in a
'   negative Integer (years from 2044) unpacks correctly.
Declare Function cDT_UnpackDate (ByVal Packed As Long) As Long
' Packs a time into the 16-bit time word of a DOS or FAT directory entry.
' The word holds the hours in bits 15 to 11, the minutes in bits 10 to 5 and the
' seconds divided by 2 in bits 4 to 0: odd seconds lose one, hundredths are
' dropped.
' DtTime: the time, HHMMSSCC.
' Returns: the packed time, 0 to 65535.
Declare Function cDT_PackTime (ByVal DtTime As Long) As Long
' Turns the 16-bit time word of a DOS or FAT directory entry into a time.
' Packed: the time word, laid out as cDT_PackTime makes it.
' Returns: the time, HHMMSSCC, with the seconds field doubled and hundredths 0
'   (the packed time of 10203199 unpacks as 10203000).
' Note: only the low 16 bits of Packed are read, so a word held in a negative
'   Integer unpacks correctly.
Declare Function cDT_UnpackTime (ByVal Packed As Long) As Long
' Gives the Julian day number of a date.
' Day numbers count days without gaps, so the difference of two is the number of
' days between their dates; 20000101 is day 2451545.
' DtDate: the date, YYYYMMDD; an impossible day counts on from the month's start
'   (20000230 gives the number of 1 March 2000).
' Returns: the day number.
Declare Function cDT_DateToDays (ByVal DtDate As Long) As Long
' Gives the date of a Julian day number.
' Days: the day number; 2451545 is 1 January 2000. Numbers below 1721120 (1 March
'   of the year 0) give meaningless dates.
' Returns: the date, YYYYMMDD.
Declare Function cDT_DaysToDate (ByVal Days As Long) As Long
' Turns a time into hundredths of a second since midnight.
' DtTime: the time, HHMMSSCC; not checked (24000000 gives 8640000).
' Returns: the hundredths, 0 to 8639999 for a valid time.
Declare Function cDT_TimeToCentiSecs (ByVal DtTime As Long) As Long
' Turns hundredths of a second since midnight into a time.
' CentiSecs: the hundredths; a day has 8640000. Past a day the hours keep counting
'   (8640000 gives 24000000); negative values give meaningless times.
' Returns: the time, HHMMSSCC.
Declare Function cDT_CentiSecsToTime (ByVal CentiSecs As Long) As Long
' Moves a date and time forward by days and hundredths of a second.
' When DtDate and DtTime are both 0, the move starts from now.
' DtDate: the date, YYYYMMDD; receives the new date.
' DtTime: the time, HHMMSSCC; receives the new time.
' Days: the days to add, 0 or more.
' CentiSecs: the hundredths to add, 0 or more; every whole day past midnight
'   (8640000 hundredths) carries into the date. Use cDT_PastDate to go back:
'   negative values are not normalised.
' Returns: the new time, as written to DtTime.
' Example:
'   Dim d As Long, t As Long
'   d = 20011231: t = 23000000
'   cDT_FutureDate d, t, 0, 360000   ' one hour on: d = 20020101, t = 0
Declare Function cDT_FutureDate (DtDate As Long, DtTime As Long, ByVal Days As Long, ByVal CentiSecs As Long) As Long
' Moves a date and time back by days and hundredths of a second.
' When DtDate and DtTime are both 0, the move starts from now.
' DtDate: the date, YYYYMMDD; receives the new date.
' DtTime: the time, HHMMSSCC; receives the new time.
' Days: the days to subtract, 0 or more.
' CentiSecs: the hundredths to subtract, 0 or more; when the time would go below
'   midnight, the whole days needed are borrowed from the date.
' Returns: the new time, as written to DtTime.
' Example:
'   Dim d As Long, t As Long
'   d = 20020101: t = 0
'   cDT_PastDate d, t, 0, 1   ' d = 20011231, t = 23595999
Declare Function cDT_PastDate (DtDate As Long, DtTime As Long, ByVal Days As Long, ByVal CentiSecs As Long) As Long
' Gives the difference between two dates and times, in days and hundredths kept
' apart.
' DtDate1: the first date, YYYYMMDD.
' DtTime1: the first time, HHMMSSCC.
' DtDate2: the date to subtract.
' DtTime2: the time to subtract.
' Days: receives the days from DtDate2 to DtDate1 (negative when DtDate1 is
'   earlier).
' CentiSecs: receives DtTime1 minus DtTime2 in hundredths. It is not combined with
'   the days, so the two may have opposite signs; for one total use
'   CDbl(Days) * 8640000 + CentiSecs (a Long overflows past 248 days).
' Returns: the days, as written to Days.
' Example:
'   Dim n As Long, d As Long, c As Long
'   n = cDT_DateDiff(20010101, 100, 20000101, 12000000, d, c)   ' d = 366, c = -4319900
Declare Function cDT_DateDiff (ByVal DtDate1 As Long, ByVal DtTime1 As Long, ByVal DtDate2 As Long, ByVal DtTime2 As Long, Days As Long, CentiSecs As Long) As Long
' Tells whether a date is a real calendar date.
' The leap test reads only the last two digits of the year, so every year ending
' in 00 has a 29 February here (19000229 and 21000229 pass).
' DtDate: the date, YYYYMMDD.
' Returns: True (-1) when the month is 1 to 12 and the day exists in that month
'   (29 February only in a leap year), and for 0, which means no date; False (0)
'   otherwise, negative values included.
Declare Function cDT_ValidDate (ByVal DtDate As Long) As Integer
' Tells whether a time is a real time of day.
' DtTime: the time, HHMMSSCC.
' Returns: True (-1) when the hours are below 24 and the minutes and seconds below
'   60; False (0) otherwise. Only these upper limits are checked, so a negative
'   value passes.
Declare Function cDT_ValidTime (ByVal DtTime As Long) As Integer
' Tells whether a date and time lie after the present moment.
' Both are compared as numbers with today's date and the time now, unchecked.
' DtDate: the date, YYYYMMDD.
' DtTime: the time, HHMMSSCC.
' Returns: True (-1) when the date is after today, or is today and the time is
'   after now; False (0) otherwise.
Declare Function cDT_DateIsFuture (ByVal DtDate As Long, ByVal DtTime As Long) As Integer
' Tells whether a date and time lie before the present moment.
' Both are compared as numbers with today's date and the time now, unchecked; the
' date 0 is in the past.
' DtDate: the date, YYYYMMDD.
' DtTime: the time, HHMMSSCC.
' Returns: True (-1) when the date is before today, or is today and the time is
'   before now; False (0) otherwise.
Declare Function cDT_DateIsPast (ByVal DtDate As Long, ByVal DtTime As Long) As Integer
' Formats a date by a picture of letters such as "dd/mm/yyyy".
' The picture letters, in either case:
' - d and dd: the day of the month (1, 01)
' - ddd and dddd: the day name (Sat, Saturday)
' - ddddd and dddddd: the one- and two-letter day name (S, Sa)
' - m and mm: the month (1, 01)
' - mmm, mmmm and mmmmm: the month name (Jan, January, J)
' - yy and yyyy: the year (00, 2000)
' - y: the day of the year, as cDT_JulianDate gives it
' - w: the day of the week, 1 Sunday to 7 Saturday
' - ww: the week of the year, as cDT_WeekOfYear gives it
' - q: the quarter, 1 to 4
'
' A longer run of one letter is read as its longest form and then the rest
' (dddddddd is dddddd then dd). Text in double quotes is copied without the
' quotes, a backslash copies the character after it, and every other character
' is copied as it is, so quote words: in "Today is dddd" the d and y would turn
' into numbers. Names are English; a month outside 1 to 12 prints no name, and
' numbers print as they are (month 13 prints 13).
' DtDate: the date, YYYYMMDD; 0 (no date) gives "".
' Picture: the picture, read in full (a zero byte is copied as text).
' Returns: the formatted date; "" for the date 0 or an empty Picture.
' Note: the picture language is the library's own, in the style of VB's Format$,
'   but ddddd and dddddd are day names here, not Format$'s date formats, and the
'   separators are printed as written, never replaced by the system's.
' Example:
'   Debug.Print cDT_FormatDate(20261121, "dddd d mmmm yyyy")   ' Saturday 21 November 2026
'   Debug.Print cDT_FormatDate(20261124, """Week ""ww")        ' Week 47
Declare Function cDT_FormatDate (ByVal DtDate As Long, Picture As String) As String
' Formats a time by a picture of letters such as "hh:nn:ss".
' The picture letters, in either case:
' - h and hh: the hours (1, 01)
' - n and nn, or m and mm: the minutes (5, 05)
' - s and ss: the seconds
' - c and cc: the hundredths
' - AM/PM or A/P: AM or PM, A or P, in the case they are written in; with either
'   of them the hours count on the twelve-hour clock (midnight and noon are 12)
'
' The date letters are ordinary text here. Quotes, backslashes and other
' characters work as in cDT_FormatDate.
' DtTime: the time, HHMMSSCC; not checked (24000000 prints as 24:00 with "hh:nn").
' Picture: the picture, read in full.
' Returns: the formatted time; "" for an empty Picture.
' Note: the picture language is the library's own, in the style of VB's Format$.
' Example:
'   Debug.Print cDT_FormatTime(13054207, "hh:nn:ss.cc")   ' 13:05:42.07
'   Debug.Print cDT_FormatTime(13054207, "h:nn AM/PM")    ' 1:05 PM
Declare Function cDT_FormatTime (ByVal DtTime As Long, Picture As String) As String
' Gives the one-letter English name of a day of the week.
' Day: the day, 0 Sunday to 6 Saturday, as cDT_DayOfWeek gives it in mode 0.
' Returns: the name, such as "S" for Sunday; "" for a Day outside 0 to 6.
Declare Function cGetTinyDay (ByVal Day As Integer) As String
' Like cGetTinyDay, for the two-letter name ("Su").
Declare Function cGetSmallDay (ByVal Day As Integer) As String
' Like cGetTinyDay, for the three-letter name ("Sun").
Declare Function cGetShortDay (ByVal Day As Integer) As String
' Like cGetTinyDay, for the full name ("Sunday").
Declare Function cGetLongDay (ByVal Day As Integer) As String
' Gives the one-letter English name of a month.
' Month: the month, 1 January to 12 December.
' Returns: the name, such as "J" for January; "" for a Month outside 1 to 12.
Declare Function cGetTinyMonth (ByVal Month As Integer) As String
' Like cGetTinyMonth, for the three-letter name ("Jan").
Declare Function cGetShortMonth (ByVal Month As Integer) As String
' Like cGetTinyMonth, for the full name ("January").
Declare Function cGetLongMonth (ByVal Month As Integer) As String
' Gives a date and time as text in the fixed layout of C's asctime.
' The layout is "Sat Jan  1 12:30:05 2000": short day and month names, the day of
' the month in three places padded with spaces, the time to the second.
' DtDate: the date, YYYYMMDD; with DtTime also 0 it means now.
' DtTime: the time, HHMMSSCC; hundredths are dropped.
' Returns: the text; "" when the date or time is not valid (by cDT_ValidDate and
'   cDT_ValidTime), or when the date is 0 and the time is not.
' Note: unlike C's asctime, the text ends without a line feed.
Declare Function cGetAscTime (ByVal DtDate As Long, ByVal DtTime As Long) As String
