#include "streams/line_index.h"

#include <climits>
#include <string>

namespace brindle::streams {

namespace {
constexpr size_t kLineBuffer = 16384;
} // namespace

int32_t index_lines(Stream &s, size_t capacity, const std::function<void(int32_t, int32_t)> &store) {
    store(1, 0);
    std::string piece;
    piece.reserve(kLineBuffer);
    int64_t count = 0;
    for (;;) {
        piece.clear();
        if (!s.get_line(&piece, kLineBuffer))
            break;
        ++count;
        if (static_cast<uint64_t>(count) > capacity || count >= INT32_MAX)
            return static_cast<int32_t>(count);
        const int64_t at = s.tell();
        if (at < 0 || at > INT32_MAX)
            return kIndexReadError;
        store(static_cast<int32_t>(count + 1), static_cast<int32_t>(at));
    }
    return s.has_error() ? kIndexReadError : static_cast<int32_t>(count);
}

} // namespace brindle::streams
