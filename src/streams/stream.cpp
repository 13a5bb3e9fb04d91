#include "streams/stream.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace brindle::streams {

namespace {

constexpr size_t kBuffer = 32768;
constexpr unsigned char kCtrlZ = 0x1A;

struct ParsedMode {
    platform::OpenMode open;
    bool read, write, append, text;
};

// The runtime's mode letters; false for a malformed mode.
bool parse_mode(std::string_view mode, ParsedMode *out) {
    if (mode.empty())
        return false;
    bool plus = false, text = false, binary = false;
    for (size_t i = 1; i < mode.size(); ++i) {
        switch (mode[i]) {
        case '+':
            if (plus)
                return false;
            plus = true;
            break;
        case 't':
            if (text || binary)
                return false;
            text = true;
            break;
        case 'b':
            if (text || binary)
                return false;
            binary = true;
            break;
        case 'c': case 'n': case 'S': case 'R': case 'T': case 'D': case 'N': break;
        default: return false;
        }
    }
    out->text = !binary;
    out->append = false;
    switch (mode[0]) {
    case 'r':
        out->open = plus ? platform::OpenMode::ReadWrite : platform::OpenMode::Read;
        out->read = true;
        out->write = plus;
        return true;
    case 'w':
        out->open = plus ? platform::OpenMode::CreateReadWrite : platform::OpenMode::Create;
        out->read = plus;
        out->write = true;
        return true;
    case 'a':
        out->open = plus ? platform::OpenMode::ReadWrite : platform::OpenMode::Append;
        out->read = plus;
        out->write = true;
        out->append = true;
        return true;
    default: return false;
    }
}

} // namespace

Stream::~Stream() {
    if (!closed_)
        close();
}

std::unique_ptr<Stream> Stream::open(std::string_view path, std::string_view mode) {
    ParsedMode m{};
    if (path.empty() || !parse_mode(mode, &m))
        return nullptr;
    std::unique_ptr<Stream> s(new Stream());
    s->buf_.reset(new unsigned char[kBuffer]);
    int error = 0;
    s->file_ = platform::File::open(path, m.open, &error);
    if (!s->file_.is_open() && m.append && m.read && error == platform::kNoSuchFile)
        s->file_ = platform::File::open(path, platform::OpenMode::CreateNew, &error); // "a+" of a new file
    if (!s->file_.is_open())
        return nullptr;
    s->can_read_ = m.read;
    s->can_write_ = m.write;
    s->append_ = m.append;
    s->text_ = m.text;
    if (m.append && !m.read) { // "a": positioned at the end from the start
        const int64_t end = s->file_.size();
        s->base_ = end < 0 ? 0 : end;
    }
    return s;
}

std::unique_ptr<Stream> Stream::standard(platform::StdStream which) {
    std::unique_ptr<Stream> s(new Stream());
    s->buf_.reset(new unsigned char[kBuffer]);
    s->standard_ = true;
    s->std_ = which;
    s->can_read_ = which == platform::StdStream::Input;
    s->can_write_ = !s->can_read_;
    s->text_ = platform::std_text_mode();
    return s;
}

int64_t Stream::raw_read(void *buffer, size_t size) noexcept {
    if (standard_)
        return platform::std_read(buffer, size);
    return file_.read(buffer, size);
}

bool Stream::raw_write(const void *buffer, size_t size) noexcept {
    if (standard_)
        return platform::std_write(std_, buffer, size);
    return file_.write(buffer, size);
}

bool Stream::refill() noexcept {
    const size_t keep = len_ - pos_;
    if (keep > 0)
        std::memmove(buf_.get(), buf_.get() + pos_, keep);
    base_ += static_cast<int64_t>(pos_);
    pos_ = 0;
    len_ = keep;
    const int64_t got = raw_read(buf_.get() + keep, kBuffer - keep);
    if (got < 0) {
        error_ = true;
        return false;
    }
    if (got == 0)
        return false;
    len_ += static_cast<size_t>(got);
    return true;
}

