' Registry values: string settings kept in the system registry, written, read and
' deleted by key and value name, with a description of a key and all values of a key
' at once.
'
' The plain forms work under HKEY_CURRENT_USER; the Ext forms take a root selector
' first: 1 HKEY_CLASSES_ROOT, 3 HKEY_LOCAL_MACHINE, 4 HKEY_USERS, 5
' HKEY_PERFORMANCE_DATA, 6 HKEY_CURRENT_CONFIG, 7 HKEY_DYN_DATA, and any other value
' (2 among them) HKEY_CURRENT_USER. Key names are paths below the root
' ("Software\MyCompany\MyApp"); every name and value is read up to its first zero
' character, and an empty value name addresses the key's default value. Values are
' written as registry strings (REG_SZ).
'
' The put and kill functions give -1 on success or a status code:
'   - 1: the key name is empty.
'   - 2: the key could not be created.
'   - 3: the key could not be opened.
'   - 4: the key was neither newly created nor opened as existing.
'   - 5: the system refused to set or delete.
'
' On Linux the library keeps a registry of its own for each user: the text file
' brindle-registry.reg in the user's configuration directory ($XDG_CONFIG_HOME when it
' is set to an absolute path, otherwise $HOME/.config), in the REGEDIT4 form of the
' Windows registry editor, so it can be read, edited and imported into Windows. It
' holds the roots HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_USERS
' and HKEY_CURRENT_CONFIG, all of them the user's own; HKEY_PERFORMANCE_DATA and
' HKEY_DYN_DATA hold nothing there (puts give 2, kills 3, reads the default). Every
' write replaces the whole file through a temporary file beside it, under a lock, so a
' crash leaves the old or the new file and two programs writing at once keep both
' values. A damaged file is read as far as its lines are valid (a later write drops
' the lines that are not). Names are compared without regard to case (ASCII letters);
' a key name is at most 255 characters between backslashes and 512 levels deep, and a
' name holding a line end cannot be stored.

' Writes a string value under HKEY_CURRENT_USER, making the key when it is missing.
' Key: the key's path below HKEY_CURRENT_USER; every missing level is made.
' ValueName: the name of the value; "" is the key's default value.
' Value: the text to store.
' Returns: -1 when written; 1 when Key is ""; 2 when the key could not be made or
'   opened for writing; 4 when the system reported neither; 5 when the value could not
'   be set.
' Note: on Linux a value name holding a carriage return or line feed cannot be stored
'   and gives 5 (the key is made all the same).
' Example:
'   Call cPutRegistry("Software\MyCompany\MyApp", "LastFile", "C:\Data\orders.txt")
Declare Function cPutRegistry (Key As String, ValueName As String, Value As String) As Integer
' Reads a string value under HKEY_CURRENT_USER.
' Key: the key's path below HKEY_CURRENT_USER.
' ValueName: the name of the value; "" is the key's default value.
' DefaultValue: what to give when the key or the value is missing.
' Returns: the value's text up to its first zero character; DefaultValue (up to its
'   first zero character) when the key or the value is missing or cannot be read; ""
'   when Key is "". The stored type is not looked at: a number's bytes come back as
'   they are.
' Note: the text is read into 4,096 characters: a value of 4,096 characters is given
'   whole, a longer one gives DefaultValue.
' Example:
'   Debug.Print cGetRegistry("Software\MyCompany\MyApp", "LastFile", "")
Declare Function cGetRegistry (Key As String, ValueName As String, DefaultValue As String) As String
' Deletes a key under HKEY_CURRENT_USER.
' Key: the path of the key that holds the one to delete.
' SubKey: the path of the key to delete, below Key; "" deletes Key itself.
' Returns: -1 when deleted; 1 when Key is ""; 3 when Key cannot be opened; 5 when
'   SubKey is missing or cannot be deleted, as a key that still has keys below it.
' Example:
'   Call cKillRegistry("Software\MyCompany", "MyApp")
Declare Function cKillRegistry (Key As String, SubKey As String) As Integer
' Deletes a value under HKEY_CURRENT_USER.
' Key: the key's path below HKEY_CURRENT_USER.
' ValueName: the name of the value; "" is the key's default value.
' Returns: -1 when deleted; 1 when Key is ""; 3 when the key cannot be opened; 5 when
'   the value is missing or cannot be deleted.
Declare Function cKillRegistryValue (Key As String, ValueName As String) As Integer
' Writes a string value under a chosen root, making the key when it is missing.
' Root: the root selector (1, 3, 4, 5, 6, 7; any other value is HKEY_CURRENT_USER).
' Key: the key's path below the root.
' ValueName: the name of the value; "" is the key's default value.
' Value: the text to store.
' Returns: as cPutRegistry: -1, or the status 1, 2, 4 or 5.
' Example:
'   Call cPutRegistryExt(3, "Software\MyCompany\MyApp", "Path", "C:\MyApp")
Declare Function cPutRegistryExt (ByVal Root As Integer, Key As String, ValueName As String, Value As String) As Integer
' Reads a string value under a chosen root.
' Root: the root selector (1, 3, 4, 5, 6, 7; any other value is HKEY_CURRENT_USER).
' Key: the key's path below the root.
' ValueName: the name of the value; "" is the key's default value.
' DefaultValue: what to give when the key or the value is missing.
' Returns: as cGetRegistry: the value, DefaultValue, or "" when Key is "".
Declare Function cGetRegistryExt (ByVal Root As Integer, Key As String, ValueName As String, DefaultValue As String) As String
' Deletes a key under a chosen root.
' Root: the root selector (1, 3, 4, 5, 6, 7; any other value is HKEY_CURRENT_USER).
' Key: the path of the key that holds the one to delete.
' SubKey: the path of the key to delete, below Key; "" deletes Key itself.
' Returns: as cKillRegistry: -1, or the status 1, 3 or 5.
Declare Function cKillRegistryExt (ByVal Root As Integer, Key As String, SubKey As String) As Integer
' Asks to delete a value under a chosen root, with the key opened for reading only.
' Root: the root selector (1, 3, 4, 5, 6, 7; any other value is HKEY_CURRENT_USER).
' Key: the key's path below the root.
' ValueName: the name of the value.
' Returns: 1 when Key is ""; 3 when the key cannot be opened; 5 otherwise.
' Note: this function has always opened the key with the right to read values only,
'   and the system refuses a deletion through such a key, so it deletes nothing and
'   gives 5 where cKillRegistryValue would delete. The library keeps that, on Linux
'   too; use cKillRegistryValue (HKEY_CURRENT_USER) to delete a value.
Declare Function cKillRegistryValueExt (ByVal Root As Integer, Key As String, ValueName As String) As Integer
' The description of a registry key, as cRegistryKeyInfo fills it.
' SubKeys: the number of keys directly below the key.
' MaxSubKeyLen: the length of the longest of their names, in characters.
' Values: the number of values of the key.
' MaxValueNameLen: the length of the longest value name, in characters.
' MaxValueLen: the size of the longest value data, in bytes, as the registry keeps it
'   (a string's counts its final zero character; Windows keeps strings in UTF-16, two
'   bytes a character, the Linux library one byte a character).
' Summary: the five numbers above in that order, joined by semicolons ("2;7;3;5;12").
Type RegistryKeyInfo
    SubKeys As Long
    MaxSubKeyLen As Long
    Values As Long
    MaxValueNameLen As Long
    MaxValueLen As Long
    Summary As String
End Type
' Describes a key under HKEY_CURRENT_USER: how many keys and values it holds and the
' longest names and data.
' Key: the key's path below HKEY_CURRENT_USER.
' Info: receives the numbers and their Summary.
' Returns: -1 when the key was described; 0 when Key is "" or the key cannot be opened
'   (Info is then left as it was), or when the system could not describe it (Info then
'   holds zeros and the Summary "0;0;0;0;0").
' Example:
'   Dim K As RegistryKeyInfo
'   If cRegistryKeyInfo("Software\MyCompany\MyApp", K) Then Debug.Print K.Summary
Declare Function cRegistryKeyInfo (Key As String, Info As RegistryKeyInfo) As Integer
' Reads every value of a key under HKEY_CURRENT_USER into a two-column String array.
' The values come in the registry's order, one a row from the first row of
' dimension 1: the name in the first column of dimension 2 and the data (without its
' final zero character) in the last. Rows left over are set to "" in both columns.
' Settings: a two-dimensional String array, rows in dimension 1 and two columns in
'   dimension 2 (Dim S(1 To 50, 0 To 1) As String).
' Key: the key's path below HKEY_CURRENT_USER.
' Returns: the number of values stored; 0 when Settings is not a two-dimensional String
'   array or Key is ""; -1 when the key cannot be opened; -2 when the array has too few
'   rows (the rows are then all filled, and the values that did not fit are left out),
'   or when the values fill every row exactly, or the array has no rows.
' Note: a value whose name is longer than 255 characters or whose data is longer than
'   2,048 bytes is left out. At most 32,767 rows are filled, as the count is an
'   Integer: with more values than that the result is -2.
' Example:
'   Dim S(1 To 100, 1 To 2) As String, N As Integer
'   N = cGetAllSettings(S, "Software\MyCompany\MyApp")
Declare Function cGetAllSettings (Settings() As String, Key As String) As Integer
