' Profile files: settings kept in initialisation files of [sections] and key=value
' lines, and the system and Windows directories.
'
' On Windows these go through the system's own profile calls. On Linux the library reads
' and writes the files itself with the same rules: lines end in CR LF or LF (the last may
' have no line end); spaces around names and values, and inside the brackets of a
' section's name, do not count; section and key names are compared without regard to
' case (ASCII letters); a value written in quotes ("..." or '...') is read without
' them; lines starting with a semicolon are comments; where a section or a key comes
' twice, the first one is used. A file is rewritten whole into a
' temporary file beside it that then replaces it, so a crash leaves the old or the new
' file, never a damaged one, and lines the call does not change keep their bytes.
' A file name without any backslash or slash names a file in the Windows directory.

' Reads one value from a profile file.
' Section: the section name; spaces around it do not count.
' Key: the key name; spaces around it do not count.
' DefaultValue: what to give when the key or the file is missing; trailing spaces are dropped.
' FileName: the profile file; a bare name (no backslash or slash) is looked for in the
'   Windows directory.
' Returns: the value, without the quotes around it; DefaultValue when the section, the key or
'   the file is missing, or Key is "". A value longer than 2,047 characters is cut there.
' Example:
'   Debug.Print cGetIni("Window", "Width", "640", "C:\App\app.ini")
Declare Function cGetIni (ByVal Section As String, ByVal Key As String, ByVal DefaultValue As String, ByVal FileName As String) As String
' Writes one value to a profile file, or deletes a key or a whole section.
' The file and the section are created when they are missing; a new key goes after the
' last line of its section.
' Section: the section name.
' Key: the key name; "" deletes the whole section with all its lines.
' Value: the value to write (spaces at its start are dropped); "" deletes the key.
' FileName: the profile file; a bare name (no backslash or slash) is a file in the
'   Windows directory.
' Returns: non-zero when the file was written or nothing needed to change; 0 when the
'   file could not be read or written, and for a read-only file (for every user, as
'   Windows refuses it).
' Example:
'   Call cPutIni("Window", "Width", "800", "C:\App\app.ini")
Declare Function cPutIni (ByVal Section As String, ByVal Key As String, ByVal Value As String, ByVal FileName As String) As Long
' Makes the system write out its cached copy of a profile file.
' FileName: the profile file.
' Returns: 0, always: the system's flush reports 0 even when it has done its work.
' Note: the Linux library keeps no cached copy (every cPutIni has already replaced the
'   file), so there is nothing to write.
Declare Function cFlushIni (ByVal FileName As String) As Long
' Reads every key of a section with its value.
' Each item is the key, "=", its value (without quotes, cut at 255 characters) and a
' carriage return. Comment lines, lines without "=" and keys with an empty name are
' left out; a key that comes twice is listed twice, with the first one's value.
' Section: the section name.
' FileName: the profile file.
' Count: receives the number of items.
' Returns: the items, each ended by a carriage return; "" (and Count 0) when the
'   section or the file is missing or has no keys.
' Note: the key names are read into 16,384 bytes, so in a very large section the list
'   stops there; the text returned is never cut short otherwise.
' Example:
'   Dim N As Integer
'   Debug.Print cGetSectionItems("Window", "C:\App\app.ini", N)   ' Width=800 & vbCr ...
Declare Function cGetSectionItems (ByVal Section As String, ByVal FileName As String, Count As Integer) As String
' Lists the sections of a profile file.
' FileName: the profile file.
' Count: receives the number of carriage returns placed, one less than the number of
'   sections (0 for a file with one section).
' Returns: the section names in file order, separated by carriage returns; "" when the
'   file is missing or has no sections. A section that comes twice is listed twice.
' Example:
'   Dim N As Integer
'   Debug.Print cGetSectionIni("C:\App\app.ini", N)
Declare Function cGetSectionIni (ByVal FileName As String, Count As Integer) As String
' Gives the system directory.
' Returns: the directory without a trailing backslash; "" when the system gives none or
'   it is longer than 255 characters.
' Note: the Linux library gives "C:\usr\lib", the directory of the system's shared
'   libraries, in the Windows form of its other path names.
Declare Function cGetSystemDirectory () As String
' Gives the Windows directory, where a profile file given by a bare name lives.
' Returns: the directory without a trailing backslash; "" when the system gives none or
'   it is longer than 255 characters.
' Note: the Linux library gives the user's configuration directory ($XDG_CONFIG_HOME
'   when it is set to an absolute path, otherwise $HOME/.config) in the Windows form of
'   its other path names ("C:\home\ann\.config"); a profile file given by a bare name
'   is kept there, and the directory is made on the first write when it is missing.
Declare Function cGetWindowsDirectory () As String
