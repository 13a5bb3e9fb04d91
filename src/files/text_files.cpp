// Whole-file text operations: names by value in, one engine call, a count
// or a code out.
#include "files/case_copy.h"
#include "files/file_merge.h"
#include "files/file_sort.h"
#include "files/file_text_search.h"
#include "files/line_counts.h"
#include "files/line_search.h"
#include "files/log_cycle.h"
#include "files/mail_header.h"
#include "files/part_copy.h"
#include "files/rewrite_in_place.h"
#include "files/tab_runs.h"
#include "files/text_file_codes.h"
#include "files/wrap_lines.h"
#include "frame/frame.h"

#include <optional>
#include <string>
#include <vector>

using namespace brindle::frame;
using namespace brindle::files;

namespace {
std::string_view name(BSTR arg) { return StrArg::by_val(arg).text(); }
} // namespace

BRINDLE_EXPORT(int32_t) cFileLineCount(BSTR File) {
    return guarded(int32_t{kCountNoBuffer}, [&] { return count_carriage_returns(name(File)); });
}

BRINDLE_EXPORT(int32_t) cFileLineCount2(BSTR File) {
    return guarded(int32_t{kCountNoBuffer}, [&] { return count_line_pieces(name(File)); });
}

BRINDLE_EXPORT(int32_t) cFileToUpper(BSTR Source, BSTR Target) {
    return guarded(int32_t{kTextNoBuffer}, [&] { return copy_changing_case(name(Source), name(Target), true); });
}

BRINDLE_EXPORT(int32_t) cFileToLower(BSTR Source, BSTR Target) {
    return guarded(int32_t{kTextNoBuffer}, [&] { return copy_changing_case(name(Source), name(Target), false); });
}

BRINDLE_EXPORT(int32_t) cFileStatistics(BSTR File, int32_t *Lines, int32_t *Words, int32_t *Bytes) {
    return guarded(int32_t{kTextNoBuffer}, [&] {
        TextStatistics t;
        const int32_t code = text_statistics(name(File), &t);
        if (Lines != nullptr)
            *Lines = long_count(t.lines);
        if (Words != nullptr)
            *Words = long_count(t.words);
        if (Bytes != nullptr)
            *Bytes = long_count(t.bytes);
        return code != 0 ? code : long_count(t.bytes);
    });
}

BRINDLE_EXPORT(int32_t) cFileSearch(BSTR File, BSTR Text, int16_t CaseSensitive) {
    return guarded(int32_t{kTextReadError}, [&] {
        const int32_t r = search_text_file(name(File), name(Text), CaseSensitive != 0, true);
        return r == 1 ? int32_t{-1} : r;
    });
}

BRINDLE_EXPORT(int32_t) cFileSearchCount(BSTR File, BSTR Text, int16_t CaseSensitive) {
    return guarded(int32_t{kTextReadError}, [&] { return search_text_file(name(File), name(Text), CaseSensitive != 0, false); });
}

BRINDLE_EXPORT(int32_t) cFilePartCopy(BSTR Source, BSTR Target, int32_t Offset, int16_t Head) {
    return guarded(int32_t{kTextNoBuffer}, [&] { return copy_part(name(Source), name(Target), Offset, flag16(Head), false); });
}

BRINDLE_EXPORT(int32_t) cFilePartAppend(BSTR Source, BSTR Target, int32_t Offset, int16_t Head) {
    return guarded(int32_t{kTextNoBuffer}, [&] { return copy_part(name(Source), name(Target), Offset, flag16(Head), true); });
}

BRINDLE_EXPORT(int32_t) cSplitFile(BSTR Source, BSTR Pattern, int32_t PieceSize) {
    return guarded(int32_t{kTextNoBuffer}, [&] { return split_file(name(Source), name(Pattern), PieceSize); });
}

BRINDLE_EXPORT(int32_t) cCutFile(BSTR Source, BSTR First, BSTR Second, int32_t Position) {
    return guarded(int32_t{kTextNoBuffer}, [&] { return cut_file(name(Source), name(First), name(Second), Position); });
}

BRINDLE_EXPORT(int32_t) cFileCompressTab(BSTR Source, BSTR Target, int32_t Width) {
    return guarded(int32_t{kTextNoBuffer}, [&] { return compress_tabs(name(Source), name(Target), Width); });
}

BRINDLE_EXPORT(int32_t) cFileExpandTab(BSTR Source, BSTR Target, int32_t Width) {
    return guarded(int32_t{kTextNoBuffer}, [&] { return expand_tabs(name(Source), name(Target), Width); });
}

BRINDLE_EXPORT(int16_t) cFileCycleNeeded(BSTR File, int16_t Period) {
    return guarded(int16_t{0}, [&] {
        const auto written = file_written(name(File));
        return vb_bool(written && period_turned(*written, local_stamp(), Period));
    });
}

BRINDLE_EXPORT(int16_t) cFileCycle(BSTR File, int16_t Period) {
    return guarded(int16_t{0}, [&] { return vb_bool(cycle_file(name(File), Period)); });
}

