#include "arrays/text_search.h"

#include "common/ascii.h"

namespace brindle::arrays {

bool c_text_equal(std::string_view a, std::string_view b, bool case_sensitive) {
    a = a.substr(0, a.find('\0'));
    b = b.substr(0, b.find('\0'));
    return case_sensitive ? a == b : common::equal_no_case(a, b);
}

} // namespace brindle::arrays
