// The runtime's atol against strtoll clamped to a 32-bit long.
#include "runtime/crt_parse.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>

using brindle::runtime::crt_atol;

TEST(CrtAtolEngine, AgreesWithClampedStrtoll) {
    for (const char *text : {"0", "42", "  -17xyz", "\t\n+8", "2147483647", "2147483648", "-2147483648",
                             "-2147483649", "99999999999999999999", "-99999999999999999999", "", "abc",
                             "- 5", "+-5", "007", "12.9", "1e5"}) {
        const long long wide = std::strtoll(text, nullptr, 10);
        const long long clamped = std::clamp<long long>(wide, std::numeric_limits<int32_t>::min(),
                                                        std::numeric_limits<int32_t>::max());
        EXPECT_EQ(crt_atol(text), clamped) << '"' << text << '"';
    }
}
