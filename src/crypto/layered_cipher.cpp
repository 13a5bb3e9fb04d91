#include "crypto/layered_cipher.h"

#include "convert/ebcdic.h"

#include <algorithm>
#include <array>

namespace brindle::crypto {

namespace {

// XOR with the key from the cursor's pointer; the wrap count starts at 0.
void xor_key(std::span<uint8_t> data, std::span<const uint8_t> key, uint64_t &pointer) noexcept {
    const std::size_t m = key.size();
    const std::size_t n = data.size();
    // Until the count first reaches m the pointer runs on from where it
    // stood, past the key's end if need be (those bytes are zero).
    const std::size_t first = std::min(n, m);
    for (std::size_t i = 0; i < first; ++i, ++pointer)
        if (pointer < m)
            data[i] ^= key[static_cast<std::size_t>(pointer)];
    if (n < m)
        return;
    // From there on pointer and count wrap together.
    std::size_t k = 0;
    for (std::size_t i = m; i < n; ++i) {
        data[i] ^= key[k];
        if (++k == m)
            k = 0;
    }
    pointer = k;
}

uint8_t exchange_bits(uint8_t b) noexcept {
    const uint8_t b7 = b >> 7 & 1, b0 = b & 1, b4 = b >> 4 & 1, b3 = b >> 3 & 1;
    b = static_cast<uint8_t>(b & 0x66);
    return static_cast<uint8_t>(b | b0 << 7 | b7 | b3 << 4 | b4 << 3);
}

uint8_t reverse_bits(uint8_t b) noexcept {
    b = static_cast<uint8_t>((b & 0xF0) >> 4 | (b & 0x0F) << 4);
    b = static_cast<uint8_t>((b & 0xCC) >> 2 | (b & 0x33) << 2);
    return static_cast<uint8_t>((b & 0xAA) >> 1 | (b & 0x55) << 1);
}

// The byte layers of levels 0..2 as one table (each is its own inverse and
// so is their composition, since the complements surround the exchange).
std::array<uint8_t, 256> byte_layers(int level) noexcept {
    std::array<uint8_t, 256> t{};
    for (int v = 0; v < 256; ++v) {
        auto b = static_cast<uint8_t>(v);
        if (level >= 0)
            b = static_cast<uint8_t>(~b);
        if (level >= 1)
            b = exchange_bits(b);
        if (level >= 2)
            b = static_cast<uint8_t>(~b);
        t[static_cast<std::size_t>(v)] = b;
    }
    return t;
}

// Bit i of the buffer (bit 0 the high bit of the first byte) trades places
// with bit 8n-1-i: the bytes in reverse order, each with its bits reversed.
void reverse_bit_string(std::span<uint8_t> data) noexcept {
    std::reverse(data.begin(), data.end());
    for (uint8_t &b : data)
        b = reverse_bits(b);
}

} // namespace

void layered_encrypt(std::span<uint8_t> data, std::span<const uint8_t> key, int level,
                     LayeredKeyCursor *cursor) noexcept {
    if (key.empty())
        return;
    uint64_t start = 0;
    xor_key(data, key, cursor != nullptr ? cursor->pointer : start);
    if (level < 0)
        return;
    const auto table = byte_layers(level);
    for (uint8_t &b : data)
        b = table[b];
    if (level >= 3)
        reverse_bit_string(data);
    if (level >= 4)
        for (uint8_t &b : data)
            b = convert::ascii_to_ebcdic(b);
}

void layered_decrypt(std::span<uint8_t> data, std::span<const uint8_t> key, int level,
                     LayeredKeyCursor *cursor) noexcept {
    if (key.empty())
        return;
    if (level >= 4)
        for (uint8_t &b : data)
            b = convert::ebcdic_to_ascii(b);
    if (level >= 3)
        reverse_bit_string(data);
    if (level >= 0) {
        const auto table = byte_layers(level);
        for (uint8_t &b : data)
            b = table[b];
    }
    uint64_t start = 0;
    xor_key(data, key, cursor != nullptr ? cursor->pointer : start);
}

} // namespace brindle::crypto
