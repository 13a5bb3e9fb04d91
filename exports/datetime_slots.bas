' Time-slot ranges: availability bitmaps held in ordinary strings, so they can be
' kept in a variable, a file or a database field. A year range is 46 bytes with
' one bit per day of the year (slots 1 to 366); a day range is 180 bytes with one
' bit per minute of the day (slots 0 to 1439). A set bit means the slot is taken.
' Slot n is the bit of value 2 ^ (n Mod 8) in byte n \ 8 + 1 of the string.

' Makes a new year range, a string of 46 bytes.
' Returns: the new range. Empty or fill it (cTS_YearRangeEmpty, cTS_YearRangeFill)
'   before use.
' Note: this library hands the range out with every slot free (all bytes 0).
Declare Function cTS_YearCreateRange () As String
' Like cTS_YearCreateRange, for a day range of 180 bytes.
Declare Function cTS_DayCreateRange () As String
' Frees every slot of a year range.
' Range: the range, changed in place; only its first 46 bytes are touched, so a
'   longer string keeps the rest.
' Returns: True (-1) when done; False (0), with nothing changed, when Range is
'   shorter than 46 bytes ("" included).
Declare Function cTS_YearRangeEmpty (Range As String) As Integer
' Like cTS_YearRangeEmpty, for a day range of 180 bytes.
Declare Function cTS_DayRangeEmpty (Range As String) As Integer
' Marks every slot of a year range as taken.
' Range: the range, changed in place; only its first 46 bytes are touched, so a
'   longer string keeps the rest.
' Returns: True (-1) when done; False (0), with nothing changed, when Range is
'   shorter than 46 bytes ("" included).
Declare Function cTS_YearRangeFill (Range As String) As Integer
' Like cTS_YearRangeFill, for a day range of 180 bytes.
Declare Function cTS_DayRangeFill (Range As String) As Integer
' Marks a run of slots of a year range as taken.
' Range: the year range, changed in place.
' FromSlot: the first slot, a day of the year 1 to 366 (cTS_DateToDay gives it;
'   for a day range, cTS_TimeToMinute gives the minute).
' ToSlot: the last slot, included; 0 to mark FromSlot alone.
' Returns: True (-1) when done; False (0), with nothing changed, when Range is
'   shorter than 46 bytes, when ToSlot is not 0 and below FromSlot, or when a slot
'   is negative or lies beyond the end of the string.
' Note: slots are not checked against the calendar (slots 0 and 367 are bits
'   like the others, and a longer string holds more), but a slot outside the
'   string is refused, so nothing is ever written beyond it.
' Example:
'   Dim r As String
'   r = cTS_YearCreateRange()
'   cTS_YearRangeEmpty r
'   cTS_YearSlotSet r, cTS_DateToDay(20260706), cTS_DateToDay(20260717)
'   Debug.Print cTS_YearSlotFilled(r, cTS_DateToDay(20260710))   ' -1
Declare Function cTS_YearSlotSet (Range As String, ByVal FromSlot As Integer, ByVal ToSlot As Integer) As Integer
' Like cTS_YearSlotSet, for a day range of 180 bytes: its slots are minutes 0 to 1439.
Declare Function cTS_DaySlotSet (Range As String, ByVal FromSlot As Integer, ByVal ToSlot As Integer) As Integer
' Like cTS_YearSlotSet, but frees the slots instead of taking them.
Declare Function cTS_YearSlotClear (Range As String, ByVal FromSlot As Integer, ByVal ToSlot As Integer) As Integer
' Like cTS_YearSlotSet, but frees the slots of a day range (180 bytes, minutes 0 to 1439).
Declare Function cTS_DaySlotClear (Range As String, ByVal FromSlot As Integer, ByVal ToSlot As Integer) As Integer
' Tells whether a slot of a year range is taken.
' Range: the year range.
' Slot: the slot, a day of the year 1 to 366.
' Returns: True (-1) when the slot is taken; False (0) when it is free, when Range
'   is shorter than 46 bytes, or when Slot is negative or beyond the end of the
'   string.
Declare Function cTS_YearSlotFilled (Range As String, ByVal Slot As Integer) As Integer
' Like cTS_YearSlotFilled, for a day range of 180 bytes (minutes 0 to 1439).
Declare Function cTS_DaySlotFilled (Range As String, ByVal Slot As Integer) As Integer
' Gives the year-range slot of a date: its day of the year.
' It counts as cDT_JulianDate does, whose leap test reads only the last two digits
' of the year: in 1900 and 2100 the days from March on come out one higher.
' DtDate: the date, YYYYMMDD.
' Returns: the day of the year, 1 to 366; 0 when the month is outside 1 to 12.
Declare Function cTS_DateToDay (ByVal DtDate As Long) As Long
' Gives the day-range slot of a time: its minute of the day.
' DtTime: the time, HHMMSSCC; seconds and hundredths are ignored, and the time is
'   not checked (24000000 gives 1440).
' Returns: the hours times 60 plus the minutes, 0 to 1439 for a valid time.
Declare Function cTS_TimeToMinute (ByVal DtTime As Long) As Long
