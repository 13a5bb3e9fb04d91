// Editing and layout: replace and delete substrings, pad, fill and resize,
// set a value into a field, align, strip blanks, expand and compress tabs,
// pack and unpack hexadecimal digits, capitalise words, and change single
// characters in place.
//
// The replace, delete, fill and set-in functions take their strings by
// value and read them zero-terminated; the others read their text counted.
#include "common/ascii.h"
#include "frame/frame.h"
#include "strings/replace.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string>

using namespace brindle::frame;

namespace {

// The largest string a VB client can hold.
constexpr uint64_t kMaxString = 0x7FFFFFFFu;

// Replacement results may grow past the 25 times the text that a fixed
// work buffer would allow, up to this many bytes (or 25 times the text,
// when that is more); a longer result is refused with the empty string, so
// lists such as "a|aa;a|aa;..." that double the text at each pair cannot
// exhaust the memory.
constexpr size_t kReplaceGrowthLimit = size_t{256} << 20;

using brindle::common::ascii_upper;

BSTR fill_to_width(BSTR Txt, BSTR FillChar, int32_t Width, bool left) {
    const StrArg arg = StrArg::by_val(Txt);
    const std::string_view text = arg.text();
    const std::string_view fill = StrArg::by_val(FillChar).text();
    if (text.empty())
        return empty_string();
    if (fill.empty() || Width < 0 || static_cast<size_t>(Width) < text.size())
        return same_handle(arg);
    const size_t pad = static_cast<size_t>(Width) - text.size();
    StringResult out(static_cast<size_t>(Width));
    char *p = out.data();
    if (left) {
        std::memset(p, fill[0], pad);
        std::memcpy(p + pad, text.data(), text.size());
    } else {
        std::memcpy(p, text.data(), text.size());
        std::memset(p + text.size(), fill[0], pad);
    }
    return out.take();
}

// cLSetIn and cRSetIn. Whether field n exists depends on the occurrences of
// the separator's first byte only. The byte 255 marks them while they are
// counted, so a 255 already in the text comes back as that separator too
// (and ends a field in the walk) - but it is not counted. When field n does
// not exist, the text comes back unchanged, 255s included.
BSTR set_in(BSTR Txt, BSTR Separator, int32_t Position, BSTR Value, bool at_end) {
    const StrArg arg = StrArg::by_val(Txt);
    const std::string_view text = arg.text();
    const std::string_view sep = StrArg::by_val(Separator).text();
    const std::string_view value = StrArg::by_val(Value).text();
    if (text.empty())
        return empty_string();
    if (sep.empty() || value.empty() || Position < 1)
        return same_handle(arg);
    const uint64_t count = static_cast<uint64_t>(std::count(text.begin(), text.end(), sep[0]));
    if (static_cast<uint64_t>(Position) > count + 1)
        return new_string(text);
    std::string copy(text);
    std::replace(copy.begin(), copy.end(), '\xFF', sep[0]);
    std::array<bool, 256> is_sep{};
    for (const char c : sep)
        is_sep[static_cast<unsigned char>(c)] = true;
    // Start of field n: after the (n-1)-th byte of sep.
    size_t start = 0;
    for (int32_t field = 1; field < Position; ++field) {
        while (start < copy.size() && !is_sep[static_cast<unsigned char>(copy[start])])
            ++start;
        if (start == copy.size())
            return new_string(copy); // cannot happen: there are enough separators
        ++start;
    }
    size_t at = start;
    if (at_end)
        while (at < copy.size() && !is_sep[static_cast<unsigned char>(copy[at])])
            ++at;
    copy.insert(at, value);
    return new_string(copy);
}

int16_t replace_char_at(BSTR *Txt, int64_t position, BSTR *Char) {
    const StrArg text = StrArg::by_ref(Txt);
    const StrArg ch = StrArg::by_ref(Char);
    if (text.empty() || ch.empty() || position < 1 || static_cast<uint64_t>(position) > text.size())
        return 0;
    text.writable()[position - 1] = ch.first();
    return -1;
}

} // namespace

// Applies the list "old|new;old|new;..." pair after pair. Case-sensitive only
// when CaseSensitive is -1. An empty old text (an empty pair, for instance
// after a trailing ";") is skipped.
BRINDLE_EXPORT(BSTR) cStringReplace(BSTR Txt, BSTR Pairs, int16_t CaseSensitive) {
    return guarded_string([&] {
        const StrArg arg = StrArg::by_val(Txt);
        const std::string_view text = arg.text();
        const std::string_view pairs = StrArg::by_val(Pairs).text();
        if (text.empty())
            return empty_string();
        if (pairs.empty())
            return same_handle(arg);
        const size_t limit = static_cast<size_t>(
            std::min<uint64_t>(kMaxString, std::max<uint64_t>(25ull * text.size(), kReplaceGrowthLimit)));
        const auto result = brindle::strings::ReplacePairs(text, pairs, flag16(CaseSensitive), limit);
        if (!result)
            return empty_string();
        return new_string(*result);
    });
}

