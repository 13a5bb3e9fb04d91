// LZARI compression of files: a 4-byte length (least significant byte
// first) and the arithmetic-coded stream.
#include "compress/compress_files.h"
#include "compress/lzari.h"
#include "frame/frame.h"

using namespace brindle;
using namespace brindle::compress;
using brindle::frame::StrArg;

namespace {

bool encode_file(platform::File &in, platform::File &out) {
    // The header holds the size found at the end of the file, modulo 2^32.
    const int64_t size = in.size();
    if (size < 0)
        return false;
    FileSource source(in);
    FileSink sink(out);
    return lzari_encode(source, static_cast<uint32_t>(size), sink);
}

// A damaged stream is not detected: it decodes to at most the length its
// header claims.
bool decode_file(platform::File &in, platform::File &out) {
    FileSource source(in);
    FileSink sink(out);
    const LzariDecode status = lzari_decode(source, sink);
    return status != LzariDecode::NoHeader && !sink.failed() && !source.failed();
}

} // namespace

// Compresses a file with LZARI.
BRINDLE_EXPORT(int32_t) cLZARIcompress(BSTR SourceFile, BSTR TargetFile) {
    return frame::guarded(int32_t{-6}, [&] {
        return run_file_coder(StrArg::by_val(SourceFile).text(), StrArg::by_val(TargetFile).text(), encode_file);
    });
}

// Expands an LZARI file.
BRINDLE_EXPORT(int32_t) cLZARIexpand(BSTR SourceFile, BSTR TargetFile) {
    return frame::guarded(int32_t{-6}, [&] {
        return run_file_coder(StrArg::by_val(SourceFile).text(), StrArg::by_val(TargetFile).text(), decode_file);
    });
}
