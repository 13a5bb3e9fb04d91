// Child processes, processes by identifier, the shell's "open" action, the
// window-bound process calls and the environment, as the process family
// needs them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace brindle::platform {

// A started child. On Windows `process` and `thread` are its handles; on
// POSIX `process` is its identifier and `reaped` tells that its end has been
// collected (its identifier may then belong to another process already).
struct Child {
    intptr_t process = 0;
    intptr_t thread = 0;
    bool reaped = false;
};

// The full name of the program `name` (which holds no '/' or '\') found in
// the directories of the environment variable "PATH" (on Windows also with
// the extensions ".exe", ".com", ".bat" and ".cmd" when it has none); 0, or
// the errno value of the failure: 2 not found, 13 found but not executable.
int32_t program_search(const std::string &name, std::string *path);

// Whether `path` names a program that can run: 0, 2 or 13 as above.
int32_t program_check(const std::string &path);

// Starts `path` with the arguments `argv` (argv[0] included; POSIX) or the
// command line `command_line` (Windows); 0 or the errno value of the failure
// (2, 13, 12 for memory).
int32_t child_start(const std::string &path, const std::vector<std::string> &argv, const std::string &command_line,
                    Child *child);

// A zero time-out wait for the child's end.
enum class ChildState { Running, Ended, Abandoned, Failed };
ChildState child_state(Child &child) noexcept;

// Asks the child to end with `exit_code` (Windows: ends it at once; POSIX:
// sends SIGTERM, which a program may ignore); false when it could not.
bool child_terminate(Child &child, uint32_t exit_code) noexcept;

// Ends the child unconditionally (POSIX: SIGKILL; Windows: as
// child_terminate).
void child_force(Child &child) noexcept;

// Lets the child go without stopping it: Windows closes its handles; POSIX
// collects its end when it comes (a child that has not ended is waited for
// by a small thread of the library), so it never stays behind as a zombie.
void child_release(Child &child) noexcept;

// Ends the process `id` with exit code 0: 1 when it was ended, 0 when it
// could not be opened (it does not exist, or belongs to someone the caller
// may not touch), -1 when it was opened but would not end. Identifiers
// below 1 are never touched (0 is returned).
int32_t process_end(int32_t id) noexcept;

// Performs the verb "open" on `file` (a document, a program or an address)
// with the active window as owner; the shell's result (above 32 on success).
int32_t shell_open(const std::string &file, const std::string &parameters, const std::string &directory,
                   int16_t show);

// True where the system has windows (Windows), false elsewhere: the
// window-bound calls then all fail.
bool has_windows() noexcept;

// Sets the priority class of the process that owns `window` (64 idle, 128
// high, 256 real time, 32 normal); false where there are no windows.
bool window_process_priority(intptr_t window, uint32_t priority_class) noexcept;

// Deletes the Close command from the window's system menu; false when the
// window has no such menu or command (always, where there are no windows).
bool window_remove_close(intptr_t window) noexcept;

// Gives the keyboard focus to `window`; the window that had it (0 when none
// or where there are no windows).
intptr_t window_focus(intptr_t window) noexcept;

// The environment: a variable's value (false when it is not set), setting
// one, and a message box (nothing where there are no windows).
bool environment_get(const std::string &name, std::string *value);
void environment_set(const std::string &name, const std::string &value);
void message_box(const std::string &text, const std::string &caption) noexcept;

} // namespace brindle::platform
