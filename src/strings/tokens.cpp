// Tokens and character filters: token tests, splitting at any of a set of
// bytes, and rebuilding a string byte by byte (filters, translations,
// insertions, removals, placeholders, blocks, shuffles, bytewise logic).
// Everything works on bytes; no locale is consulted.
//
// The token tests take their strings by value and read them zero-terminated;
// every other function here reads its text counted.
#include "frame/frame.h"
#include "platform/clock.h"
#include "strings/block_insert.h"
#include "strings/bytewise.h"
#include "strings/char_filters.h"
#include "strings/fields.h"
#include "strings/positions.h"
#include "strings/shuffle.h"
#include "strings/token_test.h"
#include "strings/translate.h"

#include <string>

using namespace brindle::frame;
using namespace brindle::strings;

namespace {

char separator_or_bar(BSTR sep_handle) {
    const std::string_view sep = StrArg::by_val(sep_handle).text();
    return sep.empty() ? '|' : sep[0];
}

BSTR filter(BSTR *Txt, BSTR *CharSet, bool keep_members) {
    const StrArg text = StrArg::by_ref(Txt);
    const StrArg set = StrArg::by_ref(CharSet);
    if (text.empty())
        return empty_string();
    if (set.empty())
        return same_handle(text);
    return new_string(filter_chars(text.bytes(), set.bytes(), keep_members));
}

BSTR blocks_result(BSTR *Txt, BSTR *Blocks, char mark, bool empty_blocks_remove) {
    const StrArg text = StrArg::by_ref(Txt), blocks = StrArg::by_ref(Blocks);
    if (text.empty())
        return empty_string();
    if (blocks.empty() && !empty_blocks_remove)
        return same_handle(text);
    return new_string(insert_blocks(text.bytes(), blocks.bytes(), mark));
}

BSTR bytewise_result(BSTR *a_ref, BSTR *b_ref, ByteLogic op) {
    const StrArg a = StrArg::by_ref(a_ref), b = StrArg::by_ref(b_ref);
    if (a.empty() || b.empty() || a.size() != b.size())
        return empty_string();
    return new_string(bytewise(a.bytes(), b.bytes(), op));
}

} // namespace

// -1 when any token of the "|"-separated list occurs in text (case-sensitive).
BRINDLE_EXPORT(int16_t) cOrToken(BSTR Txt, BSTR Tokens) {
    return guarded<int16_t>(0, [&] {
        return vb_bool(any_token_in(StrArg::by_val(Txt).text(), StrArg::by_val(Tokens).text(), '|'));
    });
}

BRINDLE_EXPORT(int16_t) cOrTokenIn(BSTR Txt, BSTR Tokens, BSTR Separator) {
    return guarded<int16_t>(0, [&] {
        return vb_bool(
            any_token_in(StrArg::by_val(Txt).text(), StrArg::by_val(Tokens).text(), separator_or_bar(Separator)));
    });
}

// -1 when every token of the list occurs in text.
BRINDLE_EXPORT(int16_t) cAndToken(BSTR Txt, BSTR Tokens) {
    return guarded<int16_t>(0, [&] {
        return vb_bool(all_tokens_in(StrArg::by_val(Txt).text(), StrArg::by_val(Tokens).text(), '|'));
    });
}

BRINDLE_EXPORT(int16_t) cAndTokenIn(BSTR Txt, BSTR Tokens, BSTR Separator) {
    return guarded<int16_t>(0, [&] {
        return vb_bool(
            all_tokens_in(StrArg::by_val(Txt).text(), StrArg::by_val(Tokens).text(), separator_or_bar(Separator)));
    });
}

// Field n of text, where any byte of seps ends a field (the cGetIn rule).
BRINDLE_EXPORT(BSTR) cTokenIn(BSTR *Txt, BSTR *Separators, int32_t Position) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        const StrArg seps = StrArg::by_ref(Separators);
        if (text.empty() || seps.empty() || Position < 1)
            return empty_string();
        return new_string(field_at_any(text.bytes(), seps.bytes(), Position));
    });
}

