// Processes through the exported interface. On Linux real children run
// (sh and sleep), each writing its identifier to a file so the test can
// watch it from outside; what Wine cannot show (a second program's life, the
// C runtime's errno of the DLL, message boxes) is checked on Linux only.
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <chrono>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#ifndef _WIN32
#include <cerrno>
#include <csignal>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
extern char **environ;
#endif

using namespace brindle::test;
using namespace std::chrono_literals;
namespace fs = std::filesystem;

namespace {

constexpr int16_t kTrue = -1;

int16_t create(const std::string &line) {
    Bstr l(line);
    return cProcessCreate(l.val(), 0);
}

double seconds(std::chrono::steady_clock::duration d) { return std::chrono::duration<double>(d).count(); }

} // namespace

TEST(Processes, KillProcessQuirksForIdentifiersThatNameNothing) {
    EXPECT_EQ(cKillProcess(0), 0);
    // Below 1 nothing is touched (no process group, not every process): the
    // test is still running afterwards, and the result is "could not open".
    EXPECT_EQ(cKillProcess(-1), kTrue);
    EXPECT_EQ(cKillProcess(INT_MIN), kTrue);
    // An identifier no process has: true. Windows identifiers are multiples
    // of 4; on Linux no process has an identifier above pid_max.
    EXPECT_EQ(cKillProcess(INT_MAX), kTrue);
}

TEST(Processes, KillAndCloseWithoutAChildReturnAtOnce) {
    const auto t0 = std::chrono::steady_clock::now();
    EXPECT_EQ(cProcessKill(), kTrue);
    EXPECT_EQ(cProcessClose(), kTrue);
    EXPECT_EQ(cProcessKill(), kTrue);
    EXPECT_LT(seconds(std::chrono::steady_clock::now() - t0), 0.5);
}

TEST(Processes, WindowBoundCalls) {
#ifdef _WIN32
    // No window: no process found, the outcome is not reported.
    EXPECT_EQ(cSetPriority(0, 300), kTrue);
    EXPECT_EQ(cMenuKillClose(0), 0);
#else
    for (const int16_t p : {int16_t{64}, int16_t{128}, int16_t{256}, int16_t{300}})
        EXPECT_EQ(cSetPriority(1, p), 0);
    EXPECT_EQ(cMenuKillClose(1), 0);
    EXPECT_EQ(cSetFocus(1), 0);
#endif
}

TEST(Processes, RunFileOfAMissingFile) {
    Bstr file("no-such-file-brindle.txt"), none;
    EXPECT_EQ(cRunFile(file.val(), none.val(), none.val(), 1), 2);
    EXPECT_EQ(cRunFile(none.val(), none.val(), none.val(), 1), 2);
}

TEST(Processes, EnvironmentDemonstrationWithoutTheVariable) {
    Bstr missing("BRINDLE_NO_SUCH_VARIABLE_42"), none;
    EXPECT_EQ(str(cDosGetEnvVariable(missing.val())), "");
    EXPECT_EQ(str(cDosGetEnvVariable(none.val())), "");
}

#ifndef _WIN32

