// String arguments as byte views.
//
// VB passes a String either by reference (a pointer to its handle) or by
// value (the handle itself, a pointer to the first byte). A null handle, or a
// null reference, reads as the empty string. Each export reads its text in
// one of two ways, and which one is part of its behaviour:
//
//   counted          exactly SysStringByteLen bytes; zero bytes are ordinary
//   zero-terminated  up to the first zero byte, as strlen would see it
//
// The view never owns the bytes: they belong to the caller and stay valid
// for the duration of the call.
#pragma once

#include "platform/ole.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace brindle::frame {

class StrArg {
  public:
    // The string a by-reference argument points at.
    static StrArg by_ref(BSTR *ref) noexcept { return StrArg(ref == nullptr ? nullptr : *ref); }
    // A by-value argument.
    static StrArg by_val(BSTR handle) noexcept { return StrArg(handle); }

    // Counted reading.
    size_t size() const noexcept { return size_; }
    bool empty() const noexcept { return size_ == 0; }
    const char *data() const noexcept { return data_; }
    std::string_view bytes() const noexcept { return {data_, size_}; }
    // The first byte, where a separator or filler "character" is a string;
    // call only on a non-empty argument.
    char first() const noexcept { return data_[0]; }
    // The first byte, or `fallback` for an empty argument.
    char first_or(char fallback) const noexcept { return size_ == 0 ? fallback : data_[0]; }

    // Zero-terminated reading: the bytes before the first zero.
    std::string_view text() const noexcept;

    // The caller's own handle, for the results that hand it back.
    BSTR handle() const noexcept { return handle_; }

    // The caller's bytes for an in-place edit: length never changes. Null
    // for a null handle, which has no bytes of the caller's to edit (the ""
    // that it reads as is read-only).
    char *writable() const noexcept { return handle_ == nullptr ? nullptr : const_cast<char *>(data_); }

  private:
    explicit StrArg(BSTR handle) noexcept;

    BSTR handle_;
    const char *data_;
    size_t size_;
};

// Exchanges the strings two by-reference arguments hold: the handles trade
// places, no byte is copied and nothing is allocated or freed. A null
// reference leaves both alone.
inline void swap_string_refs(BSTR *a, BSTR *b) noexcept {
    if (a == nullptr || b == nullptr)
        return;
    BSTR held = *a;
    *a = *b;
    *b = held;
}

} // namespace brindle::frame
