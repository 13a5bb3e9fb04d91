#include "crypto/diamond2.h"

namespace brindle::crypto {

std::unique_ptr<DiamondKey> make_diamond2_key(std::span<const uint8_t> key, unsigned rounds, std::size_t block) {
    if (key.empty() || !diamond_rounds_valid(rounds, block))
        return nullptr;
    return std::make_unique<DiamondKey>(DiamondVersion::diamond2, key, rounds, block);
}

unsigned diamond2_mode_rounds(int mode) noexcept { return (mode < 1 ? mode : mode - 1) > 1 ? 8 : 15; }

} // namespace brindle::crypto
