// Tokens and character filters: token tests, splitting at any of a set of
// bytes, and rebuilding a string byte by byte (filters, translations,
// insertions, removals, placeholders, blocks, shuffles, bytewise logic).
// Everything works on bytes; no locale is consulted.
//
// The token tests take their strings by value and read them zero-terminated;
// every other function here reads its text counted.
#include "frame/frame.h"
#include "platform/clock.h"
#include "runtime/crt_rand.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

using namespace brindle::frame;

namespace {

// Membership of the bytes of a set, for the "any byte of" rules.
class ByteSet {
  public:
    explicit ByteSet(std::string_view bytes) {
        for (const char c : bytes)
            in_[static_cast<unsigned char>(c)] = true;
    }
    bool has(char c) const { return in_[static_cast<unsigned char>(c)]; }

  private:
    std::array<bool, 256> in_{};
};

// A token is built in a buffer of 2,560 bytes, so it holds at most 2,559;
// the bytes of a longer token beyond that are not kept (the token is
// searched by its first 2,559 bytes) instead of running past the buffer.
constexpr size_t kTokenMax = 2559;

// The token walk shared by the Or and And tests. Returns true when the walk
// ends early (a token found for Or, a token missing for And).
bool token_walk(std::string_view text, std::string_view list, char sep, bool want_found) {
    std::string token;
    token.reserve(64);
    const size_t last = list.size() - 1;
    for (size_t k = 0; k <= last; ++k) {
        const char c = list[k];
        // The last byte of the list always joins the last token, even when
        // it is the separator itself.
        const bool ends = k == last || c == sep;
        if (c != sep || k == last) {
            if (token.size() < kTokenMax)
                token.push_back(c);
        }
        if (!ends)
            continue;
        if (!token.empty()) {
            const bool found = text.find(token) != std::string_view::npos;
            if (found == want_found)
                return true;
        }
        token.clear();
    }
    return false;
}

// The list's length is taken as a 16-bit signed number: a list of 32,768
// bytes or more is seen shortened to its length modulo 65,536 (and as empty
// when that is negative or zero).
std::string_view list_as_16_bit(std::string_view list) {
    const auto len16 = static_cast<int16_t>(static_cast<uint16_t>(list.size() & 0xFFFFu));
    if (len16 < 1)
        return {};
    return list.substr(0, static_cast<size_t>(len16));
}

int16_t token_test(BSTR text_handle, BSTR list_handle, char sep, bool is_or) {
    const std::string_view text = StrArg::by_val(text_handle).text();
    const std::string_view list = list_as_16_bit(StrArg::by_val(list_handle).text());
    if (text.empty() || list.empty())
        return 0;
    const bool early = token_walk(text, list, sep, is_or);
    return is_or ? vb_bool(early) : vb_bool(!early);
}

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
    const ByteSet members(set.bytes());
    std::string out;
    out.reserve(text.size());
    for (const char c : text.bytes())
        if (members.has(c) == keep_members)
            out.push_back(c);
    return new_string(out);
}

// The translation table of cChangeChars: each pair applied in order to the
// result of the pairs before it, so "ab" -> "bc" turns a into c.
std::array<unsigned char, 256> translation(std::string_view from, std::string_view to) {
    std::array<unsigned char, 256> map{};
    for (int v = 0; v < 256; ++v)
        map[static_cast<size_t>(v)] = static_cast<unsigned char>(v);
    const size_t m = std::min(from.size(), to.size());
    if (m < 2) {
        map[static_cast<unsigned char>(from[0])] = static_cast<unsigned char>(to[0]);
        return map;
    }
    for (int v = 0; v < 256; ++v) {
        unsigned char c = static_cast<unsigned char>(v);
        for (size_t k = 0; k < m; ++k)
            if (c == static_cast<unsigned char>(from[k]))
                c = static_cast<unsigned char>(to[k]);
        map[static_cast<size_t>(v)] = c;
    }
    return map;
}

// The placeholder insertion shared by the three cInsertBlocks forms.
BSTR insert_blocks(const StrArg &text, std::string_view blocks, char mark) {
    std::string out;
    out.reserve(text.size() + blocks.size());
    size_t cursor = 0; // next unread byte of blocks
    for (const char c : text.bytes()) {
        if (c != mark) {
            out.push_back(c);
            continue;
        }
        if (cursor >= blocks.size())
            continue; // blocks used up: the placeholder is dropped
        size_t end = blocks.find(mark, cursor);
        if (end == std::string_view::npos)
            end = blocks.size();
        out.append(blocks.substr(cursor, end - cursor));
        cursor = end + 1; // the separator is consumed with its block
    }
    return new_string(out);
}

