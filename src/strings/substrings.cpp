// Substrings and positions: pieces by position, by field number between
// separators, and between two tags; counting and locating text.
//
// Positional and field functions read their text counted (zero bytes are
// characters); cInStr and the extract functions read it zero-terminated.
#include "frame/frame.h"
#include "strings/extract.h"
#include "strings/fields.h"
#include "strings/str_find.h"

#include <algorithm>

using namespace brindle::frame;
using brindle::strings::kNotFound;
using brindle::strings::StrFindFrom;

namespace {

// The separator cGet splits at; "|" when the module loads. Process-wide and
// unlocked: VB callers are single-threaded.
char g_default_separator = '|';

// 1 <= n <= size, without overflow for any Long.
bool in_range(int32_t n, size_t size) { return n >= 1 && static_cast<size_t>(n) <= size; }

BSTR field_result(const StrArg &text, const StrArg &sep, int32_t n, bool from_right) {
    if (text.empty() || sep.empty() || n < 1)
        return empty_string();
    const std::string_view field = from_right ? brindle::strings::field_from_right(text.bytes(), sep.first(), n)
                                              : brindle::strings::field_from_left(text.bytes(), sep.first(), n);
    return new_string(field);
}

} // namespace

BRINDLE_EXPORT(BSTR) cOneCharFromLeft(BSTR *Txt, int32_t Position) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        if (!in_range(Position, text.size()))
            return empty_string();
        return new_string(text.bytes().substr(static_cast<size_t>(Position) - 1, 1));
    });
}

BRINDLE_EXPORT(BSTR) cOneCharFromRight(BSTR *Txt, int32_t Position) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        if (!in_range(Position, text.size()))
            return empty_string();
        return new_string(text.bytes().substr(text.size() - static_cast<size_t>(Position), 1));
    });
}

// The leftmost size - n characters; empty unless 1 <= n < size.
BRINDLE_EXPORT(BSTR) cBlockCharFromLeft(BSTR *Txt, int32_t Position) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        if (!in_range(Position, text.size()) || static_cast<size_t>(Position) == text.size())
            return empty_string();
        return new_string(text.bytes().substr(0, text.size() - static_cast<size_t>(Position)));
    });
}

// The characters after the first n; empty unless 1 <= n < size.
BRINDLE_EXPORT(BSTR) cBlockCharFromRight(BSTR *Txt, int32_t Position) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        if (!in_range(Position, text.size()) || static_cast<size_t>(Position) == text.size())
            return empty_string();
        return new_string(text.bytes().substr(static_cast<size_t>(Position)));
    });
}

namespace {

// Rotate by one place; a one-character text is handed back as it came.
BSTR rotated(BSTR *Txt, bool left) {
    const StrArg text = StrArg::by_ref(Txt);
    if (text.empty())
        return empty_string();
    if (text.size() == 1)
        return same_handle(text);
    StringResult out(text.size());
    const char *middle = left ? text.data() + 1 : text.data() + text.size() - 1;
    std::rotate_copy(text.data(), middle, text.data() + text.size(), out.data());
    return out.take();
}

} // namespace

BRINDLE_EXPORT(BSTR) cScrollL(BSTR *Txt) {
    return guarded_string([&] { return rotated(Txt, true); });
}

BRINDLE_EXPORT(BSTR) cScrollR(BSTR *Txt) {
    return guarded_string([&] { return rotated(Txt, false); });
}

BRINDLE_EXPORT(BSTR) cReverse(BSTR *Txt) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        if (text.empty())
            return empty_string();
        StringResult out(text.size());
        std::reverse_copy(text.data(), text.data() + text.size(), out.data());
        return out.take();
    });
}

// The first byte of a non-empty separator becomes cGet's separator; the
// result is the separator's length (0 leaves it unchanged).
BRINDLE_EXPORT(int32_t) cSetDefaultSeparator(BSTR *Separator) {
    const StrArg sep = StrArg::by_ref(Separator);
    if (!sep.empty())
        g_default_separator = sep.first();
    return static_cast<int32_t>(sep.size());
}

BRINDLE_EXPORT(BSTR) cGet(BSTR *Txt, int32_t Position) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        if (text.empty() || Position < 1)
            return empty_string();
        return new_string(brindle::strings::field_from_left(text.bytes(), g_default_separator, Position));
    });
}

BRINDLE_EXPORT(BSTR) cGetIn(BSTR *Txt, BSTR *Separator, int32_t Position) {
    return guarded_string(
        [&] { return field_result(StrArg::by_ref(Txt), StrArg::by_ref(Separator), Position, false); });
}

BRINDLE_EXPORT(BSTR) cGetInR(BSTR *Txt, BSTR *Separator, int32_t Position) {
    return guarded_string(
        [&] { return field_result(StrArg::by_ref(Txt), StrArg::by_ref(Separator), Position, true); });
}

