// Small rules shared by the listing, counting and searching exports.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace brindle::files {

// The five bits the attribute tests compare: archive, hidden, read-only,
// system and compressed.
inline constexpr uint32_t kSelectableBits = 0x20 | 0x2 | 0x1 | 0x4 | 0x800;

// Exact test: all five bits agree. Loose test: at least one of them agrees
// (it fails only when all five differ - permissive on purpose). A directory
// passes neither.
bool attributes_exact(uint32_t entry, uint32_t mask) noexcept;
bool attributes_loose(uint32_t entry, uint32_t mask) noexcept;

// The attribute selector of the listing exports: 255 every file; 254 files
// with no attributes and files passing the loose test against archive; a
// negative value the exact test against its magnitude; 0 files with no
// attributes; any other positive value the loose test against itself.
bool selector_accepts(int16_t selector, uint32_t entry) noexcept;

// A volume argument as a root directory: empty stays empty (the current
// drive), "C" becomes "C:\", "C:" becomes "C:\", longer text is kept.
std::string volume_root(std::string_view root);
// The root of the volume a pattern names: its drive ("C:\") or the current
// drive ("").
std::string pattern_volume_root(std::string_view pattern);

// Sectors per cluster times bytes per sector of a volume; 0 when unknown.
uint64_t cluster_size(std::string_view root);

// A size rounded up to whole clusters (0 stays 0; no cluster size, no
// rounding).
uint64_t round_to_clusters(uint64_t size, uint64_t cluster) noexcept;

// (on disk - bytes) / on disk * 100, truncated; -1 when on disk is 0.
int16_t slack_percent(double bytes, double on_disk) noexcept;

// total - free with the two 32-bit halves subtracted separately and no
// borrow carried from the low half into the high one, as clients of the
// volume queries have always received it.
uint64_t subtract_without_borrow(uint64_t total, uint64_t free) noexcept;

// The running count of the bytes an export writes, given back as its Long
// result. The failure codes of such exports are negative, so a count of
// 2 GiB or more is given as 2,147,483,647 (the largest Long) instead of
// wrapping round into them; the count itself is kept in 64 bits.
class ByteTotal {
  public:
    // Adds the bytes of one write.
    void add(uint64_t bytes) noexcept { bytes_ += bytes; }
    // The count as the Long result: 0 .. 2,147,483,647.
    int32_t as_long() const noexcept;

  private:
    uint64_t bytes_ = 0;
};

} // namespace brindle::files
