#include "convert/btoa_coder.h"

#include "common/hex_digits.h"
#include "platform/file.h"
#include "runtime/text_mode.h"

#include <cstdio>
#include <limits>
#include <memory>
#include <vector>

namespace brindle::convert {

namespace {

constexpr int kCharsPerLine = BtoaEncoder::kLineLength - 1;
constexpr size_t kMaxLine = 99;         // longest line the decoder reads
constexpr size_t kChunk = 1 << 16;      // file reads and output drains

char check_char(uint32_t s) { return static_cast<char>(s % 85 + 33); }

// Four bytes as a number, the first most significant.
uint32_t pack(const unsigned char *b) {
    return static_cast<uint32_t>(b[0]) << 24 | static_cast<uint32_t>(b[1]) << 16 | static_cast<uint32_t>(b[2]) << 8 | b[3];
}

std::string hex(uint32_t v) {
    char buf[16];
    std::snprintf(buf, sizeof buf, "%x", static_cast<unsigned>(v));
    return buf;
}

} // namespace

// ---------------------------------------------------------------------------
// Encoder

std::string btoa_name_of(std::string_view path) {
    const size_t cut = path.find_last_of("\\:");
    const std::string_view name = cut == std::string_view::npos ? path : path.substr(cut + 1);
    return name.empty() ? "-" : std::string(name);
}

void BtoaEncoder::header(std::string_view name) {
    out_ += "xbtoa5 ";
    out_ += std::to_string(kLineLength);
    out_ += ' ';
    out_ += name;
    out_ += " Begin\n";
}

void BtoaEncoder::put(char c) {
    out_ += c;
    sums_.add(static_cast<unsigned char>(c));
    if (++line_ == kCharsPerLine) {
        out_ += check_char(sums_.s);
        out_ += '\n';
        line_ = 0;
    }
}

void BtoaEncoder::group(uint32_t value) {
    if (value == 0) {
        put('z');
        return;
    }
    if (value == 0x20202020u) {
        put('y');
        return;
    }
    char digits[5];
    for (int i = 4; i >= 0; --i) {
        digits[i] = static_cast<char>(value % 85 + 33);
        value /= 85;
    }
    for (const char d : digits)
        put(d);
}

void BtoaEncoder::feed(const unsigned char *data, size_t size) {
    count_ += size;
    size_t i = 0;
    while (pending_size_ > 0 && pending_size_ < 4 && i < size)
        pending_[pending_size_++] = data[i++];
    if (pending_size_ == 4) {
        group(pack(pending_));
        pending_size_ = 0;
    }
    for (; i + 4 <= size; i += 4)
        group(pack(data + i));
    for (; i < size; ++i)
        pending_[pending_size_++] = data[i];
}

void BtoaEncoder::finish() {
    if (pending_size_ > 0) {
        // A short last group is padded with zero bytes; N tells the real length.
        for (size_t i = pending_size_; i < 4; ++i)
            pending_[i] = 0;
        group(pack(pending_));
        pending_size_ = 0;
    }
    if (line_ > 0) {
        out_ += check_char(sums_.s);
        out_ += '\n';
        line_ = 0;
    }
    const auto n = static_cast<uint32_t>(count_);
    out_ += "xbtoa End N ";
    out_ += std::to_string(static_cast<int32_t>(n)); // %ld of a 32-bit long
    out_ += ' ' + hex(n) + " E " + hex(sums_.e) + " S " + hex(sums_.s) + " R " + hex(sums_.r) + '\n';
}

int32_t btoa_encode_file(std::string_view input, std::string_view output) {
    platform::File in = platform::File::open(input, platform::OpenMode::Read);
    if (!in.is_open())
        return -1;
    if (platform::same_file(input, output))
        return -2; // creating the output would truncate the input
    platform::File out = platform::File::open(output, platform::OpenMode::Create);
    if (!out.is_open())
        return -2;
    // The reader and writer hold 32 KB buffers each: keep them off the stack.
    auto reader = std::make_unique<runtime::TextReader>(in);
    auto writer = std::make_unique<runtime::TextWriter>(out);
    std::string text;
    text.reserve(kChunk + 1024);
    BtoaEncoder encoder(text);
    encoder.header(btoa_name_of(input));
    std::vector<unsigned char> buffer(kChunk);
    for (;;) {
        const int64_t got = reader->read(buffer.data(), buffer.size());
        if (got < 0)
            return -1;
        if (got == 0)
            break;
        encoder.feed(buffer.data(), static_cast<size_t>(got));
        if (text.size() >= kChunk) {
            if (!writer->write(text.data(), text.size()))
                return -2;
            text.clear();
        }
    }
    encoder.finish();
    if (!writer->write(text.data(), text.size()) || !writer->flush())
        return -2;
    writer.reset();
    if (!out.close())
        return -2;
    in.close();
    const int64_t size = platform::file_size(output);
    if (size < 0 || size > std::numeric_limits<int32_t>::max())
        return -1;
    return static_cast<int32_t>(size);
}

// ---------------------------------------------------------------------------
// Decoder

namespace {

// Lines of the text-mode input without their line feed. A line longer than
// kMaxLine characters is skipped to its end and reported as overlong, with
// its first kMaxLine characters.
class LineReader {
  public:
    explicit LineReader(platform::File &file) : reader_(std::make_unique<runtime::TextReader>(file)) {}