bool Stream::begin_read() noexcept {
    if (closed_ || !can_read_) {
        error_ = true;
        return false;
    }
    if (dir_ == Dir::Writing && flush() != 0)
        return false;
    dir_ = Dir::Reading;
    pos_ = len_ = 0;
    return true;
}

bool Stream::drop_read_buffer() noexcept {
    const int64_t at = base_ + static_cast<int64_t>(pos_);
    pos_ = len_ = 0;
    base_ = at;
    return standard_ || file_.seek(at);
}

bool Stream::begin_write() noexcept {
    if (closed_ || !can_write_) {
        error_ = true;
        return false;
    }
    if (dir_ == Dir::Reading && !drop_read_buffer()) {
        error_ = true;
        return false;
    }
    if (dir_ != Dir::Writing) {
        dir_ = Dir::Writing;
        len_ = 0;
    }
    return true;
}

int Stream::get_char() noexcept {
    if (dir_ != Dir::Reading && !begin_read())
        return kEof;
    for (;;) {
        if (pos_ < len_) {
            const unsigned char c = buf_[pos_];
            if (!text_ || (c != '\r' && c != kCtrlZ)) {
                ++pos_;
                return c;
            }
            if (c == kCtrlZ) { // the end of the data in text mode; it stays unread
                eof_ = true;
                return kEof;
            }
            if (pos_ + 1 < len_ || refill()) {
                if (buf_[pos_ + 1] == '\n') {
                    pos_ += 2;
                    return '\n';
                }
                ++pos_;
                return '\r';
            }
            if (error_)
                return kEof;
            ++pos_; // a carriage return ends the file
            return '\r';
        }
        if (!refill()) {
            if (!error_)
                eof_ = true;
            return kEof;
        }
    }
}

bool Stream::get_line(std::string *line, size_t max) {
    if (max < 1)
        return false;
    if (dir_ != Dir::Reading && !begin_read())
        return false;
    const size_t want = max - 1;
    size_t got = 0;
    while (got < want) {
        if (pos_ >= len_) {
            if (!refill()) {
                if (!error_)
                    eof_ = true;
                break;
            }
            continue;
        }
        const size_t span = std::min(len_ - pos_, want - got);
        const unsigned char *p = buf_.get() + pos_;
        const auto *lf = static_cast<const unsigned char *>(std::memchr(p, '\n', span));
        const size_t seg = lf != nullptr ? static_cast<size_t>(lf - p) : span;
        if (!text_) {
            const size_t take = lf != nullptr ? seg + 1 : seg;
            line->append(reinterpret_cast<const char *>(p), take);
            pos_ += take;
            got += take;
            if (lf != nullptr)
                return true;
            continue;
        }
        const void *z = std::memchr(p, kCtrlZ, seg);
        const auto *cr = static_cast<const unsigned char *>(std::memchr(p, '\r', seg));
        if (z == nullptr && cr == nullptr) {
            line->append(reinterpret_cast<const char *>(p), seg);
            got += seg;
            pos_ += seg;
            if (lf != nullptr) {
                line->push_back('\n');
                ++pos_;
                ++got;
                return true;
            }
            continue;
        }
        if (z == nullptr && lf != nullptr && cr == lf - 1) { // a line ending in CR LF
            line->append(reinterpret_cast<const char *>(p), seg - 1);
            line->push_back('\n');
            pos_ += seg + 1;
            got += seg;
            return true;
        }
        // Ctrl-Z, a lone carriage return or a pair cut by the buffer's end:
        // the plain bytes before it, then one byte at a time.
        const unsigned char *stop = z != nullptr ? static_cast<const unsigned char *>(z) : cr;
        if (cr != nullptr && cr < stop)
            stop = cr;
        const size_t plain = static_cast<size_t>(stop - p);
        line->append(reinterpret_cast<const char *>(p), plain);
        pos_ += plain;
        got += plain;
        if (got == want)
            break;
        const int c = get_char();
        if (c == kEof)
            break;
        line->push_back(static_cast<char>(c));
        ++got;
        if (c == '\n')
            return true;
    }
    return got > 0;
}