BRINDLE_EXPORT(BSTR) cFilterChars(BSTR *Txt, BSTR *CharSet) {
    return guarded_string([&] { return filter(Txt, CharSet, false); });
}

BRINDLE_EXPORT(BSTR) cFilterNotChars(BSTR *Txt, BSTR *CharSet) {
    return guarded_string([&] { return filter(Txt, CharSet, true); });
}

// Text without a leading prefix. When the prefix does not match, the result
// keeps the length of text but starts after the compared stretch; the bytes
// that would lie past the end of text are zero bytes. A prefix longer than
// the text never matches (its tail could only be compared with bytes past
// the end), so the result is then all zero bytes.
BRINDLE_EXPORT(BSTR) cFilterFirstChars(BSTR *Txt, BSTR *Prefix) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        const StrArg prefix = StrArg::by_ref(Prefix);
        if (text.empty())
            return empty_string();
        if (prefix.empty())
            return same_handle(text);
        return new_string(without_prefix_fixed(text.bytes(), prefix.bytes()));
    });
}

// Text without the blocks enclosed by the delimiters (no nesting; an
// unclosed block runs to the end).
BRINDLE_EXPORT(BSTR) cFilterBlocks(BSTR *Txt, BSTR *Delimiters) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        const StrArg delims = StrArg::by_ref(Delimiters);
        if (text.empty())
            return empty_string();
        if (delims.empty())
            return same_handle(text);
        const char open = delims.data()[0];
        const char close = delims.size() >= 2 ? delims.data()[1] : open;
        return new_string(without_blocks(text.bytes(), open, close));
    });
}

// In place: bytes of from become the bytes of to at the same place.
BRINDLE_EXPORT(int16_t) cChangeChars(BSTR *Txt, BSTR *FromChars, BSTR *ToChars) {
    return guarded<int16_t>(0, [&]() -> int16_t {
        const StrArg text = StrArg::by_ref(Txt);
        const StrArg from = StrArg::by_ref(FromChars), to = StrArg::by_ref(ToChars);
        if (text.empty() || from.empty() || to.empty())
            return 0;
        translate_bytes(text.writable(), text.size(), translation_table(from.bytes(), to.bytes()));
        return -1;
    });
}

// As cChangeChars, stopping at the first byte equal to the first of stop.
BRINDLE_EXPORT(int16_t) cChangeCharsUntil(BSTR *Txt, BSTR *FromChars, BSTR *ToChars, BSTR *StopChar) {
    return guarded<int16_t>(0, [&]() -> int16_t {
        const StrArg text = StrArg::by_ref(Txt);
        const StrArg from = StrArg::by_ref(FromChars), to = StrArg::by_ref(ToChars);
        const StrArg stop = StrArg::by_ref(StopChar);
        if (text.empty() || from.empty() || to.empty() || stop.empty())
            return 0;
        const char stop_at = stop.first();
        translate_bytes(text.writable(), text.size(), translation_table(from.bytes(), to.bytes()), &stop_at);
        return -1;
    });
}

// -1 when every byte of set occurs in text. Each byte of a working copy of
// set counts once and is then cleared to zero, so a repeated byte of set is
// met by one occurrence, and cleared places count again for each zero byte
// of text. Sets longer than the copy's 128 bytes are refused.
BRINDLE_EXPORT(int16_t) cCheckChars(BSTR *Txt, BSTR *CharSet) {
    return guarded<int16_t>(0, [&]() -> int16_t {
        const StrArg text = StrArg::by_ref(Txt);
        const StrArg set = StrArg::by_ref(CharSet);
        return vb_bool(has_all_chars(text.bytes(), set.bytes()));
    });
}

BRINDLE_EXPORT(BSTR) cRemoveOneChar(BSTR *Txt, int32_t Position) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        if (text.empty())
            return empty_string();
        if (Position < 1 || static_cast<size_t>(Position) > text.size())
            return same_handle(text);
        std::string out(text.bytes());
        out.erase(static_cast<size_t>(Position) - 1, 1);
        return new_string(out);
    });
}

