// Increments and decrements that wrap around at the ends of their type, as
// VB's own integer types would if they did not raise an overflow.
#pragma once

#include <cstdint>

namespace brindle::math {

int16_t incremented(int16_t v) noexcept; // 32767 gives -32768
int32_t incremented(int32_t v) noexcept; // 2147483647 gives -2147483648
int16_t decremented(int16_t v) noexcept; // -32768 gives 32767
int32_t decremented(int32_t v) noexcept; // -2147483648 gives 2147483647

} // namespace brindle::math
