// Byte filters of whole files: copy a file dropping (or keeping only) the
// bytes of a character set, in blocks of 32,768 bytes.
#include "files/file_sets.h"
#include "frame/frame.h"
#include "platform/file.h"

#include <array>
#include <memory>
#include <new>

using namespace brindle::frame;
namespace platform = brindle::platform;

namespace {

constexpr size_t kBlock = 32768;

enum FilterCode : int32_t {
    kNoFirstBuffer = -32760,
    kNoSecondBuffer = -32761,
    kEmptySet = -1,
    kSourceNotOpened = -32750,
    kTargetNotCreated = -32751,
    kReadError = -32730,
    kWriteError = -32740,
};

// keep_members: true keeps only the set's bytes, false drops them. A set of
// one byte always drops it, for both exports.
int32_t filter_file(BSTR Source, BSTR Target, BSTR *CharSet, bool keep_members) {
    std::unique_ptr<unsigned char[]> in(new (std::nothrow) unsigned char[kBlock]);
    if (!in)
        return kNoFirstBuffer;
    std::unique_ptr<unsigned char[]> out(new (std::nothrow) unsigned char[kBlock]);
    if (!out)
        return kNoSecondBuffer;
    // The set is counted: a zero byte in it is a member like any other.
    const StrArg set = StrArg::by_ref(CharSet);
    if (set.empty())
        return kEmptySet;
    std::array<bool, 256> member{};
    for (unsigned char c : set.bytes())
        member[c] = true;
    const bool keep = set.size() == 1 ? false : keep_members;

    const std::string_view source = StrArg::by_val(Source).text();
    const std::string_view target = StrArg::by_val(Target).text();
    platform::File from = platform::File::open(source, platform::OpenMode::Read);
    if (!from.is_open())
        return kSourceNotOpened;
    // Creating the target would truncate the source when both name one file
    // (however spelled: another case, ".\", a link).
    if (platform::same_file(source, target))
        return kTargetNotCreated;
    platform::File to = platform::File::open(target, platform::OpenMode::Create);
    if (!to.is_open())
        return kTargetNotCreated;
    auto fail = [&](int32_t code) {
        to.close();
        platform::delete_if_exists(target);
        return code;
    };
    brindle::files::ByteTotal total;
    for (;;) {
        const int64_t got = from.read(in.get(), kBlock);
        if (got < 0)
            return fail(kReadError);
        if (got == 0)
            break;
        size_t n = 0;
        for (int64_t i = 0; i < got; ++i)
            if (member[in[static_cast<size_t>(i)]] == keep)
                out[n++] = in[static_cast<size_t>(i)];
        if (!to.write(out.get(), n))
            return fail(kWriteError);
        total.add(n);
    }
    if (!to.close())
        return fail(kWriteError);
    return total.as_long(); // 2 GiB and more: the largest Long, never a code
}

} // namespace

// Drops every byte of the set.
BRINDLE_EXPORT(int32_t) cFileFilter(BSTR Source, BSTR Target, BSTR *CharSet) {
    return guarded(int32_t{kNoFirstBuffer}, [&] { return filter_file(Source, Target, CharSet, false); });
}

// Keeps only the bytes of the set - except that a one-byte set is dropped,
// as cFileFilter does.
BRINDLE_EXPORT(int32_t) cFileFilterNot(BSTR Source, BSTR Target, BSTR *CharSet) {
    return guarded(int32_t{kNoFirstBuffer}, [&] { return filter_file(Source, Target, CharSet, true); });
}
