// CRC-32 of strings and files: plain, chained from the caller's start value
// (the register starts at the value as given, and the result is inverted),
// and of a file without its last four bytes (records that carry their own
// checksum at the end). Every failure answers -1.
#include "compress/crc32.h"
#include "frame/frame.h"
#include "platform/file.h"
#include "runtime/text_mode.h"

#include <memory>
#include <string>
#include <vector>

using namespace brindle::frame;
using brindle::compress::crc32_update;
using brindle::platform::File;
using brindle::platform::OpenMode;

namespace {

constexpr size_t kChunk = 32768;
constexpr int32_t kFailed = -1;

int32_t as_long(uint32_t crc) { return static_cast<int32_t>(crc); }

// The register after `length` bytes of a file from its start, read in
// chunks; false when the file cannot be opened or a read fails.
bool crc_of_body(std::string_view name, uint64_t length, uint32_t &reg) {
    File file = File::open(name, OpenMode::Read);
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

// The Ext and Minus4 forms: the file must hold at least 5 bytes; the body
// is all of it, or all but the last 4 bytes.
int32_t crc_of_sized_file(BSTR *FileName, uint32_t start, bool minus4) {
    const std::string_view name = StrArg::by_ref(FileName).text();
    if (name.empty())
        return kFailed;
    const int64_t size = brindle::platform::file_size(name);
    if (size < 5)
        return kFailed;
    uint32_t reg = start;
    if (!crc_of_body(name, static_cast<uint64_t>(minus4 ? size - 4 : size), reg))
        return kFailed;
    return as_long(~reg);
}

} // namespace

// The CRC-32 of the string's bytes; -1 for an empty string.
BRINDLE_EXPORT(int32_t) cStringCRC32(BSTR *Txt) {
    const StrArg text = StrArg::by_ref(Txt);
    if (text.empty())
        return kFailed;
    return as_long(brindle::compress::crc32_plain(text.data(), text.size()));
}

// The chained CRC-32: the register starts at StartValue (-1 gives the plain
// value; to continue a checksum pass the previous result inverted).
BRINDLE_EXPORT(int32_t) cStringBlockCRC32(int32_t StartValue, BSTR *Txt) {
    const StrArg text = StrArg::by_ref(Txt);
    if (text.empty())
        return kFailed;
    return as_long(brindle::compress::crc32_chained(static_cast<uint32_t>(StartValue), text.data(), text.size()));
}

// The CRC-32 of a whole file; Mode 1 reads it in text mode (CR LF read as
// LF, Ctrl-Z ends the data), any other mode in binary. An empty file gives 0.
BRINDLE_EXPORT(int32_t) cFileCRC32(BSTR *FileName, int16_t Mode) {
    return guarded<int32_t>(kFailed, [&]() -> int32_t {
        const std::string_view name = StrArg::by_ref(FileName).text();
        if (name.empty())
            return kFailed;
        File file = File::open(name, OpenMode::Read);
        if (!file.is_open())
            return kFailed;
        std::vector<unsigned char> buffer(kChunk);
        uint32_t reg = 0xFFFFFFFFu;
        if (Mode == 1) {
            auto reader = std::make_unique<brindle::runtime::TextReader>(file);
            for (;;) {
                const int64_t got = reader->read(buffer.data(), kChunk);
                if (got < 0)
                    return kFailed;
                if (got == 0)
                    break;
                reg = crc32_update(reg, buffer.data(), static_cast<size_t>(got));
            }
        } else {
            for (;;) {
                const int64_t got = file.read(buffer.data(), kChunk);
                if (got < 0)
                    return kFailed;
                if (got == 0)
                    break;
                reg = crc32_update(reg, buffer.data(), static_cast<size_t>(got));
            }
        }
        return as_long(~reg);
    });
}

// The chained CRC-32 of a whole file of at least 5 bytes.
BRINDLE_EXPORT(int32_t) cFileCRC32Ext(int32_t StartValue, BSTR *FileName) {
    return guarded<int32_t>(kFailed, [&] { return crc_of_sized_file(FileName, static_cast<uint32_t>(StartValue), false); });
}

// The CRC-32 of a file of at least 5 bytes without its last 4 bytes.
BRINDLE_EXPORT(int32_t) cFileCRC32Minus4(BSTR *FileName) {
    return guarded<int32_t>(kFailed, [&] { return crc_of_sized_file(FileName, 0xFFFFFFFFu, true); });
}

BRINDLE_EXPORT(int32_t) cFileCRC32Minus4Ext(int32_t StartValue, BSTR *FileName) {
    return guarded<int32_t>(kFailed, [&] { return crc_of_sized_file(FileName, static_cast<uint32_t>(StartValue), true); });
}
