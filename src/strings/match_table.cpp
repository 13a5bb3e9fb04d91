#include "strings/match_table.h"

#include "common/ascii.h"
#include "strings/byte_set.h"

namespace brindle::strings {

int32_t table_index(std::string_view word, std::string_view table, std::string_view seps, bool case_sensitive) {
    const ByteSet is_sep(seps);
    size_t pos = 0;
    for (int32_t k = 1; pos <= table.size(); ++k) {
        size_t end = pos;
        while (end < table.size() && !is_sep.has(table[end]))
            ++end;
        std::string_view entry = table.substr(pos, end - pos);
        if (entry.empty())
            return -1;
        while (!entry.empty() && common::is_c_space(entry.front()))
            entry.remove_prefix(1);
        while (!entry.empty() && common::is_c_space(entry.back()))
            entry.remove_suffix(1);
        if (case_sensitive ? entry == word : common::equal_no_case(entry, word))
            return k;
        if (k == INT32_MAX)
            break;
        pos = end + 1;
    }
    return -1;
}

} // namespace brindle::strings
