// CRC-32 of files, read in chunks of 32,768 bytes. Every failure (a name
// that opens nothing, a read error, a file too short) answers -1.
#pragma once

#include <cstdint>
#include <string_view>

namespace brindle::compress {

// The CRC-32 of a whole file, the register starting at all ones and the
// result inverted; `text_mode` reads it as the C runtime's text mode does
// (CR LF read as LF, Ctrl-Z ends the data). An empty file gives 0.
int32_t file_crc32(std::string_view name, bool text_mode);

// The CRC-32 of a file of at least 5 bytes (binary), the register starting
// at `start` as given, of the whole file or of all but its last 4 bytes
// (`minus4`: records that carry their own checksum at the end).
int32_t sized_file_crc32(std::string_view name, uint32_t start, bool minus4);

} // namespace brindle::compress
