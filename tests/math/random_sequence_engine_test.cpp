// The integer stage of the random sequence, which the exports only ever
// call with the seeds (0, 0): its reseeding rule and its state carried from
// call to call, against a Python transcription of the rules:
//
//   def stage(a, b, st):
//       if a <= 0 and b <= 0:
//           st['X'] = (abs(a) | 1) & 0xFFFFFFFF; st['Y'] = (abs(b) & 0x7FE) | 1
//       t = st['Y'] ^ (st['Y'] >> 15); st['Y'] = (t ^ (t << 17)) & 0xFFFFFFFF
//       st['X'] = (st['X'] * 69069) & 0xFFFFFFFF
//       r = st['X'] ^ st['Y']; return r - 2**32 if r >= 2**31 else r
#include "math/random_sequence.h"

#include <gtest/gtest.h>

#include <cstdint>

using namespace brindle::math;

TEST(RandomIntegerStage, ReseedsOnlyWhenBothSeedsAreAtMostZeroAndCarriesItsState) {
    const double kept = random_state();
    // (0, 0) resets X = Y = 1: 69069 XOR (1 XOR 1 << 17) = 200140, always.
    EXPECT_EQ(random_integer_stage(0, 0), 200140);
    EXPECT_EQ(random_integer_stage(0, 0), 200140);
    // The calls in a row, as the Python run above made them.
    EXPECT_EQ(random_integer_stage(-5, -3), 214274);          // X = 5, Y = 3
    EXPECT_EQ(random_integer_stage(1, 1), -1918742846);       // no reseed: the state goes on
    EXPECT_EQ(random_integer_stage(7, -1), 1117291286);       // one positive seed: no reseed
    EXPECT_EQ(random_integer_stage(INT32_MIN, INT32_MIN), -2147283508); // |a| = 2^31
    EXPECT_EQ(random_integer_stage(0, 5), -1672448468);
    // The next value always starts from (0, 0), so it does not depend on
    // whatever the stage held: from G = 0.25 both give frac(200140 *
    // 0.3183098861837907 * 0.25 + e), which Python gives as 0.3534370344259514.
    set_random_state(0.25);
    const double first = random_next(0);
    random_integer_stage(-12345, -678);
    set_random_state(0.25);
    EXPECT_EQ(random_next(0), first);
    EXPECT_EQ(first, 0.3534370344259514);
    set_random_state(kept);
}
