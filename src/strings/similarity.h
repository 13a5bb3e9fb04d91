// The similarity score of two words, behind cStrMatch.
#pragma once

#include <cstdint>
#include <string_view>

namespace brindle::strings {

// How alike a and b are, ignoring the case of A-Z; 0 when either is empty.
// The score is defined step by step. For each position i of a, in order, b
// is searched from its start for a[i]; every place found starts a run, the
// longest stretch over which a from i and b from that place agree, and the
// search goes on where the run stopped. Each run adds 3 x its length + 3 to
// a bonus that is never reset, and its length once more when it starts at
// position i of b; the search that finally finds nothing adds 3 (none when
// the last run ends at the end of b). Then, with the longest run of i,
//   s = (s + 2 x (bonus + longest run) + 2) / (|a| + 1)
// and the score is 100 s / (t |longer| / 10 + 2 (|longer| - |shorter|) / |longer|),
// where t comes from the length of a (20 15 13 11 10 9 8 8 7 7 7 6 6 6 6 6
// 5 5 5 5 5 and then 4, for lengths 0 to 29; 3 from 30 on). Every division
// truncates; the result is the low 16 bits of the score.
//
// Cost: each run of equal characters of b counts as one step of a search,
// its pieces and bonus computed at once, and the positions of a long run of
// a share one result, so repetitive words cost time linear in their lengths;
// in general the cost grows with |a| x |b|, as the definition does. Memory:
// 8 bytes for each run of b whose character occurs in a.
// Words longer than 4 GiB - 1 bytes (more than a string holds) give 0.
int16_t similarity(std::string_view a, std::string_view b);

} // namespace brindle::strings
