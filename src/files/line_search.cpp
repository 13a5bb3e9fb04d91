#include "files/line_search.h"

#include "common/ascii.h"
#include "files/text_file_codes.h"
#include "streams/stream.h"
#include "strings/wildcard.h"

#include <memory>
#include <string>

namespace brindle::files {

namespace {
constexpr size_t kLineBuffer = 2560;
} // namespace

int32_t search_from_line(std::string_view path, std::string_view text, int32_t first_line, bool exact, bool pattern,
                         LineHit *hit) {
    if (path.empty() || text.empty())
        return 0;
    std::unique_ptr<streams::Stream> s = streams::Stream::open(path, "r");
    if (!s)
        return kTextSourceNotOpened;
    std::string needle(text);
    if (!exact && !pattern)
        for (char &c : needle)
            c = common::ascii_lower(c);
    std::string line;
    for (int64_t number = 1; number <= INT32_MAX; ++number) {
        line.clear();
        if (!s->get_line(&line, kLineBuffer))
            break;
        if (number < first_line)
            continue;
        if (const size_t zero = line.find('\0'); zero != std::string::npos)
            line.resize(zero); // the line is text
        if (pattern) {
            std::string_view body(line);
            if (!body.empty() && body.back() == '\n')
                body.remove_suffix(1);
            if (strings::WildcardMatch(body, needle, exact)) {
                *hit = LineHit{static_cast<int32_t>(number), 1};
                return 1;
            }
            continue;
        }
        if (!exact)
            for (char &c : line)
                c = common::ascii_lower(c);
        const size_t at = line.find(needle);
        if (at != std::string::npos) {
            *hit = LineHit{static_cast<int32_t>(number), static_cast<int32_t>(at + 1)};
            return 1;
        }
    }
    return s->has_error() ? kTextReadError : 0;
}

} // namespace brindle::files
