#include "files/part_copy.h"

#include "files/path_names.h"
#include "files/text_file_codes.h"
#include "platform/file.h"

#include <cstdio>
#include <memory>
#include <new>
#include <string>
#include <vector>

namespace brindle::files {

namespace {

constexpr size_t kBlock = 32768;

bool valid_name(std::string_view name) { return !name.empty() && filename_validity(name) == kNameValid; }

// Copies `count` bytes (all to the end when negative) from `from` to `to`;
// 0 or a TextFileCode.
int32_t copy_bytes(platform::File &from, platform::File &to, int64_t count, unsigned char *block) {
    while (count != 0) {
        const size_t want = count < 0 || count > static_cast<int64_t>(kBlock) ? kBlock : static_cast<size_t>(count);
        const int64_t got = from.read(block, want);
        if (got < 0)
            return kTextReadError;
        if (got == 0)
            break;
        if (!to.write(block, static_cast<size_t>(got)))
            return kTextWriteError;
        if (count > 0)
            count -= got;
    }
    return 0;
}

} // namespace

int32_t copy_part(std::string_view source, std::string_view target, int32_t offset, bool head, bool append) {
    if (offset < 0)
        return kPartBadOffset;
    if (!valid_name(source))
        return kPartBadSource;
    if (!valid_name(target))
        return kPartBadTarget;
    const int64_t size = platform::file_size(source);
    if (size >= 0 && offset > size)
        return kPartOffsetBeyondEnd;
    platform::File from = platform::File::open(source, platform::OpenMode::Read);
    if (!from.is_open())
        return kPartSourceNotOpened;
    std::unique_ptr<unsigned char[]> block(new (std::nothrow) unsigned char[kBlock]);
    if (!block)
        return kTextNoBuffer;
    if (platform::same_file(source, target))
        return kPartTargetNotOpened;
    const int64_t old_size = append ? platform::file_size(target) : -1;
    platform::File to = platform::File::open(target, append ? platform::OpenMode::Append : platform::OpenMode::Create);
    if (!to.is_open())
        return kPartTargetNotOpened;
    int32_t code = 0;
    if (head)
        code = copy_bytes(from, to, offset, block.get());
    else if (!from.seek(offset))
        code = kTextReadError;
    else
        code = copy_bytes(from, to, -1, block.get());
    if (code == 0 && !to.close())
        code = kTextWriteError;
    if (code != 0) {
        if (append && old_size >= 0) {
            to.truncate(old_size); // what was there before stays
            to.close();
        } else {
            to.close();
            platform::delete_if_exists(target);
        }
    }
    return code;
}

std::string piece_name(std::string_view pattern, int32_t n) {
    const PathPieces p = split_path(pattern);
    char ext[16];
    std::snprintf(ext, sizeof ext, "%03d", static_cast<int>(n));
    return make_path(p.drive, p.dir, p.name, ext);
}

int32_t split_file(std::string_view source, std::string_view pattern, int32_t piece_size) {
    if (piece_size < 1)
        return kSplitBadSize;
    if (!valid_name(source))
        return kSplitBadSource;
    if (!valid_name(pattern))
        return kSplitBadPattern;
    platform::File from = platform::File::open(source, platform::OpenMode::Read);
    if (!from.is_open())
        return kSplitSourceNotOpened;
    std::unique_ptr<unsigned char[]> block(new (std::nothrow) unsigned char[kBlock]);
    if (!block)
        return kTextNoBuffer;
    std::vector<std::string> made;
    auto fail = [&](int32_t code) {
        for (const std::string &name : made)
            platform::delete_if_exists(name);
        return code;
    };
    // The first byte of the next piece, read ahead so that a source whose
    // size is a multiple of the piece size gives no empty last piece.
    unsigned char next = 0;
    for (int32_t n = 0;; ++n) {
        const int64_t got = from.read(&next, 1);
        if (got < 0)
            return fail(kTextReadError);
        if (got == 0)
            return n;
        if (n == 0x7FFFFFFF)
            return fail(kSplitPieceNotCreated);
        const std::string name = piece_name(pattern, n);
        if (platform::same_file(source, name))
            return fail(kSplitPieceNotCreated);
        platform::File to = platform::File::open(name, platform::OpenMode::Create);
        if (!to.is_open())
            return fail(kSplitPieceNotCreated);
        made.push_back(name);
        if (!to.write(&next, 1))
            return fail(kTextWriteError);
        const int32_t code = copy_bytes(from, to, int64_t{piece_size} - 1, block.get());
        if (code != 0)
            return fail(code);
        if (!to.close())
            return fail(kTextWriteError);
    }
}

int32_t cut_file(std::string_view source, std::string_view first, std::string_view second, int32_t position) {
    if (position < 0)
        return kCutBadPosition;
    if (!valid_name(source))
        return kCutBadSource;
    if (!valid_name(first))
        return kCutBadFirst;
    if (!valid_name(second))
        return kCutBadSecond;
    const int64_t size = platform::file_size(source);
    if (size >= 0 && position > size)
        return kCutBeyondEnd;
    platform::File from = platform::File::open(source, platform::OpenMode::Read);
    if (!from.is_open())
        return kCutSourceNotOpened;
    std::unique_ptr<unsigned char[]> block(new (std::nothrow) unsigned char[kBlock]);
    if (!block)
        return kTextNoBuffer;
    if (platform::same_file(source, first))
        return kCutFirstNotCreated;
    platform::File a = platform::File::open(first, platform::OpenMode::Create);
    if (!a.is_open())
        return kCutFirstNotCreated;
    // With the first target made, a second name of it (or of the source) is
    // caught however it is spelled.
    if (platform::same_file(source, second) || platform::same_file(first, second)) {
        a.close();
        platform::delete_if_exists(first);
        return kCutSecondNotCreated;
    }
    platform::File b = platform::File::open(second, platform::OpenMode::Create);
    if (!b.is_open()) {
        a.close();
        platform::delete_if_exists(first);
        return kCutSecondNotCreated;
    }
    int32_t code = copy_bytes(from, a, position, block.get());
    if (code == 0 && !a.close())
        code = kTextWriteError;
    if (code == 0)
        code = copy_bytes(from, b, -1, block.get());
    if (code == 0 && !b.close())
        code = kTextWriteError;
    if (code != 0) {
        a.close();
        b.close();
        platform::delete_if_exists(first);
        platform::delete_if_exists(second);
    }
    return code;
}

} // namespace brindle::files
