' Disk arrays: arrays of up to three dimensions (sheets, rows, columns) of fixed-size
' elements kept in a file, so that a program can hold more data than its memory and keep
' it between runs. The program owns a DiskArray record; its 200 bytes are also the first
' 200 bytes of the file. Every Get and Put reads or writes one element in the file; there
' is no cache. The full forms address (row, column, sheet); the s-forms (cDAsGet ...) use
' sheet 1; the r-forms (cDArGet ...) row 1 of sheet 1, so that one Long index suffices.
' Indices below 1 count as 1 and indices above a dimension as that dimension: they
' address the nearest edge element and never fail.
'
' Status codes (Integer results): -1 success; 1 empty FileName; 2 FileName fails the
' syntax check of cIsFilenameValid; 3 an existing file could not be deleted; 4 the file
' could not be created or opened (also for dimensions that would make a file of 2 GB or
' more); 5 the file does not exist; 6 VarType is 0 or its size differs from ElementSize;
' 7 Rows, 8 Cols, 9 Sheets below 1; 10 writing the header failed; 11 writing a full
' 32768-byte block failed; 12 writing the last block or a column element failed; 13
' reading the header failed; 14 HeaderSize is not 200; 15 wrong signature; 16 FileSize
' does not match the file or the dimensions; 18 the array is not open; -32760 no memory
' for the 32768-byte work buffer. A failed write while creating deletes the file; a
' failed write while clearing closes it.

' The record of a disk array, and the header of its file.
' The file keeps the record as it stood when the file was created; opening the file
' reads those 200 bytes back into the record, FileName included.
' HeaderSize: always 200; set by cDACreate.
' Signature: the 7 characters "KOV_347"; set by cDACreate and checked (without regard to
'   case) on opening.
' FileName: the file's name. It ends at the first space or zero byte, so a name cannot
'   hold a space: "my data.dat" names the file my.
' Reserved1: not used.
' VarType: the element type: -6 Currency, -5 Double, -4 Single, -3 Long, -2 Integer,
'   -1 Byte; a positive n is text (or a record) of n bytes; another negative n is the
'   same with abs(n) bytes, filled with zero bytes instead of spaces; 0 is refused.
' Rows: the number of rows, at least 1.
' Cols: the number of columns, at least 1.
' Sheets: the number of sheets, at least 1.
' Handle: the library's number of the open file (not a system handle); -1 when the
'   array is not open. cDAClose leaves the old number, which then opens nothing.
' ElementSize: bytes per element, from VarType.
' FileSize: Rows x Cols x Sheets x ElementSize + 200, the size of the file.
' FullBlocks: the data's size divided by 32768.
' LastBlock: the data's size modulo 32768.
' SheetElements: Rows x Cols.
' LastOffset: the file offset of the element last read or written (200 after cDAClear).
' LastSeek: where the last access positioned the file (the same offset).
' Elapsed: milliseconds the last operation took.
' NoSpaces: 0 fills text arrays with spaces when they are created or cleared; any other
'   value makes clearing fill them with zero bytes.
' Reserved2: not used; written to the file as the program holds it.
' Note: the dimensions, type and size are the file's from the moment it is created or
'   opened: changing Rows, Cols, Sheets, VarType or ElementSize in an open record does
'   not move or grow the array, and no access reaches outside its data.
Type DiskArray
    HeaderSize As Integer
    Signature As String * 7
    FileName As String * 128
    Reserved1 As Byte
    VarType As Integer
    Rows As Long
    Cols As Long
    Sheets As Long
    Handle As Long
    ElementSize As Long
    FileSize As Long
    FullBlocks As Long
    LastBlock As Long
    SheetElements As Long
    LastOffset As Long
    LastSeek As Long
    Elapsed As Long
    NoSpaces As Integer
    Reserved2 As String * 10
