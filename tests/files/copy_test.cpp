// Copy, move, delete and directory exports through the exported interface,
// in a scratch directory with relative names. The read-only rule is checked
// for every user: the suite runs as root in CI, whom permission bits do not
// stop, so the library itself must refuse.
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <filesystem>
#include <string>
#include <vector>
#ifndef _WIN32
#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

using namespace brindle::test;
namespace fs = std::filesystem;

namespace {

class Copy : public TempDirTest {
  protected:
    static std::string pattern_bytes(size_t n) {
        std::string s(n, '\0');
        uint32_t x = 12345;
        for (char &c : s) {
            x = x * 1103515245u + 12345u;
            c = static_cast<char>(x >> 24);
        }
        return s;
    }
};

int32_t file_copy(const std::string &a, const std::string &b) {
    Bstr s(a), t(b);
    return cFileCopy(s.ref(), t.ref());
}
int32_t force_copy(const std::string &a, const std::string &b, int16_t force) {
    Bstr s(a), t(b);
    return cFileForceCopy(s.ref(), t.ref(), force);
}
int32_t copy2(const std::string &a, const std::string &b) {
    Bstr s(a), t(b);
    return cFileCopy2(s.ref(), t.ref());
}
int32_t move(const std::string &a, const std::string &b) {
    Bstr s(a), t(b);
    return cFileMove(s.ref(), t.ref());
}
int16_t set_read_only(const std::string &f) {
    Bstr n(f);
    return cFileSetReadOnly(n.ref());
}
int16_t kill_file(const std::string &f) {
    Bstr n(f);
    return cKillFile(n.ref());
}
int32_t files_copy(const std::string &a, const std::string &b, const std::string &mask, int32_t options) {
    Bstr s(a), t(b), m(mask);
    return cFilesCopy(s.ref(), t.ref(), m.ref(), options);
}
int32_t kill_dirs(const std::string &d, int16_t top, bool forced) {
    Bstr n(d);
    return forced ? cFullKillDirs(n.ref(), top) : cKillDirs(n.ref(), top);
}

} // namespace

TEST_F(Copy, BlockCopyCountsBytesAndGivesItsCodes) {
    write_file("empty", "");
    const std::string big = pattern_bytes(300000); // several blocks and a partial one
    write_file("big", big);
    fs::create_directory("dir");
    EXPECT_EQ(file_copy("empty", "e2"), 0);
    EXPECT_TRUE(fs::exists("e2"));
    EXPECT_EQ(fs::file_size("e2"), 0u);
    EXPECT_EQ(file_copy("big", "b2"), 300000);
    EXPECT_EQ(read_file("b2"), big);
    // An existing target is emptied and replaced.
    write_file("b3", std::string(500000, 'x'));
    EXPECT_EQ(file_copy("empty", "b3"), 0);
    EXPECT_EQ(fs::file_size("b3"), 0u);

    EXPECT_EQ(file_copy("missing", "m2"), -32750);
    EXPECT_FALSE(fs::exists("m2"));
    EXPECT_EQ(file_copy("dir", "d2"), -32750);
    EXPECT_EQ(file_copy("big", "nodir\\x"), -32751);
    EXPECT_EQ(file_copy("big", "dir"), -32751);
    EXPECT_EQ(file_copy("", "x"), -32750);
    EXPECT_EQ(cFileCopy(nullptr, nullptr), -32750);
}

// Every way of naming the source as the target is refused before the
// target is opened: nothing is truncated.
TEST_F(Copy, CopyOntoItselfIsRefusedAndKeepsTheFile) {
    const std::string body = pattern_bytes(70000);
    write_file("src.dat", body);
    fs::create_directory("sub");
    std::vector<std::string> names = {"src.dat", ".\\src.dat", "SUB\\..\\src.dat", "sub/../src.dat"};
#ifdef _WIN32
    names.push_back("SRC.DAT");
#endif
    fs::create_hard_link("src.dat", "hard.dat");
    names.push_back("hard.dat");
#ifndef _WIN32
    fs::create_symlink("src.dat", "soft.dat");
    names.push_back("soft.dat");
#endif
    for (const std::string &n : names) {
        SCOPED_TRACE(n);
        EXPECT_EQ(file_copy("src.dat", n), -32751);
        EXPECT_EQ(force_copy("src.dat", n, -1), -32751);
        EXPECT_NE(copy2("src.dat", n), -1);
        EXPECT_EQ(read_file("src.dat"), body);
    }
    Bstr s("src.dat"), t("hard.dat"), a("1"), b("2"), c("3"), d("4");
    EXPECT_EQ(cDBFileCopy(a.ref(), b.ref(), c.ref(), d.ref(), s.ref(), t.ref()), 0);
    EXPECT_EQ(cPBFileCopy(0, s.ref(), t.ref()), 0);
    EXPECT_EQ(read_file("src.dat"), body);
}

