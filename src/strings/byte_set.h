// Membership of the bytes of a set, for the rules that take "any byte of"
// a string (separators, filters, tables).
#pragma once

#include <array>
#include <string_view>

namespace brindle::strings {

// The set of the bytes of `bytes`; repeated bytes count once. has() is one
// table look-up.
class ByteSet {
  public:
    explicit ByteSet(std::string_view bytes) noexcept {
        for (const char c : bytes)
            in_[static_cast<unsigned char>(c)] = true;
    }
    bool has(char c) const noexcept { return in_[static_cast<unsigned char>(c)]; }

  private:
    std::array<bool, 256> in_{};
};

} // namespace brindle::strings
