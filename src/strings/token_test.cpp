#include "strings/token_test.h"

#include <cstdint>
#include <string>

namespace brindle::strings {

namespace {

constexpr size_t kTokenMax = 2559;

std::string_view list_as_16_bit(std::string_view list) {
    const auto len16 = static_cast<int16_t>(static_cast<uint16_t>(list.size() & 0xFFFFu));
    if (len16 < 1)
        return {};
    return list.substr(0, static_cast<size_t>(len16));
}

// The walk shared by both tests. Returns true when it ends early: a token
// whose presence equals `want_found`.
bool token_walk(std::string_view text, std::string_view list, char sep, bool want_found) {
    std::string token;
    token.reserve(64);
    const size_t last = list.size() - 1;
    for (size_t k = 0; k <= last; ++k) {
        const char c = list[k];
        const bool ends = k == last || c == sep;
        if ((c != sep || k == last) && token.size() < kTokenMax)
            token.push_back(c);
        if (!ends)
            continue;
        if (!token.empty() && (text.find(token) != std::string_view::npos) == want_found)
            return true;
        token.clear();
    }
    return false;
}

} // namespace

bool any_token_in(std::string_view text, std::string_view list, char sep) {
    list = list_as_16_bit(list);
    return !text.empty() && !list.empty() && token_walk(text, list, sep, true);
}

bool all_tokens_in(std::string_view text, std::string_view list, char sep) {
    list = list_as_16_bit(list);
    return !text.empty() && !list.empty() && !token_walk(text, list, sep, false);
}

} // namespace brindle::strings
