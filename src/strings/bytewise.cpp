#include "strings/bytewise.h"

namespace brindle::strings {

std::string bytewise(std::string_view a, std::string_view b, ByteLogic op) {
    std::string out(a.size(), '\0');
    for (size_t k = 0; k < a.size() && k < b.size(); ++k) {
        const auto x = static_cast<unsigned char>(a[k]), y = static_cast<unsigned char>(b[k]);
        const unsigned r = op == ByteLogic::And ? (x & y) : op == ByteLogic::Or ? (x | y) : (x ^ y);
        out[k] = static_cast<char>(r);
    }
    return out;
}

} // namespace brindle::strings
