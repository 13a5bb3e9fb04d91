#include "files/file_merge.h"

#include "files/text_file_codes.h"
#include "platform/file.h"

#include <memory>
#include <new>

namespace brindle::files {

namespace {

constexpr size_t kBlock = 32768;

// Appends all of `from` to `to`: bytes copied, or a TextFileCode.
int64_t append_all(platform::File &from, platform::File &to, unsigned char *block) {
    int64_t total = 0;
    for (;;) {
        const int64_t got = from.read(block, kBlock);
        if (got < 0)
            return kTextReadError;
        if (got == 0)
            return total;
        if (!to.write(block, static_cast<size_t>(got)))
            return kTextWriteError;
        total += got;
    }
}

} // namespace

int32_t merge_two(std::string_view first, std::string_view second, std::string_view target) {
    std::unique_ptr<unsigned char[]> block(new (std::nothrow) unsigned char[kBlock]);
    if (!block)
        return kTextNoBuffer;
    platform::File a = platform::File::open(first, platform::OpenMode::Read);
    if (!a.is_open())
        return kTextSourceNotOpened;
    platform::File b = platform::File::open(second, platform::OpenMode::Read);
    if (!b.is_open())
        return kMergeSecondNotOpened;
    if (target.empty() || platform::same_file(first, target) || platform::same_file(second, target))
        return kTextTargetNotCreated;
    platform::File to = platform::File::open(target, platform::OpenMode::Create);
    if (!to.is_open())
        return kTextTargetNotCreated;
    const int64_t one = append_all(a, to, block.get());
    const int64_t two = one < 0 ? one : append_all(b, to, block.get());
    const bool closed = to.close();
    if (one < 0 || two < 0 || !closed) {
        platform::delete_if_exists(target);
        return one < 0 ? static_cast<int32_t>(one) : two < 0 ? static_cast<int32_t>(two) : kTextWriteError;
    }
    return long_count(one + two);
}

int32_t merge_list(const std::vector<std::string> &sources, std::string_view target) {
    if (sources.empty() || target.empty())
        return kMergeNoNames;
    for (const std::string &s : sources)
        if (s.empty())
            return kMergeNoNames;
    for (const std::string &s : sources) {
        if (!platform::File::open(s, platform::OpenMode::Read).is_open())
            return kMergeSourceNotOpened;
        if (platform::same_file(s, target))
            return kMergeTargetNotCreated;
    }
    std::unique_ptr<unsigned char[]> block(new (std::nothrow) unsigned char[kBlock]);
    if (!block)
        return kMergeFailed;
    platform::File to = platform::File::open(target, platform::OpenMode::Create);
    if (!to.is_open())
        return kMergeTargetNotCreated;
    auto fail = [&](int32_t code) {
        to.close();
        platform::delete_if_exists(target);
        return code;
    };
    for (const std::string &s : sources) {
        platform::File from = platform::File::open(s, platform::OpenMode::Read);
        if (!from.is_open())
            return fail(kMergeSourceNotOpened); // gone since it was checked
        if (append_all(from, to, block.get()) < 0)
            return fail(kMergeFailed);
    }
    if (!to.close())
        return fail(kMergeFailed);
    return sources.size() > 0x7FFFFFFF ? 0x7FFFFFFF : static_cast<int32_t>(sources.size());
}

} // namespace brindle::files
