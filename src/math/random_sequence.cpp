#include "math/random_sequence.h"

#include "platform/clock.h"
#include "runtime/crt_rand.h"

#include <cmath>

namespace brindle::math {

namespace {

constexpr double kE = 2.718281828459045;
constexpr double kOneOverPi = 0.3183098861837907;

// The generator's state, shared by the whole process.
double g_last = 0.0;
uint32_t g_x = 0;
uint32_t g_y = 0;

uint32_t magnitude(int32_t v) { return v < 0 ? 0u - static_cast<uint32_t>(v) : static_cast<uint32_t>(v); }

} // namespace

int32_t random_integer_stage(int32_t a, int32_t b) noexcept {
    if (a <= 0 && b <= 0) {
        g_x = magnitude(a) | 1u;
        g_y = (magnitude(b) & 0x7FEu) | 1u;
    }
    const uint32_t t = g_y ^ (g_y >> 15);
    g_y = t ^ (t << 17);
    g_x *= 69069u;
    return static_cast<int32_t>(g_x ^ g_y);
}

double random_next(int32_t s) noexcept {
    if (s < 0)
        g_last = static_cast<double>(platform::calendar_time());
    else if (s >= 1)
        g_last = static_cast<double>(s) * kE;
    const double n = random_integer_stage(0, 0);
    // Separate statements: each operation is rounded to double on its own,
    // never fused into a multiply-add.
    const double scaled = n * kOneOverPi;
    const double product = scaled * g_last;
    const double x = product + kE;
    double whole;
    g_last = std::modf(x, &whole);
    return g_last;
}

void random_seed(int32_t seed) noexcept {
    runtime::crt_srand(static_cast<uint32_t>(platform::calendar_time()));
    const int first = runtime::crt_rand();
    const int second = runtime::crt_rand();
    random_integer_stage(-first, -second);
    random_next(seed);
}

double random_state() noexcept { return g_last; }

void set_random_state(double g) noexcept { g_last = g; }

} // namespace brindle::math
