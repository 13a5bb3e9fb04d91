#include "files/mail_header.h"

#include "common/ascii.h"
#include "platform/file.h"

#include <memory>

namespace brindle::files {

namespace {

bool blank(char c) { return c == ' ' || c == '\t'; }

std::string_view trim(std::string_view s) {
    while (!s.empty() && (blank(s.front()) || s.front() == '\r'))
        s.remove_prefix(1);
    while (!s.empty() && (blank(s.back()) || s.back() == '\r'))
        s.remove_suffix(1);
    return s;
}

bool same_name(std::string_view a, std::string_view b) {
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (common::ascii_lower(a[i]) != common::ascii_lower(b[i]))
            return false;
    return true;
}

// One field of the header: its name and its value, unfolded.
struct Field {
    std::string_view name;
    std::string value;
};

// Calls visit(field) for every field of the header until it returns true.
template <class Visit> void each_field(std::string_view header, Visit &&visit) {
    Field field;
    bool open = false;  // a field is being gathered
    bool skip = false;  // continuation lines of a line that is no field
    size_t at = 0;
    for (;;) {
        const bool more = at < header.size();
        std::string_view line;
        if (more) {
            const size_t lf = header.find('\n', at);
            const size_t end = lf == std::string_view::npos ? header.size() : lf;
            line = header.substr(at, end - at);
            at = lf == std::string_view::npos ? header.size() : lf + 1;
            if (!line.empty() && line.back() == '\r')
                line.remove_suffix(1);
        }
        if (more && !line.empty() && blank(line.front())) { // a continuation
            if (open)
                field.value += line;
            continue;
        }
        if (open && visit(field))
            return;
        open = false;
        if (!more || line.empty()) // the empty line ends the header
            return;
        const size_t colon = line.find(':');
        std::string_view name = colon == std::string_view::npos ? std::string_view() : line.substr(0, colon);
        while (!name.empty() && blank(name.back()))
            name.remove_suffix(1);
        bool ok = !name.empty();
        for (const char c : name)
            ok = ok && static_cast<unsigned char>(c) > 32 && static_cast<unsigned char>(c) < 127;
        skip = !ok;
        if (skip)
            continue;
        field.name = name;
        field.value.assign(line.substr(colon + 1));
        open = true;
    }
}

// Appends the bytes of an address outside comments, without the blanks
// outside quotes; quotes and backslash escapes are kept as written.
std::string clean_address(std::string_view s) {
    std::string out;
    int depth = 0;
    bool quoted = false;
    for (size_t i = 0; i < s.size(); ++i) {
        const char c = s[i];
        if (c == '\\' && i + 1 < s.size()) {
            if (depth == 0) {
                out += c;
                out += s[i + 1];
            }
            ++i;
        } else if (quoted) {
            out += c;
            quoted = c != '"';
        } else if (c == '(') {
            ++depth;
        } else if (c == ')' && depth > 0) {
            --depth;
        } else if (depth > 0) {
        } else if (c == '"') {
            out += c;
            quoted = true;
        } else if (!blank(c) && c != '\r' && c != '\n') {
            out += c;
        }
    }
    return out;
}

// One entry of an address list: the text in its angle brackets when it has
// them, else all of it.
void add_entry(std::string_view entry, size_t open_angle, size_t close_angle, std::vector<std::string> *out) {
    std::string address;
    if (open_angle != std::string_view::npos) {
        std::string_view inside = entry.substr(open_angle + 1, close_angle - open_angle - 1);
        address = clean_address(inside);
        // A source route: "@relay1,@relay2:user@host".
        if (!address.empty() && address.front() == '@') {
            size_t colon = std::string::npos;
            bool quoted = false;
            for (size_t i = 0; i < address.size() && colon == std::string::npos; ++i) {
                if (address[i] == '\\')
                    ++i;
                else if (address[i] == '"')
                    quoted = !quoted;
                else if (address[i] == ':' && !quoted)
                    colon = i;
            }
            address = colon == std::string::npos ? std::string() : address.substr(colon + 1);
        }
    } else {
        address = clean_address(entry);
    }
    if (!address.empty())
        out->push_back(std::move(address));
}

// Splits an address list at the commas, colons and semicolons that stand
// outside quotes, comments and angle brackets.
void split_addresses(std::string_view list, std::vector<std::string> *out) {
    constexpr size_t npos = std::string_view::npos;
    size_t start = 0, open_angle = npos, close_angle = npos;
    int depth = 0;
    bool quoted = false, angle = false;
    const size_t n = list.size();
    for (size_t i = 0; i <= n; ++i) {
        const bool at_end = i == n;
        const char c = at_end ? ',' : list[i];
        if (!at_end) {
            if (c == '\\') {
                if (i + 1 < n)
                    ++i;
                continue;
            }
            if (quoted) {
                quoted = c != '"';
                continue;
            }
            if (depth > 0) {
                depth += c == '(' ? 1 : c == ')' ? -1 : 0;
                continue;
            }
            if (angle) {
                if (c == '>') {
                    angle = false;
                    close_angle = i - start;
                }
                continue;
            }
        } else if (angle) { // an angle bracket never closed
            close_angle = i - start;
        }
        if (c == '"') {
            quoted = true;
        } else if (c == '(') {
            depth = 1;
        } else if (c == '<') {
            if (open_angle == npos) {
                open_angle = i - start;
                angle = true;
            }
        } else if (c == ':') {
            // A group's name ends here, unless an address came first.
            if (open_angle == npos)
                start = i + 1;
        } else if (c == ',' || c == ';') {
            add_entry(list.substr(start, i - start), open_angle, close_angle, out);
            start = i + 1;
            open_angle = close_angle = npos;
        }
    }
}

} // namespace

bool read_mail_header(std::string_view path, std::string *header) {
    header->clear();
    platform::File in = platform::File::open(path, platform::OpenMode::Read);
    if (!in.is_open())
        return false;
    constexpr size_t kBlock = 8192;
    std::unique_ptr<char[]> block(new char[kBlock]);
    while (header->size() < kMailHeaderLimit) {
        const size_t want = kMailHeaderLimit - header->size() < kBlock ? kMailHeaderLimit - header->size() : kBlock;
        const int64_t got = in.read(block.get(), want);
        if (got < 0)
            return false;
        if (got == 0)
            break;
        const size_t from = header->size() > 3 ? header->size() - 3 : 0;
        header->append(block.get(), static_cast<size_t>(got));
        if ((*header)[0] == '\n' || (header->size() > 1 && (*header)[0] == '\r' && (*header)[1] == '\n')) {
            header->clear(); // no header at all
            return true;
        }
        // The empty line: a line feed followed by CR LF or by a line feed
        // (or one at the very start).
        for (size_t i = from; i < header->size(); ++i) {
            if ((*header)[i] != '\n')
                continue;
            size_t j = i + 1;
            if (j < header->size() && (*header)[j] == '\r')
                ++j;
            if (j < header->size() && (*header)[j] == '\n') {
                header->resize(i + 1);
                return true;
            }
        }
    }
    return true;
}

std::string mail_header_field(std::string_view header, std::string_view name) {
    if (!name.empty() && name.back() == ':')
        name.remove_suffix(1);
    name = trim(name);
    std::string found;
    if (name.empty())
        return found;
    each_field(header, [&](const Field &f) {
        if (!same_name(f.name, name))
            return false;
        found.assign(trim(f.value));
        return true;
    });
    return found;
}

std::vector<std::string> mail_recipients(std::string_view header) {
    std::vector<std::string> out;
    each_field(header, [&](const Field &f) {
        if (same_name(f.name, "To") || same_name(f.name, "Cc") || same_name(f.name, "Bcc"))
            split_addresses(f.value, &out);
        return false;
    });
    return out;
}

} // namespace brindle::files
