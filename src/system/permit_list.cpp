#include "system/permit_list.h"

#include "common/ascii.h"

namespace brindle::system {

namespace {

bool is_separator(char c) { return c == ' ' || c == '\t' || c == ','; }

std::string_view trimmed(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t'))
        s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t'))
        s.remove_suffix(1);
    return s;
}

bool matches(std::string_view pattern, std::string_view address) {
    const size_t star = pattern.find('*');
    if (star == std::string_view::npos)
        return common::equal_no_case(pattern, address);
    return common::starts_with_no_case(address, pattern.substr(0, star));
}

} // namespace

bool address_permitted(std::string_view address, std::string_view list) noexcept {
    address = trimmed(address);
    if (address.empty())
        return false;
    size_t i = 0;
    while (i < list.size()) {
        while (i < list.size() && is_separator(list[i]))
            ++i;
        const size_t start = i;
        while (i < list.size() && !is_separator(list[i]))
            ++i;
        std::string_view pattern = list.substr(start, i - start);
        if (pattern.empty())
            continue;
        const bool deny = pattern.front() == '!';
        if (deny)
            pattern.remove_prefix(1);
        if (matches(pattern, address))
            return !deny;
    }
    return false;
}

} // namespace brindle::system
