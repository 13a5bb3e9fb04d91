' Hour, balance and current-time fields: checking, adding, parsing and
' printing times of day and hour balances, the current time, and the
' locale's separators and patterns.
Declare Function cIsDate (ByVal Year As Integer, ByVal Month As Integer, ByVal Day As Integer) As Integer
Declare Function cIsHour (ByVal Hour As Integer, ByVal Minute As Integer, ByVal Second As Integer) As Integer
Declare Function cIsBalance (ByVal Hours As Long, ByVal Minute As Integer, ByVal Second As Integer) As Integer
Declare Function cTimeBetween (ByVal FromTime As Integer, ByVal ToTime As Integer) As Integer
Declare Function cSecondBetween (ByVal FromSecond As Long, ByVal ToSecond As Long) As Long
Declare Function cAddTime (ByVal Minutes As Integer) As Integer
Declare Function cCheckTime (ByVal Minutes As Integer, ByVal StartTime As Integer, ByVal EndTime As Integer) As Integer
Declare Function cTrueBetween (Value As Variant, Low As Variant, High As Variant) As Integer
Declare Function cAddTwoTimes (Time1 As String, Time2 As String) As String
Declare Function cHourTo (Txt As String) As Variant
Declare Function cCurrentTime () As Long
Declare Function cExtCurrentTime () As Long
Declare Function cFmtCurrentTime () As String
Declare Function cFmtExtCurrentTime () As String
Declare Function cFmtVeryExtCurrentTime () As String
Declare Function cCurrentTimeCorrected (ByVal Offset As Long) As Long
Declare Function cExtCurrentTimeCorrected (ByVal Offset As Long) As Long
Declare Function cIntoFixHour (Minutes As Variant, ByVal Width As Integer, ByVal Fill As Integer, ByVal DecimalMinutes As Integer) As String
Declare Function cIntoHour (Minutes As Variant) As String
Declare Function cIntoBalance (Minutes As Variant) As String
Declare Function cIntoBalanceFill (Minutes As Variant) As String
Declare Function cIntoVarHour (Minutes As Variant) As String
Declare Function cIntoDate (Value As Variant) As String
Declare Function cIntoDateNull (Value As Variant) As String
Declare Function cIntoDateFill (ByVal Value As Long) As String
Declare Function cGetTimeSeparator () As String
Declare Function cGetDateSeparator () As String
Declare Function cGetListSeparator () As String
Declare Function cGetHourFormat () As String
Declare Function cGetDateFormat () As String
Declare Function cGetCurrency () As String
Declare Function cGetLanguage () As String
Declare Function cGetCountry () As String
Declare Function cGetCountryCode () As String
