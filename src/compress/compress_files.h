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
