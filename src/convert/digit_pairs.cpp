#include "convert/digit_pairs.h"

#include <cstdint>

namespace brindle::convert {

int loose_digit(unsigned char c) {
    if (c < 'A')
        return c - 48;
    if (c < 'a')
        return c - 55;
    return c - 87;
}

std::string bytes_from_digit_pairs(std::string_view text, int base) {
    std::string out(text.size() / 2, '\0');
    const auto *in = reinterpret_cast<const unsigned char *>(text.data());
    for (size_t k = 0; k < out.size(); ++k) {
        const int value = loose_digit(in[2 * k]) * base + loose_digit(in[2 * k + 1]);
        out[k] = static_cast<char>(static_cast<uint8_t>(value));
    }
    return out;
}

} // namespace brindle::convert
