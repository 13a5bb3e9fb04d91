// Editing and layout: replace and delete substrings, pad, fill and resize,
// set a value into a field, align, strip blanks, expand and compress tabs,
// pack and unpack hexadecimal digits, capitalise words, and change single
// characters in place.
//
// The replace, delete, fill and set-in functions take their strings by
// value and read them zero-terminated; the others read their text counted.
#include "frame/frame.h"
#include "strings/capitals.h"
#include "strings/char_filters.h"
#include "strings/hex_pack.h"
#include "strings/padding.h"
#include "strings/replace.h"
#include "strings/set_in.h"
#include "strings/tabs.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

using namespace brindle::frame;
using namespace brindle::strings;

namespace {

// The largest string a VB client can hold.
constexpr uint64_t kMaxString = 0x7FFFFFFFu;

// Replacement results may grow past the 25 times the text that a fixed
// work buffer would allow, up to this many bytes (or 25 times the text,
// when that is more); a longer result is refused with the empty string, so
// lists such as "a|aa;a|aa;..." that double the text at each pair cannot
// exhaust the memory.
constexpr size_t kReplaceGrowthLimit = size_t{256} << 20;

BSTR fill_to_width(BSTR Txt, BSTR FillChar, int32_t Width, bool left) {
    const StrArg arg = StrArg::by_val(Txt);
    const std::string_view text = arg.text();
    const std::string_view fill = StrArg::by_val(FillChar).text();
    if (text.empty())
        return empty_string();
    if (fill.empty() || Width < 0 || static_cast<size_t>(Width) < text.size())
        return same_handle(arg);
    StringResult out(static_cast<size_t>(Width));
    pad_to_width(text, fill[0], left, {out.data(), out.size()});
    return out.take();
}

BSTR set_in(BSTR Txt, BSTR Separator, int32_t Position, BSTR Value, bool at_end) {
    const StrArg arg = StrArg::by_val(Txt);
    const std::string_view text = arg.text();
    const std::string_view sep = StrArg::by_val(Separator).text();
    const std::string_view value = StrArg::by_val(Value).text();
    if (text.empty())
        return empty_string();
    if (sep.empty() || value.empty() || Position < 1)
        return same_handle(arg);
    return new_string(set_in_field(text, sep, Position, value, at_end));
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
        const auto result = replace_pairs(text, pairs, flag16(CaseSensitive), limit);
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
        return new_string(delete_all(text, sub, flag16(CaseSensitive)));
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
        repeat_to_length(pattern.bytes(), {text.writable(), text.size()});
        return -1;
    });
}

BRINDLE_EXPORT(BSTR) cCreateAndFill(int32_t Length, BSTR *Pattern) {
    return guarded_string([&] {
        const StrArg pattern = StrArg::by_ref(Pattern);
        if (Length < 1 || pattern.empty())
            return empty_string();
        StringResult out(static_cast<size_t>(Length));
        repeat_to_length(pattern.bytes(), {out.data(), out.size()});
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
        StringResult out(static_cast<size_t>(Length));
        resize_and_fill(text.bytes(), fill.first_or(0), {out.data(), out.size()});
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
        StringResult out(static_cast<size_t>(FieldWidth));
        align_in_field(text.bytes(), Mode, {out.data(), out.size()});
        return out.take();
    });
}

// Without zero bytes, tabs and spaces.
BRINDLE_EXPORT(BSTR) cCompress(BSTR *Txt) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        if (text.empty())
            return empty_string();
        return new_string(without_blanks(text.bytes()));
    });
}

// Every tab becomes exactly n spaces (a fixed count, not a tab stop). A
// result longer than a VB string can be gives the empty string.
BRINDLE_EXPORT(BSTR) cExpandTab(BSTR *Txt, int32_t Spaces) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        if (text.empty())
            return empty_string();
        if (Spaces < 1 || text.bytes().find('\t') == std::string_view::npos)
            return same_handle(text);
        const auto expanded = expand_tabs(text.bytes(), static_cast<size_t>(Spaces), kMaxString);
        return expanded ? new_string(*expanded) : empty_string();
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
        return new_string(compress_tabs(text.bytes(), static_cast<size_t>(Spaces)));
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
        return new_string(pack_hex_digits(text.bytes()));
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
        const StrArg text = StrArg::by_ref(Txt);
        if (text.empty())
            return empty_string();
        return new_string(capitalise_words(text.bytes()));
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