TEST_F(Copy, ReadOnlyFilesAreNeitherReplacedNorDeleted) {
    write_file("src", "new contents");
    write_file("ro", "old");
    ASSERT_EQ(set_read_only("ro"), -1);

    EXPECT_EQ(file_copy("src", "ro"), -32751);
    EXPECT_EQ(force_copy("src", "ro", 0), -32751);
    EXPECT_EQ(force_copy("src", "ro", 1), -32751); // only -1 forces
    EXPECT_EQ(copy2("src", "ro"), 5);
    EXPECT_EQ(move("src", "ro"), 5);
    Bstr s("src"), ro("ro");
    EXPECT_EQ(cPBFileCopy(0, s.ref(), ro.ref()), 0);
    EXPECT_EQ(kill_file("ro"), 13);
    EXPECT_EQ(read_file("ro"), "old");
    EXPECT_EQ(read_file("src"), "new contents");

    // Forced: the target is replaced and takes the source's attributes.
    EXPECT_EQ(force_copy("src", "ro", -1), 12);
    EXPECT_EQ(read_file("ro"), "new contents");
    EXPECT_EQ(cIsFileReadOnly(ro.ref()), 0);

    // A forced copy of a read-only source gives a read-only target.
    ASSERT_EQ(set_read_only("src"), -1);
    write_file("t2", "x");
    EXPECT_EQ(force_copy("src", "t2", -1), 12);
    Bstr t2("t2");
    EXPECT_EQ(cIsFileReadOnly(t2.ref()), -1);

    // cKillFileAll clears the attributes first.
    EXPECT_EQ(cKillFileAll(ro.ref()), -1);
    EXPECT_EQ(cKillFileAll(t2.ref()), -1);
    EXPECT_FALSE(fs::exists("ro"));
    EXPECT_FALSE(fs::exists("t2"));
    EXPECT_EQ(kill_file("ro"), -1); // not there: nothing to do
    Bstr src("src");
    EXPECT_EQ(cFileResetReadOnly(src.ref()), -1);
    EXPECT_EQ(kill_file("src"), -1);
    EXPECT_FALSE(fs::exists("src"));
}

TEST_F(Copy, SystemCopyAndMove) {
    write_file("a", "alpha");
    EXPECT_EQ(copy2("a", "b"), -1);
    EXPECT_EQ(read_file("b"), "alpha");
    EXPECT_EQ(copy2("missing", "c"), 2);
    EXPECT_FALSE(fs::exists("c"));
    write_file("c", "old");
    EXPECT_EQ(copy2("a", "c"), -1); // overwrites
    EXPECT_EQ(read_file("c"), "alpha");

    EXPECT_EQ(move("a", "moved"), -1);
    EXPECT_FALSE(fs::exists("a"));
    EXPECT_EQ(read_file("moved"), "alpha");
    EXPECT_EQ(move("moved", "c"), -1); // replaces
    EXPECT_EQ(read_file("c"), "alpha");
    EXPECT_FALSE(fs::exists("moved"));
    EXPECT_EQ(move("missing", "x"), 2);

    Bstr c("c"), d("d"), b("b");
    EXPECT_EQ(cRenameFile(c.ref(), d.ref()), -1);
    EXPECT_EQ(read_file("d"), "alpha");
    EXPECT_EQ(cRenameFile(d.ref(), b.ref()), 13); // an existing target
    Bstr e("e");
    EXPECT_EQ(cRenameFile(c.ref(), e.ref()), 2);
    EXPECT_TRUE(fs::exists("d"));
}

#ifndef _WIN32
// A full disk, simulated by a file size limit in a child process: the
// writes past it fail with EFBIG. The partial target must go and the
// source stay whole.
TEST_F(Copy, AFailedWriteDeletesThePartialTarget) {
    const std::string body = pattern_bytes(400000);
    write_file("src", body);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        signal(SIGXFSZ, SIG_IGN);
        rlimit limit{100000, 100000};
        setrlimit(RLIMIT_FSIZE, &limit);
        int code = 0;
        if (file_copy("src", "t1") != -32740)
            code |= 1;
        if (copy2("src", "t2") != 112)
            code |= 2;
        Bstr s("src"), t("t3");
        if (cPBFileCopy(0, s.ref(), t.ref()) != 0)
            code |= 4;
        _exit(code);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0) << "bits: 1 cFileCopy, 2 cFileCopy2, 4 cPBFileCopy";
    for (const char *t : {"t1", "t2", "t3"})
        EXPECT_FALSE(fs::exists(t)) << t;
    EXPECT_EQ(read_file("src"), body);
}
#endif

