// Token tests: whether any, or every, token of a separated list occurs in a
// text (case-sensitive byte search).
#pragma once

#include <string_view>

namespace brindle::strings {

// The list is split at `sep`; empty tokens are skipped. The last byte of
// the list always belongs to the last token, even when it is `sep` itself.
// A token is searched by its first 2,559 bytes (the width of the original
// token buffer). The list's length is taken as a 16-bit signed number: a
// list of 32,768 bytes or more is seen shortened to its length modulo
// 65,536, and as empty when that is zero or negative.
//
// any_token_in: true when some token occurs in text. all_tokens_in: true
// when no token is missing. Both are false for an empty text or list.
bool any_token_in(std::string_view text, std::string_view list, char sep);
bool all_tokens_in(std::string_view text, std::string_view list, char sep);

} // namespace brindle::strings
