// Huge strings: a byte buffer of fixed capacity in one zero-initialised
// block, whose first 12 bytes are its header (Length, the write pointer WP
// and the next-read pointer NP, 32-bit little-endian), followed by the
// data. The client holds the block's number in the handle table; the block
// itself is real memory whose address the client may have, so the header
// is re-read on every call and never trusted: every copy is bounded by the
// capacity, whatever the header says.
#pragma once

#include "frame/handles.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace brindle::stores {

inline constexpr int32_t kHugeHeader = 12;
inline constexpr int32_t kHugePiece = 64000; // the read block

class HugeString : public frame::HandleObject {
  public:
    ~HugeString() override;
    // A zero-initialised block of capacity + 12 bytes; null without memory.
    static std::shared_ptr<HugeString> make(int32_t capacity);

    int32_t capacity() const noexcept { return capacity_; }
    uint8_t *block() const noexcept { return block_; }
    size_t block_size() const noexcept { return static_cast<size_t>(capacity_) + kHugeHeader; }

    int32_t length() const noexcept { return field(0); }
    int32_t wp() const noexcept { return field(4); }
    int32_t np() const noexcept { return field(8); }
    void set_length(int32_t v) noexcept { set_field(0, v); }
    void set_wp(int32_t v) noexcept { set_field(4, v); }
    void set_np(int32_t v) noexcept { set_field(8, v); }

    // Writes `text` at WP (Add) or at Length (Append); false when it is
    // empty or does not fit.
    bool add(std::string_view text) noexcept;
    bool append(std::string_view text) noexcept;

    // The 64000-byte blocks that Length spans.
    int32_t blocks() const noexcept;
    // The readers give views into the block, valid while the caller holds
    // the object.
    // Read block `n` (from 1): empty below 1 or past Length / 64000 + 1.
    std::string_view read_block(int32_t n) const;
    // `count` bytes (1..64000) from NP, NP advancing. Past Length the size
    // is the overshoot NP + count - Length, as the family always gave it;
    // the bytes may lie beyond Length but never beyond the capacity.
    std::string_view next(int32_t count);
    // `count` bytes (below 64000) from the 1-based `start`, with the same
    // overshoot rule; NP and WP stay.
    std::string_view mid(int32_t start, int32_t count) const;

    // A header a saved file may bring: Length and WP inside the capacity,
    // NP not negative.
    bool header_fits(const uint8_t *header) const noexcept;

  private:
    int32_t field(size_t offset) const noexcept;
    void set_field(size_t offset, int32_t v) noexcept;
    // The data bytes from `from`, `size` of them, cut at the capacity (a view
    // into the block, valid while the object lives).
    std::string_view data_bytes(int64_t from, int64_t size) const;

    uint8_t *block_ = nullptr;
    int32_t capacity_ = 0;
};

} // namespace brindle::stores
