// The stream exports: numbers of the handle table in, one stream operation
// under the stream's lock, the runtime's results out.
#include "frame/frame.h"
#include "streams/line_index.h"
#include "streams/stream_table.h"

#include <climits>
#include <string>

using namespace brindle::frame;
using namespace brindle::streams;
using brindle::platform::StdStream;

namespace {

constexpr int16_t kErrorFlag = -32;

// Runs op(stream) under the stream's lock, or gives `missing`.
template <class R, class Op> R with_stream(int32_t number, R missing, Op &&op) {
    std::shared_ptr<Stream> s = find_stream(number);
    if (!s)
        return missing;
    std::lock_guard<std::mutex> hold(s->lock);
    return op(*s);
}

} // namespace

BRINDLE_EXPORT(int32_t) cFopen(BSTR Path, BSTR Mode) {
    return guarded(int32_t{0}, [&] { return open_stream(StrArg::by_val(Path).text(), StrArg::by_val(Mode).text()); });
}

BRINDLE_EXPORT(int32_t) cFclose(int32_t Stream) {
    return guarded(int32_t{kEof}, [&] { return static_cast<int32_t>(close_stream(Stream)); });
}

BRINDLE_EXPORT(int32_t) cFcloseall() {
    return guarded(int32_t{0}, [&] { return close_all_streams(); });
}

BRINDLE_EXPORT(int32_t) cFflush(int32_t Stream) {
    return guarded(int32_t{kEof}, [&] { return with_stream(Stream, int32_t{kEof}, [](auto &s) { return int32_t{s.flush()}; }); });
}

BRINDLE_EXPORT(int32_t) cFflushall() {
    return guarded(int32_t{3}, [&] { return flush_all_streams(); });
}

BRINDLE_EXPORT(int32_t) cFputs(BSTR Text, int32_t Stream) {
    return guarded(int32_t{kEof}, [&] {
        const std::string_view text = StrArg::by_val(Text).text();
        return with_stream(Stream, int32_t{kEof}, [&](auto &s) { return int32_t{s.put_text(text)}; });
    });
}

BRINDLE_EXPORT(int16_t) cFgets(BSTR *Line, int32_t MaxLength, int32_t Stream) {
    return guarded(int16_t{kErrorFlag}, [&]() -> int16_t {
        if (MaxLength < 1) {
            put_string_field(Line, {});
            return -1;
        }
        std::string line;
        const int16_t result = with_stream(Stream, kErrorFlag, [&](auto &s) -> int16_t {
            if (s.get_line(&line, static_cast<size_t>(MaxLength)))
                return 0;
            return s.has_error() ? kErrorFlag : s.at_eof() ? int16_t{-1} : int16_t{0};
        });
        // The line is text: it ends at its first zero byte.
        const size_t zero = line.find('\0');
        put_string_field(Line, std::string_view(line).substr(0, zero));
        return result;
    });
}

BRINDLE_EXPORT(int32_t) cFgetc(int32_t Stream) {
    return guarded(int32_t{kEof}, [&] { return with_stream(Stream, int32_t{kEof}, [](auto &s) { return int32_t{s.get_char()}; }); });
}

BRINDLE_EXPORT(int32_t) cFputc(int16_t Character, int32_t Stream) {
    return guarded(int32_t{kEof}, [&] {
        return with_stream(Stream, int32_t{kEof}, [&](auto &s) { return int32_t{s.put_char(Character & 0xFF)}; });
    });
}

BRINDLE_EXPORT(int16_t) cFread(BSTR *Buffer, int32_t Count, int32_t Stream) {
    return guarded(int16_t{0}, [&] {
        std::string bytes;
        if (Count > 0)
            with_stream(Stream, 0, [&](auto &s) {
                std::string block(static_cast<size_t>(Count), '\0');
                block.resize(s.read(block.data(), block.size()));
                bytes = std::move(block);
                return 0;
            });
        put_string_field(Buffer, bytes);
        return static_cast<int16_t>(static_cast<uint16_t>(bytes.size() & 0xFFFF));
    });
}