// Deletes every occurrence of sub, again and again, until none is left.
BRINDLE_EXPORT(BSTR) cDeleteSubString(BSTR Txt, BSTR SubString, int16_t CaseSensitive) {
    return guarded_string([&] {
        const StrArg arg = StrArg::by_val(Txt);
        const std::string_view text = arg.text();
        const std::string_view sub = StrArg::by_val(SubString).text();
        if (text.empty())
            return empty_string();
        if (sub.empty())
            return same_handle(arg);
        return new_string(brindle::strings::DeleteAll(text, sub, flag16(CaseSensitive)));
    });
}

// Padded on the left with the first byte of fill up to width bytes; a width
// below the text's length hands the text back.
BRINDLE_EXPORT(BSTR) cLFill(BSTR Txt, BSTR FillChar, int32_t FieldWidth) {
    return guarded_string([&] { return fill_to_width(Txt, FillChar, FieldWidth, true); });
}

BRINDLE_EXPORT(BSTR) cRFill(BSTR Txt, BSTR FillChar, int32_t FieldWidth) {
    return guarded_string([&] { return fill_to_width(Txt, FillChar, FieldWidth, false); });
}

// value inserted at the start of field n (fields end at any byte of sep).
BRINDLE_EXPORT(BSTR) cLSetIn(BSTR Txt, BSTR Separator, int32_t Position, BSTR Value) {
    return guarded_string([&] { return set_in(Txt, Separator, Position, Value, false); });
}

// value inserted at the end of field n, before its separator.
BRINDLE_EXPORT(BSTR) cRSetIn(BSTR Txt, BSTR Separator, int32_t Position, BSTR Value) {
    return guarded_string([&] { return set_in(Txt, Separator, Position, Value, true); });
}

// In place: text overwritten with pattern repeated, the last repetition cut.
BRINDLE_EXPORT(int16_t) cFill(BSTR *Txt, BSTR *Pattern) {
    return guarded<int16_t>(0, [&]() -> int16_t {
        const StrArg text = StrArg::by_ref(Txt), pattern = StrArg::by_ref(Pattern);
        if (text.empty() || pattern.empty())
            return 0;
        char *p = text.writable();
        for (size_t k = 0; k < text.size(); k += pattern.size())
            std::memcpy(p + k, pattern.data(), std::min(pattern.size(), text.size() - k));
        return -1;
    });
}

BRINDLE_EXPORT(BSTR) cCreateAndFill(int32_t Length, BSTR *Pattern) {
    return guarded_string([&] {
        const StrArg pattern = StrArg::by_ref(Pattern);
        if (Length < 1 || pattern.empty())
            return empty_string();
        const size_t n = static_cast<size_t>(Length);
        StringResult out(n);
        for (size_t k = 0; k < n; k += pattern.size())
            std::memcpy(out.data() + k, pattern.data(), std::min(pattern.size(), n - k));
        return out.take();
    });
}

// The first min(n, length) bytes; never longer than the text.
BRINDLE_EXPORT(BSTR) cResizeString(BSTR *Txt, int32_t Length) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        if (text.empty() || Length < 1)
            return empty_string();
        return new_string(text.bytes().substr(0, static_cast<size_t>(Length)));
    });
}

// Exactly n bytes: cut, or padded with the first byte of fill (zero bytes
// when fill is empty).
BRINDLE_EXPORT(BSTR) cResizeStringAndFill(BSTR *Txt, int32_t Length, BSTR *FillChar) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt), fill = StrArg::by_ref(FillChar);
        if (text.empty() || Length < 1)
            return empty_string();
        const size_t n = static_cast<size_t>(Length);
        const size_t keep = std::min(n, text.size());
        StringResult out(n);
        std::memcpy(out.data(), text.data(), keep);
        std::memset(out.data() + keep, fill.first_or(0), n - keep);
        return out.take();
    });
}

// text in a field of width: right-aligned for a negative mode, centred for
// 0 (the odd space on the left), left-aligned for a positive one; a text
// wider than the field is cut to width.
BRINDLE_EXPORT(BSTR) cAlign(BSTR *Txt, int16_t Mode, int32_t FieldWidth) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        if (text.empty() || FieldWidth < 1)
            return empty_string();
        const size_t w = static_cast<size_t>(FieldWidth);
        if (w <= text.size())
            return new_string(text.bytes().substr(0, w));
        const size_t d = w - text.size();
        const size_t before = Mode < 0 ? d : Mode == 0 ? d - d / 2 : 0;
        StringResult out(w);
        std::memset(out.data(), ' ', w);
        std::memcpy(out.data() + before, text.data(), text.size());
        return out.take();
    });
}

