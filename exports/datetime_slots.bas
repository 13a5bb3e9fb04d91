' Time-slot ranges: availability bitmaps held in strings, one bit per day of
' the year (46 bytes) or per minute of the day (180 bytes).
Declare Function cTS_YearCreateRange () As String
Declare Function cTS_DayCreateRange () As String
Declare Function cTS_YearRangeEmpty (Range As String) As Integer
Declare Function cTS_DayRangeEmpty (Range As String) As Integer
Declare Function cTS_YearRangeFill (Range As String) As Integer
Declare Function cTS_DayRangeFill (Range As String) As Integer
Declare Function cTS_YearSlotSet (Range As String, ByVal FromSlot As Integer, ByVal ToSlot As Integer) As Integer
Declare Function cTS_DaySlotSet (Range As String, ByVal FromSlot As Integer, ByVal ToSlot As Integer) As Integer
Declare Function cTS_YearSlotClear (Range As String, ByVal FromSlot As Integer, ByVal ToSlot As Integer) As Integer
Declare Function cTS_DaySlotClear (Range As String, ByVal FromSlot As Integer, ByVal ToSlot As Integer) As Integer
Declare Function cTS_YearSlotFilled (Range As String, ByVal Slot As Integer) As Integer
Declare Function cTS_DaySlotFilled (Range As String, ByVal Slot As Integer) As Integer
Declare Function cTS_DateToDay (ByVal DtDate As Long) As Long
Declare Function cTS_TimeToMinute (ByVal DtTime As Long) As Long
