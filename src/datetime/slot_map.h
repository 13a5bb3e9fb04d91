// Time-slot bitmaps: slot n is bit (n mod 8) of byte (n div 8), bit 0 the
// least significant; a set bit means the slot is taken. A year map is 46
// bytes (slots 1..366), a day map 180 bytes (slots 0..1439). A map shorter
// than its kind is refused; a longer one keeps its tail. A slot whose byte
// lies outside the map is refused and nothing is changed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace brindle::datetime {

inline constexpr size_t kYearRangeBytes = 46;
inline constexpr size_t kDayRangeBytes = 180;

// Sets the first `needed` bytes to `value`; false for a shorter map.
bool slot_map_fill(std::span<unsigned char> map, size_t needed, unsigned char value) noexcept;

// Sets (or clears) the slots from..to inclusive (to = 0: the single slot
// from); false for a shorter map, from > to, or a slot outside the map.
bool slot_map_mark(std::span<unsigned char> map, size_t needed, int16_t from, int16_t to, bool set) noexcept;

// Whether the slot is taken; nothing for a shorter map or a slot outside it.
std::optional<bool> slot_map_filled(std::span<const unsigned char> map, size_t needed, int16_t slot) noexcept;

} // namespace brindle::datetime
