#include "files/case_copy.h"

#include "files/text_file_codes.h"
#include "platform/file.h"

#include <memory>
#include <new>

namespace brindle::files {

namespace {
constexpr size_t kBlock = 1 << 20;
} // namespace

int32_t copy_changing_case(std::string_view source, std::string_view target, bool upper) {
    std::unique_ptr<unsigned char[]> block(new (std::nothrow) unsigned char[kBlock]);
    if (!block)
        return kTextNoBuffer;
    platform::File from = platform::File::open(source, platform::OpenMode::Read);
    if (!from.is_open())
        return kTextSourceNotOpened;
    if (target.empty() || platform::same_file(source, target))
        return kTextTargetNotCreated;
    platform::File to = platform::File::open(target, platform::OpenMode::Create);
    if (!to.is_open())
        return kTextTargetNotCreated;
    auto fail = [&](int32_t code) {
        to.close();
        platform::delete_if_exists(target);
        return code;
    };
    // Branch-free, so the compiler turns the loop into vector code: a
    // letter of the other case differs from its pair in bit 5 alone.
    const unsigned char first = upper ? 'a' : 'A';
    int64_t total = 0;
    for (;;) {
        const int64_t got = from.read(block.get(), kBlock);
        if (got < 0)
            return fail(kTextReadError);
        if (got == 0)
            break;
        unsigned char *p = block.get();
        for (size_t i = 0; i < static_cast<size_t>(got); ++i)
            p[i] = static_cast<unsigned char>(p[i] ^ ((static_cast<unsigned char>(p[i] - first) < 26u) << 5));
        if (!to.write(block.get(), static_cast<size_t>(got)))
            return fail(kTextWriteError);
        total += got;
    }
    if (!to.close())
        return fail(kTextWriteError);
    return long_count(total);
}

} // namespace brindle::files
