// Gzip files and zlib streams in strings, through zlib. zlib does the
// compression; what is ours is the checking of the arguments, the layout of
// the strings and the result codes.
#include "compress/compress_files.h"
#include "compress/gzip_files.h"
#include "compress/zlib_strings.h"
#include "files/path_names.h"
#include "frame/frame.h"

#include <string>

using namespace brindle;
using namespace brindle::compress;
using brindle::frame::StrArg;

// Compresses a file into a gzip file (zlib's writer, mode "wb"). Codes: -1/-2
// empty names, -3 the same file, -4 source not opened (an empty gzip file is
// left under the target name), -5 target not opened, -6 read, write or close
// failure, -7 target size unreadable; otherwise the target's size.
BRINDLE_EXPORT(int32_t) cGZIPFileCompress(BSTR SourceFile, BSTR TargetFile) {
    return frame::guarded(int32_t{-6}, [&]() -> int32_t {
        // Both names pass the path normaliser first, as every file family's
        // names do before they reach the system.
        const std::string source = files::normalise_path(StrArg::by_val(SourceFile).text());
        const std::string target = files::normalise_path(StrArg::by_val(TargetFile).text());
        if (const int32_t bad = check_file_names(source, target))
            return bad;
        return code_files(
            target, [&] { return platform::File::open(source, platform::OpenMode::Read); },
            [&] { return GzipFile(target, "wb"); }, gzip_compress_file);
    });
}

// Expands a gzip file (zlib's reader, which copies a file that is not gzip
// as it is). Codes as cGZIPFileCompress, -4 when the reader cannot open the
// source, -5 when the target cannot be created, and -8 for an empty source,
// whose target is then not touched. A truncated or damaged gzip file gives -6.
BRINDLE_EXPORT(int32_t) cGZIPFileExpand(BSTR SourceFile, BSTR TargetFile) {
    return frame::guarded(int32_t{-6}, [&]() -> int32_t {
        const std::string source = files::normalise_path(StrArg::by_val(SourceFile).text());
        const std::string target = files::normalise_path(StrArg::by_val(TargetFile).text());
        if (const int32_t bad = check_file_names(source, target))
            return bad;
        if (files::named_file_size(source) == 0)
            return -8;
        return code_files(
            target, [&] { return GzipFile(source, "rb"); },
            [&] { return platform::File::open(target, platform::OpenMode::Create); }, gzip_expand_file);
    });
}

// zlib's compress() output for the text (default level); the empty string for
// an empty text or on failure.
BRINDLE_EXPORT(BSTR) cGZIPStringCompress(BSTR *Txt) {
    return frame::guarded_string([&] {
        const std::string_view text = StrArg::by_ref(Txt).bytes();
        std::string out;
        if (text.empty() || !zlib_compress(text, 0, out))
            return frame::empty_string();
        return frame::new_string(out);
    });
}

// Expands a zlib stream into at most 75 times its length; a longer expansion,
// or any zlib error, gives the empty string.
BRINDLE_EXPORT(BSTR) cGZIPStringExpand(BSTR *Txt) {
    return frame::guarded_string([&] {
        const std::string_view stream = StrArg::by_ref(Txt).bytes();
        std::string out;
        if (stream.empty() || !zlib_expand(stream, 75 * static_cast<uint64_t>(stream.size()), out))
            return frame::empty_string();
        return frame::new_string(out);
    });
}

// The text's length as 4 bytes, least significant first, then the zlib
// stream of cGZIPStringCompress.
BRINDLE_EXPORT(BSTR) cGZIPStringCompress2(BSTR *Txt) {
    return frame::guarded_string([&] {
        const std::string_view text = StrArg::by_ref(Txt).bytes();
        std::string out;
        if (text.empty() || !zlib_compress(text, 4, out))
            return frame::empty_string();
        const uint32_t n = static_cast<uint32_t>(text.size());
        for (int i = 0; i < 4; ++i)
            out[static_cast<size_t>(i)] = static_cast<char>(n >> (8 * i));
        return frame::new_string(out);
    });
}

// Expands a length-prefixed stream into at most the length it claims. The
// claim is only a limit: the result grows as the stream delivers data, so a
// short input that claims gigabytes costs no more memory than it expands to.
BRINDLE_EXPORT(BSTR) cGZIPStringExpand2(BSTR *Txt) {
    return frame::guarded_string([&] {
        const std::string_view in = StrArg::by_ref(Txt).bytes();
        if (in.size() < 5)
            return frame::empty_string();
        uint32_t claimed = 0;
        for (int i = 0; i < 4; ++i)
            claimed |= static_cast<uint32_t>(static_cast<uint8_t>(in[static_cast<size_t>(i)])) << (8 * i);
        std::string out;
        if (!zlib_expand(in.substr(4), claimed, out))
            return frame::empty_string();
        return frame::new_string(out);
    });
}
