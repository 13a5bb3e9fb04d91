// LZARI (Haruhiko Okumura, 1989): LZSS over a 4096-byte ring with binary
// search trees, its literals, match lengths and match positions sent through
// an adaptive arithmetic coder. Our parameters: longest match 80 (so 334
// symbols: 256 literals and 78 lengths of 3..80), a 15-bit coder, the ring
// starting as 4016 spaces. The stream is preceded by the original length as
// 4 bytes, least significant first.
#pragma once

#include "compress/byte_stream.h"

#include <cstdint>

namespace brindle::compress {

// Writes the 4-byte header holding `length` and, unless it is 0, the coded
// stream of everything `in` delivers. False when `in` or `out` reported an
// error (the header, or any byte of the stream, not written).
bool lzari_encode(ByteSource &in, uint32_t length, ByteSink &out);

enum class LzariDecode {
    Ok,       // the header's length in bytes was written
    NoHeader, // fewer than 4 bytes: nothing written
    Stopped,  // the input ran out long before the claimed length was reached
};

// Decodes a stream made by lzari_encode. Nothing in the format detects a
// damaged stream: its bits decode to some bytes, and at most the header's
// length of them are written. Decoding stops early once it has asked for
// 64 bytes beyond the end of the input (a valid stream never needs more than
// 2), so that a short file claiming gigabytes cannot keep it busy.
LzariDecode lzari_decode(ByteSource &in, ByteSink &out);

} // namespace brindle::compress
