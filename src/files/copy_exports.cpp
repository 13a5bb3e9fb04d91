// Copy, move, delete and directory exports. Names arrive by reference and
// are read up to their first zero byte, as the system sees a name.
#include "common/ascii.h"
#include "files/block_copy.h"
#include "files/file_questions.h"
#include "files/set_copy.h"
#include "files/tree_delete.h"
#include "frame/frame.h"
#include "platform/file.h"
#include "platform/file_info.h"
#include "platform/file_ops.h"
#include "platform/progress.h"

#include <memory>
#include <string>

using namespace brindle::frame;
using namespace brindle::files;
namespace platform = brindle::platform;

namespace {

std::string name_of(BSTR *ref) { return std::string(StrArg::by_ref(ref).text()); }

// -1 for success, else the error itself.
int16_t vb_status(int error) { return error == platform::kNoError ? int16_t{-1} : static_cast<int16_t>(error); }
int32_t vb_system(uint32_t error) { return error == platform::kSysOk ? -1 : static_cast<int32_t>(error); }

// The attribute bits the forced deletes clear: read-only, hidden, system,
// archive, normal and temporary.
constexpr uint32_t kPlainBits = 423;

int16_t kill_file(BSTR *file, bool clear_first) {
    const std::string name = name_of(file);
    uint32_t attributes = 0;
    if (name.empty() || platform::get_attributes(name, &attributes) != platform::kNoError)
        return -1; // nothing there: nothing to do
    if (clear_first && (attributes & kPlainBits) && !(attributes & platform::kAttrDirectory) &&
        platform::set_attributes(name, attributes & ~kPlainBits) != platform::kNoError)
        return 0;
    return vb_status(platform::remove_file(name));
}

int32_t files_copy(intptr_t display, BSTR *source, BSTR *target, BSTR *mask, int32_t options, bool move) {
    Progress progress;
    if (display != 0)
        progress = [display](const std::string &text) { platform::set_display_caption(display, text); };
    return copy_file_set(name_of(source), name_of(target), name_of(mask), options, move, progress);
}

} // namespace

BRINDLE_EXPORT(int32_t) cFileCopy(BSTR *Source, BSTR *Target) {
    return guarded(int32_t{kCopyTargetOpen}, [&] { return block_copy(name_of(Source), name_of(Target)); });
}

BRINDLE_EXPORT(int32_t) cFileForceCopy(BSTR *Source, BSTR *Target, int16_t Force) {
    return guarded(int32_t{kCopyTargetOpen},
                   [&] { return force_copy(name_of(Source), name_of(Target), flag16(Force)); });
}

BRINDLE_EXPORT(int32_t) cFileCopy2(BSTR *Source, BSTR *Target) {
    return guarded(int32_t{platform::kSysAccessDenied},
                   [&] { return vb_system(platform::system_copy_file(name_of(Source), name_of(Target), false)); });
}

// Replaces an existing target, and crosses volumes by copy and delete.
BRINDLE_EXPORT(int32_t) cFileMove(BSTR *Source, BSTR *Target) {
    return guarded(int32_t{platform::kSysAccessDenied},
                   [&] { return vb_system(platform::system_move_file(name_of(Source), name_of(Target), true, true)); });
}

BRINDLE_EXPORT(int16_t) cRenameFile(BSTR *OldFile, BSTR *NewFile) {
    return guarded(int16_t{platform::kAccessDenied}, [&] {
        int error = platform::kNoError;
        platform::rename_file(name_of(OldFile), name_of(NewFile), &error);
        return vb_status(error);
    });
}

BRINDLE_EXPORT(int32_t) cFilesCopy(BSTR *SourceDirectory, BSTR *TargetDirectory, BSTR *Mask, int32_t Options) {
    return guarded(int32_t{0}, [&] { return files_copy(0, SourceDirectory, TargetDirectory, Mask, Options, false); });
}

BRINDLE_EXPORT(int32_t)
cFilesCopyExt(intptr_t Display, BSTR *SourceDirectory, BSTR *TargetDirectory, BSTR *Mask, int32_t Options) {
    return guarded(int32_t{0},
                   [&] { return files_copy(Display, SourceDirectory, TargetDirectory, Mask, Options, false); });
}

