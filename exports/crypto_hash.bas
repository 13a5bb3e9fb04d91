' Digests: the MD5 digest of a string, in the byte order this library has
' always returned it.

' Gives the MD5 digest of a string, as 16 raw bytes.
' The digest is the standard MD5 of the string's bytes (RFC 1321), zero bytes included,
' but each of its four 4-byte words comes back with its bytes in reverse order: bytes 4,
' 3, 2, 1, then 8, 7, 6, 5, and so on. Reverse each group of four again to compare it
' with the digest other tools print. The result is bytes, not hexadecimal text.
'
' MD5 is broken for signatures and passwords: two different strings with the same digest
' are easy to make. Use it to recognise data, not to protect it.
' Txt: the string, 1 to 32,766 bytes.
' Returns: the 16-byte digest; "" when Txt is "" or longer than 32,766 bytes.
' Example:
'   Dim D As String, I As Integer, H As String
'   D = cHashMD5("abc")
'   For I = 1 To 16: H = H & Right$("0" & Hex$(Asc(Mid$(D, I, 1))), 2): Next
'   Debug.Print H   ' 98500190B04FD23C7D3F96D6727FE128
Declare Function cHashMD5 (Txt As String) As String
