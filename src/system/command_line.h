// Splitting a command line into the program's name and its arguments.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brindle::system {

// The words of a command line: runs of characters separated by blanks
// (spaces and tabs). A double quote starts or ends a quoted part, in which
// blanks belong to the word; the quotes themselves are dropped, and "" gives
// an empty word. Nothing else is special (a backslash is an ordinary
// character). The first word is the program's name; no words when the line
// is empty or blank.
std::vector<std::string> command_words(std::string_view line);

// True when a program name holds a path ('/' or '\'), so it is used as
// given rather than looked for along "PATH".
bool names_a_path(std::string_view program) noexcept;

} // namespace brindle::system
