' Text file operations: line, word and byte counts, case changes, searches, copies of
' parts, splits and cuts, tabs and spaces, and the rotation of log files.
'
' File names are passed by value and end at their first zero byte. Functions that make a
' file delete it again when they fail part way, and refuse a target that is another name
' of the source (another case, ".\", a link) before creating anything. Most return a
' count or one of the codes of the copy family:
'   - -32760: no memory for the block buffer.
'   - -32750: the source cannot be opened.
'   - -32751: the target cannot be created, or it is the source itself.
'   - -32730: a read error.
'   - -32740: a write error (a full disk, say).

' Counts the carriage returns of a file.
' Every byte of value 13 counts, so a file whose lines end in a line feed alone counts 0.
' File: the file's name.
' Returns: the number of carriage returns; -1 when the file cannot be opened, -2 on a
'   read error, -3 when no buffer can be had.
' Example:
'   Debug.Print cFileLineCount("C:\Data\dos.txt")   ' 3 for three lines ending vbCrLf
Declare Function cFileLineCount (ByVal File As String) As Long
' Counts the lines of a text file as a line reader with a 32,768-byte buffer sees them.
' The file is read in text mode; a line feed ends a line whether a carriage return
' stands before it or not, a line longer than 32,767 bytes counts more than once, a last
' line without a line feed counts, and a Ctrl-Z byte ends the text.
' File: the file's name.
' Returns: the number of lines; -1 when the file cannot be opened, -2 on a read error.
Declare Function cFileLineCount2 (ByVal File As String) As Long
' Copies a file turning every lower-case letter a to z into upper case.
' Other bytes are copied unchanged.
' Source: the file to read.
' Target: the file to create (replaced when it exists).
' Returns: the number of bytes written; a code of the family (above) on failure.
Declare Function cFileToUpper (ByVal Source As String, ByVal Target As String) As Long
' Copies a file turning every upper-case letter A to Z into lower case.
' Like cFileToUpper otherwise.
' Source: the file to read.
' Target: the file to create (replaced when it exists).
' Returns: the number of bytes written; a code of the family (above) on failure.
Declare Function cFileToLower (ByVal Source As String, ByVal Target As String) As Long
' Counts the lines, words and bytes of a file.
' A line is a line feed. A word is a run of bytes other than spaces, tabs, carriage
' returns, vertical tabs and form feeds; a line feed counts a line but does not end a
' word, so "a" & vbLf & "b" is one word while "a" & vbCr & "b" is two.
' File: the file's name.
' Lines: receives the number of line feeds.
' Words: receives the number of words.
' Bytes: receives the file's length.
' Returns: the file's length; -32760, -32750 or -32730 on failure, when Lines, Words and
'   Bytes receive 0. Counts above 2,147,483,647 stay there.
Declare Function cFileStatistics (ByVal File As String, Lines As Long, Words As Long, Bytes As Long) As Long
' Tells whether a text occurs in a text file.
' The file is read in text mode, line by line, in pieces of at most 2,559 bytes; an
' occurrence cut by the end of a piece is not seen.
' File: the file's name.
' Text: the text to find; it ends at its first zero byte.
' CaseSensitive: 0 (False) compares without regard to case (letters A to Z); any other
'   value compares exactly.
' Returns: True (-1) when the text occurs; 0 when not, or when File or Text is ""; -32750
'   when the file cannot be opened; -32730 on a read error.
Declare Function cFileSearch (ByVal File As String, ByVal Text As String, ByVal CaseSensitive As Integer) As Long
' Counts the occurrences of a text in a text file.
' The occurrences in a line do not overlap: each search resumes after the previous match.
' Like cFileSearch otherwise.
' File: the file's name.
' Text: the text to count; it ends at its first zero byte.
' CaseSensitive: 0 (False) compares without regard to case; any other value exactly.
' Returns: the number of occurrences; 0 when File or Text is ""; -32750 or -32730 as
'   cFileSearch.
Declare Function cFileSearchCount (ByVal File As String, ByVal Text As String, ByVal CaseSensitive As Integer) As Long
' Copies the part of a file after an offset, or the part before it, into a new file.
' Source: the file to read.
' Target: the file to create (replaced when it exists).
' Offset: a byte offset, from 0 to the source's length.
' Head: True (-1) copies the first Offset bytes; any other value copies from Offset to the
'   end.
' Returns: 0 on success, or a code:
'   - -1: Offset is negative.
'   - -2: Source is not a valid file name.
'   - -3: Target is not a valid file name.
'   - -4: Offset is beyond the end of the source.
'   - -5: the source cannot be opened.
'   - -6: the target cannot be created, or it is the source itself.
'   - -32760, -32730, -32740: no buffer, a read error, a write error.
Declare Function cFilePartCopy (ByVal Source As String, ByVal Target As String, ByVal Offset As Long, ByVal Head As Integer) As Long
' Appends the part of a file after an offset, or the part before it, to another file.
' The target is created when it does not exist. Like cFilePartCopy otherwise.
' Source: the file to read.
' Target: the file to append to.
' Offset: a byte offset, from 0 to the source's length.
' Head: True (-1) appends the first Offset bytes; any other value from Offset to the end.
' Returns: 0 or a code, as cFilePartCopy.
' Note: when an append fails part way, the target is cut back to its old length rather
'   than deleted, so that what it held is kept.
Declare Function cFilePartAppend (ByVal Source As String, ByVal Target As String, ByVal Offset As Long, ByVal Head As Integer) As Long
' Splits a file into numbered pieces of a given size.
' The pieces take the pattern's drive, directory and name, with the extension replaced by
' the piece number in three digits: a pattern "D:\Out\Part.txt" gives D:\Out\Part.000,
' Part.001 and so on (Part.1000 after Part.999). Each piece but the last holds PieceSize
' bytes.
' Source: the file to split.
' Pattern: the name the pieces are made from.
' PieceSize: the size of a piece in bytes.
' Returns: the number of pieces (0 for an empty source), or a code:
'   - -1: PieceSize is below 1.
'   - -2: Source is not a valid file name.
'   - -3: Pattern is not a valid file name.
'   - -4: the source cannot be opened.
'   - -5: a piece cannot be created, or it would be the source itself.
'   - -32760, -32730, -32740: no buffer, a read error, a write error.
'   All pieces already written are deleted when the call fails.
Declare Function cSplitFile (ByVal Source As String, ByVal Pattern As String, ByVal PieceSize As Long) As Long
' Cuts a file in two at a byte position.
' Source: the file to cut; it is not changed.
' First: receives the bytes before Position.
' Second: receives the bytes from Position to the end.
' Position: the byte offset of the cut, from 0 to the source's length.
' Returns: 0 on success, or a code:
'   - -1: Position is negative.
'   - -2, -3, -4: Source, First or Second is not a valid file name.
'   - -5: Position is beyond the end of the source.
'   - -6: the source cannot be opened.
'   - -7: the first target cannot be created, or it is the source.
'   - -8: the second target cannot be created, or it is the source or the first target.
'   - -32760, -32730, -32740: no buffer, a read error, a write error.
'   Both targets are deleted when the call fails.
Declare Function cCutFile (ByVal Source As String, ByVal First As String, ByVal Second As String, ByVal Position As Long) As Long
' Copies a file turning runs of spaces into tabs.
' Every run of k spaces becomes k \ Width tabs followed by k Mod Width spaces, wherever it
' stands on the line: columns and tab stops play no part. The file is worked in blocks of
' 32,768 bytes, and a run cut by a block's end is taken as two runs.
' Source: the file to read.
' Target: the file to create.
' Width: the number of spaces a tab stands for.
' Returns: the number of bytes written; -1 when Width is below 1; -32761 when the second
'   buffer cannot be had; a code of the family (above) on failure.
' Example:
'   ' six spaces become one tab and two spaces
'   n = cFileCompressTab("in.txt", "out.txt", 4)
Declare Function cFileCompressTab (ByVal Source As String, ByVal Target As String, ByVal Width As Long) As Long
' Copies a file turning every tab into a number of spaces.
' Each tab becomes exactly Width spaces whatever its column; a Width of 0 or less removes
' the tabs.
' Source: the file to read.
' Target: the file to create.
' Width: the number of spaces for each tab.
' Returns: the number of bytes written; -2 when a block of 32,768 bytes would grow past
'   65,536 bytes (its tabs times Width plus its length), in which case the target is
'   deleted; -32761 when the second buffer cannot be had; a code of the family on failure.
Declare Function cFileExpandTab (ByVal Source As String, ByVal Target As String, ByVal Width As Long) As Long
' Sorts the lines or fixed-length records of a file into a new file.
' The whole file is sorted in memory (not stably: records that compare equal may change
' places). Text lines are read in text mode in pieces of at most 16,383 bytes (a longer
' line gives several records) and written in text mode, so vbCrLf endings stay vbCrLf.
' Records compare as strings, a zero byte ending them; keys compare as strings of at most
' KeyLength bytes.
' Source: the file to sort.
' Target: the file to create; it must not be the source.
' Order: 1 or 5 ascending, 2 or 6 descending, 9 ascending and 10 descending without regard
'   to case (letters A to Z); any other value ascending.
' RecordLength: below 1 the records are text lines; otherwise records of that many bytes
'   (a shorter last record is sorted as it stands).
' KeyStart: the key's first byte, counted from 0 within the record; negative compares
'   whole lines (with fixed-length records it is refused). A key that starts past the end
'   of a line is empty.
' KeyLength: the key's length in bytes; below 1 the key runs to the end of the record.
' Count: receives the stage reached: -1 once the arguments are accepted, -2 once the
'   file is in memory, -3 once its records are listed, -4 once sorted, and finally the
'   number of records written.
' Returns: 0 on success, or a code:
'   - -1, -2: Source or Target is "".
'   - -3: fixed-length records with a negative KeyStart.
'   - -6: a key of fixed-length records that ends beyond the record.
'   - -7: Source and Target name one file (by name without regard to case, or another
'     path to it).
'   - -8: the source cannot be opened; -9: the target cannot be created.
'   - -10: no memory for the file; -12: a read error; -13: the file shrank while read.
'   - -14: the file passes 4 GB or 2,147,483,647 records; -15: no memory for the table.
'   - -16: a write error.
'   The target is deleted when the sort fails after creating it.
' Note: every line written ends with a line feed, so a last line without one, or a piece
'   of a long line, never runs into the next line. Memory needed: the file's size plus 8
'   bytes a record.
' Example:
'   Dim Count As Long
'   If cFileSort("names.txt", "sorted.txt", 9, 0, -1, 0, Count) = 0 Then Debug.Print Count
Declare Function cFileSort (ByVal Source As String, ByVal Target As String, ByVal Order As Integer, ByVal RecordLength As Long, ByVal KeyStart As Long, ByVal KeyLength As Long, Count As Long) As Long
' Tells whether a log file is due for rotation.
' The file's last-write date and time are compared with the local clock by the period.
' File: the file's name.
' Period: 0 always due; 1 hourly (the hours differ; only the hour is compared, not the
'   date, so a file written at 10:15 yesterday is not due at 10:40 today); 2 daily (the
'   days of the month differ); 3 weekly (the week numbers differ, counted as
'   cDT_WeekOfYear counts them); 4 monthly (the months differ; the years are not
'   compared); any other value never due.
' Returns: True (-1) when the file exists and is due; False (0) otherwise.
Declare Function cFileCycleNeeded (ByVal File As String, ByVal Period As Integer) As Integer
' Renames a log file to a dated name when it is due for rotation.
' The new name keeps the directory, the first two characters of the name and the
' extension, with the last-write date's YYMMDD between: LOGFILE.TXT written on 5 March
' 2001 becomes LO010305.TXT. When that name exists, the extension becomes 000, 001, ...
' 999, the first that is free.
' File: the file's name.
' Period: as cFileCycleNeeded.
' Returns: True (-1) when no rotation was due (the file missing included) or the file was
'   renamed; False (0) when all names are taken or the rename failed.
Declare Function cFileCycle (ByVal File As String, ByVal Period As Integer) As Integer
' Tells whether a file was written after a given date and time.
' File: the file's name.
' FileDate: a date as year * 10000 + month * 100 + day.
' FileTime: a time as hour * 1000000 + minute * 10000 + second * 100 + hundredths.
' Returns: True (-1) when the file's last write, in local time, is later than FileDate
'   and FileTime; False (0) when it is not or the file does not exist.
Declare Function cFileHasChanged (ByVal File As String, ByVal FileDate As Long, ByVal FileTime As Long) As Integer
' Joins two files end to end into a new file.
' First: the file that comes first.
' Second: the file that follows it.
' Target: the file to create (replaced when it exists); it must be neither source.
' Returns: the number of bytes written, or a code:
'   - -32750: the first file cannot be opened.
'   - -32752: the second file cannot be opened.
'   - -32751: the target cannot be created, or it is one of the sources.
'   - -32760, -32730, -32740: no buffer, a read error, a write error.
'   The target is deleted when the call fails after creating it.
' Note: the library fixed this function's codes: -32752 for the second source is its
'   own, beside the family's codes.
Declare Function cFileMerge (ByVal First As String, ByVal Second As String, ByVal Target As String) As Long
' Joins any number of files end to end into a new file.
' Every source is opened once before the target is created, so that a missing one leaves
' no target behind.
' Sources: a String array of the names, joined in the order of their indexes.
' Target: the file to create (replaced when it exists); it must not be one of the sources.
' Returns: the number of files joined, or a code:
'   - -2: Sources is missing, not a String array or empty, holds an empty name, or Target
'     is "".
'   - -3: a source cannot be opened.
'   - -4: the target cannot be created, or it is one of the sources.
'   - -5: a read or write error, or no memory; the target is deleted.
Declare Function cFileMergeExt (Sources() As String, ByVal Target As String) As Long
' Replaces a text by another everywhere in a file.
' The file is read line by line in pieces of at most 8,191 bytes; a match does not span
' two pieces, and the matches in a piece do not overlap. Every byte outside the matches
' is kept, line endings included. The new content goes to a uniquely named file in the
' same directory, which replaces the original only when complete: a failure (a full disk,
' say) leaves the original as it was. When nothing matches the file is not touched.
' File: the file to change.
' Search: the text to find; it ends at its first zero byte.
' Replacement: the text put in its place; "" deletes the matches.
' Reserved: not used; pass "".
' CaseSensitive: 0 (False) finds the text without regard to case (letters A to Z); any
'   other value exactly.
' Returns: the number of replacements; 0 when nothing matched or File or Search is "";
'   -32750 when the file cannot be opened or may not be written (read-only); -32751 when
'   the new file cannot be made beside it; -32730 on a read error; -32740 on a write
'   error or when the new file cannot take the original's place.
' Note: the library decided the fourth argument has no use; the temporary name is made
'   new each time, so two calls at once on files of one directory do not collide.
Declare Function cFileSearchAndReplace (ByVal File As String, ByVal Search As String, ByVal Replacement As String, ByVal Reserved As String, ByVal CaseSensitive As Integer) As Long
' Replaces characters of a file by others, as cChangeChars does in a string.
' The pairs apply one after the other, each to the result of those before it, so
' FromChars "ab" with ToChars "bc" turns both a and b into c. The file is rewritten as
' cFileSearchAndReplace does: through a new file beside it that replaces it only when
' complete, and not at all when nothing changes.
' File: the file to change.
' FromChars: the characters to replace; every byte counts.
' ToChars: their replacements, in the same order; characters beyond the shorter of the
'   two lists are ignored.
' Reserved: not used; pass "".
' Returns: the number of bytes changed; 0 when nothing changed or File, FromChars or
'   ToChars is ""; the codes of cFileSearchAndReplace on failure, and -32760 when no
'   buffer can be had.
Declare Function cFileChangeChars (ByVal File As String, FromChars As String, ToChars As String, ByVal Reserved As String) As Long
' Finds the first line, from a given one on, that holds a text.
' The file is read in text mode in line pieces of at most 2,559 bytes, as cFileSearch
' reads it; a line longer than that counts as several.
' File: the file's name.
' Text: the text to find; it ends at its first zero byte.
' LineNumber: on entry the first line to look at, counted from 1 (below 1: the first);
'   receives the number of the line found, and is left alone when none is.
' CaseSensitive: 0 finds the text without regard to case (letters A to Z); any other value
'   exactly.
' Returns: the position of the text in the line found, from 1; 0 when no line holds it
'   or File or Text is ""; -32750 when the file cannot be opened; -32730 on a read error.
' Example:
'   Dim L As Long, P As Long
'   L = 1
'   P = cFileSearchFromLine("app.log", "error", L, 0)
'   Do While P > 0
'       Debug.Print L, P
'       L = L + 1
'       P = cFileSearchFromLine("app.log", "error", L, 0)
'   Loop
Declare Function cFileSearchFromLine (ByVal File As String, ByVal Text As String, LineNumber As Long, ByVal CaseSensitive As Long) As Long
' Finds the first line, from a given one on, that a wildcard pattern matches.
' The whole line, without its line feed, must match the pattern, whose wildcards are those
' of cPatternMatch: ? one character, * any run. Lines are read as cFileSearchFromLine
' reads them.
' File: the file's name.
' Pattern: the pattern, as "*error*"; it ends at its first zero byte.
' LineNumber: on entry the first line to look at, counted from 1 (below 1: the first);
'   receives the number of the line found, and is left alone when none is.
' CaseSensitive: 0 matches without regard to case (letters A to Z); any other value
'   exactly.
' Returns: True (-1) when a line matched; 0 when none does or File or Pattern is "";
'   -32750 when the file cannot be opened; -32730 on a read error.
Declare Function cFileSearchPatternFromLine (ByVal File As String, ByVal Pattern As String, LineNumber As Long, ByVal CaseSensitive As Long) As Long
' Wraps the long lines of a text file at a width, breaking at word boundaries.
' Every line longer than Width bytes is cut into pieces of at most Width bytes, joined by
' LineBreak. A piece ends before the last space or tab that stands at most Width bytes in
' (that run of blanks is dropped at the break), or after the last other delimiter that fits
' (a hyphen stays with the word before it), whichever comes later; a line with no such
' place is cut at exactly Width bytes. Lines of at most Width bytes, and the line endings
' of the source (CR LF or LF), are copied unchanged; a carriage return not followed by a
' line feed counts as text.
' Source: the file to read.
' Target: the file to create (replaced when it exists).
' Width: the longest piece, from 1 to 4,096 bytes.
' Delimiters: the characters a line may break at; "" means space and tab. A space or a
'   tab breaks only when it is listed.
' LineBreak: the text written at each break, at most 255 characters; "" means vbCrLf.
'   It may carry an indent for the continued line, as vbCrLf & "    ".
' Returns: the number of breaks written, or a code:
'   - -1: Width is below 1 or above 4,096, or LineBreak is longer than 255 characters.
'   - -2: Source is not a valid file name.
'   - -3: Target is not a valid file name.
'   - -4: Source and Target are one file (checked before anything is created).
'   - -5: the source cannot be opened.
'   - -6: no memory for the buffers.
'   - -7: the target cannot be created.
'   - -8: a read error.
'   - -9: a write error.
'   A target made by a failed call is deleted.
' Note: the width, the delimiters and the break text are the library's choice for the
'   arguments; the count of breaks as the result lets a caller see whether anything was
'   wrapped.
' Example:
'   n = cFileWrapLine("notes.txt", "notes72.txt", 72, " -", vbCrLf)
'   ' "a well-known tale" at width 8 becomes "a well-" / "known" / "tale"
Declare Function cFileWrapLine (ByVal Source As String, ByVal Target As String, ByVal Width As Long, ByVal Delimiters As String, ByVal LineBreak As String) As Long
' Gives the value of a field of a mail message's header, read from a file.
' The header is the start of the file up to its first empty line (at most 1 MB of it).
' The first field whose name is Field, in any case, is taken; its continuation lines
' (lines starting with a space or tab) are joined to it with their line breaks taken out
' and their blanks kept, and the blanks around the value are removed. Lines that are
' neither a field nor a continuation, such as the "From " line a mailbox puts before each
' message, are skipped. Encoded words (=?charset?...?=) are returned as they stand.
' File: the name of the message file.
' Field: the field's name, as "Subject" (a colon at its end is ignored).
' Returns: the field's value; "" when the field is missing or empty, Field is "", or the
'   file cannot be opened or read.
' Note: the arguments, the 1 MB limit and the unfolding rule are the library's choice.
' Example:
'   Debug.Print cFileScanHeader("C:\Mail\0001.eml", "Subject")
Declare Function cFileScanHeader (ByVal File As String, ByVal Field As String) As String
' Gives the addresses a mail message is sent to, read from its header in a file.
' The header is read as cFileScanHeader reads it. The To, Cc and Bcc fields are taken in
' the order they stand; each entry of their comma-separated lists gives the address
' between its angle brackets when it has them ("Ann Lee" <ann@example.com> gives
' ann@example.com) and otherwise the entry itself, without comments in parentheses and
' without blanks outside quotes. A group ("team: a@x.org, b@y.org;") gives its members.
' The addresses are not checked and not made unique.
' File: the name of the message file.
' Separator: the text put between two addresses; "" means ";".
' Returns: the addresses joined by Separator; "" when there are none or the file cannot
'   be opened or read.
' Note: the Separator argument and the choice of fields are the library's own.
' Example:
'   Debug.Print cFileScanHeaderForRecipients("C:\Mail\0001.eml", "; ")
Declare Function cFileScanHeaderForRecipients (ByVal File As String, ByVal Separator As String) As String
