#include "strings/set_in.h"

#include "strings/byte_set.h"

#include <algorithm>

namespace brindle::strings {

std::string set_in_field(std::string_view text, std::string_view seps, int32_t n, std::string_view value,
                         bool at_end) {
    const auto count = static_cast<uint64_t>(std::count(text.begin(), text.end(), seps[0]));
    std::string copy(text);
    if (n < 1 || static_cast<uint64_t>(n) > count + 1)
        return copy;
    std::replace(copy.begin(), copy.end(), '\xFF', seps[0]);
    const ByteSet is_sep(seps);
    // Start of field n: after the (n-1)-th separator.
    size_t start = 0;
    for (int32_t field = 1; field < n; ++field) {
        while (start < copy.size() && !is_sep.has(copy[start]))
            ++start;
        if (start == copy.size())
            return copy; // cannot happen: there are enough separators
        ++start;
    }
    size_t at = start;
    if (at_end)
        while (at < copy.size() && !is_sep.has(copy[at]))
            ++at;
    copy.insert(at, value);
    return copy;
}

} // namespace brindle::strings