End Type
' Creates a disk array's file, or opens an existing one.
' Creating deletes any file of that name, writes the record as the file's header and
' fills the data: text arrays (positive VarType) with spaces unless NoSpaces is set,
' everything else with zero bytes. Opening reads the header into the record and checks
' it against itself and the file's size.
' DA: the record; FileName, VarType, Rows, Cols, Sheets and NoSpaces set by the program
'   for creating, FileName alone for opening.
' CreateFlag: non-zero creates a new file; 0 opens an existing one.
' Returns: -1 when the array is open; otherwise a status code of the introduction
'   (1 to 16 or -32760).
' Note: a file whose dimensions would reach 2 GB is not created (4): its offsets could
'   not be held in the record's Longs. On opening, a header whose sizes do not fit in 32
'   bits gives 16.
' Example:
'   Dim DA As DiskArray
'   DA.FileName = "prices.dat": DA.VarType = -5
'   DA.Rows = 1000: DA.Cols = 12: DA.Sheets = 1
'   If cDACreate(DA, True) = -1 Then cDAPut DA, 5, 3, 1, 19.95
Declare Function cDACreate (DA As DiskArray, ByVal CreateFlag As Integer) As Integer
' Closes a disk array's file, and deletes it on request.
' DA: the record of the array. Its Handle keeps its number, which no longer opens
'   anything.
' DeleteFlag: True (-1) also deletes the file FileName names; any other value keeps it.
' Returns: with DeleteFlag True, 0 when the file was deleted or FileName is empty, -1
'   when it could not be deleted, or the code cIsFilenameValid gives for a bad name;
'   otherwise 0.
Declare Function cDAClose (DA As DiskArray, ByVal DeleteFlag As Integer) As Long
' Reads one element of a disk array as a Variant.
' Numbers come back as Currency, Double, Single, Long, Integer or Byte; text as a String
' that ends at the element's first zero byte, trailing spaces kept.
' DA: the record of an open array.
' Row: the row, clamped into 1 to Rows.
' Col: the column, clamped into 1 to Cols.
' Sheet: the sheet, clamped into 1 to Sheets.
' Returns: the element; Empty when the array is not open.
Declare Function cDAGet (DA As DiskArray, ByVal Row As Long, ByVal Col As Long, ByVal Sheet As Long) As Variant
' Writes one element of a disk array from a Variant.
' The value is converted to the element's type as VB converts it; text is cut to the
' element's size or padded with spaces.
' DA: the record of an open array; nothing happens when it is not open.
' Row: the row, clamped into 1 to Rows.
' Col: the column, clamped into 1 to Cols.
' Sheet: the sheet, clamped into 1 to Sheets.
' Value: the value to store.
' Note: a value that does not convert (text that is no number, for a number element)
'   leaves the element as it was. Write failures are not reported.
Declare Sub cDAPut (DA As DiskArray, ByVal Row As Long, ByVal Col As Long, ByVal Sheet As Long, Value As Variant)
' Copies one element of a disk array into a program's variable, byte for byte.
' For arrays of records: ElementSize bytes go from the file to the variable unchanged.
' DA: the record of an open array; nothing happens when it is not open.
' Row: the row, clamped into 1 to Rows.
' Col: the column, clamped into 1 to Cols.
' Sheet: the sheet, clamped into 1 to Sheets.
' Element: the variable (a record) that receives the bytes; it must be at least
'   ElementSize bytes long.
Declare Sub cDAGetType (DA As DiskArray, ByVal Row As Long, ByVal Col As Long, ByVal Sheet As Long, Element As Any)
' Copies a program's variable into one element of a disk array, byte for byte.
' DA: the record of an open array; nothing happens when it is not open.
' Row: the row, clamped into 1 to Rows.
' Col: the column, clamped into 1 to Cols.
' Sheet: the sheet, clamped into 1 to Sheets.
' Element: the variable (a record) whose first ElementSize bytes are written.
Declare Sub cDAPutType (DA As DiskArray, ByVal Row As Long, ByVal Col As Long, ByVal Sheet As Long, Element As Any)
' Fills the whole data area of a disk array.
' Text arrays with a positive VarType are filled with spaces while NoSpaces is 0; all
' others with zero bytes. LastOffset becomes 200.
' DA: the record of an open array.
' Returns: -1; 18 when the array is not open; 11, 12 or -32760 when writing fails (the
'   file is then closed).
Declare Function cDAClear (DA As DiskArray) As Integer
' Fills one sheet of a disk array, or every sheet.
' DA: the record of an open array.
' Sheet: the sheet, clamped into 1 to Sheets; -1 for every sheet.
' Returns: as cDAClear.
Declare Function cDAClearSheet (DA As DiskArray, ByVal Sheet As Long) As Integer
' Fills one row of a disk array in one sheet or in every sheet.
' DA: the record of an open array.
' Row: the row, clamped into 1 to Rows.
' Sheet: the sheet, clamped into 1 to Sheets; -1 for every sheet.
' Returns: as cDAClear.
Declare Function cDAClearRow (DA As DiskArray, ByVal Row As Long, ByVal Sheet As Long) As Integer
' Fills one column of a disk array in one sheet or in every sheet.
' DA: the record of an open array.
' Col: the column, clamped into 1 to Cols.
' Sheet: the sheet, clamped into 1 to Sheets; -1 for every sheet.
' Returns: as cDAClear.
Declare Function cDAClearCol (DA As DiskArray, ByVal Col As Long, ByVal Sheet As Long) As Integer
' Like cDAGet, for sheet 1 (a two-dimensional array).
Declare Function cDAsGet (DA As DiskArray, ByVal Row As Long, ByVal Col As Long) As Variant
' Like cDAPut, for sheet 1.
Declare Sub cDAsPut (DA As DiskArray, ByVal Row As Long, ByVal Col As Long, Value As Variant)
' Like cDAGetType, for sheet 1.
Declare Sub cDAsGetType (DA As DiskArray, ByVal Row As Long, ByVal Col As Long, Element As Any)
' Like cDAPutType, for sheet 1.
Declare Sub cDAsPutType (DA As DiskArray, ByVal Row As Long, ByVal Col As Long, Element As Any)
' Like cDAClearRow, for sheet 1.
Declare Function cDAsClearRow (DA As DiskArray, ByVal Row As Long) As Integer
' Like cDAClearCol, for sheet 1.
Declare Function cDAsClearCol (DA As DiskArray, ByVal Col As Long) As Integer
' Reads element Index of row 1 of sheet 1 of a disk array (a one-dimensional array).
' DA: the record of an open array.
' Index: the column, clamped into 1 to Cols.
' Returns: as cDAGet.
Declare Function cDArGet (DA As DiskArray, ByVal Index As Long) As Variant
' Writes element Index of row 1 of sheet 1 of a disk array from a Variant.
' DA: the record of an open array; nothing happens when it is not open.
' Index: the column, clamped into 1 to Cols.
' Value: the value to store, converted as cDAPut converts it.
Declare Sub cDArPut (DA As DiskArray, ByVal Index As Long, Value As Variant)
' Copies element Index of row 1 of sheet 1 of a disk array into a program's variable.
' DA: the record of an open array; nothing happens when it is not open.
' Index: the column, clamped into 1 to Cols.
' Element: the variable that receives ElementSize bytes.
Declare Sub cDArGetType (DA As DiskArray, ByVal Index As Long, Element As Any)
' Copies a program's variable into element Index of row 1 of sheet 1 of a disk array.
' DA: the record of an open array; nothing happens when it is not open.
' Index: the column, clamped into 1 to Cols.
' Element: the variable whose first ElementSize bytes are written.
Declare Sub cDArPutType (DA As DiskArray, ByVal Index As Long, Element As Any)
