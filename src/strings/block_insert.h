// Placeholder filling: marks in a text replaced by pieces of another string.
#pragma once

#include <string>
#include <string_view>

namespace brindle::strings {

// Each `mark` of text replaced by the next block of `blocks`, whose blocks
// are separated by the same mark byte; once the blocks are used up the
// remaining marks are dropped.
std::string insert_blocks(std::string_view text, std::string_view blocks, char mark);

// Each `mark` of text replaced by the next byte of data; once data runs out
// the remaining marks become spaces.
std::string insert_by_mask(std::string_view text, char mark, std::string_view data);

} // namespace brindle::strings
