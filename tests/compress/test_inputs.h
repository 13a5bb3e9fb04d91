// Deterministic inputs for the coder tests.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace brindle::test {

enum class Kind { Same, Text, Random, SmallAlphabet };

inline const char *kind_name(Kind k) {
    switch (k) {
    case Kind::Same: return "same";
    case Kind::Text: return "text";
    case Kind::Random: return "random";
    case Kind::SmallAlphabet: return "small-alphabet";
    }
    return "?";
}

// `size` bytes of the given kind, the same for the same seed.
inline std::string make_input(Kind kind, size_t size, uint32_t seed = 1) {
    std::mt19937 rng(seed);
    std::string s;
    s.reserve(size);
    static const char *const words[] = {"the ", "compress ", "of ", "and ", "block ", "pair ", "a ",
                                        "Expand ", "file\r\n", "string, ", "zero ", "table "};
    while (s.size() < size) {
        switch (kind) {
        case Kind::Same: s.push_back('x'); break;
        case Kind::Text: s += words[rng() % 12]; break;
        case Kind::Random: s.push_back(static_cast<char>(rng())); break;
        case Kind::SmallAlphabet: s.push_back(static_cast<char>('a' + rng() % 5)); break;
        }
    }
    s.resize(size);
    return s;
}

// A de Bruijn sequence of order 2 over `k` symbols starting at `base`: every
// one of the k*k pairs of adjacent bytes occurs exactly once.
inline std::string de_bruijn_pairs(int k, int base) {
    std::vector<int> a(static_cast<size_t>(k) * 2, 0), seq;
    auto db = [&](auto &&self, int t, int p) -> void {
        if (t > 2) {
            if (2 % p == 0)
                seq.insert(seq.end(), a.begin() + 1, a.begin() + p + 1);
        } else {
            a[t] = a[t - p];
            self(self, t + 1, p);
            for (int j = a[t - p] + 1; j < k; ++j) {
                a[t] = j;
                self(self, t + 1, t);
            }
        }
    };
    db(db, 1, 1);
    std::string s;
    for (int v : seq)
        s.push_back(static_cast<char>(base + v));
    s.push_back(static_cast<char>(base + seq.front()));
    return s;
}

} // namespace brindle::test
