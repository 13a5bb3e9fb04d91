// The similarity score, computed run by run.
//
// For a position i of a, let c = a[i] and p the length of the rest of a's
// run of c from i (a[i + p] is not c, or is the end of a). Every run the
// definition finds starts at a c of b and takes the rest q of b's run of c
// from there:
//   - q > p: the run is p long (a stops agreeing first), and the next
//     search starts at once p further on, still inside b's run;
//   - q < p: the run is q long, and the search goes on after b's run;
//   - q = p: both runs end together, and the run goes on as far as the texts
//     after them agree.
// So a run of b of length L, entered q before its end, gives (q - 1) / p
// pieces of length p and a last piece of the rest, all known at once; only
// the case q = p reads further. A run starts at position i of b (the extra
// bonus) only where a piece starts there.
//
// When p is longer than every run of c in b, each of those runs is one piece
// of its own length: the result for i is then the same for every such i but
// for that extra bonus, which the run of b starting at i gives. Those sums
// are made once per character.
#include "strings/similarity.h"

#include "common/ascii.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <vector>

namespace brindle::strings {

namespace {

using brindle::common::ascii_lower;
using Pos = uint32_t; // a string's length fits 32 bits

unsigned char lower_at(std::string_view s, size_t i) { return ascii_lower(static_cast<unsigned char>(s[i])); }

// The length factor, by the length of a (3 for 30 characters and more).
constexpr std::array<int, 30> kLengthFactor = {20, 15, 13, 11, 10, 9, 8, 8, 7, 7, 7, 6, 6, 6, 6,
                                              6,  5,  5,  5,  5,  5, 4, 4, 4, 4, 4, 4, 4, 4, 4};

struct Run {
    Pos start, length;
    size_t end() const { return static_cast<size_t>(start) + length; }
};

// b's runs, grouped by character (only the characters that occur in a),
// each group in text order, with the sums the long runs of a need.
class RunsOfB {
  public:
    RunsOfB(std::string_view a, std::string_view b) {
        std::array<bool, 256> wanted{};
        for (size_t i = 0; i < a.size(); ++i)
            wanted[lower_at(a, i)] = true;
        std::array<size_t, 257> first{};
        for_each_run(b, [&](unsigned char c, size_t, size_t) {
            if (wanted[c])
                ++first[c + 1u];
        });
        for (size_t c = 0; c < 256; ++c)
            first[c + 1] += first[c];
        first_ = first;
        runs_.resize(first[256]);
        std::array<size_t, 256> next{};
        std::copy(first.begin(), first.begin() + 256, next.begin());
        for_each_run(b, [&](unsigned char c, size_t start, size_t length) {
            if (!wanted[c])
                return;
            runs_[next[c]++] = Run{static_cast<Pos>(start), static_cast<Pos>(length)};
            Sums &s = sums_[c];
            s.length += static_cast<int64_t>(length);
            s.longest = std::max(s.longest, length);
            s.last_end = start + length;
        });
        for (size_t c = 0; c < 256; ++c) {
            Sums &s = sums_[c];
            const int64_t count = static_cast<int64_t>(first[c + 1] - first[c]);
            // One piece per run, and a last search that fails unless the
            // last run ends b.
            s.bonus = 3 * s.length + 3 * count + (count == 0 || s.last_end != b.size() ? 3 : 0);
        }
        diagonal_ = first_;
    }

    const Run *begin(unsigned char c) const { return runs_.data() + first_[c]; }
    const Run *end(unsigned char c) const { return runs_.data() + first_[c + 1u]; }
    size_t longest(unsigned char c) const { return sums_[c].longest; }
    int64_t bonus_of_short_runs(unsigned char c) const { return sums_[c].bonus; }

    // The length of the run of c in b that starts at i, or 0. Successive
    // calls must not go back in i.
    size_t starting_at(unsigned char c, size_t i) {
        size_t &k = diagonal_[c];
        while (k < first_[c + 1u] && runs_[k].start < i)
            ++k;
        return k < first_[c + 1u] && runs_[k].start == i ? runs_[k].length : 0;
    }