BRINDLE_EXPORT(int16_t) cFileHasChanged(BSTR File, int32_t FileDate, int32_t FileTime) {
    return guarded(int16_t{0}, [&] {
        const auto w = file_written(name(File));
        return vb_bool(w && (w->date > FileDate || (w->date == FileDate && w->time > FileTime)));
    });
}

BRINDLE_EXPORT(int32_t) cFileSort(BSTR Source, BSTR Target, int16_t Order, int32_t RecordLength, int32_t KeyStart,
                                  int32_t KeyLength, int32_t *Count) {
    return guarded(int32_t{kSortNoBuffer}, [&] {
        return sort_file(name(Source), name(Target), FileSortRequest{Order, RecordLength, KeyStart, KeyLength}, Count);
    });
}

BRINDLE_EXPORT(int32_t) cFileMerge(BSTR First, BSTR Second, BSTR Target) {
    return guarded(int32_t{kTextNoBuffer}, [&] { return merge_two(name(First), name(Second), name(Target)); });
}

BRINDLE_EXPORT(int32_t) cFileMergeExt(SAFEARRAY **Sources, BSTR Target) {
    return guarded(int32_t{kMergeFailed}, [&] {
        ArrayElements list(Sources);
        if (!list.present() || !list.holds_strings() || list.count() == 0)
            return int32_t{kMergeNoNames};
        std::vector<std::string> names;
        for (int64_t i = list.lower(); i <= list.upper(); ++i) {
            std::optional<std::string> s = list.get_string(static_cast<int32_t>(i));
            if (!s)
                return int32_t{kMergeNoNames};
            names.push_back(s->substr(0, s->find('\0')));
        }
        return merge_list(names, name(Target));
    });
}

BRINDLE_EXPORT(int32_t) cFileSearchAndReplace(BSTR File, BSTR Search, BSTR Replacement, BSTR Reserved, int16_t CaseSensitive) {
    (void)Reserved;
    return guarded(int32_t{kTextNoBuffer}, [&] {
        return replace_in_file(name(File), name(Search), name(Replacement), CaseSensitive != 0);
    });
}

BRINDLE_EXPORT(int32_t) cFileChangeChars(BSTR File, BSTR *FromChars, BSTR *ToChars, BSTR Reserved) {
    (void)Reserved;
    return guarded(int32_t{kTextNoBuffer}, [&] {
        const StrArg from = StrArg::by_ref(FromChars), to = StrArg::by_ref(ToChars);
        if (from.empty() || to.empty())
            return int32_t{0};
        return map_file_bytes(name(File), chained_byte_map(from.bytes(), to.bytes()));
    });
}

BRINDLE_EXPORT(int32_t) cFileSearchFromLine(BSTR File, BSTR Text, int32_t *LineNumber, int32_t CaseSensitive) {
    return guarded(int32_t{kTextReadError}, [&] {
        LineHit hit;
        const int32_t r = search_from_line(name(File), name(Text), LineNumber ? *LineNumber : 1, CaseSensitive != 0, false, &hit);
        if (r != 1)
            return r;
        if (LineNumber != nullptr)
            *LineNumber = hit.line;
        return hit.position;
    });
}

BRINDLE_EXPORT(int32_t) cFileSearchPatternFromLine(BSTR File, BSTR Pattern, int32_t *LineNumber, int32_t CaseSensitive) {
    return guarded(int32_t{kTextReadError}, [&] {
        LineHit hit;
        const int32_t r =
            search_from_line(name(File), name(Pattern), LineNumber ? *LineNumber : 1, CaseSensitive != 0, true, &hit);
        if (r != 1)
            return r;
        if (LineNumber != nullptr)
            *LineNumber = hit.line;
        return int32_t{-1};
    });
}

BRINDLE_EXPORT(int32_t) cFileWrapLine(BSTR Source, BSTR Target, int32_t Width, BSTR Delimiters, BSTR LineBreak) {
    return guarded(int32_t{kWrapNoBuffer}, [&] {
        return wrap_file_lines(name(Source), name(Target), Width, StrArg::by_val(Delimiters).bytes(),
                               StrArg::by_val(LineBreak).bytes());
    });
}

BRINDLE_EXPORT(BSTR) cFileScanHeader(BSTR File, BSTR Field) {
    return guarded_string([&] {
        std::string header;
        if (!read_mail_header(name(File), &header))
            return empty_string();
        return new_string(mail_header_field(header, name(Field)));
    });
}

BRINDLE_EXPORT(BSTR) cFileScanHeaderForRecipients(BSTR File, BSTR Separator) {
    return guarded_string([&] {
        std::string header;
        if (!read_mail_header(name(File), &header))
            return empty_string();
        const std::string_view separator = name(Separator).empty() ? std::string_view(";") : name(Separator);
        std::string list;
        for (const std::string &address : mail_recipients(header)) {
            if (!list.empty())
                list += separator;
            list += address;
        }
        return new_string(list);
    });
}
