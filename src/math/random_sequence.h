// The library's random sequence: a chaotic map on doubles behind a small
// integer stage.
//
// State (process-wide, unlocked: VB callers are single-threaded): the last
// value G (0.0 at load) and two 32-bit words X and Y (0 at load).
//
// Integer stage, given seeds (a, b): when a <= 0 and b <= 0, X := |a| OR 1
// and Y := (|b| AND 0x7FE) OR 1 first. Then t := Y XOR (Y >> 15),
// Y := t XOR (t << 17), X := X * 69069 (all modulo 2^32), and the output is
// X XOR Y as a signed 32-bit number.
//
// Next value, given s: s < 0 sets G to the current time in seconds, s >= 1
// sets G := s * e, s = 0 keeps G. Then N is drawn from the integer stage with
// seeds (0, 0) - which resets it, so N is always 200140 - and
// G := frac(N * 0.3183098861837907 * G + e), the product and sum rounded to
// double in that order and the fraction keeping the sign (modf). Pure IEEE
// double arithmetic, so every platform gives the same sequence.
#pragma once

#include <cstdint>

namespace brindle::math {

// The integer stage with seeds (a, b).
int32_t random_integer_stage(int32_t a, int32_t b) noexcept;

// Performs the next-value step with s and returns the new G.
double random_next(int32_t s) noexcept;

// Seeds: reseeds the C runtime's generator from the clock, passes the
// negated values of two of its draws to the integer stage, then performs the
// next-value step with `seed` once and discards the value.
void random_seed(int32_t seed) noexcept;

// The current G, and a way to set it (for tests that start from a known state).
double random_state() noexcept;
void set_random_state(double g) noexcept;

} // namespace brindle::math