template <class Op> BSTR bytewise(BSTR *a_ref, BSTR *b_ref, Op op) {
    const StrArg a = StrArg::by_ref(a_ref), b = StrArg::by_ref(b_ref);
    if (a.empty() || b.empty() || a.size() != b.size())
        return empty_string();
    StringResult out(a.size());
    for (size_t k = 0; k < a.size(); ++k)
        out.data()[k] = static_cast<char>(op(static_cast<unsigned char>(a.data()[k]), static_cast<unsigned char>(b.data()[k])));
    return out.take();
}

} // namespace

// -1 when any token of the "|"-separated list occurs in text (case-sensitive).
BRINDLE_EXPORT(int16_t) cOrToken(BSTR Txt, BSTR Tokens) {
    return guarded<int16_t>(0, [&] { return token_test(Txt, Tokens, '|', true); });
}

BRINDLE_EXPORT(int16_t) cOrTokenIn(BSTR Txt, BSTR Tokens, BSTR Separator) {
    return guarded<int16_t>(0, [&] { return token_test(Txt, Tokens, separator_or_bar(Separator), true); });
}

// -1 when every token of the list occurs in text.
BRINDLE_EXPORT(int16_t) cAndToken(BSTR Txt, BSTR Tokens) {
    return guarded<int16_t>(0, [&] { return token_test(Txt, Tokens, '|', false); });
}

BRINDLE_EXPORT(int16_t) cAndTokenIn(BSTR Txt, BSTR Tokens, BSTR Separator) {
    return guarded<int16_t>(0, [&] { return token_test(Txt, Tokens, separator_or_bar(Separator), false); });
}

// Field n of text, where any byte of seps ends a field (the cGetIn rule).
BRINDLE_EXPORT(BSTR) cTokenIn(BSTR *Txt, BSTR *Separators, int32_t Position) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        const StrArg seps = StrArg::by_ref(Separators);
        if (text.empty() || seps.empty() || Position < 1)
            return empty_string();
        const ByteSet is_sep(seps.bytes());
        const std::string_view t = text.bytes();
        size_t start = 0;
        for (int32_t field = 1; field < Position; ++field) {
            size_t at = start;
            while (at < t.size() && !is_sep.has(t[at]))
                ++at;
            if (at == t.size())
                return empty_string();
            start = at + 1;
        }
        size_t end = start;
        while (end < t.size() && !is_sep.has(t[end]))
            ++end;
        return new_string(t.substr(start, end - start));
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
        const std::string_view t = text.bytes(), p = prefix.bytes();
        if (p.size() <= t.size() && t.substr(0, p.size()) == p)
            return new_string(t.substr(p.size()));
        StringResult out(t.size());
        std::memset(out.data(), 0, t.size());
        if (p.size() < t.size())
            std::memcpy(out.data(), t.data() + p.size(), t.size() - p.size());
        return out.take();
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
        std::string out;
        out.reserve(text.size());
        bool inside = false;
        for (const char c : text.bytes()) {
            if (inside) {
                if (c == close)
                    inside = false;
            } else if (c == open) {
                inside = true;
            } else {
                out.push_back(c);
            }
        }
        return new_string(out);
    });
}

// In place: bytes of from become the bytes of to at the same place.
BRINDLE_EXPORT(int16_t) cChangeChars(BSTR *Txt, BSTR *FromChars, BSTR *ToChars) {
    return guarded<int16_t>(0, [&]() -> int16_t {
        const StrArg text = StrArg::by_ref(Txt);
        const StrArg from = StrArg::by_ref(FromChars), to = StrArg::by_ref(ToChars);
        if (text.empty() || from.empty() || to.empty())
            return 0;
        const auto map = translation(from.bytes(), to.bytes());
        char *p = text.writable();
        for (size_t k = 0; k < text.size(); ++k)
            p[k] = static_cast<char>(map[static_cast<unsigned char>(p[k])]);
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
        const auto map = translation(from.bytes(), to.bytes());
        char *p = text.writable();
        for (size_t k = 0; k < text.size() && p[k] != stop.first(); ++k)
            p[k] = static_cast<char>(map[static_cast<unsigned char>(p[k])]);
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
        if (text.empty() || set.empty() || set.size() > 128)
            return 0;
        // How many places of the copy hold each value; one step per byte of
        // text instead of a pass over the copy.
        std::array<uint64_t, 256> places{};
        for (const char c : set.bytes())
            ++places[static_cast<unsigned char>(c)];
        uint64_t count = 0;
        for (const char c : text.bytes()) {
            const auto v = static_cast<unsigned char>(c);
            count += places[v];
            if (v != 0) {
                places[0] += places[v];
                places[v] = 0;
            }
        }
        return vb_bool(count == set.size());
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
        const size_t start = Position == 0 ? 0 : static_cast<size_t>(Position) - 1;
        const size_t keep = text.size() - count;
        const std::string_view t = text.bytes();
        if (start + count > t.size())
            return new_string(t.substr(0, keep));
        std::string out(t.substr(0, start));
        out.append(t.substr(start + count));
        return new_string(out);
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
        const size_t at = std::min(static_cast<size_t>(Position), text.size());
        std::string out;
        out.reserve(text.size() + ins.size());
        out.append(text.bytes().substr(0, at));
        out.append(ins.bytes());
        out.append(text.bytes().substr(at));
        return new_string(out);
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
        size_t next = 0;
        return map_bytes(text.bytes(), [&](char c) {
            return c != mark ? c : next < data.size() ? data.data()[next++] : ' ';
        });
    });
}

