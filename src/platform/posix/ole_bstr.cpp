// Counted strings (BSTR) with the Windows layout:
//
//   [ 4-byte byte count ][ bytes ... ][ 0x00 0x00 ]
//                        ^ the handle points here
//
// The count excludes the terminator. A null handle is a valid empty string
// for every reader (its lengths are 0), as on Windows.
#include <brindle/ole.h>

#include <cstdlib>
#include <cstring>
#include <limits>

namespace {

constexpr size_t kPrefix = sizeof(uint32_t);
constexpr size_t kTerminator = sizeof(OLECHAR);

uint32_t *header_of(BSTR text) {
    return reinterpret_cast<uint32_t *>(reinterpret_cast<char *>(text) - kPrefix);
}

// Makes a string of `bytes` bytes, copying from `source` when it is not null.
// Counts that would not fit the 32-bit prefix are refused with a null handle.
BSTR alloc_bytes(const void *source, size_t bytes) {
    if (bytes > std::numeric_limits<uint32_t>::max() - kPrefix - kTerminator)
        return nullptr;
    auto *block = static_cast<char *>(std::malloc(kPrefix + bytes + kTerminator));
    if (block == nullptr)
        return nullptr;
    const auto count = static_cast<uint32_t>(bytes);
    std::memcpy(block, &count, kPrefix);
    char *data = block + kPrefix;
    if (source != nullptr)
        std::memcpy(data, source, bytes);
    else
        std::memset(data, 0, bytes);
    data[bytes] = 0;
    data[bytes + 1] = 0;
    return reinterpret_cast<BSTR>(data);
}

size_t wide_length(const OLECHAR *text) {
    size_t n = 0;
    while (text[n] != 0)
        ++n;
    return n;
}

} // namespace

extern "C" {

BSTR SysAllocStringByteLen(const char *bytes, UINT length) { return alloc_bytes(bytes, length); }

BSTR SysAllocStringLen(const OLECHAR *text, UINT length) {
    return alloc_bytes(text, static_cast<size_t>(length) * sizeof(OLECHAR));
}

BSTR SysAllocString(const OLECHAR *text) {
    if (text == nullptr)
        return nullptr;
    return alloc_bytes(text, wide_length(text) * sizeof(OLECHAR));
}

void SysFreeString(BSTR text) {
    if (text != nullptr)
        std::free(header_of(text));
}

UINT SysStringByteLen(BSTR text) {
    if (text == nullptr)
        return 0;
    uint32_t count;
    std::memcpy(&count, header_of(text), kPrefix);
    return count;
}

UINT SysStringLen(BSTR text) { return SysStringByteLen(text) / sizeof(OLECHAR); }

// Replaces *target with a copy of `length` characters of text. The source may
// overlap the old string, so the copy is made before the old one is freed.
INT SysReAllocStringLen(BSTR *target, const OLECHAR *text, UINT length) {
    if (target == nullptr)
        return 0;
    BSTR fresh = SysAllocStringLen(text, length);
    if (fresh == nullptr)
        return 0;
    SysFreeString(*target);
    *target = fresh;
    return 1;
}

INT SysReAllocString(BSTR *target, const OLECHAR *text) {
    if (target == nullptr)
        return 0;
    const auto length = text == nullptr ? 0u : static_cast<UINT>(wide_length(text));
    return SysReAllocStringLen(target, text, length);
}

void *CoTaskMemAlloc(size_t size) { return std::malloc(size == 0 ? 1 : size); }

void *CoTaskMemRealloc(void *block, size_t size) { return std::realloc(block, size == 0 ? 1 : size); }

void CoTaskMemFree(void *block) { std::free(block); }

} // extern "C"
