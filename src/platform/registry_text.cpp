#include "platform/registry_text.h"

#include "common/ascii.h"

#include <cstdio>

namespace brindle::platform::registry {

namespace {

using common::ascii_upper;
using common::equal_no_case;

// Keys deeper than this are refused, as the Windows registry refuses them;
// it also bounds the recursion of the writer.
constexpr size_t kMaxDepth = 512;

std::string upper(std::string_view s) {
    std::string out(s);
    for (char &c : out)
        c = ascii_upper(c);
    return out;
}

bool is_blank(char c) { return c == ' ' || c == '\t'; }

std::string_view trim_left(std::string_view s) {
    while (!s.empty() && is_blank(s.front()))
        s.remove_prefix(1);
    return s;
}

std::string_view trim_right(std::string_view s) {
    while (!s.empty() && (is_blank(s.back()) || s.back() == '\r'))
        s.remove_suffix(1);
    return s;
}

int hex_digit(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    c = ascii_upper(c);
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

// 1 to `most` hex digits as a number; nothing for anything else.
std::optional<uint32_t> hex_number(std::string_view s, size_t most) {
    if (s.empty() || s.size() > most)
        return std::nullopt;
    uint32_t n = 0;
    for (const char c : s) {
        const int d = hex_digit(c);
        if (d < 0)
            return std::nullopt;
        n = n * 16 + static_cast<uint32_t>(d);
    }
    return n;
}

// A quoted text at the start of `s` ("\" takes the next byte as it is):
// its bytes, with `s` moved past the closing quote; nothing when unclosed.
std::optional<std::string> quoted(std::string_view &s) {
    if (s.empty() || s.front() != '"')
        return std::nullopt;
    std::string out;
    for (size_t i = 1; i < s.size(); ++i) {
        if (s[i] == '\\' && i + 1 < s.size()) {
            out.push_back(s[++i]);
        } else if (s[i] == '"') {
            s.remove_prefix(i + 1);
            return out;
        } else {
            out.push_back(s[i]);
        }
    }
    return std::nullopt;
}

void put_quoted(std::string &out, std::string_view s) {
    out.push_back('"');
    for (const char c : s) {
        if (c == '\\' || c == '"')
            out.push_back('\\');
        out.push_back(c);
    }
    out.push_back('"');
}

std::optional<Root> root_of(std::string_view name) {
    static constexpr struct {
        std::string_view full, brief;
        Root root;
    } kNames[] = {
        {"HKEY_CLASSES_ROOT", "HKCR", Root::ClassesRoot},   {"HKEY_CURRENT_USER", "HKCU", Root::CurrentUser},
        {"HKEY_LOCAL_MACHINE", "HKLM", Root::LocalMachine}, {"HKEY_USERS", "HKU", Root::Users},
        {"HKEY_CURRENT_CONFIG", "HKCC", Root::CurrentConfig},
    };
    for (const auto &n : kNames)
        if (equal_no_case(name, n.full) || equal_no_case(name, n.brief))
            return n.root;
    return std::nullopt;
}

// The data part of a value line goes on over the next lines while it ends
// with a backslash (byte lists only).
bool continues(std::string_view data) {
    return data.size() >= 3 && equal_no_case(data.substr(0, 3), "hex") && !data.empty() && data.back() == '\\';
}

void write_value(std::string &out, const Value &v) {
    if (v.name.empty())
        out += "@";
    else
        put_quoted(out, v.name);
    out.push_back('=');
    const std::string_view data(v.data);
    const bool plain_string = v.type == kString && !data.empty() && data.back() == '\0' &&
                              data.find_first_of(std::string_view("\0\r\n", 3)) == data.size() - 1;
    if (plain_string) {
        put_quoted(out, data.substr(0, data.size() - 1));
    } else if (v.type == kDword && data.size() == 4) {
        const uint32_t n = static_cast<uint8_t>(data[0]) | static_cast<uint32_t>(static_cast<uint8_t>(data[1])) << 8 |
                           static_cast<uint32_t>(static_cast<uint8_t>(data[2])) << 16 |
                           static_cast<uint32_t>(static_cast<uint8_t>(data[3])) << 24;
        char text[24];
        std::snprintf(text, sizeof text, "dword:%08x", static_cast<unsigned>(n));
        out += text;
    } else {
        char text[24];
        if (v.type == kBinary)
            out += "hex:";
        else {
            std::snprintf(text, sizeof text, "hex(%x):", static_cast<unsigned>(v.type));
            out += text;
        }
        static constexpr char kDigits[] = "0123456789abcdef";
        for (size_t i = 0; i < data.size(); ++i) {
            if (i > 0)
                out.push_back(',');
            const auto b = static_cast<uint8_t>(data[i]);
            out.push_back(kDigits[b >> 4]);
            out.push_back(kDigits[b & 15]);
        }
    }
    out += "\r\n";
}

void write_key(std::string &out, const std::string &path, const Key &key, bool is_root) {
    if (!is_root || !key.values().empty()) {
        out += "[" + path + "]\r\n";
        for (const Value &v : key.values())
            write_value(out, v);
        out += "\r\n";
    }
    for (const auto &[upper_name, child] : key.children())
        write_key(out, path + "\\" + child->name(), *child, false);
}

} // namespace

std::string_view root_name(Root root) noexcept {
    switch (root) {
    case Root::ClassesRoot:
        return "HKEY_CLASSES_ROOT";
    case Root::CurrentUser:
        return "HKEY_CURRENT_USER";
    case Root::LocalMachine:
        return "HKEY_LOCAL_MACHINE";
    case Root::Users:
        return "HKEY_USERS";
    case Root::CurrentConfig:
        return "HKEY_CURRENT_CONFIG";
    }
    return {};
}

Key *Key::child(std::string_view name) const {
    const auto it = children_.find(upper(name));
    return it == children_.end() ? nullptr : it->second.get();
}

Key &Key::make_child(std::string_view name, bool *created) {
    auto [it, fresh] = children_.try_emplace(upper(name));
    if (fresh)
        it->second = std::make_unique<Key>(std::string(name));
    if (created != nullptr)
        *created = fresh;
    return *it->second;
}

bool Key::erase_child(std::string_view name) { return children_.erase(upper(name)) > 0; }

const Value *Key::value(std::string_view name) const {
    const auto it = value_index_.find(upper(name));
    return it == value_index_.end() ? nullptr : &values_[it->second];
}

void Key::set_value(std::string_view name, uint32_t type, std::string data) {
    const auto [it, fresh] = value_index_.try_emplace(upper(name), values_.size());
    if (fresh) {
        values_.push_back(Value{std::string(name), type, std::move(data)});
    } else {
        values_[it->second].type = type;
        values_[it->second].data = std::move(data);
    }
}

bool Key::erase_value(std::string_view name) {
    const auto it = value_index_.find(upper(name));
    if (it == value_index_.end())
        return false;
    const size_t at = it->second;
    value_index_.erase(it);
    values_.erase(values_.begin() + static_cast<std::ptrdiff_t>(at));
    for (size_t i = at; i < values_.size(); ++i)
        value_index_[upper(values_[i].name)] = i;
    return true;
}

std::optional<std::vector<std::string_view>> split_key_path(std::string_view path) {
    std::vector<std::string_view> steps;
    if (path.empty())
        return steps;
    if (path.back() == '\\')
        path.remove_suffix(1);
    for (;;) {
        const size_t cut = path.find('\\');
        const std::string_view step = path.substr(0, cut);
        if (step.empty() || step.size() > kMaxKeyName || step.find_first_of("\r\n") != std::string_view::npos ||
            steps.size() >= kMaxDepth)
            return std::nullopt;
        steps.push_back(step);
        if (cut == std::string_view::npos)
            return steps;
        path.remove_prefix(cut + 1);
    }
}

bool storable_value_name(std::string_view name) noexcept {
    return name.size() <= kMaxValueName && name.find_first_of("\r\n") == std::string_view::npos;
}

Store::Store() {
    for (size_t r = 0; r < kRoots; ++r)
        roots_[r] = std::make_unique<Key>(std::string(root_name(static_cast<Root>(r))));
}

Key *Store::find(Root r, std::string_view path) const {
    const auto steps = split_key_path(path);
    if (!steps)
        return nullptr;
    Key *key = roots_[static_cast<size_t>(r)].get();
    for (const std::string_view step : *steps) {
        key = key->child(step);
        if (key == nullptr)
            return nullptr;
    }
    return key;
}

Key *Store::create(Root r, std::string_view path, bool *created) {
    const auto steps = split_key_path(path);
    if (!steps)
        return nullptr;
    Key *key = roots_[static_cast<size_t>(r)].get();
    bool fresh = false;
    for (const std::string_view step : *steps)
        key = &key->make_child(step, &fresh);
    if (created != nullptr)
        *created = fresh;
    return key;
}

std::optional<Value> parse_value_data(std::string_view data) {
    data = trim_right(trim_left(data));
    Value v;
    if (!data.empty() && data.front() == '"') {
        auto text = quoted(data);
        if (!text || !trim_left(data).empty())
            return std::nullopt;
        v.type = kString;
        v.data = std::move(*text);
        v.data.push_back('\0');
        return v;
    }
    if (data.size() >= 6 && equal_no_case(data.substr(0, 6), "dword:")) {
        const auto n = hex_number(trim_left(data.substr(6)), 8);
        if (!n)
            return std::nullopt;
        v.type = kDword;
        for (int i = 0; i < 4; ++i)
            v.data.push_back(static_cast<char>((*n >> (8 * i)) & 0xFF));
        return v;
    }
    if (data.size() < 4 || !equal_no_case(data.substr(0, 3), "hex"))
        return std::nullopt;
    data.remove_prefix(3);
    v.type = kBinary;
    if (data.front() == '(') {
        const size_t close = data.find(')');
        if (close == std::string_view::npos)
            return std::nullopt;
        const auto type = hex_number(data.substr(1, close - 1), 8);
        if (!type)
            return std::nullopt;
        v.type = *type;
        data.remove_prefix(close + 1);
    }
    if (data.empty() || data.front() != ':')
        return std::nullopt;
    data.remove_prefix(1);
    while (!trim_left(data).empty()) {
        const size_t comma = data.find(',');
        const std::string_view item = trim_right(trim_left(data.substr(0, comma)));
        const bool last = comma == std::string_view::npos;
        if (item.empty() && last)
            break; // a list may end with a comma
        const auto byte = hex_number(item, 2);
        if (!byte)
            return std::nullopt;
        v.data.push_back(static_cast<char>(*byte));
        if (last)
            break;
        data.remove_prefix(comma + 1);
    }
    return v;
}

std::unique_ptr<Store> Store::parse(std::string_view text) {
    auto store = std::make_unique<Store>();
    if (text.substr(0, 3) == "\xEF\xBB\xBF")
        text.remove_prefix(3);
    Key *current = nullptr;
    size_t at = 0;
    auto next_line = [&]() {
        const size_t end = text.find('\n', at);
        const std::string_view line = text.substr(at, end == std::string_view::npos ? text.size() - at : end - at);
        at = end == std::string_view::npos ? text.size() : end + 1;
        return trim_right(trim_left(line));
    };
    while (at < text.size()) {
        const std::string_view line = next_line();
        if (line.empty())
            continue;
        if (line.front() == '[') {
            current = nullptr;
            const size_t close = line.rfind(']');
            if (close == std::string_view::npos)
                continue;
            const std::string_view inner = line.substr(1, close - 1);
            if (inner.empty() || inner.front() == '-')
                continue; // a deletion
            const size_t cut = inner.find('\\');
            const auto root = root_of(inner.substr(0, cut));
            if (!root)
                continue;
            current = cut == std::string_view::npos ? &store->root(*root)
                                                    : store->create(*root, inner.substr(cut + 1), nullptr);
            continue;
        }
        if (line.front() != '@' && line.front() != '"')
            continue; // comments, headers and what cannot be read
        std::string_view rest = line;
        std::string name;
        if (rest.front() == '@') {
            rest.remove_prefix(1);
        } else {
            auto n = quoted(rest);
            if (!n)
                continue;
            name = std::move(*n);
        }
        rest = trim_left(rest);
        if (rest.empty() || rest.front() != '=')
            continue;
        rest.remove_prefix(1);
        std::string data(trim_left(rest));
        while (continues(data) && at < text.size()) {
            data.pop_back();
            data += next_line();
        }
        const auto value = parse_value_data(data);
        if (current != nullptr && value && storable_value_name(name))
            current->set_value(name, value->type, value->data);
    }
    return store;
}

std::string Store::text() const {
    std::string out = "REGEDIT4\r\n\r\n";
    for (size_t r = 0; r < kRoots; ++r)
        write_key(out, roots_[r]->name(), *roots_[r], true);
    return out;
}

} // namespace brindle::platform::registry
