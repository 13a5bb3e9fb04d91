#include "strings/positions.h"

#include <algorithm>

namespace brindle::strings {

std::string remove_range(std::string_view text, size_t pos, size_t count) {
    const size_t start = pos == 0 ? 0 : pos - 1;
    if (start + count > text.size())
        return std::string(text.substr(0, text.size() - count));
    std::string out(text.substr(0, start));
    out.append(text.substr(start + count));
    return out;
}

std::string insert_at(std::string_view text, size_t at, std::string_view ins) {
    at = std::min(at, text.size());
    std::string out;
    out.reserve(text.size() + ins.size());
    out.append(text.substr(0, at));
    out.append(ins);
    out.append(text.substr(at));
    return out;
}

std::string_view block_at(std::string_view text, int32_t n, int32_t size) {
    const uint64_t start = static_cast<uint64_t>(n - 1) * static_cast<uint64_t>(size);
    if (start >= text.size())
        return {};
    return text.substr(static_cast<size_t>(start), static_cast<size_t>(size));
}

} // namespace brindle::strings
