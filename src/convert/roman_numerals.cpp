#include "convert/roman_numerals.h"

namespace brindle::convert {

namespace {

struct RomanStep {
    int32_t value;
    const char *letters;
};

constexpr RomanStep kRomanSteps[] = {
    {1000, "m"}, {900, "cm"}, {500, "d"}, {400, "cd"}, {100, "c"}, {90, "xc"}, {50, "l"},
    {40, "xx"},  {10, "x"},   {9, "ix"},  {5, "v"},   {4, "iv"},  {1, "i"},
};

// The value of the pair (c, next) when it counts as one step, else 0.
uint32_t pair_value(char c, char next) {
    if (c == 'c' && next == 'm')
        return 900;
    if (c == 'c' && next == 'd')
        return 400;
    if (c == 'x' && next == 'c')
        return 90;
    if (c == 'x' && next == 'l')
        return 40;
    if (c == 'i' && next == 'v')
        return 4;
    if ((c == 'i' || c == 'v') && next == 'x')
        return 9;
    return 0;
}

uint32_t letter_value(char c) {
    switch (c) {
    case 'm': return 1000;
    case 'd': return 500;
    case 'c': return 100;
    case 'l': return 50;
    case 'x': return 10;
    case 'v': return 5;
    case 'i': return 1;
    default: return 0;
    }
}

} // namespace

std::string roman_numeral(int32_t number) {
    std::string out;
    if (number < 1 || number >= kRomanLimit)
        return out;
    for (const RomanStep &step : kRomanSteps)
        for (; number >= step.value; number -= step.value)
            out += step.letters;
    return out;
}

int32_t roman_value(std::string_view text) {
    uint32_t total = 0;
    size_t i = 0;
    while (i < text.size()) {
        const char next = i + 1 < text.size() ? text[i + 1] : '\0';
        if (const uint32_t pair = pair_value(text[i], next)) {
            total += pair;
            i += 2;
        } else {
            total += letter_value(text[i]);
            ++i;
        }
    }
    return static_cast<int32_t>(total);
}

} // namespace brindle::convert
