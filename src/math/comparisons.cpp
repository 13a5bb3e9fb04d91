#include "math/comparisons.h"

namespace brindle::math {

int16_t sign_of(int16_t v) noexcept { return static_cast<int16_t>((v > 0) - (v < 0)); }

bool between(int32_t v, int32_t low, int32_t high) noexcept { return low <= v && v <= high; }

int32_t larger(int32_t a, int32_t b) noexcept { return b > a ? b : a; }

int32_t smaller(int32_t a, int32_t b) noexcept { return b < a ? b : a; }

} // namespace brindle::math
