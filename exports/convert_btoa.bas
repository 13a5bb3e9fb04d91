' Btoa files: any file to printable base-85 text ("xbtoa5") and back.
' An encoded file is plain text that passes through mail and other text channels: a header
' line "xbtoa5 78 name Begin", lines of 77 characters from "!" to "u" ("z" stands for four
' zero bytes, "y" for four spaces) each followed by a check character, and a trailer line
' "xbtoa End N ..." with the byte count and three checksums.
' Both exports work in the text mode of Windows, on every platform: encoding reads a CR LF
' pair as a single LF and stops at the first Chr(26) (Ctrl-Z); decoding writes every LF as
' CR LF. Windows text files come back byte for byte, and so do other files that hold no
' Chr(26) and no LF without a CR before it.

' Encodes any file as a printable btoa text file.
' The header records the name of InputFile without its folder (the part after the last "\" or
' ":"); cAtoB gives the decoded file that name. An existing OutputFile is replaced.
' InputFile: the path of the file to encode.
' OutputFile: the path of the text file to write.
' Returns: the size in bytes of the written file; -1 when InputFile is "" or cannot be opened
'   or read, or the size of the written file cannot be read or passes 2,147,483,647; -2 when
'   OutputFile cannot be created or written, or is InputFile itself.
' Note: an OutputFile that reaches InputFile, under whatever spelling of its path, gives -2
'   instead of destroying the input. When writing fails, the part already written stays.
'   The header line holds at most 99 characters, so cAtoB decodes only files whose name
'   (without its folder) has at most 83 characters; a longer name is still encoded.
' Example:
'   If cBtoA("C:\Data\sales.xls", "C:\Mail\sales.txt") < 0 Then MsgBox "Not encoded"
Declare Function cBtoA (ByVal InputFile As String, ByVal OutputFile As String) As Long
' Decodes a btoa text file into the file named in its header.
' Lines before the header, such as mail headers, are skipped. The decoded file is written in
' the current directory (CurDir) under the name the header records, replacing any file of
' that name; a name holding spaces is cut at the first one. Each line's check character, the
' byte count and the three checksums are verified.
' InputFile: the path of the btoa text file.
' Returns: 0 when the file was decoded, or one of these codes:
'   - -1: InputFile cannot be opened; a body line is damaged, too long, too short or cut off;
'     the decoded file cannot be created or written, or would be InputFile itself; or a line
'     holding the word "archive" comes before the header (btoa archives are not decoded).
'   - -4: no header line, or one that cannot be read: the older form "xbtoa Begin", a name
'     of "-", ".", "..", a line length outside 2 to 99, or a header line longer than 99
'     characters (a name of more than 83 characters), whose name could be cut.
'   - -5: the byte counts or checksums of the trailer do not match the body.
'   - -6: the trailer is missing or cannot be read.
' Note: the recorded name is used without any folder part (all up to the last "\", "/" or ":"
'   is dropped), so decoding never writes outside the current directory, and a header that
'   names InputFile itself gives -1 instead of overwriting it. When decoding fails after the
'   header, the part of the file already written stays.
' Example:
'   ChDir "C:\Incoming"
'   If cAtoB("C:\Mail\sales.txt") <> 0 Then MsgBox "Damaged file"
Declare Function cAtoB (ByVal InputFile As String) As Long
