#include "stores/huge_string.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace brindle::stores {

HugeString::~HugeString() { std::free(block_); }

std::shared_ptr<HugeString> HugeString::make(int32_t capacity) {
    if (capacity < 0 || capacity > INT32_MAX - kHugeHeader)
        return nullptr;
    auto s = std::make_shared<HugeString>();
    s->block_ = static_cast<uint8_t *>(std::calloc(static_cast<size_t>(capacity) + kHugeHeader, 1));
    if (s->block_ == nullptr)
        return nullptr;
    s->capacity_ = capacity;
    return s;
}

int32_t HugeString::field(size_t offset) const noexcept {
    uint32_t v = 0;
    for (size_t i = 0; i < 4; ++i)
        v |= static_cast<uint32_t>(block_[offset + i]) << (8 * i);
    return static_cast<int32_t>(v);
}

void HugeString::set_field(size_t offset, int32_t v) noexcept {
    const auto u = static_cast<uint32_t>(v);
    for (size_t i = 0; i < 4; ++i)
        block_[offset + i] = static_cast<uint8_t>(u >> (8 * i));
}

std::string_view HugeString::data_bytes(int64_t from, int64_t size) const {
    if (from < 0 || from >= capacity_ || size <= 0)
        return {};
    size = std::min<int64_t>(size, capacity_ - from);
    const auto *p = reinterpret_cast<const char *>(block_ + kHugeHeader + from);
    return std::string_view(p, static_cast<size_t>(size));
}

bool HugeString::add(std::string_view text) noexcept {
    const int64_t l = static_cast<int64_t>(text.size());
    const int64_t at = wp();
    if (l < 1 || at < 0 || at + l > capacity_)
        return false;
    std::memcpy(block_ + kHugeHeader + at, text.data(), text.size());
    set_length(static_cast<int32_t>(std::max<int64_t>(length(), at + l)));
    set_wp(static_cast<int32_t>(at + l));
    return true;
}

bool HugeString::append(std::string_view text) noexcept {
    const int64_t l = static_cast<int64_t>(text.size());
    const int64_t at = length();
    if (l < 1 || at < 0 || at + l > capacity_)
        return false;
    std::memcpy(block_ + kHugeHeader + at, text.data(), text.size());
    set_length(static_cast<int32_t>(at + l));
    return true;
}

int32_t HugeString::blocks() const noexcept {
    const int32_t l = length();
    if (l <= 0)
        return 0;
    return l / kHugePiece + (l % kHugePiece != 0 ? 1 : 0);
}

std::string_view HugeString::read_block(int32_t n) const {
    const int64_t l = length();
    if (n < 1 || l < 0 || n > l / kHugePiece + 1)
        return {};
    const int64_t from = int64_t{n - 1} * kHugePiece;
    return data_bytes(from, std::min<int64_t>(kHugePiece, l - from));
}

std::string_view HugeString::next(int32_t count) {
    const int64_t l = length(), at = np();
    if (count < 1 || count > kHugePiece || at >= l || at < 0)
        return {};
    int64_t size = count;
    if (at + count > l)
        size = at + count - l; // the overshoot, not the remainder: kept as it always was
    set_np(static_cast<int32_t>(std::min<int64_t>(at + size, INT32_MAX)));
    return data_bytes(at, size);
}

std::string_view HugeString::mid(int32_t start, int32_t count) const {
    const int64_t l = length();
    if (start < 1 || start > l || count >= kHugePiece || count < 1)
        return {};
    int64_t size = count;
    if (int64_t{start} + count > l)
        size = int64_t{start} + count - l;
    return data_bytes(start - 1, size);
}

bool HugeString::header_fits(const uint8_t *header) const noexcept {
    int32_t v[3];
    for (int k = 0; k < 3; ++k) {
        uint32_t u = 0;
        for (int i = 0; i < 4; ++i)
            u |= static_cast<uint32_t>(header[4 * k + i]) << (8 * i);
        v[k] = static_cast<int32_t>(u);
    }
    return v[0] >= 0 && v[0] <= capacity_ && v[1] >= 0 && v[1] <= capacity_ && v[2] >= 0;
}

} // namespace brindle::stores
