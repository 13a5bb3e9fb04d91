#include "strings/char_filters.h"

#include "strings/byte_set.h"

#include <array>
#include <cstdint>

namespace brindle::strings {

std::string filter_chars(std::string_view text, std::string_view set, bool keep_members) {
    const ByteSet members(set);
    std::string out;
    out.reserve(text.size());
    for (const char c : text)
        if (members.has(c) == keep_members)
            out.push_back(c);
    return out;
}

std::string without_blocks(std::string_view text, char open, char close) {
    std::string out;
    out.reserve(text.size());
    bool inside = false;
    for (const char c : text) {
        if (inside) {
            if (c == close)
                inside = false;
        } else if (c == open) {
            inside = true;
        } else {
            out.push_back(c);
        }
    }
    return out;
}

std::string without_blanks(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (const char c : text)
        if (c != 0 && c != '\t' && c != ' ')
            out.push_back(c);
    return out;
}

std::string without_prefix_fixed(std::string_view text, std::string_view prefix) {
    if (text.starts_with(prefix))
        return std::string(text.substr(prefix.size()));
    std::string out(text.size(), '\0');
    if (prefix.size() < text.size())
        out.replace(0, text.size() - prefix.size(), text.substr(prefix.size()));
    return out;
}

bool has_all_chars(std::string_view text, std::string_view set) {
    if (text.empty() || set.empty() || set.size() > 128)
        return false;
    // How many places of the working copy hold each value: one step per
    // byte of text instead of a pass over the copy.
    std::array<uint64_t, 256> places{};
    for (const char c : set)
        ++places[static_cast<unsigned char>(c)];
    uint64_t count = 0;
    for (const char c : text) {
        const auto v = static_cast<unsigned char>(c);
        count += places[v];
        if (v != 0) {
            places[0] += places[v];
            places[v] = 0;
        }
    }
    return count == set.size();
}

} // namespace brindle::strings
