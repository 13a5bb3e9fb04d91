// The library's own autokey stream cipher. Self-inverse: the same call with
// the original key turns ciphertext back into plaintext. It obscures data;
// it is not cryptographically strong.
#pragma once

#include <cstdint>
#include <span>

namespace brindle::crypto {

// Runs the stream over `data` in place, with the position starting at 0.
// For each byte, with K the key bytes (L of them, not 0) and p the position:
//   t = (p * K[0]) mod 256;  b ^= K[p] ^ t;
//   K[p] += (p < L-1 ? K[p+1] : K[0]) mod 256, and 1 where that makes 0;
//   p = p + 1, back to 0 at L.
// The key bytes are changed in place and keep their new values.
void autokey_crypt(std::span<uint8_t> data, std::span<uint8_t> key) noexcept;

} // namespace brindle::crypto
