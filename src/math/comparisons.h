// Sign, range test and the larger or smaller of two whole numbers.
#pragma once

#include <cstdint>

namespace brindle::math {

// -1, 0 or 1 by the sign of v.
int16_t sign_of(int16_t v) noexcept;

// low <= v <= high.
bool between(int32_t v, int32_t low, int32_t high) noexcept;

// The larger (smaller) of a and b; a when they are equal.
int32_t larger(int32_t a, int32_t b) noexcept;
int32_t smaller(int32_t a, int32_t b) noexcept;

} // namespace brindle::math
