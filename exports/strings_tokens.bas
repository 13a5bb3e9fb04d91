' Tokens and character filters: token tests, filters, translations, insertions, blocks, shuffles, bytewise logic.

' Tells whether a text contains at least one token of a list.
' Tokens are searched with exact case. Empty tokens (a leading separator, or two side
' by side) are skipped. The last character of the list always belongs to the last
' token, even when it is the separator: "cat|sat|" holds the tokens "cat" and "sat|",
' and "|" alone is the one token "|".
' Txt: the text searched; it ends at its first Chr$(0).
' Tokens: the tokens separated by "|", such as "dog|cat"; it ends at its first Chr$(0).
' Returns: True (-1) when a token occurs in Txt; False (0) when none does, or when Txt
'   or Tokens is empty.
' Note: a token longer than 2,559 characters is searched by its first 2,559 only,
'   rather than overrunning the library's token buffer. The length of Tokens is read as
'   a 16-bit Integer: keep it under 32,768 characters (a list of 32,768 to 65,535
'   characters is taken as empty).
' Example:
'   Debug.Print cOrToken("the cat sat", "dog|cat")   ' -1
Declare Function cOrToken (ByVal Txt As String, ByVal Tokens As String) As Integer
' Tells whether a text contains at least one token of a list cut at a chosen separator.
' Tokens are read as for cOrToken, with Separator in place of "|".
' Txt: the text searched; it ends at its first Chr$(0).
' Tokens: the tokens separated by Separator; it ends at its first Chr$(0).
' Separator: the separator of Tokens, its first character; "" means "|".
' Returns: True (-1) when a token occurs in Txt; False (0) when none does, or when Txt
'   or Tokens is empty.
' Example:
'   Debug.Print cOrTokenIn("red green", "blue,green", ",")   ' -1
Declare Function cOrTokenIn (ByVal Txt As String, ByVal Tokens As String, ByVal Separator As String) As Integer
' Tells whether a text contains every token of a list.
' Tokens are searched with exact case and read as for cOrToken: empty tokens are
' skipped, and the last character of the list belongs to the last token even when it
' is the separator.
' Txt: the text searched; it ends at its first Chr$(0).
' Tokens: the tokens separated by "|", such as "red|green"; it ends at its first
'   Chr$(0).
' Returns: True (-1) when every token occurs in Txt; False (0) when one is missing, or
'   when Txt or Tokens is empty.
' Note: the limits of cOrToken apply: tokens are searched by at most their first 2,559
'   characters, and Tokens must stay under 32,768 characters.
Declare Function cAndToken (ByVal Txt As String, ByVal Tokens As String) As Integer
' Tells whether a text contains every token of a list cut at a chosen separator.
' Tokens are read as for cOrToken, with Separator in place of "|".
' Txt: the text searched; it ends at its first Chr$(0).
' Tokens: the tokens separated by Separator; it ends at its first Chr$(0).
' Separator: the separator of Tokens, its first character; "" means "|".
' Returns: True (-1) when every token occurs in Txt; False (0) when one is missing, or
'   when Txt or Tokens is empty.
' Example:
'   Debug.Print cAndTokenIn("red green", "red;green", ";")   ' -1
Declare Function cAndTokenIn (ByVal Txt As String, ByVal Tokens As String, ByVal Separator As String) As Integer
' Gives a field of a text that any of several separator characters can end.
' Fields are numbered as in cGetIn: field 1 is the text before the first separator,
' and two separators side by side hold an empty field.
' Txt: the text; every byte counts, Chr$(0) included.
' Separators: the separator characters; each of them ends a field.
' Position: the number of the field, counted from 1.
' Returns: the field; "" when Txt or Separators is empty, Position is below 1 or past
'   the last field, or the field itself is empty.
' Example:
'   Debug.Print cTokenIn("12:30, 14:45", ":, ", 4)   ' 14 (field 3, between "," and " ", is "")
Declare Function cTokenIn (Txt As String, Separators As String, ByVal Position As Long) As String
' Removes every character of a set from a text.
' Txt: the text; every byte counts, Chr$(0) included.
' CharSet: the characters to remove, in any order.
' Returns: Txt without those characters; "" for an empty Txt; Txt unchanged when
'   CharSet is "".
' Example:
'   Debug.Print cFilterChars("(555) 123-4567", "()- ")   ' 5551234567
Declare Function cFilterChars (Txt As String, CharSet As String) As String
' Like cFilterChars, but keeps only the characters that are in CharSet.
Declare Function cFilterNotChars (Txt As String, CharSet As String) As String
' Removes a prefix from the start of a text.
' Txt: the text; every byte counts.
' Prefix: the prefix, compared with exact case.
' Returns: the text after the prefix, "" when Txt equals Prefix; "" for an empty Txt;
'   Txt unchanged when Prefix is "". When Txt does not begin with Prefix the result
'   still has Len(Txt) characters: Txt without its first Len(Prefix) characters,
'   followed by as many Chr$(0).
' Note: the filling with Chr$(0), which is the whole result when Prefix is longer than
'   Txt, is the library's choice for characters that lie past the end of Txt. Test
'   with cStrPrefixed first when the prefix may be missing.
Declare Function cFilterFirstChars (Txt As String, Prefix As String) As String
' Removes the blocks enclosed by a pair of delimiters from a text.
' Blocks do not nest: inside a block every character up to the first closing delimiter
' is removed, opening delimiters included. A closing delimiter outside a block is kept,
' and a block that is not closed runs to the end of Txt.
' Txt: the text; every byte counts.
' Delimiters: the opening delimiter followed by the closing one, such as "()"; with
'   one character, or two equal ones, that character both opens and closes. Further
'   characters are ignored.
' Returns: Txt without the blocks and their delimiters; "" for an empty Txt; Txt
'   unchanged when Delimiters is "".
' Example:
'   Debug.Print cFilterBlocks("a(bc)d(e)f", "()")   ' adf
'   Debug.Print cFilterBlocks("a(b(c)d)e", "()")    ' ad)e
Declare Function cFilterBlocks (Txt As String, Delimiters As String) As String
' Replaces characters of a text in place, each by the character at the same place of a second list.
' Txt is changed in the caller's variable and keeps its length. The pairs apply one
' after the other, each to the result of those before it: FromChars "ab" with ToChars
' "bc" turns both a and b into c, so two characters cannot be swapped in one call.
' Txt: the text to change; every byte counts.
' FromChars: the characters to replace.
' ToChars: their replacements, in the same order; characters beyond the length of the
'   shorter of FromChars and ToChars are ignored.
' Returns: True (-1) when the change ran, even if nothing matched; False (0) when any
'   argument is "", Txt then being left alone.
' Example:
'   s = "Hello World"
'   If cChangeChars(s, " ", "_") Then Debug.Print s   ' Hello_World
Declare Function cChangeChars (Txt As String, FromChars As String, ToChars As String) As Integer
' Replaces characters of a text in place, as cChangeChars does, up to a stop character.
' Txt: the text to change; every byte counts.
' FromChars: the characters to replace.
' ToChars: their replacements, in the same order.
' StopChar: the change stops at the first character of Txt that equals the first
'   character of StopChar; that character and all after it stay as they are.
' Returns: True (-1) when the change ran, even if nothing matched; False (0) when any
'   argument is "", Txt then being left alone.
' Example:
'   s = "a.b.c;a.b"
'   If cChangeCharsUntil(s, ".", "-", ";") Then Debug.Print s   ' a-b-c;a.b
Declare Function cChangeCharsUntil (Txt As String, FromChars As String, ToChars As String, StopChar As String) As Integer
' Tells whether a text contains every character of a set.
' Each character of the set is counted once, so one occurrence in Txt satisfies a
' character listed twice. Txt should hold no Chr$(0): each one counts again the set
' characters already found, which can turn a True into a False.
' Txt: the text searched; every byte counts.
' CharSet: the characters looked for, at most 128.
' Returns: True (-1) when all of them occur in Txt; False (0) when one is missing, when
'   Txt or CharSet is empty, or when CharSet is longer than 128 characters.
' Example:
'   Debug.Print cCheckChars("hello world", "owl")   ' -1
Declare Function cCheckChars (Txt As String, CharSet As String) As Integer
' Removes the character at a position of a text.
' Txt: the text; every byte counts, Chr$(0) included.
' Position: the position of the character, counted from 1.
' Returns: Txt one character shorter; "" for an empty Txt; Txt unchanged when Position
'   is below 1 or past the end.
Declare Function cRemoveOneChar (Txt As String, ByVal Position As Long) As String
' Removes a run of characters from a text.
' Txt: the text; every byte counts, Chr$(0) included.
' Position: the position of the first character removed, counted from 1; 0 counts as 1.
' Count: how many characters to remove.
' Returns: Txt without the run, always Len(Txt) - Count characters long: when the run
'   would pass the end of Txt, the first Len(Txt) - Count characters are kept. "" for an
'   empty Txt or when Count is Len(Txt) or more; Txt unchanged when Position is below 0
'   or past the end, or Count is below 1.
' Example:
'   Debug.Print cRemoveBlockChar("abcdef", 2, 2)   ' adef
'   Debug.Print cRemoveBlockChar("abcdef", 5, 4)   ' ab
Declare Function cRemoveBlockChar (Txt As String, ByVal Position As Long, ByVal Count As Long) As String
' Inserts a string into a text after a given number of characters.
' Txt: the text; every byte counts, Chr$(0) included.
' Position: how many characters of Txt come before the insertion: 0 puts Insert in
'   front, Len(Txt) or more appends it.
' Insert: the string to insert.
' Returns: the longer text; "" for an empty Txt; Txt unchanged when Position is below 0
'   or Insert is "".
' Example:
'   Debug.Print cInsertChars("abc", 1, "XY")   ' aXYbc
Declare Function cInsertChars (Txt As String, ByVal Position As Long, Insert As String) As String
' Fills the placeholder characters of a mask text with data, one character each.
' Txt: the mask text, such as "(###) ###-####"; characters other than the
'   placeholder are copied as they are.
' Mask: the placeholder, its first character; "" means "#".
' Data: the characters that replace the placeholders, in order.
' Returns: a text as long as Txt; placeholders left over when Data runs out become
'   spaces. "" for an empty Txt; Txt unchanged when Data is "".
' Example:
'   Debug.Print cInsertByMask("(###) ###-####", "", "5551234567")   ' (555) 123-4567
Declare Function cInsertByMask (Txt As String, Mask As String, Data As String) As String
' Replaces each "~" of a text by the next block of a "~"-separated list.
' Txt: the text holding "~" placeholders; every byte counts.
' Blocks: the blocks separated by "~", used in order; "a~~c" holds an empty block
'   between a and c.
' Returns: the filled text; placeholders left over when the blocks run out are
'   dropped. "" for an empty Txt; Txt unchanged when Blocks is "".
' Example:
'   Debug.Print cInsertBlocks("Dear ~, your ~ is due", "Ann~bill")   ' Dear Ann, your bill is due
Declare Function cInsertBlocks (Txt As String, Blocks As String) As String
' Replaces each placeholder of a text by the next block of a list, with a chosen placeholder character.
' Txt: the text holding the placeholders; every byte counts.
' Blocks: the blocks, separated by the placeholder character and used in order.
' Separator: the placeholder, which also separates the blocks, its first character; ""
'   means "~".
' Returns: the filled text; placeholders left over when the blocks run out are
'   dropped. "" for an empty Txt; Txt unchanged when Blocks is "".
' Example:
'   Debug.Print cInsertBlocksBy("Dear #, your # is due", "Ann#bill", "#")   ' Dear Ann, your bill is due
Declare Function cInsertBlocksBy (Txt As String, Blocks As String, Separator As String) As String
' Like cInsertBlocks, but an empty Blocks removes every "~" of Txt.
Declare Function cInsertBlocksExt (Txt As String, Blocks As String) As String
' Gives a block of fixed size cut from a text.
' Txt: the text, seen as blocks of Size characters; every byte counts.
' Position: the number of the block, counted from 1.
' Size: the block size, in characters.
' Returns: the block, shorter when it is the last one and Txt ends inside it; "" when
'   Txt is empty, Position or Size is below 1, or the block starts past the end of Txt.
' Example:
'   Debug.Print cGetBlock("abcdefgh", 3, 3)   ' gh
Declare Function cGetBlock (Txt As String, ByVal Position As Long, ByVal Size As Long) As String
' Shuffles the characters of a text at random.
' The generator is seeded with the clock in whole seconds at every call, so calls within
' one second shuffle the same text the same way. Only the first 32,768 positions of a
' longer text take part in the shuffle.
' Txt: the text; it is read up to its first Chr$(0), and the characters after that
'   become Chr$(0) before the shuffle.
' Returns: the shuffled text, as long as Txt; "" for an empty Txt.
' Note: the generator is the library's own copy of the Microsoft C runtime's one, so the
'   same second gives the same shuffle on every platform.
Declare Function cMixChars (Txt As String) As String
' Combines two strings of equal length byte by byte with And.
' Txt1: the first string; every byte counts.
' Txt2: the second string, as long as Txt1.
' Returns: a string of the same length whose characters have the combined codes of
'   those of Txt1 and Txt2 at the same place; "" when either is empty or their
'   lengths differ.
' Example:
'   Debug.Print cStrAND("ab", "__")   ' AB (each code And 95)
Declare Function cStrAND (Txt1 As String, Txt2 As String) As String
' Like cStrAND, combining the codes with Or.
Declare Function cStrOR (Txt1 As String, Txt2 As String) As String
' Like cStrAND, combining the codes with Xor.
Declare Function cStrXOR (Txt1 As String, Txt2 As String) As String
