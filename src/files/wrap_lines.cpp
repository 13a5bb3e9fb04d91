#include "files/wrap_lines.h"

#include "files/path_names.h"
#include "files/text_file_codes.h"
#include "platform/file.h"

#include <array>
#include <memory>
#include <new>
#include <string>

namespace brindle::files {

namespace {

constexpr size_t kBlock = 32768;

bool valid_name(std::string_view name) { return !name.empty() && filename_validity(name) == kNameValid; }

// The state of one pass: the unfinished output line, at most width + 1
// bytes, is all that is held back.
class Wrapper {
  public:
    Wrapper(size_t width, std::string_view delimiters, std::string_view line_break)
        : width_(width), break_(line_break.empty() ? std::string_view("\r\n") : line_break) {
        if (delimiters.empty())
            delimiters = " \t";
        for (const char c : delimiters)
            delimiter_[static_cast<unsigned char>(c)] = true;
        pending_.reserve(width + 1);
        out_.reserve(2 * kBlock);
    }

    void feed(const unsigned char *data, size_t size) {
        for (size_t i = 0; i < size; ++i) {
            const unsigned char c = data[i];
            if (c == '\n') {
                end_line(held_cr_ ? "\r\n" : "\n");
                held_cr_ = false;
            } else if (c == '\r') {
                if (held_cr_)
                    text('\r');
                held_cr_ = true;
            } else {
                if (held_cr_)
                    text('\r');
                held_cr_ = false;
                text(c);
            }
        }
    }

    void finish() {
        if (held_cr_)
            text('\r');
        held_cr_ = false;
        out_ += pending_;
        pending_.clear();
    }

    std::string &output() { return out_; }
    int64_t breaks() const { return breaks_; }

  private:
    bool blank_delimiter(unsigned char c) const { return delimiter_[c] && (c == ' ' || c == '\t'); }
    bool other_delimiter(unsigned char c) const { return delimiter_[c] && c != ' ' && c != '\t'; }

    void text(unsigned char c) {
        if (skip_blanks_ && blank_delimiter(c))
            return;
        skip_blanks_ = false;
        if (break_due_) {
            out_ += break_;
            ++breaks_;
            break_due_ = false;
        }
        pending_.push_back(static_cast<char>(c));
        if (pending_.size() > width_)
            cut();
    }

    void end_line(std::string_view ending) {
        out_ += pending_;
        pending_.clear();
        out_ += ending;
        break_due_ = false; // the line ends here anyway
        skip_blanks_ = false;
    }

    // pending_ holds width + 1 bytes: write the first piece and keep the rest.
    void cut() {
        const auto at = [&](size_t i) { return static_cast<unsigned char>(pending_[i]); };
        size_t piece = width_, rest = width_;
        for (size_t i = width_; i >= 1; --i) {
            if (blank_delimiter(at(i)) && !blank_delimiter(at(i - 1))) {
                piece = i;
                rest = i;
                while (rest < pending_.size() && blank_delimiter(at(rest)))
                    ++rest;
                break;
            }
            if (other_delimiter(at(i - 1))) {
                piece = i;
                rest = i;
                break;
            }
        }
        out_.append(pending_, 0, piece);
        pending_.erase(0, rest);
        if (pending_.empty()) {
            // The blanks may go on, and the line may end before any text.
            skip_blanks_ = rest > piece;
            break_due_ = true;
        } else {
            out_ += break_;
            ++breaks_;
        }
    }

    size_t width_;
    std::string_view break_;
    std::array<bool, 256> delimiter_{};
    std::string pending_, out_;
    bool held_cr_ = false, break_due_ = false, skip_blanks_ = false;
    int64_t breaks_ = 0;
};

} // namespace

int32_t wrap_file_lines(std::string_view source, std::string_view target, int32_t width, std::string_view delimiters,
                        std::string_view line_break) {
    if (width < 1 || width > kWrapMaxWidth || line_break.size() > kWrapMaxBreak)
        return kWrapBadArgument;
    if (!valid_name(source))
        return kWrapBadSource;
    if (!valid_name(target))
        return kWrapBadTarget;
    if (platform::same_file(source, target))
        return kWrapSameFile;
    platform::File from = platform::File::open(source, platform::OpenMode::Read);
    if (!from.is_open())
        return kWrapSourceNotOpened;
    std::unique_ptr<unsigned char[]> block(new (std::nothrow) unsigned char[kBlock]);
    if (!block)
        return kWrapNoBuffer;
    Wrapper wrap(static_cast<size_t>(width), delimiters, line_break);
    platform::File to = platform::File::open(target, platform::OpenMode::Create);
    if (!to.is_open())
        return kWrapTargetNotCreated;
    int32_t code = 0;
    for (;;) {
        const int64_t got = from.read(block.get(), kBlock);
        if (got < 0) {
            code = kWrapReadError;
            break;
        }
        if (got == 0)
            wrap.finish();
        else
            wrap.feed(block.get(), static_cast<size_t>(got));
        std::string &out = wrap.output();
        if ((got == 0 || out.size() >= kBlock) && !out.empty()) {
            if (!to.write(out.data(), out.size())) {
                code = kWrapWriteError;
                break;
            }
            out.clear();
        }
        if (got == 0)
            break;
    }
    if (code == 0 && !to.close())
        code = kWrapWriteError;
    if (code != 0) {
        to.close();
        platform::delete_if_exists(target);
        return code;
    }
    return long_count(wrap.breaks());
}

} // namespace brindle::files
