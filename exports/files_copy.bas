' File copy, move and delete: the library's block copy with its codes, the
' system's copy and move, sets of files, tree deletes and directories made
' and removed. A read-only file is never replaced or deleted unless a
' function says that it forces; that holds on every system and for every user.

' Copies a file with the library's own block copy.
' The target is created, or emptied when it exists. The source is only read: when
' the copy fails after the target was created, the target is deleted.
' Source: the file to copy.
' Target: the file to create or replace.
' Returns: the number of bytes copied (0 for an empty file), or a code:
'   - -32760: no memory for the copy buffer.
'   - -32750: the source cannot be opened (missing, a directory, denied).
'   - -32751: the target cannot be created: denied, read-only, a directory, or the
'     source itself under another name (a second spelling, a hard or symbolic link).
'   - -32730: a read error on the source.
'   - -32740: a write error on the target (a full disk, a size limit).
'   - -32720: fewer bytes written than read.
'   A copy of more than 2 GB gives a negative count and its target is deleted.
' Note: where the system offers a copy offload that gives the same bytes (Linux
'   copy_file_range), it is used; the result is the same.
' Example:
'   If cFileCopy("C:\Data\orders.dat", "C:\Backup\orders.dat") < 0 Then MsgBox "copy failed"
Declare Function cFileCopy (Source As String, Target As String) As Long
' Copies a file with the block copy, replacing a read-only target when forced.
' Source: the file to copy.
' Target: the file to create or replace.
' Force: True (-1) clears the target's attributes before the copy and gives the
'   target the source's attributes after it; any other value copies as cFileCopy.
' Returns: as cFileCopy; -1 when the copy succeeded but the attributes could not be
'   given to the target.
Declare Function cFileForceCopy (Source As String, Target As String, ByVal Force As Integer) As Long
' Copies a file with the system's copy, overwriting an existing target.
' The attributes and the last-write time go with the bytes. A read-only target is
' not replaced.
' Source: the file to copy.
' Target: the file to create or replace.
' Returns: -1 on success; else the system's error value: 2 the source is missing,
'   3 the path is missing, 5 denied (a read-only or directory target), 32 the target
'   is the source under another name, 112 the disk is full.
Declare Function cFileCopy2 (Source As String, Target As String) As Long
' Moves a file or renames it, across drives too.
' An existing target is replaced unless it is read-only; between volumes the file
' is copied and the source deleted only after the copy is complete.
' Source: the file to move.
' Target: its new name.
' Returns: -1 on success; else the system's error value (2 missing source, 5 denied,
'   17 a directory cannot move to another drive).
Declare Function cFileMove (Source As String, Target As String) As Long
' Renames a file or directory with the runtime's rename.
' OldFile: the present name.
' NewFile: the new name; it must not exist.
' Returns: -1 on success; else the runtime's error number (2 OldFile is missing,
'   13 NewFile exists or access is denied).
Declare Function cRenameFile (OldFile As String, NewFile As String) As Integer
' Copies the files of a directory that match a mask with the system's copy.
' Names beginning with a full stop are left out.
' SourceDirectory: the directory to copy from; "" is refused.
' TargetDirectory: the directory to copy into; "" is refused.
' Mask: a name pattern with * and ?, case ignored; "" and "*.*" take every file.
' Options: the sum of:
'   - 1: replace existing targets (without it an existing target is a failure).
'   - 2: copy the subdirectories too, with the same options.
'   - 8: the progress text on two lines (cFilesCopyExt).
'   - 16: keep the targets' attributes (without it they are cleared before each copy,
'     so that a read-only target can be replaced).
' Returns: the number of files copied; minus the number of failures when a copy failed.
' Note: with option 2 a file of SourceDirectory\sub goes to TargetDirectory\sub, which
'   is made when missing. Symbolic links to directories are not followed, and a target
'   directory inside the source is not copied into itself.
Declare Function cFilesCopy (SourceDirectory As String, TargetDirectory As String, Mask As String, ByVal Options As Long) As Long
' Copies the files of a directory like cFilesCopy and shows each file's name on a
' display object.
' Before each file the object's Caption property is set to the source and target
' joined by " >>> " (with option 8: the source, a line break, then " >>> " and the
' target). On Linux the files are copied and nothing is shown.
' Display: the object, as ObjPtr gives it (a label or form); 0 for none.
' SourceDirectory: as cFilesCopy.
' TargetDirectory: as cFilesCopy.
' Mask: as cFilesCopy.
' Options: as cFilesCopy.
' Returns: as cFilesCopy.
Declare Function cFilesCopyExt (ByVal Display As LongPtr, SourceDirectory As String, TargetDirectory As String, Mask As String, ByVal Options As Long) As Long
' Moves the files of a directory that match a mask with the system's move.
' It is called as cFilesCopy is; option 16 keeps the targets' attributes. Moved
' subdirectories (option 2) leave their empty source directories behind.
' SourceDirectory: the directory to move from; "" is refused.
' TargetDirectory: the directory to move into; "" is refused.
' Mask: as cFilesCopy.
' Options: as cFilesCopy.
' Returns: the number of files moved; minus the number of failures when one failed.
Declare Function cFilesMove (SourceDirectory As String, TargetDirectory As String, Mask As String, ByVal Options As Long) As Long
' Moves the files of a directory like cFilesMove.
' The display object is not used: no progress is shown.
' Display: ignored.
' SourceDirectory: as cFilesMove.
' TargetDirectory: as cFilesMove.
' Mask: as cFilesMove.
' Options: as cFilesMove.
' Returns: as cFilesMove.
Declare Function cFilesMoveExt (ByVal Display As LongPtr, SourceDirectory As String, TargetDirectory As String, Mask As String, ByVal Options As Long) As Long
' Copies a file while a small window shows four lines of text and a progress bar.
' The bar moves one step per 32,768 bytes. On Linux the file is copied without a window.
' Text1: the first line of the window.
' Text2: the second line.
' Text3: the third line.
' Text4: the fourth line.
' Source: the file to copy.
' Target: the file to create anew; it must not be the source (case ignored).
' Returns: -1 on success, 0 on failure (a partial target is deleted).
Declare Function cDBFileCopy (Text1 As String, Text2 As String, Text3 As String, Text4 As String, Source As String, Target As String) As Integer
' Copies a file and moves the client's progress bar one step per 32,768 bytes.
' ProgressBar: the window handle (hWnd) of a progress-bar control; 0 for none. On
'   Linux it is not used.
' Source: the file to copy.
' Target: the file to create anew.
' Returns: -1 on success, 0 on failure (a partial target is deleted).
Declare Function cPBFileCopy (ByVal ProgressBar As LongPtr, Source As String, Target As String) As Integer
' Deletes a file.
' FileName: the file; a read-only file is not deleted.
' Returns: -1 when the file is deleted or was not there; else the runtime's error
'   number (13 read-only, a directory, or denied).
Declare Function cKillFile (FileName As String) As Integer
' Deletes a file after clearing its attributes, read-only included.
' FileName: the file.
' Returns: -1 when the file is deleted or was not there; 0 when its attributes cannot
'   be cleared; else the runtime's error number.
Declare Function cKillFileAll (FileName As String) As Integer
' Deletes the files a pattern matches.
' Pattern: a directory and a file pattern with * and ?, as "C:\Temp\*.bak".
'   Directories are left; read-only files are not deleted.
' Returns: the number of files deleted.
Declare Function cKillFiles (Pattern As String) As Integer
' Deletes the files a pattern matches after clearing their attributes.
' Pattern: as cKillFiles. Files whose attributes cannot be cleared are skipped.
' Returns: the number of files deleted.
Declare Function cKillFilesAll (Pattern As String) As Integer
' Removes an empty directory.
' Directory: the directory; a read-only one is not removed.
' Returns: -1 on success; else the runtime's error number (2 missing, 13 denied or
'   read-only, 41 not empty).
Declare Function cKillDir (Directory As String) As Integer
' Deletes everything in a directory tree.
' Files and subdirectories whose names begin with a full stop are left; so are
' read-only files (see cFullKillDirs). Symbolic links and junctions are deleted as
' links: what they point to is never touched.
' Directory: the top of the tree. "", a root ("\", "C:\") and a link are refused.
' RemoveTop: True (-1) removes the directory itself at the end.
' Returns: the number of directories removed (the top included); minus the number of
'   files and directories that could not be deleted when there was one; -1 when the
'   directory is missing or refused.
Declare Function cKillDirs (Directory As String, ByVal RemoveTop As Integer) As Long
' Deletes everything in a directory tree, read-only, hidden and system files too.
' Each file's read-only, hidden, system and archive bits are cleared first; otherwise
' it works as cKillDirs.
' Directory: as cKillDirs.
' RemoveTop: True (-1) removes the directory itself at the end.
' Returns: as cKillDirs.
Declare Function cFullKillDirs (Directory As String, ByVal RemoveTop As Integer) As Long
' Deletes the files of one directory that match a mask.
' Subdirectories and names beginning with a full stop are left.
' Directory: the directory. "" and a root are refused.
' Mask: a name pattern with * and ?, case ignored; "" and "*.*" take every file.
' Returns: the number of files deleted; minus the number of failures when one could
'   not be deleted; -1 when the directory is missing or refused.
Declare Function cKillDirFilesAll (Directory As String, Mask As String) As Long
' Makes a directory.
' Directory: the new directory; its parent must exist.
' Returns: -1 on success; else the runtime's error number (17 exists, 2 no parent).
Declare Function cMakeDir (Directory As String) As Integer
' Makes a directory and every missing directory above it.
' Path: the directory, as "C:\a\b\c"; it must pass cIsFilenameValid.
' Returns: -1 when the directory exists at the end; 2 for an invalid name; else the
'   runtime's error number.
' Example:
'   If cMakeMultipleDir("C:\Data\2024\June") = -1 Then Debug.Print "ready"
Declare Function cMakeMultipleDir (Path As String) As Integer
