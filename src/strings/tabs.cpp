#include "strings/tabs.h"

#include <algorithm>
#include <cstdint>

namespace brindle::strings {

std::optional<std::string> expand_tabs(std::string_view text, size_t spaces, size_t limit) {
    const auto tabs = static_cast<uint64_t>(std::count(text.begin(), text.end(), '\t'));
    const uint64_t size = text.size() - tabs + tabs * static_cast<uint64_t>(spaces);
    if (size > limit)
        return std::nullopt;
    std::string out;
    out.reserve(static_cast<size_t>(size));
    for (const char c : text) {
        if (c == '\t')
            out.append(spaces, ' ');
        else
            out.push_back(c);
    }
    return out;
}

std::string compress_tabs(std::string_view text, size_t n) {
    std::string out;
    out.reserve(text.size());
    for (size_t k = 0; k < text.size();) {
        if (text[k] != ' ') {
            out.push_back(text[k++]);
            continue;
        }
        const size_t end = std::min(text.find_first_not_of(' ', k), text.size());
        const size_t run = end - k;
        out.append(run / n, '\t');
        out.append(run % n, ' ');
        k = end;
    }
    return out;
}

} // namespace brindle::strings
