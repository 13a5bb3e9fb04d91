// Byte-at-a-time input and output for the coders, with the per-byte path
// inline and the refills and drains behind one virtual call per buffer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace brindle::compress {

class ByteSource {
  public:
    virtual ~ByteSource() = default;
    // The next byte, or -1 at the end of the input (or on a read error,
    // which failed() then reports).
    int get() {
        if (pos_ == end_ && !refill())
            return -1;
        return *pos_++;
    }
    bool failed() const noexcept { return failed_; }

  protected:
    // Makes [pos_, end_) the next bytes; false at the end.
    virtual bool refill() = 0;
    const uint8_t *pos_ = nullptr, *end_ = nullptr;
    bool failed_ = false;
};

class ByteSink {
  public:
    virtual ~ByteSink() = default;
    void put(uint8_t byte) {
        if (pos_ == end_)
            drain();
        *pos_++ = byte;
    }
    void put(const void *data, size_t size) {
        const auto *p = static_cast<const uint8_t *>(data);
        for (size_t i = 0; i < size; ++i)
            put(p[i]);
    }
    // Hands everything put so far on; false once any write has failed.
    virtual bool finish() = 0;
    bool failed() const noexcept { return failed_; }

  protected:
    // Takes [begin_, pos_) away and makes room again (a failed write is
    // remembered in failed_ and the bytes dropped).
    virtual void drain() = 0;
    uint8_t *begin_ = nullptr, *pos_ = nullptr, *end_ = nullptr;
    bool failed_ = false;
};

// Input from memory.
class MemorySource final : public ByteSource {
  public:
    explicit MemorySource(std::string_view bytes) : bytes_(bytes) {}

  private:
    bool refill() override {
        if (done_)
            return false;
        done_ = true;
        pos_ = reinterpret_cast<const uint8_t *>(bytes_.data());
        end_ = pos_ + bytes_.size();
        return pos_ != end_;
    }
    std::string_view bytes_;
    bool done_ = false;
};

// Output to a growing string.
class StringSink final : public ByteSink {
  public:
    bool finish() override {
        out_.resize(static_cast<size_t>(pos_ - begin_));
        begin_ = pos_ = end_ = nullptr;
        return true;
    }
    std::string &str() { return out_; }

  private:
    void drain() override {
        const size_t used = static_cast<size_t>(pos_ - begin_);
        out_.resize(used < 4096 ? 8192 : used * 2);
        begin_ = reinterpret_cast<uint8_t *>(out_.data());
        pos_ = begin_ + used;
        end_ = begin_ + out_.size();
    }
    std::string out_;
};

} // namespace brindle::compress
