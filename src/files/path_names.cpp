// Path names as text.
#include "files/path_names.h"

namespace brindle::files {

namespace {

bool is_letter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool is_separator(char c) { return c == '\\' || c == '/'; }

// The position of the last backslash, or of the last forward slash when the
// name has no backslash: the separator the strippers cut at.
size_t last_separator(std::string_view name) {
    const size_t back = name.rfind('\\');
    return back != std::string_view::npos ? back : name.rfind('/');
}

} // namespace

int16_t filename_validity(std::string_view name) noexcept {
    const size_t n = name.size();
    if (n == 0 || n > kMaxValidName)
        return kNameInvalid;
    size_t start = 0;
    if (n > 3 && name.substr(0, 3) == "..\\")
        start = 3; // one parent prefix, no more
    int16_t counter = 0; // characters of the current component (or extension)
    bool dot_seen = false;
    for (size_t i = start; i < n; ++i) {
        // Bytes are unsigned: accented letters of the ANSI page are ordinary
        // characters, only the control characters are refused.
        const auto c = static_cast<unsigned char>(name[i]);
        if (c == '.') {
            if (dot_seen || i == start)
                return kNameInvalid;
            if (name[i - 1] == '\\' || name[i - 1] == ':')
                return kNameDotAfterSeparator;
            if (counter > 256)
                return kNameBaseTooLong;
            dot_seen = true;
            counter = 0;
        } else if (c < 32 || c == '"' || c == '/') {
            return kNameInvalid;
        } else if (c == '\\') {
            dot_seen = false;
            // A name may begin with two backslashes (a network name), never three.
            if (i >= 2 && name[i - 1] == '\\' && name[i - 2] == '\\')
                return kNameThreeBackslashes;
            counter = 0;
        } else if (c == ':') {
            if (i != 1)
                return kNameColonMisplaced;
            if (!is_letter(name[0]))
                return kNameDriveNotLetter;
            counter = 0;
        } else if (c == '*' || c == '<' || c == '>' || c == '?' || c == '|') {
            return kNameInvalid;
        }
        ++counter;
        if (dot_seen && counter > 256)
            return kNameExtTooLong;
    }
    // The part before a full stop is measured only when a full stop follows,
    // so a long component without extension passes; only the 516 applies.
    const char last = name[n - 1];
    return last == ':' || last == '\\' ? kNameInvalid : kNameValid;
}

std::string normalise_path(std::string_view path) {
    std::string out(path.substr(0, kNormaliseLimit));
    for (char &c : out)
        if (c == '/')
            c = '\\';
    if (!out.empty() && out.back() == '\\') {
        // "C:\dir\" loses its backslash; "\" and "C:\" are roots and keep it.
        if (out.size() > 1 && out[out.size() - 2] != ':')
            out.pop_back();
    } else if (out.size() == 2 && out[1] == ':') {
        out.push_back('\\');
    }
    return out;
}

PathPieces split_path(std::string_view path) {
    PathPieces parts;
    if (path.size() >= 2 && path[1] == ':') {
        parts.drive.assign(path.substr(0, 2));
        path.remove_prefix(2);
    }
    size_t sep = std::string_view::npos;
    for (size_t i = 0; i < path.size(); ++i)
        if (is_separator(path[i]))
            sep = i;
    if (sep != std::string_view::npos) {
        parts.dir.assign(path.substr(0, sep + 1));
        path.remove_prefix(sep + 1);
    }
    const size_t dot = path.rfind('.');
    if (dot != std::string_view::npos) {
        parts.ext.assign(path.substr(dot));
        path = path.substr(0, dot);
    }
    parts.name.assign(path);
    return parts;
}

std::string make_path(std::string_view drive, std::string_view dir, std::string_view name, std::string_view ext) {
    std::string out;
    out.reserve(drive.size() + dir.size() + name.size() + ext.size() + 3);
    if (!drive.empty()) {
        out.push_back(drive[0]);
        out.push_back(':');
    }
    if (!dir.empty()) {
        out.append(dir);
        if (!is_separator(dir.back()))
            out.push_back('\\');
    }
    out.append(name);
    if (!ext.empty()) {
        if (ext[0] != '.')
            out.push_back('.');
        out.append(ext);
    }
    return out;
}

bool has_extension(std::string_view name) noexcept {
    for (size_t i = name.size(); i-- > 0;) {
        const char c = name[i];
        if (c == '.')
            return true;
        if (is_separator(c))
            return false;
    }
    return false;
}

// The original worked in a 161-byte buffer and overran it for longer names;
// the result here is the same for every name that fitted and simply longer
// for the others.
std::string default_extension(std::string_view name, std::string_view ext) {
    std::string out(name);
    if (ext.empty() || has_extension(name))
        return out;
    if (ext[0] != '.')
        out.push_back('.');
    out.append(ext);
    return out;
}

std::string strip_extension(std::string_view name) {
    const size_t dot = name.rfind('.');
    if (dot == std::string_view::npos)
        return std::string(name);
    const size_t sep = last_separator(name);
    if (sep == std::string_view::npos || dot > sep)
        return std::string(name.substr(0, dot));
    return std::string(name);
}

std::string strip_file_path(std::string_view name) {
    const size_t sep = last_separator(name);
    return std::string(sep == std::string_view::npos ? name : name.substr(sep + 1));
}

std::string strip_file_name(std::string_view name) {
    const size_t sep = last_separator(name);
    if (sep == std::string_view::npos)
        return ".";
    return normalise_path(name.substr(0, sep + 1));
}

std::string truncate_path(std::string_view path, int32_t max_length) {
    if (max_length < 25 || filename_validity(path) != kNameValid)
        return std::string();
    const PathPieces p = split_path(path);
    const size_t fixed = p.drive.size() + p.name.size() + p.ext.size();
    if (fixed + p.dir.size() <= static_cast<size_t>(max_length))
        return std::string(path);
    // Room for the directory; none at all when drive, name and extension
    // alone are too long.
    const size_t room = fixed < static_cast<size_t>(max_length) ? static_cast<size_t>(max_length) - fixed : 0;
    std::string dir;
    if (!p.dir.empty() && p.dir[0] == '\\')
        dir.push_back('\\');
    // Components that fit are kept in order; one that does not is left out,
    // and a later, shorter one may still be taken.
    size_t from = 0;
    while (from <= p.dir.size()) {
        size_t to = p.dir.find('\\', from);
        if (to == std::string::npos)
            to = p.dir.size();
        const size_t len = to - from;
        if (len > 0 && dir.size() + len < room) {
            dir.append(p.dir, from, len);
            dir.push_back('\\');
        }
        from = to + 1;
    }
    // The cut is marked by a full stop in place of the final backslash.
    if (!dir.empty() && dir.back() == '\\')
        dir.back() = '.';
    return p.drive + dir + p.name + p.ext;
}

} // namespace brindle::files
