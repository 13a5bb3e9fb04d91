// The byte-pair containers around the coder's blocks (compress/byte_pair.h):
//   file:   the magic "KOV", then the blocks;
//   string: the magic, the payload length modulo 65536 (2 bytes, high byte
//           first), then the blocks; so a string payload is limited to
//           65535 bytes.
#pragma once

#include "platform/file.h"

#include <optional>
#include <string>
#include <string_view>

namespace brindle::compress {

// Compresses the whole of `source` into `target`; false on a read or write
// error.
bool byte_pair_compress_file(platform::File &source, platform::File &target);

// Expands a byte-pair file; false on a read or write error, a source
// without the magic, or a truncated or damaged block.
bool byte_pair_expand_file(platform::File &source, platform::File &target);

// The string container of `text` (not empty).
std::string byte_pair_pack_string(std::string_view text);

// The original of a string container; nothing when the magic or the stored
// length does not match or a block is damaged. Each block expands to at
// most 5000 bytes, which bounds the result by about 1000 times the input.
std::optional<std::string> byte_pair_unpack_string(std::string_view packed);

} // namespace brindle::compress