// Without zero bytes, tabs and spaces.
BRINDLE_EXPORT(BSTR) cCompress(BSTR *Txt) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        if (text.empty())
            return empty_string();
        std::string out;
        out.reserve(text.size());
        for (const char c : text.bytes())
            if (c != 0 && c != '\t' && c != ' ')
                out.push_back(c);
        return new_string(out);
    });
}

// Every tab becomes exactly n spaces (a fixed count, not a tab stop). A
// result longer than a VB string can be gives the empty string.
BRINDLE_EXPORT(BSTR) cExpandTab(BSTR *Txt, int32_t Spaces) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        if (text.empty())
            return empty_string();
        const size_t tabs = static_cast<size_t>(std::count(text.data(), text.data() + text.size(), '\t'));
        if (Spaces < 1 || tabs == 0)
            return same_handle(text);
        const uint64_t size = text.size() - tabs + static_cast<uint64_t>(tabs) * static_cast<uint64_t>(Spaces);
        if (size > kMaxString)
            return empty_string();
        StringResult out(static_cast<size_t>(size));
        char *p = out.data();
        for (const char c : text.bytes()) {
            if (c == '\t') {
                std::memset(p, ' ', static_cast<size_t>(Spaces));
                p += Spaces;
            } else {
                *p++ = c;
            }
        }
        return out.take();
    });
}

// Every run of L spaces becomes L / n tabs and L mod n spaces.
BRINDLE_EXPORT(BSTR) cCompressTab(BSTR *Txt, int32_t Spaces) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        if (text.empty())
            return empty_string();
        if (Spaces < 2)
            return same_handle(text);
        const size_t n = static_cast<size_t>(Spaces);
        std::string out;
        out.reserve(text.size());
        const std::string_view t = text.bytes();
        for (size_t k = 0; k < t.size();) {
            if (t[k] != ' ') {
                out.push_back(t[k++]);
                continue;
            }
            size_t run = 0;
            while (k < t.size() && t[k] == ' ') {
                ++run;
                ++k;
            }
            out.append(run / n, '\t');
            out.append(run % n, ' ');
        }
        return new_string(out);
    });
}

// Hexadecimal digits packed two to a byte (an odd first digit alone). A
// character other than a decimal digit stands for (c - 55) mod 16, so
// letters of either case give 10..15 and other characters unchecked values.
BRINDLE_EXPORT(BSTR) cCompact(BSTR *Txt) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        if (text.empty())
            return empty_string();
        auto nibble = [](char c) -> unsigned {
            const auto u = static_cast<unsigned char>(c);
            if (u >= '0' && u <= '9')
                return u - '0';
            return (u - 55u) & 0x0Fu;
        };
        const size_t n = text.size();
        StringResult out((n + 1) / 2);
        const char *t = text.data();
        size_t k = 0, o = 0;
        if (n % 2 == 1)
            out.data()[o++] = static_cast<char>(nibble(t[k++]));
        for (; k < n; k += 2)
            out.data()[o++] = static_cast<char>((nibble(t[k]) << 4) | nibble(t[k + 1]));
        return out.take();
    });
}

// Each byte as two hexadecimal digits, high half first, "0".."9" "A".."F".
BRINDLE_EXPORT(BSTR) cUncompact(BSTR *Txt) {
    return guarded_string([&] { return hex_string(StrArg::by_ref(Txt).bytes()); });
}

// The first character and every character after a space in capitals
// (letters a-z only, as the "C" locale's toupper); nothing is lowered.
BRINDLE_EXPORT(BSTR) cProperName(BSTR *Txt) {
    return guarded_string([&] {
        char before = ' '; // the first character counts as following a space
        return map_bytes(StrArg::by_ref(Txt).bytes(), [&](char c) {
            const char mapped = before == ' ' ? static_cast<char>(ascii_upper(c)) : c;
            before = c;
            return mapped;
        });
    });
}

// In place: the character at pos becomes the first byte of ch.
BRINDLE_EXPORT(int16_t) cReplaceChar(BSTR *Txt, int32_t Position, BSTR *Char) {
    return guarded<int16_t>(0, [&] { return replace_char_at(Txt, Position, Char); });
}

// In place: the last character becomes the first byte of ch.
BRINDLE_EXPORT(int16_t) cReplaceLastChar(BSTR *Txt, BSTR *Char) {
    return guarded<int16_t>(0, [&] {
        return replace_char_at(Txt, static_cast<int64_t>(StrArg::by_ref(Txt).size()), Char);
    });
}

BRINDLE_EXPORT(BSTR) cRemoveLastChar(BSTR *Txt) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        if (text.empty())
            return empty_string();
        return new_string(text.bytes().substr(0, text.size() - 1));
    });
}
