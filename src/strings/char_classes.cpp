#include "strings/char_classes.h"

#include "common/ascii.h"

#include <cstddef>

namespace brindle::strings {

namespace {

using common::is_ascii_digit;
using common::is_ascii_lower;
using common::is_ascii_upper;

constexpr bool is_alpha(unsigned char c) { return is_ascii_lower(c) || is_ascii_upper(c); }
constexpr bool is_alnum(unsigned char c) { return is_alpha(c) || is_ascii_digit(c); }

} // namespace

bool in_class(CharClass cls, unsigned char c) noexcept {
    switch (cls) {
    case CharClass::Digit:
        return is_ascii_digit(c);
    case CharClass::Alpha:
    case CharClass::Csymf:
        return is_alpha(c);
    case CharClass::Lower:
        return is_ascii_lower(c);
    case CharClass::Upper:
        return is_ascii_upper(c);
    case CharClass::Xdigit:
        return is_ascii_digit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
    case CharClass::Alnum:
    case CharClass::Csym:
        return is_alnum(c);
    case CharClass::Punct:
        return c > ' ' && c < 127 && !is_alnum(c);
    case CharClass::Space:
        return common::is_c_space(c);
    case CharClass::Ascii:
        return c < 128;
    }
    return true;
}

bool all_in_class(std::string_view text, CharClass cls) noexcept {
    if (text.empty())
        return false;
    const size_t n = text.size();
    const bool pairs = cls == CharClass::Csym || cls == CharClass::Csymf;
    size_t p = 0;
    for (size_t step = 0; step < n; ++step) {
        if (p >= n)
            return false; // consumed pairs walked past the end
        if (in_class(cls, static_cast<unsigned char>(text[p]))) {
            ++p;
            continue;
        }
        if (pairs && p + 1 < n && text[p + 1] == '_') {
            p += 2;
            continue;
        }
        return false;
    }
    return true;
}

bool is_palindrome(std::string_view text) noexcept {
    if (text.empty())
        return false;
    for (size_t i = 0, j = text.size() - 1; i < j; ++i, --j)
        if (text[i] != text[j])
            return false;
    return true;
}

} // namespace brindle::strings
