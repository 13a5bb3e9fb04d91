#include "runtime/crt_rand.h"

namespace brindle::runtime {

namespace {

uint32_t g_state = 1;

} // namespace

void crt_srand(uint32_t seed) noexcept { g_state = seed; }

int crt_rand() noexcept {
    g_state = g_state * 214013u + 2531011u;
    return static_cast<int>((g_state >> 16) & 0x7FFFu);
}

} // namespace brindle::runtime
