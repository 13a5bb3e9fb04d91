#include "datetime/slot_map.h"

#include <cstring>

namespace brindle::datetime {

namespace {

bool inside(size_t size, int32_t slot) { return slot >= 0 && static_cast<size_t>(slot) / 8 < size; }

} // namespace

bool slot_map_fill(std::span<unsigned char> map, size_t needed, unsigned char value) noexcept {
    if (map.size() < needed)
        return false;
    std::memset(map.data(), value, needed);
    return true;
}

bool slot_map_mark(std::span<unsigned char> map, size_t needed, int16_t from, int16_t to, bool set) noexcept {
    if (map.size() < needed)
        return false;
    const int32_t first = from;
    const int32_t last = to == 0 ? from : to;
    if (to != 0 && from > to)
        return false;
    if (!inside(map.size(), first) || !inside(map.size(), last))
        return false;
    for (int32_t slot = first; slot <= last; ++slot) {
        const auto bit = static_cast<unsigned char>(1u << (slot % 8));
        if (set)
            map[static_cast<size_t>(slot / 8)] |= bit;
        else
            map[static_cast<size_t>(slot / 8)] &= static_cast<unsigned char>(~bit);
    }
    return true;
}

std::optional<bool> slot_map_filled(std::span<const unsigned char> map, size_t needed, int16_t slot) noexcept {
    if (map.size() < needed || !inside(map.size(), slot))
        return std::nullopt;
    return ((map[static_cast<size_t>(slot / 8)] >> (slot % 8)) & 1u) != 0;
}

} // namespace brindle::datetime
