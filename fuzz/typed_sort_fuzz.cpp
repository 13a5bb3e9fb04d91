// The multi-key sort of records under any descriptor: any key codes,
// offsets, lengths and orders, over records of any bytes. The records come
// back as a permutation of themselves, and wherever the keys in use are
// whole numbers the result is in their order. Fields the caller vouches
// for (pointers to strings, and the String a Variant field of type String
// holds) are set to real strings or null; every other byte is the fuzzer's,
// Variants of objects and references included. Layout of an input: the
// 88-byte descriptor, a byte choosing the record size (1..96), two bytes
// choosing the count (0..1099, beyond the radix path's threshold), then the
// bytes the records are filled with, repeated as needed.
#include "arrays/array_records.h"
#include "arrays/typed_sort.h"
#include "fuzz_target.h"
#include "platform/ole.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace {

// Strings the fixed-up pointers point at (the first entry is null), freed
// at exit.
struct Pool {
    std::vector<BSTR> strings{nullptr};
    Pool() {
        for (const char *text : {"", "abc", "ABC", "abd", "12.5", "-3", "1e308", "x", "0x10", "  7 "}) {
            std::vector<OLECHAR> wide(text, text + std::strlen(text));
            strings.push_back(SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size())));
        }
    }
    ~Pool() {
        for (BSTR s : strings)
            SysFreeString(s);
    }
};

const std::vector<BSTR> &pool() {
    static const Pool all;
    return all.strings;
}

bool is_pointer_key(int16_t type) { return type == 11 || type == 12 || type == 14; }
bool is_variant_key(int16_t type) { return (type <= -1 && type >= -8) || type == -11 || type == -12 || type == -14; }
bool fits(int16_t offset, size_t width, size_t size) { return offset >= 0 && static_cast<size_t>(offset) + width <= size; }

// A pointer field at `at` made to point at a pool string chosen by its first byte.
void point_at_pool(unsigned char *at) {
    const BSTR s = pool()[at[0] % pool().size()];
    std::memcpy(at, &s, sizeof s);
}

bool holds_pool_pointer(const unsigned char *at) {
    BSTR s;
    std::memcpy(&s, at, sizeof s);
    return std::find(pool().begin(), pool().end(), s) != pool().end();
}

// The field of a String Variant holds its BSTR after the 8 bytes of type and reserved words.
constexpr size_t kVariantValue = 8;

VARTYPE variant_type(const unsigned char *at) {
    VARTYPE vt;
    std::memcpy(&vt, at, sizeof vt);
    return vt;
}

int64_t whole_key(const unsigned char *record, int16_t offset, int16_t type) {
    const unsigned char *p = record + offset;
    if (type == 2)
        return *p;
    if (type == 4) {
        int32_t v;
        std::memcpy(&v, p, sizeof v);
        return v;
    }
    int16_t v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

size_t whole_width(int16_t type) { return type == 2 ? 1 : type == 4 ? 4 : (type == 1 || type == 3) ? 2 : 0; }

} // namespace

BRINDLE_FUZZ_TARGET(typed_sort) {
    TypedSortDescriptor d;
    if (size < sizeof d + 3)
        return 0;
    std::memcpy(&d, data, sizeof d);
    const size_t record = 1 + data[sizeof d] % 96;
    const size_t count = (data[sizeof d + 1] | size_t{data[sizeof d + 2]} << 8) % 1100;
    const uint8_t *fill = data + sizeof d + 3;
    const size_t fill_size = size - sizeof d - 3;
    std::vector<unsigned char> block(record * count);
    for (size_t i = 0; i < block.size(); ++i)
        block[i] = fill_size == 0 ? 0 : static_cast<unsigned char>(fill[i % fill_size] + 7 * (i / fill_size));

    // Pointer fields become real strings; a descriptor whose fields overlap
    // so that one fix-up spoils another is not a caller's honest record.
    for (size_t i = 0; i < count; ++i) {
        unsigned char *r = block.data() + i * record;
        for (int k = 0; k < 10; ++k) {
            if (is_pointer_key(d.KeyType[k]) && fits(d.KeyOffset[k], sizeof(BSTR), record))
                point_at_pool(r + d.KeyOffset[k]);
            else if (is_variant_key(d.KeyType[k]) && fits(d.KeyOffset[k], sizeof(VARIANT), record) &&
                     variant_type(r + d.KeyOffset[k]) == VT_BSTR)
                point_at_pool(r + d.KeyOffset[k] + kVariantValue);
        }
        for (int k = 0; k < 10; ++k) {
            if (is_pointer_key(d.KeyType[k]) && fits(d.KeyOffset[k], sizeof(BSTR), record) &&
                !holds_pool_pointer(r + d.KeyOffset[k]))
                return 0;
            if (is_variant_key(d.KeyType[k]) && fits(d.KeyOffset[k], sizeof(VARIANT), record) &&
                variant_type(r + d.KeyOffset[k]) == VT_BSTR && !holds_pool_pointer(r + d.KeyOffset[k] + kVariantValue))
                return 0;
        }
    }

    std::vector<unsigned char> sorted = block;
    brindle::arrays::typed_sort(sorted.data(), count, record, d);

    // A permutation of the records.
    const auto records_of = [&](const std::vector<unsigned char> &b) {
        std::vector<std::string> out;
        for (size_t i = 0; i < count; ++i)
            out.emplace_back(reinterpret_cast<const char *>(b.data()) + i * record, record);
        std::sort(out.begin(), out.end());
        return out;
    };
    FUZZ_CHECK(records_of(sorted) == records_of(block));

    // In order by the leading whole-number keys in use.
    size_t first = 0;
    while (first < 10 && d.KeyOrder[first] == 0)
        ++first;
    for (size_t i = 1; i < count; ++i) {
        const unsigned char *a = sorted.data() + (i - 1) * record, *b = sorted.data() + i * record;
        for (size_t k = first; k < 10 && d.KeyOrder[k] != 0; ++k) {
            const size_t width = whole_width(d.KeyType[k]);
            if (width == 0 || !fits(d.KeyOffset[k], width, record))
                break;
            const int64_t x = whole_key(a, d.KeyOffset[k], d.KeyType[k]), y = whole_key(b, d.KeyOffset[k], d.KeyType[k]);
            const int64_t step = d.KeyOrder[k] > 0 ? y - x : x - y;
            FUZZ_CHECK(step >= 0);
            if (step > 0)
                break;
        }
    }
    return 0;
}
