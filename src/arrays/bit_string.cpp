#include "arrays/bit_string.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace brindle::arrays {

namespace {

constexpr std::array<unsigned char, 256> make_mirror_table() {
    std::array<unsigned char, 256> t{};
    for (unsigned v = 0; v < 256; ++v) {
        unsigned r = 0;
        for (unsigned k = 0; k < 8; ++k)
            if (v & (1u << k))
                r |= 128u >> k;
        t[v] = static_cast<unsigned char>(r);
    }
    return t;
}

constexpr std::array<unsigned char, 256> kMirror = make_mirror_table();

constexpr unsigned char mask_of(int64_t index) { return static_cast<unsigned char>(128u >> (index & 7)); }

} // namespace

bool bit_in_range(size_t size, int64_t index) {
    // size / 8 bytes cover 8 x size bits; compare without forming 8 x size.
    return index >= 0 && static_cast<uint64_t>(index) / 8 < size;
}

bool get_bit(std::string_view bits, int64_t index) {
    if (!bit_in_range(bits.size(), index))
        return false;
    return (static_cast<unsigned char>(bits[static_cast<size_t>(index / 8)]) & mask_of(index)) != 0;
}

bool put_bit(unsigned char *bits, size_t size, int64_t index, bool on) {
    if (bits == nullptr || !bit_in_range(size, index))
        return false;
    unsigned char &b = bits[static_cast<size_t>(index / 8)];
    b = on ? static_cast<unsigned char>(b | mask_of(index)) : static_cast<unsigned char>(b & ~mask_of(index));
    return true;
}

int toggle_bit(unsigned char *bits, size_t size, int64_t index) {
    if (bits == nullptr || !bit_in_range(size, index))
        return 0;
    unsigned char &b = bits[static_cast<size_t>(index / 8)];
    const bool was = (b & mask_of(index)) != 0;
    b = static_cast<unsigned char>(b ^ mask_of(index));
    return was ? 1 : 0;
}

void fill_bits(unsigned char *bits, size_t size, bool on) {
    if (size != 0)
        std::memset(bits, on ? 0xFF : 0, size);
}

void complement_bits(unsigned char *bits, size_t size) {
    for (size_t i = 0; i < size; ++i)
        bits[i] = static_cast<unsigned char>(~bits[i]);
}

unsigned char mirror_byte(unsigned char b) { return kMirror[b]; }

void reverse_bits(unsigned char *bits, size_t size) {
    if (size == 0)
        return;
    std::reverse(bits, bits + size);
    reverse_bits_by_byte(bits, size);
}

void reverse_bits_by_byte(unsigned char *bits, size_t size) {
    for (size_t i = 0; i < size; ++i)
        bits[i] = kMirror[bits[i]];
}

int64_t find_bit(std::string_view bits, int64_t start, bool on) {
    if (!bit_in_range(bits.size(), start))
        return -1;
    const auto *p = reinterpret_cast<const unsigned char *>(bits.data());
    size_t byte = static_cast<size_t>(start / 8);
    // The first byte from the start bit on: the bits before it are masked out.
    unsigned char b = on ? p[byte] : static_cast<unsigned char>(~p[byte]);
    b = static_cast<unsigned char>(b & (0xFFu >> (start & 7)));
    while (b == 0) {
        if (++byte == bits.size())
            return -1;
        b = on ? p[byte] : static_cast<unsigned char>(~p[byte]);
    }
    int k = 0;
    while ((b & (128u >> k)) == 0)
        ++k;
    return static_cast<int64_t>(byte) * 8 + k;
}

bool is_bit_palindrome(std::string_view bits) {
    if (bits.empty())
        return false;
    const auto *p = reinterpret_cast<const unsigned char *>(bits.data());
    const size_t n = bits.size();
    // Byte j read forwards must be byte n - 1 - j read backwards.
    for (size_t j = 0; j < (n + 1) / 2; ++j)
        if (p[j] != kMirror[p[n - 1 - j]])
            return false;
    return true;
}

std::string palindrome_bytes() {
    std::string out;
    for (unsigned v = 0; v < 256; ++v)
        if (kMirror[v] == v)
            out.push_back(static_cast<char>(v));
    return out;
}

} // namespace brindle::arrays
