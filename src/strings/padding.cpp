#include "strings/padding.h"

#include <algorithm>
#include <cstring>

namespace brindle::strings {

void pad_to_width(std::string_view text, char fill, bool left, std::span<char> out) noexcept {
    const size_t pad = out.size() - text.size();
    char *at = out.data();
    if (left) {
        std::memset(at, fill, pad);
        std::memcpy(at + pad, text.data(), text.size());
    } else {
        std::memcpy(at, text.data(), text.size());
        std::memset(at + text.size(), fill, pad);
    }
}

void repeat_to_length(std::string_view pattern, std::span<char> out) noexcept {
    for (size_t done = 0; done < out.size();) {
        const size_t n = std::min(pattern.size(), out.size() - done);
        std::memcpy(out.data() + done, pattern.data(), n);
        done += n;
    }
}

void resize_and_fill(std::string_view text, char fill, std::span<char> out) noexcept {
    const size_t kept = std::min(text.size(), out.size());
    std::memcpy(out.data(), text.data(), kept);
    std::memset(out.data() + kept, fill, out.size() - kept);
}

void align_in_field(std::string_view text, int mode, std::span<char> out) noexcept {
    const size_t width = out.size();
    if (width <= text.size()) {
        std::memcpy(out.data(), text.data(), width);
        return;
    }
    const size_t d = width - text.size();
    const size_t before = mode < 0 ? d : mode == 0 ? d - d / 2 : 0;
    std::memset(out.data(), ' ', width);
    std::memcpy(out.data() + before, text.data(), text.size());
}

} // namespace brindle::strings
