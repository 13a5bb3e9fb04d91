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
#include "frame/frame.h"
#include "platform/file.h"
#include "platform/file_info.h"
#include "runtime/unique_name.h"

#include <cstring>
#include <memory>
#include <string>
#include <vector>

using namespace brindle::frame;
using brindle::platform::File;
using brindle::platform::OpenMode;

namespace brindle::arrays {

namespace {

constexpr size_t kChunk = 32768;

// The scratch file: created on construction, closed and deleted on every
// way out.
class Scratch {
  public:
    explicit Scratch(std::string_view given) {
        if (!given.empty()) {
            create(std::string(given), OpenMode::CreateReadWrite);
            return;
        }
        // The unique-name maker's template, "~aXXXXXX" first. When the name
        // it makes is taken all the same (a call at once created it after
        // the maker looked, or a dangling link, which the maker does not
        // see, has it), the next template is tried: "~b", "~c", ...
        for (int attempt = 0; attempt < 26 && !created_; ++attempt) {
            std::string name = std::string{'~', static_cast<char>('a' + attempt)} + "XXXXXX";
            if (!runtime::make_unique_name(&name) ||
                create(std::move(name), OpenMode::CreateNew) != platform::kFileExists)
                return;
        }
    }
    ~Scratch() {
        file_.close();
        if (created_)
            platform::delete_if_exists(name_);
    }
    Scratch(const Scratch &) = delete;
    Scratch &operator=(const Scratch &) = delete;

    bool created() const { return created_; }
    File &file() { return file_; }

  private:
    // The runtime's error number of the creation (0 when made).
    int create(std::string name, OpenMode mode) {
        int error = 0;
        file_ = File::open(name, mode, &error);
        created_ = file_.is_open();
        if (created_)
            name_ = std::move(name);
        return created_ ? 0 : error;
    }

    std::string name_;
    File file_;
    bool created_ = false;
};

// Keeps the first of each run of identical adjacent units; the count kept.
size_t compact(const BlockUnits &u) {
    size_t kept = 0;
    for (size_t i = 0; i < u.count; ++i) {
        const unsigned char *unit = u.base + i * u.bytes;
        if (kept > 0 && std::memcmp(unit, u.base + (kept - 1) * u.bytes, u.bytes) == 0)
            continue;
        if (kept != i)
            std::memcpy(u.base + kept * u.bytes, unit, u.bytes);
        ++kept;
    }
    return kept;
}

// Writes the last unit of each run to the file (buffered), reads them back
// to the front of the array. Sets *error on failure.
size_t through_file(const BlockUnits &u, Scratch &scratch, int32_t *error) {
    std::vector<unsigned char> buffer;
    buffer.reserve(kChunk + u.bytes);
    size_t written = 0;
    for (size_t i = 0; i < u.count && *error == 0; ++i) {
        const unsigned char *unit = u.base + i * u.bytes;
        if (i + 1 < u.count && std::memcmp(unit, unit + u.bytes, u.bytes) == 0)
            continue;
        buffer.insert(buffer.end(), unit, unit + u.bytes);
        ++written;
        if (buffer.size() >= kChunk || i + 1 == u.count) {
            if (!scratch.file().write(buffer.data(), buffer.size()))
                *error = -2;
            buffer.clear();
        }
    }
    if (*error != 0)
        return 0;
    if (!scratch.file().seek(0)) {
        *error = -4;
        return 0;
    }
    const size_t total = written * u.bytes;
    for (size_t done = 0; done < total;) {
        const size_t want = total - done < kChunk ? total - done : kChunk;
        if (scratch.file().read(u.base + done, want) != static_cast<int64_t>(want)) {
            *error = -5;
            return 0;
        }
        done += want;
    }
    return written;
}

int32_t remove_duplicates(SAFEARRAY **array, int16_t code, int16_t use_file, BSTR *file_name, int16_t shrink) {
    std::unique_ptr<Scratch> scratch;
    if (flag16(use_file)) {
        scratch = std::make_unique<Scratch>(StrArg::by_ref(file_name).text());
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
        kept = scratch ? through_file(u, *scratch, &error) : compact(u);
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
