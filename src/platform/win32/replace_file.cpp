// The atomic replace on Windows: MoveFileEx over the target, after giving
// the replacement the target's attributes. A read-only target refuses the
// move, as it refuses any write; the library checks that itself, since not
// every system refuses it for every user.
#include "platform/replace_file.h"

#include <windows.h>

namespace brindle::platform {

bool replace_file(std::string_view replacement, std::string_view target) {
    const std::string from(replacement), to(target);
    if (from.empty() || to.empty())
        return false;
    const DWORD attributes = GetFileAttributesA(to.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0)
        return false;
    if (!MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return false;
    if (attributes != INVALID_FILE_ATTRIBUTES)
        SetFileAttributesA(to.c_str(), attributes & ~FILE_ATTRIBUTE_DIRECTORY);
    return true;
}

} // namespace brindle::platform
