// CRC-32 of strings and files: plain, chained from the caller's start value
// (the register starts at the value as given, and the result is inverted),
// and of a file without its last four bytes (records that carry their own
// checksum at the end). Every failure answers -1.
#include "compress/crc32.h"
#include "compress/crc32_files.h"
#include "frame/frame.h"

using namespace brindle::frame;
using namespace brindle::compress;

namespace {

constexpr int32_t kFailed = -1;

int32_t as_long(uint32_t crc) { return static_cast<int32_t>(crc); }

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
    return guarded<int32_t>(kFailed, [&] { return file_crc32(StrArg::by_ref(FileName).text(), Mode == 1); });
}

// The chained CRC-32 of a whole file of at least 5 bytes.
BRINDLE_EXPORT(int32_t) cFileCRC32Ext(int32_t StartValue, BSTR *FileName) {
    return guarded<int32_t>(kFailed, [&] {
        return sized_file_crc32(StrArg::by_ref(FileName).text(), static_cast<uint32_t>(StartValue), false);
    });
}

// The CRC-32 of a file of at least 5 bytes without its last 4 bytes.
BRINDLE_EXPORT(int32_t) cFileCRC32Minus4(BSTR *FileName) {
    return guarded<int32_t>(kFailed, [&] { return sized_file_crc32(StrArg::by_ref(FileName).text(), 0xFFFFFFFFu, true); });
}

BRINDLE_EXPORT(int32_t) cFileCRC32Minus4Ext(int32_t StartValue, BSTR *FileName) {
    return guarded<int32_t>(kFailed, [&] {
        return sized_file_crc32(StrArg::by_ref(FileName).text(), static_cast<uint32_t>(StartValue), true);
    });
}
