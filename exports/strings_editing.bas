' Editing and layout: replace, delete, pad, fill, resize, align, tabs, hexadecimal packing, capitals, single characters.
' Functions that return a String give a new string and leave their arguments alone; cFill,
' cReplaceChar and cReplaceLastChar change the caller's variable in place, never its length.
' Characters are single bytes of the ANSI code page; comparisons that ignore case fold only
' A to Z.

' Replaces texts in a string by other texts, following a list of pairs.
' The pairs are applied one after the other, each to the result of those before it. A pair
' replaces every occurrence of its old text, from left to right, and searches on after the
' new text it inserted, so a new text that holds the old one is not replaced again.
' Txt: the text, read up to its first Chr(0).
' Pairs: the list "old|new;old|new;...", read up to its first Chr(0). The new text is all that
'   follows the first "|" of its pair; a pair without "|" deletes its old text. Pairs with an
'   empty old text (as after a final ";") are skipped.
' CaseSensitive: -1 (True) compares exactly; any other value ignores the case of A to Z.
' Returns: the edited text; "" when Txt is ""; Txt unchanged when Pairs is "".
' Note: a result may grow to 256 MB, or to 25 times Txt when that is more; a longer one gives
'   "" instead of exhausting the memory.
' Example:
'   Debug.Print cStringReplace("Hello World", "o|0;l|L", -1)   ' HeLL0 W0rLd
Declare Function cStringReplace (ByVal Txt As String, ByVal Pairs As String, ByVal CaseSensitive As Integer) As String
' Deletes every occurrence of a substring, again and again until none is left.
' A deletion that joins the text around it into a new occurrence deletes that one too:
' deleting "ab" from "aabb" leaves "".
' Txt: the text, read up to its first Chr(0).
' SubString: the text to delete, read up to its first Chr(0).
' CaseSensitive: -1 (True) compares exactly; any other value ignores the case of A to Z.
' Returns: Txt without SubString; "" when Txt is ""; Txt unchanged when SubString is "".
' Example:
'   Debug.Print cDeleteSubString("Mississippi", "ss", -1)   ' Miiippi
Declare Function cDeleteSubString (ByVal Txt As String, ByVal SubString As String, ByVal CaseSensitive As Integer) As String
' Pads a text on the left with a fill character up to a field width.
' Txt: the text, read up to its first Chr(0).
' FillChar: the fill character; only its first character is used.
' FieldWidth: the length of the result.
' Returns: FillChar repeated, then Txt, FieldWidth characters in all; "" when Txt is "";
'   Txt unchanged when FillChar is "" or FieldWidth is less than the length of Txt (a text
'   is never cut).
' Example:
'   Debug.Print cLFill("42", "0", 6)   ' 000042
Declare Function cLFill (ByVal Txt As String, ByVal FillChar As String, ByVal FieldWidth As Long) As String
' Pads a text on the right with a fill character up to a field width.
' Txt: the text, read up to its first Chr(0).
' FillChar: the fill character; only its first character is used.
' FieldWidth: the length of the result.
' Returns: Txt, then FillChar repeated, FieldWidth characters in all; "" when Txt is "";
'   Txt unchanged when FillChar is "" or FieldWidth is less than the length of Txt (a text
'   is never cut).
' Example:
'   Debug.Print cRFill("Total", ".", 10) & " 12"   ' Total..... 12
Declare Function cRFill (ByVal Txt As String, ByVal FillChar As String, ByVal FieldWidth As Long) As String
' Inserts a value at the start of a field of a separated text.
' When field Position exists, a Chr(255) in Txt comes back as the first character of
' Separator and ends a field like it; it does not make a field exist, though.
' Txt: the text, read up to its first Chr(0).
' Separator: the separator, usually one character. Each of its characters ends a field, but
'   only the first one is counted to tell whether field Position exists.
' Position: the number of the field, counted from 1.
' Value: the text to insert.
' Returns: Txt with Value inserted; a copy of Txt as it is, Chr(255) included, when there
'   is no field Position; "" when Txt is ""; Txt unchanged when Separator or Value is "" or
'   Position is below 1.
' Example:
'   Debug.Print cLSetIn("Smith,John,London", ",", 2, "Mr ")   ' Smith,Mr John,London
Declare Function cLSetIn (ByVal Txt As String, ByVal Separator As String, ByVal Position As Long, ByVal Value As String) As String
' Like cLSetIn, inserting Value at the end of the field: just before the separator that
'   ends it, or at the end of Txt for the last field.
'   cRSetIn("Smith,John,London", ",", 1, " Jr") gives "Smith Jr,John,London".
Declare Function cRSetIn (ByVal Txt As String, ByVal Separator As String, ByVal Position As Long, ByVal Value As String) As String
' Overwrites a string in place with a pattern repeated.
' The pattern starts at the first character and its last repetition is cut where the string
' ends. Every byte counts, Chr(0) included.
' Txt: the string to overwrite; its variable is changed, its length never.
' Pattern: the pattern.
' Returns: True (-1) when done; False (0), with Txt unchanged, when Txt or Pattern is "".
' Example:
'   s = Space$(7)
'   If cFill(s, "xy") Then Debug.Print s   ' xyxyxyx
Declare Function cFill (Txt As String, Pattern As String) As Integer
' Makes a string of a given length from a pattern repeated.
' Length: the length of the result.
' Pattern: the pattern, repeated from its first character; the last repetition is cut.
' Returns: the new string; "" when Length is below 1 or Pattern is "".
' Example:
'   Debug.Print cCreateAndFill(7, "-=")   ' -=-=-=-
Declare Function cCreateAndFill (ByVal Length As Long, Pattern As String) As String
' Cuts a string to at most a given length.
' Txt: the text.
' Length: the longest the result may be.
' Returns: the first Length characters of Txt, or all of it when it is shorter (a string is
'   never lengthened); "" when Txt is "" or Length is below 1.
Declare Function cResizeString (Txt As String, ByVal Length As Long) As String
' Cuts or pads a string to exactly a given length.
' Txt: the text.
' Length: the length of the result.
' FillChar: the character that pads a shorter text; only its first character is used, and ""
'   pads with Chr(0).
' Returns: the first Length characters of Txt, followed by FillChar as often as needed;
'   "" when Txt is "" or Length is below 1.
Declare Function cResizeStringAndFill (Txt As String, ByVal Length As Long, FillChar As String) As String
' Places a text in a field of spaces, aligned left, right or centred.
' Txt: the text.
' Mode: below 0 aligns right, 0 centres, above 0 aligns left. When centring cannot share the
'   spaces evenly, the extra one goes on the left.
' FieldWidth: the length of the result.
' Returns: FieldWidth characters; a text longer than the field is cut to its first
'   FieldWidth characters; "" when Txt is "" or FieldWidth is below 1.
' Example:
'   Debug.Print "[" & cAlign("ab", 0, 7) & "]"   ' [   ab  ]
Declare Function cAlign (Txt As String, ByVal Mode As Integer, ByVal FieldWidth As Long) As String
' Removes every space, tab and Chr(0) from a text.
' Despite its name it does not compress; cStringCompress does.
' Txt: the text.
' Returns: Txt without spaces, tabs and zero bytes; "" when Txt is "" or holds nothing else.
Declare Function cCompress (Txt As String) As String
' Replaces every tab of a text by a fixed number of spaces.
' Each tab becomes exactly Spaces spaces wherever it stands; tab stops are not kept.
' Txt: the text.
' Spaces: the number of spaces for each tab.
' Returns: the expanded text; "" when Txt is ""; Txt unchanged when Spaces is below 1 or Txt
'   holds no tab.
' Note: a result longer than a string can be (2,147,483,647 characters) gives "".
Declare Function cExpandTab (Txt As String, ByVal Spaces As Long) As String
' Replaces runs of spaces in a text by tabs.
' A run of L spaces becomes L \ Spaces tabs followed by L Mod Spaces spaces, wherever it
' stands (tab stops are not taken into account); other characters are kept.
' Txt: the text.
' Spaces: the number of spaces that one tab stands for.
' Returns: the compressed text, never longer than Txt; "" when Txt is ""; Txt unchanged when
'   Spaces is below 2.
' Example:
'   s = cCompressTab("a      b", 4)   ' "a" & vbTab & "  b"
Declare Function cCompressTab (Txt As String, ByVal Spaces As Long) As String
' Packs hexadecimal digits two to a byte.
' Each pair of digits becomes one character, the first digit in the high half; with an odd
' number of digits the first one forms a character alone. Letters A to F count in either
' case. Other characters are not refused: a character c stands for (Asc(c) - 55) And 15.
' Txt: the hexadecimal text.
' Returns: a string of (Len(Txt) + 1) \ 2 characters; "" when Txt is "".
' Example:
'   s = cCompact("1AB")   ' Chr$(1) & Chr$(&HAB)
Declare Function cCompact (Txt As String) As String
' Writes each byte of a string as two hexadecimal digits.
' Txt: the string; every byte counts, Chr(0) included.
' Returns: a text twice as long, high half first, with the digits 0 to 9 and A to F; "" when
'   Txt is "".
' Example:
'   Debug.Print cUncompact(Chr$(1) & Chr$(171))   ' 01AB
Declare Function cUncompact (Txt As String) As String
' Capitalises the first letter of each word of a text.
' The first character and every character after a space become capitals. Nothing is turned
' into lower case, only a to z change (accented letters stay as they are), and only a space
' starts a word, so "jean-luc" gives "Jean-luc".
' Txt: the text.
' Returns: the capitalised text; "" when Txt is "".
' Example:
'   Debug.Print cProperName("mIXED case")   ' MIXED Case
Declare Function cProperName (Txt As String) As String
' Changes the character at a position of a string, in place.
' Txt: the string; its variable is changed, its length never.
' Position: the position of the character, counted from 1.
' Char: the new character; only its first character is used.
' Returns: True (-1) when done; False (0), with Txt unchanged, when Txt or Char is "" or
'   Position is outside 1 to Len(Txt).
Declare Function cReplaceChar (Txt As String, ByVal Position As Long, Char As String) As Integer
' Changes the last character of a string, in place.
' Txt: the string; its variable is changed, its length never.
' Char: the new character; only its first character is used.
' Returns: True (-1) when done; False (0), with Txt unchanged, when Txt or Char is "".
Declare Function cReplaceLastChar (Txt As String, Char As String) As Integer
' Gives a string without its last character.
' Txt: the text; it is not changed.
' Returns: Txt without its last character; "" when Txt is "" or has one character.
Declare Function cRemoveLastChar (Txt As String) As String