    // False at the end of the input (or on a read error).
    bool next(std::string &line, bool &overlong) {
        line.clear();
        overlong = false;
        bool any = false;
        for (;;) {
            if (pos_ == len_ && !fill())
                return any;
            any = true;
            while (pos_ < len_) {
                const char c = buffer_[pos_++];
                if (c == '\n')
                    return true;
                if (line.size() < kMaxLine)
                    line += c;
                else
                    overlong = true;
            }
        }
    }

  private:
    bool fill() {
        if (ended_)
            return false;
        const int64_t got = reader_->read(buffer_.data(), buffer_.size());
        if (got <= 0) {
            ended_ = true;
            return false;
        }
        pos_ = 0;
        len_ = static_cast<size_t>(got);
        return true;
    }

    std::unique_ptr<runtime::TextReader> reader_;
    std::vector<char> buffer_ = std::vector<char>(kChunk);
    size_t pos_ = 0, len_ = 0;
    bool ended_ = false;
};

// A small scanner with the rules of sscanf for the header and trailer: a
// space in the pattern matches any white space, numbers skip white space
// before them.
class Scanner {
  public:
    explicit Scanner(std::string_view text) : text_(text) {}

    void skip_space() {
        while (pos_ < text_.size() && (text_[pos_] == ' ' || (text_[pos_] >= '\t' && text_[pos_] <= '\r')))
            ++pos_;
    }
    bool literal(std::string_view word) {
        if (text_.substr(pos_, word.size()) != word)
            return false;
        pos_ += word.size();
        return true;
    }
    // A decimal number with an optional sign; saturates far outside 32 bits.
    bool decimal(int64_t &value) {
        skip_space();
        bool negative = false;
        if (pos_ < text_.size() && (text_[pos_] == '+' || text_[pos_] == '-'))
            negative = text_[pos_++] == '-';
        return digits(value, 10, negative);
    }
    // A hexadecimal number, optionally with "0x".
    bool hexadecimal(int64_t &value) {
        skip_space();
        if (text_.substr(pos_, 2) == "0x" || text_.substr(pos_, 2) == "0X")
            pos_ += 2;
        return digits(value, 16, false);
    }
    // A run of characters other than white space.
    bool token(std::string &out) {
        skip_space();
        const size_t start = pos_;
        while (pos_ < text_.size() && !(text_[pos_] == ' ' || (text_[pos_] >= '\t' && text_[pos_] <= '\r')))
            ++pos_;
        out.assign(text_.substr(start, pos_ - start));
        return pos_ > start;
    }

  private:
    bool digits(int64_t &value, int base, bool negative) {
        const size_t start = pos_;
        int64_t v = 0;
        for (; pos_ < text_.size(); ++pos_) {
            const int d = common::hex_digit_value(text_[pos_]);
            if (d < 0 || d >= base)
                break;
            if (v < (int64_t{1} << 40))
                v = v * base + d;
        }
        value = negative ? -v : v;
        return pos_ > start;
    }

    std::string_view text_;
    size_t pos_ = 0;
};

// The body decoder: characters in, groups out to the text-mode writer. The
// last group is held back until the trailer says how many of its bytes are
// real.
class BodyDecoder {
  public:
    explicit BodyDecoder(runtime::TextWriter &out) : out_(out) {}

    // One body line: encoding characters and the check character last.
    void line(std::string_view text) {
        if (text.empty()) {
            damaged_ = true;
            return;
        }
        for (size_t i = 0; i + 1 < text.size(); ++i)
            character(static_cast<unsigned char>(text[i]));
        const auto check = static_cast<unsigned char>(text.back());
        if (check != static_cast<unsigned char>(check_char(sums_.s))) {
            damaged_ = true;
            sums_.s = static_cast<uint32_t>(check) - 33u; // check the next lines on their own
        }
    }

    void mark_damaged() { damaged_ = true; }
    bool damaged() const { return damaged_ || digits_ != 0; }
    bool write_failed() const { return write_failed_; }
    const BtoaSums &sums() const { return sums_; }
    uint64_t decoded() const { return decoded_; }

    // Writes the held-back group cut to the `n` bytes of the whole file;
    // false when the body does not hold exactly the groups of n bytes.
    bool finish(uint64_t n) {
        if (decoded_ < n || decoded_ - n >= 4 || (n == 0) != (decoded_ == 0))
            return false;
        if (has_held_)
            emit_bytes(held_, static_cast<size_t>(4 - (decoded_ - n)));
        return true;
    }

  private:
    void character(unsigned char c) {
        sums_.add(c);
        if (digits_ == 0 && c == 'z') {
            group(0);
        } else if (digits_ == 0 && c == 'y') {
            group(0x20202020u);
        } else if (c >= '!' && c <= 'u') {
            value_ = value_ * 85 + (c - 33u);
            if (++digits_ == 5) {
                if (value_ > 0xFFFFFFFFull)
                    damaged_ = true; // five digits above 2^32 - 1: never written by an encoder
                group(static_cast<uint32_t>(value_));
                value_ = 0;
                digits_ = 0;
            }
        } else {
            damaged_ = true;
        }
    }

