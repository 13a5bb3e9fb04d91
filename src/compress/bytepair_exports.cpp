// Byte-pair compression of strings and files: the magic "KOV" and then the
// coder's blocks. A string adds its payload length (2 bytes, big-endian)
// after the magic, so a string payload is limited to 65535 bytes.
#include "compress/byte_pair.h"
#include "compress/compress_files.h"
#include "frame/frame.h"

#include <cstring>
#include <vector>

using namespace brindle;
using namespace brindle::compress;
using brindle::frame::StrArg;

namespace {

constexpr size_t kHeaderSize = 5; // magic and payload length of a string

class BlockReader {
  public:
    explicit BlockReader(platform::File &file, size_t capacity) : file_(file), buffer_(capacity) {}

    // Keeps at least `wanted` bytes ahead unless the file ends first; false
    // on a read error.
    bool ensure(size_t wanted) {
        if (end_ - start_ >= wanted || eof_)
            return true;
        std::memmove(buffer_.data(), buffer_.data() + start_, end_ - start_);
        end_ -= start_;
        start_ = 0;
        const size_t room = buffer_.size() - end_;
        const int64_t got = file_.read(buffer_.data() + end_, room);
        if (got < 0)
            return false;
        end_ += static_cast<size_t>(got);
        eof_ = static_cast<size_t>(got) < room;
        return true;
    }
    const uint8_t *data() const { return buffer_.data() + start_; }
    size_t available() const { return end_ - start_; }
    bool at_end() const { return eof_; }
    void skip(size_t n) { start_ += n; }

  private:
    platform::File &file_;
    std::vector<uint8_t> buffer_;
    size_t start_ = 0, end_ = 0;
    bool eof_ = false;
};

bool flush_output(platform::File &target, std::string &out) {
    const bool ok = target.write(out.data(), out.size());
    out.clear();
    return ok;
}

bool compress_file(platform::File &source, platform::File &target) {
    BlockReader in(source, 65536);
    std::string out(kBytePairMagic);
    bool last = false;
    while (!last) {
        if (!in.ensure(kBytePairBlockSize))
            return false;
        out.reserve(65536);
        in.skip(byte_pair_compress_block(in.data(), in.available(), in.at_end(), out, &last));
        if (out.size() >= 32768 && !flush_output(target, out))
            return false;
    }
    return flush_output(target, out);
}

bool expand_file(platform::File &source, platform::File &target) {
    BlockReader in(source, 2 * kBytePairMaxStoredBlock);
    if (!in.ensure(kBytePairMagic.size()) || in.available() < kBytePairMagic.size() ||
        std::memcmp(in.data(), kBytePairMagic.data(), kBytePairMagic.size()) != 0)
        return false;
    in.skip(kBytePairMagic.size());
    std::string out;
    for (;;) {
        if (!in.ensure(kBytePairMaxStoredBlock))
            return false;
        if (in.available() == 0)
            break;
        size_t used = 0;
        if (byte_pair_expand_block(in.data(), in.available(), out, &used) != BlockStatus::Ok)
            return false; // truncated (the reader keeps a whole block ahead) or corrupt
        in.skip(used);
        if (out.size() >= 32768 && !flush_output(target, out))
            return false;
    }
    return flush_output(target, out);
}

} // namespace

// Compresses a file into the byte-pair format; the target's size or -1 .. -7.
BRINDLE_EXPORT(int32_t) cFileCompress(BSTR *SourceFile, BSTR *TargetFile) {
    return frame::guarded(int32_t{-6}, [&] {
        return run_file_coder(StrArg::by_ref(SourceFile).text(), StrArg::by_ref(TargetFile).text(), compress_file);
    });
}

// Expands a byte-pair file; a source without the magic, or with a damaged
// block, gives -6.
BRINDLE_EXPORT(int32_t) cFileExpand(BSTR *SourceFile, BSTR *TargetFile) {
    return frame::guarded(int32_t{-6}, [&] {
        return run_file_coder(StrArg::by_ref(SourceFile).text(), StrArg::by_ref(TargetFile).text(), expand_file);
    });
}

// "KOV", the payload length (modulo 65536, high byte first) and the blocks;
// the empty string for an empty input.
BRINDLE_EXPORT(BSTR) cStringCompress(BSTR *Txt) {
    return frame::guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        if (text.empty())
            return frame::empty_string();
        const std::string payload = byte_pair_compress(text.bytes());
        frame::StringResult result(kHeaderSize + payload.size());
        char *p = result.data();
        std::memcpy(p, kBytePairMagic.data(), kBytePairMagic.size());
        p[3] = static_cast<char>((payload.size() >> 8) & 0xFF);
        p[4] = static_cast<char>(payload.size() & 0xFF);
        std::memcpy(p + kHeaderSize, payload.data(), payload.size());
        return result.take();
    });
}

// The original string; the empty string when the magic or the stored length
// does not match (so a payload above 65535 bytes is refused) or a block is
// damaged. The result grows as needed: each block expands to at most 5000
// bytes, which bounds it by about 1000 times the input.
BRINDLE_EXPORT(BSTR) cStringExpand(BSTR *Txt) {
    return frame::guarded_string([&] {
        const std::string_view in = StrArg::by_ref(Txt).bytes();
        if (in.size() < kHeaderSize || in.substr(0, 3) != kBytePairMagic)
            return frame::empty_string();
        const size_t stored = static_cast<size_t>(static_cast<uint8_t>(in[3])) * 256 + static_cast<uint8_t>(in[4]);
        if (stored != in.size() - kHeaderSize)
            return frame::empty_string();
        std::string out;
        out.reserve(in.size() * 10);
        if (!byte_pair_expand(in.substr(kHeaderSize), out))
            return frame::empty_string();
        return frame::new_string(out);
    });
}
