// Tabs to spaces and back.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace brindle::strings {

// Every tab of text replaced by exactly `spaces` spaces (a fixed count, not
// a tab stop). Nothing when the result would be longer than `limit` bytes.
std::optional<std::string> expand_tabs(std::string_view text, size_t spaces, size_t limit);

// Every run of L spaces replaced by L / n tabs followed by L mod n spaces
// (n >= 1).
std::string compress_tabs(std::string_view text, size_t n);

} // namespace brindle::strings
