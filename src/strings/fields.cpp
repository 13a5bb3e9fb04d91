#include "strings/fields.h"

#include "strings/byte_set.h"

namespace brindle::strings {

std::string_view field_from_left(std::string_view text, char sep, int32_t n) noexcept {
    if (n < 1)
        return {};
    size_t start = 0;
    for (int32_t field = 1; field < n; ++field) {
        const size_t at = text.find(sep, start);
        if (at == std::string_view::npos)
            return {};
        start = at + 1;
    }
    const size_t end = text.find(sep, start);
    return text.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start);
}

std::string_view field_from_right(std::string_view text, char sep, int32_t n) noexcept {
    if (n < 1)
        return {};
    size_t end = text.size(); // one past the field's last byte
    for (int32_t field = 1; field < n; ++field) {
        const size_t at = end == 0 ? std::string_view::npos : text.rfind(sep, end - 1);
        if (at == std::string_view::npos)
            return {};
        end = at;
    }
    const size_t at = end == 0 ? std::string_view::npos : text.rfind(sep, end - 1);
    const size_t start = at == std::string_view::npos ? 0 : at + 1;
    return text.substr(start, end - start);
}

std::string_view field_at_any(std::string_view text, std::string_view seps, int32_t n) noexcept {
    if (n < 1)
        return {};
    const ByteSet is_sep(seps);
    size_t start = 0;
    for (int32_t field = 1; field < n; ++field) {
        size_t at = start;
        while (at < text.size() && !is_sep.has(text[at]))
            ++at;
        if (at == text.size())
            return {};
        start = at + 1;
    }
    size_t end = start;
    while (end < text.size() && !is_sep.has(text[end]))
        ++end;
    return text.substr(start, end - start);
}

} // namespace brindle::strings
