#include "crypto/secure_wipe.h"

namespace brindle::crypto {

void secure_wipe(void* p, std::size_t n) noexcept {
    if (p == nullptr) return;
    auto* v = static_cast<volatile unsigned char*>(p);
    for (std::size_t i = 0; i < n; ++i) v[i] = 0;
#if defined(__GNUC__) || defined(__clang__)
    // The memory is "used" by an opaque statement, so the stores above stay.
    __asm__ __volatile__("" : : "r"(p) : "memory");
#endif
}

} // namespace brindle::crypto
