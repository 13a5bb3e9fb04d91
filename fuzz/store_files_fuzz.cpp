// Random files given to the loaders of the stores: the string-array file
// parser (a file it accepts encodes back to exactly its bytes) and the huge-
// string loader (a file it accepts leaves a header inside the capacity, and
// reading on, in the middle and by blocks never fails or reaches outside the
// block). Layout of an input: a selector byte (bit 0: huge string), then the
// file.
#include "fuzz_target.h"
#include "platform/ole.h"
#include "stores/string_array_file.h"

#include <brindle/exports.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

std::string encode(const std::vector<std::string> &strings) {
    std::string out;
    const auto put = [&](uint32_t v) {
        for (int i = 0; i < 4; ++i)
            out += static_cast<char>((v >> (8 * i)) & 0xFF);
    };
    put(static_cast<uint32_t>(strings.size()));
    for (const std::string &s : strings) {
        put(static_cast<uint32_t>(s.size()));
        out += s;
    }
    return out;
}

// The library speaks Windows names: "\tmp\x" is /tmp/x on POSIX.
BSTR windows_name(const fs::path &p) {
    std::string name = p.string();
    for (char &c : name)
        if (c == '/')
            c = '\\';
    return SysAllocStringByteLen(name.data(), static_cast<UINT>(name.size()));
}

int huge_string_load(const uint8_t *data, size_t size) {
    if (size < 12 || size > (1u << 20))
        return 0;
    std::random_device random;
    const fs::path file = fs::temp_directory_path() / ("brindle-hs-fuzz-" + std::to_string(random()) + ".bin");
    {
        std::ofstream out(file, std::ios::binary);
        out.write(reinterpret_cast<const char *>(data), static_cast<std::streamsize>(size));
    }
    const int32_t h = cHugeStrCreate(static_cast<int32_t>(size - 12));
    FUZZ_CHECK(h != 0);
    BSTR name = windows_name(file);
    const int32_t got = cHugeStrOnDisk(h, name, 1);
    SysFreeString(name);
    std::error_code ignored;
    fs::remove(file, ignored);
    FUZZ_CHECK(got == static_cast<int32_t>(size) || got == -16);
    if (got > 0) {
        FUZZ_CHECK(cHugeStrLength(h) >= 0 && cHugeStrLength(h) <= cHugeStrSize(h));
        for (int32_t block = 0; block <= cHugeStrBlocks(h) + 1; ++block)
            SysFreeString(cHugeStrRead(h, block));
        SysFreeString(cHugeStrMid(h, 1, 63999));
        for (int i = 0; i < 4; ++i)
            SysFreeString(cHugeStrNext(h, 64000));
    }
    FUZZ_CHECK(cHugeStrFree(h) == -1);
    return 0;
}

} // namespace

BRINDLE_FUZZ_TARGET(store_files) {
    if (size < 1)
        return 0;
    if (data[0] & 1)
        return huge_string_load(data + 1, size - 1);
    const std::string_view bytes(reinterpret_cast<const char *>(data + 1), size - 1);
    std::vector<std::string> strings;
    if (brindle::stores::parse_string_array(bytes, strings))
        FUZZ_CHECK(encode(strings) == bytes);
    else
        FUZZ_CHECK(strings.empty());
    return 0;
}
