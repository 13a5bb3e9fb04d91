#include "files/file_sort.h"

#include "common/ascii.h"
#include "platform/file.h"
#include "runtime/text_mode.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <vector>

namespace brindle::files {

namespace {

constexpr size_t kLinePiece = 16383;

struct Record {
    uint32_t offset;
    uint32_t length;
};

// Byte order as strcmp/strncmp see it (unsigned), or as _stricmp sees it
// (both bytes in lower case).
int compare_bytes(const unsigned char *a, size_t na, const unsigned char *b, size_t nb, bool no_case) {
    const size_t n = std::min(na, nb);
    if (!no_case) {
        const int c = std::memcmp(a, b, n);
        if (c != 0)
            return c;
    } else {
        for (size_t i = 0; i < n; ++i) {
            const int d = common::ascii_lower(a[i]) - common::ascii_lower(b[i]);
            if (d != 0)
                return d;
        }
    }
    return na < nb ? -1 : na > nb ? 1 : 0;
}

// The text-mode reading of a whole buffer in place: CR LF becomes LF and a
// Ctrl-Z ends the data. The new length.
size_t translate_text(unsigned char *data, size_t n) {
    size_t o = 0;
    for (size_t i = 0; i < n; ++i) {
        const unsigned char c = data[i];
        if (c == 0x1A)
            break;
        if (c == '\r' && i + 1 < n && data[i + 1] == '\n')
            continue;
        data[o++] = c;
    }
    return o;
}

} // namespace

int32_t sort_file(std::string_view source, std::string_view target, const FileSortRequest &request, int32_t *stage) {
    int32_t ignored = 0;
    if (stage == nullptr)
        stage = &ignored;
    if (source.empty())
        return kSortNoSource;
    if (target.empty())
        return kSortNoTarget;
    if (common::equal_no_case(source, target))
        return kSortSameFile;
    const bool lines = request.record_length < 1;
    const size_t reclen = lines ? 0 : static_cast<size_t>(request.record_length);
    size_t key_start = 0, key_length = 0;
    const bool keyed = request.key_start >= 0;
    if (!lines && !keyed)
        return kSortBadKeyStart;
    if (keyed) {
        key_start = static_cast<size_t>(request.key_start);
        key_length = request.key_length < 1 ? SIZE_MAX : static_cast<size_t>(request.key_length);
        if (!lines) {
            if (key_start >= reclen)
                return kSortKeyBeyondRecord;
            if (key_length == SIZE_MAX)
                key_length = reclen - key_start;
            else if (key_length > reclen - key_start)
                return kSortKeyBeyondRecord;
        }
    }
    *stage = -1;

    platform::File in = platform::File::open(source, platform::OpenMode::Read);
    if (!in.is_open())
        return kSortSourceNotOpened;
    if (platform::same_file(source, target))
        return kSortSameFile;
    platform::File out = platform::File::open(target, platform::OpenMode::Create);
    if (!out.is_open())
        return kSortTargetNotCreated;
    auto fail = [&](int32_t code) {
        out.close();
        platform::delete_if_exists(target);
        return code;
    };

    const int64_t size = in.size();
    if (size < 0)
        return fail(kSortReadError);
    if (size > int64_t{0xFFFFFFFF})
        return fail(kSortTableTooLarge);
    std::unique_ptr<unsigned char[]> data(new (std::nothrow) unsigned char[static_cast<size_t>(size) + 1]);
    if (!data)
        return fail(kSortNoBuffer);
    *stage = -2;
    const int64_t got = in.read(data.get(), static_cast<size_t>(size));
    if (got < 0)
        return fail(kSortReadError);
    if (got != size)
        return fail(kSortShortRead);
    in.close();

    // The record table, sized by a first pass so that it is made once (no
    // copies while it grows, and no more memory than it needs).
    std::vector<Record> table;
    size_t n = static_cast<size_t>(size);
    if (lines)
        n = translate_text(data.get(), n);
    // Calls piece(offset, length) for each record in file order.
    auto for_each_record = [&](auto &&piece) {
        if (!lines) {
            for (size_t at = 0; at < n; at += reclen)
                piece(at, std::min(reclen, n - at));
            return;
        }
        for (size_t at = 0; at < n;) {
            const unsigned char *p = data.get() + at;
            const size_t span = std::min(n - at, kLinePiece);
            const auto *lf = static_cast<const unsigned char *>(std::memchr(p, '\n', span));
            const size_t length = lf != nullptr ? static_cast<size_t>(lf - p) + 1 : span;
            piece(at, length);
            at += length;
        }
    };
    size_t count = 0;
    for_each_record([&](size_t, size_t) { ++count; });
    if (count > 0x7FFFFFFF)
        return fail(kSortTableTooLarge);
    try {
        table.reserve(count);
    } catch (const std::bad_alloc &) {
        return fail(kSortTableCannotGrow);
    }
    for_each_record([&](size_t at, size_t length) {
        if (lines) // the piece is text: a zero byte ends it
            if (const void *zero = std::memchr(data.get() + at, 0, length))
                length = static_cast<size_t>(static_cast<const unsigned char *>(zero) - (data.get() + at));
        table.push_back(Record{static_cast<uint32_t>(at), static_cast<uint32_t>(length)});
    });
    *stage = -3;

    const bool descending = request.order == 2 || request.order == 6 || request.order == 10;
    const bool no_case = request.order == 9 || request.order == 10;
    const unsigned char *base = data.get();
    // A record's text as strings see it: for fixed records up to a zero byte.
    auto text_of = [&](const Record &r, const unsigned char **p, size_t *len) {
        *p = base + r.offset;
        *len = r.length;
        if (keyed) {
            const size_t s = std::min<size_t>(key_start, *len);
            *p += s;
            *len = std::min(*len - s, key_length);
        }
        if (!lines)
            if (const void *zero = std::memchr(*p, 0, *len))
                *len = static_cast<size_t>(static_cast<const unsigned char *>(zero) - *p);
    };
    std::sort(table.begin(), table.end(), [&](const Record &a, const Record &b) {
        const unsigned char *pa, *pb;
        size_t na, nb;
        text_of(a, &pa, &na);
        text_of(b, &pb, &nb);
        const int c = compare_bytes(pa, na, pb, nb, no_case);
        return descending ? c > 0 : c < 0;
    });
    *stage = -4;

    bool ok = true;
    if (lines) {
        runtime::TextWriter writer(out);
        for (const Record &r : table) {
            // Every record ends in a line feed, so that a last line without
            // one, or a piece of a long line, never runs into the next.
            const bool ends_line = r.length > 0 && base[r.offset + r.length - 1] == '\n';
            ok = writer.write(base + r.offset, r.length) && (ends_line || writer.write("\n", 1));
            if (!ok)
                break;
        }
        ok = ok && writer.flush();
    } else {
        std::vector<unsigned char> block;
        block.reserve(32768 + reclen);
        for (const Record &r : table) {
            block.insert(block.end(), base + r.offset, base + r.offset + r.length);
            if (block.size() >= 32768) {
                ok = out.write(block.data(), block.size());
                block.clear();
                if (!ok)
                    break;
            }
        }
        ok = ok && out.write(block.data(), block.size());
    }
    if (!ok || !out.close())
        return fail(kSortWriteError);
    *stage = static_cast<int32_t>(table.size());
    return 0;
}

} // namespace brindle::files
