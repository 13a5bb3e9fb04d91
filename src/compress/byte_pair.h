// The byte-pair coder (Philip Gage's 1994 byte pair encoding) on memory.
//
// Input is cut into blocks of at most 5000 bytes, a block also ending as soon
// as it holds 200 distinct byte values. In each block the most frequent pair
// of adjacent bytes is replaced, again and again, by a byte value the block
// does not use, and the block is written as its encoded pair table, its
// packed length (2 bytes, big-endian) and the packed bytes. The output is the
// published coder's byte for byte; the magic and the string header around
// the blocks belong to the callers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace brindle::compress {

inline constexpr std::string_view kBytePairMagic{"KOV", 3};
inline constexpr size_t kBytePairBlockSize = 5000;
// The most a stored block can occupy: a full pair table (at most 1 + 2 bytes
// per value plus run bytes), the length and 65535 packed bytes.
inline constexpr size_t kBytePairMaxStoredBlock = 1024 + 2 + 65535;

// Compresses the block at the front of `in` and appends it to `out`. Give at
// least kBytePairBlockSize bytes unless `input_ends` (the bytes given are all
// that remain). Returns the count of input bytes the block took and sets
// *last when this block saw the end of the input: like the published coder,
// a block that stops at its size or value limit is not the last one, even if
// the input ends right there (an empty block follows).
size_t byte_pair_compress_block(const uint8_t *in, size_t available, bool input_ends,
                                std::string &out, bool *last);

// The block sequence of a whole buffer (no magic, no header). The empty input
// gives one empty block (6 bytes).
std::string byte_pair_compress(std::string_view data);

enum class BlockStatus {
    Ok,        // one block expanded
    Truncated, // the block needs bytes beyond `available`
    Corrupt,   // the block cannot come from the coder
};

// Expands the block at the front of `in`, appending its bytes to `out`, and
// sets *consumed. Never reads outside in[0, available). A block that expands
// to more than kBytePairBlockSize bytes, uses a pair code that refers to
// itself, or whose table runs past value 255, is Corrupt: the coder never
// writes one, and the bound keeps hostile input from expanding without limit.
BlockStatus byte_pair_expand_block(const uint8_t *in, size_t available, std::string &out,
                                   size_t *consumed);

// Expands a whole block sequence (no magic, no header); false when a block is
// truncated or corrupt (out then holds the blocks expanded before it).
bool byte_pair_expand(std::string_view blocks, std::string &out);

} // namespace brindle::compress
