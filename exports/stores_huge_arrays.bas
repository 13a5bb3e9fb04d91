' Huge memory arrays: the in-memory twins of the disk arrays, arrays of up to three
' dimensions (sheets, rows, columns) of fixed-size elements in one block of memory, for
' arrays larger than VB's own limits allow. The program owns a HugeArray record; the
' library keeps nothing else. Element types, index clamping, value conversion and text
' padding are those of the disk arrays (cDAGet, cDAPut).
'
' Status codes (Integer results): -1 success; 1 the memory could not be allocated (also
' for a size of 2 GB or more); 2 VarType is 0; 3 Rows, 4 Cols, 5 Sheets below 1; 6 the
' record holds no block.

' The record of a huge memory array.
' RecordSize: set to 68 by cHMACreate.
' VarType: the element type, as in the DiskArray record (-6 Currency, -5 Double,
'   -4 Single, -3 Long, -2 Integer, -1 Byte, another n text or records of abs(n) bytes).
' Rows: the number of rows, at least 1.
' Cols: the number of columns, at least 1.
' Sheets: the number of sheets, at least 1.
' Handle: the library's number of the memory block (not a system handle); 0 when there is
'   none. cHMAFree leaves the old number, which then names nothing.
' ElementSize: bytes per element.
' TotalSize: Rows x Cols x Sheets x ElementSize.
' GigaBlocks: TotalSize divided by 2147483647 (always 0 for a block that exists).
' GigaRest: TotalSize modulo 2147483647.
' SheetElements: Rows x Cols.
' LastOffset: the byte offset in the block of the element last accessed; 0 after
'   cHMAClear.
' NoSpaces: 0 fills text arrays with a positive VarType with spaces when created or
'   cleared; any other value fills them with zero bytes.
' Reserved: not used.
' Note: as for disk arrays, the shape is the block's from cHMACreate on: changing the
'   dimensions in the record afterwards reaches no byte outside the block.
Type HugeArray
    RecordSize As Integer
    VarType As Integer
    Rows As Long
    Cols As Long
    Sheets As Long
    Handle As Long
    ElementSize As Long
    TotalSize As Long
    GigaBlocks As Long
    GigaRest As Long
    SheetElements As Long
    LastOffset As Long
    NoSpaces As Integer
    Reserved As String * 22
