#include "runtime/text_mode.h"

#include <cstring>

namespace brindle::runtime {

bool TextReader::fill() noexcept {
    // Keep an unfinished carriage return at the front: it may pair with a
    // line feed at the start of the next block.
    const size_t keep = len_ - pos_;
    std::memmove(raw_, raw_ + pos_, keep);
    pos_ = 0;
    len_ = keep;
    const int64_t got = file_.read(raw_ + len_, sizeof raw_ - len_);
    if (got < 0) {
        failed_ = true;
        return false;
    }
    if (got == 0)
        return false;
    len_ += static_cast<size_t>(got);
    return true;
}

int64_t TextReader::read(void *buffer, size_t size) noexcept {
    auto *out = static_cast<unsigned char *>(buffer);
    size_t n = 0;
    while (n < size && !ended_) {
        if (pos_ == len_ || (raw_[pos_] == '\r' && pos_ + 1 == len_)) {
            const bool more = fill();
            if (failed_)
                return n > 0 ? static_cast<int64_t>(n) : -1;
            if (!more) {
                if (pos_ == len_) {
                    ended_ = true;
                    break;
                }
                // A carriage return is the last byte of the file.
            }
        }
        const unsigned char c = raw_[pos_];
        if (c == 0x1A) {
            ended_ = true;
            break;
        }
        if (c == '\r' && pos_ + 1 < len_ && raw_[pos_ + 1] == '\n') {
            out[n++] = '\n';
            pos_ += 2;
            continue;
        }
        out[n++] = c;
        ++pos_;
    }
    return static_cast<int64_t>(n);
}

bool TextWriter::write(const void *buffer, size_t size) noexcept {
    const auto *in = static_cast<const unsigned char *>(buffer);
    for (size_t i = 0; i < size && !failed_; ++i) {
        if (len_ + 2 > sizeof out_ && !flush())
            return false;
        if (in[i] == '\n')
            out_[len_++] = '\r';
        out_[len_++] = in[i];
    }
    return !failed_;
}

bool TextWriter::flush() noexcept {
    if (len_ > 0 && !failed_) {
        failed_ = !file_.write(out_, len_);
        len_ = 0;
    }
    return !failed_;
}

} // namespace brindle::runtime
