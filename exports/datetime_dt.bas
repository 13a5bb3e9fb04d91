' Packed decimal dates and times: a date is the Long YYYYMMDD, a time the Long
' HHMMSSCC (hundredths); arithmetic through the Julian day number.
Declare Function cDT_DateNow () As Long
Declare Function cDT_TimeNow () As Long
Declare Function cDT_JulianDate (ByVal DtDate As Long) As Long
Declare Function cDT_DayOfWeek (ByVal DtDate As Long, ByVal Mode As Integer) As Long
Declare Function cDT_AddDays (ByVal DtDate As Long, ByVal Days As Long) As Long
Declare Function cDT_NextDay (ByVal DtDate As Long) As Long
Declare Function cDT_PrevDay (ByVal DtDate As Long) As Long
Declare Function cDT_NextWeekDay (ByVal DtDate As Long) As Long
Declare Function cDT_PrevWeekDay (ByVal DtDate As Long) As Long
Declare Function cDT_WeekOfYear (ByVal DtDate As Long) As Long
Declare Function cDT_YearQuarter (ByVal DtDate As Long) As Long
Declare Function cDT_PackDate (ByVal DtDate As Long) As Long
Declare Function cDT_UnpackDate (ByVal Packed As Long) As Long
Declare Function cDT_PackTime (ByVal DtTime As Long) As Long
Declare Function cDT_UnpackTime (ByVal Packed As Long) As Long
Declare Function cDT_DateToDays (ByVal DtDate As Long) As Long
Declare Function cDT_DaysToDate (ByVal Days As Long) As Long
Declare Function cDT_TimeToCentiSecs (ByVal DtTime As Long) As Long
Declare Function cDT_CentiSecsToTime (ByVal CentiSecs As Long) As Long
Declare Function cDT_FutureDate (DtDate As Long, DtTime As Long, ByVal Days As Long, ByVal CentiSecs As Long) As Long
Declare Function cDT_PastDate (DtDate As Long, DtTime As Long, ByVal Days As Long, ByVal CentiSecs As Long) As Long
Declare Function cDT_DateDiff (ByVal DtDate1 As Long, ByVal DtTime1 As Long, ByVal DtDate2 As Long, ByVal DtTime2 As Long, Days As Long, CentiSecs As Long) As Long
Declare Function cDT_ValidDate (ByVal DtDate As Long) As Integer
Declare Function cDT_ValidTime (ByVal DtTime As Long) As Integer
Declare Function cDT_DateIsFuture (ByVal DtDate As Long, ByVal DtTime As Long) As Integer
Declare Function cDT_DateIsPast (ByVal DtDate As Long, ByVal DtTime As Long) As Integer
Declare Function cDT_FormatDate (ByVal DtDate As Long, Picture As String) As String
Declare Function cDT_FormatTime (ByVal DtTime As Long, Picture As String) As String
' Day and month names (English): days 0 Sunday .. 6 Saturday, months 1 .. 12.
Declare Function cGetTinyDay (ByVal Day As Integer) As String
Declare Function cGetSmallDay (ByVal Day As Integer) As String
Declare Function cGetShortDay (ByVal Day As Integer) As String
Declare Function cGetLongDay (ByVal Day As Integer) As String
Declare Function cGetTinyMonth (ByVal Month As Integer) As String
Declare Function cGetShortMonth (ByVal Month As Integer) As String
Declare Function cGetLongMonth (ByVal Month As Integer) As String
Declare Function cGetAscTime (ByVal DtDate As Long, ByVal DtTime As Long) As String
