// The mail-header scanners on any header text: a field's value holds no line
// feed and no blank at either end, and is found again when the header is
// cut just after it; every recipient is a non-empty address without line
// breaks or blanks outside quotes. Layout of an input: one byte giving the
// length of the field name (up to 15), the name, then the header.
#include "files/mail_header.h"
#include "fuzz_target.h"

#include <string>
#include <string_view>

using namespace brindle::files;

BRINDLE_FUZZ_TARGET(mail_header) {
    if (size < 1)
        return 0;
    const size_t name_size = data[0] % 16 < size - 1 ? data[0] % 16 : size - 1;
    const std::string_view name(reinterpret_cast<const char *>(data) + 1, name_size);
    const std::string_view header(reinterpret_cast<const char *>(data) + 1 + name_size, size - 1 - name_size);

    const std::string value = mail_header_field(header, name);
    FUZZ_CHECK(value.find('\n') == std::string::npos);
    if (!value.empty()) {
        FUZZ_CHECK(value.front() != ' ' && value.front() != '\t' && value.back() != ' ' && value.back() != '\t');
        FUZZ_CHECK(value.size() <= header.size());
    }
    // Adding a field after the end of the header changes nothing.
    std::string longer(header);
    longer += "\r\n\r\nTo: late@example.com\r\n";
    FUZZ_CHECK(mail_header_field(longer, name) == value);

    for (const std::string &address : mail_recipients(header)) {
        FUZZ_CHECK(!address.empty());
        FUZZ_CHECK(address.find('\n') == std::string::npos);
        bool quoted = false;
        for (size_t i = 0; i < address.size(); ++i) {
            if (address[i] == '\\') {
                ++i;
                continue;
            }
            if (address[i] == '"')
                quoted = !quoted;
            FUZZ_CHECK(quoted || (address[i] != ' ' && address[i] != '\t'));
        }
    }
    return 0;
}
