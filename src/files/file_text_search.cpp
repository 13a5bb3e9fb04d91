// Two ways to the same count. The line-by-line reading through a text
// stream is the definition. Most files are plain text, though: no zero
// byte, no Ctrl-Z, no line near the 2,559-byte piece limit; and most
// searched texts hold no line break. Then a piece is a whole line, the
// translation of CR LF removes nothing a match could use, and the count over
// the raw bytes (matches never span a line feed) equals the count line by
// line. The quick way reads large blocks, checks these conditions as it
// goes, counts with the substring search's SSE2 filter, and hands over to
// the line reader, from the start, at the first block that breaks one.
#include "files/file_text_search.h"

#include "common/ascii.h"
#include "files/text_file_codes.h"
#include "platform/file.h"
#include "streams/stream.h"
#include "strings/str_find.h"

#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <string>

namespace brindle::files {

namespace {
constexpr size_t kLineBuffer = 2560;
constexpr size_t kMaxPiece = kLineBuffer - 1; // bytes a piece holds, its line feed included
constexpr unsigned char kCtrlZ = 26;

} // namespace

int32_t search_text_file_by_lines(std::string_view path, std::string_view text, bool exact, bool first_only) {
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

namespace {

constexpr size_t kBlock = 1 << 20;
constexpr size_t kWindow = 512;

// The quick count, or nothing when the file is not plain enough (or cannot
// be read this way): the caller then reads it line by line.
std::optional<int32_t> search_plain(std::string_view path, std::string_view text, bool exact, bool first_only) {
    if (text.size() >= kMaxPiece || text.find_first_of(std::string_view("\n\r\0\x1a", 4)) != std::string_view::npos)
        return std::nullopt;
    platform::File in = platform::File::open(path, platform::OpenMode::Read);
    if (!in.is_open())
        return std::nullopt;
    // Room for a block behind the unfinished line carried over from the last.
    std::unique_ptr<char[]> buffer(new (std::nothrow) char[kMaxPiece + kBlock]);
    if (!buffer)
        return std::nullopt;
    char *const base = buffer.get();
    size_t carried = 0;     // bytes of the unfinished line at the front
    int64_t at = 0;         // file offset of base[0]
    int64_t known_lf = -1;  // a line feed no line after it starts before (-1: the start)
    int64_t count = 0;
    for (;;) {
        const int64_t got = in.read(base + carried, kBlock);
        if (got < 0)
            return std::nullopt;
        const bool end = static_cast<size_t>(got) < kBlock; // read() retries short reads
        const char *fresh = base + carried;
        const size_t n = static_cast<size_t>(got);
        if (std::memchr(fresh, '\0', n) != nullptr || std::memchr(fresh, kCtrlZ, n) != nullptr)
            return std::nullopt;
        // Every line must fit a piece. Looking for the first line feed of
        // each window overestimates a line's length by less than a window,
        // which only sends a few long-lined files the slow way.
        for (size_t w = 0; w < n; w += kWindow) {
            const size_t span = n - w < kWindow ? n - w : kWindow;
            const auto *lf = static_cast<const char *>(std::memchr(fresh + w, '\n', span));
            if (lf == nullptr)
                continue;
            const int64_t lf_at = at + (lf - base);
            if (lf_at - known_lf > static_cast<int64_t>(kMaxPiece))
                return std::nullopt;
            known_lf = lf_at;
        }
        const size_t filled = carried + n;
        if (end && at + static_cast<int64_t>(filled) - 1 - known_lf > static_cast<int64_t>(kMaxPiece))
            return std::nullopt;
        // Whole lines only, unless the file ends here.
        size_t whole = filled;
        if (!end) {
            while (whole > 0 && base[whole - 1] != '\n')
                --whole;
            if (filled - whole > kMaxPiece)
                return std::nullopt;
        }
        const std::string_view lines(base, whole);
        for (size_t hit = strings::StrFindFrom(lines, text, 0, exact); hit != strings::kNotFound;
             hit = strings::StrFindFrom(lines, text, hit + text.size(), exact)) {
            ++count;
            if (first_only)
                return 1;
        }
        if (end)
            break;
        carried = filled - whole;
        std::memmove(base, base + whole, carried);
        at += static_cast<int64_t>(whole);
    }
    return long_count(count);
}
} // namespace

int32_t search_text_file(std::string_view path, std::string_view text, bool exact, bool first_only) {
    if (path.empty() || text.empty())
        return 0;
    if (const std::optional<int32_t> quick = search_plain(path, text, exact, first_only))
        return *quick;
    return search_text_file_by_lines(path, text, exact, first_only);
}

} // namespace brindle::files
