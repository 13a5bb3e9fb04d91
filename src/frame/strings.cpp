#include "frame/string_args.h"
#include "frame/string_results.h"
#include "frame/boundary.h"
#include "frame/hex_digits.h"

#include <cstring>
#include <limits>
#include <new>

namespace brindle::frame {

StrArg::StrArg(BSTR handle) noexcept
    : handle_(handle), data_(reinterpret_cast<const char *>(handle)), size_(SysStringByteLen(handle)) {
    if (data_ == nullptr)
        data_ = "";
}

std::string_view StrArg::text() const noexcept {
    const void *zero = std::memchr(data_, 0, size_);
    return {data_, zero == nullptr ? size_ : static_cast<size_t>(static_cast<const char *>(zero) - data_)};
}

BSTR empty_string() noexcept { return SysAllocStringByteLen(nullptr, 0); }

BSTR new_string(std::string_view bytes) {
    if (bytes.size() > std::numeric_limits<UINT>::max())
        throw std::bad_alloc();
    BSTR result = SysAllocStringByteLen(bytes.empty() ? nullptr : bytes.data(), static_cast<UINT>(bytes.size()));
    if (result == nullptr)
        throw std::bad_alloc();
    return result;
}

BSTR new_ztext(const char *text) { return new_string(std::string_view(text, std::strlen(text))); }

BSTR hex_string(std::string_view bytes) {
    if (bytes.empty())
        return empty_string();
    StringResult result(bytes.size() * 2);
    char *out = result.data();
    for (const char ch : bytes) {
        const auto b = static_cast<unsigned char>(ch);
        *out++ = kHexDigits[b >> 4];
        *out++ = kHexDigits[b & 15];
    }
    return result.take();
}

StringResult::StringResult(size_t length) : handle_(nullptr), size_(length) {
    if (length > std::numeric_limits<UINT>::max())
        throw std::bad_alloc();
    handle_ = SysAllocStringByteLen(nullptr, static_cast<UINT>(length));
    if (handle_ == nullptr)
        throw std::bad_alloc();
}

StringResult::~StringResult() { SysFreeString(handle_); }

BSTR StringResult::take() noexcept {
    BSTR result = handle_;
    handle_ = nullptr;
    return result;
}

} // namespace brindle::frame
