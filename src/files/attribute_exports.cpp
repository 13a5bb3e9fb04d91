// Attribute, comparison, question and file-time exports. Names arrive by
// reference and are read up to their first zero byte.
#include "files/file_compare.h"
#include "files/file_questions.h"
#include "files/file_records.h"
#include "files/file_time_record.h"
#include "files/path_names.h"
#include "frame/frame.h"
#include "platform/file.h"
#include "platform/file_info.h"

#include <string>

using namespace brindle::frame;
using namespace brindle::files;
namespace platform = brindle::platform;

namespace {

std::string name_of(BSTR *ref) { return std::string(StrArg::by_ref(ref).text()); }

constexpr int16_t kTrue = -1;
int16_t vb(bool b) { return b ? kTrue : int16_t{0}; }

// The settable bits a set or reset changes: read-only, hidden, system,
// archive and temporary.
constexpr uint32_t kSettable = platform::kAttrReadOnly | platform::kAttrHidden | platform::kAttrSystem |
                               platform::kAttrArchive | platform::kAttrTemporary;
constexpr uint32_t kFourBits = 39; // read-only, hidden, system, archive

// Reads the word, makes the new one, writes it back: -1 or 0.
template <class Change> int16_t change_attributes(BSTR *file, Change change) {
    const std::string name = name_of(file);
    uint32_t now = 0;
    if (name.empty() || platform::get_attributes(name, &now) != platform::kNoError)
        return 0;
    const uint32_t wanted = change(now & kSettable);
    return vb(platform::set_attributes(name, wanted) == platform::kNoError);
}

int16_t is_set(BSTR *file, uint32_t bits) {
    const std::string name = name_of(file);
    uint32_t now = 0;
    return vb(!name.empty() && platform::get_attributes(name, &now) == platform::kNoError && (now & bits) == bits);
}

// A time of the runtime's status, by which of the three.
enum class Which { Created, Accessed, Written };
bool status_time(BSTR *file, Which which, int64_t *out) {
    const std::string name = name_of(file);
    platform::FileStatus st;
    if (name.empty() || platform::file_status(name, &st) != platform::kNoError)
        return false;
    *out = which == Which::Created ? st.times.created : which == Which::Accessed ? st.times.accessed : st.times.written;
    return true;
}

BSTR date_text(BSTR *file, Which which) {
    int64_t t = 0;
    return status_time(file, which, &t) ? new_string(local_date_text(t)) : empty_string();
}
BSTR time_text(BSTR *file, Which which) {
    int64_t t = 0;
    return status_time(file, which, &t) ? new_string(local_time_text(t)) : empty_string();
}

void put_record(FileTimeParts *r, const CalendarTime &t) {
    if (r == nullptr)
        return;
    *r = FileTimeParts{t.year, t.month, t.day_of_week, t.day, t.hour, t.minute, t.second, t.milliseconds};
}

std::optional<int64_t> from_record(const FileTimeParts *r) {
    if (r == nullptr)
        return std::nullopt;
    CalendarTime t;
    t.year = r->Year;
    t.month = r->Month;
    t.day_of_week = r->DayOfWeek;
    t.day = r->Day;
    t.hour = r->Hour;
    t.minute = r->Minute;
    t.second = r->Second;
    t.milliseconds = r->Milliseconds;
    return file_time_from_calendar(t);
}

} // namespace

BRINDLE_EXPORT(int16_t) cFileGetAttrib(BSTR *FileName, FileAttributes *Attributes) {
    return guarded(int16_t{0}, [&] {
        const std::string name = name_of(FileName);
        uint32_t a = 0;
        const int e = name.empty() ? int{platform::kNoSuchFile} : platform::get_attributes(name, &a);
        if (Attributes == nullptr)
            return vb(e == platform::kNoError);
        if (e != platform::kNoError) {
            *Attributes = FileAttributes{static_cast<int16_t>(e), 0, 0, 0, 0, 0, 0, 0};
            return int16_t{0};
        }
        auto bit = [a](uint32_t b) { return vb((a & b) != 0); };
        *Attributes = FileAttributes{kTrue,
                                     bit(platform::kAttrArchive),
                                     bit(platform::kAttrHidden),
                                     bit(platform::kAttrNormal),
                                     bit(platform::kAttrReadOnly),
                                     bit(platform::kAttrDirectory),
                                     bit(platform::kAttrSystem),
                                     bit(platform::kAttrCompressed)};
        return kTrue;
    });
}

BRINDLE_EXPORT(int16_t) cFileSetAttrib(BSTR *FileName, FileAttributes *Attributes) {
    return guarded(int16_t{0}, [&] {
        if (Attributes == nullptr)
            return int16_t{0};
        const std::string name = name_of(FileName);
        uint32_t a = 0;
        if (Attributes->Archive)
            a |= platform::kAttrArchive;
        if (Attributes->Hidden)
            a |= platform::kAttrHidden;
        if (Attributes->Normal)
            a |= platform::kAttrNormal;
        if (Attributes->ReadOnly)
            a |= platform::kAttrReadOnly;
        if (Attributes->System)
            a |= platform::kAttrSystem;
        const int e = name.empty() ? int{platform::kNoSuchFile} : platform::set_attributes(name, a);
        Attributes->Status = e == platform::kNoError ? kTrue : static_cast<int16_t>(e);
        return vb(e == platform::kNoError);
    });
}

