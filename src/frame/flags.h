// Flags and Boolean results. VB's True is -1 (all bits set); a flag argument
// counts as true only at exactly -1 in its own width, so 1 selects the false
// branch. Boolean results are never 1.
#pragma once

#include <cstdint>

namespace brindle::frame {

// A 16-bit Integer flag: compared as unsigned, only 65535 is true.
constexpr bool flag16(int16_t value) { return static_cast<uint16_t>(value) == 0xFFFFu; }

// A 32-bit Long flag: only -1 is true.
constexpr bool flag32(int32_t value) { return value == -1; }

// A Boolean-like Integer result: -1 or 0.
constexpr int16_t vb_bool(bool value) { return value ? int16_t{-1} : int16_t{0}; }

} // namespace brindle::frame
