// Huge strings: the exports. The handle is a number of the handle table;
// one that names no huge string (closed, foreign, random, or another kind)
// gives the failure value.
#include "frame/frame.h"
#include "stores/block_file.h"
#include "stores/huge_string.h"

#include <cstdint>

using namespace brindle::frame;
using namespace brindle::stores;

namespace {

std::shared_ptr<HugeString> huge_string(int32_t handle) {
    return handle_get<HugeString>(HandleKind::HugeString, handle);
}

constexpr int32_t kNoBlock = -14;

} // namespace

BRINDLE_EXPORT(int32_t) cHugeStrCreate(int32_t Capacity) {
    return guarded(int32_t{0}, [&] {
        std::shared_ptr<HugeString> s = HugeString::make(Capacity);
        return s ? handle_add(HandleKind::HugeString, std::move(s)) : 0;
    });
}

BRINDLE_EXPORT(int32_t) cHugeStrFree(int32_t Handle) {
    return guarded(int32_t{0}, [&] { return handle_remove(HandleKind::HugeString, Handle) ? int32_t{-1} : 0; });
}

BRINDLE_EXPORT(int32_t) cHugeStrSize(int32_t Handle) {
    return guarded(int32_t{0}, [&] {
        const auto s = huge_string(Handle);
        return s ? s->capacity() : 0;
    });
}

// The address of the block where it fits in a Long: always on a 32-bit
// system, only below 2 GB on a 64-bit one (0 otherwise).
BRINDLE_EXPORT(int32_t) cHugeStrAddress(int32_t Handle) {
    return guarded(int32_t{0}, [&] {
        const auto s = huge_string(Handle);
        if (!s)
            return int32_t{0};
        const auto address = reinterpret_cast<uintptr_t>(s->block());
        if constexpr (sizeof(uintptr_t) > 4)
            return address <= INT32_MAX ? static_cast<int32_t>(address) : 0;
        return static_cast<int32_t>(address);
    });
}

BRINDLE_EXPORT(int32_t) cHugeStrLength(int32_t Handle) {
    return guarded(int32_t{0}, [&] {
        const auto s = huge_string(Handle);
        return s ? s->length() : 0;
    });
}

BRINDLE_EXPORT(int32_t) cHugeStrGetWP(int32_t Handle) {
    return guarded(int32_t{0}, [&] {
        const auto s = huge_string(Handle);
        return s ? s->wp() : 0;
    });
}

BRINDLE_EXPORT(int32_t) cHugeStrGetNP(int32_t Handle) {
    return guarded(int32_t{0}, [&] {
        const auto s = huge_string(Handle);
        return s ? s->np() : 0;
    });
}

// The setters take a 1-based position and store it 0-based.
BRINDLE_EXPORT(int16_t) cHugeStrSetWP(int32_t Handle, int32_t Position) {
    return guarded(int16_t{0}, [&] {
        const auto s = huge_string(Handle);
        if (!s || Position < 1 || Position > s->length())
            return int16_t{0};
        s->set_wp(Position - 1);
        return int16_t{-1};
    });
}

BRINDLE_EXPORT(int16_t) cHugeStrSetNP(int32_t Handle, int32_t Position) {
    return guarded(int16_t{0}, [&] {
        const auto s = huge_string(Handle);
        if (!s || Position < 1 || Position > s->length())
            return int16_t{0};
        s->set_np(Position - 1);
        return int16_t{-1};
    });
}

BRINDLE_EXPORT(int16_t) cHugeStrClear(int32_t Handle) {
    return guarded(int16_t{0}, [&] {
        const auto s = huge_string(Handle);
        if (!s)
            return int16_t{0};
        s->set_length(0);
        s->set_wp(0);
        s->set_np(0);
        return int16_t{-1};
    });
}

BRINDLE_EXPORT(int16_t) cHugeStrAdd(int32_t Handle, BSTR *Txt) {
    return guarded(int16_t{0}, [&] {
        const auto s = huge_string(Handle);
        return vb_bool(s && s->add(StrArg::by_ref(Txt).bytes()));
    });
}

BRINDLE_EXPORT(int16_t) cHugeStrAppend(int32_t Handle, BSTR *Txt) {
    return guarded(int16_t{0}, [&] {
        const auto s = huge_string(Handle);
        return vb_bool(s && s->append(StrArg::by_ref(Txt).bytes()));
    });
}

BRINDLE_EXPORT(int32_t) cHugeStrBlocks(int32_t Handle) {
    return guarded(int32_t{0}, [&] {
        const auto s = huge_string(Handle);
        return s ? s->blocks() : 0;
    });
}

BRINDLE_EXPORT(BSTR) cHugeStrRead(int32_t Handle, int32_t Block) {
    return guarded_string([&] {
        const auto s = huge_string(Handle);
        return s ? new_string(s->read_block(Block)) : empty_string();
    });
}

BRINDLE_EXPORT(BSTR) cHugeStrNext(int32_t Handle, int32_t Count) {
    return guarded_string([&] {
        const auto s = huge_string(Handle);
        return s ? new_string(s->next(Count)) : empty_string();
    });
}

BRINDLE_EXPORT(BSTR) cHugeStrMid(int32_t Handle, int32_t Start, int32_t Count) {
    return guarded_string([&] {
        const auto s = huge_string(Handle);
        return s ? new_string(s->mid(Start, Count)) : empty_string();
    });
}

// The whole block, header included, so a loaded file brings back Length, WP
// and NP too; a file whose header does not fit the capacity is refused (-16).
BRINDLE_EXPORT(int32_t) cHugeStrOnDisk(int32_t Handle, BSTR FileName, int16_t LoadFlag) {
    return guarded(int32_t{kBlockCannotOpen}, [&] {
        const std::string_view name = StrArg::by_val(FileName).text();
        if (const int32_t code = block_file_name_code(name); code != 0)
            return code;
        const auto s = huge_string(Handle);
        if (!s)
            return kNoBlock;
        if (LoadFlag == 0)
            return save_block(name, s->block(), s->block_size());
        return load_block(name, s->block(), s->block_size(), kHugeHeader,
                          [&](const uint8_t *header) { return s->header_fits(header); });
    });
}
