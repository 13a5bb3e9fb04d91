#include "platform/profile_text.h"

#include "common/ascii.h"

#include <algorithm>
#include <cstring>

namespace brindle::platform::profile {

using common::equal_no_case;

bool is_profile_space(char c) noexcept {
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r' || c == '\x1a';
}

std::string_view trim(std::string_view s) noexcept {
    while (!s.empty() && is_profile_space(s.front()))
        s.remove_prefix(1);
    while (!s.empty() && is_profile_space(s.back()))
        s.remove_suffix(1);
    return s;
}

namespace {

std::string_view trim_left(std::string_view s) noexcept {
    while (!s.empty() && is_profile_space(s.front()))
        s.remove_prefix(1);
    return s;
}

std::string_view trim_right(std::string_view s) noexcept {
    while (!s.empty() && is_profile_space(s.back()))
        s.remove_suffix(1);
    return s;
}

} // namespace

ProfileText::ProfileText(std::string text) : text_(std::move(text)) { parse(); }

void ProfileText::parse() {
    lines_.clear();
    const std::string_view all(text_);
    size_t at = 0;
    // A UTF-8 byte-order mark is not part of the first line.
    if (all.substr(0, 3) == "\xEF\xBB\xBF")
        at = 3;
    while (at < all.size()) {
        Line line;
        line.begin = at;
        const size_t feed = all.find('\n', at);
        line.next = feed == std::string_view::npos ? all.size() : feed + 1;
        const std::string_view content = trim(all.substr(at, line.next - at));
        at = line.next;
        if (content.empty()) {
            lines_.push_back(line);
            continue;
        }
        if (content.front() == '[') {
            const size_t close = content.rfind(']');
            if (close != std::string_view::npos) {
                line.kind = Line::Kind::Section;
                line.name = trim(content.substr(1, close - 1));
                lines_.push_back(line);
                continue;
            }
        }
        line.kind = Line::Kind::Entry;
        const size_t equals = content.find('=');
        if (equals == std::string_view::npos) {
            line.name = content;
        } else {
            line.name = trim_right(content.substr(0, equals));
            line.value = trim_left(content.substr(equals + 1));
            line.has_value = true;
        }
        lines_.push_back(line);
    }
}

size_t ProfileText::section_line(std::string_view name) const {
    for (size_t i = 0; i < lines_.size(); ++i)
        if (lines_[i].kind == Line::Kind::Section && !lines_[i].name.empty() && equal_no_case(lines_[i].name, name))
            return i;
    return lines_.size();
}

size_t ProfileText::section_end(size_t at) const {
    size_t i = at + 1;
    while (i < lines_.size() && lines_[i].kind != Line::Kind::Section)
        ++i;
    return i;
}

const Line *ProfileText::find(std::string_view section, std::string_view key) const {
    const size_t at = section_line(trim(section));
    if (at == lines_.size())
        return nullptr;
    key = trim(key);
    const size_t end = section_end(at);
    for (size_t i = at + 1; i < end; ++i)
        if (lines_[i].kind == Line::Kind::Entry && equal_no_case(lines_[i].name, key))
            return &lines_[i];
    return nullptr;
}

std::vector<std::string_view> ProfileText::key_names(std::string_view section) const {
    std::vector<std::string_view> names;
    const size_t at = section_line(section);
    if (at == lines_.size())
        return names;
    const size_t end = section_end(at);
    for (size_t i = at + 1; i < end; ++i) {
        const Line &l = lines_[i];
        if (l.kind == Line::Kind::Entry && l.has_value && !l.name.empty() && l.name.front() != ';')
            names.push_back(l.name);
    }
    return names;
}

std::vector<std::string_view> ProfileText::section_names() const {
    std::vector<std::string_view> names;
    for (const Line &l : lines_)
        if (l.kind == Line::Kind::Section && !l.name.empty())
            names.push_back(l.name);
    return names;
}

void ProfileText::splice(size_t from, size_t to, std::string_view with) {
    text_.replace(from, to - from, with);
    parse();
}

bool ProfileText::set_value(std::string_view section, std::string_view key, std::string_view value) {
    section = trim(section);
    key = trim(key);
    value = trim_left(value);
    if (const Line *found = find(section, key)) {
        if (found->has_value && found->value == value)
            return false;
        // The line's own line end stays.
        size_t stop = found->next;
        if (stop > found->begin && text_[stop - 1] == '\n') {
            --stop;
            if (stop > found->begin && text_[stop - 1] == '\r')
                --stop;
        }
        const std::string line = std::string(found->name) + "=" + std::string(value);
        splice(found->begin, stop, line);
        return true;
    }
    std::string added;
    size_t where = text_.size();
    const size_t at = section_line(section);
    if (at != lines_.size()) {
        size_t last = at;
        for (size_t i = at + 1; i < section_end(at); ++i)
            if (lines_[i].kind != Line::Kind::Blank)
                last = i;
        where = lines_[last].next;
    } else {
        added = "[" + std::string(section) + "]\r\n";
    }
    added += std::string(key) + "=" + std::string(value) + "\r\n";
    if (where > 0 && text_[where - 1] != '\n' && !(where == 3 && text_.compare(0, 3, "\xEF\xBB\xBF") == 0))
        added.insert(0, "\r\n");
    splice(where, where, added);
    return true;
}

bool ProfileText::erase_key(std::string_view section, std::string_view key) {
    for (size_t at = 0; at < lines_.size(); ++at) {
        const Line &head = lines_[at];
        if (head.kind != Line::Kind::Section || head.name.empty() || !equal_no_case(head.name, section))
            continue;
        const size_t end = section_end(at);
        for (size_t i = at + 1; i < end; ++i)
            if (lines_[i].kind == Line::Kind::Entry && equal_no_case(lines_[i].name, key)) {
                splice(lines_[i].begin, lines_[i].next, {});
                return true;
            }
    }
    return false;
}

bool ProfileText::erase_section(std::string_view section) {
    const size_t at = section_line(section);
    if (at == lines_.size())
        return false;
    const size_t end = section_end(at);
    const size_t stop = end < lines_.size() ? lines_[end].begin : text_.size();
    splice(lines_[at].begin, stop, {});
    return true;
}

uint32_t copy_value(std::string_view value, char *buffer, uint32_t size) noexcept {
    if (buffer == nullptr || size == 0)
        return 0;
    bool quoted = false;
    if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front()) {
        quoted = true;
        value.remove_prefix(1); // the closing quote goes below
    }
    size_t kept = std::min<size_t>(value.size(), size - 1);
    std::memcpy(buffer, value.data(), kept);
    // The system drops the last byte kept whenever the value without its
    // opening quote fits the buffer: the closing quote, or, when that was
    // already cut, the last character before it.
    if (quoted && size >= value.size() && kept > 0)
        --kept;
    buffer[kept] = '\0';
    return static_cast<uint32_t>(kept);
}

