#include "strings/shuffle.h"

#include "runtime/crt_rand.h"

#include <utility>

namespace brindle::strings {

std::string shuffle_bytes(std::string_view text, uint32_t seed) {
    const size_t len = text.size();
    std::string buf(len, '\0');
    const size_t zero = text.find('\0');
    buf.replace(0, zero == std::string_view::npos ? len : zero, text.substr(0, zero));
    if (len == 0)
        return buf;
    using brindle::runtime::crt_rand;
    brindle::runtime::crt_srand(seed);
    for (size_t k = 0; k < len; ++k) {
        size_t i = static_cast<size_t>(crt_rand()) % len;
        size_t j = static_cast<size_t>(crt_rand()) % len;
        if (i == j) {
            i = static_cast<size_t>(crt_rand()) % len;
            j = static_cast<size_t>(crt_rand()) % len;
        }
        std::swap(buf[i], buf[j]);
    }
    return buf;
}

} // namespace brindle::strings
