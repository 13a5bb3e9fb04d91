// LZARI compression of files: a 4-byte length (least significant byte
// first) and the arithmetic-coded stream.
#include "compress/compress_files.h"
#include "compress/lzari.h"
#include "frame/frame.h"

using namespace brindle;
using namespace brindle::compress;
using brindle::frame::StrArg;

namespace {

// Codes: -1/-2 empty names, -3 the same file, -4 source not opened (the
// target is left created and empty), -5 target not opened, -6 a failed read
// or write (the header included), -7 target size unreadable; otherwise the
// target's size. Every call builds its coder afresh.
template <class Coder> int32_t run_lzari(BSTR source_name, BSTR target_name, Coder coder) {
    const std::string_view source = StrArg::by_val(source_name).text();
    const std::string_view target = StrArg::by_val(target_name).text();
    if (const int32_t bad = check_file_names(source, target))
        return bad;
    platform::File in = platform::File::open(source, platform::OpenMode::Read);
    platform::File out = platform::File::open(target, platform::OpenMode::Create);
    if (!in.is_open())
        return -4;
    if (!out.is_open())
        return -5;
    bool ok = coder(in, out);
    in.close();
    ok = out.close() && ok;
    if (!ok)
        return -6;
    return target_size_result(target);
}

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
    return frame::guarded(int32_t{-6}, [&] { return run_lzari(SourceFile, TargetFile, encode_file); });
}

// Expands an LZARI file.
BRINDLE_EXPORT(int32_t) cLZARIexpand(BSTR SourceFile, BSTR TargetFile) {
    return frame::guarded(int32_t{-6}, [&] { return run_lzari(SourceFile, TargetFile, decode_file); });
}
