' Pattern matching: simple and extended wildcards, similarity score, prefix test, table lookup.

' Tells whether a text matches a simple wildcard pattern.
' In the pattern "?" stands for any one character, "*" for any run of characters (also
' none) and every other character for itself. A "*" at the end takes the rest of the
' text; a "*" right after another "*" stands for the character "*" itself, so "**"
' matches the texts that end in "*".
' Txt: the text; it ends at its first Chr$(0).
' Pattern: the pattern; it ends at its first Chr$(0). The empty pattern matches only "".
' Returns: True (-1) when Txt matches, False (0) otherwise. Case counts: "A" does not
'   match "a" (cPatternMatchS can ignore case).
' Note: the matcher works without recursion, in time proportional to the lengths of
'   Txt and Pattern multiplied, so long texts and patterns with many stars are safe.
' Example:
'   Debug.Print cPatternMatch("report.txt", "*.txt")   ' -1
'   Debug.Print cPatternMatch("REPORT.TXT", "*.txt")   ' 0
Declare Function cPatternMatch (ByVal Txt As String, ByVal Pattern As String) As Long
' Tells whether a text matches a simple wildcard pattern, with a choice of case.
' The pattern is read as for cPatternMatch: "?" for any one character, "*" for any run.
' Txt: the text; it ends at its first Chr$(0).
' Pattern: the pattern; it ends at its first Chr$(0).
' CaseSensitive: -1 (True) compares with exact case; any other value, 1 included,
'   ignores the case of the letters A to Z.
' Returns: True (-1) when Txt matches, False (0) otherwise.
' Note: as for cPatternMatch, the time taken grows with the product of the lengths of
'   Txt and Pattern.
' Example:
'   Debug.Print cPatternMatchS("REPORT.TXT", "*.txt", False)   ' -1
Declare Function cPatternMatchS (ByVal Txt As String, ByVal Pattern As String, ByVal CaseSensitive As Integer) As Long
' Matches a text against an extended wildcard pattern and tells why a match failed.
' The pattern may hold:
' - "*" for any run of characters (also none) and "?" for exactly one character;
' - "[set]" for one character of the set, "[!set]" or "[^set]" for one character not
'   in it; a set lists characters and ranges such as a-z (either order may be given),
'   and may not start with "]";
' - "\" followed by a character, for that character taken literally, also in a set;
' - "~" followed by two hexadecimal digits, for the character of that code ("~41" is
'   "A"), also in a set;
' - any other character, for itself.
'
' Set members and "~" codes compare with exact case even where case is otherwise
' ignored (cPatternExtMatchS). In a set, codes 128 to 255 count as lower than 0, which
' matters for ranges that cross code 127. When Txt runs out, only a single remaining
' "*" still matches: "a**" gives 12 against "a".
' Txt: the text; it ends at its first Chr$(0).
' Pattern: the pattern; it ends at its first Chr$(0).
' Returns: one of these codes:
' - -1: Txt matches.
' - 1: the pattern, also "", holds none of "*", "?", "[" and "\"; nothing is compared,
'   even when it equals Txt.
' - 2: a "\" ends the pattern. 3: a range has no end ("[a-" or "[a-]"). 4: a set has no
'   closing "]". 5: an empty set "[]". 7: a "~" without two hexadecimal digits.
' - 11: the pattern ended before Txt. 12: Txt ended before the pattern. 13: a set did
'   not match. 14: a character did not match. 17: a "~" code did not match.
' - 0: the matcher ran out of memory on a well-formed pattern; 16: another internal
'   failure.
' Note: a pattern fault is reported only when the match reaches it; a text that fails
'   earlier gives 11 to 17 instead. A "~" without two hexadecimal digits is matched as
'   the character "~" itself, and reported as 7 only when the match stops at a fault
'   further on. The matcher works without recursion, so patterns with many stars are
'   safe; the time taken grows with the product of the lengths of Txt and Pattern.
' Example:
'   Debug.Print cPatternExtMatch("B7", "[A-Z][0-9]")   ' -1
'   Debug.Print cPatternExtMatch("b7", "[A-Z][0-9]")   ' 13
'   Debug.Print cPatternExtMatch("xA", "?~41")         ' -1
'   Debug.Print cPatternExtMatch("abc", "abc")         ' 1
Declare Function cPatternExtMatch (ByVal Txt As String, ByVal Pattern As String) As Long
' Matches a text against an extended wildcard pattern, with a choice of case, and tells why a match failed.
' The pattern and the result codes are those of cPatternExtMatch.
' Txt: the text; it ends at its first Chr$(0).
' Pattern: the pattern; it ends at its first Chr$(0).
' CaseSensitive: -1 (True) compares the plain characters of the pattern with exact case;
'   any other value, 1 included, ignores the case of the letters A to Z. Set members and
'   "~" codes always compare with exact case.
' Returns: the codes of cPatternExtMatch: -1 for a match; 1 for a pattern without
'   wildcards; 2, 3, 4, 5 or 7 for a faulty pattern; 11, 12, 13, 14 or 17 for the reason
'   Txt did not match; 0 or 16 for an internal failure.
' Note: as for cPatternExtMatch, the time taken grows with the product of the lengths
'   of Txt and Pattern.
' Example:
'   Debug.Print cPatternExtMatchS("REPORT.TXT", "*.txt", False)   ' -1
'   Debug.Print cPatternExtMatchS("A", "[a]", False)              ' 13
Declare Function cPatternExtMatchS (ByVal Txt As String, ByVal Pattern As String, ByVal CaseSensitive As Integer) As Long
' Scores how alike two words are.
' The score grows with the characters the words share, more for runs of shared
' characters and for characters at the same place, and shrinks when the lengths differ.
' Case is ignored for the letters A to Z. The score has no fixed maximum: identical
' words of up to 31 characters score from 650 to 1,488, depending on their length. To
' pick the closest of several candidates, score each against the same Txt1 and take
' the highest. Every character of Txt1 is looked for all through Txt2, so the time taken
' grows with the product of the two lengths: meant for words and names, not for long
' texts. A run of one character repeated counts as a single step, so long repetitive
' words stay fast.
' Txt1: the first word, such as the one looked for; the scale of the score depends on
'   its length. It ends at its first Chr$(0).
' Txt2: the second word, such as a candidate; it ends at its first Chr$(0).
' Returns: the score; 0 when either word is "".
' Example:
'   Debug.Print cStrMatch("Smith", "Smyth")   ' 450
'   Debug.Print cStrMatch("Smith", "Jones")   ' 175
Declare Function cStrMatch (ByVal Txt1 As String, ByVal Txt2 As String) As Integer
' Tells whether a text begins with a prefix.
' Txt: the text; it ends at its first Chr$(0).
' Prefix: the prefix, compared with exact case; it ends at its first Chr$(0).
' Returns: True (-1) when Txt begins with Prefix; False (0) otherwise, and also when
'   either is "" or Prefix is longer than Txt.
Declare Function cStrPrefixed (ByVal Txt As String, ByVal Prefix As String) As Integer
' Finds a word in a table of entries cut by separator characters.
' Each entry is trimmed of leading and trailing spaces, tabs and line ends before it is
' compared; the word is not trimmed. The search stops at the first empty entry: a
' leading separator, two separators side by side, or the end of the table.
' Word: the word looked up; it ends at its first Chr$(0).
' Table: the entries, such as "apple, pear, plum"; it ends at its first Chr$(0).
' Separators: the separator characters; each of them ends an entry. With "" the whole
'   table is one entry.
' CaseSensitive: -1 (True) compares with exact case; any other value, 1 included,
'   ignores the case of the letters A to Z.
' Returns: the number of the matching entry, counted from 1; -1 when no entry before
'   the first empty one matches, or when Table is "".
' Example:
'   Debug.Print cMatchTable("PEAR", "apple, pear, plum", ",", False)   ' 2
Declare Function cMatchTable (ByVal Word As String, ByVal Table As String, ByVal Separators As String, ByVal CaseSensitive As Integer) As Long
