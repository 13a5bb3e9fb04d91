// Arrays on disk, record bytes and the ID stack: the exports.
#include "frame/frame.h"
#include "stores/block_file.h"
#include "stores/id_stack.h"
#include "stores/string_array_file.h"

#include <cstring>
#include <span>
#include <string>
#include <vector>

using namespace brindle::frame;
using namespace brindle::stores;

namespace {

// No array, or not one these exports take (numbers for cArrayOnDisk,
// Strings for cArrayStringOnDisk).
constexpr int32_t kNotAnArray = -14;
constexpr int32_t kNoMemory = -32760;

// The elements of an Integer array (any dimensions); empty for any other.
std::span<int16_t> ids_of(const WholeArray &a) {
    if (!a.ok() || a.holds_references() || a.element_size() != sizeof(int16_t))
        return {};
    return {static_cast<int16_t *>(a.data()), a.elements()};
}

} // namespace

// The array's data bytes, with no header; the array is neither resized nor
// checked for its type beyond holding plain numbers.
BRINDLE_EXPORT(int32_t) cArrayOnDisk(BSTR FileName, SAFEARRAY **Arr, int16_t LoadFlag) {
    return guarded(int32_t{kBlockCannotOpen}, [&] {
        const std::string_view name = StrArg::by_val(FileName).text();
        if (const int32_t code = block_file_name_code(name); code != 0)
            return code;
        WholeArray array(Arr);
        if (!array.ok() || array.holds_references())
            return kNotAnArray;
        return LoadFlag == 0 ? save_block(name, array.data(), array.bytes())
                             : load_block(name, array.data(), array.bytes());
    });
}

// Saving writes every element; loading fills the first elements from the
// file and leaves the rest, and refuses a file of more elements than the
// array has. Count receives the elements written or read.
BRINDLE_EXPORT(int32_t) cArrayStringOnDisk(BSTR FileName, SAFEARRAY **Arr, int16_t LoadFlag, int32_t *Count) {
    int32_t ignored = 0;
    int32_t &count = Count != nullptr ? *Count : ignored;
    return guarded(int32_t{kNoMemory}, [&] {
        const std::string_view name = StrArg::by_val(FileName).text();
        if (const int32_t code = block_file_name_code(name); code != 0)
            return code;
        WholeArray array(Arr);
        if (!array.ok() || !array.holds_strings())
            return kNotAnArray;
        if (LoadFlag == 0) {
            const int32_t result = save_string_array(name, array.elements(),
                                                     [&](size_t i) { return array.string_at(i).value_or(""); });
            count = result >= 0 ? static_cast<int32_t>(array.elements()) : 0;
            return result;
        }
        std::vector<std::string> strings;
        const int32_t result = load_string_array(name, array.elements(), strings);
        count = 0;
        for (const std::string &s : strings) {
            if (!array.set_string(static_cast<size_t>(count), s))
                return kNoMemory;
            ++count;
        }
        return result;
    });
}

// The record helpers trust the caller's length, as a VB program's LenB of
// its record: they are the one place where the library reads and writes as
// many bytes as it is told. A length below 1 does nothing.
BRINDLE_EXPORT(int16_t) cTypesCompare(void *A, void *B, int32_t Length) {
    if (A == nullptr || B == nullptr || Length < 1)
        return 0;
    return vb_bool(std::memcmp(A, B, static_cast<size_t>(Length)) == 0);
}

// Byte by byte from the first, so overlapping records copy as they always did.
BRINDLE_EXPORT(void) cTypesCopy(void *Source, void *Target, int32_t Length) {
    if (Source == nullptr || Target == nullptr || Length < 1)
        return;
    const auto *from = static_cast<const unsigned char *>(Source);
    auto *to = static_cast<unsigned char *>(Target);
    for (int32_t i = 0; i < Length; ++i)
        to[i] = from[i];
}

BRINDLE_EXPORT(BSTR) cTypeTransfert(void *Rec, int32_t Length) {
    return guarded_string([&] {
        if (Rec == nullptr || Length < 1)
            return empty_string();
        return new_string(std::string_view(static_cast<const char *>(Rec), static_cast<size_t>(Length)));
    });
}

BRINDLE_EXPORT(void) cTypeClear(void *Rec, int32_t Length) {
    if (Rec != nullptr && Length > 0)
        std::memset(Rec, 0, static_cast<size_t>(Length));
}

BRINDLE_EXPORT(BSTR) cTypeMid(void *Rec, int32_t Start, int32_t Length) {
    return guarded_string([&] {
        if (Rec == nullptr || Start < 1 || Length < 1)
            return empty_string();
        return new_string(std::string_view(static_cast<const char *>(Rec) + (Start - 1), static_cast<size_t>(Length)));
    });
}

BRINDLE_EXPORT(int32_t) cPushID(SAFEARRAY **IDs, int16_t ID) {
    return guarded(int32_t{-1}, [&] {
        WholeArray a(IDs);
        return push_id(ids_of(a), ID);
    });
}

BRINDLE_EXPORT(int32_t) cPopID(SAFEARRAY **IDs, int16_t ID) {
    return guarded(int32_t{-1}, [&] {
        WholeArray a(IDs);
        return pop_id(ids_of(a), ID);
    });
}

BRINDLE_EXPORT(int32_t) cPopLastID(SAFEARRAY **IDs) {
    return guarded(int32_t{-1}, [&] {
        WholeArray a(IDs);
        return pop_last_id(ids_of(a));
    });
}

BRINDLE_EXPORT(int16_t) cGetID(SAFEARRAY **IDs, int32_t N) {
    return guarded(int16_t{0}, [&] {
        WholeArray a(IDs);
        return id_at(ids_of(a), N);
    });
}

BRINDLE_EXPORT(int32_t) cClearID(SAFEARRAY **IDs) {
    return guarded(int32_t{-1}, [&] {
        WholeArray a(IDs);
        return clear_ids(ids_of(a));
    });
}