// Each "~" of text replaced by the next "~"-separated block.
BRINDLE_EXPORT(BSTR) cInsertBlocks(BSTR *Txt, BSTR *Blocks) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt), blocks = StrArg::by_ref(Blocks);
        if (text.empty())
            return empty_string();
        if (blocks.empty())
            return same_handle(text);
        return insert_blocks(text, blocks.bytes(), '~');
    });
}

BRINDLE_EXPORT(BSTR) cInsertBlocksBy(BSTR *Txt, BSTR *Blocks, BSTR *Separator) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt), blocks = StrArg::by_ref(Blocks);
        const StrArg sep = StrArg::by_ref(Separator);
        if (text.empty())
            return empty_string();
        if (blocks.empty())
            return same_handle(text);
        return insert_blocks(text, blocks.bytes(), sep.first_or('~'));
    });
}

// As cInsertBlocks, but an empty block list removes the placeholders.
BRINDLE_EXPORT(BSTR) cInsertBlocksExt(BSTR *Txt, BSTR *Blocks) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt), blocks = StrArg::by_ref(Blocks);
        if (text.empty())
            return empty_string();
        return insert_blocks(text, blocks.bytes(), '~');
    });
}

// Block n (from 1) of size bytes; the last block may be short.
BRINDLE_EXPORT(BSTR) cGetBlock(BSTR *Txt, int32_t Position, int32_t Size) {
    return guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        if (text.empty() || Position < 1 || Size < 1)
            return empty_string();
        const uint64_t start = static_cast<uint64_t>(Position - 1) * static_cast<uint64_t>(Size);
        if (start >= text.size())
            return empty_string();
        return new_string(text.bytes().substr(static_cast<size_t>(start), static_cast<size_t>(Size)));
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
        const size_t len = text.size();
        StringResult out(len);
        char *buf = out.data();
        std::memset(buf, 0, len);
        const std::string_view z = text.text();
        std::memcpy(buf, z.data(), z.size());
        using namespace brindle::platform;
        using namespace brindle::runtime;
        crt_srand(static_cast<uint32_t>(calendar_time()));
        // rand() spans 0..32767, so, as with the runtime, bytes beyond the
        // first 32,768 are never drawn.
        for (size_t k = 0; k < len; ++k) {
            size_t i = static_cast<size_t>(crt_rand()) % len;
            size_t j = static_cast<size_t>(crt_rand()) % len;
            if (i == j) {
                i = static_cast<size_t>(crt_rand()) % len;
                j = static_cast<size_t>(crt_rand()) % len;
            }
            std::swap(buf[i], buf[j]);
        }
        return out.take();
    });
}

BRINDLE_EXPORT(BSTR) cStrAND(BSTR *Txt1, BSTR *Txt2) {
    return guarded_string([&] { return bytewise(Txt1, Txt2, [](unsigned a, unsigned b) { return a & b; }); });
}

BRINDLE_EXPORT(BSTR) cStrOR(BSTR *Txt1, BSTR *Txt2) {
    return guarded_string([&] { return bytewise(Txt1, Txt2, [](unsigned a, unsigned b) { return a | b; }); });
}

BRINDLE_EXPORT(BSTR) cStrXOR(BSTR *Txt1, BSTR *Txt2) {
    return guarded_string([&] { return bytewise(Txt1, Txt2, [](unsigned a, unsigned b) { return a ^ b; }); });
}