TEST_F(Copy, SetCopiesCountSuccessesAndFailures) {
    fs::create_directories("s/sub/deeper");
    write_file("s/a.txt", "a");
    write_file("s/b.TXT", "b");
    write_file("s/c.dat", "c");
    write_file("s/.hidden.txt", "h");
    write_file("s/sub/d.txt", "d");
    write_file("s/sub/deeper/e.txt", "e");
    fs::create_directory("t");
    EXPECT_EQ(files_copy("s", "t", "*.txt", 0), 2); // case ignored, dotted name left
    EXPECT_EQ(read_file("t/b.TXT"), "b");
    EXPECT_FALSE(fs::exists("t/.hidden.txt"));
    EXPECT_EQ(files_copy("s", "t", "*.txt", 0), -2); // both exist: failures
    EXPECT_EQ(files_copy("s", "t", "*.*", 1), 3);
    EXPECT_EQ(files_copy("s", "t", "", 1 + 2), 5);
    EXPECT_EQ(read_file("t/sub/deeper/e.txt"), "e");

    // Read-only targets: cleared first unless 16 keeps them.
    ASSERT_EQ(set_read_only("t/a.txt"), -1);
    write_file("s/a.txt", "a2");
    EXPECT_EQ(files_copy("s", "t", "a.txt", 1 + 16), -1);
    EXPECT_EQ(read_file("t/a.txt"), "a");
    EXPECT_EQ(files_copy("s", "t", "a.txt", 1), 1);
    EXPECT_EQ(read_file("t/a.txt"), "a2");

    // A target inside the source is not copied into itself.
    // The target directory is missing: three files and one subdirectory fail.
    EXPECT_EQ(files_copy("s", "s\\sub\\copy", "*", 2), -4);
    fs::create_directory("s/sub/copy");
    EXPECT_EQ(files_copy("s", "s\\sub\\copy", "*", 2), 5); // a, b, c, sub\d, sub\deeper\e
    EXPECT_TRUE(fs::exists("s/sub/copy/sub/deeper/e.txt"));
    EXPECT_FALSE(fs::exists("s/sub/copy/sub/copy"));

    // Empty directory names are refused rather than read as the root.
    EXPECT_EQ(files_copy("", "t", "*", 3), 0);
    EXPECT_EQ(files_copy("s", "", "*", 3), 0);
}

TEST_F(Copy, SetMovesAndTheExtendedForms) {
    fs::create_directories("s/sub");
    write_file("s/a.txt", "a");
    write_file("s/sub/b.txt", "b");
    fs::create_directory("t");
    Bstr s("s"), t("t"), m("*");
    EXPECT_EQ(cFilesMoveExt(12345, s.ref(), t.ref(), m.ref(), 2), 2);
    EXPECT_FALSE(fs::exists("s/a.txt"));
    EXPECT_TRUE(fs::exists("s/sub")); // the directory stays behind
    EXPECT_EQ(read_file("t/sub/b.txt"), "b");
    EXPECT_EQ(cFilesMove(t.ref(), s.ref(), m.ref(), 0), 1);
    EXPECT_EQ(read_file("s/a.txt"), "a");
    EXPECT_EQ(cFilesCopyExt(0, s.ref(), t.ref(), m.ref(), 8), 1);
    EXPECT_EQ(read_file("t/a.txt"), "a");
}

TEST_F(Copy, SingleAndSetDeletes) {
    fs::create_directory("d");
    for (const char *n : {"d/a.bak", "d/b.bak", "d/c.txt", "d/ro.bak"})
        write_file(n, "x");
    fs::create_directory("d/x.bak");
    ASSERT_EQ(set_read_only("d/ro.bak"), -1);
    Bstr p("d\\*.bak");
    EXPECT_EQ(cKillFiles(p.ref()), 2); // not the directory, not the read-only file
    EXPECT_TRUE(fs::exists("d/ro.bak"));
    EXPECT_EQ(cKillFilesAll(p.ref()), 1);
    EXPECT_FALSE(fs::exists("d/ro.bak"));
    EXPECT_TRUE(fs::exists("d/c.txt"));
    EXPECT_TRUE(fs::exists("d/x.bak"));
    EXPECT_EQ(kill_file("d"), 13);

    Bstr dir("d"), sub("d\\x.bak"), mask("*.TXT");
    EXPECT_EQ(cKillDir(dir.ref()), 41);
    EXPECT_EQ(cKillDir(sub.ref()), -1);
    EXPECT_EQ(cKillDirFilesAll(dir.ref(), mask.ref()), 1);
    EXPECT_EQ(cKillDir(dir.ref()), -1);
    EXPECT_EQ(cKillDir(dir.ref()), 2);
}

