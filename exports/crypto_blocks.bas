' Block ciphers: Rijndael, MARS, RC6, CAST-256, DES and IDEA for strings and files,
' and the AES candidates by a numeric code in ECB and in a 15-byte CBC.
'
' Every form pads the data with zero bytes to whole cipher blocks and adds one plain
' byte that counts the padding; the key string is used as raw bytes (no hashing).
' ECB, and the 15-byte CBC without any authentication, are kept exactly as they are so
' that strings and files enciphered earlier stay readable: they hide the content but do
' not show whether it was changed, and equal blocks of ECB data give equal ciphertext.
' For new data that must stay secret, encipher in CBC and keep a checksum of the
' original, or use an authenticated scheme of your own outside this library.

' Enciphers a string with Rijndael (128-bit block, 256-bit key) in ECB mode.
' The text is padded with zero bytes to a multiple of 16 and enciphered block by block;
' one plain byte follows that holds the number of padding bytes (0 to 15). The result is
' therefore 1 to 16 bytes longer than Txt. Every byte counts, zero bytes included.
' Txt: the string to encipher.
' Key: the key; at least 32 bytes, of which the first 32 are the 256-bit key.
' Returns: the enciphered string; "" when Txt is "" or Key is shorter than 32 bytes.
' Example:
'   Dim K As String, C As String
'   K = "0123456789abcdef0123456789abcdef"
'   C = cRIJNDAELencrypt("attack at dawn", K)   ' 17 bytes
'   Debug.Print cRIJNDAELdecrypt(C, K)          ' attack at dawn
Declare Function cRIJNDAELencrypt (Txt As String, Key As String) As String
' Deciphers a string made by cRIJNDAELencrypt.
' Txt: the enciphered string: whole 16-byte blocks and the count byte.
' Key: the key it was enciphered with (the first 32 bytes count).
' Returns: the original string; "" when Txt is "", Key is shorter than 32 bytes, or
'   Txt cannot be an enciphered string (its length is not whole blocks plus one, or the
'   count byte is 16 or more).
' Note: a Txt of whole blocks without the count byte is deciphered whole (the zero that
'   ends every string stands for the missing count), as the library always did.
Declare Function cRIJNDAELdecrypt (Txt As String, Key As String) As String
' Enciphers a file with Rijndael (128-bit block, 256-bit key) in ECB mode.
' The source is read in chunks of 32,768 bytes; each is padded with zero bytes to a
' multiple of 16 and enciphered. After the short last chunk one byte holds the number of
' padding bytes; when no chunk was short a single zero byte ends the file. The target
' is therefore (source size rounded up to 16) + 1 bytes, the same bytes that
' cRIJNDAELencrypt gives for the same data up to 32,768 bytes.
' SourceFile: the file to encipher.
' TargetFile: the enciphered file to write; an existing one is replaced.
' Key: the key; at least 32 bytes, of which the first 32 are the 256-bit key.
' Returns: the bytes written, count byte included (a target of 2 GB or more reports
'   2147483647), or a code:
'   - -1: Key is shorter than 32 bytes.
'   - -11: no memory for the 32,768-byte buffer.
'   - -21: the source cannot be opened.
'   - -22: the target cannot be created, or it is the source itself.
'   - -31: the source cannot be read.
'   - -41, -42: writing the data failed.
'   - -51, -52: writing the count byte failed.
' After any code the target does not exist: a partly written one is deleted.
' Note: this library reports every failed write as -41 or -51 (the system does not tell a
'   short write from a failed one). A source and target that lead to the same file are
'   refused with -22, so the source is never lost.
Declare Function cRIJNDAELencryptFile (ByVal SourceFile As String, ByVal TargetFile As String, Key As String) As Long
' Deciphers a file made by cRIJNDAELencryptFile.
' SourceFile: the enciphered file.
' TargetFile: the file to write; an existing one is replaced.
' Key: the key it was enciphered with (the first 32 bytes count).
' Returns: the bytes written (the original size), or a code as for cRIJNDAELencryptFile;
'   -31 also when the source cannot be an enciphered file (its size is not whole blocks
'   plus one, or its count byte is 16 or more), for example when it was cut short.
Declare Function cRIJNDAELdecryptFile (ByVal SourceFile As String, ByVal TargetFile As String, Key As String) As Long
' Enciphers a string in ECB mode with the AES candidate a code names.
' The codes are taken modulo 20, so the CBC codes 21 to 25 name the same ciphers: 1
' MARS, 2 RC6, 3 Rijndael, 4 Serpent, 5 Twofish. The layout is that of
' cRIJNDAELencrypt; codes 1 to 5 give exactly the results of cMARSencrypt, cRC6encrypt,
' cRIJNDAELencrypt, cSERPENTencrypt and cTWOFISHencrypt.
' Code: the cipher (1 to 5, or 21 to 25; any other code names no cipher).
' Txt: the string to encipher.
' Key: the key; at least 32 bytes, of which the first 32 are the 256-bit key.
' Returns: the enciphered string; "" when Code names no cipher, Txt is "" or Key is
'   shorter than 32 bytes.
Declare Function cAES2RNDencrypt (ByVal Code As Integer, Txt As String, Key As String) As String
' Deciphers a string made by cAES2RNDencrypt with the same code.
' Code: the cipher, as for cAES2RNDencrypt.
' Txt: the enciphered string.
' Key: the key it was enciphered with.
' Returns: the original string; "" when Code names no cipher, and in the
'   cases of cRIJNDAELdecrypt.
Declare Function cAES2RNDdecrypt (ByVal Code As Integer, Txt As String, Key As String) As String
' Enciphers a file in ECB mode with the AES candidate a code names.
' The layout is that of cRIJNDAELencryptFile.
' Code: the cipher, as for cAES2RNDencrypt.
' SourceFile: the file to encipher.
' TargetFile: the enciphered file to write; an existing one is replaced.
' Key: the key; at least 32 bytes.
' Returns: the bytes written, or a code as for cRIJNDAELencryptFile; 0, with no file
'   touched, when Code names no cipher.
Declare Function cAES2RNDencryptFile (ByVal Code As Integer, ByVal SourceFile As String, ByVal TargetFile As String, Key As String) As Long
' Deciphers a file made by cAES2RNDencryptFile with the same code.
' Code: the cipher, as for cAES2RNDencrypt.
' SourceFile: the enciphered file.
' TargetFile: the file to write; an existing one is replaced.
' Key: the key it was enciphered with.
' Returns: the bytes written, or a code as for cRIJNDAELdecryptFile; 0, with no file
'   touched, when Code names no cipher.
Declare Function cAES2RNDdecryptFile (ByVal Code As Integer, ByVal SourceFile As String, ByVal TargetFile As String, Key As String) As Long
' Enciphers a string in CBC mode, chained over 15 bytes, with the AES candidate a code
' names.
' Before a block is enciphered, its bytes 1 to 15 are XORed with the first 15 bytes of IV
' (first block) or of the ciphertext block before it; byte 16 of every block is never
' chained. This is not the standard 16-byte CBC, and the two do not read each other's
' data. Padding and count byte as for cRIJNDAELencrypt.
' Code: the cipher, modulo 20 (21 to 25 as 1 to 5).
' Txt: the string to encipher.
' Key: the key; at least 32 bytes.
' IV: the initialisation vector: at least 16 bytes, of which the first 15 are used; ""
'   stands for 15 zero bytes.
' Returns: the enciphered string; "" when Code names no cipher, Txt is "",
'   Key is shorter than 32 bytes or IV has 1 to 15 bytes.
Declare Function cAES2RNDencryptCBC (ByVal Code As Integer, Txt As String, Key As String, IV As String) As String
' Deciphers a string made by cAES2RNDencryptCBC.
' Code: the cipher, as for cAES2RNDencryptCBC.
' Txt: the enciphered string.
' Key: the key it was enciphered with.
' IV: the initialisation vector it was enciphered with.
' Returns: the original string; "" in the cases of cAES2RNDencryptCBC and when Txt cannot
'   be an enciphered string (as for cRIJNDAELdecrypt).
Declare Function cAES2RNDdecryptCBC (ByVal Code As Integer, Txt As String, Key As String, IV As String) As String
' Enciphers a file in the 15-byte CBC mode with the AES candidate a code names.
' The layout is that of cRIJNDAELencryptFile; the chaining is that of cAES2RNDencryptCBC
' and starts again from IV at every chunk of 32,768 bytes, so the file is a row of
' chains of 2,048 blocks each.
' Code: the cipher, as for cAES2RNDencryptCBC.
' SourceFile: the file to encipher.
' TargetFile: the enciphered file to write; an existing one is replaced.
' Key: the key; at least 32 bytes.
' IV: the initialisation vector, as for cAES2RNDencryptCBC.
' Returns: the bytes written, or a code as for cRIJNDAELencryptFile; -3 when IV has 1 to
'   15 bytes; 0, with no file touched, when Code names no cipher.
Declare Function cAES2RNDencryptFileCBC (ByVal Code As Integer, ByVal SourceFile As String, ByVal TargetFile As String, Key As String, IV As String) As Long
' Deciphers a file made by cAES2RNDencryptFileCBC.
' Code: the cipher, as for cAES2RNDencryptCBC.
' SourceFile: the enciphered file.
' TargetFile: the file to write; an existing one is replaced.
' Key: the key it was enciphered with.
' IV: the initialisation vector it was enciphered with.
' Returns: the bytes written, or a code as for cRIJNDAELdecryptFile; -3 when IV has 1 to
'   15 bytes; 0, with no file touched, when Code names no cipher.
Declare Function cAES2RNDdecryptFileCBC (ByVal Code As Integer, ByVal SourceFile As String, ByVal TargetFile As String, Key As String, IV As String) As Long
' Enciphers a string with single DES in ECB mode.
' The text is padded with zero bytes to a multiple of 8 and enciphered block by block;
' one plain byte follows that holds the number of padding bytes (0 to 7). DES has a
' 56-bit key, which can be found by trying them all: keep it for reading old data.
' Txt: the string to encipher.
' Key: the key; at least 8 bytes, of which the first 8 are the DES key (the lowest bit
'   of each byte is parity and is ignored).
' Returns: the enciphered string; "" when Txt is "" or Key is shorter than 8 bytes.
Declare Function cDESencrypt (Txt As String, Key As String) As String
' Deciphers a string made by cDESencrypt.
' Txt: the enciphered string: whole 8-byte blocks and the count byte.
' Key: the key it was enciphered with (the first 8 bytes count).
' Returns: the original string; "" when Txt is "", Key is shorter than 8 bytes, or Txt
'   cannot be an enciphered string (its length is not whole blocks plus one, or the
'   count byte is 8 or more).
' Note: a Txt of whole blocks without the count byte is deciphered whole, as for
'   cRIJNDAELdecrypt.
Declare Function cDESdecrypt (Txt As String, Key As String) As String
' Enciphers a file with single DES in ECB mode.
' The layout is that of cRIJNDAELencryptFile with 8-byte blocks: (source size rounded up
' to 8) + 1 bytes.
' SourceFile: the file to encipher.
' TargetFile: the enciphered file to write; an existing one is replaced.
' Key: the key; at least 8 bytes.
' Returns: the bytes written, or a code as for cRIJNDAELencryptFile (-1 when Key is
'   shorter than 8 bytes).
Declare Function cDESencryptFile (ByVal SourceFile As String, ByVal TargetFile As String, Key As String) As Long
' Deciphers a file made by cDESencryptFile.
' SourceFile: the enciphered file.
' TargetFile: the file to write; an existing one is replaced.
' Key: the key it was enciphered with.
' Returns: the bytes written, or a code as for cRIJNDAELdecryptFile (with 8-byte blocks).
Declare Function cDESdecryptFile (ByVal SourceFile As String, ByVal TargetFile As String, Key As String) As Long
' Enciphers a string with IDEA in ECB mode.
' The text is padded with zero bytes to a multiple of 8 and enciphered block by block;
' one plain byte follows that holds the number of padding bytes (0 to 7).
' Txt: the string to encipher.
' Key: the key; at least 16 bytes, of which the first 16 are the 128-bit key.
' Returns: the enciphered string; "" when Txt is "" or Key is shorter than 16 bytes.
Declare Function cIDEAencrypt (Txt As String, Key As String) As String
' Deciphers a string made by cIDEAencrypt.
' Txt: the enciphered string: whole 8-byte blocks and the count byte.
' Key: the key it was enciphered with (the first 16 bytes count).
' Returns: the original string; "" when Txt is "", Key is shorter than 16 bytes, or Txt
'   cannot be an enciphered string (as for cDESdecrypt).
Declare Function cIDEAdecrypt (Txt As String, Key As String) As String
' Enciphers a file with IDEA in ECB mode.
' The layout is that of cDESencryptFile.
' SourceFile: the file to encipher.
' TargetFile: the enciphered file to write; an existing one is replaced.
' Key: the key; at least 16 bytes.
' Returns: the bytes written, or a code as for cRIJNDAELencryptFile (-1 when Key is
'   shorter than 16 bytes).
Declare Function cIDEAencryptFile (ByVal SourceFile As String, ByVal TargetFile As String, Key As String) As Long
' Deciphers a file made by cIDEAencryptFile.
' SourceFile: the enciphered file.
' TargetFile: the file to write; an existing one is replaced.
' Key: the key it was enciphered with.
' Returns: the bytes written, or a code as for cDESdecryptFile.
Declare Function cIDEAdecryptFile (ByVal SourceFile As String, ByVal TargetFile As String, Key As String) As Long
' Enciphers a string with MARS (the AES second-round version, 256-bit key) in ECB mode.
' The text is padded with zero bytes to a multiple of 16 and enciphered block by block;
' one plain byte follows that holds the number of padding bytes (0 to 15), as for
' cRIJNDAELencrypt; cAES2RNDencrypt gives the same bytes where it has a code for the
' cipher. MARS looks up tables with data
' and key bytes, so its timing is not constant: do not use it where an observer can
' time or watch the memory of the computer doing the enciphering.
' Txt: the string to encipher.
' Key: the key; at least 32 bytes, of which the first 32 are the 256-bit key (read as little-endian 32-bit words).
' Returns: the enciphered string; "" when Txt is "" or Key is shorter than 32 bytes.
Declare Function cMARSencrypt (Txt As String, Key As String) As String
' Deciphers a string made by cMARSencrypt.
' Txt: the enciphered string: whole 16-byte blocks and the count byte.
' Key: the key it was enciphered with (the first 32 bytes count).
' Returns: the original string; "" when Txt is "", Key is shorter than 32 bytes, or Txt
'   cannot be an enciphered string (as for cRIJNDAELdecrypt).
Declare Function cMARSdecrypt (Txt As String, Key As String) As String
' Enciphers a file with MARS (the AES second-round version, 256-bit key) in ECB mode.
' The layout is that of cRIJNDAELencryptFile: (source size rounded up to 16) + 1 bytes.
' SourceFile: the file to encipher.
' TargetFile: the enciphered file to write; an existing one is replaced.
' Key: the key; at least 32 bytes, of which the first 32 are the 256-bit key.
' Returns: the bytes written, or a code as for cRIJNDAELencryptFile (-1 when Key is
'   shorter than 32 bytes).
Declare Function cMARSencryptFile (ByVal SourceFile As String, ByVal TargetFile As String, Key As String) As Long
' Deciphers a file made by cMARSencryptFile.
' SourceFile: the enciphered file.
' TargetFile: the file to write; an existing one is replaced.
' Key: the key it was enciphered with.
' Returns: the bytes written (the original size), or a code as for cRIJNDAELdecryptFile.
Declare Function cMARSdecryptFile (ByVal SourceFile As String, ByVal TargetFile As String, Key As String) As Long
' Enciphers a string with RC6 (RC6-32/20/32: 20 rounds, 256-bit key) in ECB mode.
' The text is padded with zero bytes to a multiple of 16 and enciphered block by block;
' one plain byte follows that holds the number of padding bytes (0 to 15), as for
' cRIJNDAELencrypt; cAES2RNDencrypt gives the same bytes where it has a code for the
' cipher. RC6 has no tables: it uses
' multiplications and rotations only.
' Txt: the string to encipher.
' Key: the key; at least 32 bytes, of which the first 32 are the 256-bit key (read as little-endian 32-bit words).
' Returns: the enciphered string; "" when Txt is "" or Key is shorter than 32 bytes.
Declare Function cRC6encrypt (Txt As String, Key As String) As String
' Deciphers a string made by cRC6encrypt.
' Txt: the enciphered string: whole 16-byte blocks and the count byte.
' Key: the key it was enciphered with (the first 32 bytes count).
' Returns: the original string; "" when Txt is "", Key is shorter than 32 bytes, or Txt
'   cannot be an enciphered string (as for cRIJNDAELdecrypt).
Declare Function cRC6decrypt (Txt As String, Key As String) As String
' Enciphers a file with RC6 (RC6-32/20/32: 20 rounds, 256-bit key) in ECB mode.
' The layout is that of cRIJNDAELencryptFile: (source size rounded up to 16) + 1 bytes.
' SourceFile: the file to encipher.
' TargetFile: the enciphered file to write; an existing one is replaced.
' Key: the key; at least 32 bytes, of which the first 32 are the 256-bit key.
' Returns: the bytes written, or a code as for cRIJNDAELencryptFile (-1 when Key is
'   shorter than 32 bytes).
Declare Function cRC6encryptFile (ByVal SourceFile As String, ByVal TargetFile As String, Key As String) As Long
' Deciphers a file made by cRC6encryptFile.
' SourceFile: the enciphered file.
' TargetFile: the file to write; an existing one is replaced.
' Key: the key it was enciphered with.
' Returns: the bytes written (the original size), or a code as for cRIJNDAELdecryptFile.
Declare Function cRC6decryptFile (ByVal SourceFile As String, ByVal TargetFile As String, Key As String) As Long
' Enciphers a string with CAST-256 (256-bit key) in ECB mode.
' The text is padded with zero bytes to a multiple of 16 and enciphered block by block;
' one plain byte follows that holds the number of padding bytes (0 to 15), as for
' cRIJNDAELencrypt; cAES2RNDencrypt gives the same bytes where it has a code for the
' cipher. CAST-256 looks up tables with
' data and key bytes, so its timing is not constant, as for cMARSencrypt.
' Txt: the string to encipher.
' Key: the key; at least 32 bytes, of which the first 32 are the 256-bit key (read as big-endian 32-bit words).
' Returns: the enciphered string; "" when Txt is "" or Key is shorter than 32 bytes.
Declare Function cCAST256encrypt (Txt As String, Key As String) As String
' Deciphers a string made by cCAST256encrypt.
' Txt: the enciphered string: whole 16-byte blocks and the count byte.
' Key: the key it was enciphered with (the first 32 bytes count).
' Returns: the original string; "" when Txt is "", Key is shorter than 32 bytes, or Txt
'   cannot be an enciphered string (as for cRIJNDAELdecrypt).
Declare Function cCAST256decrypt (Txt As String, Key As String) As String
' Enciphers a file with CAST-256 (256-bit key) in ECB mode.
' The layout is that of cRIJNDAELencryptFile: (source size rounded up to 16) + 1 bytes.
' SourceFile: the file to encipher.
' TargetFile: the enciphered file to write; an existing one is replaced.
' Key: the key; at least 32 bytes, of which the first 32 are the 256-bit key.
' Returns: the bytes written, or a code as for cRIJNDAELencryptFile (-1 when Key is
'   shorter than 32 bytes).
Declare Function cCAST256encryptFile (ByVal SourceFile As String, ByVal TargetFile As String, Key As String) As Long
' Deciphers a file made by cCAST256encryptFile.
' SourceFile: the enciphered file.
' TargetFile: the file to write; an existing one is replaced.
' Key: the key it was enciphered with.
' Returns: the bytes written (the original size), or a code as for cRIJNDAELdecryptFile.
Declare Function cCAST256decryptFile (ByVal SourceFile As String, ByVal TargetFile As String, Key As String) As Long
' Enciphers a string with Serpent (128-bit block, 256-bit key) in ECB mode.
' The layout is that of cRIJNDAELencrypt: zero padding to a multiple of 16 and one plain
' count byte, so the result is 1 to 16 bytes longer than Txt.
' Txt: the string to encipher.
' Key: the key; at least 32 bytes, of which the first 32 are the 256-bit key.
' Returns: the enciphered string; "" when Txt is "" or Key is shorter than 32 bytes.
' Note: the bytes of key and data go into Serpent's 32-bit words low byte first, as a
'   byte interface takes them; the designers' own test files print every value as one
'   large number, that is the same bytes in reverse order. Serpent runs as a fixed circuit
'   of logic operations: its time does not depend on the key or the data.
' Example:
'   Dim K As String, C As String
'   K = "0123456789abcdef0123456789abcdef"
'   C = cSERPENTencrypt("attack at dawn", K)   ' 17 bytes
'   Debug.Print cSERPENTdecrypt(C, K)          ' attack at dawn
Declare Function cSERPENTencrypt (Txt As String, Key As String) As String
' Deciphers a string made by cSERPENTencrypt.
' Txt: the enciphered string: whole 16-byte blocks and the count byte.
' Key: the key it was enciphered with (the first 32 bytes count).
' Returns: the original string; "" when Txt is "", Key is shorter than 32 bytes, or Txt
'   cannot be an enciphered string (as for cRIJNDAELdecrypt).
Declare Function cSERPENTdecrypt (Txt As String, Key As String) As String
' Enciphers a file with Serpent (128-bit block, 256-bit key) in ECB mode.
' The layout is that of cRIJNDAELencryptFile: (source size rounded up to 16) + 1 bytes.
' SourceFile: the file to encipher.
' TargetFile: the enciphered file to write; an existing one is replaced.
' Key: the key; at least 32 bytes, of which the first 32 are the 256-bit key.
' Returns: the bytes written, or a code as for cRIJNDAELencryptFile (-1 when Key is
'   shorter than 32 bytes).
Declare Function cSERPENTencryptFile (ByVal SourceFile As String, ByVal TargetFile As String, Key As String) As Long
' Deciphers a file made by cSERPENTencryptFile.
' SourceFile: the enciphered file.
' TargetFile: the file to write; an existing one is replaced.
' Key: the key it was enciphered with.
' Returns: the bytes written, or a code as for cRIJNDAELdecryptFile.
Declare Function cSERPENTdecryptFile (ByVal SourceFile As String, ByVal TargetFile As String, Key As String) As Long
' Enciphers a string with Twofish (128-bit block, 256-bit key) in ECB mode.
' The layout is that of cRIJNDAELencrypt: zero padding to a multiple of 16 and one plain
' count byte, so the result is 1 to 16 bytes longer than Txt.
' Txt: the string to encipher.
' Key: the key; at least 32 bytes, of which the first 32 are the 256-bit key.
' Returns: the enciphered string; "" when Txt is "" or Key is shorter than 32 bytes.
' Note: Twofish runs on tables built from the key and indexed by data bytes, as its
'   designers published it. It is not constant-time: on a machine shared with an attacker
'   the processor's cache can leak timing that depends on the key. Prefer Serpent or
'   Rijndael where that matters.
' Example:
'   Dim K As String, C As String
'   K = "0123456789abcdef0123456789abcdef"
'   C = cTWOFISHencrypt("attack at dawn", K)   ' 17 bytes
'   Debug.Print cTWOFISHdecrypt(C, K)          ' attack at dawn
Declare Function cTWOFISHencrypt (Txt As String, Key As String) As String
' Deciphers a string made by cTWOFISHencrypt.
' Txt: the enciphered string: whole 16-byte blocks and the count byte.
' Key: the key it was enciphered with (the first 32 bytes count).
' Returns: the original string; "" when Txt is "", Key is shorter than 32 bytes, or Txt
'   cannot be an enciphered string (as for cRIJNDAELdecrypt).
Declare Function cTWOFISHdecrypt (Txt As String, Key As String) As String
' Enciphers a file with Twofish (128-bit block, 256-bit key) in ECB mode.
' The layout is that of cRIJNDAELencryptFile: (source size rounded up to 16) + 1 bytes.
' SourceFile: the file to encipher.
' TargetFile: the enciphered file to write; an existing one is replaced.
' Key: the key; at least 32 bytes, of which the first 32 are the 256-bit key.
' Returns: the bytes written, or a code as for cRIJNDAELencryptFile (-1 when Key is
'   shorter than 32 bytes).
Declare Function cTWOFISHencryptFile (ByVal SourceFile As String, ByVal TargetFile As String, Key As String) As Long
' Deciphers a file made by cTWOFISHencryptFile.
' SourceFile: the enciphered file.
' TargetFile: the file to write; an existing one is replaced.
' Key: the key it was enciphered with.
' Returns: the bytes written, or a code as for cRIJNDAELdecryptFile.
Declare Function cTWOFISHdecryptFile (ByVal SourceFile As String, ByVal TargetFile As String, Key As String) As Long
