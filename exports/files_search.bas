' Directory enumeration and search: step-by-step listings, counts and sizes
' of file sets, recursive searches and totals, listings into arrays and
' files, volume space, and byte filters of files.

' Lists the files that a pattern matches, one name per call.
' Call it once with First = True to start a listing, then with First = False for each
' further name until it gives "". Directories are skipped. The listing stays open until
' the next call with First = True.
' Pattern: a directory and a file pattern with the wildcards * and ?, as
'   "C:\Data\*.txt"; "*.*" matches every name, and case is ignored. It is read only
'   when First is True.
' First: True (-1) starts a new listing; any other value continues the current one.
' Returns: the next file name, without its directory; "" at the end, when nothing
'   matches or the directory does not exist, and when no listing has been started.
' Note: cFilesInDirectory and cSubDirectory each keep one listing for the whole program;
'   the two do not disturb each other.
' Example:
'   Dim Name As String
'   Name = cFilesInDirectory("C:\Data\*.txt", True)
'   Do While Len(Name) > 0
'       Debug.Print Name
'       Name = cFilesInDirectory("C:\Data\*.txt", False)
'   Loop
Declare Function cFilesInDirectory (ByVal Pattern As String, ByVal First As Integer) As String
' Lists the directories that a pattern matches, one name per call.
' It is called as cFilesInDirectory is: First = True starts a listing, First = False
' continues it, until "" comes back. Files are skipped; the entries "." and ".." are
' directories and come back when the pattern matches them (as "*.*" does).
' Pattern: a directory and a pattern with the wildcards * and ?, as "C:\Data\*.*"; case
'   is ignored. It is read only when First is True.
' First: True (-1) starts a new listing; any other value continues the current one.
' Returns: the next directory name, without its parent directory; "" at the end, when
'   nothing matches, and when no listing has been started.
Declare Function cSubDirectory (ByVal Pattern As String, ByVal First As Integer) As String
' Lists every directory below a root, at any depth, in one string.
' Each directory is given as the root, a backslash and its path below the root; the
' names are sorted without regard to case and each is followed by a carriage return
' (vbCr, no line feed). Names beginning with a full stop are skipped, and symbolic links
' and junctions are listed but not entered.
' Root: the directory to start from, with or without a trailing backslash.
' Count: receives the number of directories listed; 0 when there are none; -32760 when
'   memory for the list cannot be had.
' Returns: the list; "" when the root has no subdirectories or does not exist, and when
'   Root is "".
' Note: at most 3,000 directories are listed: the walk stops when that many are found.
'   An empty Root is refused rather than taken as the root of the current drive.
' Example:
'   Dim Count As Long, Dirs() As String
'   Dirs = Split(cAllSubDirectories("C:\Data", Count), vbCr)
'   ' Dirs(0) to Dirs(Count - 1) hold the names; the last element is empty
Declare Function cAllSubDirectories (ByVal Root As String, Count As Long) As String
' Counts the entries that a pattern matches, directories included.
' Pattern: a directory and a file pattern with the wildcards * and ?, as "C:\Data\*.*".
' Returns: the number of matching entries, subdirectories and the entries "." and ".."
'   included when the pattern matches them; 0 when nothing matches or the directory does
'   not exist. Above 32,767 the count turns negative (add 65,536).
Declare Function cCountFiles (ByVal Pattern As String) As Integer
' Counts the directories that a pattern matches.
' Each matching entry is looked up again under the pattern's directory, taken up to its
' last backslash, and counted when it is a directory.
' Pattern: a directory and a pattern with the wildcards * and ?, as "C:\Data\*.*". Write
'   it with backslashes: behind a slash the directory part is not seen, and the entries
'   are looked up in the current directory instead.
' Returns: the number of matching directories, "." and ".." included when the pattern
'   matches them; 0 when there is none or the directory does not exist.
Declare Function cCountDirectories (ByVal Pattern As String) As Integer
' Adds up the sizes of the entries that a pattern matches.
' Pattern: a directory and a file pattern with the wildcards * and ?, as "C:\Data\*.*".
' Returns: the total in bytes; 0 when nothing matches.
' Note: the sizes and their total are kept in 32 bits, so a file of 4 GB or more counts
'   only its size modulo 4,294,967,296, and a total that reaches 4 GB wraps round to 0.
Declare Function cFilesSize (ByVal Pattern As String) As Double
' Adds up the space on disk that the files a pattern matches take.
' Each size is rounded up to whole clusters (see cGetDiskClusterSize) of the pattern's
' drive, or of the current drive when the pattern names none; an empty file takes
' nothing.
' Pattern: a directory and a file pattern with the wildcards * and ?, as "C:\Data\*.*".
' Returns: the total in bytes; 0 when nothing matches.
Declare Function cFilesSizeOnDisk (ByVal Pattern As String) As Double
' Gives the share of disk space that the files a pattern matches leave unused in their
' last clusters.
' Pattern: a directory and a file pattern with the wildcards * and ?, as "C:\Data\*.*".
' Size: receives the total size in bytes, as cFilesSize gives it.
' SizeOnDisk: receives the total space on disk in bytes, as cFilesSizeOnDisk gives it.
' Returns: (SizeOnDisk - Size) / SizeOnDisk * 100, cut to a whole number; -1 when
'   SizeOnDisk is 0 (nothing matches, or only empty files).
Declare Function cFilesSlack (ByVal Pattern As String, Size As Double, SizeOnDisk As Double) As Integer
' Counts the files that match a mask, or the directories, in a directory tree.
' Root is walked, and with Recurse every directory below it; names beginning with a full
' stop are skipped, and symbolic links and junctions are counted but not entered.
' Which: 0 counts files; any other value counts directories, whatever the mask.
' Root: the directory to start from, with or without a trailing backslash.
' Mask: the file name mask, with * for any run of characters and ? for one character,
'   matched without regard to case; "" or "*.*" takes every file.
' Recurse: 0 walks Root alone; any other value, not only True (-1), walks the whole tree.
' Returns: the count; 0 when Root is "" or does not exist.
' Note: an empty Root is refused rather than taken as the root of the current drive.
Declare Function cRcsCountFileDir (ByVal Which As Integer, ByVal Root As String, ByVal Mask As String, ByVal Recurse As Long) As Long
' Adds up the sizes of the files that match a mask in a directory tree.
' The tree is walked as cRcsCountFileDir walks it.
' Root: the directory to start from, with or without a trailing backslash.
' Mask: the file name mask, with * and ?, matched without regard to case; "" or "*.*"
'   takes every file.
' Recurse: 0 walks Root alone; any other value walks the whole tree.
' Returns: the total in bytes; 0 when nothing matches, and when Root is "" or does not
'   exist.
' Note: each file counts its size modulo 4 GB (its 32-bit size); the total itself does
'   not wrap.
Declare Function cRcsFilesSize (ByVal Root As String, ByVal Mask As String, ByVal Recurse As Long) As Double
' Like cRcsFilesSize, adding up the space the files take on disk: each size is
'   rounded up to whole clusters of Root's drive (of the current drive when Root
'   names none), and an empty file takes nothing.
Declare Function cRcsFilesSizeOnDisk (ByVal Root As String, ByVal Mask As String, ByVal Recurse As Long) As Double
' Gives the share of disk space that the files matching a mask in a directory tree leave
' unused in their last clusters.
' The tree is walked as cRcsCountFileDir walks it.
' Root: the directory to start from, with or without a trailing backslash.
' Mask: the file name mask, with * and ?, matched without regard to case; "" or "*.*"
'   takes every file.
' Recurse: 0 walks Root alone; any other value walks the whole tree.
' Size: receives the total size in bytes, as cRcsFilesSize gives it.
' SizeOnDisk: receives the total space on disk in bytes, as cRcsFilesSizeOnDisk gives it.
' Returns: (SizeOnDisk - Size) / SizeOnDisk * 100, cut to a whole number; -1 when
'   SizeOnDisk is 0 (nothing matches, only empty files, or Root is "" or missing).
Declare Function cRcsFilesSlack (ByVal Root As String, ByVal Mask As String, ByVal Recurse As Long, Size As Double, SizeOnDisk As Double) As Integer
' Searches a directory tree for files whose names match a mask, and lists them in a file.
' Root and every directory below it are searched, the files of a directory before its
' subdirectories; names beginning with a full stop are skipped, and symbolic links and
' junctions are not entered. Each file found becomes one line of the listing: the root,
' a backslash, its path below the root and its name, ending in CR LF.
' Root: the directory to start from, with or without a trailing backslash.
' Mask: the file name mask, with * for any run of characters and ? for one character,
'   matched without regard to case.
' OutputFile: the listing file; it is created, or emptied when it exists. "" only counts
'   the files.
' Returns: the number of files found; -1 when Root or Mask is "", and when the listing
'   file cannot be created.
' Note: with these masks "*.*" matches only names that hold a full stop; use "*" for
'   every file. When a write to the listing fails, the search stops and gives the count
'   so far.
' Example:
'   Dim n As Long
'   n = cSearchFile("C:\Data", "*.txt", "C:\Temp\found.lst")
Declare Function cSearchFile (ByVal Root As String, ByVal Mask As String, ByVal OutputFile As String) As Long
' Searches a directory tree for files that match a mask and carry given attributes, and
' lists them in a file.
' It searches and writes as cSearchFile does, and takes only the files whose attributes
' include every bit of Attributes.
' Root: the directory to start from, with or without a trailing backslash.
' Mask: the file name mask, with * and ?, matched without regard to case.
' Attributes: the bits a file must all carry: read-only 1, hidden 2, system 4, archive
'   32, compressed 2048, added together; -1 or 0 takes every file.
' OutputFile: the listing file; it is created, or emptied when it exists. "" only counts
'   the files.
' Returns: the number of files found; -1 when Root or Mask is "", and when the listing
'   file cannot be created.
' Note: on Linux a file is read-only when no one may write it, and a file for which no
'   attributes were stored reads as archive.
Declare Function cSearchFileAttrib (ByVal Root As String, ByVal Mask As String, ByVal Attributes As Integer, ByVal OutputFile As String) As Long
' Searches a directory tree for directories whose names match a mask, and lists them in a
' file.
' Every directory of the tree is searched, also those whose names do not match; names
' beginning with a full stop are skipped, and symbolic links and junctions are listed
' when they match but not entered. Each directory found becomes one line of the listing:
' the root, a backslash and its path below the root, ending in CR LF.
' Root: the directory to start from, with or without a trailing backslash.
' Mask: the directory name mask, with * and ?, matched without regard to case.
' OutputFile: the listing file; it is created, or emptied when it exists. "" only counts
'   the directories.
' Returns: the number of directories found; -1 when Root or Mask is "", and when the
'   listing file cannot be created.
Declare Function cSearchDir (ByVal Root As String, ByVal Mask As String, ByVal OutputFile As String) As Long
' Fills a String array with the names of the files that a pattern matches.
' Directories are skipped, and Selector chooses files by their attributes. The names,
' without directory, are stored from the array's lower bound on, and the elements left
' over are set to "". The array is not resized.
' Pattern: a directory and a file pattern with the wildcards * and ?; "" stands for "*.*"
'   in the current directory.
' Selector: which files to take, by the five bits read-only 1, hidden 2, system 4,
'   archive 32 and compressed 2048:
'   - 255: every file;
'   - 0: files with none of the attributes;
'   - a negative value: files whose five bits are exactly those of its absolute value
'     (-33 takes files that are read-only and archive, and nothing else);
'   - 254: files with none of the attributes, and those that agree with archive (32) in
'     at least one of the five bits;
'   - any other positive value: files that agree with it in at least one of the five
'     bits; only a file that differs in all five is left out.
' Names: a String array, dimensioned by the caller. Of a two-dimensional array
'   Names(i, j), the names go down the first column (every i, with j at its lower bound);
'   the other columns are left alone.
' Returns: the number of names stored when the files run out first; when the array fills
'   up, one less than the number stored; 0 for an array without elements; -1 when the
'   pattern matches no entry at all, and when Names is not a dimensioned String array.
' Note: the full-array count is kept because existing programs rely on it: a result of
'   the element count minus 1 means either that many files or a full array, and the last
'   element tells which ("" or a name).
Declare Function cFilesInDirToArray (ByVal Pattern As String, ByVal Selector As Integer, Names() As String) As Integer
' Writes the names of the files that a pattern matches to a text file, one per line.
' Directories are skipped, and Selector chooses files as it does for cFilesInDirToArray.
' Each name is written without its directory and ends in CR LF. An existing output file
' is deleted first, even when it is read-only.
' OutputFile: the listing file to create; its name must pass cIsFilenameValid (so it
'   uses backslashes, not slashes).
' Pattern: a directory and a file pattern with the wildcards * and ?, as "C:\Data\*.txt".
' Selector: which files to take, as for cFilesInDirToArray; 255 takes every file.
' Returns: the number of names written (0 or more); -1 when OutputFile is "" or nothing
'   matches the pattern (no file is written then); -2 when OutputFile fails
'   cIsFilenameValid; -3 when an existing output file cannot be deleted; -32750 when the
'   output file cannot be created; -32740 when a write to it fails.
Declare Function cFilesInDirOnDisk (ByVal OutputFile As String, ByVal Pattern As String, ByVal Selector As Integer) As Integer
' Gives the total size of a volume in bytes.
' Root: the volume: "" for the current drive, a letter ("C"), a drive ("C:") or a root
'   directory ("C:\", "\\server\share\").
' Returns: the size in bytes (clusters times bytes per cluster); 0 when the volume cannot
'   be read.
' Note: on Linux every drive letter names the root file system, and a directory names the
'   file system that holds it.
Declare Function cGetDiskSpace (ByVal Root As String) As Double
' Gives the number of bytes in use on a volume.
' Root: the volume: "" for the current drive, a letter ("C"), a drive ("C:") or a root
'   directory ("C:\", "\\server\share\").
' Returns: the total size less the free space that cGetDiskFree gives; 0 when the volume
'   cannot be read.
Declare Function cGetDiskUsed (ByVal Root As String) As Double
' Gives the free space of a volume in bytes.
' Root: the volume: "" for the current drive, a letter ("C"), a drive ("C:") or a root
'   directory ("C:\", "\\server\share\").
' Returns: the free bytes that the calling user may use; 0 when the volume cannot be read.
Declare Function cGetDiskFree (ByVal Root As String) As Double
' Gives the cluster size of a volume, the unit in which files take disk space.
' Root: the volume: "" for the current drive, a letter ("C"), a drive ("C:") or a root
'   directory ("C:\", "\\server\share\").
' Returns: the bytes per cluster (sectors per cluster times bytes per sector), as 4096; 0
'   when the volume cannot be read.
Declare Function cGetDiskClusterSize (ByVal Root As String) As Double
' Gives the total size of a volume as an exact 64-bit byte count.
' The count comes in a Currency, whose value is the count divided by 10,000: multiply by
' 10,000 to get bytes.
' Root: the volume: "" for the current drive, a letter ("C"), a drive ("C:") or a root
'   directory ("C:\", "\\server\share\").
' Returns: the size in bytes / 10,000; -0.0001 (a count of -1) when the volume cannot be
'   read.
' Example:
'   Dim Total As Currency
'   Total = cGetDiskSpaceEx("C")
'   Debug.Print Total * 10000; "bytes"
Declare Function cGetDiskSpaceEx (ByVal Root As String) As Currency
' Gives the number of bytes in use on a volume as a 64-bit count.
' The count comes in a Currency as for cGetDiskSpaceEx: multiply by 10,000 to get bytes.
' Root: the volume: "" for the current drive, a letter ("C"), a drive ("C:") or a root
'   directory ("C:\", "\\server\share\").
' Returns: the total size less the volume's free bytes, / 10,000; -0.0001 (a count of
'   -1) when the volume cannot be read.
' Note: the two 32-bit halves of the count are subtracted separately, with no borrow
'   from the high half when the low half of the free count is the larger; the result
'   is then 4,294,967,296 bytes too high. This arithmetic is kept because existing
'   programs rely on it.
Declare Function cGetDiskUsedEx (ByVal Root As String) As Currency
' Gives the free space of a volume as a 64-bit byte count.
' The count comes in a Currency as for cGetDiskSpaceEx: multiply by 10,000 to get bytes.
' It counts all free bytes of the volume, also those that disk quotas keep from the
' calling user, so it may exceed cGetDiskFree.
' Root: the volume: "" for the current drive, a letter ("C"), a drive ("C:") or a root
'   directory ("C:\", "\\server\share\").
' Returns: the free bytes / 10,000; -0.0001 (a count of -1) when the volume cannot be
'   read.
Declare Function cGetDiskFreeEx (ByVal Root As String) As Currency
' Copies a file, leaving out every byte that occurs in a character set.
' The file is copied in blocks of 32,768 bytes; the set is taken byte for byte, zero
' bytes included. An existing target is replaced.
' Source: the file to read.
' Target: the file to write; it must not be Source under any spelling of the name
'   (then -32751, and Source is left alone).
' CharSet: the bytes to leave out, as vbCr & vbLf.
' Returns: the number of bytes written, 2,147,483,647 for 2 GiB or more; -1 when CharSet
'   is ""; -32750 when the source cannot be opened; -32751 when the target cannot be
'   created; -32730 when a read fails and -32740 when a write fails (the target is deleted
'   then); -32760 or -32761 when memory for the buffers cannot be had.
' Note: a Long cannot hold a count of 2 GiB or more, and one wrapped round would read as a
'   negative code, so such a count is given as the largest Long; the target is complete
'   all the same.
Declare Function cFileFilter (ByVal Source As String, ByVal Target As String, CharSet As String) As Long
' Copies a file, keeping only the bytes that occur in a character set.
' The file is copied in blocks of 32,768 bytes; the set is taken byte for byte, zero
' bytes included. A set of a single character is the exception: that character is left
' out and all others kept, as cFileFilter does. An existing target is replaced.
' Source: the file to read.
' Target: the file to write; it must not be Source under any spelling of the name
'   (then -32751, and Source is left alone).
' CharSet: the bytes to keep, two or more; one byte is left out instead.
' Returns: the number of bytes written, 2,147,483,647 for 2 GiB or more (as for
'   cFileFilter); -1 when CharSet is ""; -32750 when the source cannot be opened; -32751
'   when the target cannot be created; -32730 when a read fails and -32740 when a write
'   fails (the target is deleted then); -32760 or -32761 when memory for the buffers
'   cannot be had.
Declare Function cFileFilterNot (ByVal Source As String, ByVal Target As String, CharSet As String) As Long