namespace {

class ProcessFiles : public TempDirTest {
  protected:
    // Waits up to 5 s for the child to write its identifier.
    pid_t child_pid(const char *file = "child.pid") {
        const auto deadline = std::chrono::steady_clock::now() + 5s;
        while (std::chrono::steady_clock::now() < deadline) {
            const std::string text = read_file(file);
            if (!text.empty() && text.back() == '\n')
                return static_cast<pid_t>(std::stol(text));
            std::this_thread::sleep_for(10ms);
        }
        return 0;
    }
    // True when the process is gone altogether: neither running nor left as
    // a zombie (a zombie still answers kill(pid, 0)).
    static bool gone(pid_t pid) { return kill(pid, 0) != 0 && errno == ESRCH; }
    static bool gone_within(pid_t pid, std::chrono::milliseconds limit) {
        const auto deadline = std::chrono::steady_clock::now() + limit;
        while (!gone(pid) && std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(10ms);
        return gone(pid);
    }
};

} // namespace

TEST_F(ProcessFiles, KillEndsTheChildAndLeavesNoZombie) {
    ASSERT_EQ(create("sh -c \"echo $$ > child.pid; exec sleep 30\""), kTrue);
    const pid_t pid = child_pid();
    ASSERT_GT(pid, 0);
    EXPECT_EQ(kill(pid, 0), 0); // running
    const auto t0 = std::chrono::steady_clock::now();
    EXPECT_EQ(cProcessKill(), kTrue);
    EXPECT_LT(seconds(std::chrono::steady_clock::now() - t0), 1.5); // SIGTERM ends sleep at once
    EXPECT_TRUE(gone(pid)) << "left running or as a zombie";
    EXPECT_EQ(cProcessKill(), kTrue); // the slot is empty now
}

TEST_F(ProcessFiles, ChildIgnoringTerminationIsEndedWithinTheBound) {
    ASSERT_EQ(create("sh -c \"trap '' TERM; echo $$ > child.pid; exec sleep 60\""), kTrue);
    const pid_t pid = child_pid();
    ASSERT_GT(pid, 0);
    const auto t0 = std::chrono::steady_clock::now();
    EXPECT_EQ(cProcessKill(), kTrue);
    const double took = seconds(std::chrono::steady_clock::now() - t0);
    // The 2 s of grace before SIGKILL, and far less than the child's 60 s.
    EXPECT_GE(took, 1.9);
    EXPECT_LT(took, 5.5);
    EXPECT_TRUE(gone(pid));
}

TEST_F(ProcessFiles, CloseLetsTheChildRunAndItIsCollectedWhenItEnds) {
    ASSERT_EQ(create("sh -c \"echo $$ > child.pid; exec sleep 1\""), kTrue);
    const pid_t pid = child_pid();
    ASSERT_GT(pid, 0);
    EXPECT_EQ(cProcessClose(), kTrue);
    EXPECT_EQ(kill(pid, 0), 0); // still running
    EXPECT_TRUE(gone_within(pid, 5000ms)) << "the ended child stayed a zombie";
}

TEST_F(ProcessFiles, ANewChildLetsThePreviousOneGo) {
    ASSERT_EQ(create("sh -c \"echo $$ > first.pid; exec sleep 1\""), kTrue);
    const pid_t first = child_pid("first.pid");
    ASSERT_GT(first, 0);
    ASSERT_EQ(create("sh -c \"echo $$ > second.pid; exec sleep 30\""), kTrue);
    const pid_t second = child_pid("second.pid");
    ASSERT_GT(second, 0);
    EXPECT_EQ(kill(first, 0), 0); // not stopped by the second start
    EXPECT_EQ(cProcessKill(), kTrue); // ends the second only
    EXPECT_TRUE(gone(second));
    EXPECT_TRUE(gone_within(first, 5000ms)) << "the first child stayed a zombie";
}

TEST_F(ProcessFiles, ArgumentsKeepQuotedBlanks) {
    // IFS empty: the shell passes each argument on as one word, blanks and all.
    ASSERT_EQ(create("sh -c \"IFS=; printf '%s|' $@ > args.txt; echo done >> args.txt\" zero \"one two\"  three"), kTrue);
    const auto deadline = std::chrono::steady_clock::now() + 5s;
    std::string text;
    while (std::chrono::steady_clock::now() < deadline) {
        text = read_file("args.txt");
        if (text.find("done") != std::string::npos)
            break;
        std::this_thread::sleep_for(10ms);
    }
    EXPECT_EQ(text, "one two|three|done\n");
    EXPECT_EQ(cProcessClose(), kTrue);
}

TEST_F(ProcessFiles, StartFailuresSetErrno) {
    write_file("not-executable", "#!/bin/sh\n");
    chmod("not-executable", 0644);
    const struct {
        std::string line;
        int error;
    } rows[] = {
        {"", 2}, {"   ", 2}, {"brindle-no-such-program-42", 2}, {"./missing/prog", 2},
        {"./not-executable", 13}, {(fs::current_path() / "not-executable").string(), 13},
        {".", 13}, // a directory
    };
    for (const auto &r : rows) {
        errno = 0;
        EXPECT_EQ(create(r.line), kTrue) << r.line;
        EXPECT_EQ(errno, r.error) << r.line;
        const auto t0 = std::chrono::steady_clock::now();
        EXPECT_EQ(cProcessKill(), kTrue); // nothing tracked after a failed start
        EXPECT_LT(seconds(std::chrono::steady_clock::now() - t0), 0.5);
    }
}

TEST_F(ProcessFiles, KillProcessByIdentifier) {
    pid_t pid = 0;
    char arg0[] = "sleep", arg1[] = "30";
    char *argv[] = {arg0, arg1, nullptr};
    ASSERT_EQ(posix_spawnp(&pid, "sleep", nullptr, nullptr, argv, environ), 0);
    EXPECT_EQ(cKillProcess(pid), kTrue);
    int status = 0;
    ASSERT_EQ(waitpid(pid, &status, 0), pid);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGKILL);
    // The identifier is free now: still true ("cannot be opened").
    EXPECT_EQ(cKillProcess(pid), kTrue);
}

