' Sorting: numeric arrays (their elements, or the records of a two-dimensional array),
' fixed-size records packed in a string, and arrays of records of a user-defined type
' by up to ten keys. Every sort works in place.

' Sorts an array in ascending order, or the records of a two-dimensional array.
' A two-dimensional array A(i, j) is sorted as records: each j is one record holding all
' its i, and records are ordered by their first element, then their second, and so on;
' whole records move. Equal values end up in no particular order, and the NaN values of
' a Single or Double array have no defined place.
' Arr: the array, of one or two dimensions.
' Returns: True (-1), also for an array with no elements; 0, with the array unchanged,
'   for an array never dimensioned or of more than two dimensions.
' Example:
'   Dim A(1 To 2, 1 To 3) As Long   ' three records of two Longs
'   A(1, 1) = 5: A(2, 1) = 1: A(1, 2) = 2: A(2, 2) = 9: A(1, 3) = 5: A(2, 3) = 0
'   r = cSortL(A())   ' the records are now (2, 9), (5, 0), (5, 1)
Declare Function cSortI (Arr() As Integer) As Integer
' Like cSortI, for Long arrays.
Declare Function cSortL (Arr() As Long) As Integer
' Like cSortI, for Single arrays.
Declare Function cSortS (Arr() As Single) As Integer
' Like cSortI, for Double arrays.
Declare Function cSortD (Arr() As Double) As Integer
' Sorts an array in descending order, or the records of a two-dimensional array.
' The largest value comes first. Records of a two-dimensional array A(i, j) (each j with
' all its i) are ordered by their first element from the largest down, then by their
' second, and so on. Equal values end up in no particular order, and the NaN values of a
' Single or Double array have no defined place.
' Arr: the array, of one or two dimensions.
' Returns: True (-1), also for an array with no elements; 0, with the array unchanged,
'   for an array never dimensioned or of more than two dimensions.
Declare Function cReverseSortI (Arr() As Integer) As Integer
' Like cReverseSortI, for Long arrays.
Declare Function cReverseSortL (Arr() As Long) As Integer
' Like cReverseSortI, for Single arrays.
Declare Function cReverseSortS (Arr() As Single) As Integer
' Like cReverseSortI, for Double arrays.
Declare Function cReverseSortD (Arr() As Double) As Integer
' Sorts fixed-size records packed one after another in a string, ignoring case.
' The first Count records of RecordSize characters each are put in ascending order in
' place; anything after them stays where it is. The capitals A to Z count as their small
' letters, other characters compare by their codes. Two records are compared from their
' first characters and, while they agree, on into the records that follow them, up to a
' Chr(0) or the end of Txt: records that are equal are ordered by what comes after them,
' and a Chr(0) inside a record ends its comparison there.
' Txt: the string holding the records; its length does not change.
' Count: the number of records to sort, at least 2.
' RecordSize: the length of one record in characters, at least 1.
' Returns: True (-1); 0, with Txt unchanged, when Txt is empty, Count is below 2,
'   RecordSize is below 1, or Count times RecordSize is more than the length of Txt.
' Note: a comparison never reads past the end of Txt; the end counts as a Chr(0).
' Example:
'   s = "pear  apple plum  "
'   r = cSortStr(s, 3, 6)   ' s = "apple pear  plum  "
Declare Function cSortStr (Txt As String, ByVal Count As Long, ByVal RecordSize As Long) As Integer
' Reorders fixed-size records packed in a string, in a descending order that only
' neighbouring character codes decide.
' Txt, Count and RecordSize work as for cSortStr, and records are compared the same way,
' but only a first difference between neighbouring character codes ("a" and "b", "7"
' and "8", case ignored) counts, reversed; any larger difference ("a" and "c") counts as
' equal. The records therefore come out in descending order only when each pair first
' differs by such neighbours. For a true descending order, sort with cSortStr and take
' the records from the last one back.
' Txt: the string holding the records; its length does not change.
' Count: the number of records to sort, at least 2.
' RecordSize: the length of one record in characters, at least 1.
' Returns: True (-1); 0, with Txt unchanged, when Txt is empty, Count is below 2,
'   RecordSize is below 1, or Count times RecordSize is more than the length of Txt.
Declare Function cReverseSortStr (Txt As String, ByVal Count As Long, ByVal RecordSize As Long) As Integer

