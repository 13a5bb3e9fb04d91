#include "files/file_text_search.h"

#include "common/ascii.h"
#include "files/text_file_codes.h"
#include "streams/stream.h"

#include <memory>
#include <string>

namespace brindle::files {

namespace {
constexpr size_t kLineBuffer = 2560;
} // namespace

int32_t search_text_file(std::string_view path, std::string_view text, bool exact, bool first_only) {
    if (path.empty() || text.empty())
        return 0;
    std::unique_ptr<streams::Stream> s = streams::Stream::open(path, "r");
    if (!s)
        return kTextSourceNotOpened;
    std::string needle(text);
    if (!exact)
        for (char &c : needle)
            c = common::ascii_lower(c);
    std::string line;
    line.reserve(kLineBuffer);
    int64_t count = 0;
    for (;;) {
        line.clear();
        if (!s->get_line(&line, kLineBuffer))
            break;
        // The line is text: a zero byte ends it.
        if (const size_t zero = line.find('\0'); zero != std::string::npos)
            line.resize(zero);
        if (line.size() < needle.size())
            continue;
        if (!exact)
            for (char &c : line)
                c = common::ascii_lower(c);
        for (size_t at = line.find(needle); at != std::string::npos; at = line.find(needle, at + needle.size())) {
            ++count;
            if (first_only)
                return 1;
        }
    }
    if (s->has_error())
        return kTextReadError;
    return long_count(count);
}

} // namespace brindle::files
