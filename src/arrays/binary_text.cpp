#include "arrays/binary_text.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace brindle::arrays {

void write_binary(std::string_view bytes, char one, char zero, char *out) {
    // The 8 characters of every byte value, made once per call: then each
    // byte is one copy.
    std::array<std::array<char, 8>, 256> digits;
    for (unsigned v = 0; v < 256; ++v)
        for (unsigned k = 0; k < 8; ++k)
            digits[v][k] = (v & (128u >> k)) != 0 ? one : zero;
    for (const char c : bytes) {
        std::memcpy(out, digits[static_cast<unsigned char>(c)].data(), 8);
        out += 8;
    }
}

void read_binary(std::string_view text, char one, unsigned char *out) {
    const size_t whole = text.size() / 8;
    for (size_t i = 0; i < whole; ++i) {
        unsigned b = 0;
        for (size_t k = 0; k < 8; ++k)
            b = (b << 1) | (text[8 * i + k] == one ? 1u : 0u);
        out[i] = static_cast<unsigned char>(b);
    }
}

uint32_t binary_number(std::string_view text, size_t max_digits) {
    if (text.empty() || text.size() > max_digits)
        return 0;
    uint32_t value = 0;
    for (const char c : text) {
        if (c != '0' && c != '1')
            break;
        value = value * 2 + static_cast<uint32_t>(c - '0');
    }
    return value;
}

std::string number_binary(uint32_t value, int width, char one, char zero, bool lowest_first) {
    std::string out(static_cast<size_t>(width), zero);
    for (int k = 0; k < width; ++k)
        if ((value >> k) & 1u)
            out[static_cast<size_t>(width - 1 - k)] = one;
    if (lowest_first)
        std::reverse(out.begin(), out.end());
    return out;
}

std::string number_binary_trimmed(uint32_t value) {
    int width = 1;
    while (width < 32 && (value >> width) != 0)
        ++width;
    return number_binary(value, width, '1', '0', false);
}

} // namespace brindle::arrays