' Describes the keys by which cSortTypedArray sorts an array of records.
' Up to ten keys, in slots 0 to 9: the sort uses the first slot whose KeyOrder is not 0,
' then the slots after it up to the next one whose KeyOrder is 0; slots after that gap
' are ignored. Offsets follow the layout VB gives the record: in 32-bit VB a field of 4
' or more bytes starts at a multiple of 4 and an Integer at a multiple of 2; 64-bit
' Office starts fields of 8 bytes (Double, Currency, Date, String, LongPtr) at a
' multiple of 8.
' RecordSize: set by cSortTypedArray to the size in bytes of one record of the array;
'   the value you put in is not used.
' CurrentKey: reserved; the library neither reads nor changes it.
' KeyOffset: the byte offset of each key's field from the start of the record (0 for
'   the first field). A String field takes 4 bytes (8 in 64-bit Office), a Variant 16
'   (24 in 64-bit Office).
' KeyLength: for the text codes 9, 10 and 13, the number of characters compared; 0
'   compares up to the first Chr(0), never past the end of the record.
' KeyType: how each key's field is read and compared:
'   - 1 or 3: Integer. 2: Byte. 4: Long. 5: Single. 6: Double. 8: Date.
'   - 7: the 8 bytes read as a Double, so a Currency field is not ordered by its value;
'     only a Variant holding Currency (-7) is.
'   - 9: fixed-length text (String * n), capitals A to Z as small letters.
'   - 10: fixed-length text, byte for byte.
'   - 11: a String field, compared as Unicode text ignoring case (A to Z and the accented
'     Latin capitals); 12: the same with case. An unassigned String is the smallest.
'   - 13: fixed-length text holding a number, compared as the number it starts with (0
'     when it starts with none). 14: a String field holding a number, the same way.
'   - -1 to -8, -11, -12 and -14: the field is a Variant, first converted to Boolean
'     (-1), a signed byte (-2), Integer (-3), Long (-4), Single (-5), Double (-6),
'     Currency (-7), Date (-8) or String (-11, -12, -14), then compared as a number
'     (-1 to -8), as text ignoring case (-11) or with case (-12), or as the number the
'     text holds (-14).
'   - 0, -9, -10, -13 and any other code compare nothing: the records come out in no
'     particular order.
' KeyOrder: 0 for a slot not used; above 0 sorts that key ascending, below 0 descending.
Type TypedSortDescriptor
    RecordSize As Long
    CurrentKey As Long
    KeyOffset(0 To 9) As Integer
    KeyLength(0 To 9) As Integer
    KeyType(0 To 9) As Integer
    KeyOrder(0 To 9) As Integer
End Type
' Sorts an array of records of a user-defined type by up to ten keys.
' The records are ordered by the first key in use; runs of records equal on it are put
' in order by the next key, and so on. Records equal on every key end up in no
' particular order. Whole records move.
' Arr: the array of records, of one dimension.
' Descriptor: the keys (see TypedSortDescriptor); its RecordSize receives the size of
'   one record.
' Returns: True (-1) once the records are sorted, also when no slot is in use (then
'   nothing moves); 0, with the array and Descriptor unchanged, for fewer than 2
'   records, an array never dimensioned or of more than two dimensions. The records are
'   counted in 16 bits, as the Count of cArrayPrm: past 32767 records the call gives 0
'   or sorts only part of them, so keep such arrays below 32768 records.
' Note: a key whose field would reach past the end of the record is never read and
'   orders nothing. A Variant that cannot be converted to the key's number type counts
'   as 0; one that cannot be converted to a String counts as the smallest text. Only
'   Variants holding a value of their own are converted (numbers, dates, Strings, Empty,
'   Null, Decimal, Error); an object, a reference, an array or an unknown type counts as
'   one that cannot be converted, and what it points to is never read. Text holding a
'   number (13, 14, -14) is read with a full stop as the decimal sign whatever the
'   regional settings; "nan", "inf" and hexadecimal text read as 0.
' Example:
'   Type Item
'       Qty As Long         ' offset 0
'       Group As Integer    ' offset 4
'   End Type
'   Dim Items(1 To 5) As Item, D As TypedSortDescriptor
'   ' ... fill Items ...
'   D.KeyOffset(0) = 4: D.KeyType(0) = 3: D.KeyOrder(0) = 1    ' Group ascending
'   D.KeyOffset(1) = 0: D.KeyType(1) = 4: D.KeyOrder(1) = -1   ' then Qty descending
'   r = cSortTypedArray(Items(), D)   ' r = True, D.RecordSize = 8
Declare Function cSortTypedArray (Arr() As Any, Descriptor As TypedSortDescriptor) As Integer
