// The two ways an element is written, shared by the three store families: a
// value converted from the caller's Variant, or the caller's bytes as they
// are. And the two ways it is read back.
#pragma once

#include "frame/variants.h"
#include "stores/array_file.h"

#include <cstring>
#include <optional>

namespace brindle::stores {

// Converts the caller's Variant to the element's type (text cut or padded
// with blanks); a value that does not convert writes nothing.
inline ElementMaker from_variant(const VARIANT *value) {
    return [value](frame::ElementKind kind, uint8_t *out, size_t size) {
        return value != nullptr && frame::element_from_variant(kind, value, out, size);
    };
}

// The first `size` bytes of the caller's variable, unchanged.
inline ElementMaker from_bytes(const void *element) {
    return [element](frame::ElementKind, uint8_t *out, size_t size) {
        if (element == nullptr)
            return false;
        std::memcpy(out, element, size);
        return true;
    };
}

// The element as a Variant; Empty when there was none.
inline VARIANT to_variant(const std::optional<StoredElement> &element) noexcept {
    if (!element)
        return frame::empty_variant();
    return frame::element_variant(element->kind, element->bytes.data(), element->bytes.size());
}

// The element's bytes into the caller's variable.
inline void to_bytes(const std::optional<StoredElement> &element, void *out) noexcept {
    if (element && out != nullptr)
        std::memcpy(out, element->bytes.data(), element->bytes.size());
}

} // namespace brindle::stores
