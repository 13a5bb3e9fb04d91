// Table-driven CRC-32, eight bytes a step ("slicing by 8"): table 0 is the
// classic byte table built by the bitwise rule; table k gives the effect of
// a byte followed by k zero bytes, so eight lookups retire eight bytes.
#include "compress/crc32.h"

#include <array>
#include <cstring>

namespace brindle::compress {

namespace {

using Tables = std::array<std::array<uint32_t, 256>, 8>;

constexpr Tables make_tables() {
    Tables t{};
    for (uint32_t n = 0; n < 256; ++n) {
        uint32_t c = n;
        for (int k = 0; k < 8; ++k)
            c = (c & 1u) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
        t[0][n] = c;
    }
    for (uint32_t n = 0; n < 256; ++n)
        for (size_t k = 1; k < 8; ++k)
            t[k][n] = (t[k - 1][n] >> 8) ^ t[0][t[k - 1][n] & 0xFFu];
    return t;
}

constexpr Tables kTables = make_tables();
static_assert(kTables[0][1] == 0x77073096u, "the standard CRC-32 table");

} // namespace

uint32_t crc32_update(uint32_t reg, const void *data, size_t size) noexcept {
    const auto *p = static_cast<const unsigned char *>(data);
    while (size >= 8) {
        uint32_t lo, hi;
        std::memcpy(&lo, p, 4);
        std::memcpy(&hi, p + 4, 4);
        // The byte order of the loads is little-endian on every target we build.
        lo ^= reg;
        reg = kTables[7][lo & 0xFFu] ^ kTables[6][(lo >> 8) & 0xFFu] ^ kTables[5][(lo >> 16) & 0xFFu] ^
              kTables[4][lo >> 24] ^ kTables[3][hi & 0xFFu] ^ kTables[2][(hi >> 8) & 0xFFu] ^
              kTables[1][(hi >> 16) & 0xFFu] ^ kTables[0][hi >> 24];
        p += 8;
        size -= 8;
    }
    while (size-- > 0)
        reg = (reg >> 8) ^ kTables[0][(reg ^ *p++) & 0xFFu];
    return reg;
}

} // namespace brindle::compress