// xdg-open is replaced by a script of the test's own, found first along PATH,
// which records what it was given: nothing is opened on the machine.
TEST_F(ProcessFiles, RunFileHandsTheDocumentToXdgOpen) {
    fs::create_directories("bin");
    const std::string record = (fs::current_path() / "opened.txt").string();
    write_file("bin/xdg-open", "#!/bin/sh\nprintf '%s\\n' \"$*\" > '" + record + "'\n");
    chmod("bin/xdg-open", 0755);
    write_file("report.txt", "r");
    const char *old = std::getenv("PATH");
    const std::string saved = old ? old : "";
    setenv("PATH", ((fs::current_path() / "bin").string() + ":" + saved).c_str(), 1);

    Bstr file("report.txt"), none, dir(fs::current_path().string());
    const int32_t r = cRunFile(file.val(), none.val(), dir.val(), 1);
    EXPECT_GT(r, 32);
    std::string text;
    const auto deadline = std::chrono::steady_clock::now() + 5s;
    while (text.empty() && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(10ms);
        text = read_file(record);
    }
    EXPECT_EQ(text, (fs::current_path() / "report.txt").string() + "\n");

    Bstr address("https://example.invalid/x");
    fs::remove(record);
    EXPECT_GT(cRunFile(address.val(), none.val(), none.val(), 1), 32);
    text.clear();
    const auto deadline2 = std::chrono::steady_clock::now() + 5s;
    while (text.empty() && std::chrono::steady_clock::now() < deadline2) {
        std::this_thread::sleep_for(10ms);
        text = read_file(record);
    }
    EXPECT_EQ(text, "https://example.invalid/x\n"); // an address goes as it is

    // Without xdg-open: no program is associated.
    setenv("PATH", (fs::current_path() / "missing").string().c_str(), 1);
    EXPECT_EQ(cRunFile(file.val(), none.val(), dir.val(), 1), 31);
    setenv("PATH", saved.c_str(), 1);
}

TEST(Processes, EnvironmentDemonstrationSetsTest) {
    unsetenv("TEST");
    Bstr missing("BRINDLE_NO_SUCH_VARIABLE_42");
    EXPECT_EQ(str(cDosGetEnvVariable(missing.val())), "");
    EXPECT_EQ(std::getenv("TEST"), nullptr); // nothing happens for a missing variable
    setenv("BRINDLE_LIB_42", "x", 1);
    Bstr name("BRINDLE_LIB_42");
    EXPECT_EQ(str(cDosGetEnvVariable(name.val())), "");
    ASSERT_NE(std::getenv("TEST"), nullptr);
    EXPECT_STREQ(std::getenv("TEST"), "c:\\mylib;c:\\yourlib");
    unsetenv("TEST");
    unsetenv("BRINDLE_LIB_42");
}

