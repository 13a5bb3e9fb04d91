#include "files/byte_filter.h"

#include "files/file_sets.h"
#include "platform/file.h"

#include <array>
#include <memory>
#include <new>

namespace brindle::files {

namespace {

constexpr size_t kBlock = 32768;

} // namespace

int32_t filter_file(std::string_view source, std::string_view target, std::string_view set, bool keep_members) {
    std::unique_ptr<unsigned char[]> in(new (std::nothrow) unsigned char[kBlock]);
    if (!in)
        return kFilterNoFirstBuffer;
    std::unique_ptr<unsigned char[]> out(new (std::nothrow) unsigned char[kBlock]);
    if (!out)
        return kFilterNoSecondBuffer;
    if (set.empty())
        return kFilterEmptySet;
    std::array<bool, 256> member{};
    for (unsigned char c : set)
        member[c] = true;
    const bool keep = set.size() == 1 ? false : keep_members;

    platform::File from = platform::File::open(source, platform::OpenMode::Read);
    if (!from.is_open())
        return kFilterSourceNotOpened;
    // Creating the target would truncate the source when both name one file
    // (however spelled: another case, ".\", a link).
    if (platform::same_file(source, target))
        return kFilterTargetNotCreated;
    platform::File to = platform::File::open(target, platform::OpenMode::Create);
    if (!to.is_open())
        return kFilterTargetNotCreated;
    auto fail = [&](int32_t code) {
        to.close();
        platform::delete_if_exists(target);
        return code;
    };
    ByteTotal total;
    for (;;) {
        const int64_t got = from.read(in.get(), kBlock);
        if (got < 0)
            return fail(kFilterReadError);
        if (got == 0)
            break;
        size_t n = 0;
        for (int64_t i = 0; i < got; ++i)
            if (member[in[static_cast<size_t>(i)]] == keep)
                out[n++] = in[static_cast<size_t>(i)];
        if (!to.write(out.get(), n))
            return fail(kFilterWriteError);
        total.add(n);
    }
    if (!to.close())
        return fail(kFilterWriteError);
    return total.as_long(); // 2 GiB and more: the largest Long, never a code
}

} // namespace brindle::files