    void group(uint32_t v) {
        if (has_held_)
            emit_bytes(held_, 4);
        held_[0] = static_cast<unsigned char>(v >> 24);
        held_[1] = static_cast<unsigned char>(v >> 16);
        held_[2] = static_cast<unsigned char>(v >> 8);
        held_[3] = static_cast<unsigned char>(v);
        has_held_ = true;
        decoded_ += 4;
    }

    void emit_bytes(const unsigned char *bytes, size_t n) {
        if (!write_failed_ && !out_.write(bytes, n))
            write_failed_ = true;
    }

    runtime::TextWriter &out_;
    BtoaSums sums_;
    uint64_t value_ = 0;
    int digits_ = 0;
    unsigned char held_[4] = {};
    bool has_held_ = false;
    uint64_t decoded_ = 0;
    bool damaged_ = false;
    bool write_failed_ = false;
};

bool starts_with(std::string_view s, std::string_view prefix) { return s.substr(0, prefix.size()) == prefix; }

// The header's file name without any directory part; empty when unusable.
std::string safe_name(std::string_view recorded) {
    const size_t cut = recorded.find_last_of("\\/:");
    std::string name(cut == std::string_view::npos ? recorded : recorded.substr(cut + 1));
    if (name == "-" || name == "." || name == "..")
        name.clear();
    return name;
}

} // namespace

int32_t btoa_decode_file(std::string_view input) {
    platform::File in = platform::File::open(input, platform::OpenMode::Read);
    if (!in.is_open())
        return kBtoaFailed;
    LineReader lines(in);
    std::string line;
    bool overlong = false;

    // The header, after any preamble (mail headers and the like).
    for (;;) {
        if (!lines.next(line, overlong))
            return kBtoaBadHeader;
        if (starts_with(line, "xbtoa"))
            break;
        if (line.find("archive") != std::string::npos)
            return kBtoaFailed; // btoa archives are not decoded here
    }
    // A header longer than a line can be is not read from its first part: the
    // name in it may be cut, and the rest would follow as a body line.
    if (overlong)
        return kBtoaBadHeader;
    Scanner header(line);
    int64_t length = 0;
    std::string recorded;
    if (!header.literal("xbtoa5") || !header.decimal(length) || !header.token(recorded))
        return kBtoaBadHeader;
    const std::string name = safe_name(recorded);
    if (name.empty() || length < 2 || length > static_cast<int64_t>(kMaxLine))
        return kBtoaBadHeader;
    const auto line_length = static_cast<size_t>(length);

    // The output exists from here on; this call creates its own even when an
    // earlier call in the process created one. A header naming the input
    // itself is refused rather than truncating the text being read.
    if (platform::same_file(input, name))
        return kBtoaFailed;
    platform::File out = platform::File::open(name, platform::OpenMode::Create);
    if (!out.is_open())
        return kBtoaFailed;
    auto writer = std::make_unique<runtime::TextWriter>(out);
    BodyDecoder body(*writer);

    bool have = lines.next(line, overlong);
    bool trailer = false;
    while (have) {
        if (overlong) {
            body.mark_damaged();
            have = lines.next(line, overlong);
            continue;
        }
        if (starts_with(line, "x")) {
            trailer = true;
            break;
        }
        if (line.size() == line_length) {
            body.line(line);
            have = lines.next(line, overlong);
            continue;
        }
        // A shorter (or longer) line: acceptable only as the last body line.
        const std::string current = line;
        have = lines.next(line, overlong);
        if (current.size() > line_length || !have || overlong || !starts_with(line, "x"))
            body.mark_damaged();
        body.line(current);
    }

    if (body.damaged())
        return kBtoaFailed;
    if (!trailer)
        return kBtoaBadTrailer;
    Scanner t(line);
    int64_t n_dec = 0, n_hex = 0, e = 0, s = 0, r = 0;
    if (!t.literal("xbtoa End N") || !t.decimal(n_dec) || !t.hexadecimal(n_hex) || (t.skip_space(), !t.literal("E")) ||
        !t.hexadecimal(e) || (t.skip_space(), !t.literal("S")) || !t.hexadecimal(s) ||
        (t.skip_space(), !t.literal("R")) || !t.hexadecimal(r))
        return kBtoaBadTrailer;
    const BtoaSums &sums = body.sums();
    if (n_hex < 0 || n_hex > 0xFFFFFFFFll || static_cast<uint32_t>(n_dec) != static_cast<uint32_t>(n_hex) ||
        e != sums.e || s != sums.s || r != sums.r)
        return kBtoaMismatch;
    if (!body.finish(static_cast<uint64_t>(n_hex)))
        return kBtoaMismatch;
    if (body.write_failed() || !writer->flush())
        return kBtoaFailed;
    writer.reset();
    return out.close() ? kBtoaOk : kBtoaFailed;
}

} // namespace brindle::convert
