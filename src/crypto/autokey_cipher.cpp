#include "crypto/autokey_cipher.h"

namespace brindle::crypto {

void autokey_crypt(std::span<uint8_t> data, std::span<uint8_t> key) noexcept {
    const std::size_t L = key.size();
    if (L == 0)
        return;
    std::size_t p = 0;
    for (uint8_t &b : data) {
        // The product of p's low byte and K[0], low 8 bits.
        const auto t = static_cast<uint8_t>((p & 0xFF) * key[0]);
        b = static_cast<uint8_t>(b ^ key[p] ^ t);
        auto k = static_cast<uint8_t>(key[p] + (p + 1 < L ? key[p + 1] : key[0]));
        key[p] = k == 0 ? uint8_t{1} : k;
        if (++p == L)
            p = 0;
    }
}

} // namespace brindle::crypto
