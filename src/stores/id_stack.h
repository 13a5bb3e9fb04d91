// The ID stack: an Integer array used as a set of 16-bit identifiers in
// which 0 marks a free slot. Each operation gives 0 when it wrote its
// element and -1 when no slot qualifies (nothing is written).
#pragma once

#include <cstdint>
#include <span>

namespace brindle::stores {

// Stores `id` in the first free slot from the start. An id already in the
// set is not stored twice (0, nothing written); the id 0, which would read
// as a free slot, is refused (-1).
int32_t push_id(std::span<int16_t> ids, int16_t id) noexcept;

// Frees the first slot holding `id`.
int32_t pop_id(std::span<int16_t> ids, int16_t id) noexcept;

// Frees the last used slot, scanning down from the end.
int32_t pop_last_id(std::span<int16_t> ids) noexcept;

// Frees every slot; -1 for an empty array.
int32_t clear_ids(std::span<int16_t> ids) noexcept;

// Element n from the start; 0 when n is negative or past the end.
int16_t id_at(std::span<const int16_t> ids, int32_t n) noexcept;

} // namespace brindle::stores
