#include "runtime/unique_name.h"

#include "platform/file.h"
#include "platform/file_info.h"

namespace brindle::runtime {

using platform::directory_exists;
using platform::file_exists;
using platform::process_id;

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

} // namespace brindle::runtime
