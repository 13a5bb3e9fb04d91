#include "system/tracked_child.h"

#include "platform/process.h"
#include "system/command_line.h"

#include <cerrno>
#include <chrono>
#include <mutex>
#include <string>
#include <thread>

namespace brindle::system {

namespace {

std::mutex g_lock;
platform::Child g_child;
bool g_tracked = false;
int32_t g_error = 0;

int32_t failed(int32_t e) {
    g_error = e;
    errno = e;
    return e;
}

void release_locked() {
    if (g_tracked)
        platform::child_release(g_child);
    g_child = platform::Child{};
    g_tracked = false;
}

} // namespace

int32_t child_create(std::string_view command_line) {
    std::lock_guard guard(g_lock);
    release_locked();
    const std::vector<std::string> words = command_words(command_line);
    if (words.empty() || words[0].empty())
        return failed(2);
    std::string path;
    const int32_t found = names_a_path(words[0]) ? platform::program_check(words[0]) : platform::program_search(words[0], &path);
    if (found != 0)
        return failed(found);
    if (path.empty())
        path = words[0];
    platform::Child child;
    const int32_t r = platform::child_start(path, words, std::string(command_line), &child);
    if (r != 0)
        return failed(r);
    g_child = child;
    g_tracked = true;
    g_error = 0;
    return 0;
}

int32_t child_last_error() noexcept {
    std::lock_guard guard(g_lock);
    return g_error;
}

void child_kill() {
    std::lock_guard guard(g_lock);
    if (!g_tracked)
        return;
    if (platform::child_state(g_child) == platform::ChildState::Running) {
        platform::child_terminate(g_child, 1);
        bool forced = false;
        for (int waited = 0; waited < kKillLimitMs; waited += kKillPollMs) {
            if (platform::child_state(g_child) != platform::ChildState::Running)
                break;
            if (!forced && waited >= kKillGraceMs) {
                platform::child_force(g_child);
                forced = true;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(kKillPollMs));
        }
    }
    release_locked();
}

void child_close() {
    std::lock_guard guard(g_lock);
    release_locked();
}

bool child_running() {
    std::lock_guard guard(g_lock);
    return g_tracked && platform::child_state(g_child) == platform::ChildState::Running;
}

} // namespace brindle::system
