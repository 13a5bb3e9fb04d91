#include "strings/translate.h"

#include <algorithm>

namespace brindle::strings {

ByteTable translation_table(std::string_view from, std::string_view to) {
    ByteTable map{};
    for (int v = 0; v < 256; ++v)
        map[static_cast<size_t>(v)] = static_cast<unsigned char>(v);
    const size_t m = std::min(from.size(), to.size());
    if (m < 2) {
        map[static_cast<unsigned char>(from[0])] = static_cast<unsigned char>(to[0]);
        return map;
    }
    for (int v = 0; v < 256; ++v) {
        auto c = static_cast<unsigned char>(v);
        for (size_t k = 0; k < m; ++k)
            if (c == static_cast<unsigned char>(from[k]))
                c = static_cast<unsigned char>(to[k]);
        map[static_cast<size_t>(v)] = c;
    }
    return map;
}

void translate_bytes(char *p, size_t n, const ByteTable &table, const char *stop) noexcept {
    for (size_t k = 0; k < n && (stop == nullptr || p[k] != *stop); ++k)
        p[k] = static_cast<char>(table[static_cast<unsigned char>(p[k])]);
}

} // namespace brindle::strings