BRINDLE_EXPORT(int16_t) cFileSetAllAttrib(BSTR *FileName) {
    return guarded(int16_t{0}, [&] { return change_attributes(FileName, [](uint32_t) { return kFourBits; }); });
}
BRINDLE_EXPORT(int16_t) cFileResetAllAttrib(BSTR *FileName) {
    return guarded(int16_t{0}, [&] { return change_attributes(FileName, [](uint32_t a) { return a & ~kFourBits; }); });
}

#define BRINDLE_SET_RESET(Set, Reset, Is, bit)                                                                       \
    BRINDLE_EXPORT(int16_t) Set(BSTR *FileName) {                                                                    \
        return guarded(int16_t{0}, [&] { return change_attributes(FileName, [](uint32_t a) { return a | (bit); }); }); \
    }                                                                                                                \
    BRINDLE_EXPORT(int16_t) Reset(BSTR *FileName) {                                                                  \
        return guarded(int16_t{0},                                                                                   \
                       [&] { return change_attributes(FileName, [](uint32_t a) { return a & ~uint32_t{bit}; }); });  \
    }                                                                                                                \
    BRINDLE_EXPORT(int16_t) Is(BSTR *FileName) {                                                                     \
        return guarded(int16_t{0}, [&] { return is_set(FileName, bit); });                                           \
    }

BRINDLE_SET_RESET(cFileSetArchive, cFileResetArchive, cIsFileArchive, platform::kAttrArchive)
BRINDLE_SET_RESET(cFileSetHidden, cFileResetHidden, cIsFileHidden, platform::kAttrHidden)
BRINDLE_SET_RESET(cFileSetReadOnly, cFileResetReadOnly, cIsFileReadOnly, platform::kAttrReadOnly)
BRINDLE_SET_RESET(cFileSetSystem, cFileResetSystem, cIsFileSystem, platform::kAttrSystem)
#undef BRINDLE_SET_RESET

BRINDLE_EXPORT(int16_t) cFileSetFlag(BSTR *FileName, int16_t Flags) {
    const uint32_t bits = static_cast<uint16_t>(Flags);
    return guarded(int16_t{0}, [&] { return change_attributes(FileName, [bits](uint32_t a) { return a | bits; }); });
}
BRINDLE_EXPORT(int16_t) cFileResetFlag(BSTR *FileName, int16_t Flags) {
    const uint32_t bits = static_cast<uint16_t>(Flags);
    return guarded(int16_t{0}, [&] { return change_attributes(FileName, [bits](uint32_t a) { return a & ~bits; }); });
}

BRINDLE_EXPORT(int16_t) cIsFileCompressed(BSTR *FileName) {
    return guarded(int16_t{0}, [&] { return is_set(FileName, platform::kAttrCompressed); });
}
BRINDLE_EXPORT(int16_t) cIsFileNormal(BSTR *FileName) {
    return guarded(int16_t{0}, [&] { return is_set(FileName, platform::kAttrNormal); });
}
BRINDLE_EXPORT(int16_t) cIsFileSubDir(BSTR *FileName) {
    return guarded(int16_t{0}, [&] { return is_set(FileName, platform::kAttrDirectory); });
}
BRINDLE_EXPORT(int16_t) cIsFileFlag(BSTR *FileName, int16_t Flags) {
    return guarded(int16_t{0}, [&] { return is_set(FileName, static_cast<uint16_t>(Flags)); });
}

BRINDLE_EXPORT(int16_t) cIsFileEmpty(BSTR *FileName) {
    return guarded(int16_t{0}, [&] {
        const std::string name = name_of(FileName);
        return vb(!name.empty() && platform::file_size(name) == 0);
    });
}

// Sizes past 2 GB wrap, as a Long does.
BRINDLE_EXPORT(int32_t) cFileSize(BSTR *FileName) {
    return guarded(int32_t{-1}, [&] {
        const std::string name = name_of(FileName);
        const int64_t size = name.empty() ? -1 : platform::file_size(name);
        return size < 0 ? -1 : static_cast<int32_t>(static_cast<uint32_t>(size));
    });
}

BRINDLE_EXPORT(int16_t) cCmpFileAttribute(BSTR *FirstFile, BSTR *SecondFile) {
    return guarded(int16_t{-2}, [&] { return compare_attributes(name_of(FirstFile), name_of(SecondFile)); });
}
BRINDLE_EXPORT(int16_t) cCmpFileTime(BSTR *FirstFile, BSTR *SecondFile) {
    return guarded(int16_t{-2}, [&] { return compare_times(name_of(FirstFile), name_of(SecondFile)); });
}
BRINDLE_EXPORT(int16_t) cCmpFileSize(BSTR *FirstFile, BSTR *SecondFile) {
    return guarded(int16_t{-2}, [&] { return compare_sizes(name_of(FirstFile), name_of(SecondFile)); });
}
BRINDLE_EXPORT(int16_t) cCmpFileContents(BSTR *FirstFile, BSTR *SecondFile, int16_t CaseSensitive) {
    return guarded(int16_t{0},
                   [&] { return compare_contents(name_of(FirstFile), name_of(SecondFile), flag16(CaseSensitive)); });
}

