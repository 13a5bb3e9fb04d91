#include "strings/extract.h"

#include "strings/str_find.h"

namespace brindle::strings {

namespace {

std::string_view searched_part(std::string_view text) { return text.substr(0, text.find('\0')); }

} // namespace

std::string_view extract_between(std::string_view text, std::string_view open, std::string_view close,
                                 bool case_sensitive, bool rest_if_unclosed) {
    const std::string_view searched = searched_part(text);
    const size_t open_at = StrFindCase(searched, open, case_sensitive);
    if (open_at == kNotFound)
        return {};
    const size_t inner = open_at + open.size();
    const size_t close_at = StrFindFrom(searched, close, inner, case_sensitive);
    if (close_at != kNotFound)
        return text.substr(inner, close_at - inner);
    return rest_if_unclosed ? text.substr(inner) : std::string_view{};
}

std::string_view isolate_by_tags(std::string_view text, std::string_view first, std::string_view second, bool left,
                                 bool case_sensitive) {
    const std::string_view searched = searched_part(text);
    const size_t first_at = StrFindCase(searched, first, case_sensitive);
    if (first_at == kNotFound)
        return {};
    const size_t second_at = StrFindFrom(searched, second, first_at + first.size(), case_sensitive);
    if (second_at == kNotFound)
        return {};
    return left ? text.substr(0, first_at) : text.substr(second_at + second.size());
}

std::string_view isolate_by_doubled_tag(std::string_view text, std::string_view tag, bool left, bool case_sensitive) {
    const std::string_view searched = searched_part(text);
    size_t previous = 0;
    size_t match = StrFindCase(searched, tag, case_sensitive);
    while (match != kNotFound && match - previous != tag.size()) {
        previous = match;
        match = StrFindFrom(searched, tag, previous + 1, case_sensitive);
    }
    if (match == kNotFound)
        return {};
    return left ? text.substr(0, previous + 1) : text.substr(match + tag.size());
}

} // namespace brindle::strings
