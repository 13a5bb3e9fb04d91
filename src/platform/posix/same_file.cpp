// same_file on POSIX: one device and inode.
#include "platform/file.h"

#include <sys/stat.h>

namespace brindle::platform {

bool same_file(std::string_view a, std::string_view b) {
    const std::string na = native_path(a), nb = native_path(b);
    struct stat sa {}, sb {};
    if (na.empty() || nb.empty() || ::stat(na.c_str(), &sa) != 0 || ::stat(nb.c_str(), &sb) != 0)
        return false;
    return sa.st_dev == sb.st_dev && sa.st_ino == sb.st_ino;
}

} // namespace brindle::platform
