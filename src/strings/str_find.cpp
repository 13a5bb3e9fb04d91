#include "strings/str_find.h"

#include <cstring>

namespace brindle::strings {

namespace {

constexpr unsigned char fold(unsigned char c) { return (c >= 'A' && c <= 'Z') ? static_cast<unsigned char>(c + 32) : c; }

} // namespace

size_t StrFindNoCase(std::string_view text, std::string_view find) noexcept {
    if (text.empty())
        return kNotFound;
    if (find.empty())
        return 0;
    if (find.size() > text.size())
        return kNotFound;
    const auto *t = reinterpret_cast<const unsigned char *>(text.data());
    const auto *f = reinterpret_cast<const unsigned char *>(find.data());
    const unsigned char head = fold(f[0]);
    const size_t last = text.size() - find.size();
    for (size_t at = 0; at <= last; ++at) {
        if (fold(t[at]) != head)
            continue;
        size_t i = 1;
        while (i < find.size() && fold(t[at + i]) == fold(f[i]))
            ++i;
        if (i == find.size())
            return at;
    }
    return kNotFound;
}

size_t StrFind(std::string_view text, std::string_view find) noexcept {
    const size_t at = text.find(find);
    return at == std::string_view::npos ? kNotFound : at;
}

size_t StrFindFrom(std::string_view text, std::string_view find, size_t from, bool case_sensitive) noexcept {
    if (from > text.size())
        return kNotFound;
    const size_t at = StrFindCase(text.substr(from), find, case_sensitive);
    return at == kNotFound ? kNotFound : from + at;
}

} // namespace brindle::strings
