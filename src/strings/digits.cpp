#include "strings/digits.h"

#include "common/ascii.h"

namespace brindle::strings {

using common::is_ascii_digit;

int16_t digit_sum16(std::string_view text) noexcept {
    uint32_t sum = 0;
    for (const char c : text)
        if (is_ascii_digit(c))
            sum += static_cast<uint32_t>(c - '0');
    return static_cast<int16_t>(static_cast<uint16_t>(sum & 0xFFFFu));
}

int16_t digital_root(std::string_view text) noexcept {
    int sum = 0;
    for (const char c : text) {
        if (!is_ascii_digit(c))
            continue;
        sum += c - '0';
        if (sum > 9)
            sum -= 9;
    }
    return static_cast<int16_t>(sum);
}

std::string nines_complement(std::string_view text) {
    std::string out(text);
    for (char &c : out)
        if (is_ascii_digit(c))
            c = static_cast<char>('9' - (c - '0'));
    return out;
}

std::string byte_complement(std::string_view text) {
    std::string out(text);
    for (char &c : out)
        c = static_cast<char>(~static_cast<unsigned char>(c));
    return out;
}

} // namespace brindle::strings
