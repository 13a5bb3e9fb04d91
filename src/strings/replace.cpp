#include "strings/replace.h"

#include "common/ascii.h"
#include "strings/str_find.h"

#include <algorithm>
#include <cstring>

namespace brindle::strings {

namespace {

using brindle::common::ascii_lower;

} // namespace

namespace {

enum class Outcome { Unchanged, Replaced, TooLong };

// The replacement of one pair into `out`; Unchanged leaves `out` alone.
Outcome replace_into(std::string_view text, std::string_view old_text, std::string_view new_text,
                     bool case_sensitive, size_t limit, std::string &out) {
    if (old_text.empty())
        return Outcome::Unchanged;
    size_t at = StrFindFrom(text, old_text, 0, case_sensitive);
    if (at == kNotFound)
        return Outcome::Unchanged;
    if (new_text.size() > old_text.size()) {
        // When the most occurrences the text could hold might push the result
        // past the limit, count them first, so that a refused result is
        // never built.
        const size_t growth = new_text.size() - old_text.size();
        const size_t room = limit > text.size() ? limit - text.size() : 0;
        if (text.size() / old_text.size() > room / growth) {
            size_t count = 0;
            for (size_t c = at; c != kNotFound; c = StrFindFrom(text, old_text, c + old_text.size(), case_sensitive))
                ++count;
            if (count > room / growth)
                return Outcome::TooLong;
        }
    }
    std::string result;
    result.reserve(text.size() + (new_text.size() > old_text.size() ? text.size() / 8 : 0));
    size_t from = 0;
    for (; at != kNotFound; at = StrFindFrom(text, old_text, from, case_sensitive)) {
        result.append(text.substr(from, at - from));
        result.append(new_text);
        from = at + old_text.size();
        if (result.size() > limit)
            return Outcome::TooLong;
    }
    result.append(text.substr(from));
    if (result.size() > limit)
        return Outcome::TooLong;
    out = std::move(result);
    return Outcome::Replaced;
}

} // namespace

std::optional<std::string> replace_all(std::string_view text, std::string_view old_text, std::string_view new_text,
                                      bool case_sensitive, size_t limit) {
    std::string out;
    switch (replace_into(text, old_text, new_text, case_sensitive, limit, out)) {
    case Outcome::Unchanged:
        return std::string(text);
    case Outcome::Replaced:
        return out;
    default:
        return std::nullopt;
    }
}

std::optional<std::string> replace_pairs(std::string_view text, std::string_view pairs, bool case_sensitive,
                                        size_t limit) {
    // The text is copied only when a pair first changes it.
    std::string current;
    std::string_view view = text;
    bool changed = false;
    size_t pos = 0;
    while (pos <= pairs.size()) {
        size_t end = pairs.find(';', pos);
        if (end == std::string_view::npos)
            end = pairs.size();
        const std::string_view pair = pairs.substr(pos, end - pos);
        pos = end + 1;
        const size_t bar = pair.find('|');
        const std::string_view old_text = pair.substr(0, bar);
        const std::string_view new_text = bar == std::string_view::npos ? std::string_view() : pair.substr(bar + 1);
        // An empty old text would match forever: skipped.
        std::string next;
        const Outcome r = replace_into(view, old_text, new_text, case_sensitive, limit, next);
        if (r == Outcome::TooLong)
            return std::nullopt;
        if (r == Outcome::Replaced) {
            current = std::move(next);
            view = current;
            changed = true;
        }
    }
    if (!changed)
        return std::string(text);
    return current;
}

std::string delete_all(std::string_view text, std::string_view sub, bool case_sensitive) {
    if (sub.empty())
        return std::string(text);
    // The result is built as a stack: an occurrence is removed as soon as
    // its last byte arrives. The occurrence removed first is always the
    // leftmost of the current text (with a fixed length, leftmost start
    // means earliest end), and what remains before it holds none, so this
    // is the repeated leftmost removal in one pass.
    //
    // Bytes are pushed one at a time only next to a removal, where the
    // joined text may form a new occurrence: such an occurrence starts in
    // the result before the junction, so it ends within m - 1 bytes after
    // it. Elsewhere the text is searched and copied in bulk; the search
    // starts up to m - 1 bytes back, in the input run that the result
    // ends with, to catch an occurrence that the result's tail begins.
    const size_t m = sub.size(), n = text.size();
    std::string out;
    out.reserve(n);
    auto tail_matches = [&] {
        if (out.size() < m)
            return false;
        const char *tail = out.data() + out.size() - m;
        if (case_sensitive)
            return std::memcmp(tail, sub.data(), m) == 0;
        for (size_t k = 0; k < m; ++k)
            if (ascii_lower(tail[k]) != ascii_lower(sub[k]))
                return false;
        return true;
    };
    size_t pos = 0;      // next input byte
    size_t run = 0;      // input position where the result's current run of input bytes began
    size_t careful = 0;  // bytes still to push one at a time
    while (pos < n) {
        if (careful > 0) {
            out.push_back(text[pos++]);
            --careful;
            if (tail_matches()) {
                out.resize(out.size() - m);
                careful = m - 1;
                run = pos;
            }
            continue;
        }
        const size_t from = std::max(run, pos >= m - 1 ? pos - (m - 1) : size_t{0});
        const size_t at = StrFindFrom(text, sub, from, case_sensitive);
        if (at == kNotFound) {
            out.append(text.substr(pos));
            break;
        }
        if (at >= pos) {
            out.append(text.substr(pos, at - pos));
        } else {
            out.resize(out.size() - (pos - at)); // it began in the result's tail
        }
        pos = at + m;
        run = pos;
        careful = m - 1;
    }
    return out;
}

} // namespace brindle::strings
