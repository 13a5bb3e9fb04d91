// String results. Every string an export returns is new, made with
// SysAllocStringByteLen, and owned by the caller - except in the listed cases
// with nothing to do, where the export hands back the very handle it
// received. The empty result is a real zero-length string, never null.
#pragma once

#include "frame/boundary.h"
#include "frame/string_args.h"

#include <cstddef>
#include <string_view>

namespace brindle::frame {

// A new string holding `bytes` (zero bytes kept). Throws std::bad_alloc when
// the system refuses, which the export's guard turns into the empty result.
BSTR new_string(std::string_view bytes);

// A result built as zero-terminated text: measured with strlen, so a zero
// byte produced inside it shortens the result.
BSTR new_ztext(const char *text);

// BSTR empty_string() is declared in frame/boundary.h.

// Each byte as two upper-case hexadecimal digits, high half first; the
// empty string for no bytes.
BSTR hex_string(std::string_view bytes);

// The "nothing to do" result: the caller's own handle, not a copy.
inline BSTR same_handle(const StrArg &arg) noexcept { return arg.handle(); }

// A string result of a known length filled in place, so large results are
// written once. Release it to the caller with take(); otherwise it is freed.
class StringResult {
  public:
    explicit StringResult(size_t length);
    ~StringResult();
    StringResult(const StringResult &) = delete;
    StringResult &operator=(const StringResult &) = delete;

    char *data() noexcept { return reinterpret_cast<char *>(handle_); }
    size_t size() const noexcept { return size_; }
    BSTR take() noexcept;

  private:
    BSTR handle_;
    size_t size_;
};

// A result as long as `bytes`, each byte through map(byte), called in
// order from the first; the empty string for no bytes.
template <class Map> BSTR map_bytes(std::string_view bytes, Map &&map) {
    if (bytes.empty())
        return empty_string();
    StringResult result(bytes.size());
    char *out = result.data();
    for (const char c : bytes)
        *out++ = static_cast<char>(map(c));
    return result.take();
}

} // namespace brindle::frame
