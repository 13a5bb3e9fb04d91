// The stream's line, byte and block readers on any file content, in text
// and binary mode and with any line-buffer size: the pieces put together
// are the file as the runtime's text mode reads it (CR LF as LF, the data
// ending at a Ctrl-Z), no piece passes the buffer or holds a line feed but
// at its end, and the position at the end is where the data ended.
// Layout of an input: one byte of line-buffer size, one byte of choices
// (bit 0 binary, bit 1 mix single bytes and blocks in), then the file.
#include "fuzz_target.h"
#include "platform/file_info.h"
#include "streams/stream.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>

using brindle::streams::Stream;

namespace {

std::string text_mode(const std::string &raw) {
    const std::string data = raw.substr(0, raw.find('\x1a'));
    std::string out;
    for (size_t i = 0; i < data.size(); ++i)
        if (!(data[i] == '\r' && i + 1 < data.size() && data[i + 1] == '\n'))
            out.push_back(data[i]);
    return out;
}

std::string scratch_name() {
    static const std::string name =
        (std::filesystem::temp_directory_path() / ("brindle-stream-fuzz-" + std::to_string(brindle::platform::process_id()))).string();
    return name;
}

} // namespace

BRINDLE_FUZZ_TARGET(stream_lines) {
    if (size < 2)
        return 0;
    const size_t max = 2 + data[0]; // room for one byte at least
    const bool binary = (data[1] & 1) != 0, mixed = (data[1] & 2) != 0;
    const std::string raw(reinterpret_cast<const char *>(data + 2), size - 2);
    const std::string path = scratch_name();
    {
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out.write(raw.data(), static_cast<std::streamsize>(raw.size()));
    }
    auto s = Stream::open(path, binary ? "rb" : "r");
    FUZZ_CHECK(s != nullptr);
    std::string all, piece;
    for (unsigned turn = 0;; ++turn) {
        if (mixed && turn % 3 == 1) {
            const int c = s->get_char();
            if (c == brindle::streams::kEof)
                break;
            all.push_back(static_cast<char>(c));
            continue;
        }
        if (mixed && turn % 3 == 2) {
            char block[7];
            const size_t n = s->read(block, sizeof block);
            all.append(block, n);
            if (n < sizeof block)
                break;
            continue;
        }
        piece.clear();
        if (!s->get_line(&piece, max))
            break;
        FUZZ_CHECK(piece.size() <= max - 1);
        FUZZ_CHECK(!piece.empty());
        const size_t lf = piece.find('\n');
        FUZZ_CHECK(lf == std::string::npos || lf == piece.size() - 1);
        all += piece;
    }
    FUZZ_CHECK(!s->has_error());
    FUZZ_CHECK(all == (binary ? raw : text_mode(raw)));
    const size_t end = binary ? raw.size() : std::min(raw.size(), raw.find('\x1a'));
    FUZZ_CHECK(s->tell() == static_cast<int64_t>(end));
    FUZZ_CHECK(s->at_eof());
    s.reset();
    std::filesystem::remove(path);
    return 0;
}