BRINDLE_EXPORT(int32_t) cFilesMove(BSTR *SourceDirectory, BSTR *TargetDirectory, BSTR *Mask, int32_t Options) {
    return guarded(int32_t{0}, [&] { return files_copy(0, SourceDirectory, TargetDirectory, Mask, Options, true); });
}

// The display object is not passed on: a set move never shows progress.
BRINDLE_EXPORT(int32_t)
cFilesMoveExt(intptr_t Display, BSTR *SourceDirectory, BSTR *TargetDirectory, BSTR *Mask, int32_t Options) {
    (void)Display;
    return guarded(int32_t{0}, [&] { return files_copy(0, SourceDirectory, TargetDirectory, Mask, Options, true); });
}

BRINDLE_EXPORT(int16_t)
cDBFileCopy(BSTR *Text1, BSTR *Text2, BSTR *Text3, BSTR *Text4, BSTR *Source, BSTR *Target) {
    return guarded(int16_t{0}, [&] {
        const std::string source = name_of(Source), target = name_of(Target);
        if (source.empty() || brindle::common::equal_no_case(source, target))
            return int16_t{0};
        std::unique_ptr<platform::ProgressWindow> window;
        const bool ok = stepped_copy(
            source, target,
            [&](int32_t steps) {
                window = std::make_unique<platform::ProgressWindow>(StrArg::by_ref(Text1).text(),
                                                                    StrArg::by_ref(Text2).text(),
                                                                    StrArg::by_ref(Text3).text(),
                                                                    StrArg::by_ref(Text4).text(), steps);
            },
            [&] { window->step(); });
        return ok ? int16_t{-1} : int16_t{0};
    });
}

BRINDLE_EXPORT(int16_t) cPBFileCopy(intptr_t ProgressBar, BSTR *Source, BSTR *Target) {
    return guarded(int16_t{0}, [&] {
        const bool ok = stepped_copy(
            name_of(Source), name_of(Target), [&](int32_t steps) { platform::progress_bar_start(ProgressBar, steps); },
            [&] { platform::progress_bar_step(ProgressBar); });
        return ok ? int16_t{-1} : int16_t{0};
    });
}

BRINDLE_EXPORT(int16_t) cKillFile(BSTR *FileName) {
    return guarded(int16_t{0}, [&] { return kill_file(FileName, false); });
}

BRINDLE_EXPORT(int16_t) cKillFileAll(BSTR *FileName) {
    return guarded(int16_t{0}, [&] { return kill_file(FileName, true); });
}

BRINDLE_EXPORT(int16_t) cKillFiles(BSTR *Pattern) {
    return guarded(int16_t{0}, [&] { return static_cast<int16_t>(delete_matching(name_of(Pattern), false)); });
}

BRINDLE_EXPORT(int16_t) cKillFilesAll(BSTR *Pattern) {
    return guarded(int16_t{0}, [&] { return static_cast<int16_t>(delete_matching(name_of(Pattern), true)); });
}

BRINDLE_EXPORT(int16_t) cKillDir(BSTR *Directory) {
    return guarded(int16_t{platform::kAccessDenied},
                   [&] { return vb_status(platform::remove_directory(name_of(Directory))); });
}

BRINDLE_EXPORT(int32_t) cKillDirs(BSTR *Directory, int16_t RemoveTop) {
    return guarded(int32_t{-1},
                   [&] { return delete_tree(name_of(Directory), "*", TreeMode::Tree, flag16(RemoveTop)); });
}

BRINDLE_EXPORT(int32_t) cFullKillDirs(BSTR *Directory, int16_t RemoveTop) {
    return guarded(int32_t{-1},
                   [&] { return delete_tree(name_of(Directory), "*", TreeMode::ForcedTree, flag16(RemoveTop)); });
}

BRINDLE_EXPORT(int32_t) cKillDirFilesAll(BSTR *Directory, BSTR *Mask) {
    return guarded(int32_t{-1},
                   [&] { return delete_tree(name_of(Directory), name_of(Mask), TreeMode::FilesOnly, false); });
}

BRINDLE_EXPORT(int16_t) cMakeDir(BSTR *Directory) {
    return guarded(int16_t{platform::kAccessDenied},
                   [&] { return vb_status(platform::make_directory(name_of(Directory))); });
}

BRINDLE_EXPORT(int16_t) cMakeMultipleDir(BSTR *Path) {
    return guarded(int16_t{2}, [&] { return make_directories(name_of(Path)); });
}
