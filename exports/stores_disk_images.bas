' Arrays on disk, record bytes and the ID stack: saving a whole array to a file and
' loading it back; byte-level helpers for user-defined records; and an Integer array
' used as a set of 16-bit identifiers in which 0 marks a free slot.

' Saves the data of a numeric array to a file, or loads it back.
' The file holds exactly the data bytes, no header: the elements of all dimensions in
' memory order, each in its natural form.
' FileName: the file.
' Arr: the array, of any numeric type and any number of dimensions.
' LoadFlag: 0 saves; any other value loads, into an array dimensioned for the file.
' Returns: the bytes transferred, or the codes of cHugeStrOnDisk: -1 empty name, -2 bad
'   name, -3 the old file stays, -4 cannot create or open, -11 and -12 writing failed
'   (the file is deleted), -16 the file's size is not the array's (nothing is loaded),
'   -19 and -20 reading failed; and -14 for no array, or an array of Strings, Variants,
'   objects or records.
' Example:
'   Dim T(1 To 10, 0 To 2) As Integer
'   Debug.Print cArrayOnDisk("table.bin", T(), 0)   ' 60
Declare Function cArrayOnDisk (ByVal FileName As String, Arr() As Any, ByVal LoadFlag As Integer) As Long
' Saves a String array to a file, or loads it back.
' The file's format is the library's own: the element count, then for each element its
' byte length and its bytes, the numbers 32-bit little-endian; elements of all
' dimensions in memory order.
' FileName: the file.
' Arr: the String array, any number of dimensions.
' LoadFlag: 0 saves every element; any other value loads: the first elements receive the
'   file's strings and the others are left as they are.
' Count: receives the number of elements saved or loaded.
' Returns: the file's size, or -1 empty name, -2 bad name, -3 the old file stays, -4
'   cannot create, open or read, -11 and -12 writing failed (the file is deleted), -14 no
'   String array, -16 a damaged file (counts and lengths that do not fill it exactly) or
'   one of more strings than the array has (nothing is loaded), -32760 no memory.
Declare Function cArrayStringOnDisk (ByVal FileName As String, Arr() As String, ByVal LoadFlag As Integer, Count As Long) As Long
' Compares the first bytes of two records.
' A and B are taken as the caller passes them and Length as given: the record helpers
' are the one place where the library trusts a length it is told. Pass LenB of the
' record.
' A: the first record.
' B: the second record.
' Length: the bytes compared.
' Returns: -1 when they are equal; 0 when they differ, or Length is below 1.
Declare Function cTypesCompare (A As Any, B As Any, ByVal Length As Long) As Integer
' Copies the first bytes of one record over another, byte by byte from the first.
' Source: the record read; its Length bytes are trusted to exist.
' Target: the record written; its Length bytes are trusted to exist.
' Length: the bytes copied; below 1 copies nothing.
Declare Sub cTypesCopy (Source As Any, Target As Any, ByVal Length As Long)
' Gives the first bytes of a record as a String.
' Rec: the record; its Length bytes are trusted to exist.
' Length: the bytes taken.
' Returns: the bytes; "" when Length is below 1.
Declare Function cTypeTransfert (Rec As Any, ByVal Length As Long) As String
' Sets the first bytes of a record to zero.
' Rec: the record; its Length bytes are trusted to exist.
' Length: the bytes cleared; below 1 clears nothing.
Declare Sub cTypeClear (Rec As Any, ByVal Length As Long)
' Gives bytes from a position of a record as a String.
' Rec: the record; the bytes from Start to Start + Length - 1 are trusted to exist.
' Start: the first byte, counted from 1.
' Length: the bytes taken.
' Returns: the bytes; "" when Start or Length is below 1.
' Example:
'   Dim R As String * 6: R = "ABCDEF"
'   Debug.Print cTypeMid(ByVal R, 2, 3)   ' BCD
Declare Function cTypeMid (Rec As Any, ByVal Start As Long, ByVal Length As Long) As String
' Stores an identifier in the first free slot of an ID stack.
' IDs: the Integer array, any number of dimensions, in memory order.
' ID: the identifier, not 0.
' Returns: 0 when it is stored; -1 when no slot is free, ID is 0, or IDs is no Integer
'   array.
' Note: an identifier already in the stack is not stored twice: the result is 0 and
'   nothing is written.
Declare Function cPushID (IDs() As Integer, ByVal ID As Integer) As Long
' Frees the first slot that holds an identifier.
' IDs: the Integer array.
' ID: the identifier.
' Returns: 0 when a slot was freed; -1 when none holds ID.
Declare Function cPopID (IDs() As Integer, ByVal ID As Integer) As Long
' Frees the last used slot of an ID stack.
' IDs: the Integer array; the scan runs down from the last element.
' Returns: 0 when a slot was freed; -1 when every slot is free.
Declare Function cPopLastID (IDs() As Integer) As Long
' Gives the element a number of places after the first.
' IDs: the Integer array.
' N: the places after the first element (0 for the first).
' Returns: the element; 0 when N is negative or past the last element.
Declare Function cGetID (IDs() As Integer, ByVal N As Long) As Integer
' Frees every slot of an ID stack.
' IDs: the Integer array.
' Returns: 0; -1 for an empty array or no Integer array.
Declare Function cClearID (IDs() As Integer) As Long
