// Capitals at the start of words.
#pragma once

#include <string>
#include <string_view>

namespace brindle::strings {

// The first byte and every byte after a space raised to a capital (a-z only,
// as the "C" locale's toupper); nothing is lowered.
std::string capitalise_words(std::string_view text);

} // namespace brindle::strings
