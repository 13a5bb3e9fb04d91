#!/usr/bin/env python3
"""Known-answer files of the enciphering file exports, made outside the library.

The block ciphers come from the Python `cryptography` package (OpenSSL's AES-256, DES
and IDEA in ECB, one block at a time); this script applies the file layout itself: the
source in chunks of 32,768 bytes, each zero-padded to whole blocks, one count byte after
the short last chunk (or one zero byte at the end), and for CBC the XOR of bytes 0..14
of each block with the 15 IV bytes or the ciphertext block before, starting again from
the IV at every chunk. The own ciphers are written here from their definitions.

Run from this folder: python3 make_samples.py
"""
import warnings

from cryptography.hazmat.decrepit.ciphers import algorithms as decrepit
from cryptography.hazmat.primitives.ciphers import Cipher, algorithms, modes

warnings.simplefilter("ignore")

CHUNK = 32768
SIZE = CHUNK + 1005  # two chunks, the second not a whole number of blocks


def sample():
    """The plaintext; the tests make the same bytes."""
    return bytes((i * 167 + (i >> 7) * 31 + 11) & 0xFF for i in range(SIZE))


AES_KEY = bytes(range(0x20, 0x20 + 40))       # 40 bytes: the first 32 count
DES_KEY = b"DESkey!!+ignored"                  # the first 8 count
IDEA_KEY = b"IDEA key 128 bit+ignored"         # the first 16 count
IV = bytes(range(0xA0, 0xB0))                  # 16 bytes: the first 15 count
LAYERED_KEY = b"seven!!"                       # 32768 mod 7 = 1
AUTOKEY_KEY = b"stream"


def ecb(algorithm, block):
    enc = Cipher(algorithm, modes.ECB()).encryptor()
    return lambda b: enc.update(b)


def encipher_file(data, encrypt_block, block, iv=None):
    out = bytearray()
    counted = False
    for start in range(0, len(data), CHUNK):
        chunk = data[start:start + CHUNK]
        pad = -len(chunk) % block
        chunk = chunk + bytes(pad)
        previous = iv
        for b in range(0, len(chunk), block):
            plain = bytearray(chunk[b:b + block])
            if iv is not None:
                for i in range(15):
                    plain[i] ^= previous[i]
            cipher = encrypt_block(bytes(plain))
            out += cipher
            previous = cipher
        if pad:
            out.append(pad)
            counted = True
    if not counted:
        out.append(0)
    return bytes(out)


def ebcdic_table():
    with open("../ebcdic_dd.bin", "rb") as f:
        return f.read()


def layered_encrypt_file(data, key, level):
    table = ebcdic_table()
    m = len(key)
    out = bytearray()
    pointer = 0
    for start in range(0, len(data), CHUNK):
        block = bytearray(data[start:start + CHUNK])
        count = 0
        for i in range(len(block)):
            block[i] ^= key[pointer] if pointer < m else 0
            pointer += 1
            count += 1
            if count == m:
                count = 0
                pointer = 0
        for i in range(len(block)):
            b = block[i]
            if level >= 0:
                b ^= 0xFF
            if level >= 1:
                b = (b & 0x66) | (b & 1) << 7 | b >> 7 | (b >> 3 & 1) << 4 | (b >> 4 & 1) << 3
            if level >= 2:
                b ^= 0xFF
            block[i] = b
        if level >= 3:
            bits = "".join(format(b, "08b") for b in block)[::-1]
            block = bytearray(int(bits[i:i + 8], 2) for i in range(0, len(bits), 8))
        if level >= 4:
            block = bytearray(table[b] for b in block)
        out += block
    return bytes(out)


def autokey_file(data, key):
    k = bytearray(key)
    L = len(k)
    out = bytearray()
    for start in range(0, len(data), CHUNK):
        p = 0
        for b in data[start:start + CHUNK]:
            t = (p & 0xFF) * k[0] & 0xFF
            out.append(b ^ k[p] ^ t)
            k[p] = (k[p] + (k[p + 1] if p < L - 1 else k[0])) & 0xFF or 1
            p = (p + 1) % L
    return bytes(out)


def main():
    data = sample()
    files = {
        "sample.rijndael": encipher_file(data, ecb(algorithms.AES(AES_KEY[:32]), 16), 16),
        "sample.rijndael_cbc": encipher_file(data, ecb(algorithms.AES(AES_KEY[:32]), 16), 16, IV[:15]),
        "sample.des": encipher_file(data, ecb(decrepit.TripleDES(DES_KEY[:8]), 8), 8),
        "sample.idea": encipher_file(data, ecb(decrepit.IDEA(IDEA_KEY[:16]), 8), 8),
        "sample.layered4": layered_encrypt_file(data, LAYERED_KEY, 4),
        "sample.layered3": layered_encrypt_file(data, LAYERED_KEY, 3),
        "sample.autokey": autokey_file(data, AUTOKEY_KEY),
    }
    for name, content in files.items():
        with open(name, "wb") as f:
            f.write(content)


if __name__ == "__main__":
    main()
