' Hour, balance and current-time fields: checking, adding, parsing and
' printing times of day and hour balances, the current time, and the
' locale's separators and patterns.
'
' A time of day is counted in minutes since midnight (0 to 1439) or in seconds
' since midnight (0 to 86399). An hour balance is a signed number of minutes,
' printed as hours, the time separator and two minute digits, as on a time
' sheet. The printers and cHourTo use the time separator of the regional
' settings (see cGetTimeSeparator). On Windows these are the system's default
' regional settings, not those the user may have chosen for their own account.

' Tells whether a year, month and day form a real date.
' Year: the year; 0 to 50 count as 2000 to 2050 and 51 to 99 as 1951 to 1999,
'   other values as given (the year itself is never refused).
' Month: the month, 1 to 12.
' Day: the day, 1 to the length of the month (29 February only in a leap year).
' Returns: True (-1) when the date exists, otherwise False (0).
Declare Function cIsDate (ByVal Year As Integer, ByVal Month As Integer, ByVal Day As Integer) As Integer
' Tells whether an hour, minute and second form a valid time of day.
' Hour: the hour, 0 to 23.
' Minute: the minute, 0 to 59.
' Second: the second, 0 to 59.
' Returns: True (-1) when all three are in range, otherwise False (0).
Declare Function cIsHour (ByVal Hour As Integer, ByVal Minute As Integer, ByVal Second As Integer) As Integer
' Tells whether hours, minutes and seconds form a valid hour balance.
' Hours: the hours, -9999 to 99999.
' Minute: the minute, 0 to 59.
' Second: the second, 0 to 59.
' Returns: True (-1) when all three are in range, otherwise False (0).
Declare Function cIsBalance (ByVal Hours As Long, ByVal Minute As Integer, ByVal Second As Integer) As Integer
' Gives the minutes from one time of day to the next occurrence of another.
' FromTime: the start, in minutes since midnight.
' ToTime: the end, in minutes since midnight.
' Returns: ToTime - FromTime, with 1440 added when that is negative, so a span
'   across midnight counts forward (23:00 to 01:00 gives 120). The difference is
'   taken as an Integer; times outside 0 to 1439 are not checked.
' Example:
'   Debug.Print cTimeBetween(1380, 60)   ' 120
Declare Function cTimeBetween (ByVal FromTime As Integer, ByVal ToTime As Integer) As Integer
' Gives the seconds from one time of day to the next occurrence of another.
' FromSecond: the start, in seconds since midnight.
' ToSecond: the end, in seconds since midnight.
' Returns: ToSecond - FromSecond, with 86400 added when that is negative
'   (86000 to 400 gives 800); values are not checked.
Declare Function cSecondBetween (ByVal FromSecond As Long, ByVal ToSecond As Long) As Long
' Brings a number of minutes back into one day by adding or taking away 1440 once.
' Minutes: the minutes since midnight, possibly out of range.
' Returns: Minutes + 1440 when Minutes is negative, Minutes - 1440 when it is
'   1440 or more, otherwise Minutes. Only one day is added or taken away, so
'   2900 gives 1460.
Declare Function cAddTime (ByVal Minutes As Integer) As Integer
' Tells whether a time of day lies in a window of time, both ends included.
' A window whose start comes after its end runs across midnight.
' Minutes: the time to test, in minutes since midnight; used as given, so a
'   value outside 0 to 1439 is never inside.
' StartTime: the start of the window, in minutes; brought into the day with
'   cAddTime first.
' EndTime: the end of the window, in minutes; brought into the day with cAddTime
'   first.
' Returns: True (-1) when Minutes is from StartTime to EndTime, or, across
'   midnight, from StartTime to 1439 or from 0 to EndTime; otherwise False (0).
'   When StartTime equals EndTime only that minute is inside.
' Example:
'   Debug.Print cCheckTime(30, 1380, 60)   ' -1: 00:30 is within 23:00 to 01:00
Declare Function cCheckTime (ByVal Minutes As Integer, ByVal StartTime As Integer, ByVal EndTime As Integer) As Integer
' Tells whether a value lies strictly between two bounds.
' Value: the value: a number, or text holding one; it is converted to a Long,
'   rounded as CLng rounds (4.5 gives 4). A value that cannot be converted
'   counts as 0.
' Low: the lower bound, converted the same way.
' High: the upper bound, converted the same way.
' Returns: True (-1) when Low < Value < High; False (0) otherwise, also when
'   Value equals either bound.
Declare Function cTrueBetween (Value As Variant, Low As Variant, High As Variant) As Integer
' Adds two times written as "hh:mm:ss" and gives the sum as a time of day.
' Time1: the first time, exactly 8 characters: two digits each for hours, minutes
'   and seconds at positions 1, 4 and 7. Positions 3 and 6 are not looked at, so
'   any separator will do.
' Time2: the second time, in the same form.
' Returns: the sum in 8 characters with the locale's time separator; seconds and
'   minutes carry, and hours wrap past 23 ("23:59:59" plus "00:00:01" gives
'   "00:00:00"). "" when either string is not exactly 8 characters long (a null
'   string included).
' Note: fields are not checked; a non-digit in a digit place counts as 0, and a
'   minute or second field still 60 or more after its one carry keeps only its
'   last two digits, so the result is always 8 characters.
Declare Function cAddTwoTimes (Time1 As String, Time2 As String) As String
' Reads an hour text such as "12:34" and gives its value in minutes.
' Txt: the text; only its first 9 characters count, and it ends at a zero byte.
'   The last two digits are the minutes (not checked against 59) and what stands
'   before them is the hours. The locale's time separator between them is
'   optional ("1234" reads like "12:34"); a single digit after it is the minutes
'   ("1:5" is 65). A leading "-" makes the result negative; reading stops at any
'   other "-". The hours are read from their first character up to the first
'   non-digit, so a blank in front makes them 0 ("  2:30" reads as 30).
' Returns: a Variant holding a Long: hours * 60 + minutes; 0 for "" or text
'   without digits.
' Example:
'   Debug.Print cHourTo("7:30")    ' 450
'   Debug.Print cHourTo("-0:45")   ' -45
Declare Function cHourTo (Txt As String) As Variant
' Gives the local time of day in minutes since midnight.
' Returns: Hour * 60 + Minute of the local clock, 0 to 1439.
Declare Function cCurrentTime () As Long
' Gives the local time of day in seconds since midnight.
' Returns: (Hour * 60 + Minute) * 60 + Second of the local clock, 0 to 86399.
Declare Function cExtCurrentTime () As Long
' Gives the local time of day as text "hh:mm".
' Returns: 5 characters, two digits each for hour (0 to 23) and minute, such as
'   "09:05"; the separator is always a colon, whatever the locale.
Declare Function cFmtCurrentTime () As String
' Gives the local time of day as text "hh:mm:ss".
' Returns: 8 characters such as "09:05:42"; the separators are always colons.
Declare Function cFmtExtCurrentTime () As String
' Gives the local time of day to the millisecond as text "hh:mm:ss.ttt".
' Returns: 12 characters such as "09:05:42.250"; the separators are always a
'   colon and a full stop.
Declare Function cFmtVeryExtCurrentTime () As String
' Gives the local time of day, in minutes since midnight, a number of seconds from now.
' Offset: the seconds to add to the current time; negative for a past moment.
' Returns: the minutes since midnight (0 to 1439) that the local clock shows at
'   that moment, daylight saving time included; 0 when that moment cannot be
'   shown as local time.
' Note: on Windows the moment must lie between 1970 and the year 3000; outside
'   them the result is 0, which cannot be told from midnight.
Declare Function cCurrentTimeCorrected (ByVal Offset As Long) As Long
' Like cCurrentTimeCorrected, for seconds since midnight (0 to 86399).
Declare Function cExtCurrentTimeCorrected (ByVal Offset As Long) As Long
' Prints a number of minutes as an hour field of a fixed width.
' Minutes: the minutes, negative for a negative balance; converted to a Long
'   (a value that cannot be converted counts as 0).
' Width: the length of the result, 1 to 11.
' Fill: True (-1) keeps the leading zeros of the hours; any other value turns up
'   to 7 of them into blanks (so under an hour the hours are all blank).
' DecimalMinutes: True (-1) prints the minutes as hundredths of an hour, rounded
'   (30 minutes as 50, 1 as 02); any other value prints them as minutes.
' Returns: exactly Width characters, right-aligned: the hours, the locale's time
'   separator and two digits, with "-" in front of a negative value. Width
'   question marks when the value does not fit; "" when Width is outside 1 to 11.
' Note: the separator is printed only when the room left for the digits (Width,
'   less 1 for a sign) is 5 or more; a narrower field holds bare digits (754 in
'   width 4 is "1234"). The largest value that fits has all hour digits 9 and
'   59 minutes (width 5: 99:59, or 5999 minutes); width 11 takes any Long.
' Example:
'   Debug.Print cIntoFixHour(754, 7, 0, 0)    ' "  12:34"
'   Debug.Print cIntoFixHour(754, 7, 0, -1)   ' "  12:57"
Declare Function cIntoFixHour (Minutes As Variant, ByVal Width As Integer, ByVal Fill As Integer, ByVal DecimalMinutes As Integer) As String
' Prints a number of minutes as a 5-character time "hh:mm" with leading zeros.
' It is cIntoFixHour with Width 5, Fill True and DecimalMinutes False.
' Minutes: the minutes, converted to a Long (a value that cannot be converted
'   counts as 0).
' Returns: 5 characters such as "00:05" or "12:34"; "?????" beyond 5999 minutes
'   (99:59). A negative value leaves no room for the separator: -754 gives
'   "-1234".
Declare Function cIntoHour (Minutes As Variant) As String
' Prints an hour balance in 8 characters, the hours padded with blanks.
' It is cIntoFixHour with Width 8, Fill False and DecimalMinutes False.
' Minutes: the balance in minutes, converted to a Long (a value that cannot be
'   converted counts as 0).
' Returns: 8 characters, right-aligned: "   12:34" for 754, "-  12:34" for -754,
'   "     :05" for 5 (hours of 0 are blank). It holds -9999:59 to 99999:59;
'   beyond that "????????".
Declare Function cIntoBalance (Minutes As Variant) As String
' Prints an hour balance in 8 characters, the hours padded with zeros.
' It is cIntoFixHour with Width 8, Fill True and DecimalMinutes False.
' Minutes: the balance in minutes, converted to a Long (a value that cannot be
'   converted counts as 0).
' Returns: 8 characters: "00012:34" for 754, "-0012:34" for -754. It holds
'   -9999:59 to 99999:59; beyond that "????????".
Declare Function cIntoBalanceFill (Minutes As Variant) As String
' Prints an hour balance in as many characters as it needs.
' Minutes: the balance in minutes, converted to a Long (a value that cannot be
'   converted counts as 0).
' Returns: "-" for a negative value, the hours without leading zeros (at least
'   one digit), the locale's time separator and two minute digits: "0:05",
'   "12:34", "-100:00". Every Long fits.
Declare Function cIntoVarHour (Minutes As Variant) As String
' Gives "" whatever it is passed; it prints no date and is kept only as a placeholder.
' Value: ignored.
' Returns: always "".
Declare Function cIntoDate (Value As Variant) As String
' Like cIntoDate, which it equals: Value is ignored and the result is always "".
Declare Function cIntoDateNull (Value As Variant) As String
' Gives ten blanks for an empty date, to keep a column of dates aligned.
' Value: the date value; 0 means no date.
' Returns: 10 blanks when Value is 0, otherwise "".
Declare Function cIntoDateFill (ByVal Value As Long) As String
' Gives the time separator of the regional settings.
' Returns: one character, such as ":" or ".".
' Note: the separators, the date order and the two patterns are read once, when
'   first needed, and kept until the program ends; later changes to the settings
'   are not seen. On Linux they come from the time format of the process's locale
'   (LC_TIME), and what it does not say falls back to the C locale's ":" and "/"
'   and month-day-year order.
Declare Function cGetTimeSeparator () As String
' Gives the date separator of the regional settings.
' Returns: one character, such as "/", "." or "-"; read once, as for
'   cGetTimeSeparator.
Declare Function cGetDateSeparator () As String
' Gives the list separator of the regional settings.
' Returns: one character, usually "," or ";"; read once, as for cGetTimeSeparator.
' Note: on Linux it is ";" where the locale's decimal point is a comma, otherwise ",".
Declare Function cGetListSeparator () As String
' Gives the pattern of an hour field: "hh", the time separator and "nn".
' Returns: 5 characters such as "hh:nn" or "hh.nn".
Declare Function cGetHourFormat () As String
' Gives the pattern of a date in the order of the regional settings.
' Returns: 10 characters: "mm", "dd" and "yyyy" joined by the date separator,
'   month first ("mm/dd/yyyy"), year first ("yyyy-mm-dd") or day first
'   ("dd.mm.yyyy") as the settings order dates.
Declare Function cGetDateFormat () As String
' Gives the currency symbol of the regional settings.
' Returns: the symbol, such as "$", at most 33 characters; read afresh at every
'   call. "" when the setting cannot be read.
' Note: on Linux it comes from the process's locale, and "$" when that has none.
Declare Function cGetCurrency () As String
' Gives the three-letter abbreviation of the language of the regional settings.
' Returns: the abbreviation, such as "ENU" or "DEU"; read afresh at every call.
'   "" when the setting cannot be read.
' Note: on Linux it is made of the locale's two-letter language code and the
'   first letter of its country code, and "ENU" when the locale does not say.
Declare Function cGetLanguage () As String
' Gives the name of the country of the regional settings.
' Returns: the name, such as "United States", at most 33 characters; read afresh
'   at every call. "" when the setting cannot be read.
' Note: on Linux it comes from the process's locale, and "United States" when that
'   does not say.
Declare Function cGetCountry () As String
' Gives the international dialling code of the country of the regional settings.
' Returns: the code as text, such as "1" or "49"; read afresh at every call. ""
'   when the setting cannot be read.
' Note: on Linux it comes from the process's locale, and "1" when that does not say.
Declare Function cGetCountryCode () As String
