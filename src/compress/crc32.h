// The CRC-32 engine (CRC-32/ISO-HDLC, as zip and Ethernet use it: reflected
// polynomial 0xEDB88320, least-significant bit first), on zlib's tables.
// One engine serves the string, file and typed-array checksums.
//
// Two ways of starting and ending exist, and both are part of the interface:
//   plain    register starts at 0xFFFFFFFF, result is the register inverted
//   chained  register starts at the caller's value as given, result is the
//            register inverted (so -1 gives the plain value, and continuing
//            a checksum means passing the previous result inverted)
#pragma once

#include <cstddef>
#include <cstdint>

namespace brindle::compress {

// Runs `size` bytes through the register and returns the new register (no
// inversion on either side).
uint32_t crc32_update(uint32_t reg, const void *data, size_t size) noexcept;

// The same, always by the portable table-driven way (the fast path chooses
// carry-less multiplication at run time where the processor has it); for
// checking one way against the other.
uint32_t crc32_update_portable(uint32_t reg, const void *data, size_t size) noexcept;

// The standard CRC-32 of a whole buffer.
inline uint32_t crc32_plain(const void *data, size_t size) noexcept {
    return ~crc32_update(0xFFFFFFFFu, data, size);
}

// The chained form: the register starts at `start` unchanged.
inline uint32_t crc32_chained(uint32_t start, const void *data, size_t size) noexcept {
    return ~crc32_update(start, data, size);
}

} // namespace brindle::compress
