' Keyed ciphers that take the whole key string: DIAMOND and DIAMOND2 (Michael Paul
' Johnson's Diamond and Diamond2 block ciphers, with their 8-byte "Lite" variants) and RUBY
' (an 8-byte block cipher in 64-bit cipher feedback).
'
' These ciphers are old and kept so that data enciphered with them stays readable; do not
' use them for new secrets. DIAMOND and DIAMOND2 look up key-dependent tables with the
' data bytes, so they are not constant-time, and like every ECB form here they show equal
' blocks as equal ciphertext. Nothing here authenticates the data.
'
' Interoperability: DIAMOND2 is Johnson's published Diamond2 / Diamond2 Lite and agrees with
' the published test vectors. DIAMOND follows Johnson's published Diamond (1994); no test
' vectors were ever published for it, so agreement with other programs is not checked, and
' its 8-byte form is built like Diamond2 Lite. RUBY is not Johnson's Ruby (whose description
' could not be found): it is RC5-32 with 20 rounds (Rivest's published RC5 with a 64-bit
' block and the whole key string as its key) in cipher feedback, so only this library reads
' what it writes.
'
' The key tables of the DIAMOND ciphers (61,440 bytes per direction with the 16-byte block
' at 15 rounds) are built in each call and wiped at its end; they are never shared, so the
' calls may run on several threads at once.

' Enciphers a string with Johnson's Diamond cipher.
' The mode chooses the block and the rounds. An odd Mode gives the 16-byte block, an even
' Mode the 8-byte block (Diamond Lite). With m = Mode - 1 (Mode itself when below 1), the
' cipher runs 15 rounds when m is below 2, else 30. Diamond accepts 5 to 15 rounds with the
' 16-byte block and 4 to 30 with the 8-byte block, so the odd modes from 3 up fail.
' The text is padded with zero bytes to whole blocks and enciphered block by block (ECB);
' one plain byte follows that holds the number of padding bytes.
' Txt: the string to encipher.
' Key: the key; at least 5 bytes, all of them used (with its length) by the key setup.
' Mode: 1 (16-byte block, 15 rounds), 2 (8-byte, 15 rounds), 4 and other even modes from 4
'   (8-byte, 30 rounds); odd modes from 3 fail.
' Returns: the enciphered string; "" when Txt is "", Key is shorter than 5 bytes, or the
'   mode gives rounds the cipher refuses.
' Example:
'   Dim C As String
'   C = cDIAMONDencrypt("attack at dawn", "secret key", 1)   ' 17 bytes
'   Debug.Print cDIAMONDdecrypt(C, "secret key", 1)          ' attack at dawn
Declare Function cDIAMONDencrypt (Txt As String, Key As String, ByVal Mode As Integer) As String
' Deciphers a string made by cDIAMONDencrypt.
' Txt: the enciphered string: whole blocks of the mode's size and the count byte.
' Key: the key it was enciphered with.
' Mode: the mode it was enciphered with.
' Returns: the original string; "" when Txt is "", Key is shorter than 5 bytes, the mode
'   gives rounds the cipher refuses, or Txt cannot be an enciphered string (its length is
'   not whole blocks plus one, or the count byte is a block or more).
Declare Function cDIAMONDdecrypt (Txt As String, Key As String, ByVal Mode As Integer) As String
' Enciphers a file with Johnson's Diamond cipher.
' The block and rounds come from Mode as for cDIAMONDencrypt. The source is read in chunks
' of 32,768 bytes, each padded with zero bytes to whole blocks and enciphered; after the
' short last chunk one byte holds the number of padding bytes, and when no chunk was short
' a single zero byte ends the file.
' SourceFile: the file to encipher.
' TargetFile: the enciphered file to write; an existing one is replaced.
' Key: the key; at least 5 bytes.
' Mode: the mode, as for cDIAMONDencrypt.
' Returns: the bytes written, count byte included (2147483647 at most), or a code:
'   - -1: Key is shorter than 5 bytes.
'   - -2: the key setup refused the mode's rounds.
'   - -11: no memory for the buffer.
'   - -21: the source cannot be opened.
'   - -22: the target cannot be created, or it is the source itself.
'   - -31: the source cannot be read.
'   - -41: writing the data failed.
'   - -51: writing the count byte failed.
' After any code the target does not exist.
Declare Function cDIAMONDencryptFile (ByVal SourceFile As String, ByVal TargetFile As String, Key As String, ByVal Mode As Integer) As Long
' Deciphers a file made by cDIAMONDencryptFile.
' SourceFile: the enciphered file.
' TargetFile: the file to write; an existing one is replaced.
' Key: the key it was enciphered with.
' Mode: the mode it was enciphered with.
' Returns: the bytes written (the original size), or a code as for cDIAMONDencryptFile;
'   -31 also when the source cannot be an enciphered file (its size is not whole blocks plus
'   one, or its count byte is a block or more).
Declare Function cDIAMONDdecryptFile (ByVal SourceFile As String, ByVal TargetFile As String, Key As String, ByVal Mode As Integer) As Long
' Enciphers a string with Johnson's Diamond2 cipher.
' An odd Mode gives the 16-byte block (Diamond2), an even Mode the 8-byte block (Diamond2
' Lite). With m = Mode - 1 (Mode itself when below 1), the cipher runs 8 rounds when m is
' above 1, else 15; both are within its limits (5 to 15 rounds with the 16-byte block, 4 to
' 30 with the 8-byte block), so every mode works. The layout is that of cDIAMONDencrypt.
' Txt: the string to encipher.
' Key: the key; at least 5 bytes, all of them used (with its length) by the key setup.
' Mode: 1 (16-byte block, 15 rounds), 2 (8-byte, 15 rounds), 3 and other odd modes from 3
'   (16-byte, 8 rounds), 4 and other even modes from 4 (8-byte, 8 rounds).
' Returns: the enciphered string; "" when Txt is "" or Key is shorter than 5 bytes.
Declare Function cDIAMOND2encrypt (Txt As String, Key As String, ByVal Mode As Integer) As String
' Deciphers a string made by cDIAMOND2encrypt.
' Txt: the enciphered string: whole blocks of the mode's size and the count byte.
' Key: the key it was enciphered with.
' Mode: the mode it was enciphered with.
' Returns: the original string; "" when Txt is "", Key is shorter than 5 bytes, or Txt
'   cannot be an enciphered string (as for cDIAMONDdecrypt).
Declare Function cDIAMOND2decrypt (Txt As String, Key As String, ByVal Mode As Integer) As String
' Enciphers a file with Johnson's Diamond2 cipher.
' The block and rounds come from Mode as for cDIAMOND2encrypt; the layout is that of
' cDIAMONDencryptFile.
' SourceFile: the file to encipher.
' TargetFile: the enciphered file to write; an existing one is replaced.
' Key: the key; at least 5 bytes.
' Mode: the mode, as for cDIAMOND2encrypt.
' Returns: the bytes written, count byte included, or a code as for cDIAMONDencryptFile
'   (-2 cannot occur with the rounds the modes give).
Declare Function cDIAMOND2encryptFile (ByVal SourceFile As String, ByVal TargetFile As String, Key As String, ByVal Mode As Integer) As Long
' Deciphers a file made by cDIAMOND2encryptFile.
' SourceFile: the enciphered file.
' TargetFile: the file to write; an existing one is replaced.
' Key: the key it was enciphered with.
' Mode: the mode it was enciphered with.
' Returns: the bytes written (the original size), or a code as for cDIAMONDdecryptFile.
Declare Function cDIAMOND2decryptFile (ByVal SourceFile As String, ByVal TargetFile As String, Key As String, ByVal Mode As Integer) As Long
' Enciphers a string with RUBY in 64-bit cipher feedback.
' The register starts as 8 zero bytes. It is enciphered and the next 8 bytes of Txt are
' XORed with the result; those 8 enciphered bytes become the register. There is no padding
' and no count byte: the result is exactly as long as Txt. The block cipher is RC5-32 with
' 20 rounds keyed with the whole key string (see the family's note); it is not the Ruby
' cipher Johnson published, whose description could not be found, so other programs
' cannot read the result.
' Txt: the string to encipher.
' Key: the key; at least 5 bytes, all of them used.
' Returns: the enciphered string; "" when Txt is "" or Key is shorter than 5 bytes.
' Note: equal texts under one key give equal results (the register always starts at zero),
'   and a change of the enciphered bytes changes the deciphered text without any sign.
Declare Function cRUBYencrypt (Txt As String, Key As String) As String
' Deciphers a string made by cRUBYencrypt.
' Txt: the enciphered string; any length.
' Key: the key it was enciphered with.
' Returns: the original string, as long as Txt; "" when Txt is "" or Key is shorter than 5
'   bytes. A wrong key gives other bytes of the same length, not "".
Declare Function cRUBYdecrypt (Txt As String, Key As String) As String
' Enciphers a file with RUBY in 64-bit cipher feedback.
' The file is one continuous stream (read in chunks of 32,768 bytes), enciphered as
' cRUBYencrypt does a string; the target is exactly as long as the source, with no count
' byte.
' SourceFile: the file to encipher.
' TargetFile: the enciphered file to write; an existing one is replaced.
' Key: the key; at least 5 bytes.
' Returns: the bytes written, or a code:
'   - -1: Key is shorter than 5 bytes.
'   - -11: no memory for the buffer.
'   - -21: the source cannot be opened.
'   - -22: the target cannot be created, or it is the source itself.
'   - -31: the source cannot be read.
'   - -41: writing failed.
' After any code the target does not exist.
Declare Function cRUBYencryptFile (ByVal SourceFile As String, ByVal TargetFile As String, Key As String) As Long
' Deciphers a file made by cRUBYencryptFile.
' SourceFile: the enciphered file; any size.
' TargetFile: the file to write; an existing one is replaced.
' Key: the key it was enciphered with.
' Returns: the bytes written (the size of the source), or a code as for cRUBYencryptFile.
Declare Function cRUBYdecryptFile (ByVal SourceFile As String, ByVal TargetFile As String, Key As String) As Long