BRINDLE_EXPORT(int32_t) cFwrite(BSTR *Buffer, int32_t Stream) {
    return guarded(int32_t{0}, [&] {
        const std::string_view bytes = StrArg::by_ref(Buffer).bytes();
        return with_stream(Stream, int32_t{0}, [&](auto &s) { return static_cast<int32_t>(s.write(bytes.data(), bytes.size())); });
    });
}

BRINDLE_EXPORT(int32_t) cFseek(int32_t Stream, int32_t Offset, int16_t Origin) {
    return guarded(int32_t{1}, [&] {
        return with_stream(Stream, int32_t{1}, [&](auto &s) { return int32_t{-s.seek(Offset, Origin)}; });
    });
}

BRINDLE_EXPORT(int32_t) cFtell(int32_t Stream) {
    return guarded(int32_t{-1}, [&] {
        return with_stream(Stream, int32_t{-1}, [](auto &s) {
            const int64_t at = s.tell();
            return at < 0 || at > INT32_MAX ? int32_t{-1} : static_cast<int32_t>(at);
        });
    });
}

BRINDLE_EXPORT(void) cFrewind(int32_t Stream) {
    guarded(0, [&] { return with_stream(Stream, 0, [](auto &s) { s.rewind(); return 0; }); });
}

BRINDLE_EXPORT(int16_t) cFeof(int32_t Stream) {
    return guarded(int16_t{-1}, [&] { return with_stream(Stream, int16_t{-1}, [](auto &s) { return vb_bool(s.at_eof()); }); });
}

BRINDLE_EXPORT(int16_t) cFerror(int32_t Stream) {
    return guarded(kErrorFlag, [&] {
        return with_stream(Stream, kErrorFlag, [](auto &s) { return s.has_error() ? kErrorFlag : int16_t{0}; });
    });
}

BRINDLE_EXPORT(void) cFclearerr(int32_t Stream) {
    guarded(0, [&] { return with_stream(Stream, 0, [](auto &s) { s.clear_flags(); return 0; }); });
}

BRINDLE_EXPORT(int32_t) cFStdIn() {
    return guarded(int32_t{0}, [] { return standard_stream(StdStream::Input); });
}

BRINDLE_EXPORT(int32_t) cFStdOut() {
    return guarded(int32_t{0}, [] { return standard_stream(StdStream::Output); });
}

BRINDLE_EXPORT(int32_t) cFStdErr() {
    return guarded(int32_t{0}, [] { return standard_stream(StdStream::Error); });
}

BRINDLE_EXPORT(int32_t) cFProcessAsciiFile(int32_t Stream, SAFEARRAY **LineIndex) {
    return guarded(int32_t{0}, [&] {
        ArrayElements index(LineIndex);
        if (!index.present() || index.holds_references() || index.element_size() != 4)
            return int32_t{0};
        return with_stream(Stream, int32_t{kErrorFlag}, [&](auto &s) {
            return index_lines(s, index.count(), [&](int32_t k, int32_t offset) { index.put<int32_t>(k, offset); });
        });
    });
}

BRINDLE_EXPORT(int32_t) cFGotoRecord(int32_t Stream, SAFEARRAY **LineIndex, int32_t LineNumber) {
    return guarded(int32_t{0}, [&] {
        ArrayElements index(LineIndex);
        if (!index.present() || index.holds_references() || index.element_size() != 4 || LineNumber < 1 ||
            static_cast<size_t>(LineNumber) > index.count())
            return int32_t{0};
        const int32_t offset = index.get<int32_t>(LineNumber);
        return with_stream(Stream, int32_t{1}, [&](auto &s) { return s.seek(offset, 0) == 0 ? int32_t{-1} : int32_t{1}; });
    });
}
