#include "compress/gzip_files.h"

#include "platform/file_info.h"

#include <zlib.h>

#include <memory>
#include <utility>

namespace brindle::compress {

namespace {

constexpr size_t kTransferSize = 65536;

gzFile handle(void *file) { return static_cast<gzFile>(file); }

} // namespace

GzipFile::GzipFile(std::string_view name, const char *mode) {
    if (platform::directory_exists(name))
        return;
    gzFile f = gzopen(platform::native_path(name).c_str(), mode);
    if (f != nullptr)
        gzbuffer(f, 128 * 1024);
    file_ = f;
}

GzipFile::~GzipFile() { close(); }

GzipFile::GzipFile(GzipFile &&other) noexcept : file_(std::exchange(other.file_, nullptr)) {}

bool GzipFile::close() noexcept {
    if (file_ == nullptr)
        return true;
    return gzclose(handle(std::exchange(file_, nullptr))) == Z_OK;
}

bool GzipFile::write(const void *data, unsigned size) noexcept {
    return gzwrite(handle(file_), data, size) == static_cast<int>(size);
}

int GzipFile::read(void *data, unsigned size) noexcept { return gzread(handle(file_), data, size); }

bool gzip_compress_file(platform::File &in, GzipFile &out) {
    auto buffer = std::make_unique<char[]>(kTransferSize);
    for (;;) {
        const int64_t got = in.read(buffer.get(), kTransferSize);
        if (got < 0)
            return false;
        if (got == 0)
            return true;
        if (!out.write(buffer.get(), static_cast<unsigned>(got)))
            return false;
    }
}

bool gzip_expand_file(GzipFile &in, platform::File &out) {
    auto buffer = std::make_unique<char[]>(kTransferSize);
    for (;;) {
        const int got = in.read(buffer.get(), static_cast<unsigned>(kTransferSize));
        if (got < 0)
            return false;
        if (got == 0)
            return true;
        if (!out.write(buffer.get(), static_cast<size_t>(got)))
            return false;
    }
}

} // namespace brindle::compress