End Type
' Allocates the memory block of a huge memory array.
' The block holds zero bytes, or spaces for text arrays with a positive VarType while
' NoSpaces is 0.
' HMA: the record, with VarType, Rows, Cols, Sheets and NoSpaces set by the program.
' Returns: -1; 1 when the memory could not be allocated; 2 for VarType 0; 3, 4 or 5 for
'   Rows, Cols or Sheets below 1 (checked first, in that order).
' Note: a record that still holds a block loses it: free it with cHMAFree first.
' Example:
'   Dim H As HugeArray
'   H.VarType = -3: H.Rows = 1000: H.Cols = 1000: H.Sheets = 10
'   If cHMACreate(H) = -1 Then cHMAPut H, 1, 1, 1, 42
Declare Function cHMACreate (HMA As HugeArray) As Integer
' Frees the memory block of a huge memory array.
' HMA: the record; its Handle keeps the old number, which names nothing afterwards.
' Returns: -1 when the block was freed; 0 when the record holds none (Handle 0, or a
'   block freed already).
Declare Function cHMAFree (HMA As HugeArray) As Integer
' Reads one element of a huge memory array as a Variant.
' Numbers come back as Currency, Double, Single, Long, Integer or Byte; text as a String
' that ends at the element's first zero byte.
' HMA: the record of an allocated array.
' Row: the row, clamped into 1 to Rows.
' Col: the column, clamped into 1 to Cols.
' Sheet: the sheet, clamped into 1 to Sheets.
' Returns: the element; Empty when the record holds no block.
Declare Function cHMAGet (HMA As HugeArray, ByVal Row As Long, ByVal Col As Long, ByVal Sheet As Long) As Variant
' Writes one element of a huge memory array from a Variant.
' The value is converted to the element's type; text is cut or padded with spaces.
' HMA: the record of an allocated array; nothing happens without a block.
' Row: the row, clamped into 1 to Rows.
' Col: the column, clamped into 1 to Cols.
' Sheet: the sheet, clamped into 1 to Sheets.
' Value: the value to store.
' Note: a value that does not convert leaves the element as it was.
Declare Sub cHMAPut (HMA As HugeArray, ByVal Row As Long, ByVal Col As Long, ByVal Sheet As Long, Value As Variant)
' Copies one element of a huge memory array into a program's variable, byte for byte.
' HMA: the record of an allocated array; nothing happens without a block.
' Row: the row, clamped into 1 to Rows.
' Col: the column, clamped into 1 to Cols.
' Sheet: the sheet, clamped into 1 to Sheets.
' Element: the variable (a record) that receives ElementSize bytes.
Declare Sub cHMAGetType (HMA As HugeArray, ByVal Row As Long, ByVal Col As Long, ByVal Sheet As Long, Element As Any)
' Copies a program's variable into one element of a huge memory array, byte for byte.
' HMA: the record of an allocated array; nothing happens without a block.
' Row: the row, clamped into 1 to Rows.
' Col: the column, clamped into 1 to Cols.
' Sheet: the sheet, clamped into 1 to Sheets.
' Element: the variable whose first ElementSize bytes are copied.
Declare Sub cHMAPutType (HMA As HugeArray, ByVal Row As Long, ByVal Col As Long, ByVal Sheet As Long, Element As Any)
' Fills the whole block of a huge memory array.
' Spaces for text arrays with a positive VarType while NoSpaces is 0, zero bytes
' otherwise. LastOffset becomes 0.
' HMA: the record of an allocated array.
' Returns: -1; 6 when the record holds no block.
Declare Function cHMAClear (HMA As HugeArray) As Integer
' Fills one sheet of a huge memory array, or every sheet.
' HMA: the record of an allocated array.
' Sheet: the sheet, clamped into 1 to Sheets; -1 for every sheet.
' Returns: as cHMAClear.
Declare Function cHMAClearSheet (HMA As HugeArray, ByVal Sheet As Long) As Integer
' Fills one row of a huge memory array in one sheet or in every sheet.
' HMA: the record of an allocated array.
' Row: the row, clamped into 1 to Rows.
' Sheet: the sheet, clamped into 1 to Sheets; -1 for every sheet.
' Returns: as cHMAClear.
Declare Function cHMAClearRow (HMA As HugeArray, ByVal Row As Long, ByVal Sheet As Long) As Integer
' Fills one column of a huge memory array in one sheet or in every sheet.
' HMA: the record of an allocated array.
' Col: the column, clamped into 1 to Cols.
' Sheet: the sheet, clamped into 1 to Sheets; -1 for every sheet.
' Returns: as cHMAClear.
Declare Function cHMAClearCol (HMA As HugeArray, ByVal Col As Long, ByVal Sheet As Long) As Integer
' Like cHMAGet, for sheet 1 (a two-dimensional array).
Declare Function cHMAsGet (HMA As HugeArray, ByVal Row As Long, ByVal Col As Long) As Variant
' Like cHMAPut, for sheet 1.
Declare Sub cHMAsPut (HMA As HugeArray, ByVal Row As Long, ByVal Col As Long, Value As Variant)
' Like cHMAGetType, for sheet 1.
Declare Sub cHMAsGetType (HMA As HugeArray, ByVal Row As Long, ByVal Col As Long, Element As Any)
' Like cHMAPutType, for sheet 1.
Declare Sub cHMAsPutType (HMA As HugeArray, ByVal Row As Long, ByVal Col As Long, Element As Any)
' Like cHMAClearRow, for sheet 1.
Declare Function cHMAsClearRow (HMA As HugeArray, ByVal Row As Long) As Integer
' Like cHMAClearCol, for sheet 1.
Declare Function cHMAsClearCol (HMA As HugeArray, ByVal Col As Long) As Integer
' Reads element Index of row 1 of sheet 1 of a huge memory array.
' HMA: the record of an allocated array.
' Index: the column, clamped into 1 to Cols.
' Returns: as cHMAGet.
Declare Function cHMArGet (HMA As HugeArray, ByVal Index As Long) As Variant
' Writes element Index of row 1 of sheet 1 of a huge memory array from a Variant.
' HMA: the record of an allocated array; nothing happens without a block.
' Index: the column, clamped into 1 to Cols.
' Value: the value to store, converted as cHMAPut converts it.
Declare Sub cHMArPut (HMA As HugeArray, ByVal Index As Long, Value As Variant)
' Copies element Index of row 1 of sheet 1 of a huge memory array into a variable.
' HMA: the record of an allocated array; nothing happens without a block.
' Index: the column, clamped into 1 to Cols.
' Element: the variable that receives ElementSize bytes.
Declare Sub cHMArGetType (HMA As HugeArray, ByVal Index As Long, Element As Any)
' Copies a variable into element Index of row 1 of sheet 1 of a huge memory array.
' HMA: the record of an allocated array; nothing happens without a block.
' Index: the column, clamped into 1 to Cols.
' Element: the variable whose first ElementSize bytes are copied.
Declare Sub cHMArPutType (HMA As HugeArray, ByVal Index As Long, Element As Any)