  private:
    template <class Visit> static void for_each_run(std::string_view s, Visit visit) {
        size_t i = 0;
        while (i < s.size()) {
            const unsigned char c = lower_at(s, i);
            size_t j = i + 1;
            while (j < s.size() && lower_at(s, j) == c)
                ++j;
            visit(c, i, j - i);
            i = j;
        }
    }

    struct Sums {
        int64_t length = 0; // of all the runs of the character
        size_t longest = 0;
        size_t last_end = 0;
        int64_t bonus = 0; // what those runs give a position whose run is longer
    };
    std::vector<Run> runs_;
    std::array<size_t, 257> first_{};
    std::array<Sums, 256> sums_{};
    std::array<size_t, 257> diagonal_{};
};

// How far a from ia and b from jb agree.
size_t agreement(std::string_view a, size_t ia, std::string_view b, size_t jb) {
    size_t n = 0;
    while (ia + n < a.size() && jb + n < b.size() && lower_at(a, ia + n) == lower_at(b, jb + n))
        ++n;
    return n;
}

struct Step {
    int64_t bonus = 0;
    int64_t longest = 0;
};

// The bonus position i of a adds, and its longest run, by the definition's
// search through b; p is the rest of a's run of c from i.
Step search(std::string_view a, std::string_view b, size_t i, size_t p, const Run *first, const Run *last) {
    Step step;
    size_t j = 0;
    const Run *r = first;
    while (j < b.size()) {
        while (r != last && r->end() <= j)
            ++r;
        if (r == last) {
            step.bonus += 3; // the search finds nothing
            break;
        }
        const size_t from = std::max<size_t>(r->start, j);
        const size_t q = r->end() - from;
        const size_t pieces = (q - 1) / p; // each p long, with more of b's run after it
        if (pieces > 0) {
            step.bonus += static_cast<int64_t>(pieces) * (3 * static_cast<int64_t>(p) + 3);
            step.longest = std::max(step.longest, static_cast<int64_t>(p));
            if (i >= from && (i - from) % p == 0 && (i - from) / p < pieces)
                step.bonus += static_cast<int64_t>(p);
        }
        const size_t at = from + pieces * p;
        const size_t rest = r->end() - at; // 1 .. p
        const size_t run = rest < p ? rest : p + agreement(a, i + p, b, r->end());
        step.bonus += 3 * static_cast<int64_t>(run) + 3;
        step.longest = std::max(step.longest, static_cast<int64_t>(run));
        if (at == i)
            step.bonus += static_cast<int64_t>(run);
        j = at + run;
    }
    return step;
}

} // namespace

int16_t similarity(std::string_view a, std::string_view b) {
    if (a.empty() || b.empty())
        return 0;
    constexpr size_t kMax = std::numeric_limits<Pos>::max() - 1;
    if (a.size() > kMax || b.size() > kMax)
        return 0;
    const int64_t la = static_cast<int64_t>(a.size()), lb = static_cast<int64_t>(b.size());
    RunsOfB runs(a, b);
    int64_t s = 0, bonus = 0;
    size_t i = 0;
    while (i < a.size()) {
        const unsigned char c = lower_at(a, i);
        size_t run_end = i + 1;
        while (run_end < a.size() && lower_at(a, run_end) == c)
            ++run_end;
        for (; i < run_end; ++i) {
            const size_t p = run_end - i;
            Step step;
            if (p > runs.longest(c)) {
                step.bonus = runs.bonus_of_short_runs(c) + static_cast<int64_t>(runs.starting_at(c, i));
                step.longest = static_cast<int64_t>(runs.longest(c));
            } else {
                step = search(a, b, i, p, runs.begin(c), runs.end(c));
            }
            bonus += step.bonus;
            s = (s + 2 * (bonus + step.longest) + 2) / (la + 1);
        }
    }
    const int64_t lmax = std::max(la, lb), lmin = std::min(la, lb);
    const int64_t t = la < 30 ? kLengthFactor[static_cast<size_t>(la)] : 3;
    const int64_t divisor = t * lmax / 10 + 2 * (lmax - lmin) / lmax;
    if (divisor == 0) // cannot happen (t x lmax >= 10); kept as a guard
        return 0;
    return static_cast<int16_t>(static_cast<uint16_t>((100 * s / divisor) & 0xFFFF));
}

} // namespace brindle::strings
