// The runtime's unique-name maker, the same on every platform so that the
// names a client sees do not depend on the system.
#pragma once

#include <string>

namespace brindle::runtime {

// A name made from a template ending in six "X" as the runtime's unique-name
// maker does: the first X becomes a letter from "a" up, the other five the
// process number, so that no file or directory of that name exists in the
// current directory. False when the template is malformed or all 26 letters
// are taken.
bool make_unique_name(std::string *name);

} // namespace brindle::runtime
