#include "files/rewrite_in_place.h"

#include "common/ascii.h"
#include "files/text_file_codes.h"
#include "platform/file.h"
#include "platform/replace_file.h"
#include "streams/stream.h"

#include <memory>
#include <new>
#include <string>

namespace brindle::files {

namespace {

constexpr size_t kBlock = 32768;
constexpr size_t kLineBuffer = 8192;

// Runs transform(source, out) -> count or code, into a new file beside
// `path`, and puts it in the original's place when it changed something.
template <class Transform> int32_t rewrite(std::string_view path, Transform &&transform) {
    // Opened for writing although only read: a file that may not be
    // written is refused before any work.
    platform::File source = platform::File::open(path, platform::OpenMode::ReadWrite);
    if (!source.is_open())
        return kTextSourceNotOpened;
    std::string temp;
    platform::File out = platform::create_file_beside(path, &temp);
    if (!out.is_open())
        return kTextTargetNotCreated;
    auto drop = [&](int32_t code) {
        out.close();
        platform::delete_if_exists(temp);
        return code;
    };
    const int32_t count = transform(source, out);
    if (count <= 0)
        return drop(count);
    if (!out.close())
        return drop(kTextWriteError);
    source.close();
    if (!platform::replace_file(temp, path))
        return drop(kTextWriteError);
    return count;
}

} // namespace

int32_t replace_in_file(std::string_view path, std::string_view search, std::string_view replacement, bool exact) {
    if (path.empty() || search.empty())
        return 0;
    std::string needle(search);
    if (!exact)
        for (char &c : needle)
            c = common::ascii_lower(c);
    return rewrite(path, [&](platform::File &source, platform::File &out) -> int32_t {
        (void)source;
        std::unique_ptr<streams::Stream> in = streams::Stream::open(path, "rb");
        if (!in)
            return kTextSourceNotOpened;
        std::string line, folded, pending;
        int64_t count = 0;
        for (;;) {
            line.clear();
            if (!in->get_line(&line, kLineBuffer))
                break;
            const std::string *haystack = &line;
            if (!exact) {
                folded = line;
                for (char &c : folded)
                    c = common::ascii_lower(c);
                haystack = &folded;
            }
            size_t from = 0;
            for (size_t at = haystack->find(needle); at != std::string::npos; at = haystack->find(needle, from)) {
                pending.append(line, from, at - from);
                pending += replacement;
                from = at + needle.size();
                ++count;
            }
            pending.append(line, from, std::string::npos);
            if (pending.size() >= kBlock) {
                if (!out.write(pending.data(), pending.size()))
                    return kTextWriteError;
                pending.clear();
            }
        }
        if (in->has_error())
            return kTextReadError;
        if (!out.write(pending.data(), pending.size()))
            return kTextWriteError;
        return long_count(count);
    });
}

int32_t map_file_bytes(std::string_view path, const std::array<unsigned char, 256> &map) {
    if (path.empty())
        return 0;
    std::unique_ptr<unsigned char[]> block(new (std::nothrow) unsigned char[kBlock]);
    if (!block)
        return kTextNoBuffer;
    return rewrite(path, [&](platform::File &source, platform::File &out) -> int32_t {
        int64_t changed = 0;
        for (;;) {
            const int64_t got = source.read(block.get(), kBlock);
            if (got < 0)
                return kTextReadError;
            if (got == 0)
                break;
            for (int64_t i = 0; i < got; ++i) {
                unsigned char &c = block[static_cast<size_t>(i)];
                changed += map[c] != c;
                c = map[c];
            }
            if (!out.write(block.get(), static_cast<size_t>(got)))
                return kTextWriteError;
        }
        return long_count(changed);
    });
}

std::array<unsigned char, 256> chained_byte_map(std::string_view from, std::string_view to) {
    std::array<unsigned char, 256> map{};
    for (int c = 0; c < 256; ++c)
        map[static_cast<size_t>(c)] = static_cast<unsigned char>(c);
    const size_t pairs = std::min(from.size(), to.size());
    for (size_t i = 0; i < pairs; ++i)
        for (unsigned char &m : map)
            if (m == static_cast<unsigned char>(from[i]))
                m = static_cast<unsigned char>(to[i]);
    return map;
}

} // namespace brindle::files
