// Permission lists: which addresses a server admits.
#pragma once

#include <string_view>

namespace brindle::system {

// Whether `address` is admitted by `list`. The list is a run of patterns
// separated by blanks, tabs or commas, tried from the left; the first one
// that matches decides: a plain pattern admits, one that starts with '!'
// denies. A pattern matches an address it equals (ASCII letters compared
// without regard to case); a '*' in it matches whatever rest the address
// has, so the pattern's text before the '*' must start the address and
// anything after the '*' is ignored. An address no pattern matches is
// denied; so are an empty list and an empty address. Blanks around the
// address do not count.
bool address_permitted(std::string_view address, std::string_view list) noexcept;

} // namespace brindle::system
