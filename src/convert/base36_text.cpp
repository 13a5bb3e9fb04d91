#include "convert/base36_text.h"

#include "convert/digit_pairs.h"

#include <cstdint>

namespace brindle::convert {

namespace {

char digit_char(uint8_t v) {
    return v < 10 ? static_cast<char>('0' + v) : static_cast<char>(static_cast<uint8_t>(v + 55));
}

} // namespace

std::string base36_text(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() * 2);
    for (const char ch : bytes) {
        const int b = static_cast<signed char>(ch);
        out += digit_char(static_cast<uint8_t>(b / 36));
        out += digit_char(static_cast<uint8_t>(b % 36));
    }
    return out;
}

std::string bytes_from_base36_text(std::string_view text) { return bytes_from_digit_pairs(text, 36); }

} // namespace brindle::convert
