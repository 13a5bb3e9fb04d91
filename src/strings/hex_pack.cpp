#include "strings/hex_pack.h"

#include "common/ascii.h"

namespace brindle::strings {

namespace {

unsigned nibble(char c) {
    const auto u = static_cast<unsigned char>(c);
    return common::is_ascii_digit(u) ? u - '0' : (u - 55u) & 0x0Fu;
}

} // namespace

std::string pack_hex_digits(std::string_view text) {
    std::string out;
    out.reserve((text.size() + 1) / 2);
    size_t k = 0;
    if (text.size() % 2 == 1)
        out.push_back(static_cast<char>(nibble(text[k++])));
    for (; k < text.size(); k += 2)
        out.push_back(static_cast<char>((nibble(text[k]) << 4) | nibble(text[k + 1])));
    return out;
}

} // namespace brindle::strings
