' File attributes and times: the attribute word read and changed, files
' compared by attribute, time, size and contents, yes/no questions about a
' file, and the three file times read, set and formatted.

' The attributes of a file, as cFileGetAttrib fills them and cFileSetAttrib reads them.
' Each flag is True (-1) when set and False (0) when clear.
' Status: -1 after a successful cFileGetAttrib or cFileSetAttrib; else the runtime's
'   error number (2 missing, 13 denied).
' Archive: the archive bit (32).
' Hidden: the hidden bit (2).
' Normal: no other bit set (128).
' ReadOnly: the read-only bit (1).
' Directory: the entry is a directory (16); not written by cFileSetAttrib.
' System: the system bit (4).
' Compressed: the file is compressed (2048); not written by cFileSetAttrib.
Type FileAttributes
    Status As Integer
    Archive As Integer
    Hidden As Integer
    Normal As Integer
    ReadOnly As Integer
    Directory As Integer
    System As Integer
    Compressed As Integer
End Type

' A date and time of a file, in UTC, as cGetFileDateTime fills it.
' Year: 1601 to 30827.
' Month: 1 to 12.
' DayOfWeek: 0 Sunday to 6 Saturday; ignored by cSetFileDateTime.
' Day: 1 to 31.
' Hour: 0 to 23.
' Minute: 0 to 59.
' Second: 0 to 59.
' Milliseconds: 0 to 999.
Type FileTimeParts
    Year As Integer
    Month As Integer
    DayOfWeek As Integer
    Day As Integer
    Hour As Integer
    Minute As Integer
    Second As Integer
    Milliseconds As Integer
End Type

