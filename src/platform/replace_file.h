// Rewriting a file without ever leaving it half written: the new content
// goes to a uniquely named file beside it, which then takes its place in
// one step.
#pragma once

#include "platform/file.h"

#include <string>
#include <string_view>

namespace brindle::platform {

// Creates a new, empty file in the directory of `beside` under a name no
// file has ("~brnnnnnnnn.tmp"), opened for writing; *name receives it. A
// closed File when none can be made.
File create_file_beside(std::string_view beside, std::string *name);

// Puts `replacement` in the place of `target` in one step (a reader sees
// the old file or the new, never a mixture), keeping the target's
// permissions or attributes. False, with both files as they were, when the
// target is read-only (for every user, as platform/file_ops.h says) or the
// system refuses.
bool replace_file(std::string_view replacement, std::string_view target);

} // namespace brindle::platform
