#include "math/counters.h"

namespace brindle::math {

int16_t incremented(int16_t v) noexcept { return static_cast<int16_t>(static_cast<uint16_t>(v) + 1u); }

int32_t incremented(int32_t v) noexcept { return static_cast<int32_t>(static_cast<uint32_t>(v) + 1u); }

int16_t decremented(int16_t v) noexcept { return static_cast<int16_t>(static_cast<uint16_t>(v) - 1u); }

int32_t decremented(int32_t v) noexcept { return static_cast<int32_t>(static_cast<uint32_t>(v) - 1u); }

} // namespace brindle::math