' Reads the attributes of a file or directory into a record.
' FileName: the file or directory.
' Attributes: receives the flags and the status.
' Returns: -1 on success; 0 with the runtime's error number in Attributes.Status.
' Note: on Linux and macOS read-only means that nobody has write permission;
'   hidden, system and archive are kept in an extended attribute as Wine and Samba
'   keep them, and a name beginning with a full stop is always hidden (on Windows
'   only the stored bit makes a file hidden). Everywhere a new file reads as archive,
'   and Normal is set only when no other bit is. Under Wine the word is what Wine
'   keeps: archive on every file, even after it was cleared, so Normal never; no
'   read-only bit on a directory; and names beginning with a full stop hidden.
Declare Function cFileGetAttrib (FileName As String, Attributes As FileAttributes) As Integer
' Sets the attributes of a file from a record.
' Archive, Hidden, Normal, ReadOnly and System are read (any value but 0 sets the
' bit); Directory and Compressed are ignored.
' FileName: the file or directory.
' Attributes: the flags; its Status receives -1 or the runtime's error number.
' Returns: -1 on success; 0 on failure (Attributes.Status says why).
' Note: a bit asked for that the system does not keep fails the call with 13 and
'   leaves the attributes as they were, so that nobody believes a file protected that
'   is not: hidden, system or archive on a Linux file system without extended
'   attributes, read-only on a directory under Wine. An archive bit that the system
'   keeps whatever is asked (Wine) is no failure; it simply reads as set afterwards.
Declare Function cFileSetAttrib (FileName As String, Attributes As FileAttributes) As Integer
' Sets exactly the read-only, hidden, system and archive bits of a file (39).
' FileName: the file.
' Returns: -1 on success, 0 on failure or when the file is missing.
Declare Function cFileSetAllAttrib (FileName As String) As Integer
' Clears the read-only, hidden, system and archive bits of a file and keeps the others.
' FileName: the file.
' Returns: -1 on success, 0 on failure or when the file is missing.
Declare Function cFileResetAllAttrib (FileName As String) As Integer
' Sets the archive bit (32) of a file and keeps the others.
' FileName: the file.
' Returns: -1 on success, 0 on failure or when the file is missing.
Declare Function cFileSetArchive (FileName As String) As Integer
' Like cFileSetArchive, for the hidden bit (2).
Declare Function cFileSetHidden (FileName As String) As Integer
' Like cFileSetArchive, for the read-only bit (1).
Declare Function cFileSetReadOnly (FileName As String) As Integer
' Like cFileSetArchive, for the system bit (4).
Declare Function cFileSetSystem (FileName As String) As Integer
' Clears the archive bit (32) of a file and keeps the others.
' FileName: the file.
' Returns: -1 on success, 0 on failure or when the file is missing.
' Note: a name beginning with a full stop stays hidden on Linux: clearing its hidden
'   bit fails.
Declare Function cFileResetArchive (FileName As String) As Integer
' Like cFileResetArchive, for the hidden bit (2).
Declare Function cFileResetHidden (FileName As String) As Integer
' Like cFileResetArchive, for the read-only bit (1).
Declare Function cFileResetReadOnly (FileName As String) As Integer
' Like cFileResetArchive, for the system bit (4).
Declare Function cFileResetSystem (FileName As String) As Integer
' Sets the given attribute bits of a file and keeps the others.
' FileName: the file.
' Flags: the bits to set (1 read-only, 2 hidden, 4 system, 32 archive, 256 temporary).
' Returns: -1 on success, 0 on failure or when the file is missing.
Declare Function cFileSetFlag (FileName As String, ByVal Flags As Integer) As Integer
' Clears the given attribute bits of a file and keeps the others.
' FileName: the file.
' Flags: the bits to clear.
' Returns: -1 on success, 0 on failure or when the file is missing.
Declare Function cFileResetFlag (FileName As String, ByVal Flags As Integer) As Integer
' Tells whether the archive bit (32) of a file is set.
' FileName: the file or directory.
' Returns: True (-1) when the bit is set; False (0) when clear or the file is missing.
Declare Function cIsFileArchive (FileName As String) As Integer
' Like cIsFileArchive, for the compressed bit (2048); never set on Linux.
Declare Function cIsFileCompressed (FileName As String) As Integer
' Like cIsFileArchive, for the hidden bit (2).
Declare Function cIsFileHidden (FileName As String) As Integer
' Like cIsFileArchive, for the normal bit (128): no other bit set.
Declare Function cIsFileNormal (FileName As String) As Integer
' Like cIsFileArchive, for the read-only bit (1).
Declare Function cIsFileReadOnly (FileName As String) As Integer
' Like cIsFileArchive, for the directory bit (16).
Declare Function cIsFileSubDir (FileName As String) As Integer
' Like cIsFileArchive, for the system bit (4).
Declare Function cIsFileSystem (FileName As String) As Integer
' Tells whether all the given attribute bits of a file are set.
' FileName: the file or directory.
' Flags: the bits.
' Returns: True (-1) when every bit of Flags is set; False (0) otherwise or when the
'   file is missing.
Declare Function cIsFileFlag (FileName As String, ByVal Flags As Integer) As Integer
' Tells whether a file is empty.
' FileName: the file.
' Returns: True (-1) when its size is 0; False (0) otherwise, for a directory and when
'   the file is missing.
Declare Function cIsFileEmpty (FileName As String) As Integer
' Gives the size of a file.
' FileName: the file.
' Returns: the size in bytes; -1 when the file is missing or is a directory. Above
'   2 GB the size wraps to a negative number (add 4,294,967,296).
Declare Function cFileSize (FileName As String) As Long
' Compares the attribute words of two files.
' FirstFile: the first file or directory.
' SecondFile: the second.
' Returns: -1 when the words are the same, 0 when they differ, -2 when either is missing.
Declare Function cCmpFileAttribute (FirstFile As String, SecondFile As String) As Integer
' Compares the last-write times of two files, to the second.
' FirstFile: the first file.
' SecondFile: the second.
' Returns: 1 when the first is newer, -1 when older, 0 when the same; -2 when either
'   is missing.
Declare Function cCmpFileTime (FirstFile As String, SecondFile As String) As Integer
' Compares the sizes of two files.
' FirstFile: the first file.
' SecondFile: the second.
' Returns: 1 when the first is larger, -1 when smaller, 0 when the same; -2 when
'   either is missing.
Declare Function cCmpFileSize (FirstFile As String, SecondFile As String) As Integer
' Compares the contents of two files.
' The files are read in blocks of 32,768 bytes, and two blocks are compared as
' texts: where both have a zero byte at the same place, the rest of that block is not
' compared.
' FirstFile: the first file.
' SecondFile: the second.
' CaseSensitive: True (-1) compares letters exactly; any other value ignores the
'   case of A to Z.
' Returns: -1 when equal; 0 when different, of different sizes or missing; else a
'   code: -32760 or -32761 no memory, -32750 the first file or -32751 the second
'   cannot be opened, -32740 a read error, -32720 reads of different lengths.
Declare Function cCmpFileContents (FirstFile As String, SecondFile As String, ByVal CaseSensitive As Integer) As Integer
' Tells whether a file or directory exists and is not hidden.
' FileName: the file or directory; a name ending in "/" is never readable.
' Returns: True (-1) or False (0).
Declare Function cFileIsReadable (FileName As String) As Integer
' Tells whether a file or directory may be written.
' A directory must exist and be neither hidden nor read-only; a file needs only to
' exist and not be hidden (its read-only bit is not looked at).
' FileName: the file or directory.
' Returns: True (-1) or False (0).
Declare Function cFileIsWriteable (FileName As String) As Integer
' Tells whether a file is a program or script.
' A name ending in .com, .exe or .bat (case ignored) is executable when the file
' exists; a name without extension when one of those names exists; any other file
' when it begins with "MZ", "#!" or "/*!".
' FileName: the file.
' Returns: True (-1) or False (0).
Declare Function cFileIsExecutable (FileName As String) As Integer
' Tells whether a program can be found.
' The name is tried with .exe, .com and .bat added (unless it has an extension),
' in the current directory and then along the program search path (PATH) when it
' holds no directory, else as given.
' FileName: the program's name, as "notepad".
' Returns: True (-1) when found, False (0) otherwise.
Declare Function cFileIsProgram (FileName As String) As Integer
' Tells whether a name is a directory.
' FileName: the name; a trailing backslash is allowed.
' Returns: True (-1) or False (0).
Declare Function cFileIsDirectory (FileName As String) As Integer
' Gives the date a file was created, in the user's short date form.
' FileName: the file or directory.
' Returns: the local date, with the day and month in two digits and the year in four,
'   in the order and with the separator of the user's settings; "" when the file is
'   missing.
' Note: on Linux the creation time is the file system's birth time where it keeps
'   one; elsewhere the older of the last change and the last write.
Declare Function cFileDateCreated (FileName As String) As String
' Gives the time of day a file was created, on a 24-hour clock.
' FileName: the file or directory.
' Returns: the local time as hours, minutes and seconds of two digits with the user's
'   time separator ("14:05:09"); "" when the file is missing.
Declare Function cFileTimeCreated (FileName As String) As String
' Like cFileDateCreated, for the last access.
Declare Function cFileLastDateAccess (FileName As String) As String
' Like cFileTimeCreated, for the last access.
Declare Function cFileLastTimeAccess (FileName As String) As String
' Like cFileDateCreated, for the last write.
Declare Function cFileLastDateModified (FileName As String) As String
' Like cFileTimeCreated, for the last write.
Declare Function cFileLastTimeModified (FileName As String) As String
' Reads the three times of a file, in UTC.
' FileName: the file (not a directory).
' Created: receives the creation time.
' Accessed: receives the last access.
' Written: receives the last write.
' Returns: -1 on success; 8 when the file cannot be opened for reading; 9 when its
'   times cannot be read; else the sum of 1 (creation) and 2 (access) for times that
'   cannot be shown as a date.
Declare Function cGetFileDateTime (FileName As String, Created As FileTimeParts, Accessed As FileTimeParts, Written As FileTimeParts) As Integer
' Sets the three times of a file, given in UTC.
' FileName: the file (not a directory).
' Created: the creation time.
' Accessed: the last access.
' Written: the last write.
' Returns: -1 on success; the sum of 1, 2 and 4 for Created, Accessed and Written
'   when they are no real date and time (nothing is changed then); 8 when the file
'   cannot be opened for writing (missing, read-only); 9 when the times cannot be set.
' Note: Linux cannot set a creation time: the other two are set and the result is 9,
'   unless Created is the creation time the file already has.
Declare Function cSetFileDateTime (FileName As String, Created As FileTimeParts, Accessed As FileTimeParts, Written As FileTimeParts) As Integer
' Gives the date of a file's last write, in local time, as a DT date.
' FileName: the file or directory.
' Returns: year * 10000 + month * 100 + day (20240615); -1 when the file is missing.
Declare Function cDT_GetFileDate (FileName As String) As Long
' Gives the time of a file's last write, in local time, as a DT time.
' FileName: the file or directory.
' Returns: hour * 1000000 + minute * 10000 + second * 100 + hundredths (14050900);
'   -1 when the file is missing.
Declare Function cDT_GetFileTime (FileName As String) As Long
