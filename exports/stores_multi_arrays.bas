' Multi-array files: up to twenty disk arrays in one file, each with its own element
' type and its own rows, columns and sheets, behind one 748-byte header that is the
' program's MultiArray record. The exports work as the disk-array exports of the same
' name (cDAGet for cMDAGet and so on) and take the array number, 1 to 20, first.
' Element access with an array number outside 1 to 20, or of an array not in use, does
' nothing (Get returns Empty).
'
' Status codes: those of the disk arrays (see cDACreate), with 21: an array number
' outside 1 to 20 (the Clear exports), and 6 also for an element of more than 32768
' bytes.

' The record of a multi-array file, and the header of the file.
' Arrays are held in twenty slots, 0 to 19; slot k is array number k + 1. A slot whose
' VarType is 0 is not used.
' HeaderSize: always 748.
' Signature: the 7 characters "KOV_347".
' FileName: the file's name; it ends at the first space or zero byte.
' Reserved1: not used.
' VarType: the element type of each slot, as in the DiskArray record; 0 for a slot not
'   used.
' NoSpaces: per slot, as in the DiskArray record.
' Reserved2: not used.
' Rows: the rows of each slot.
' Cols: the columns of each slot.
' Sheets: the sheets of each slot.
' Handle: the library's number of the open file; -1 when not open (also after
'   cMDAClose).
' FileSize: 748 plus the data sizes of the slots in use.
' ElementSize: bytes per element of each slot.
' SheetElements: Rows x Cols of each slot.
' DataStart: the file offset of each slot's first element; the slots in use follow the
'   header in slot order, without gaps.
' LastOffset: the file offset of the element last read or written.
' LastSeek: where the last access positioned the file.
' Elapsed: milliseconds the last operation took.
' Reserved3: not used.
' Note: on opening, DataStart is taken from the header; a data area that would lie in
'   the header or past the end of the file gives 16.
Type MultiArray
    HeaderSize As Integer
    Signature As String * 7
    FileName As String * 128
    Reserved1 As Byte
    VarType(0 To 19) As Integer
    NoSpaces(0 To 19) As Integer
    Reserved2 As String * 2
    Rows(0 To 19) As Long
    Cols(0 To 19) As Long
    Sheets(0 To 19) As Long
    Handle As Long
    FileSize As Long
    ElementSize(0 To 19) As Long
    SheetElements(0 To 19) As Long
    DataStart(0 To 19) As Long
    LastOffset As Long
    LastSeek As Long
    Elapsed As Long
    Reserved3 As String * 28
End Type
' Creates a multi-array file, or opens an existing one.
' Creating deletes any file of that name, lays out every slot whose VarType is not 0,
' writes the header and fills each slot's data (spaces for text slots with a positive
' VarType and NoSpaces 0, zero bytes otherwise).
' MDA: the record; FileName and, for creating, each used slot's VarType, Rows, Cols,
'   Sheets and NoSpaces.
' CreateFlag: non-zero creates a new file; 0 opens an existing one.
' Returns: -1 when the file is open; otherwise a status code (see the introduction).
' Note: a slot refused while creating (7, 8, 9 or 6) leaves the new, empty file behind,
'   closed. A layout that would reach 2 GB is refused with 4 and the file deleted.
' Example:
'   Dim M As MultiArray
'   M.FileName = "book.dat"
'   M.VarType(0) = -5: M.Rows(0) = 100: M.Cols(0) = 12: M.Sheets(0) = 1
'   M.VarType(1) = 30: M.Rows(1) = 100: M.Cols(1) = 1: M.Sheets(1) = 1
'   If cMDACreate(M, True) = -1 Then cMDAPut 2, M, 1, 1, 1, "Widgets"
Declare Function cMDACreate (MDA As MultiArray, ByVal CreateFlag As Integer) As Integer
' Closes a multi-array file, and deletes it on request.
' MDA: the record; its Handle becomes -1.
' DeleteFlag: True (-1) also deletes the file FileName names.
' Returns: as cDAClose.
Declare Function cMDAClose (MDA As MultiArray, ByVal DeleteFlag As Integer) As Long
' Reads one element of one array of a multi-array file as a Variant.
' ArrayNumber: the array, 1 to 20.
' MDA: the record of an open file.
' Row: the row, clamped into the array's rows.
' Col: the column, clamped into the array's columns.
' Sheet: the sheet, clamped into the array's sheets.
' Returns: the element, as cDAGet gives it; Empty for a file not open, an array number
'   outside 1 to 20 or an array not in use.
Declare Function cMDAGet (ByVal ArrayNumber As Long, MDA As MultiArray, ByVal Row As Long, ByVal Col As Long, ByVal Sheet As Long) As Variant
' Writes one element of one array of a multi-array file from a Variant.
' ArrayNumber: the array, 1 to 20; nothing happens for another number.
' MDA: the record of an open file.
' Row: the row, clamped into the array's rows.
' Col: the column, clamped into the array's columns.
' Sheet: the sheet, clamped into the array's sheets.
' Value: the value to store, converted as cDAPut converts it.
Declare Sub cMDAPut (ByVal ArrayNumber As Long, MDA As MultiArray, ByVal Row As Long, ByVal Col As Long, ByVal Sheet As Long, Value As Variant)
' Copies one element of one array of a multi-array file into a variable, byte for byte.
' ArrayNumber: the array, 1 to 20.
' MDA: the record of an open file.
' Row: the row, clamped into the array's rows.
' Col: the column, clamped into the array's columns.
' Sheet: the sheet, clamped into the array's sheets.
' Element: the variable that receives the array's ElementSize bytes.
Declare Sub cMDAGetType (ByVal ArrayNumber As Long, MDA As MultiArray, ByVal Row As Long, ByVal Col As Long, ByVal Sheet As Long, Element As Any)
' Copies a variable into one element of one array of a multi-array file, byte for byte.
' ArrayNumber: the array, 1 to 20.
' MDA: the record of an open file.
' Row: the row, clamped into the array's rows.
' Col: the column, clamped into the array's columns.
' Sheet: the sheet, clamped into the array's sheets.
' Element: the variable whose first ElementSize bytes are written.
Declare Sub cMDAPutType (ByVal ArrayNumber As Long, MDA As MultiArray, ByVal Row As Long, ByVal Col As Long, ByVal Sheet As Long, Element As Any)
' Fills the whole data area of one array of a multi-array file.
' ArrayNumber: the array, 1 to 20.
' MDA: the record of an open file.
' Returns: -1 (also for an array not in use, which has nothing to fill); 21 for an array
'   number outside 1 to 20; 18 when the file is not open; 11, 12 or -32760 when writing
'   fails (the file is then closed).
Declare Function cMDAClear (ByVal ArrayNumber As Long, MDA As MultiArray) As Integer
' Fills one sheet, or every sheet, of one array of a multi-array file.
' ArrayNumber: the array, 1 to 20.
' MDA: the record of an open file.
' Sheet: the sheet, clamped into the array's sheets; -1 for every sheet.
' Returns: as cMDAClear.
Declare Function cMDAClearSheet (ByVal ArrayNumber As Long, MDA As MultiArray, ByVal Sheet As Long) As Integer
' Fills one row of one array of a multi-array file, in one sheet or every sheet.
' ArrayNumber: the array, 1 to 20.
' MDA: the record of an open file.
' Row: the row, clamped into the array's rows.
' Sheet: the sheet, clamped into the array's sheets; -1 for every sheet.
' Returns: as cMDAClear.
Declare Function cMDAClearRow (ByVal ArrayNumber As Long, MDA As MultiArray, ByVal Row As Long, ByVal Sheet As Long) As Integer
' Fills one column of one array of a multi-array file, in one sheet or every sheet.
' ArrayNumber: the array, 1 to 20.
' MDA: the record of an open file.
' Col: the column, clamped into the array's columns.
' Sheet: the sheet, clamped into the array's sheets; -1 for every sheet.
' Returns: as cMDAClear.
Declare Function cMDAClearCol (ByVal ArrayNumber As Long, MDA As MultiArray, ByVal Col As Long, ByVal Sheet As Long) As Integer
' Like cMDAGet, for sheet 1.
Declare Function cMDAsGet (ByVal ArrayNumber As Long, MDA As MultiArray, ByVal Row As Long, ByVal Col As Long) As Variant
' Like cMDAPut, for sheet 1.
Declare Sub cMDAsPut (ByVal ArrayNumber As Long, MDA As MultiArray, ByVal Row As Long, ByVal Col As Long, Value As Variant)
' Like cMDAGetType, for sheet 1.
Declare Sub cMDAsGetType (ByVal ArrayNumber As Long, MDA As MultiArray, ByVal Row As Long, ByVal Col As Long, Element As Any)
' Like cMDAPutType, for sheet 1.
Declare Sub cMDAsPutType (ByVal ArrayNumber As Long, MDA As MultiArray, ByVal Row As Long, ByVal Col As Long, Element As Any)
' Like cMDAClearRow, for sheet 1.
Declare Function cMDAsClearRow (ByVal ArrayNumber As Long, MDA As MultiArray, ByVal Row As Long) As Integer
' Like cMDAClearCol, for sheet 1.
Declare Function cMDAsClearCol (ByVal ArrayNumber As Long, MDA As MultiArray, ByVal Col As Long) As Integer
' Reads element Index of row 1 of sheet 1 of one array of a multi-array file.
' ArrayNumber: the array, 1 to 20.
' MDA: the record of an open file.
' Index: the column, clamped into the array's columns.
' Returns: as cMDAGet.
Declare Function cMDArGet (ByVal ArrayNumber As Long, MDA As MultiArray, ByVal Index As Long) As Variant
' Writes element Index of row 1 of sheet 1 of one array of a multi-array file.
' ArrayNumber: the array, 1 to 20.
' MDA: the record of an open file.
' Index: the column, clamped into the array's columns.
' Value: the value to store, converted as cDAPut converts it.
Declare Sub cMDArPut (ByVal ArrayNumber As Long, MDA As MultiArray, ByVal Index As Long, Value As Variant)
' Copies element Index of row 1 of sheet 1 of one array of a multi-array file.
' ArrayNumber: the array, 1 to 20.
' MDA: the record of an open file.
' Index: the column, clamped into the array's columns.
' Element: the variable that receives the array's ElementSize bytes.
Declare Sub cMDArGetType (ByVal ArrayNumber As Long, MDA As MultiArray, ByVal Index As Long, Element As Any)
' Copies a variable into element Index of row 1 of sheet 1 of one array of a
' multi-array file.
' ArrayNumber: the array, 1 to 20.
' MDA: the record of an open file.
' Index: the column, clamped into the array's columns.
' Element: the variable whose first ElementSize bytes are written.
Declare Sub cMDArPutType (ByVal ArrayNumber As Long, MDA As MultiArray, ByVal Index As Long, Element As Any)
