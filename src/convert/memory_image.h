// Numbers as the bytes they occupy in memory (little-endian on every target
// the library builds for), and elements of such images inside a longer
// string. Nothing is read or written outside the given bytes.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace brindle::convert {

// The memory image of a value.
template <class T> std::string image_of(const T &value) {
    return std::string(reinterpret_cast<const char *>(&value), sizeof(T));
}

// The value whose image starts at `offset`; bytes past the end read as zero
// (an offset at or past the end gives 0).
template <class T> T value_from_image(std::string_view bytes, size_t offset = 0) {
    unsigned char raw[sizeof(T)] = {};
    if (offset < bytes.size())
        std::memcpy(raw, bytes.data() + offset, std::min(sizeof(T), bytes.size() - offset));
    T value;
    std::memcpy(&value, raw, sizeof(T));
    return value;
}

// The byte offset of element `pos` (1-based) of `element_size` bytes when it
// lies wholly inside `size` bytes; -1 otherwise (also for pos < 1).
inline int64_t element_offset(int32_t pos, size_t element_size, size_t size) {
    if (pos < 1)
        return -1;
    const uint64_t offset = static_cast<uint64_t>(pos - 1) * element_size;
    return offset + element_size <= size ? static_cast<int64_t>(offset) : -1;
}

// Element `pos` of type T in the bytes; 0 when it does not lie wholly inside.
template <class T> T element_value(std::string_view bytes, int32_t pos) {
    const int64_t offset = element_offset(pos, sizeof(T), bytes.size());
    return offset < 0 ? T{} : value_from_image<T>(bytes, static_cast<size_t>(offset));
}

// Writes element `pos` of type T into `size` bytes at `bytes`; false (and
// nothing written) when it does not lie wholly inside.
template <class T> bool write_element(char *bytes, size_t size, int32_t pos, const T &value) {
    const int64_t offset = element_offset(pos, sizeof(T), size);
    if (offset < 0)
        return false;
    std::memcpy(bytes + offset, &value, sizeof(T));
    return true;
}

} // namespace brindle::convert
