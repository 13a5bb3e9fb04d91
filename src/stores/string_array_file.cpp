#include "stores/string_array_file.h"

#include "platform/file.h"
#include "stores/block_file.h"

#include <new>

namespace brindle::stores {

namespace {

constexpr size_t kBuffer = 32768;
constexpr int32_t kNoBuffer = -32760;

void put_u32(std::string &out, uint32_t v) {
    for (int i = 0; i < 4; ++i)
        out += static_cast<char>((v >> (8 * i)) & 0xFF);
}

uint32_t get_u32(std::string_view bytes, size_t at) {
    uint32_t v = 0;
    for (size_t i = 0; i < 4; ++i)
        v |= static_cast<uint32_t>(static_cast<uint8_t>(bytes[at + i])) << (8 * i);
    return v;
}

} // namespace

int32_t save_string_array(std::string_view name, size_t count, const std::function<std::string_view(size_t)> &element) {
    if (const int32_t code = block_file_name_code(name); code != 0)
        return code;
    std::string buffer;
    try {
        buffer.reserve(kBuffer);
    } catch (const std::bad_alloc &) {
        return kNoBuffer;
    }
    if (count > UINT32_MAX)
        return kBlockBadSize;
    if (!platform::delete_if_exists(name))
        return kBlockCannotDelete;
    platform::File file = platform::File::open(name, platform::OpenMode::Create);
    if (!file.is_open())
        return kBlockCannotOpen;
    int64_t total = 0;
    const auto fail = [&](int32_t code) {
        file.close();
        platform::delete_file(name);
        return code;
    };
    const auto flush = [&] {
        const bool ok = file.write(buffer.data(), buffer.size());
        total += static_cast<int64_t>(buffer.size());
        buffer.clear();
        return ok;
    };
    put_u32(buffer, static_cast<uint32_t>(count));
    for (size_t i = 0; i < count; ++i) {
        const std::string_view s = element(i);
        if (total + static_cast<int64_t>(buffer.size()) + 4 + static_cast<int64_t>(s.size()) > INT32_MAX)
            return fail(kBlockBadSize);
        put_u32(buffer, static_cast<uint32_t>(s.size()));
        if (buffer.size() + s.size() > kBuffer) {
            if (!flush())
                return fail(kBlockPieceWriteFailed);
            if (s.size() >= kBuffer) { // a long element goes straight to the file
                if (!file.write(s.data(), s.size()))
                    return fail(kBlockPieceWriteFailed);
                total += static_cast<int64_t>(s.size());
                continue;
            }
        }
        buffer.append(s);
    }
    if (!flush() || !file.close())
        return fail(kBlockLastWriteFailed);
    return static_cast<int32_t>(total);
}

bool parse_string_array(std::string_view bytes, std::vector<std::string> &out) {
    out.clear();
    if (bytes.size() < 4)
        return false;
    const uint32_t count = get_u32(bytes, 0);
    // Each element takes at least its 4-byte length: a count the file cannot
    // hold is refused before anything is allocated for it.
    if (count > (bytes.size() - 4) / 4)
        return false;
    out.reserve(count);
    size_t at = 4;
    for (uint32_t i = 0; i < count; ++i) {
        if (bytes.size() - at < 4) {
            out.clear();
            return false;
        }
        const uint32_t length = get_u32(bytes, at);
        at += 4;
        if (length > bytes.size() - at) {
            out.clear();
            return false;
        }
        out.emplace_back(bytes.substr(at, length));
        at += length;
    }
    if (at != bytes.size()) {
        out.clear();
        return false;
    }
    return true;
}

int32_t load_string_array(std::string_view name, size_t capacity, std::vector<std::string> &out) {
    out.clear();
    if (const int32_t code = block_file_name_code(name); code != 0)
        return code;
    const int64_t size = platform::file_size(name);
    if (size < 0)
        return kBlockCannotOpen;
    if (size > INT32_MAX)
        return kBlockBadSize;
    platform::File file = platform::File::open(name, platform::OpenMode::Read);
    if (!file.is_open())
        return kBlockCannotOpen;
    std::string bytes(static_cast<size_t>(size), '\0');
    if (file.read(bytes.data(), bytes.size()) != size)
        return kBlockCannotOpen;
    if (!parse_string_array(bytes, out) || out.size() > capacity) {
        out.clear();
        return kBlockBadSize;
    }
    return static_cast<int32_t>(size);
}

} // namespace brindle::stores
