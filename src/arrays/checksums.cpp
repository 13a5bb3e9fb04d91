// CRC-32 of a typed array's data: (elements of dimension 1) x (the array's
// own element size) bytes from the start of the block, in memory order. The
// five exports differ only in name: the size comes from the array.
#include "compress/crc32.h"
#include "frame/frame.h"

using namespace brindle::frame;

namespace brindle::arrays {

namespace {

// The plain CRC-32; an array the block access refuses checksums no bytes
// (the CRC of nothing, 0).
int32_t array_crc32(SAFEARRAY **array) {
    const ArrayBlock block(array);
    if (!block.ok() || block.data() == nullptr)
        return static_cast<int32_t>(compress::crc32_plain(nullptr, 0));
    size_t bytes = block.count1() * block.element_size();
    if (bytes > block.bytes())
        bytes = block.bytes();
    return static_cast<int32_t>(compress::crc32_plain(block.data(), bytes));
}

} // namespace

} // namespace brindle::arrays

using brindle::arrays::array_crc32;

BRINDLE_EXPORT(int32_t) cCrc32B(SAFEARRAY **Arr) { return guarded<int32_t>(0, [&] { return array_crc32(Arr); }); }
BRINDLE_EXPORT(int32_t) cCrc32I(SAFEARRAY **Arr) { return guarded<int32_t>(0, [&] { return array_crc32(Arr); }); }
BRINDLE_EXPORT(int32_t) cCrc32L(SAFEARRAY **Arr) { return guarded<int32_t>(0, [&] { return array_crc32(Arr); }); }
BRINDLE_EXPORT(int32_t) cCrc32S(SAFEARRAY **Arr) { return guarded<int32_t>(0, [&] { return array_crc32(Arr); }); }
BRINDLE_EXPORT(int32_t) cCrc32D(SAFEARRAY **Arr) { return guarded<int32_t>(0, [&] { return array_crc32(Arr); }); }
