// Numbers and amounts in English words, for cheques, invoices and reports:
// "One Thousand Two Hundred Thirty-Four Dollars and Fifty Cents".
//
// The whole part is spelled in groups of three digits with the scale words
// Thousand, Million, Billion and Trillion; the fraction is spelled digit by
// digit after a caller's word (spell_number) or as a number of cents
// (spell_money). The results carry no trailing space.
//
// Where the classic routine had no answer, these choices hold:
//   - negative values are spelled as their magnitude after "Minus ";
//   - values whose magnitude is 1e15 or more, and NaNs, give the empty text
//     (the groups of three digits would not fit the scale words);
//   - the caller's words are cut to the lengths their old buffers held:
//     27 characters for the fraction word, 19 for the currency and cents
//     names;
//   - with the limits above no spelling reaches 256 characters, the size of
//     the classic output buffer, so nothing is ever cut;
//   - a fraction that the runtime's _gcvt would write in exponent form (below
//     0.1 once rounded) is spelled from its plain decimal form instead, up to
//     30 decimals; its zeros, like every fractional zero, add no word.
#pragma once

#include <string>
#include <string_view>

namespace brindle::convert {

// value in words; a non-zero fraction follows `word`, rendered with `digits`
// significant digits and spelled one digit at a time.
std::string spell_number(double value, int digits, std::string_view word);

// value in words, then `currency` (when not empty), then " and", the cents
// rounded to a whole number, and `cents` (when not empty) if the value has a
// fraction.
std::string spell_money(double value, std::string_view currency, std::string_view cents);

} // namespace brindle::convert
