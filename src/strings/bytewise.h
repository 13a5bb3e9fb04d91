// Bytewise logic of two strings of equal length.
#pragma once

#include <string>
#include <string_view>

namespace brindle::strings {

enum class ByteLogic { And, Or, Xor };

// a[k] op b[k] for every k; a and b must have the same length.
std::string bytewise(std::string_view a, std::string_view b, ByteLogic op);

} // namespace brindle::strings
