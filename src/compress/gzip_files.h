// Gzip files through zlib's own file reader and writer, as ends of the
// shared file-coder frame (compress/compress_files.h).
#pragma once

#include "platform/file.h"

#include <string_view>

namespace brindle::compress {

// A gzip file opened by zlib (which opens files itself, by the system's
// name), closed when dropped.
class GzipFile {
  public:
    // mode: "rb" to read (zlib's reader copies a file that is not gzip as it
    // is) or "wb" to write. A directory is refused, as Windows refuses to
    // open one as a file.
    GzipFile(std::string_view name, const char *mode);
    ~GzipFile();
    GzipFile(GzipFile &&other) noexcept;
    GzipFile(const GzipFile &) = delete;
    GzipFile &operator=(const GzipFile &) = delete;
    GzipFile &operator=(GzipFile &&) = delete;

    bool is_open() const noexcept { return file_ != nullptr; }
    // Closes the file; false on any error zlib reports, which for a reader
    // includes a stream cut short.
    bool close() noexcept;

    // All `size` bytes compressed into the file, or false.
    bool write(const void *data, unsigned size) noexcept;
    // Up to `size` expanded bytes; 0 at the end, -1 on an error.
    int read(void *data, unsigned size) noexcept;

  private:
    void *file_ = nullptr; // zlib's gzFile
};

// The input end of the file-coder frame counts its close: a gzip stream cut
// short reads as a plain end, and only the close reports it.
inline bool close_coder_input(GzipFile &in) { return in.close(); }

// Copies the plain file into the gzip file in 64 KiB pieces; false on a read
// or write failure.
bool gzip_compress_file(platform::File &in, GzipFile &out);

// Copies the expanded gzip file into the plain file in 64 KiB pieces; false
// on a read error (a damaged stream) or a write failure.
bool gzip_expand_file(GzipFile &in, platform::File &out);

} // namespace brindle::compress