TEST_F(Copy, TreeDeletes) {
    fs::create_directories("d/a/b");
    write_file("d/f1", "1");
    write_file("d/a/f2", "2");
    write_file("d/a/b/ro", "3");
    write_file("d/a/.keep", "4");
    ASSERT_EQ(set_read_only("d/a/b/ro"), -1);
    // Not forced: the read-only file stays, so b and a cannot go: 3 failures.
    EXPECT_EQ(kill_dirs("d", -1, false), -4);
    EXPECT_TRUE(fs::exists("d/a/b/ro"));
    EXPECT_FALSE(fs::exists("d/f1"));
    EXPECT_FALSE(fs::exists("d/a/f2"));
    // Forced: the read-only file goes; the dotted file keeps a and d.
    EXPECT_EQ(kill_dirs("d", -1, true), -2);
    EXPECT_FALSE(fs::exists("d/a/b"));
    EXPECT_TRUE(fs::exists("d/a/.keep"));
    fs::remove("d/a/.keep");
    EXPECT_EQ(kill_dirs("d", -1, true), 2); // a and d removed
    EXPECT_FALSE(fs::exists("d"));
    EXPECT_EQ(kill_dirs("d", -1, false), -1); // missing
}

// The tree deletes stay inside the directory they are given: "" and roots
// are refused, "." deletes below the current directory only.
TEST_F(Copy, TreeDeletesStayInsideTheirDirectory) {
    for (const char *root : {"", "\\", "/", "C:\\", "c:", "C:\\..", "\\\\server\\share"}) {
        SCOPED_TRACE(root);
        EXPECT_EQ(kill_dirs(root, 0, false), -1);
        EXPECT_EQ(kill_dirs(root, -1, true), -1);
        Bstr d(root), m("*");
        EXPECT_EQ(cKillDirFilesAll(d.ref(), m.ref()), -1);
    }
    EXPECT_EQ(cKillDirs(nullptr, -1), -1);
    write_file("keep", "k");
    fs::create_directories("inner/x");
    write_file("inner/x/f", "f");
    fs::current_path("inner");
    EXPECT_EQ(kill_dirs(".", 0, true), 1);
    fs::current_path("..");
    EXPECT_TRUE(fs::exists("inner"));
    EXPECT_TRUE(fs::is_empty("inner"));
    EXPECT_EQ(read_file("keep"), "k");
}

#ifndef _WIN32
TEST_F(Copy, TreeDeletesNeverFollowALinkOutOfTheTree) {
    fs::create_directories("outside/deep");
    write_file("outside/precious", "p");
    write_file("outside/deep/also", "a");
    write_file("outside/ro", "r");
    ASSERT_EQ(set_read_only("outside/ro"), -1);
    fs::create_directories("tree/sub");
    write_file("tree/sub/f", "f");
    fs::create_directory_symlink(fs::absolute("outside"), "tree/sub/link");
    fs::create_symlink(fs::absolute("outside/ro"), "tree/filelink");
    fs::create_directory_symlink(fs::absolute("outside"), "toplink");

    EXPECT_EQ(kill_dirs("toplink", 0, true), 0); // a link as the top is not entered
    EXPECT_EQ(kill_dirs("tree", -1, true), 3);   // sub/link, sub and tree removed
    EXPECT_FALSE(fs::exists("tree"));
    EXPECT_EQ(read_file("outside/precious"), "p");
    EXPECT_EQ(read_file("outside/deep/also"), "a");
    Bstr ro("outside/ro");
    EXPECT_EQ(cIsFileReadOnly(ro.ref()), -1); // forcing did not reach through the link
}
#endif

TEST_F(Copy, DirectoriesAreMade) {
    Bstr three("a\\b\\c"), again("a\\b\\c"), bad("a\\b\\"), one("x"), deep("y\\z");
    EXPECT_EQ(cMakeMultipleDir(three.ref()), -1);
    EXPECT_TRUE(fs::is_directory("a/b/c"));
    EXPECT_EQ(cMakeMultipleDir(again.ref()), -1);
    EXPECT_EQ(cMakeMultipleDir(bad.ref()), 2);
    EXPECT_EQ(cMakeMultipleDir(nullptr), 2);
    EXPECT_EQ(cMakeDir(one.ref()), -1);
    EXPECT_EQ(cMakeDir(one.ref()), 17);
    EXPECT_EQ(cMakeDir(deep.ref()), 2);
}
