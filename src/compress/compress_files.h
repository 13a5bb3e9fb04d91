// What the file compressors share: the checks of the two names, buffered
// byte streams over files and the size result.
#pragma once

#include "compress/byte_stream.h"
#include "platform/file.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace brindle::compress {

// -1 empty source name, -2 empty target name, -3 the names are equal ignoring
// case, or otherwise reach the same existing file (writing the target would
// destroy the source); 0 when the pair may be used.
int32_t check_file_names(std::string_view source, std::string_view target);

// The size of the finished target as the Long result, or -7 when it cannot
// be read. Sizes beyond the Long range give its largest value.
int32_t target_size_result(std::string_view target);

// The input of a file coder is closed at the end; for a plain file the
// result of that close does not count (nothing was written to it). Other
// input kinds (compress/gzip_files.h) give their own overload.
inline bool close_coder_input(platform::File &in) {
    in.close();
    return true;
}

// The frame every file coder runs in, once the names have passed
// check_file_names: opens the source with open_in() and the target with
// open_out() (both objects with is_open() and close() -> bool, closing
// themselves when dropped), runs coder(in, out) -> bool and closes both.
// Codes: -4 source not opened (the target is already created, and stays),
// -5 target not opened, -6 the coder or a close failed, -7 the target's size
// unreadable; otherwise the target's size. A target that was created stays,
// also when the coder fails.
template <class OpenIn, class OpenOut, class Coder>
int32_t code_files(std::string_view target, OpenIn open_in, OpenOut open_out, Coder coder) {
    auto in = open_in();
    auto out = open_out();
    if (!in.is_open())
        return -4;
    if (!out.is_open())
        return -5;
    bool ok = coder(in, out);
    ok = close_coder_input(in) && ok;
    ok = out.close() && ok;
    if (!ok)
        return -6;
    return target_size_result(target);
}

// Runs a file coder, coder(File &in, File &out) -> bool, from one named file
// into another: -1/-2 empty names, -3 the same file (check_file_names), then
// the codes of code_files.
template <class Coder> int32_t run_file_coder(std::string_view source, std::string_view target, Coder coder) {
    if (const int32_t bad = check_file_names(source, target))
        return bad;
    return code_files(
        target, [&] { return platform::File::open(source, platform::OpenMode::Read); },
        [&] { return platform::File::open(target, platform::OpenMode::Create); }, coder);
}

// Reads a file through a 32 KB buffer. A read error ends the input and sets
// failed().
class FileSource final : public ByteSource {
  public:
    explicit FileSource(platform::File &file) : file_(file), buffer_(kBufferSize) {}

  private:
    static constexpr size_t kBufferSize = 32768;
    bool refill() override;
    platform::File &file_;
    std::vector<uint8_t> buffer_;
};

// Writes a file through a 32 KB buffer. After a failed write the remaining
// bytes are dropped and finish() gives false.
class FileSink final : public ByteSink {
  public:
    explicit FileSink(platform::File &file);
    bool finish() override;

  private:
    static constexpr size_t kBufferSize = 32768;
    void drain() override;
    platform::File &file_;
    std::vector<uint8_t> buffer_;
};

} // namespace brindle::compress
