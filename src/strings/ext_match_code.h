// The result codes of the extended pattern match as the exports report them.
#pragma once

#include <cstdint>
#include <string_view>

namespace brindle::strings {

// 1 when pattern holds none of "*?[\" (it is not matched); otherwise the
// extended matcher's result (wildcard_ext.h): -1 for a match, 11..14 and 17
// for why the text did not match, and for a faulty pattern the checker's
// fault code 0, 2..5 or 7, any other fault reported as 6. An unknown result
// of the matcher gives 16.
int32_t ext_match_code(std::string_view text, std::string_view pattern, bool case_sensitive);

} // namespace brindle::strings
