' Own ciphers: the library's layered cipher and autokey stream cipher, for strings and
' files.
'
' Both keep the length of the data (no header, no padding) and are meant to keep casual
' eyes off data, not to protect secrets: they are not cryptographically strong, and a
' piece of known text gives the key away. Use the block ciphers (cAES2RNDencryptCBC)
' where the content matters.

' Enciphers a string with the layered cipher.
' Every byte is XORed with the key, repeated as often as needed; then, by Level, more
' layers follow, each level including the ones below it:
'   - below 0: only the XOR.
'   - 0: every byte complemented.
'   - 1: also, in every byte, bit 7 exchanged with bit 0 and bit 4 with bit 3 (bit 0 is
'     the lowest).
'   - 2: also every byte complemented again (levels 0 and 2 cancel out).
'   - 3: also the whole string reversed as a string of bits.
'   - 4 and above: also every byte translated from ASCII to EBCDIC (cCnvASCIItoEBCDIC).
' The result has the length of Txt; cDecrypt with the same Key and Level restores it.
' Txt: the string to encipher; every byte value is allowed.
' Key: the key; all its bytes count, zero bytes included.
' Level: the layers, as above.
' Returns: the enciphered string; "" when Txt or Key is "".
' Note: the library refuses an empty Key with "", as the file forms refuse it with -1.
' Example:
'   Debug.Print cDecrypt(cEncrypt("Minutes", "k3y", 4), "k3y", 4)   ' Minutes
Declare Function cEncrypt (Txt As String, Key As String, ByVal Level As Integer) As String
' Deciphers a string made by cEncrypt: the layers undone in reverse order, then the XOR.
' Txt: the enciphered string.
' Key: the key it was enciphered with.
' Level: the level it was enciphered with.
' Returns: the original string; "" when Txt or Key is "".
Declare Function cDecrypt (Txt As String, Key As String, ByVal Level As Integer) As String
' Enciphers a file with the layered cipher, block by block.
' The file is read in blocks of 32,768 bytes (the last shorter) and each block is
' enciphered as cEncrypt enciphers a string, by itself: the bit reversal of level 3
' reverses each block, not the file. The key position carries over from block to block
' while the count that brings it back to the key's first byte starts again in each
' block, so from the second block on the key runs on past its end for up to (32,768 mod
' the key's length) bytes, which XOR with zero bytes. A key whose length divides 32,768
' (1, 2, 4, 8, ...) never shows this. The target has the length of the source.
' SourceFile: the file to encipher.
' TargetFile: the enciphered file to write; an existing one is replaced.
' Key: the key; all its bytes count.
' Level: the layers, as for cEncrypt.
' Returns: the bytes written (a target of 2 GB or more reports 2147483647), or a code:
'   - -1: Key is "" (nothing is created).
'   - -32750: the source cannot be opened.
'   - -32751: the target cannot be created, or it is the source itself.
'   - -32730: the source cannot be read.
'   - -32740, -32720: writing failed.
'   - -32760: no memory for the 32,768-byte buffer.
' After any code the target does not exist: a partly written one is deleted.
' Note: the bytes past the key's end are taken as zero bytes. This library reports every
'   failed write as -32740. A source and target that lead to the same file are refused
'   with -32751, so the source is never lost.
Declare Function cFileEncrypt (ByVal SourceFile As String, ByVal TargetFile As String, Key As String, ByVal Level As Integer) As Long
' Deciphers a file made by cFileEncrypt, block by block with the same key rule.
' SourceFile: the enciphered file.
' TargetFile: the file to write; an existing one is replaced.
' Key: the key it was enciphered with.
' Level: the level it was enciphered with.
' Returns: the bytes written, or a code as for cFileEncrypt.
Declare Function cFileDecrypt (ByVal SourceFile As String, ByVal TargetFile As String, Key As String, ByVal Level As Integer) As Long
' Enciphers or deciphers a string with the autokey stream cipher.
' Each byte is XORed with the key byte at the current position and with the position
' times the first key byte; that key byte then adds the next one (the first after the
' last) to itself, becoming 1 where the sum is 0 modulo 256. The same call with the
' original key turns the result back.
' Txt: the string; every byte value is allowed.
' Key: the key, up to its first zero byte. Its bytes are changed in place: after the
'   call Key holds the key as the stream left it, so keep a copy of the original to
'   decipher.
' Returns: the enciphered (or deciphered) string, as long as Txt; "" when Txt is ""; Txt
'   itself when Key is "".
' Example:
'   Dim K As String, C As String
'   K = "secret": C = cCrypt("Minutes", K)
'   K = "secret": Debug.Print cCrypt(C, K)   ' Minutes
Declare Function cCrypt (Txt As String, ByVal Key As String) As String
' Enciphers or deciphers a file with the autokey stream cipher, block by block.
' The file is read in blocks of 32,768 bytes; the stream's position goes back to the
' first key byte at the start of every block while the changed key bytes run on. So a
' file longer than 32,768 bytes does not give what cCrypt gives for the same bytes;
' cFileCrypt with the original key turns the file back.
' SourceFile: the file to encipher or decipher.
' TargetFile: the file to write; an existing one is replaced.
' Key: the key, up to its first zero byte; its bytes are changed in place, as for
'   cCrypt.
' Returns: the bytes written, or a code as for cFileEncrypt (-1 when Key is "").
Declare Function cFileCrypt (ByVal SourceFile As String, ByVal TargetFile As String, ByVal Key As String) As Long
