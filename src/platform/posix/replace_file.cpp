// The atomic replace on POSIX: rename() over the target, after giving the
// replacement the target's permission bits. A read-only target stays.
#include "platform/replace_file.h"

#include <cstdio>
#include <sys/stat.h>

namespace brindle::platform {

bool replace_file(std::string_view replacement, std::string_view target) {
    const std::string from = native_path(replacement), to = native_path(target);
    if (from.empty() || to.empty())
        return false;
    struct stat st {};
    if (::stat(to.c_str(), &st) == 0) {
        // A read-only target is not replaced, whoever asks (a rename needs
        // only the directory's permission, and root needs none).
        if ((st.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0)
            return false;
        ::chmod(from.c_str(), st.st_mode & 07777);
    }
    return std::rename(from.c_str(), to.c_str()) == 0;
}

} // namespace brindle::platform
