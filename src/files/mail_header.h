// Reading the header of a mail message kept in a file (Internet message
// format): one field's value, and the addresses a message is sent to.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brindle::files {

// The header is read from the start of the file up to its first empty line,
// and at most this many bytes of it.
constexpr size_t kMailHeaderLimit = 1 << 20;

// The header of the message in `path` (without the empty line that ends
// it); false when the file cannot be opened or read.
bool read_mail_header(std::string_view path, std::string *header);

// The value of the first field called `name` (A-Z and a-z alike; a colon at
// the end of `name` is ignored) in `header`: its continuation lines joined
// to it (the line breaks taken out, the blanks kept), without the blanks
// around it. Lines that are neither a field nor a continuation (the "From "
// line of a mailbox) are skipped with their continuations. The header ends
// at its first empty line. "" when there is no such field.
std::string mail_header_field(std::string_view header, std::string_view name);

// The addresses of all To, Cc and Bcc fields, in order: from each entry of
// a field's comma-separated list the text between angle brackets where
// there is one (a source route before a colon in it dropped), otherwise
// the entry itself; comments in parentheses and blanks outside quotes taken
// out. Group names ("team: a@x, b@y;") are dropped and their members kept.
// Empty entries give nothing.
std::vector<std::string> mail_recipients(std::string_view header);

} // namespace brindle::files