#endif

#ifdef _WIN32

// A child for the Windows tests: the test program itself, which (with the
// variable below set) writes its identifier and sleeps; run on its own it
// returns at once.
TEST(Processes, SleepingChildHelper) {
    const char *file = std::getenv("BRINDLE_SLEEPING_CHILD");
    if (file == nullptr || *file == '\0')
        GTEST_SKIP() << "only a child started by the tests sleeps";
    std::ofstream(file) << GetCurrentProcessId() << "\n";
    std::this_thread::sleep_for(30s);
}

namespace {

std::string self_path() {
    char path[MAX_PATH];
    const DWORD n = GetModuleFileNameA(nullptr, path, MAX_PATH);
    return std::string(path, n);
}

std::string helper_line() {
    return "\"" + self_path() + "\" --gtest_filter=Processes.SleepingChildHelper";
}

// The identifier the helper wrote into `file`, within 20 s (a Wine start is slow).
DWORD helper_id(const std::string &file) {
    const auto deadline = std::chrono::steady_clock::now() + 20s;
    while (std::chrono::steady_clock::now() < deadline) {
        const std::string text = read_whole_file(file);
        if (!text.empty() && text.back() == '\n')
            return static_cast<DWORD>(std::stoul(text));
        std::this_thread::sleep_for(20ms);
    }
    return 0;
}

bool ended(DWORD id) {
    const HANDLE h = OpenProcess(SYNCHRONIZE, FALSE, id);
    if (h == nullptr)
        return true;
    const bool done = WaitForSingleObject(h, 5000) == WAIT_OBJECT_0;
    CloseHandle(h);
    return done;
}

} // namespace

TEST(Processes, WindowsChildIsKilled) {
    const std::string file = (fs::temp_directory_path() / "brindle-child-kill.pid").string();
    fs::remove(file);
    _putenv_s("BRINDLE_SLEEPING_CHILD", file.c_str());
    ASSERT_EQ(create(helper_line()), kTrue);
    _putenv_s("BRINDLE_SLEEPING_CHILD", "");
    const DWORD id = helper_id(file);
    ASSERT_NE(id, 0u);
    const auto t0 = std::chrono::steady_clock::now();
    EXPECT_EQ(cProcessKill(), kTrue);
    EXPECT_LT(seconds(std::chrono::steady_clock::now() - t0), 5.5);
    EXPECT_TRUE(ended(id));
    fs::remove(file);
}

TEST(Processes, WindowsKillProcessByIdentifier) {
    const std::string file = (fs::temp_directory_path() / "brindle-child-id.pid").string();
    fs::remove(file);
    _putenv_s("BRINDLE_SLEEPING_CHILD", file.c_str());
    STARTUPINFOA si{};
    si.cb = sizeof si;
    PROCESS_INFORMATION pi{};
    std::string line = helper_line();
    ASSERT_TRUE(CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi));
    _putenv_s("BRINDLE_SLEEPING_CHILD", "");
    ASSERT_NE(helper_id(file), 0u);
    EXPECT_EQ(cKillProcess(static_cast<int32_t>(pi.dwProcessId)), kTrue);
    EXPECT_EQ(WaitForSingleObject(pi.hProcess, 10000), WAIT_OBJECT_0);
    DWORD code = 7;
    GetExitCodeProcess(pi.hProcess, &code);
    EXPECT_EQ(code, 0u);
    CloseHandle(pi.hThread);
    CloseHandle(pi.hProcess);
    fs::remove(file);
}

TEST(Processes, WindowsStartOfAMissingProgramTracksNothing) {
    EXPECT_EQ(create("brindle-no-such-program-42"), kTrue);
    EXPECT_EQ(create(""), kTrue);
    const auto t0 = std::chrono::steady_clock::now();
    EXPECT_EQ(cProcessKill(), kTrue);
    EXPECT_LT(seconds(std::chrono::steady_clock::now() - t0), 0.5);
}

#endif
