' Path names: taking names apart and putting them together, checking them,
' and deriving the names other file functions need.

' The four parts of a path name, as cSplitPath fills them.
' Drive: the drive letter and its colon ("C:"); "" when the name has no drive.
' Directory: the directory part as the name gives it, with its trailing backslash
'   ("\Data\2024\", or "Data\" for a relative name); "" when there is none.
' FileName: the file name without its extension ("orders").
' Ext: the extension with its full stop (".txt"); "" when there is none.
Type PathParts
    Drive As String
    Directory As String
    FileName As String
    Ext As String
End Type
' Splits a path name into drive, directory, file name and extension.
' The name is first checked as cIsFilenameValid checks it, and only a valid name is split.
' The disk is not touched.
' Path: the path name, read up to its first zero byte.
' Parts: the record that receives the four parts; the strings it held are replaced.
' Returns: -1 when the name is valid and Parts is filled; otherwise the code that
'   cIsFilenameValid gives (0 to 6), and all four fields of Parts are set to "".
' Example:
'   Dim P As PathParts
'   If cSplitPath("C:\Data\orders.txt", P) = -1 Then Debug.Print P.FileName   ' orders
Declare Function cSplitPath (ByVal Path As String, Parts As PathParts) As Integer
' Joins a drive, a directory, a file name and an extension into one path name.
' Missing separators are added: a colon after the drive letter, a backslash after a
' directory that does not end in one, and a full stop before an extension without one.
' The parts are not checked, and the disk is not touched.
' Drive: the drive; only its first character is used, followed by a colon; "" for none.
' Directory: the directory part, with or without its trailing backslash; "" for none.
' FileName: the file name without extension; "" for none.
' Ext: the extension, with or without its full stop; "" for none.
' Returns: the joined name; "" when all four parts are "".
' Example:
'   Debug.Print cMakePath("C", "\Data", "orders", "txt")   ' C:\Data\orders.txt
Declare Function cMakePath (ByVal Drive As String, ByVal Directory As String, ByVal FileName As String, ByVal Ext As String) As String
' Gives the absolute form of a path name, taken against the current directory.
' The components "." and ".." are resolved in the text, and slashes may stand for
' backslashes; the file need not exist.
' Path: the path name, relative or absolute.
' Returns: the absolute name with backslashes ("C:\Data\orders.txt"); "" when Path is ""
'   or the result would be longer than 259 characters.
' Note: the Linux library gives names in the same Windows form: the root directory "/"
'   is "C:\".
Declare Function cFullPath (ByVal Path As String) As String
' Shortens a path name for display by leaving out directory components.
' A name that fits in MaxLength characters comes back unchanged. Otherwise the drive, the
' file name and the extension are kept, and the directory components are taken from the
' left while they fit; one that does not fit is left out, and a later, shorter one may
' still be taken. The last backslash of the shortened directory becomes a full stop to
' mark the cut.
' Path: the path name; it must pass cIsFilenameValid.
' MaxLength: the longest result wanted, in characters; 25 or more.
' Returns: the path, shortened where needed; "" when Path is not valid or MaxLength is
'   below 25.
' Note: when no component fits beside a long file name, only the directory's leading
'   backslash is kept, and it too becomes a full stop ("\dir\name.txt" may come back as
'   ".name.txt"); such a result can still be longer than MaxLength.
' Example:
'   Debug.Print cTruncatePath("C:\first\second-long-part\third\file.txt", 30)
'   ' prints C:\first\third.file.txt
Declare Function cTruncatePath (ByVal Path As String, ByVal MaxLength As Long) As String
' Adds an extension to a file name that has none.
' A name has an extension when a full stop follows its last backslash or slash; a name
' that ends in a full stop has one too (an empty one). A full stop is put between the
' name and the extension unless Ext begins with one.
' FileName: the file name, with or without a directory.
' Ext: the extension to add, with or without its leading full stop.
' Returns: the name with the extension added; the name unchanged when it already has an
'   extension or Ext is ""; "" when FileName is "".
' Note: names of any length are accepted; nothing is cut at a fixed buffer size.
' Example:
'   Debug.Print cDefaultExtension("report", "txt")       ' report.txt
'   Debug.Print cDefaultExtension("report.doc", "txt")   ' report.doc
Declare Function cDefaultExtension (ByVal FileName As String, ByVal Ext As String) As String
' Adds an extension to a file name that has none, keeping one it already has.
' Despite its name it does not replace an existing extension: the result is always that
' of cDefaultExtension. To replace an extension, remove it first with cStripExtension.
' FileName: the file name, with or without a directory.
' Ext: the extension to add, with or without its leading full stop.
' Returns: the name with the extension added; the name unchanged when it already has an
'   extension or Ext is ""; "" when FileName is "".
' Note: the result is kept equal to that of cDefaultExtension because existing programs
'   rely on it.
' Example:
'   Debug.Print cFixedExtension("a.txt", "dat")                     ' a.txt
'   Debug.Print cDefaultExtension(cStripExtension("a.txt"), "dat")  ' a.dat
Declare Function cFixedExtension (ByVal FileName As String, ByVal Ext As String) As String
' Adds an extension to a file name that has none.
' Ext may be given with or without its leading full stop; either way an existing
' extension is kept, and the result is that of cDefaultExtension.
' FileName: the file name, with or without a directory.
' Ext: the extension to add, with or without its leading full stop.
' Returns: the name with the extension added; the name unchanged when it already has an
'   extension or Ext is ""; "" when FileName is "".
Declare Function cAddExtension (ByVal FileName As String, ByVal Ext As String) As String
' Removes the extension from a file name.
' The extension runs from the last full stop, provided that it comes after the last
' backslash (in a name without backslashes, the last slash): a full stop in a directory
' name is no extension.
' FileName: the file name, with or without a directory.
' Returns: the name without its extension and its full stop; the name unchanged when it
'   has no extension; "" for "".
' Example:
'   Debug.Print cStripExtension("C:\dir.x\file.tar.gz")   ' C:\dir.x\file.tar
Declare Function cStripExtension (ByVal FileName As String) As String
' Gives the file name part of a path name, without drive and directory.
' FileName: the path name.
' Returns: the text after the last backslash (in a name without backslashes, after the
'   last slash); the whole name when it has neither; "" when the name ends in a
'   separator, and for "".
' Example:
'   Debug.Print cStripFilePath("C:\Data\orders.txt")   ' orders.txt
Declare Function cStripFilePath (ByVal FileName As String) As String
' Gives the directory part of a path name, without the file name.
' The name is cut at its last backslash (in a name without backslashes, its last slash);
' slashes then become backslashes, and the trailing backslash goes unless it belongs to a
' root ("C:\" or "\").
' FileName: the path name.
' Returns: the directory ("C:\Data" for "C:\Data\orders.txt", "C:\" for "C:\orders.txt");
'   "." when the name has no backslash or slash; "" for "".
' Note: a directory part longer than 2,048 characters is cut to 2,048.
Declare Function cStripFileName (ByVal FileName As String) As String
' Gives the drive letter of the volume that holds a file.
' FileName: the name of an existing file or directory.
' Returns: one capital letter, as "C"; a single space " " when the file cannot be found,
'   and for "".
' Note: on Linux every existing file is on drive "C".
Declare Function cFileDrive (ByVal FileName As String) As String
' Checks the form of a file name without looking at the disk.
' A name is valid when it has 1 to 516 characters; holds no control character and none of
' " / * ? < > |; has at most one full stop in each component, never as its first
' character or right after a backslash or colon; has a colon only as its second character,
' after a letter; has no three backslashes in a row (two at the start, as in a network
' name, are fine); and does not end in a colon or a backslash. One leading "..\" is
' allowed.
' FileName: the name to check, read up to its first zero byte.
' Returns: -1 when the name is valid; otherwise a code:
'   0 empty, longer than 516 characters, a forbidden character, a second full stop in a
'   component, a full stop first, or a colon or backslash at the end;
'   1 more than 256 characters before the full stop of a component;
'   2 more than 256 characters in an extension;
'   3 three backslashes in a row;
'   4 the character before the colon is not a letter A to Z or a to z;
'   5 a colon anywhere but at the second character;
'   6 a full stop right after a backslash or a colon.
' Note: slashes are refused here, though the other path functions accept them as
'   separators. A component without a full stop is not held to 256 characters; only the
'   516 of the whole name applies to it.
Declare Function cIsFilenameValid (ByVal FileName As String) As Integer
' Tells whether every existing part of a path is found on disk under its own name.
' Each component, from the file name back to the drive, is looked up; the name fails when
' the system finds an entry of another name for it, as it does for a wildcard or a short
' alias such as PROGRA~1. A component that does not exist does not make the name fail.
' FileName: the path name; slashes count as backslashes, and one trailing backslash is
'   ignored.
' Returns: True (-1) when no component leads to an entry of another name; False (0) when
'   one does, and for "".
Declare Function cFileIsLegal (ByVal FileName As String) As Integer
' Makes an 8-character file name that no file or directory in the current directory has.
' The name is "~~" followed by a small letter (the first from "a" up that gives a free
' name) and the last five digits of the process number, as "~~a01234"; a prefix of one
' or two characters takes the place of the start.
' Prefix: one or two characters to begin the name with; "" or a longer prefix is ignored,
'   and the name begins with "~~".
' Returns: the name, without directory; "" when all 26 letters give names already taken.
' Note: no file is created, so another program may take the name before you use it.
' Example:
'   Debug.Print cUniqueFileName("AB")   ' as ABa01234
Declare Function cUniqueFileName (Prefix As String) As String
' Tells whether a file or directory exists.
' FileName: the name of the file or directory; slashes may stand for backslashes.
' Returns: -1 when it exists; otherwise the error number of the failed test: 2 when there
'   is no such file or path (also for ""), 13 when access is denied.
' Note: the result is not a Boolean; test it with = -1, since If treats 2 and 13 as
'   True as well.
Declare Function cFilePathExists (ByVal FileName As String) As Integer
