// A block of memory saved to a file byte for byte and loaded back, in
// pieces of 32768 bytes and a remainder: the transfer behind huge strings
// and arrays on disk. The codes:
//   -1 empty file name        -2 the name fails the file-name syntax check
//   -3 an old file stays      -4 the file cannot be created or opened
//   -11 a 32768-byte piece, -12 the remainder cannot be written (the file is deleted)
//   -16 the file's size is not the block's (or what it holds does not fit)
//   -19 a piece, -20 the remainder cannot be read
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

namespace brindle::stores {

enum BlockFileCode : int32_t {
    kBlockEmptyName = -1,
    kBlockBadName = -2,
    kBlockCannotDelete = -3,
    kBlockCannotOpen = -4,
    kBlockPieceWriteFailed = -11,
    kBlockLastWriteFailed = -12,
    kBlockBadSize = -16,
    kBlockPieceReadFailed = -19,
    kBlockLastReadFailed = -20,
};

// kBlockEmptyName or kBlockBadName for a name the transfers refuse, else 0.
int32_t block_file_name_code(std::string_view name);

// Writes the `size` bytes at `data` to a new file `name` (an old one is
// deleted): `size`, or a code. A file that could not be written whole is
// deleted.
int32_t save_block(std::string_view name, const void *data, size_t size);

// Reads the file `name`, which must be exactly `size` bytes long, into
// `data`: `size`, or a code. When `accept_head` is given, the first
// min(size, head) bytes are read aside and shown to it first; false refuses
// the file with kBlockBadSize and leaves `data` as it was.
int32_t load_block(std::string_view name, void *data, size_t size, size_t head = 0,
                   const std::function<bool(const uint8_t *head)> &accept_head = {});

} // namespace brindle::stores
