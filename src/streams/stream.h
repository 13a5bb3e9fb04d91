// A buffered stream as the Windows C runtime keeps one (fopen and its
// family), on every platform: the same mode letters, the same text mode
// (carriage-return/line-feed pairs read as a line feed, a Ctrl-Z ends the
// data, a line feed written goes out as carriage return and line feed), the
// same end-of-file and error flags, and positions that are byte offsets in
// the file whatever the mode.
//
// A stream is used by one caller at a time; its owner serialises calls
// (the export layer holds `lock` around each).
#pragma once

#include "frame/handles.h"
#include "platform/file.h"
#include "platform/std_streams.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

namespace brindle::streams {

inline constexpr int kEof = -1;

class Stream : public frame::HandleObject {
  public:
    ~Stream() override;

    // Opens `path` with a runtime mode: "r", "w" or "a", then any of "+",
    // "t" or "b" (not both), and the runtime's hint letters c, n, S, R, T,
    // D, N, which change nothing here. Text mode is the default. Null when
    // the mode is malformed or the file cannot be opened so.
    static std::unique_ptr<Stream> open(std::string_view path, std::string_view mode);
    // A standard stream (never closed by close()).
    static std::unique_ptr<Stream> standard(platform::StdStream which);

    bool is_standard() const noexcept { return standard_; }

    // The next byte (0-255), or kEof at the end or on error (and the flag set).
    int get_char() noexcept;
    // Writes one byte; the byte, or kEof on error.
    int put_char(int c) noexcept;
    // The runtime's line reader: up to max - 1 bytes, up to and including a
    // line feed, appended to *line. False when nothing could be read (the
    // end of the data or an error; the flags say which).
    bool get_line(std::string *line, size_t max);
    // Up to `size` bytes (translated in text mode); the count read.
    size_t read(void *buffer, size_t size) noexcept;
    // All `size` bytes, or as many as were written before an error.
    size_t write(const void *buffer, size_t size) noexcept;
    // 0, or kEof on an error.
    int put_text(std::string_view text) noexcept;

    // origin 0 start, 1 current position, 2 end. 0, or -1 (a bad origin, a
    // position before the start, a stream that cannot seek).
    int seek(int64_t offset, int origin) noexcept;
    // The byte offset in the file, or -1.
    int64_t tell() noexcept;
    void rewind() noexcept;
    // Writes out what is buffered: 0, or kEof on an error.
    int flush() noexcept;
    // Flushes and closes: 0, or kEof. A standard stream is only flushed and
    // stays usable; the result is then kEof, as nothing was closed.
    int close() noexcept;

    bool at_eof() const noexcept { return eof_; }
    bool has_error() const noexcept { return error_; }
    void clear_flags() noexcept { eof_ = error_ = false; }

    std::mutex lock;

  private:
    Stream() = default;
    enum class Dir { None, Reading, Writing };

    bool refill() noexcept;             // keeps an unread carriage return
    bool begin_read() noexcept;
    bool begin_write() noexcept;
    int64_t raw_read(void *buffer, size_t size) noexcept;
    bool raw_write(const void *buffer, size_t size) noexcept;
    bool drop_read_buffer() noexcept;   // the file position back to the logical one
    void slow_char_to(std::string *line) noexcept;

    platform::File file_;
    bool standard_ = false;
    platform::StdStream std_ = platform::StdStream::Input;
    bool can_read_ = false, can_write_ = false, append_ = false, text_ = true;
    bool eof_ = false, error_ = false, closed_ = false;
    bool raw_end_ = false; // the file gave no more bytes at the last refill
    Dir dir_ = Dir::None;
    std::unique_ptr<unsigned char[]> buf_;
    size_t pos_ = 0, len_ = 0; // reading: unread bytes are buf_[pos_, len_)
    int64_t base_ = 0;         // file offset of buf_[0]
};

} // namespace brindle::streams
