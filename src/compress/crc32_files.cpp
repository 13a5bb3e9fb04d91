#include "compress/crc32_files.h"

#include "compress/crc32.h"
#include "platform/file.h"
#include "runtime/text_mode.h"

#include <memory>
#include <vector>

namespace brindle::compress {

namespace {

constexpr size_t kChunk = 32768;
constexpr int32_t kFailed = -1;

int32_t as_long(uint32_t crc) { return static_cast<int32_t>(crc); }

// Feeds everything `read` gives into the register; false on a read error.
template <class Read> bool crc_of_all(Read read, std::vector<unsigned char> &buffer, uint32_t &reg) {
    for (;;) {
        const int64_t got = read(buffer.data(), buffer.size());
        if (got < 0)
            return false;
        if (got == 0)
            return true;
        reg = crc32_update(reg, buffer.data(), static_cast<size_t>(got));
    }
}

// The register after `length` bytes of a file from its start; false when
// the file cannot be opened or a read fails.
bool crc_of_body(std::string_view name, uint64_t length, uint32_t &reg) {
    platform::File file = platform::File::open(name, platform::OpenMode::Read);
    if (!file.is_open())
        return false;
    std::vector<unsigned char> buffer(kChunk);
    while (length > 0) {
        const size_t want = length < kChunk ? static_cast<size_t>(length) : kChunk;
        const int64_t got = file.read(buffer.data(), want);
        if (got < 0)
            return false;
        if (got == 0)
            break; // the file shrank since its size was taken
        reg = crc32_update(reg, buffer.data(), static_cast<size_t>(got));
        length -= static_cast<uint64_t>(got);
    }
    return true;
}

} // namespace

int32_t file_crc32(std::string_view name, bool text_mode) {
    if (name.empty())
        return kFailed;
    platform::File file = platform::File::open(name, platform::OpenMode::Read);
    if (!file.is_open())
        return kFailed;
    std::vector<unsigned char> buffer(kChunk);
    uint32_t reg = 0xFFFFFFFFu;
    bool ok;
    if (text_mode) {
        auto reader = std::make_unique<runtime::TextReader>(file);
        ok = crc_of_all([&](unsigned char *p, size_t n) { return reader->read(p, n); }, buffer, reg);
    } else {
        ok = crc_of_all([&](unsigned char *p, size_t n) { return file.read(p, n); }, buffer, reg);
    }
    return ok ? as_long(~reg) : kFailed;
}

int32_t sized_file_crc32(std::string_view name, uint32_t start, bool minus4) {
    if (name.empty())
        return kFailed;
    const int64_t size = platform::file_size(name);
    if (size < 5)
        return kFailed;
    uint32_t reg = start;
    if (!crc_of_body(name, static_cast<uint64_t>(minus4 ? size - 4 : size), reg))
        return kFailed;
    return as_long(~reg);
}

} // namespace brindle::compress
