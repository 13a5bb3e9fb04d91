// The similarity score against a direct transcription of its definition,
// which takes |a| x |b| steps, on random and repetitive words; and long words
// against closed forms of the definition (checked against the transcription
// on short words first). The pinned scores are in the pattern export tests.
#include "strings/similarity.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <utility>

using brindle::strings::similarity;

namespace {

char fold(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

struct PerPosition {
    int64_t bonus = 0;   // what position i adds to the bonus
    int64_t longest = 0; // its longest run
};

// The score from what each position adds: s and the final scaling, as the
// definition gives them.
template <class Position> int16_t score(size_t la, size_t lb, Position position) {
    if (la == 0 || lb == 0)
        return 0;
    static const int factor[30] = {20, 15, 13, 11, 10, 9, 8, 8, 7, 7, 7, 6, 6, 6, 6,
                                   6,  5,  5,  5,  5,  5, 4, 4, 4, 4, 4, 4, 4, 4, 4};
    const int64_t na = static_cast<int64_t>(la), nb = static_cast<int64_t>(lb);
    int64_t s = 0, bonus = 0;
    for (size_t i = 0; i < la; ++i) {
        const PerPosition p = position(i);
        bonus += p.bonus;
        s = (s + 2 * (bonus + p.longest) + 2) / (na + 1);
    }
    const int64_t lmax = std::max(na, nb), lmin = std::min(na, nb);
    const int64_t t = la < 30 ? factor[la] : 3;
    return static_cast<int16_t>(static_cast<uint16_t>((100 * s / (t * lmax / 10 + 2 * (lmax - lmin) / lmax)) & 0xFFFF));
}

// The definition, character by character: search b for a[i] from the start;
// each find starts a run that is followed as far as the words agree, and the
// search resumes where the run stopped.
int16_t reference(const std::string &a, const std::string &b) {
    return score(a.size(), b.size(), [&](size_t i) {
        PerPosition p;
        size_t j = 0;
        while (j < b.size()) {
            while (j < b.size() && fold(b[j]) != fold(a[i]))
                ++j;
            int64_t run = 0;
            for (size_t ia = i; ia < a.size() && j < b.size() && fold(a[ia]) == fold(b[j]); ++ia, ++j) {
                if (ia == j)
                    ++p.bonus;
                ++run;
            }
            p.bonus += 3 * run + 3;
            p.longest = std::max(p.longest, run);
        }
        return p;
    });
}

// a and b both n copies of one letter: position i has p = n - i of it left,
// so b splits into (n - 1) / p pieces of p and a last one of the rest; every
// piece adds 3 x its length + 3, the piece at i adds p more when p divides n,
// and the last piece ends b, so no search fails.
int16_t same_letter(size_t n) {
    return score(n, n, [&](size_t i) {
        const int64_t p = static_cast<int64_t>(n - i), len = static_cast<int64_t>(n);
        const int64_t pieces = (len - 1) / p + 1;
        return PerPosition{3 * len + 3 * pieces + (len % p == 0 ? p : 0), p};
    });
}

// No character in common: every search fails at once.
int16_t nothing_shared(size_t la, size_t lb) {
    return score(la, lb, [](size_t) { return PerPosition{3, 0}; });
}

// a n copies of q, b n - 1 copies of x and then one q: every position finds
// that q, a run of 1 ending b; the last position finds it at its own place.
int16_t one_at_the_end(size_t n) {
    return score(n, n, [&](size_t i) { return PerPosition{i + 1 == n ? 7 : 6, 1}; });
}

// A word of runs of random lengths (1..max_run) of letters from `letters`,
// each letter in either case.
std::string runs_word(std::mt19937 &rng, const std::string &letters, size_t length, size_t max_run) {
    std::string w;
    while (w.size() < length) {
        const char c = letters[rng() % letters.size()];
        const size_t n = std::min<size_t>(1 + rng() % max_run, length - w.size());
        for (size_t k = 0; k < n; ++k)
            w += (rng() % 4 == 0 && c >= 'a' && c <= 'z') ? static_cast<char>(c - 32) : c;
    }
    return w;
}

TEST(SimilarityEngine, AgreesWithTheDefinitionOnRandomWords) {
    std::mt19937 rng(15);
    const std::string alphabets[] = {"a", "ab", "abc", "abcd", std::string("a\xff\x80z", 4)};
    for (int round = 0; round < 20000; ++round) {
        const std::string &letters = alphabets[rng() % 5];
        const std::string a = runs_word(rng, letters, rng() % 40, 1 + rng() % 6);
        const std::string b = runs_word(rng, letters, rng() % 40, 1 + rng() % 6);
        ASSERT_EQ(similarity(a, b), reference(a, b)) << '"' << a << "\" / \"" << b << '"';
    }
    // Any bytes at all, so that hardly any runs form.
    for (int round = 0; round < 2000; ++round) {
        std::string a(rng() % 60, '\0'), b(rng() % 60, '\0');
        for (char &c : a)
            c = static_cast<char>(rng() % 256);
        for (char &c : b)
            c = static_cast<char>(rng() % 256);
        ASSERT_EQ(similarity(a, b), reference(a, b));
    }
}

TEST(SimilarityEngine, AgreesWithTheDefinitionOnRepetitiveWords) {
    std::mt19937 rng(1515);
    // Long runs on both sides, and runs of a far longer than those of b and
    // the other way round.
    for (int round = 0; round < 400; ++round) {
        const std::string a = runs_word(rng, "xy", 1 + rng() % 400, 1 + rng() % 80);
        const std::string b = runs_word(rng, "xyz", 1 + rng() % 400, 1 + rng() % 80);
        ASSERT_EQ(similarity(a, b), reference(a, b)) << a.size() << " / " << b.size();
        ASSERT_EQ(similarity(b, a), reference(b, a)) << b.size() << " / " << a.size();
    }
    // Equal runs side by side, where a run goes on past the end of both runs
    // (q^k x^k repeated, against itself and shifted).
    for (size_t k = 1; k <= 12; ++k) {
        std::string w;
        while (w.size() < 240)
            w += std::string(k, 'q') + std::string(k, 'x');
        ASSERT_EQ(similarity(w, w), reference(w, w)) << k;
        ASSERT_EQ(similarity(w, w.substr(k / 2 + 1)), reference(w, w.substr(k / 2 + 1))) << k;
        ASSERT_EQ(similarity(w.substr(3), w), reference(w.substr(3), w)) << k;
    }
    for (size_t n = 1; n <= 64; ++n)
        for (size_t m = 1; m <= 64; ++m)
            ASSERT_EQ(similarity(std::string(n, 'q'), std::string(m, 'Q')),
                      reference(std::string(n, 'q'), std::string(m, 'q')))
                << n << " / " << m;
    // A long run of a against a word with short runs of its letter.
    std::string b;
    for (int k = 0; k < 300; ++k)
        b += static_cast<char>("qqab"[rng() % 4]);
    const std::string a(100000, 'q');
    EXPECT_EQ(similarity(a, b), reference(a, b));
}

// Words of a million characters: linear for repetitive words, so these end
// at once (a search character by character would not end within the run).
TEST(SimilarityEngine, LongRepetitiveWords) {
    for (size_t n = 1; n <= 300; ++n) { // the closed forms, against the definition
        ASSERT_EQ(same_letter(n), reference(std::string(n, 'q'), std::string(n, 'q'))) << n;
        ASSERT_EQ(nothing_shared(n, 301 - n), reference(std::string(n, 'q'), std::string(301 - n, 'x'))) << n;
        ASSERT_EQ(one_at_the_end(n), reference(std::string(n, 'q'), std::string(n - 1, 'x') + "q")) << n;
    }
    const size_t n = 1000000;
    EXPECT_EQ(similarity(std::string(n, 'q'), std::string(n, 'Q')), same_letter(n));
    EXPECT_EQ(similarity(std::string(n, 'q'), std::string(n, 'x')), nothing_shared(n, n));
    EXPECT_EQ(similarity(std::string(n, 'q'), std::string(n - 1, 'x') + "q"), one_at_the_end(n));
}

} // namespace
