#include "compress/zlib_strings.h"

#include <zlib.h>

#include <algorithm>

namespace brindle::compress {

bool zlib_compress(std::string_view data, size_t prefix, std::string &out) {
    const size_t n = data.size();
    uLongf room = static_cast<uLongf>(n + n / 1000 + 16); // always above compressBound(n)
    out.resize(prefix + room);
    if (::compress(reinterpret_cast<Bytef *>(out.data() + prefix), &room, reinterpret_cast<const Bytef *>(data.data()),
                 static_cast<uLong>(n)) != Z_OK)
        return false;
    out.resize(prefix + room);
    return true;
}

bool zlib_expand(std::string_view stream, uint64_t limit, std::string &out) {
    z_stream z{};
    if (inflateInit(&z) != Z_OK)
        return false;
    z.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(stream.data()));
    z.avail_in = static_cast<uInt>(stream.size());
    unsigned char dummy = 0; // a zero limit still needs somewhere to point
    uint64_t given = 0;
    int rc = Z_OK;
    for (;;) {
        if (z.avail_out == 0) {
            if (given == limit) {
                if (limit == 0 && z.next_out == nullptr) {
                    z.next_out = &dummy;
                    z.avail_out = 1;
                } else {
                    rc = Z_BUF_ERROR; // more output than the limit allows
                    break;
                }
            } else {
                const uint64_t grow = std::min<uint64_t>(limit - given, std::max<uint64_t>(out.size(), 65536));
                const size_t used = out.size();
                out.resize(used + grow);
                z.next_out = reinterpret_cast<Bytef *>(out.data()) + used;
                z.avail_out = static_cast<uInt>(grow);
                given += grow;
            }
        }
        rc = inflate(&z, Z_NO_FLUSH);
        if (rc != Z_OK)
            break;
    }
    const uint64_t produced = z.total_out;
    inflateEnd(&z);
    if (rc != Z_STREAM_END || produced > limit)
        return false;
    out.resize(static_cast<size_t>(produced));
    return true;
}

} // namespace brindle::compress
