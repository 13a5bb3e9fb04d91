#include "compress/byte_pair_container.h"

#include "compress/byte_pair.h"

#include <cstring>
#include <vector>

namespace brindle::compress {

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

} // namespace

bool byte_pair_compress_file(platform::File &source, platform::File &target) {
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

bool byte_pair_expand_file(platform::File &source, platform::File &target) {
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

std::string byte_pair_pack_string(std::string_view text) {
    const std::string payload = byte_pair_compress(text);
    std::string packed(kBytePairMagic);
    packed += static_cast<char>((payload.size() >> 8) & 0xFF);
    packed += static_cast<char>(payload.size() & 0xFF);
    packed += payload;
    return packed;
}

std::optional<std::string> byte_pair_unpack_string(std::string_view in) {
    if (in.size() < kHeaderSize || in.substr(0, 3) != kBytePairMagic)
        return std::nullopt;
    const size_t stored = static_cast<size_t>(static_cast<uint8_t>(in[3])) * 256 + static_cast<uint8_t>(in[4]);
    if (stored != in.size() - kHeaderSize)
        return std::nullopt;
    std::string out;
    out.reserve(in.size() * 10);
    if (!byte_pair_expand(in.substr(kHeaderSize), out))
        return std::nullopt;
    return out;
}

} // namespace brindle::compress
