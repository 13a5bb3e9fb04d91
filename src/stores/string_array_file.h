// The file of a string array, a format of this library's own: the element
// count, then for each element its byte length and its bytes, the numbers
// 32-bit little-endian. Elements in the array's memory order (dimension 1
// varying fastest).
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace brindle::stores {

// Writes `count` elements, element(i) giving each, to a new file `name` (an
// old one is deleted) through a 32768-byte buffer: the file's size, or a code
// of block_file.h (-1, -2, -3, -4, -11; -32760 without memory for the
// buffer; -16 for a file that would reach 2 GB). A file not written whole
// is deleted.
int32_t save_string_array(std::string_view name, size_t count, const std::function<std::string_view(size_t)> &element);

// The elements a file's bytes hold; false (and `out` empty) when the counts
// and lengths do not fill the bytes exactly.
bool parse_string_array(std::string_view bytes, std::vector<std::string> &out);

// Reads the file `name` into `out`: its size, or -1, -2 (name), -4 (cannot
// open or read), -16 (a damaged file, or more elements than `capacity`).
int32_t load_string_array(std::string_view name, size_t capacity, std::vector<std::string> &out);

} // namespace brindle::stores
