// Small rules shared by the listing, counting and searching exports.
#include "files/file_sets.h"

#include "platform/file_info.h"

#include <cmath>

namespace brindle::files {

bool attributes_exact(uint32_t entry, uint32_t mask) noexcept {
    if (entry & platform::kAttrDirectory)
        return false;
    return ((entry ^ mask) & kSelectableBits) == 0;
}

bool attributes_loose(uint32_t entry, uint32_t mask) noexcept {
    if (entry & platform::kAttrDirectory)
        return false;
    return ((entry ^ mask) & kSelectableBits) != kSelectableBits;
}

bool selector_accepts(int16_t selector, uint32_t entry) noexcept {
    if (entry & platform::kAttrDirectory)
        return false;
    const bool none = (entry & ~static_cast<uint32_t>(platform::kAttrNormal)) == 0;
    switch (selector) {
    case 255:
        return true;
    case 254:
        return none || attributes_loose(entry, platform::kAttrArchive);
    case 0:
        return none;
    default:
        if (selector < 0)
            return attributes_exact(entry, static_cast<uint32_t>(-static_cast<int32_t>(selector)));
        return attributes_loose(entry, static_cast<uint32_t>(selector));
    }
}

std::string volume_root(std::string_view root) {
    std::string out(root);
    if (out.size() == 1)
        out += ":\\";
    else if (out.size() == 2)
        out += "\\";
    return out;
}

std::string pattern_volume_root(std::string_view pattern) {
    if (pattern.size() >= 2 && pattern[1] == ':')
        return std::string(1, pattern[0]) + ":\\";
    return std::string();
}

uint64_t cluster_size(std::string_view root) {
    platform::VolumeSpace v;
    if (!platform::volume_space(root, &v))
        return 0;
    return uint64_t{v.sectors_per_cluster} * v.bytes_per_sector;
}

uint64_t round_to_clusters(uint64_t size, uint64_t cluster) noexcept {
    if (cluster == 0 || size % cluster == 0)
        return size;
    return (size / cluster + 1) * cluster;
}

int16_t slack_percent(double bytes, double on_disk) noexcept {
    if (on_disk == 0)
        return -1;
    const double percent = std::trunc((on_disk - bytes) / on_disk * 100.0);
    if (!(percent > -32768.0 && percent < 32768.0))
        return -1; // only a wrapped byte total can leave the range
    return static_cast<int16_t>(percent);
}

uint64_t subtract_without_borrow(uint64_t total, uint64_t free) noexcept {
    const uint32_t low = static_cast<uint32_t>(total) - static_cast<uint32_t>(free);
    const uint32_t high = static_cast<uint32_t>(total >> 32) - static_cast<uint32_t>(free >> 32);
    return (uint64_t{high} << 32) | low;
}

int32_t ByteTotal::as_long() const noexcept {
    return bytes_ > INT32_MAX ? INT32_MAX : static_cast<int32_t>(bytes_);
}

} // namespace brindle::files
