// The similarity score behind cStrMatch, which works run by run, against a
// direct transcription of its definition, character by character, on words
// short enough for it; longer words only for crashes and hangs. Changing
// the case of letters never changes the score. Layout of an input: two
// bytes giving the length of the first word, the first word, the second.
#include "fuzz_target.h"
#include "strings/similarity.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

char fold(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

// For each position i of a: b is searched from its start for a[i]; each find
// starts a run, followed as far as a from i and b agree, adding 3 x its
// length + 3 (and its length again when it starts at position i of b); the
// search resumes where the run stopped, and a search that finds nothing
// adds 3. Then s = (s + 2 x (bonus + longest run of i) + 2) / (|a| + 1).
int16_t reference(std::string_view a, std::string_view b) {
    if (a.empty() || b.empty())
        return 0;
    const int64_t la = static_cast<int64_t>(a.size()), lb = static_cast<int64_t>(b.size());
    int64_t s = 0, bonus = 0;
    for (size_t i = 0; i < a.size(); ++i) {
        int64_t longest = 0;
        size_t j = 0;
        while (j < b.size()) {
            while (j < b.size() && fold(b[j]) != fold(a[i]))
                ++j;
            const bool at_i = j == i;
            int64_t run = 0;
            for (size_t ia = i; ia < a.size() && j < b.size() && fold(a[ia]) == fold(b[j]); ++ia, ++j)
                ++run;
            bonus += 3 * run + 3 + (at_i ? run : 0);
            longest = std::max(longest, run);
        }
        s = (s + 2 * (bonus + longest) + 2) / (la + 1);
    }
    static const int kFactor[30] = {20, 15, 13, 11, 10, 9, 8, 8, 7, 7, 7, 6, 6, 6, 6,
                                    6,  5,  5,  5,  5,  5, 4, 4, 4, 4, 4, 4, 4, 4, 4};
    const int64_t lmax = std::max(la, lb), lmin = std::min(la, lb);
    const int64_t t = la < 30 ? kFactor[la] : 3;
    return static_cast<int16_t>(static_cast<uint16_t>((100 * s / (t * lmax / 10 + 2 * (lmax - lmin) / lmax)) & 0xFFFF));
}

std::string flip_case(std::string_view w) {
    std::string out(w);
    for (char &c : out)
        if ((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'))
            c = static_cast<char>(c ^ 0x20);
    return out;
}

} // namespace

BRINDLE_FUZZ_TARGET(similarity) {
    if (size < 2)
        return 0;
    const size_t la = std::min<size_t>(data[0] | size_t{data[1]} << 8, size - 2);
    const std::string_view a(reinterpret_cast<const char *>(data) + 2, la);
    const std::string_view b(reinterpret_cast<const char *>(data) + 2 + la, size - 2 - la);

    const int16_t score = brindle::strings::similarity(a, b);
    if (a.size() * b.size() <= 40000)
        FUZZ_CHECK(score == reference(a, b));
    FUZZ_CHECK(brindle::strings::similarity(flip_case(a), b) == score);
    return 0;
}
