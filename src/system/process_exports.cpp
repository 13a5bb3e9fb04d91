// Processes: the exports. Strings arrive by value and are read up to their
// first zero byte.
#include "frame/frame.h"
#include "platform/process.h"
#include "system/tracked_child.h"

#include <string>

using namespace brindle::frame;
using namespace brindle::system;
namespace platform = brindle::platform;

namespace {

constexpr int16_t kTrue = -1;
constexpr int16_t kFalse = 0;

std::string text_of(BSTR s) { return std::string(StrArg::by_val(s).text()); }

} // namespace

BRINDLE_EXPORT(int32_t) cRunFile(BSTR File, BSTR Parameters, BSTR Directory, int16_t Show) {
    return guarded(int32_t{0}, [&] {
        const std::string file = text_of(File);
        if (file.empty())
            return int32_t{2}; // the shell would open some folder of its choice
        return platform::shell_open(file, text_of(Parameters), text_of(Directory), Show);
    });
}

BRINDLE_EXPORT(int16_t) cProcessCreate(BSTR CommandLine, int16_t Mode) {
    (void)Mode;
    return guarded(kTrue, [&] {
        child_create(StrArg::by_val(CommandLine).text());
        return kTrue;
    });
}

BRINDLE_EXPORT(int16_t) cProcessKill() {
    return guarded(kTrue, [] {
        child_kill();
        return kTrue;
    });
}

BRINDLE_EXPORT(int16_t) cProcessClose() {
    return guarded(kTrue, [] {
        child_close();
        return kTrue;
    });
}

BRINDLE_EXPORT(int16_t) cKillProcess(int32_t ProcessId) {
    return guarded(kFalse, [&] {
        if (ProcessId == 0)
            return kFalse;
        // A process that cannot be opened (gone, or not the caller's to end)
        // counts as done; one that was opened but would not end does not.
        return platform::process_end(ProcessId) >= 0 ? kTrue : kFalse;
    });
}

BRINDLE_EXPORT(int16_t) cSetPriority(intptr_t Window, int16_t Priority) {
    return guarded(kFalse, [&] {
        const uint32_t priority_class = Priority == 64 || Priority == 128 || Priority == 256 ? static_cast<uint32_t>(Priority) : 32u;
        if (!platform::has_windows())
            return kFalse;
        platform::window_process_priority(Window, priority_class); // its outcome is not reported
        return kTrue;
    });
}

BRINDLE_EXPORT(int16_t) cMenuKillClose(intptr_t Window) {
    return guarded(kFalse, [&] { return platform::window_remove_close(Window) ? kTrue : kFalse; });
}

BRINDLE_EXPORT(intptr_t) cSetFocus(intptr_t Window) {
    return guarded(intptr_t{0}, [&] { return platform::window_focus(Window); });
}

BRINDLE_EXPORT(BSTR) cDosGetEnvVariable(BSTR VariableName) {
    return guarded_string([&] {
        const std::string name = text_of(VariableName);
        std::string value;
        if (!name.empty() && platform::environment_get(name, &value)) {
            platform::message_box(value, "Original LIB variable is");
            platform::environment_set("TEST", "c:\\mylib;c:\\yourlib");
            std::string test;
            platform::environment_get("TEST", &test);
            platform::message_box(test, "TEST variable is");
        }
        return empty_string();
    });
}
