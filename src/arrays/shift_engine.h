// Shifts of a run of n elements of `width` bytes by one place, with a new
// element entering at the end left free.
#pragma once

#include <cstddef>

namespace brindle::arrays {

// left: elements 2..n move one place down and `value` (width bytes) goes
// last. Otherwise elements 1..n-1 move one place up and `value` goes first.
// Nothing happens for n = 0; for n = 1 the element is replaced.
void shift_elements(unsigned char *base, size_t n, size_t width, const void *value, bool left);

} // namespace brindle::arrays
