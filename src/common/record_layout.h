// The two layouts of the records a client passes by reference. Each record
// family declares every record once per layout, with static_asserts on every
// offset and the total size, and the build takes the layout of its own word
// size:
//   - 32-bit (VB6, 32-bit VBA): each member aligned to its size but at most
//     4 bytes (#pragma pack(push, 4)); String handles take 4 bytes.
//   - 64-bit (64-bit VBA): each member aligned to its size up to 8, so the
//     8-byte members (Double, Currency, LongPtr, and String handles, which
//     take 8 bytes) to 8.
// Either way the size is rounded up to the largest member alignment.
#pragma once

#include <type_traits>

namespace brindle::common {

// True where the client is 64-bit VBA (and on 64-bit Linux, whose clients
// pass pointer-sized handles in the same places).
inline constexpr bool kRecords64 = sizeof(void *) == 8;

// The record of this build's layout.
template <class Layout32, class Layout64>
using BuildRecord = std::conditional_t<kRecords64, Layout64, Layout32>;

} // namespace brindle::common
