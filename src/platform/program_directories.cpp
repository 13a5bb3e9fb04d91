#include "platform/file_ops.h"

#include <cstdlib>

namespace brindle::platform {

std::vector<std::string> program_directories() {
#ifdef _WIN32
    constexpr char kSeparator = ';';
#else
    constexpr char kSeparator = ':';
#endif
    std::vector<std::string> out;
    const char *path = std::getenv("PATH");
    if (path == nullptr)
        return out;
    std::string item;
    for (const char *p = path;; ++p) {
        if (*p == kSeparator || *p == '\0') {
            if (!item.empty())
                out.push_back(item);
            item.clear();
            if (*p == '\0')
                break;
        } else {
            item.push_back(*p);
        }
    }
    return out;
}

} // namespace brindle::platform
