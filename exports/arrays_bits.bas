' Bit strings: strings used as packed arrays of bits, single bits of Bytes, Integers,
' Longs and Doubles, and texts of binary digits made from bytes or numbers and read back.
' A bit string of L characters holds 8 * L bits numbered from 0: bit n lives in character
' n \ 8 + 1, and inside each character the bits are numbered from the most significant,
' so bit 0 is the &H80 bit of the first character and bit 8 * L - 1 the &H1 bit of the
' last. The functions that change a bit string change the caller's string in place and
' never change its length.

' Makes a new bit string with every bit clear.
' Bits: the number of bits it must hold, from 1.
' Returns: a string of (Bits + 7) \ 8 characters, all Chr$(0); "" when Bits is below 1,
'   or when there is not memory for so many.
' Note: every bit of the new string is clear (0), so a bit string can be used as a set
'   of flags straight away.
' Example:
'   Dim Flags As String
'   Flags = cCreateBits(1000)   ' 125 characters
Declare Function cCreateBits (ByVal Bits As Long) As String
' Tells whether a bit of a bit string is set.
' Bits: the bit string; a null string is an empty one.
' Index: the number of the bit, from 0 to 8 * Len(Bits) - 1.
' Returns: -1 when the bit is set; 0 when it is clear, when Index is outside the
'   string, or for an empty string.
' Example:
'   Debug.Print cGetBit(Chr$(128), 0), cGetBit(Chr$(128), 7)   ' -1  0
Declare Function cGetBit (Bits As String, ByVal Index As Long) As Long
' Sets or clears a bit of a bit string.
' Bits: the bit string, changed in place; its length never changes.
' Index: the number of the bit, from 0 to 8 * Len(Bits) - 1.
' Value: any value other than 0 sets the bit; 0 clears it.
' Returns: -1 when the bit was written; 0, with nothing written, when Index is outside
'   the string or the string is empty.
' Example:
'   Flags = cCreateBits(16)
'   r = cSetBit(Flags, 9, True)   ' Asc(Mid$(Flags, 2, 1)) = 64
Declare Function cSetBit (Bits As String, ByVal Index As Long, ByVal Value As Integer) As Integer
' Sets a bit of a bit string; cSetBit with the value True.
' Bits: the bit string, changed in place; its length never changes.
' Index: the number of the bit, from 0 to 8 * Len(Bits) - 1.
' Returns: -1 when the bit was written; 0, with nothing written, when Index is outside
'   the string or the string is empty.
Declare Function cSetBitToTrue (Bits As String, ByVal Index As Long) As Integer
' Clears a bit of a bit string; cSetBit with the value False.
' Bits: the bit string, changed in place; its length never changes.
' Index: the number of the bit, from 0 to 8 * Len(Bits) - 1.
' Returns: -1 when the bit was written; 0, with nothing written, when Index is outside
'   the string or the string is empty.
Declare Function cSetBitToFalse (Bits As String, ByVal Index As Long) As Integer
' Inverts a bit of a bit string and tells what it was.
' Bits: the bit string, changed in place; its length never changes.
' Index: the number of the bit, from 0 to 8 * Len(Bits) - 1.
' Returns: 1 when the bit was set (it is now clear), 0 when it was clear (it is now set);
'   also 0, with nothing changed, when Index is outside the string or the string is
'   empty.
Declare Function cToggleBit (Bits As String, ByVal Index As Long) As Long
' Sets or clears every bit of a bit string.
' Bits: the bit string, changed in place: every character becomes Chr$(255) or Chr$(0).
' Value: any value other than 0 sets the bits; 0 clears them.
' Returns: -1; 0 for an empty string.
Declare Function cSetAllBits (Bits As String, ByVal Value As Integer) As Integer
' Inverts every bit of a bit string.
' Bits: the bit string, changed in place: every character becomes its complement
'   (255 minus its code).
' Returns: -1; 0 for an empty string.
Declare Function cToggleAllBits (Bits As String) As Integer
' Reverses the order of all the bits of a bit string.
' Bit i and bit 8 * Len(Bits) - 1 - i change places, so the last bit becomes the first:
' the characters come in the opposite order and each is mirrored.
' Bits: the bit string, changed in place.
' Returns: -1; 0 for an empty string.
' Example:
'   Bits = Chr$(128)
'   r = cReverseAllBits(Bits)   ' Bits = Chr$(1)
Declare Function cReverseAllBits (Bits As String) As Integer
' Reverses the order of the bits inside every character of a bit string.
' The characters stay where they are; inside each, the &H80 bit changes places with the
' &H1 bit, &H40 with &H2, and so on.
' Bits: the bit string, changed in place.
' Returns: -1; 0 for an empty string.
Declare Function cReverseAllBitsByChar (Bits As String) As Integer
' Finds the first set bit of a bit string from a given bit on.
' Bits: the bit string.
' Start: the number of the bit where the search starts, from 0; that bit counts.
' Returns: the number of the first set bit at or after Start; -1 when there is none,
'   when Start is outside the string, or for an empty string.
' Note: in a string longer than 268,435,456 characters, a bit whose number would not
'   fit in a Long is not found (-1).
Declare Function cFindBitSet (Bits As String, ByVal Start As Long) As Long
' Finds the first clear bit of a bit string from a given bit on.
' Bits: the bit string.
' Start: the number of the bit where the search starts, from 0; that bit counts.
' Returns: the number of the first clear bit at or after Start; -1 when there is none,
'   when Start is outside the string, or for an empty string.
' Note: in a string longer than 268,435,456 characters, a bit whose number would not
'   fit in a Long is not found (-1).
Declare Function cFindBitReset (Bits As String, ByVal Start As Long) As Long
' Tells whether a bit string reads the same in both bit orders.
' Bit i must equal bit 8 * Len(Bits) - 1 - i for every i.
' Bits: the bit string.
' Returns: -1 when it does; 0 when it does not, or for an empty string.
' Example:
'   Debug.Print cIsBitPalindrome(Chr$(128) & Chr$(1))   ' -1
Declare Function cIsBitPalindrome (Bits As String) As Integer
' Gives the 16 characters whose 8 bits read the same both ways.
' They are the codes 0, 24, 36, 60, 66, 90, 102, 126, 129, 153, 165, 189, 195, 219, 231
' and 255, one character each, in that order.
' Returns: a string of those 16 characters.
Declare Function cGiveBitPalindrome () As String
' Writes every bit of a string as a binary digit.
' Each character gives 8 digits, its most significant bit first.
' Txt: the string; every character counts, Chr$(0) included.
' Returns: a text of 8 * Len(Txt) characters "1" and "0"; "" for "".
' Example:
'   Debug.Print cToBinary("A")   ' 01000001
Declare Function cToBinary (Txt As String) As String
' Writes every bit of a string with two characters of the caller's choice.
' Each character gives 8 characters, its most significant bit first.
' Txt: the string; every character counts, Chr$(0) included.
' Pair: the character for a 1-bit, then the one for a 0-bit.
' Returns: a text of 8 * Len(Txt) characters; "" for "".
' Note: when Pair has fewer than two characters, "1" stands in for the missing first and
'   "0" for the missing second.
' Example:
'   Debug.Print cToBinary2("A", "#.")   ' .#.....#
Declare Function cToBinary2 (Txt As String, Pair As String) As String
' Turns a text of binary digits back into the characters it describes.
' Each group of 8 characters, the first the most significant, makes one character: "1"
' gives a 1-bit and any other character a 0-bit.
' Txt: the text of digits; characters after the last whole group of 8 are ignored.
' Returns: a string of Len(Txt) \ 8 characters; "" for a text shorter than 8.
' Example:
'   Debug.Print cFromBinary("01000001")   ' A
Declare Function cFromBinary (Txt As String) As String
' Turns a text of two characters of the caller's choice back into characters.
' As cFromBinary, with the first character of Pair meaning a 1-bit and any other
' character a 0-bit.
' Txt: the text; characters after the last whole group of 8 are ignored.
' Pair: its first character stands for a 1-bit; the rest is ignored.
' Returns: a string of Len(Txt) \ 8 characters; "" for a text shorter than 8.
' Note: an empty Pair means "1".
Declare Function cFromBinary2 (Txt As String, Pair As String) As String
' Reads a text of binary digits as an Integer.
' The digits "0" and "1" are read from the start up to the first other character, which
' ends the number: "101x11" reads as 5.
' Txt: the text, at most 16 characters.
' Returns: the number in 16 bits, so 16 digits starting with "1" give a negative number
'   ("1111111111111111" is -1); 0 for an empty text or one longer than 16 characters.
Declare Function cB2I (Txt As String) As Integer
' Reads a text of binary digits as a Long.
' The digits "0" and "1" are read from the start up to the first other character, which
' ends the number: "101x11" reads as 5.
' Txt: the text, at most 32 characters.
' Returns: the number in 32 bits, so 32 digits starting with "1" give a negative number;
'   0 for an empty text or one longer than 32 characters.
Declare Function cB2L (Txt As String) As Long
' Tells whether a bit of a Byte is set, numbering the bits from the most significant.
' The bits of a number are numbered as those of a bit string made of its bytes in memory
' order, the least significant byte first, each byte from its most significant bit. For a
' Byte, bit 0 is &H80 and bit 7 is &H1; for an Integer, bit 0 is &H80, bit 7 &H1, bit 8
' &H8000 and bit 15 &H100. This mixed order is the one these functions have always used;
' the functions ending in 2 number the bits the ordinary way.
' Number: the value.
' Index: the number of the bit; a negative Index counts as its absolute value, and the
'   result is taken modulo the width (8 for a Byte, 16, 32 or 64).
' Returns: -1 when the bit is set, else 0.
' Example:
'   Debug.Print cGetBitI(128, 0), cGetBitI(1, 7)   ' -1  -1
Declare Function cGetBitB (ByVal Number As Byte, ByVal Index As Integer) As Long
' Like cGetBitB, for an Integer (16 bits).
Declare Function cGetBitI (ByVal Number As Integer, ByVal Index As Integer) As Long
' Like cGetBitB, for a Long (32 bits: bit 0 is &H80, bit 31 is &H1000000).
Declare Function cGetBitL (ByVal Number As Long, ByVal Index As Integer) As Long
' Like cGetBitB, for the 8 bytes of a Double (64 bits).
Declare Function cGetBitD (ByVal Number As Double, ByVal Index As Integer) As Long
' Sets or clears a bit of a Byte, numbering the bits from the most significant.
' Bit 0 is &H80 and bit 7 is &H1, as for cGetBitB.
' Number: the Byte, changed in place.
' Index: the number of the bit; a negative Index counts as its absolute value, and the
'   result is taken modulo 32, as if the Byte were four bytes wide.
' Value: any value other than 0 sets the bit; 0 clears it.
' Returns: -1.
' Note: an Index whose remainder (its absolute value modulo 32) is 8 or more changes
'   nothing: such a bit would lie in the three bytes after the Byte, which are not the
'   caller's, and nothing is written there. So 8 to 31 and 40 to 63 change nothing,
'   while 32 to 39 are bits 0 to 7 again.
Declare Function cSetBitB (Number As Byte, ByVal Index As Integer, ByVal Value As Integer) As Integer
' Tells whether a bit of a Byte is set, numbering the bits the ordinary way.
' Bit 0 is the least significant (&H1) and bit 7 the most significant (&H80).
' Number: the value.
' Index: the number of the bit, taken modulo the width (8 for a Byte, 16 for an Integer,
'   32 for a Long).
' Returns: -1 when the bit is set, else 0; 0 for a negative Index.
' Note: a negative Index names no bit (VB's -1 Mod 8 is -1), so the answer is 0.
' Example:
'   Debug.Print cGetBitI2(128, 7)   ' -1
Declare Function cGetBitB2 (ByVal Number As Byte, ByVal Index As Long) As Long
' Like cGetBitB2, for an Integer (bits 0 to 15, Index modulo 16).
Declare Function cGetBitI2 (ByVal Number As Integer, ByVal Index As Long) As Long
' Like cGetBitB2, for a Long (bits 0 to 31, Index modulo 32).
Declare Function cGetBitL2 (ByVal Number As Long, ByVal Index As Long) As Long
' Sets or clears a bit of a Byte, numbering the bits the ordinary way.
' Bit 0 is the least significant (&H1).
' Number: the Byte, changed in place.
' Index: the number of the bit, taken modulo 32 for every type, so for a Byte an Index
'   of 8 to 31 (16 to 31 for an Integer) changes nothing.
' Value: exactly True (-1) sets the bit; any other value, 1 included, clears it.
' Returns: -1.
' Note: a negative Index names no bit (VB's -1 Mod 32 is -1) and changes nothing.
' Example:
'   Dim B As Byte
'   r = cSetBitB2(B, 7, True)   ' B = 128
'   r = cSetBitB2(B, 7, 1)      ' B = 0: only True sets
Declare Function cSetBitB2 (Number As Byte, ByVal Index As Long, ByVal Value As Integer) As Integer
' Like cSetBitB2, for an Integer (bits 0 to 15).
Declare Function cSetBitI2 (Number As Integer, ByVal Index As Long, ByVal Value As Integer) As Integer
' Like cSetBitB2, for a Long (bits 0 to 31).
Declare Function cSetBitL2 (Number As Long, ByVal Index As Long, ByVal Value As Integer) As Integer
' Writes an Integer in binary digits without leading zeros.
' Number: the value; a negative one is written as its 16 bits.
' Returns: "1" and "0" characters, the most significant first; "0" for 0; 16 characters
'   for a negative number.
' Example:
'   Debug.Print cI2B(5), cI2B(-1)   ' 101  1111111111111111
Declare Function cI2B (ByVal Number As Integer) As String
' Writes a Long in binary digits without leading zeros.
' Number: the value; a negative one is written as its 32 bits.
' Returns: "1" and "0" characters, the most significant first; "0" for 0; 32 characters
'   for a negative number.
Declare Function cL2B (ByVal Number As Long) As String
' Writes the 16 bits of an Integer with two characters of the caller's choice.
' Number: the value; a negative one is written as its 16 bits.
' Pair: the character for a 1-bit, then the one for a 0-bit.
' Returns: exactly 16 characters, the most significant bit first.
' Note: when Pair has fewer than two characters, "1" stands in for the missing first and
'   "0" for the missing second.
' Example:
'   Debug.Print cI2Bext(5, "#.")   ' .............#.#
Declare Function cI2Bext (ByVal Number As Integer, Pair As String) As String
' Like cI2Bext, for the 32 bits of a Long (exactly 32 characters).
Declare Function cL2Bext (ByVal Number As Long, Pair As String) As String
' Like cI2Bext, with the characters in the opposite order: bit 0 first.
Declare Function cI2BextRvs (ByVal Number As Integer, Pair As String) As String
' Like cL2Bext, with the characters in the opposite order: bit 0 first (32 characters).
Declare Function cL2BextRvs (ByVal Number As Long, Pair As String) As String
