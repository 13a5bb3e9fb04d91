// The register update is zlib's CRC-32, which is the same CRC (reflected
// 0xEDB88320, table driven) but pre- and post-inverts its argument:
// zlib_crc32(c) == ~update(~c). Inverting on both sides gives the bare
// register update that the chained forms need.
#include "compress/crc32.h"

#include <zlib.h>

namespace brindle::compress {

uint32_t crc32_update(uint32_t reg, const void *data, size_t size) noexcept {
    const auto *p = static_cast<const Bytef *>(data);
    uLong crc = ~reg & 0xFFFFFFFFu;
    crc = ::crc32_z(crc, p, static_cast<z_size_t>(size));
    return ~static_cast<uint32_t>(crc);
}

} // namespace brindle::compress
