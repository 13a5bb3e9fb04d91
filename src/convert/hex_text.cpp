#include "convert/hex_text.h"

#include "common/hex_digits.h"
#include "convert/digit_pairs.h"

namespace brindle::convert {

std::string bytes_from_hex_text(std::string_view text) { return bytes_from_digit_pairs(text, 16); }

uint32_t hex_number_prefix(std::string_view text, size_t max_digits) {
    if (text.empty() || text.size() > max_digits)
        return 0;
    uint32_t value = 0;
    for (const char ch : text) {
        const int digit = common::hex_digit_value(ch);
        if (digit < 0)
            break;
        value = value * 16 + static_cast<uint32_t>(digit);
    }
    return value;
}

} // namespace brindle::convert
