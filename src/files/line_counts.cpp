#include "files/line_counts.h"

#include "common/ascii.h"
#include "files/byte_count.h"
#include "files/text_file_codes.h"
#include "platform/file.h"
#include "streams/stream.h"

#include <algorithm>
#include <memory>
#include <new>
#include <string>

namespace brindle::files {

namespace {
constexpr size_t kBlock = 32768;
constexpr size_t kCountBlock = 1 << 20; // counting only: fewer system calls
} // namespace

int32_t count_carriage_returns(std::string_view path) {
    platform::File in = platform::File::open(path, platform::OpenMode::Read);
    if (!in.is_open())
        return kCountNotOpened;
    std::unique_ptr<unsigned char[]> block(new (std::nothrow) unsigned char[kCountBlock]);
    if (!block)
        return kCountNoBuffer;
    int64_t count = 0;
    for (;;) {
        const int64_t got = in.read(block.get(), kCountBlock);
        if (got < 0)
            return kCountReadError;
        if (got == 0)
            break;
        count += static_cast<int64_t>(count_byte(block.get(), static_cast<size_t>(got), '\r'));
    }
    return long_count(count);
}

int32_t count_line_pieces(std::string_view path) {
    std::unique_ptr<streams::Stream> s = streams::Stream::open(path, "r");
    if (!s)
        return kCountNotOpened;
    std::string piece;
    piece.reserve(kBlock);
    int64_t count = 0;
    for (;;) {
        piece.clear();
        if (!s->get_line(&piece, kBlock))
            break;
        ++count;
    }
    return s->has_error() ? kCountReadError : long_count(count);
}

int32_t text_statistics(std::string_view path, TextStatistics *out) {
    *out = TextStatistics{};
    std::unique_ptr<unsigned char[]> block(new (std::nothrow) unsigned char[kBlock]);
    if (!block)
        return kTextNoBuffer;
    platform::File in = platform::File::open(path, platform::OpenMode::Read);
    if (!in.is_open())
        return kTextSourceNotOpened;
    TextStatistics t;
    bool in_word = false;
    for (;;) {
        const int64_t got = in.read(block.get(), kBlock);
        if (got < 0)
            return kTextReadError;
        if (got == 0)
            break;
        t.bytes += got;
        for (int64_t i = 0; i < got; ++i) {
            const unsigned char c = block[static_cast<size_t>(i)];
            if (c == '\n') {
                ++t.lines; // a line, but no end of a word
            } else if (common::is_c_space(c)) {
                in_word = false;
            } else if (!in_word) {
                in_word = true;
                ++t.words;
            }
        }
    }
    *out = t;
    return 0;
}

} // namespace brindle::files
