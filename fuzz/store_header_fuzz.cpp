// Random files opened as disk arrays and multi-array files, and random
// records given to the huge memory arrays: a defined code, and when the file
// opens, accesses and clears that never touch a byte outside the data area
// (the file keeps its size, its header stays as it was) and never crash.
// Layout of an input: a selector byte (bit 0: a multi-array file instead of
// a disk array; bit 1: a huge memory array from a record), 12 bytes of
// indices (row, column, sheet as 32-bit little-endian numbers), then the
// file (or the record).
#include "fuzz_target.h"
#include "platform/ole.h"
#include "stores/store_records.h"

#include <brindle/exports.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

namespace fs = std::filesystem;

namespace {

struct WorkFile {
    fs::path path;
    WorkFile() {
        std::random_device random;
        path = fs::temp_directory_path() / ("brindle-store-fuzz-" + std::to_string(random()) + ".dat");
    }
    ~WorkFile() {
        std::error_code ignored;
        fs::remove(path, ignored);
    }
};

std::string contents(const fs::path &file) {
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

template <class Record> void name_record(Record &r, const std::string &name) {
    std::memset(r.FileName, ' ', sizeof r.FileName);
    std::memcpy(r.FileName, name.data(), name.size() < sizeof r.FileName ? name.size() : sizeof r.FileName);
}

// Reads, writes and clears at the input's indices; the Variant that a Get
// returns is freed.
template <class Get, class Put, class Clear> void exercise(Get get, Put put, Clear clear) {
    VARIANT v = get();
    VariantClear(&v);
    VARIANT value;
    VariantInit(&value);
    V_VT(&value) = VT_R8;
    V_R8(&value) = 12.5;
    put(&value);
    (void)clear();
}

int run(const uint8_t *data, size_t size) {
    if (size < 13)
        return 0;
    const uint8_t selector = data[0];
    int32_t idx[3];
    std::memcpy(idx, data + 1, sizeof idx);
    data += 13;
    size -= 13;

    if (selector & 2) {
        HugeArray h{};
        std::memcpy(&h, data, size < sizeof h ? size : sizeof h);
        // A block the fuzzer's memory limit would refuse is not asked for.
        if (static_cast<double>(h.Rows) * h.Cols * h.Sheets * 32768 > 64.0 * (1 << 20))
            return 0;
        h.Handle = 0;
        const int16_t code = cHMACreate(&h);
        FUZZ_CHECK(code == -1 || (code >= 1 && code <= 5));
        exercise([&] { return cHMAGet(&h, idx[0], idx[1], idx[2]); },
                 [&](VARIANT *v) { cHMAPut(&h, idx[0], idx[1], idx[2], v); },
                 [&] { return cHMAClearCol(&h, idx[1], idx[2]); });
        FUZZ_CHECK(cHMAFree(&h) == (code == -1 ? -1 : 0));
        return 0;
    }

    WorkFile file;
    {
        std::ofstream out(file.path, std::ios::binary);
        out.write(reinterpret_cast<const char *>(data), static_cast<std::streamsize>(size));
    }
    const std::string name = file.path.string();
    const std::string before = contents(file.path);
    const size_t header = (selector & 1) ? 748 : 200;
    if (selector & 1) {
        MultiArray m{};
        name_record(m, name);
        const int16_t code = cMDACreate(&m, 0);
        FUZZ_CHECK(code == -1 || (code >= 1 && code <= 16));
        const int32_t number = (idx[2] & 31) - 5;
        exercise([&] { return cMDAGet(number, &m, idx[0], idx[1], idx[2]); },
                 [&](VARIANT *v) { cMDAPut(number, &m, idx[0], idx[1], idx[2], v); },
                 [&] { return cMDAClearRow(number, &m, idx[0], idx[2]); });
        cMDAClose(&m, 0);
    } else {
        DiskArray d{};
        name_record(d, name);
        const int16_t code = cDACreate(&d, 0);
        FUZZ_CHECK(code == -1 || (code >= 1 && code <= 16));
        exercise([&] { return cDAGet(&d, idx[0], idx[1], idx[2]); },
                 [&](VARIANT *v) { cDAPut(&d, idx[0], idx[1], idx[2], v); },
                 [&] { return cDAClearCol(&d, idx[1], idx[2]); });
        cDAClose(&d, 0);
    }
    const std::string after = contents(file.path);
    FUZZ_CHECK(after.size() == before.size());
    FUZZ_CHECK(after.compare(0, header, before, 0, header) == 0);
    return 0;
}

} // namespace

BRINDLE_FUZZ_TARGET(store_header) { return run(data, size); }