BRINDLE_EXPORT(int16_t) cFileIsReadable(BSTR *FileName) {
    return guarded(int16_t{0}, [&] { return vb(file_is_readable(name_of(FileName))); });
}
BRINDLE_EXPORT(int16_t) cFileIsWriteable(BSTR *FileName) {
    return guarded(int16_t{0}, [&] { return vb(file_is_writeable(name_of(FileName))); });
}
BRINDLE_EXPORT(int16_t) cFileIsExecutable(BSTR *FileName) {
    return guarded(int16_t{0}, [&] { return vb(file_is_executable(name_of(FileName))); });
}
BRINDLE_EXPORT(int16_t) cFileIsProgram(BSTR *FileName) {
    return guarded(int16_t{0}, [&] { return vb(file_is_program(name_of(FileName))); });
}
BRINDLE_EXPORT(int16_t) cFileIsDirectory(BSTR *FileName) {
    return guarded(int16_t{0}, [&] { return vb(file_is_directory(name_of(FileName))); });
}

BRINDLE_EXPORT(BSTR) cFileDateCreated(BSTR *FileName) {
    return guarded_string([&] { return date_text(FileName, Which::Created); });
}
BRINDLE_EXPORT(BSTR) cFileTimeCreated(BSTR *FileName) {
    return guarded_string([&] { return time_text(FileName, Which::Created); });
}
BRINDLE_EXPORT(BSTR) cFileLastDateAccess(BSTR *FileName) {
    return guarded_string([&] { return date_text(FileName, Which::Accessed); });
}
BRINDLE_EXPORT(BSTR) cFileLastTimeAccess(BSTR *FileName) {
    return guarded_string([&] { return time_text(FileName, Which::Accessed); });
}
BRINDLE_EXPORT(BSTR) cFileLastDateModified(BSTR *FileName) {
    return guarded_string([&] { return date_text(FileName, Which::Written); });
}
BRINDLE_EXPORT(BSTR) cFileLastTimeModified(BSTR *FileName) {
    return guarded_string([&] { return time_text(FileName, Which::Written); });
}

BRINDLE_EXPORT(int16_t)
cGetFileDateTime(BSTR *FileName, FileTimeParts *Created, FileTimeParts *Accessed, FileTimeParts *Written) {
    return guarded(int16_t{9}, [&] {
        const std::string name = name_of(FileName);
        if (name.empty())
            return int16_t{8};
        // The times are taken before the open: a runtime that reads from a
        // file as it opens it (Wine's does) would otherwise move the last
        // access time this call reports.
        platform::FileTimes t;
        const bool have_times = platform::get_file_times(name, &t) == platform::kNoError;
        if (!platform::File::open(name, platform::OpenMode::Read).is_open())
            return int16_t{8};
        if (!have_times)
            return int16_t{9};
        int16_t failed = 0;
        const auto c = calendar_from_file_time(t.created), a = calendar_from_file_time(t.accessed),
                   w = calendar_from_file_time(t.written);
        if (c)
            put_record(Created, *c);
        else
            failed += 1;
        if (a)
            put_record(Accessed, *a);
        else
            failed += 2;
        if (w)
            put_record(Written, *w);
        return failed == 0 ? kTrue : failed;
    });
}

BRINDLE_EXPORT(int16_t)
cSetFileDateTime(BSTR *FileName, FileTimeParts *Created, FileTimeParts *Accessed, FileTimeParts *Written) {
    return guarded(int16_t{9}, [&] {
        const auto c = from_record(Created), a = from_record(Accessed), w = from_record(Written);
        const int16_t bad = static_cast<int16_t>((c ? 0 : 1) + (a ? 0 : 2) + (w ? 0 : 4));
        if (bad != 0)
            return bad;
        const std::string name = name_of(FileName);
        if (name.empty() || !platform::File::open(name, platform::OpenMode::ReadWrite).is_open())
            return int16_t{8};
        return platform::set_file_times(name, &*c, &*a, &*w) == platform::kNoError ? kTrue : int16_t{9};
    });
}

BRINDLE_EXPORT(int32_t) cDT_GetFileDate(BSTR *FileName) {
    return guarded(int32_t{-1}, [&] {
        int64_t t = 0;
        return status_time(FileName, Which::Written, &t) ? local_dt_date(t) : -1;
    });
}
BRINDLE_EXPORT(int32_t) cDT_GetFileTime(BSTR *FileName) {
    return guarded(int32_t{-1}, [&] {
        int64_t t = 0;
        return status_time(FileName, Which::Written, &t) ? local_dt_time(t) : -1;
    });
}
