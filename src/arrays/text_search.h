// Searches of string arrays by key: n texts read one at a time by at(k),
// k = 0 .. n-1, each a std::optional<std::string> (nullopt for a null
// element). Every match overwrites the one before, so the last one wins.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace brindle::arrays {

// The C runtime's equality of two zero-terminated texts (each read up to its
// first zero byte): byte for byte, or with A-Z and a-z folded together.
bool c_text_equal(std::string_view a, std::string_view b, bool case_sensitive);

// The position of the last text equal to the key; a null element matches
// only an empty key.
template <class At>
std::optional<size_t> last_equal_text(size_t n, At at, std::string_view key, bool case_sensitive) {
    std::optional<size_t> found;
    for (size_t k = 0; k < n; ++k) {
        const auto element = at(k);
        if (element ? c_text_equal(*element, key, case_sensitive) : key.empty())
            found = k;
    }
    return found;
}

// The row of a look-up table whose key is the last to equal the given key;
// here a null key element matches any key.
template <class At>
std::optional<size_t> last_lookup_row(size_t n, At key_at, std::string_view key, bool case_sensitive) {
    std::optional<size_t> found;
    for (size_t k = 0; k < n; ++k) {
        const auto element = key_at(k);
        if (!element || c_text_equal(*element, key, case_sensitive))
            found = k;
    }
    return found;
}

} // namespace brindle::arrays
