// The runtime's unique-name maker, the same on every platform so that the
// names a client sees do not depend on the system.
#include "platform/file.h"
#include "platform/file_info.h"

namespace brindle::platform {

bool make_unique_name(std::string *name) {
    std::string &t = *name;
    if (t.size() < 6 || t.compare(t.size() - 6, 6, "XXXXXX") != 0)
        return false;
    const size_t letter_at = t.size() - 6;
    uint32_t pid = process_id();
    for (size_t i = t.size(); i-- > letter_at + 1;) {
        t[i] = static_cast<char>('0' + pid % 10);
        pid /= 10;
    }
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        t[letter_at] = letter;
        if (!file_exists(t) && !directory_exists(t))
            return true;
    }
    t.replace(letter_at, 6, "XXXXXX");
    return false;
}

} // namespace brindle::platform
