' Substrings and positions: pieces by position, by field and between tags.

' Gives the character at a position counted from the left.
' Txt: the text; every byte counts, Chr$(0) included.
' Position: the position of the character, counted from 1.
' Returns: a one-character string; "" when Txt is empty or Position is below 1 or
'   past the end of Txt.
Declare Function cOneCharFromLeft (Txt As String, ByVal Position As Long) As String
' Like cOneCharFromLeft, counting from the right: Position 1 is the last character.
Declare Function cOneCharFromRight (Txt As String, ByVal Position As Long) As String
' Drops a number of characters at the right end of a text.
' Txt: the text; every byte counts, Chr$(0) included.
' Position: how many characters to drop, from 1 to Len(Txt) - 1.
' Returns: the first Len(Txt) - Position characters; "" when Txt is empty or Position
'   is below 1 or not less than Len(Txt).
' Example:
'   Debug.Print cBlockCharFromLeft("report.txt", 4)    ' report
'   Debug.Print cBlockCharFromRight("report.txt", 7)   ' txt
Declare Function cBlockCharFromLeft (Txt As String, ByVal Position As Long) As String
' Like cBlockCharFromLeft, but drops the Position characters at the left end.
Declare Function cBlockCharFromRight (Txt As String, ByVal Position As Long) As String
' Moves the first character of a text to its end.
' Txt: the text; every byte counts, Chr$(0) included.
' Returns: characters 2 to the end followed by character 1, so "abcd" gives "bcda";
'   "" for an empty Txt; a one-character Txt comes back unchanged.
Declare Function cScrollL (Txt As String) As String
' Like cScrollL, rotating the other way: the last character moves to the front.
Declare Function cScrollR (Txt As String) As String
' Reverses the order of the characters of a text.
' Txt: the text; every byte counts, Chr$(0) included.
' Returns: the characters from last to first; "" for an empty Txt.
Declare Function cReverse (Txt As String) As String
' Sets the separator character that cGet splits at.
' The separator is "|" when the library loads. It is one setting for the whole process,
' shared by every caller of cGet, and it stays until the next call changes it.
' Separator: the new separator; only its first character is used.
' Returns: Len(Separator); 0 for "", which leaves the separator as it was.
Declare Function cSetDefaultSeparator (Separator As String) As Long
' Gives a field of a text cut at the default separator.
' The separator is "|" unless cSetDefaultSeparator changed it. Field 1 is the text
' before the first separator, the last field the text after the last one; two
' separators side by side hold an empty field.
' Txt: the text; every byte counts, Chr$(0) included.
' Position: the number of the field, counted from 1.
' Returns: the field without its separators; "" when Txt is empty, Position is below 1
'   or past the last field, or the field itself is empty.
' Example:
'   Debug.Print cGet("red|green|blue", 2)   ' green
Declare Function cGet (Txt As String, ByVal Position As Long) As String
' Gives a field of a text cut at a separator character.
' Field 1 is the text before the first separator, the last field the text after the
' last one; two separators side by side hold an empty field.
' Txt: the text; every byte counts, Chr$(0) included.
' Separator: the separator; only its first character is used.
' Position: the number of the field, counted from 1.
' Returns: the field without its separators; "" when Txt or Separator is empty,
'   Position is below 1 or past the last field, or the field itself is empty.
' Example:
'   Debug.Print cGetIn("north,south,east", ",", 2)   ' south
Declare Function cGetIn (Txt As String, Separator As String, ByVal Position As Long) As String
' Like cGetIn, numbering the fields from the right: field 1 is the text after the last separator.
Declare Function cGetInR (Txt As String, Separator As String, ByVal Position As Long) As String
' Splits a text at the first occurrence of a separator character.
' Txt: the text; every byte counts, Chr$(0) included.
' Separator: the separator; only its first character is used.
' Before: -1 (True) for the part before the separator; any other value, 1 included,
'   for the part after it.
' Returns: the part asked for, without the separator, possibly "". A Txt without the
'   separator counts as all "after": Before = -1 then gives "" and any other value
'   gives Txt unchanged. "" when Txt or Separator is empty.
' Example:
'   Debug.Print cGetInPart("key=value=x", "=", True)    ' key
'   Debug.Print cGetInPart("key=value=x", "=", False)   ' value=x
Declare Function cGetInPart (Txt As String, Separator As String, ByVal Before As Long) As String
' Splits a text at the last occurrence of a separator character.
' Txt: the text; every byte counts, Chr$(0) included.
' Separator: the separator; only its first character is used.
' After: -1 (True) for the part after the separator; any other value, 1 included,
'   for the part before it.
' Returns: the part asked for, without the separator, possibly "". A Txt without the
'   separator counts as all "after", as with cGetInPart: After = -1 then gives Txt
'   unchanged and any other value gives "". "" when Txt or Separator is empty.
' Example:
'   Debug.Print cGetInPartR("C:\data\report.txt", "\", True)    ' report.txt
'   Debug.Print cGetInPartR("C:\data\report.txt", "\", False)   ' C:\data
Declare Function cGetInPartR (Txt As String, Separator As String, ByVal After As Long) As String
' Counts how often a character occurs in a text.
' Txt: the text; every byte counts, Chr$(0) included.
' Char: the character to count; only its first character is used.
' Returns: the number of occurrences; 0 when Txt or Char is empty.
Declare Function cCount (Txt As String, Char As String) As Long
' Finds a string inside a text, from a start position on.
' Start: the position where the search begins, counted from 1.
' Txt: the text searched; it ends at its first Chr$(0).
' Find: the string looked for; it ends at its first Chr$(0).
' CaseSensitive: -1 (True) compares with exact case; any other value, 1 included,
'   ignores the case of the letters A to Z.
' Returns: the position of the first match at or after Start, counted from 1 at the
'   start of Txt; 0 when there is none or Start is past the end of Txt; -1 when Start
'   is below 1. When Find is "", Start itself, whatever its value.
' Note: only the letters A to Z are matched regardless of case; accented letters and
'   other characters above 127 must match exactly, whatever the system's language.
' Example:
'   Debug.Print cInStr(1, "Hello World world", "world", False)   ' 7
'   Debug.Print cInStr(1, "Hello World world", "world", True)    ' 13
Declare Function cInStr (ByVal Start As Long, ByVal Txt As String, ByVal Find As String, ByVal CaseSensitive As Integer) As Long
' Gives the text between an opening tag and the closing tag after it.
' The first OpenTag is found, then the first CloseTag after its end.
' Txt: the text searched; the tags are looked for only up to its first Chr$(0).
' OpenTag: the opening tag.
' CloseTag: the closing tag.
' CaseSensitive: -1 (True) finds the tags with exact case; any other value, 1
'   included, ignores the case of the letters A to Z.
' Returns: the text between the tags, possibly ""; everything after OpenTag to the end
'   of Txt when no CloseTag follows it; "" when Txt, OpenTag or CloseTag is empty or
'   OpenTag is not found.
' Example:
'   Debug.Print cExtract("<b>bold</b> rest", "<B>", "</B>", False)   ' bold
Declare Function cExtract (ByVal Txt As String, ByVal OpenTag As String, ByVal CloseTag As String, ByVal CaseSensitive As Integer) As String
' Like cExtract, but gives "" when no CloseTag follows OpenTag.
Declare Function cExtractTag (ByVal Txt As String, ByVal OpenTag As String, ByVal CloseTag As String, ByVal CaseSensitive As Integer) As String
' Gives the text before a first tag or after a second tag that follows it.
' With FirstTag "" the function looks for SecondTag twice in a row instead, such as the
' blank line (vbCrLf & vbCrLf) that ends a mail header. The pair is the first
' SecondTag that starts exactly Len(SecondTag) characters after the previous one; the
' start of Txt stands for a previous one, so a single SecondTag at position
' Len(SecondTag) + 1 also counts as a pair. The left part then runs through the first
' character of the earlier tag of the pair (the vbCr in the mail example), or is the
' first character of Txt when the start of Txt stood for it.
' Txt: the text searched; the tags are looked for only up to its first Chr$(0).
' FirstTag: the first tag, or "" to look for SecondTag doubled.
' SecondTag: the second tag, looked for after the end of FirstTag.
' LeftPart: -1 (True) for the text before FirstTag; any other value for the text
'   after SecondTag.
' CaseSensitive: -1 (True) finds the tags with exact case; any other value ignores the
'   case of the letters A to Z.
' Returns: the part asked for, possibly ""; "" when Txt or SecondTag is empty or a tag
'   is not found.
' Example:
'   Debug.Print cExtractIsolate("head<x>mid</x>tail", "<x>", "</x>", True, False)   ' head
'   Body = cExtractIsolate(Mail, "", vbCrLf, False, False)   ' all after the blank line
Declare Function cExtractIsolate (ByVal Txt As String, ByVal FirstTag As String, ByVal SecondTag As String, ByVal LeftPart As Integer, ByVal CaseSensitive As Integer) As String
