// Random text for the engine tests' comparisons with plain references.
#pragma once

#include <random>
#include <string>

namespace brindle::test {

// Up to max_len bytes drawn from alphabet (a small alphabet makes repeats and
// matches likely).
inline std::string random_string(std::mt19937 &rng, const char *alphabet, size_t max_len) {
    const std::string a(alphabet);
    std::string s(rng() % (max_len + 1), ' ');
    for (char &c : s)
        c = a[rng() % a.size()];
    return s;
}

} // namespace brindle::test
