#include "strings/capitals.h"

#include "common/ascii.h"

namespace brindle::strings {

std::string capitalise_words(std::string_view text) {
    std::string out(text);
    char before = ' '; // the first byte counts as following a space
    for (char &c : out) {
        const char original = c;
        if (before == ' ')
            c = common::ascii_upper(c);
        before = original;
    }
    return out;
}

} // namespace brindle::strings