size_t Stream::read(void *buffer, size_t size) noexcept {
    auto *out = static_cast<unsigned char *>(buffer);
    if (size == 0 || (dir_ != Dir::Reading && !begin_read()))
        return 0;
    size_t n = 0;
    while (n < size) {
        if (!text_ && pos_ < len_) {
            const size_t take = std::min(len_ - pos_, size - n);
            std::memcpy(out + n, buf_.get() + pos_, take);
            pos_ += take;
            n += take;
            continue;
        }
        const int c = get_char();
        if (c == kEof)
            break;
        out[n++] = static_cast<unsigned char>(c);
    }
    return n;
}

int Stream::flush() noexcept {
    if (closed_)
        return kEof;
    if (dir_ != Dir::Writing || len_ == 0)
        return 0;
    if (append_ && !standard_) {
        const int64_t end = file_.size();
        if (end < 0 || !file_.seek(end)) {
            error_ = true;
            len_ = 0;
            return kEof;
        }
        base_ = end;
    }
    const bool ok = raw_write(buf_.get(), len_);
    base_ += static_cast<int64_t>(len_);
    len_ = 0;
    if (!ok) {
        error_ = true;
        return kEof;
    }
    return 0;
}

size_t Stream::write(const void *buffer, size_t size) noexcept {
    const auto *in = static_cast<const unsigned char *>(buffer);
    if (size == 0 || !begin_write())
        return 0;
    size_t n = 0;
    while (n < size) {
        if (len_ + 2 > kBuffer && flush() != 0)
            return n;
        if (!text_) {
            const size_t take = std::min(kBuffer - len_, size - n);
            std::memcpy(buf_.get() + len_, in + n, take);
            len_ += take;
            n += take;
            continue;
        }
        while (n < size && len_ + 2 <= kBuffer) {
            if (in[n] == '\n')
                buf_[len_++] = '\r';
            buf_[len_++] = in[n++];
        }
    }
    return n;
}

int Stream::put_char(int c) noexcept {
    const auto b = static_cast<unsigned char>(c);
    return write(&b, 1) == 1 ? b : kEof;
}

int Stream::put_text(std::string_view text) noexcept {
    if (text.empty())
        return begin_write() ? 0 : kEof;
    return write(text.data(), text.size()) == text.size() ? 0 : kEof;
}

int64_t Stream::tell() noexcept {
    if (standard_ || closed_)
        return -1;
    switch (dir_) {
    case Dir::Reading: return base_ + static_cast<int64_t>(pos_);
    case Dir::Writing: return append_ ? (flush() == 0 ? base_ : -1) : base_ + static_cast<int64_t>(len_);
    case Dir::None: return base_;
    }
    return -1;
}

int Stream::seek(int64_t offset, int origin) noexcept {
    if (standard_ || closed_ || origin < 0 || origin > 2)
        return -1;
    if (dir_ == Dir::Writing && flush() != 0)
        return -1;
    int64_t from = 0;
    if (origin == 1)
        from = tell();
    else if (origin == 2)
        from = file_.size();
    if (from < 0 || from + offset < 0)
        return -1;
    const int64_t at = from + offset;
    if (!file_.seek(at))
        return -1;
    dir_ = Dir::None;
    pos_ = len_ = 0;
    base_ = at;
    eof_ = false;
    return 0;
}

void Stream::rewind() noexcept {
    seek(0, 0);
    clear_flags();
}

int Stream::close() noexcept {
    if (closed_)
        return kEof;
    const int flushed = flush();
    if (standard_)
        return kEof;
    closed_ = true;
    const bool ok = file_.close();
    return flushed == 0 && ok ? 0 : kEof;
}

} // namespace brindle::streams
