#include "arrays/dedup_engine.h"

#include <cstring>
#include <vector>

namespace brindle::arrays {

namespace {

constexpr size_t kChunk = 32768;

} // namespace

size_t dedup_in_place(unsigned char *base, size_t count, size_t unit) {
    size_t kept = 0;
    for (size_t i = 0; i < count; ++i) {
        const unsigned char *at = base + i * unit;
        if (kept > 0 && std::memcmp(at, base + (kept - 1) * unit, unit) == 0)
            continue;
        if (kept != i)
            std::memcpy(base + kept * unit, at, unit);
        ++kept;
    }
    return kept;
}

size_t dedup_through_file(unsigned char *base, size_t count, size_t unit, platform::File &file, int32_t *error) {
    std::vector<unsigned char> buffer;
    buffer.reserve(kChunk + unit);
    size_t written = 0;
    for (size_t i = 0; i < count && *error == 0; ++i) {
        const unsigned char *at = base + i * unit;
        if (i + 1 < count && std::memcmp(at, at + unit, unit) == 0)
            continue;
        buffer.insert(buffer.end(), at, at + unit);
        ++written;
        if (buffer.size() >= kChunk || i + 1 == count) {
            if (!file.write(buffer.data(), buffer.size()))
                *error = -2;
            buffer.clear();
        }
    }
    if (*error != 0)
        return 0;
    if (!file.seek(0)) {
        *error = -4;
        return 0;
    }
    const size_t total = written * unit;
    for (size_t done = 0; done < total;) {
        const size_t want = total - done < kChunk ? total - done : kChunk;
        if (file.read(base + done, want) != static_cast<int64_t>(want)) {
            *error = -5;
            return 0;
        }
        done += want;
    }
    return written;
}

} // namespace brindle::arrays
