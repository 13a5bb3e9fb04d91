#include "strings/padding.h"

namespace brindle::strings {

std::string pad_to_width(std::string_view text, char fill, size_t width, bool left) {
    std::string out(width - text.size(), fill);
    if (left)
        out.append(text);
    else
        out.insert(0, text);
    return out;
}

std::string repeat_to_length(std::string_view pattern, size_t n) {
    std::string out;
    out.reserve(n);
    while (out.size() + pattern.size() <= n)
        out.append(pattern);
    out.append(pattern.substr(0, n - out.size()));
    return out;
}

std::string resize_and_fill(std::string_view text, size_t n, char fill) {
    std::string out(text.substr(0, n));
    out.resize(n, fill);
    return out;
}

std::string align_in_field(std::string_view text, int mode, size_t width) {
    if (width <= text.size())
        return std::string(text.substr(0, width));
    const size_t d = width - text.size();
    const size_t before = mode < 0 ? d : mode == 0 ? d - d / 2 : 0;
    std::string out(width, ' ');
    out.replace(before, text.size(), text);
    return out;
}

} // namespace brindle::strings