uint32_t copy_key_list(const std::vector<std::string_view> &names, char *buffer, uint32_t size) noexcept {
    if (buffer == nullptr || size == 0)
        return 0;
    if (size < 2) {
        buffer[0] = '\0';
        return 0;
    }
    uint32_t left = size;
    char *out = buffer;
    for (const std::string_view name : names) {
        if (left <= 2)
            break;
        const size_t kept = std::min<size_t>(name.size(), left - 2);
        std::memcpy(out, name.data(), kept);
        out[kept] = '\0';
        out += kept + 1;
        left -= static_cast<uint32_t>(kept + 1);
        if (left < 2)
            break;
    }
    *out = '\0';
    if (left <= 1) {
        out[-1] = '\0';
        return size - 2;
    }
    return size - left;
}

uint32_t copy_section_list(const std::vector<std::string_view> &names, char *buffer, uint32_t size) noexcept {
    if (buffer == nullptr || size == 0)
        return 0;
    if (size == 1) {
        buffer[0] = '\0';
        return 0;
    }
    uint32_t room = size - 1;
    char *out = buffer;
    for (const std::string_view name : names) {
        const size_t need = name.size() + 1;
        if (need >= room) {
            std::memcpy(out, name.data(), room - 1);
            out += room - 1;
            *out++ = '\0';
            *out = '\0';
            return size - 2;
        }
        std::memcpy(out, name.data(), name.size());
        out[name.size()] = '\0';
        out += need;
        room -= static_cast<uint32_t>(need);
    }
    *out = '\0';
    return static_cast<uint32_t>(out - buffer);
}

} // namespace brindle::platform::profile
