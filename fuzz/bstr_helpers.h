// Strings as a client passes them, for the targets that go through an
// export: an owned BSTR of any bytes.
#pragma once

#include "platform/ole.h"

#include <brindle/exports.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace brindle::fuzz {

class Bstr {
  public:
    explicit Bstr(std::string_view bytes)
        : b_(SysAllocStringByteLen(bytes.data(), static_cast<UINT>(bytes.size()))) {}
    // Takes over a result.
    static Bstr adopt(BSTR b) {
        Bstr s;
        s.b_ = b;
        return s;
    }
    Bstr(Bstr &&other) noexcept : b_(other.b_) { other.b_ = nullptr; }
    Bstr(const Bstr &) = delete;
    Bstr &operator=(const Bstr &) = delete;
    ~Bstr() { SysFreeString(b_); }

    BSTR *ref() { return &b_; }
    BSTR get() const { return b_; }
    bool null() const { return b_ == nullptr; }
    std::string bytes() const {
        return b_ == nullptr ? std::string() : std::string(reinterpret_cast<const char *>(b_), SysStringByteLen(b_));
    }

  private:
    Bstr() = default;
    BSTR b_ = nullptr;
};

inline std::string_view as_text(const uint8_t *data, size_t size) {
    return {reinterpret_cast<const char *>(data), size};
}

} // namespace brindle::fuzz
