// The units the block routines of the array family work on: the elements of
// a one-dimensional array, or the record slices (all of dimension 1 sharing
// one index of dimension 2) of a two-dimensional one.
//
// The width of an element comes from the caller's type code, which nothing
// compares with the array's own element size; a wrong code gives a wrong
// result, but the unit count is bounded by the bytes of the block, so no
// unit ever reaches past it.
#pragma once

#include "arrays/array_records.h"
#include "frame/arrays.h"

#include <cstddef>
#include <cstdint>

namespace brindle::arrays {

struct BlockUnits {
    unsigned char *base = nullptr;
    size_t count = 0;    // units that fit in the block
    size_t elements = 1; // elements per unit
    size_t bytes = 0;    // bytes per unit
};

// The units of a locked block for elements of `width` bytes.
inline BlockUnits block_units(const frame::ArrayBlock &block, size_t width) noexcept {
    BlockUnits u;
    u.base = static_cast<unsigned char *>(block.data());
    u.elements = block.dims() == 2 ? block.count1() : 1;
    u.bytes = u.elements * width;
    if (u.base == nullptr || u.bytes == 0)
        return u;
    const size_t fit = block.bytes() / u.bytes;
    const size_t want = block.dims() == 2 ? block.count2() : block.count1();
    u.count = want < fit ? want : fit;
    return u;
}

// The numeric sort of cSortI .. cReverseSortD on a locked block: elements,
// or record slices compared element by element from the first. False for a
// type code outside 2..5 and for arrays whose elements own strings, variants
// or interfaces (nothing sorted). Throws std::bad_alloc.
bool sort_block(const frame::ArrayBlock &block, int16_t code, bool descending);

// The parameters of dimension 1 of any array, with the 16-bit truncations
// the record's fields make (a missing array reads as an empty one).
ArrayParameters read_array_parameters(SAFEARRAY **array) noexcept;

} // namespace brindle::arrays
