' Calendar and scalar dates: day numbers, integer dates, date-hour longs,
' taking dates apart, and the local clock.
Declare Function cDateToScalar (ByVal Year As Integer, ByVal Month As Integer, ByVal Day As Integer) As Long
Declare Function cScalarToDate (ByVal Scalar As Long, Year As Integer, Month As Integer, Day As Integer) As Integer
Declare Function cTimeToScalar (ByVal Hour As Integer, ByVal Minute As Integer, ByVal Second As Integer) As Long
Declare Function cScalarToTime (ByVal Scalar As Long, Hour As Integer, Minute As Integer, Second As Integer) As Integer
Declare Function cDateToInt (ByVal Year As Integer, ByVal Month As Integer, ByVal Day As Integer) As Integer
Declare Function cIntToDate (ByVal IntDate As Integer, Year As Integer, Month As Integer, Day As Integer) As Integer
Declare Function cDayOfWeek (ByVal Year As Integer, ByVal Month As Integer, ByVal Day As Integer, ByVal Mode As Integer) As Integer
Declare Function cDayOfYear (ByVal Year As Integer, ByVal Month As Integer, ByVal Day As Integer) As Integer
Declare Function cWeekOfYear (ByVal Year As Integer, ByVal Month As Integer, ByVal Day As Integer, ByVal Mode As Integer) As Integer
Declare Function cDaysInMonth (ByVal Year As Integer, ByVal Month As Integer) As Integer
Declare Function cIsLeapYear (ByVal Year As Integer) As Integer
Declare Function cScalarYear (ByVal Scalar As Long) As Integer
Declare Function cScalarMonth (ByVal Scalar As Long) As Integer
Declare Function cScalarDay (ByVal Scalar As Long) As Integer
Declare Function cScalarDayOfWeek (ByVal Scalar As Long, ByVal Mode As Integer) As Integer
Declare Function cScalarDayOfYear (ByVal Scalar As Long) As Integer
Declare Function cScalarWeekOfYear (ByVal Scalar As Long, ByVal Mode As Integer) As Integer
Declare Function cActualDateInScalar () As Long
Declare Function cDateHourToLong (ByVal Year As Integer, ByVal Month As Integer, ByVal Day As Integer, ByVal Hour As Integer, ByVal Minute As Integer, ByVal UserValue As Integer) As Long
Declare Function cLongToDateHour (ByVal DateHour As Long, Year As Integer, Month As Integer, Day As Integer, Hour As Integer, Minute As Integer, UserValue As Integer) As Integer
Declare Function cDateHourToLongExt (ByVal Scalar As Long, ByVal Minutes As Integer) As Long
Declare Function cLongToDateHourExt (ByVal DateHour As Long, Scalar As Long, Word As Integer) As Integer
Declare Sub cGetLocalDateTime (Year As Integer, Month As Integer, DayOfWeek As Integer, Day As Integer, Hour As Integer, Minute As Integer, Second As Integer, Milliseconds As Integer)
Declare Function cSetLocalDateTime (ByVal Year As Integer, ByVal Month As Integer, ByVal Day As Integer, ByVal Hour As Integer, ByVal Minute As Integer, ByVal Second As Integer, ByVal Milliseconds As Integer) As Integer
Declare Function cSetLocalTime (ByVal Hour As Integer, ByVal Minute As Integer, ByVal Second As Integer) As Integer
