// Removal of duplicates: the array is sorted ascending (elements, or record
// slices of a two-dimensional array), then one unit of each run of
// byte-identical units is kept at the front, either compacted in place or
// passed through a scratch file. With the shrink flag the caller's array is
// then redimensioned to the units kept.
//
// A scratch file the caller names is created or replaced: the caller gave
// it. Without a name the scratch file is a new one, created exclusively under
// a name no file in the current directory has (the runtime's unique-name
// maker): a name that is taken (by a file, a directory or a link, even a
// dangling one) is never opened, truncated or followed, so that a caller's
// file is never touched and calls at once - on threads or in processes
// sharing the directory - each have their own. The units are read back
// through the handle that wrote them, and the file is removed on every path.
//
// Results: the number of units kept; 0 for an array of more than two
// dimensions (and for arrays of strings, variants and the like, whose
// elements must not be duplicated byte by byte); -1 the scratch file cannot
// be created (the given name cannot be written, or no unique name is left), -2 a
// short write, -4 the file cannot be read from its start, -5 a short read.
// (-3, a file that could not be completed on closing, does not arise: the
// file is read back before it is closed.)
#include "arrays/block_units.h"
#include "arrays/dedup_engine.h"
#include "arrays/scratch_file.h"
#include "frame/frame.h"

#include <memory>

using namespace brindle::frame;

namespace brindle::arrays {

namespace {

int32_t remove_duplicates(SAFEARRAY **array, int16_t code, int16_t use_file, BSTR *file_name, int16_t shrink) {
    std::unique_ptr<ScratchFile> scratch;
    if (flag16(use_file)) {
        scratch = std::make_unique<ScratchFile>(StrArg::by_ref(file_name).text());
        if (!scratch->created())
            return -1;
    }
    int32_t error = 0;
    size_t kept = 0, unit_bytes = 0, real_unit_bytes = 0;
    {
        const ArrayBlock block(array);
        if (!block.ok())
            return 0;
        const auto width = element_width(code);
        if (!width || !sort_block(block, code, false))
            return 0;
        const BlockUnits u = block_units(block, *width);
        kept = scratch ? dedup_through_file(u.base, u.count, u.bytes, scratch->file(), &error)
                       : dedup_in_place(u.base, u.count, u.bytes);
        unit_bytes = u.bytes;
        real_unit_bytes = block.dims() == 2 ? block.count1() * block.element_size() : block.element_size();
    } // unlocked here: the array may be redimensioned now
    scratch.reset();
    if (error != 0)
        return error;
    if (flag16(shrink) && real_unit_bytes != 0) {
        // Whole units of the array that hold the kept ones (the same number
        // unless the type code and the element size disagree).
        redim_last(array, (kept * unit_bytes + real_unit_bytes - 1) / real_unit_bytes);
    }
    return static_cast<int32_t>(kept);
}

} // namespace

} // namespace brindle::arrays

using brindle::arrays::remove_duplicates;

BRINDLE_EXPORT(int32_t) cRmvDupI(SAFEARRAY **Arr, int16_t UseFile, BSTR *FileName, int16_t Shrink) {
    return guarded<int32_t>(0, [&] { return remove_duplicates(Arr, 2, UseFile, FileName, Shrink); });
}
BRINDLE_EXPORT(int32_t) cRmvDupL(SAFEARRAY **Arr, int16_t UseFile, BSTR *FileName, int16_t Shrink) {
    return guarded<int32_t>(0, [&] { return remove_duplicates(Arr, 3, UseFile, FileName, Shrink); });
}
BRINDLE_EXPORT(int32_t) cRmvDupS(SAFEARRAY **Arr, int16_t UseFile, BSTR *FileName, int16_t Shrink) {
    return guarded<int32_t>(0, [&] { return remove_duplicates(Arr, 4, UseFile, FileName, Shrink); });
}
BRINDLE_EXPORT(int32_t) cRmvDupD(SAFEARRAY **Arr, int16_t UseFile, BSTR *FileName, int16_t Shrink) {
    return guarded<int32_t>(0, [&] { return remove_duplicates(Arr, 5, UseFile, FileName, Shrink); });
}