// Without count characters from pos (pos 0 counts as 1). The result always
// has length - count characters: a range past the end cuts the text before
// pos to that length.
BRINDLE_EXPORT(BSTR) cRemoveBlockChar(BSTR *Txt, int32_t Position, int32_t Count) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        if (text.empty())
            return empty_string();
        if (Position < 0 || static_cast<size_t>(Position) > text.size() || Count < 1)
            return same_handle(text);
        const size_t count = static_cast<size_t>(Count);
        if (count >= text.size())
            return empty_string();
        return new_string(remove_range(text.bytes(), static_cast<size_t>(Position), count));
    });
}

// ins placed after the first pos characters, or appended when pos reaches
// the end.
BRINDLE_EXPORT(BSTR) cInsertChars(BSTR *Txt, int32_t Position, BSTR *Insert) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        const StrArg ins = StrArg::by_ref(Insert);
        if (text.empty())
            return empty_string();
        if (Position < 0 || ins.empty())
            return same_handle(text);
        return new_string(insert_at(text.bytes(), static_cast<size_t>(Position), ins.bytes()));
    });
}

// Each mask byte (first of mask, "#" when empty) takes the next byte of
// data; once data runs out the mask bytes become spaces.
BRINDLE_EXPORT(BSTR) cInsertByMask(BSTR *Txt, BSTR *Mask, BSTR *Data) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        const StrArg mask = StrArg::by_ref(Mask), data = StrArg::by_ref(Data);
        const char mark = mask.first_or('#');
        if (text.empty())
            return empty_string();
        if (data.empty())
            return same_handle(text);
        return new_string(insert_by_mask(text.bytes(), mark, data.bytes()));
    });
}

// Each "~" of text replaced by the next "~"-separated block.
BRINDLE_EXPORT(BSTR) cInsertBlocks(BSTR *Txt, BSTR *Blocks) {
    return guarded_string([&] { return blocks_result(Txt, Blocks, '~', false); });
}

BRINDLE_EXPORT(BSTR) cInsertBlocksBy(BSTR *Txt, BSTR *Blocks, BSTR *Separator) {
    return guarded_string(
        [&] { return blocks_result(Txt, Blocks, StrArg::by_ref(Separator).first_or('~'), false); });
}

// As cInsertBlocks, but an empty block list removes the placeholders.
BRINDLE_EXPORT(BSTR) cInsertBlocksExt(BSTR *Txt, BSTR *Blocks) {
    return guarded_string([&] { return blocks_result(Txt, Blocks, '~', true); });
}

// Block n (from 1) of size bytes; the last block may be short.
BRINDLE_EXPORT(BSTR) cGetBlock(BSTR *Txt, int32_t Position, int32_t Size) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        if (text.empty() || Position < 1 || Size < 1)
            return empty_string();
        return new_string(block_at(text.bytes(), Position, Size));
    });
}

// The bytes shuffled with the C runtime's generator, reseeded with the
// platform's calendar clock in whole seconds at every call (two calls in one
// second shuffle alike).
// The text is taken up to its first zero byte and the rest become zero
// bytes; the result keeps the length of the text.
BRINDLE_EXPORT(BSTR) cMixChars(BSTR *Txt) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        if (text.empty())
            return empty_string();
        const auto seed = static_cast<uint32_t>(brindle::platform::calendar_time());
        return new_string(shuffle_bytes(text.bytes(), seed));
    });
}

BRINDLE_EXPORT(BSTR) cStrAND(BSTR *Txt1, BSTR *Txt2) {
    return guarded_string([&] { return bytewise_result(Txt1, Txt2, ByteLogic::And); });
}

BRINDLE_EXPORT(BSTR) cStrOR(BSTR *Txt1, BSTR *Txt2) {
    return guarded_string([&] { return bytewise_result(Txt1, Txt2, ByteLogic::Or); });
}

BRINDLE_EXPORT(BSTR) cStrXOR(BSTR *Txt1, BSTR *Txt2) {
    return guarded_string([&] { return bytewise_result(Txt1, Txt2, ByteLogic::Xor); });
}
