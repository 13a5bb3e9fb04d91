#!/usr/bin/env python3
"""Writes the outside references of the number-function tests (tests/math/numbers_test.cpp).

Run from this directory: python3 make_numbers_data.py

Doubles whose exact value matters are written as the 16 hexadecimal digits of their
IEEE bits, so that every platform's reader gets the very same number.

- bessel.txt: "NAME N XBITS VALUE ENVELOPE": mpmath's Bessel function (40 digits)
  at x = the double with bits XBITS, and the envelope sqrt(J^2 + Y^2) of that order
  at x (the scale of the function where it oscillates). NAME is J or Y. The points:
  random ones over (0, 50] and up to 10^4, tiny ones down to 1e-300, the doubles
  nearest the zeros below 50 and their neighbours, and orders 2 to 100.
- random.txt: the library's random sequence as Python computes the map
  G = frac(200140 * 0.3183098861837907 * G + e) from G = e (the seed 1): the value
  after the seeding's draw, then 2000 draws, each "GBITS IBITS SBITS DBITS" for
  cRnd, cRndI (trunc(G * 2147483647)), cRndS (G * 3.4028234663852886e38 as a float)
  and cRndD (G * 1.7976931348623157e308), of that same G.
- checks.txt: "HEX M10 M10R M11 M11R M137 M137R" for random texts (HEX their bytes).
- bases.txt: "TEXTHEX FROM TO RESULT" for cBaseConversion, RESULT "-" for "";
  the reading is a transcription of the C library's strtol written here afresh.
"""
import math
import random
import struct

import mpmath as mp

mp.mp.dps = 40


def bits(x):
    return struct.pack(">d", x).hex()


def fbits(x):
    return struct.pack(">f", x).hex()


def bessel():
    rnd = random.Random(11)
    lines = []

    def add(kind, n, x):
        x = float(x)
        f = mp.besselj if kind == "J" else mp.bessely
        v = f(n, mp.mpf(x))
        env = mp.sqrt(mp.besselj(n, mp.mpf(x)) ** 2 + mp.bessely(n, mp.mpf(x)) ** 2)
        lines.append("%s %d %s %s %s" % (kind, n, bits(x), mp.nstr(v, 20), mp.nstr(env, 20)))

    for kind in "JY":
        for n in (0, 1):
            for _ in range(400):
                add(kind, n, rnd.uniform(0, 50))
            for _ in range(100):
                add(kind, n, 10 ** rnd.uniform(-300, 0))
            for _ in range(150):
                add(kind, n, rnd.uniform(50, 1e4))
            k = 1
            while True:
                z = mp.besseljzero(n, k) if kind == "J" else mp.besselyzero(n, k)
                if z > 60:
                    break
                zf = float(z)
                for x in (zf, math.nextafter(zf, 0), math.nextafter(zf, 100), zf * (1 - 1e-8), zf * (1 + 1e-12)):
                    add(kind, n, x)
                k += 1
        for n in (2, 3, 7, 20, 50, 100):
            for _ in range(40):
                add(kind, n, rnd.uniform(0.01, 2.5 * n + 20))
            for x in (0.5, 1.0, 1.5, n * 0.999, float(n), n + 0.5):
                add(kind, n, x)
    with open("bessel.txt", "w") as out:
        out.write("\n".join(lines) + "\n")


def random_sequence():
    g = 1 * 2.718281828459045
    lines = []

    def step(g):
        x = 200140 * 0.3183098861837907 * g + 2.718281828459045
        return math.modf(x)[0]

    g = step(g)
    lines.append(bits(g))
    for _ in range(2000):
        g = step(g)
        i = int(g * 2147483647.0)
        s = struct.unpack(">f", struct.pack(">f", g * 3.4028234663852886e38))[0]
        d = g * 1.7976931348623157e308
        lines.append("%s %08x %s %s" % (bits(g), i & 0xFFFFFFFF, fbits(s), bits(d)))
    with open("random.txt", "w") as out:
        out.write("\n".join(lines) + "\n")


def hex_weighted(text, modulus, reverse):
    total, weight = 0, 2
    for b in (reversed(text) if reverse else text):
        if chr(b) in "0123456789ABCDEFabcdef":
            total += (b - 48 if b < 65 else b - 64) * weight
            weight = 3 - weight
    return (modulus - total % modulus) % modulus


def check_137(text, reverse):
    total = 0
    for i, b in enumerate(reversed(text) if reverse else text):
        total += (b - 256 if b > 127 else b) * (1, 3, 7)[i % 3]
    return (10 - total % 10) % 10


def checks():
    rnd = random.Random(12)
    alphabet = b"0123456789ABCDEFabcdefXYZ -\x00\x80\xff\xe9"
    lines = []
    for i in range(600):
        n = rnd.randint(1, 60)
        if i % 3 == 0:
            text = bytes(rnd.randrange(256) for _ in range(n))
        else:
            text = bytes(rnd.choice(alphabet) for _ in range(n))
        lines.append("%s %d %d %d %d %d %d" % (text.hex(), hex_weighted(text, 10, False), hex_weighted(text, 10, True),
                                             hex_weighted(text, 11, False), hex_weighted(text, 11, True),
                                             check_137(text, False), check_137(text, True)))
    with open("checks.txt", "w") as out:
        out.write("\n".join(lines) + "\n")


def strtol(text, base):
    i = 0
    text = text.split(b"\x00")[0]
    while i < len(text) and text[i] in b" \t\n\v\f\r":
        i += 1
    sign = 1
    if i < len(text) and text[i] in b"+-":
        sign = -1 if text[i] == ord("-") else 1
        i += 1
    if base == 16 and text[i:i + 2].lower() == b"0x":
        i += 2
    value = 0
    while i < len(text):
        c = chr(text[i]).lower()
        d = int(c, 36) if c.isalnum() and c.isascii() else 99
        if d >= base:
            break
        value = value * base + d
        i += 1
    value *= sign
    return max(-2 ** 31, min(2 ** 31 - 1, value))


def ltoa(value, base):
    if base == 10:
        return str(value)
    value &= 0xFFFFFFFF
    digits = ""
    while True:
        digits = "0123456789abcdefghijklmnopqrstuvwxyz"[value % base] + digits
        value //= base
        if value == 0:
            return digits


def bases():
    rnd = random.Random(13)
    lines = []
    for i in range(500):
        src = rnd.randint(2, 34)
        dst = rnd.randint(2, 34)
        value = rnd.choice([rnd.randint(-2 ** 31, 2 ** 31 - 1), rnd.randint(-1000, 1000), rnd.randint(-2 ** 40, 2 ** 40)])
        text = ltoa(value, 10) if src == 10 else ("-" if value < 0 else "") + ltoa(abs(value), src) if abs(value) < 2 ** 40 else "1"
        if i % 4 == 1:
            text = text.upper()
        if i % 5 == 2:
            text = " \t" + text + rnd.choice(["", "!", " 12", "\x00" + "9", "zz"])
        if i % 7 == 3 and src == 16:
            text = "0x" + text.lstrip("-")
        raw = text.encode("latin-1")
        v = strtol(raw, src)
        lines.append("%s %d %d %s" % (raw.hex() or "-", src, dst, ltoa(v, dst) if v != 0 else "-"))
    with open("bases.txt", "w") as out:
        out.write("\n".join(lines) + "\n")


if __name__ == "__main__":
    bessel()
    random_sequence()
    checks()
    bases()
