#include "stores/element_type.h"

#include <cstdlib>

namespace brindle::stores {

int32_t element_size(int16_t var_type) noexcept {
    switch (var_type) {
    case -6:
    case -5:
        return 8;
    case -4:
    case -3:
        return 4;
    case -2:
        return 2;
    case -1:
        return 1;
    default:
        return std::abs(static_cast<int32_t>(var_type)); // -32768 gives 32768
    }
}

frame::ElementKind element_kind(int16_t var_type) noexcept {
    using frame::ElementKind;
    switch (var_type) {
    case -6:
        return ElementKind::Currency;
    case -5:
        return ElementKind::Double;
    case -4:
        return ElementKind::Single;
    case -3:
        return ElementKind::Long;
    case -2:
        return ElementKind::Integer;
    case -1:
        return ElementKind::Byte;
    default:
        return ElementKind::Text;
    }
}

uint8_t fill_byte(int16_t var_type, int16_t no_spaces) noexcept {
    return var_type > 0 && no_spaces == 0 ? uint8_t{' '} : uint8_t{0};
}

} // namespace brindle::stores
