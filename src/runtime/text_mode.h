// "Text mode" as the Windows C runtime does it, on every platform: reading
// turns each carriage-return/line-feed pair into a line feed and ends the
// data at the first Ctrl-Z byte; writing turns each line feed into a
// carriage-return/line-feed pair. A lone carriage return passes unchanged.
#pragma once

#include "platform/file.h"

#include <cstddef>
#include <cstdint>

namespace brindle::runtime {

using platform::File;

class TextReader {
  public:
    explicit TextReader(File &file) noexcept : file_(file) {}

    // Up to `size` translated bytes; 0 at the end of the data (end of file
    // or Ctrl-Z), -1 on a read error.
    int64_t read(void *buffer, size_t size) noexcept;

  private:
    bool fill() noexcept;

    File &file_;
    unsigned char raw_[32768];
    size_t pos_ = 0;
    size_t len_ = 0;
    bool ended_ = false; // end of file or Ctrl-Z met
    bool failed_ = false;
};

class TextWriter {
  public:
    explicit TextWriter(File &file) noexcept : file_(file) {}
    ~TextWriter() { flush(); }
    TextWriter(const TextWriter &) = delete;
    TextWriter &operator=(const TextWriter &) = delete;

    // Writes all of buffer, line feeds expanded; false on a write error.
    bool write(const void *buffer, size_t size) noexcept;
    bool flush() noexcept;

  private:
    File &file_;
    unsigned char out_[32768];
    size_t len_ = 0;
    bool failed_ = false;
};

} // namespace brindle::runtime
