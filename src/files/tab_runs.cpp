#include "files/tab_runs.h"

#include "files/text_file_codes.h"
#include "platform/file.h"

#include <algorithm>
#include <memory>
#include <new>

namespace brindle::files {

namespace {

constexpr size_t kBlock = 32768;
constexpr size_t kExpandLimit = 65536;

// Opens both files for a block conversion; 0 or a TextFileCode.
int32_t open_pair(std::string_view source, std::string_view target, platform::File *from, platform::File *to) {
    *from = platform::File::open(source, platform::OpenMode::Read);
    if (!from->is_open())
        return kTextSourceNotOpened;
    if (target.empty() || platform::same_file(source, target))
        return kTextTargetNotCreated;
    *to = platform::File::open(target, platform::OpenMode::Create);
    return to->is_open() ? 0 : kTextTargetNotCreated;
}

// Runs convert(in, n, out) -> output length over every block.
template <class Convert>
int32_t convert_blocks(std::string_view source, std::string_view target, size_t out_size, Convert &&convert) {
    std::unique_ptr<unsigned char[]> in(new (std::nothrow) unsigned char[kBlock]);
    if (!in)
        return kTextNoBuffer;
    std::unique_ptr<unsigned char[]> out(new (std::nothrow) unsigned char[out_size]);
    if (!out)
        return kTextNoSecondBuffer;
    platform::File from, to;
    if (const int32_t code = open_pair(source, target, &from, &to); code != 0)
        return code;
    auto fail = [&](int32_t code) {
        to.close();
        platform::delete_if_exists(target);
        return code;
    };
    int64_t total = 0;
    for (;;) {
        const int64_t got = from.read(in.get(), kBlock);
        if (got < 0)
            return fail(kTextReadError);
        if (got == 0)
            break;
        const int64_t n = convert(in.get(), static_cast<size_t>(got), out.get());
        if (n < 0)
            return fail(static_cast<int32_t>(n));
        if (!to.write(out.get(), static_cast<size_t>(n)))
            return fail(kTextWriteError);
        total += n;
    }
    if (!to.close())
        return fail(kTextWriteError);
    return long_count(total);
}

} // namespace

int32_t compress_tabs(std::string_view source, std::string_view target, int32_t width) {
    if (width < 1)
        return kTabBadWidth;
    const size_t w = static_cast<size_t>(width);
    // The output never outgrows its block: a run of k spaces gives at most k bytes.
    return convert_blocks(source, target, kBlock, [w](const unsigned char *in, size_t n, unsigned char *out) -> int64_t {
        size_t o = 0;
        for (size_t i = 0; i < n;) {
            if (in[i] != ' ') {
                out[o++] = in[i++];
                continue;
            }
            size_t k = 0;
            while (i < n && in[i] == ' ')
                ++k, ++i;
            const size_t tabs = k / w, spaces = k % w;
            std::fill(out + o, out + o + tabs, '\t');
            o += tabs;
            std::fill(out + o, out + o + spaces, ' ');
            o += spaces;
        }
        return static_cast<int64_t>(o);
    });
}

int32_t expand_tabs(std::string_view source, std::string_view target, int32_t width) {
    const size_t w = width < 1 ? 0 : static_cast<size_t>(width);
    return convert_blocks(source, target, kExpandLimit, [w](const unsigned char *in, size_t n, unsigned char *out) -> int64_t {
        const auto tabs = static_cast<uint64_t>(std::count(in, in + n, '\t'));
        if (tabs * w + n > kExpandLimit)
            return kTabBlockTooBig;
        size_t o = 0;
        for (size_t i = 0; i < n; ++i) {
            if (in[i] != '\t') {
                out[o++] = in[i];
                continue;
            }
            std::fill(out + o, out + o + w, ' ');
            o += w;
        }
        return static_cast<int64_t>(o);
    });
}

} // namespace brindle::files
