// Child processes, processes by identifier, the shell and the window-bound
// process calls on Windows.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#include <shellapi.h>

#include "platform/process.h"

#include <cstdlib>

namespace brindle::platform {

namespace {

HANDLE handle_of(intptr_t h) { return reinterpret_cast<HANDLE>(h); }

int32_t errno_of(DWORD e) {
    switch (e) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
        return 2;
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
        return 12;
    default:
        return 13;
    }
}

bool has_extension(const std::string &name) {
    const size_t slash = name.find_last_of("\\/");
    const size_t dot = name.find_last_of('.');
    return dot != std::string::npos && (slash == std::string::npos || dot > slash);
}

} // namespace

int32_t program_check(const std::string &path) {
    const DWORD a = GetFileAttributesA(path.c_str());
    if (path.empty() || a == INVALID_FILE_ATTRIBUTES)
        return 2;
    return (a & FILE_ATTRIBUTE_DIRECTORY) != 0 ? 13 : 0;
}

int32_t program_search(const std::string &name, std::string *path) {
    // The process's own environment, which SetEnvironmentVariable changes
    // (the C runtime's copy may be older).
    std::string dirs;
    if (name.empty() || !environment_get("PATH", &dirs))
        return 2;
    static const char *const kExtensions[] = {".exe", ".com", ".bat", ".cmd"};
    int32_t result = 2;
    size_t start = 0;
    while (start <= dirs.size()) {
        size_t end = dirs.find(';', start);
        if (end == std::string::npos)
            end = dirs.size();
        if (end > start) {
            std::string dir = dirs.substr(start, end - start);
            if (dir.back() != '\\' && dir.back() != '/')
                dir += '\\';
            if (has_extension(name)) {
                const int32_t r = program_check(dir + name);
                if (r == 0) {
                    *path = dir + name;
                    return 0;
                }
                if (r == 13)
                    result = 13;
            } else {
                for (const char *ext : kExtensions) {
                    const std::string candidate = dir + name + ext;
                    if (program_check(candidate) == 0) {
                        *path = candidate;
                        return 0;
                    }
                }
            }
        }
        start = end + 1;
    }
    return result;
}

int32_t child_start(const std::string &path, const std::vector<std::string> &, const std::string &command_line,
                    Child *child) {
    STARTUPINFOA si{};
    si.cb = sizeof si;
    PROCESS_INFORMATION pi{};
    std::string line = command_line; // CreateProcessA may write into it
    if (!CreateProcessA(path.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi))
        return errno_of(GetLastError());
    *child = Child{reinterpret_cast<intptr_t>(pi.hProcess), reinterpret_cast<intptr_t>(pi.hThread), false};
    return 0;
}

ChildState child_state(Child &child) noexcept {
    if (child.process == 0)
        return ChildState::Failed;
    switch (WaitForSingleObject(handle_of(child.process), 0)) {
    case WAIT_TIMEOUT: return ChildState::Running;
    case WAIT_OBJECT_0: return ChildState::Ended;
    case WAIT_ABANDONED: return ChildState::Abandoned;
    default: return ChildState::Failed;
    }
}

bool child_terminate(Child &child, uint32_t exit_code) noexcept {
    return child.process != 0 && TerminateProcess(handle_of(child.process), exit_code) != 0;
}

void child_force(Child &child) noexcept { child_terminate(child, 1); }

void child_release(Child &child) noexcept {
    if (child.thread != 0)
        CloseHandle(handle_of(child.thread));
    if (child.process != 0)
        CloseHandle(handle_of(child.process));
    child = Child{};
}

int32_t process_end(int32_t id) noexcept {
    if (id < 1)
        return 0;
    const HANDLE h = OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_TERMINATE, FALSE, static_cast<DWORD>(id));
    if (h == nullptr)
        return 0;
    const BOOL ended = TerminateProcess(h, 0);
    CloseHandle(h);
    return ended ? 1 : -1;
}

int32_t shell_open(const std::string &file, const std::string &parameters, const std::string &directory,
                   int16_t show) {
    const HINSTANCE r = ShellExecuteA(GetActiveWindow(), "Open", file.c_str(),
                                      parameters.empty() ? nullptr : parameters.c_str(),
                                      directory.empty() ? nullptr : directory.c_str(), show);
    return static_cast<int32_t>(reinterpret_cast<intptr_t>(r));
}

bool has_windows() noexcept { return true; }

bool window_process_priority(intptr_t window, uint32_t priority_class) noexcept {
    DWORD id = 0;
    GetWindowThreadProcessId(reinterpret_cast<HWND>(window), &id);
    if (id == 0)
        return false;
    const HANDLE h = OpenProcess(PROCESS_SET_INFORMATION, FALSE, id);
    if (h == nullptr)
        return false;
    const BOOL r = SetPriorityClass(h, priority_class);
    CloseHandle(h);
    return r != 0;
}

bool window_remove_close(intptr_t window) noexcept {
    const HMENU menu = GetSystemMenu(reinterpret_cast<HWND>(window), FALSE);
    return menu != nullptr && DeleteMenu(menu, 0xF060, MF_BYCOMMAND) != 0;
}

intptr_t window_focus(intptr_t window) noexcept {
    return reinterpret_cast<intptr_t>(SetFocus(reinterpret_cast<HWND>(window)));
}

bool environment_get(const std::string &name, std::string *value) {
    const DWORD n = GetEnvironmentVariableA(name.c_str(), nullptr, 0);
    if (n == 0)
        return false;
    std::string v(n, '\0');
    const DWORD got = GetEnvironmentVariableA(name.c_str(), v.data(), n);
    v.resize(got < n ? got : 0);
    *value = v;
    return true;
}

void environment_set(const std::string &name, const std::string &value) {
    SetEnvironmentVariableA(name.c_str(), value.c_str());
    _putenv_s(name.c_str(), value.c_str());
}

void message_box(const std::string &text, const std::string &caption) noexcept {
    MessageBoxA(GetActiveWindow(), text.c_str(), caption.c_str(), MB_OK);
}

} // namespace brindle::platform
