// Child processes and the shell's "open" on POSIX: posix_spawn, signals and
// waitpid on the one identifier the library started (never a process group,
// never "any child", so the client's own children are left alone), and
// xdg-open for documents. There are no windows here.
#include "platform/process.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <thread>

#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

namespace brindle::platform {

namespace {

// Collects the end of `pid` whenever it comes, on a thread of its own, so a
// child the caller let go never stays a zombie. A thread that cannot be made
// leaves the zombie to the process's end.
void reap_later(pid_t pid) noexcept {
    try {
        std::thread([pid] {
            int status = 0;
            while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
            }
        }).detach();
    } catch (...) {
    }
}

int32_t spawn(const std::string &path, const std::vector<std::string> &argv, pid_t *pid) {
    std::vector<char *> args;
    args.reserve(argv.size() + 1);
    for (const std::string &a : argv)
        args.push_back(const_cast<char *>(a.c_str()));
    args.push_back(nullptr);
    posix_spawnattr_t attr;
    if (posix_spawnattr_init(&attr) != 0)
        return 12;
    // The child starts with every signal at its default disposition and none
    // blocked, whatever the caller has set.
    sigset_t none, all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_setsigmask(&attr, &none);
    posix_spawnattr_setsigdefault(&attr, &all);
    posix_spawnattr_setflags(&attr, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    const int r = posix_spawn(pid, path.c_str(), nullptr, &attr, args.data(), environ);
    posix_spawnattr_destroy(&attr);
    if (r == 0)
        return 0;
    return r == ENOENT || r == ENOTDIR ? 2 : r == ENOMEM ? 12 : 13;
}

} // namespace

int32_t program_check(const std::string &path) {
    struct stat st{};
    if (path.empty() || stat(path.c_str(), &st) != 0)
        return 2;
    if (!S_ISREG(st.st_mode) || access(path.c_str(), X_OK) != 0)
        return 13;
    return 0;
}

int32_t program_search(const std::string &name, std::string *path) {
    const char *list = std::getenv("PATH");
    if (name.empty() || list == nullptr)
        return 2;
    int32_t result = 2;
    const std::string dirs(list);
    size_t start = 0;
    while (start <= dirs.size()) {
        size_t end = dirs.find(':', start);
        if (end == std::string::npos)
            end = dirs.size();
        const std::string dir = end > start ? dirs.substr(start, end - start) : std::string(".");
        const std::string candidate = dir + "/" + name;
        const int32_t r = program_check(candidate);
        if (r == 0) {
            *path = candidate;
            return 0;
        }
        if (r == 13)
            result = 13; // remembered; a later directory may still hold a runnable one
        start = end + 1;
    }
    return result;
}

int32_t child_start(const std::string &path, const std::vector<std::string> &argv, const std::string &,
                    Child *child) {
    pid_t pid = 0;
    const int32_t r = spawn(path, argv, &pid);
    if (r != 0)
        return r;
    *child = Child{pid, 0, false};
    return 0;
}

ChildState child_state(Child &child) noexcept {
    if (child.process <= 0)
        return ChildState::Failed;
    if (child.reaped)
        return ChildState::Ended;
    int status = 0;
    const pid_t r = waitpid(static_cast<pid_t>(child.process), &status, WNOHANG);
    if (r == 0)
        return ChildState::Running;
    if (r == static_cast<pid_t>(child.process)) {
        child.reaped = true;
        return ChildState::Ended;
    }
    return ChildState::Failed;
}

bool child_terminate(Child &child, uint32_t) noexcept {
    if (child.process <= 0 || child.reaped)
        return false;
    return kill(static_cast<pid_t>(child.process), SIGTERM) == 0;
}

void child_force(Child &child) noexcept {
    if (child.process > 0 && !child.reaped)
        kill(static_cast<pid_t>(child.process), SIGKILL);
}

void child_release(Child &child) noexcept {
    if (child.process > 0 && !child.reaped && child_state(child) == ChildState::Running)
        reap_later(static_cast<pid_t>(child.process));
    child = Child{};
}

int32_t process_end(int32_t id) noexcept {
    if (id < 1)
        return 0; // 0 and below name groups or every process: never signalled
    if (kill(static_cast<pid_t>(id), SIGKILL) == 0)
        return 1;
    return 0;
}

int32_t shell_open(const std::string &file, const std::string &, const std::string &directory, int16_t) {
    if (file.empty())
        return 2; // file not found
    std::string target = file;
    const bool address = file.find("://") != std::string::npos || file.rfind("mailto:", 0) == 0;
    if (!address) {
        if (target.front() != '/' && !directory.empty())
            target = directory + "/" + target;
        struct stat st{};
        if (stat(target.c_str(), &st) != 0)
            return 2;
    }
    std::string opener;
    if (program_search("xdg-open", &opener) != 0)
        return 31; // no application is associated
    pid_t pid = 0;
    const int32_t r = spawn(opener, {"xdg-open", target}, &pid);
    if (r != 0)
        return r == 12 ? 8 : 31; // 8: out of memory
    reap_later(pid);
    return 42;
}

bool has_windows() noexcept { return false; }
bool window_process_priority(intptr_t, uint32_t) noexcept { return false; }
bool window_remove_close(intptr_t) noexcept { return false; }
intptr_t window_focus(intptr_t) noexcept { return 0; }

bool environment_get(const std::string &name, std::string *value) {
    const char *v = std::getenv(name.c_str());
    if (v == nullptr)
        return false;
    *value = v;
    return true;
}

void environment_set(const std::string &name, const std::string &value) { setenv(name.c_str(), value.c_str(), 1); }

void message_box(const std::string &, const std::string &) noexcept {}

} // namespace brindle::platform
