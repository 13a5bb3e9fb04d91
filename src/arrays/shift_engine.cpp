#include "arrays/shift_engine.h"

#include <cstring>

namespace brindle::arrays {

void shift_elements(unsigned char *base, size_t n, size_t width, const void *value, bool left) {
    if (n == 0)
        return;
    if (left) {
        std::memmove(base, base + width, (n - 1) * width);
        std::memcpy(base + (n - 1) * width, value, width);
    } else {
        std::memmove(base + width, base, (n - 1) * width);
        std::memcpy(base, value, width);
    }
}

} // namespace brindle::arrays
