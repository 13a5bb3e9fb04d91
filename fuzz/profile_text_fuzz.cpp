// The profile-file parser and its edits on any bytes: the lines cover the
// text without gaps, names come trimmed, lookups find what they name, the
// buffer copies stay inside buffers of any size, and a value written with
// set_value reads back. Layout of an input: one byte giving a buffer size,
// then the text; a zero byte in the text splits off a section, a key and a
// value for the edits ("text\0section\0key\0value").
#include "fuzz_target.h"
#include "platform/profile_text.h"

#include "common/ascii.h"

#include <cstring>
#include <string>
#include <string_view>
#include <vector>

using namespace brindle::platform::profile;

namespace {

std::string_view next_field(std::string_view &rest) {
    const size_t zero = rest.find('\0');
    const std::string_view field = rest.substr(0, zero);
    rest = zero == std::string_view::npos ? std::string_view() : rest.substr(zero + 1);
    return field;
}

bool trimmed(std::string_view s) { return trim(s) == s; }

// The buffer copies with `size` bytes of room exactly (the sanitizers see
// any write past it); the result stays below the size and ends at a zero.
void check_copies(const ProfileText &text, uint32_t size) {
    std::vector<char> buffer(size == 0 ? 1 : size, '\x55');
    char *room = size == 0 ? nullptr : buffer.data();
    for (const std::string_view name : text.section_names()) {
        const uint32_t n = copy_value(name, room, size);
        FUZZ_CHECK(size == 0 ? n == 0 : n < size && buffer[n] == '\0');
        const uint32_t k = copy_key_list(text.key_names(name), room, size);
        FUZZ_CHECK(size == 0 ? k == 0 : k < size);
    }
    const uint32_t s = copy_section_list(text.section_names(), room, size);
    FUZZ_CHECK(size == 0 ? s == 0 : s < size && buffer[s] == '\0');
}

} // namespace

BRINDLE_FUZZ_TARGET(profile_text) {
    if (size < 1)
        return 0;
    const uint32_t buffer_size = data[0];
    std::string_view rest(reinterpret_cast<const char *>(data) + 1, size - 1);
    const std::string_view body = next_field(rest);
    const std::string_view section = next_field(rest), key = next_field(rest), value = next_field(rest);

    ProfileText text{std::string(body)};
    size_t at = text.lines().empty() ? 0 : text.lines().front().begin;
    FUZZ_CHECK(at <= 3);
    for (const Line &line : text.lines()) {
        FUZZ_CHECK(line.begin == at && line.next > line.begin && line.next <= body.size());
        at = line.next;
        FUZZ_CHECK(trimmed(line.name) && (line.kind != Line::Kind::Blank || line.name.empty()));
        FUZZ_CHECK(line.has_value || line.value.empty());
        if (line.has_value)
            FUZZ_CHECK(trimmed(line.value));
    }
    FUZZ_CHECK(text.lines().empty() ? body.size() <= 3 : at == body.size());

    // What a lookup finds carries the name asked for.
    for (const Line &line : text.lines())
        if (line.kind == Line::Kind::Section && !line.name.empty()) {
            for (const std::string_view name : text.key_names(line.name)) {
                const Line *found = text.find(line.name, name);
                FUZZ_CHECK(found != nullptr && brindle::common::equal_no_case(found->name, name));
            }
            break;
        }
    check_copies(text, buffer_size);

    // An edit: a value set reads back, as long as the names and the value
    // can stand on a line of their own.
    const bool plain = section.find_first_of("\r\n") == std::string_view::npos &&
                       key.find_first_of("\r\n=") == std::string_view::npos &&
                       value.find_first_of("\r\n") == std::string_view::npos && !trim(section).empty() &&
                       !trim(key).empty() && trim(key).front() != '[';
    const size_t sections_before = text.section_names().size();
    if (plain) {
        text.set_value(section, key, value);
        const Line *found = text.find(section, key);
        FUZZ_CHECK(found != nullptr && found->has_value && found->value == trim(value));
        FUZZ_CHECK(text.section_names().size() <= sections_before + 1);
        text.erase_key(section, key);
    }
    const size_t sections_now = text.section_names().size();
    if (text.erase_section(section))
        FUZZ_CHECK(text.section_names().size() == sections_now - 1);
    check_copies(text, buffer_size);
    return 0;
}
