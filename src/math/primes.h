// Primality of a Long by trial division.
#pragma once

#include <cstdint>

namespace brindle::math {

// True when n is prime. Numbers below 2 are not; 2, 3, 5 and 7 are; other
// multiples of 2 or 3 are not; the rest below 25 are; above that the
// divisors 6j - 1 and 6j + 1 are tried while their square is at most n.
bool is_prime(int32_t n) noexcept;

} // namespace brindle::math
