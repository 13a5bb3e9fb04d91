// Gzip files and zlib streams in strings, through zlib. zlib does the
// compression; what is ours is the checking of the arguments, the layout of
// the strings and the result codes.
#include "compress/compress_files.h"
#include "files/path_names.h"
#include "frame/frame.h"

#include <zlib.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>

using namespace brindle;
using namespace brindle::compress;
using brindle::frame::StrArg;

namespace {

constexpr size_t kTransferSize = 65536;

// zlib opens files itself: hand it the name the system wants. A directory
// cannot be opened as a file on Windows, so it is refused here as well.
gzFile open_gzip(std::string_view name, const char *mode) {
    if (platform::directory_exists(name))
        return nullptr;
    return gzopen(platform::native_path(name).c_str(), mode);
}

// The compressed form of `data` as zlib's one-shot compress() makes it,
// written after `prefix` bytes of room; false on a zlib error.
bool zlib_compress(std::string_view data, size_t prefix, std::string &out) {
    const size_t n = data.size();
    uLongf room = static_cast<uLongf>(n + n / 1000 + 16); // always above compressBound(n)
    out.resize(prefix + room);
    if (::compress(reinterpret_cast<Bytef *>(out.data() + prefix), &room, reinterpret_cast<const Bytef *>(data.data()),
                 static_cast<uLong>(n)) != Z_OK)
        return false;
    out.resize(prefix + room);
    return true;
}

// What uncompress() into a buffer of `limit` bytes gives: the whole stream
// expanded (bytes after its end ignored), or false on any zlib error,
// including an expansion longer than `limit`. The buffer grows as the output
// arrives, so a hostile limit costs nothing until data backs it.
bool zlib_expand(std::string_view stream, uint64_t limit, std::string &out) {
    z_stream z{};
    if (inflateInit(&z) != Z_OK)
        return false;
    z.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(stream.data()));
    z.avail_in = static_cast<uInt>(stream.size());
    unsigned char dummy = 0; // a zero limit still needs somewhere to point
    uint64_t given = 0;
    int rc = Z_OK;
    for (;;) {
        if (z.avail_out == 0) {
            if (given == limit) {
                if (limit == 0 && z.next_out == nullptr) {
                    z.next_out = &dummy;
                    z.avail_out = 1;
                } else {
                    rc = Z_BUF_ERROR; // more output than the limit allows
                    break;
                }
            } else {
                const uint64_t grow = std::min<uint64_t>(limit - given, std::max<uint64_t>(out.size(), 65536));
                const size_t used = out.size();
                out.resize(used + grow);
                z.next_out = reinterpret_cast<Bytef *>(out.data()) + used;
                z.avail_out = static_cast<uInt>(grow);
                given += grow;
            }
        }
        rc = inflate(&z, Z_NO_FLUSH);
        if (rc != Z_OK)
            break;
    }
    const uint64_t produced = z.total_out;
    inflateEnd(&z);
    if (rc != Z_STREAM_END || produced > limit)
        return false;
    out.resize(static_cast<size_t>(produced));
    return true;
}

} // namespace

// Compresses a file into a gzip file (zlib's writer, mode "wb"). Codes: -1/-2
// empty names, -3 the same file, -4 source not opened (an empty gzip file is
// left under the target name), -5 target not opened, -6 read, write or close
// failure, -7 target size unreadable; otherwise the target's size.
BRINDLE_EXPORT(int32_t) cGZIPFileCompress(BSTR SourceFile, BSTR TargetFile) {
    return frame::guarded(int32_t{-6}, [&]() -> int32_t {
        // Both names pass the path normaliser first, as every file family's
        // names do before they reach the system.
        const std::string source = files::NormalisePath(StrArg::by_val(SourceFile).text());
        const std::string target = files::NormalisePath(StrArg::by_val(TargetFile).text());
        if (const int32_t bad = check_file_names(source, target))
            return bad;
        platform::File in = platform::File::open(source, platform::OpenMode::Read);
        gzFile out = open_gzip(target, "wb");
        if (!in.is_open()) {
            if (out != nullptr)
                gzclose(out);
            return -4;
        }
        if (out == nullptr)
            return -5;
        gzbuffer(out, 128 * 1024);
        auto buffer = std::make_unique<char[]>(kTransferSize);
        bool ok = true;
        for (;;) {
            const int64_t got = in.read(buffer.get(), kTransferSize);
            if (got < 0) {
                ok = false;
                break;
            }
            if (got == 0)
                break;
            if (gzwrite(out, buffer.get(), static_cast<unsigned>(got)) != static_cast<int>(got)) {
                ok = false;
                break;
            }
        }
        in.close();
        ok = gzclose(out) == Z_OK && ok;
        if (!ok)
            return -6;
        return target_size_result(target);
    });
}

// Expands a gzip file (zlib's reader, which copies a file that is not gzip
// as it is). Codes as cGZIPFileCompress, -4 when the reader cannot open the
// source, -5 when the target cannot be created, and -8 for an empty source,
// whose target is then not touched. A truncated or damaged gzip file gives -6.
BRINDLE_EXPORT(int32_t) cGZIPFileExpand(BSTR SourceFile, BSTR TargetFile) {
    return frame::guarded(int32_t{-6}, [&]() -> int32_t {
        // Both names pass the path normaliser first, as every file family's
        // names do before they reach the system.
        const std::string source = files::NormalisePath(StrArg::by_val(SourceFile).text());
        const std::string target = files::NormalisePath(StrArg::by_val(TargetFile).text());
        if (const int32_t bad = check_file_names(source, target))
            return bad;
        if (files::NamedFileSize(source) == 0)
            return -8;
        gzFile in = open_gzip(source, "rb");
        platform::File out = platform::File::open(target, platform::OpenMode::Create);
        if (in == nullptr)
            return -4;
        if (!out.is_open()) {
            gzclose(in);
            return -5;
        }
        gzbuffer(in, 128 * 1024);
        auto buffer = std::make_unique<char[]>(kTransferSize);
        bool ok = true;
        for (;;) {
            const int got = gzread(in, buffer.get(), static_cast<unsigned>(kTransferSize));
            if (got < 0) {
                ok = false;
                break;
            }
            if (got == 0)
                break;
            if (!out.write(buffer.get(), static_cast<size_t>(got))) {
                ok = false;
                break;
            }
        }
        ok = out.close() && ok;
        // A stream cut short reads as a plain end; the reader's close reports it.
        ok = gzclose(in) == Z_OK && ok;
        if (!ok)
            return -6;
        return target_size_result(target);
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
