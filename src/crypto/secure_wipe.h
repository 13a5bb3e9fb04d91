// A wipe of secret bytes (keys, key schedules, plaintext buffers) that the
// optimiser may not drop even when the memory is never read again.
#pragma once

#include <cstddef>

namespace brindle::crypto {

// Sets the n bytes at p to zero through volatile stores followed by a
// compiler barrier. A null p or n == 0 does nothing.
void secure_wipe(void* p, std::size_t n) noexcept;

} // namespace brindle::crypto