// Split at the first separator byte. Before = -1 gives the part before it
// (empty when there is none); any other value the part after it, or the
// input itself when there is no separator.
BRINDLE_EXPORT(BSTR) cGetInPart(BSTR *Txt, BSTR *Separator, int32_t Before) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        const StrArg sep = StrArg::by_ref(Separator);
        if (text.empty() || sep.empty())
            return empty_string();
        const size_t at = text.bytes().find(sep.first());
        if (flag32(Before))
            return at == std::string_view::npos ? empty_string() : new_string(text.bytes().substr(0, at));
        return at == std::string_view::npos ? same_handle(text) : new_string(text.bytes().substr(at + 1));
    });
}

// Split at the last separator byte. After = -1 gives the part after it, or
// the input itself when there is none; any other value the part before it
// (empty when there is none). The two splitters deliberately differ in which
// case hands back the input.
BRINDLE_EXPORT(BSTR) cGetInPartR(BSTR *Txt, BSTR *Separator, int32_t After) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        const StrArg sep = StrArg::by_ref(Separator);
        if (text.empty() || sep.empty())
            return empty_string();
        const size_t at = text.bytes().rfind(sep.first());
        if (flag32(After))
            return at == std::string_view::npos ? same_handle(text) : new_string(text.bytes().substr(at + 1));
        return at == std::string_view::npos ? empty_string() : new_string(text.bytes().substr(0, at));
    });
}

BRINDLE_EXPORT(int32_t) cCount(BSTR *Txt, BSTR *Char) {
    const StrArg text = StrArg::by_ref(Txt);
    const StrArg ch = StrArg::by_ref(Char);
    if (text.empty() || ch.empty())
        return 0;
    return static_cast<int32_t>(std::count(text.data(), text.data() + text.size(), ch.first()));
}

// The 1-based position of find at or after start. The order of the checks
// is part of the result: an empty find gives start back whatever it is.
BRINDLE_EXPORT(int32_t) cInStr(int32_t Start, BSTR Txt, BSTR Find, int16_t CaseSensitive) {
    const std::string_view text = StrArg::by_val(Txt).text();
    const std::string_view find = StrArg::by_val(Find).text();
    if (find.empty())
        return Start;
    if (Start > 0 && static_cast<size_t>(Start) > text.size())
        return 0;
    if (Start < 1)
        return -1;
    const size_t at = StrFindFrom(text, find, static_cast<size_t>(Start) - 1, flag16(CaseSensitive));
    return at == kNotFound ? 0 : static_cast<int32_t>(at + 1);
}

namespace {

BSTR extract_result(BSTR txt, BSTR open_tag, BSTR close_tag, int16_t case_flag, bool rest_if_unclosed) {
    const StrArg text = StrArg::by_val(txt);
    const StrArg open = StrArg::by_val(open_tag);
    const StrArg close = StrArg::by_val(close_tag);
    if (text.empty() || open.empty() || close.empty())
        return empty_string();
    return new_string(brindle::strings::extract_between(text.bytes(), open.text(), close.text(), flag16(case_flag),
                                                        rest_if_unclosed));
}

} // namespace

BRINDLE_EXPORT(BSTR) cExtract(BSTR Txt, BSTR OpenTag, BSTR CloseTag, int16_t CaseSensitive) {
    return guarded_string([&] { return extract_result(Txt, OpenTag, CloseTag, CaseSensitive, true); });
}

BRINDLE_EXPORT(BSTR) cExtractTag(BSTR Txt, BSTR OpenTag, BSTR CloseTag, int16_t CaseSensitive) {
    return guarded_string([&] { return extract_result(Txt, OpenTag, CloseTag, CaseSensitive, false); });
}

// The text before the first tag (LeftPart = -1) or after the second tag
// found after it. With an empty first tag the second tag is looked for
// doubled - two occurrences back to back, as a blank line between two line
// ends - and the left part runs through the first byte of the occurrence
// that precedes the pair.
BRINDLE_EXPORT(BSTR) cExtractIsolate(BSTR Txt, BSTR FirstTag, BSTR SecondTag, int16_t LeftPart,
                                     int16_t CaseSensitive) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_val(Txt);
        const StrArg first = StrArg::by_val(FirstTag);
        const StrArg second = StrArg::by_val(SecondTag);
        if (text.empty() || second.empty())
            return empty_string();
        const bool exact = flag16(CaseSensitive);
        const bool left = flag16(LeftPart);
        if (!first.empty())
            return new_string(
                brindle::strings::isolate_by_tags(text.bytes(), first.text(), second.text(), left, exact));
        return new_string(brindle::strings::isolate_by_doubled_tag(text.bytes(), second.text(), left, exact));
    });
}
