// zlib streams in strings: zlib's one-shot compress() and a bounded
// expansion, for the string exports of the gzip family.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace brindle::compress {

// The compressed form of `data` as zlib's one-shot compress() makes it
// (default level), written after `prefix` bytes of room in `out`; false on a
// zlib error.
bool zlib_compress(std::string_view data, size_t prefix, std::string &out);

// What uncompress() into a buffer of `limit` bytes gives: the whole stream
// expanded into `out` (bytes after its end ignored), or false on any zlib
// error, including an expansion longer than `limit`. The buffer grows as
// the output arrives, so a hostile limit costs nothing until data backs it.
bool zlib_expand(std::string_view stream, uint64_t limit, std::string &out);

} // namespace brindle::compress
