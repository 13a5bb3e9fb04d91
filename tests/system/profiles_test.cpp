// Profile files through the exported interface. The same tables run on
// Linux against the library's own reader and writer and under Wine against
// the system's profile calls; the expected answers are worked out by hand
// from the file rules in each row's comment.
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

using namespace brindle::test;
namespace fs = std::filesystem;

namespace {

// Relative names with a backslash are taken against the current directory;
// a bare name would mean the Windows directory.
const char *const kFile = ".\\t.ini";

std::string get_ini(std::string_view section, std::string_view key, std::string_view fallback,
                    std::string_view file = kFile) {
    Bstr s(section), k(key), d(fallback), f(file);
    return str(cGetIni(s.val(), k.val(), d.val(), f.val()));
}

int32_t put_ini(std::string_view section, std::string_view key, std::string_view value,
                std::string_view file = kFile) {
    Bstr s(section), k(key), v(value), f(file);
    return cPutIni(s.val(), k.val(), v.val(), f.val());
}

std::pair<std::string, int16_t> items(std::string_view section, std::string_view file = kFile) {
    Bstr s(section), f(file);
    int16_t count = -7;
    std::string text = str(cGetSectionItems(s.val(), f.val(), &count));
    return {text, count};
}

std::pair<std::string, int16_t> sections(std::string_view file = kFile) {
    Bstr f(file);
    int16_t count = -7;
    std::string text = str(cGetSectionIni(f.val(), &count));
    return {text, count};
}

// Each table row gets a file of its own: the system keeps parsed copies of
// recently used profile files and may not notice a file rewritten within
// the same tick of the file clock.
class Profiles : public TempDirTest {
  protected:
    std::string fresh(std::string_view content) {
        const std::string name = "r" + std::to_string(rows_++) + ".ini";
        write_file(name, content);
        return ".\\" + name;
    }
    static std::string native(const std::string &file) { return file.substr(2); }
    int rows_ = 0;
};

} // namespace

TEST_F(Profiles, ValuesReadByTheFileRules) {
    struct Row {
        const char *file, *section, *key, *fallback, *expected, *why;
    };
    const std::string long_value(3000, 'v');
    const Row rows[] = {
        {"[a]\r\nx=1\r\ny=2\r\n", "a", "y", "d", "2", "CR LF lines"},
        {"[a]\nx=1\ny=2\n", "a", "y", "d", "2", "LF lines"},
        {"[a]\r\nx=1\r\ny=2", "a", "y", "d", "2", "no line end after the last line"},
        {"  [a]  \r\n  x  =  two words  \r\n", "a", "x", "d", "two words", "spaces around names and values"},
        {"[a]\r\n\tx\t=\tv\t\r\n", "a", "x", "d", "v", "tabs count as spaces"},
        {"[Alpha]\r\nKey=v\r\n", "ALPHA", "kEY", "d", "v", "names compared without case"},
        {"[a]\r\nx=1\r\n", " a ", " x ", "d", "1", "spaces around the asked names"},
        {"[a]\r\nq=\"two words\"\r\n", "a", "q", "d", "two words", "double quotes dropped"},
        {"[a]\r\nq='v'\r\n", "a", "q", "d", "v", "single quotes dropped"},
        {"[a]\r\nq=\"v'\r\n", "a", "q", "d", "\"v'", "quotes that do not match stay"},
        {"[a]\r\nq=a\"b\"\r\n", "a", "q", "d", "a\"b\"", "only quotes around the whole value go"},
        {"[a]\r\nq=\"\r\n", "a", "q", "d", "\"", "a lone quote stays"},
        {"[a]\r\n;x=1\r\nx=2\r\n", "a", "x", "d", "2", "a comment is no key"},
        {"[a]\r\nx=1\r\nx=2\r\n", "a", "x", "d", "1", "the first of two keys"},
        {"[a]\r\nx=1\r\n[b]\r\n[a]\r\nx=2\r\nz=3\r\n", "a", "x", "d", "1", "the first of two sections"},
        {"[a]\r\nx=1\r\n[b]\r\n[a]\r\nx=2\r\nz=3\r\n", "a", "z", "d", "d", "a repeated section is not read"},
        {"\r\n\r\n[a]\r\n\r\n\r\nx=1\r\n\r\n", "a", "x", "d", "1", "blank lines"},
        {"x=0\r\n[a]\r\nx=1\r\n", "a", "x", "d", "1", "keys before any section"},
        {"[a]\r\nx=p=q\r\n", "a", "x", "d", "p=q", "the first = splits"},
        {"[a]\r\nx=\r\n", "a", "x", "d", "", "an empty value is no default"},
        {"[a]\r\nx\r\n", "a", "x", "d", "d", "a line without = has no value"},
        {"[a] tail\r\nx=1\r\n", "a", "x", "d", "1", "text after ] is ignored"},
        {"[b]\r\n[a\r\nx=1\r\n", "b", "x", "d", "1", "[ without ] is a key line"},
        {"[a]\r\nx=1\r\n", "b", "x", "d", "d", "missing section"},
        {"[a]\r\nx=1\r\n", "a", "y", "dflt   ", "dflt", "trailing spaces of the default go"},
        {"[a]\r\nx=1\r\n", "a", "y", "\"q\"", "q", "a quoted default loses its quotes"},
        {"[a]\r\nx=1\r\n", "a", "", "d", "d", "an empty key gives the default"},
        {"[a]\r\nx=1\r\n", "", "x", "d", "d", "an empty section gives the default"},
        {"\xEF\xBB\xBF[a]\r\nx=1\r\n", "a", "x", "d", "1", "a UTF-8 byte-order mark"},
    };
    for (const Row &r : rows) {
        EXPECT_EQ(get_ini(r.section, r.key, r.fallback, fresh(r.file)), r.expected) << r.why;
    }
    // A value longer than the 2,048-byte buffer is cut at 2,047 bytes.
    EXPECT_EQ(get_ini("a", "x", "d", fresh("[a]\r\nx=" + long_value + "\r\n")), long_value.substr(0, 2047));
    // A missing file, or one in a missing directory: the default.
    EXPECT_EQ(get_ini("a", "x", "d", ".\\none.ini"), "d");
    EXPECT_EQ(get_ini("a", "x", "d", ".\\nodir\\none.ini"), "d");
}

TEST_F(Profiles, SectionItemsAndSectionLists) {
    struct Row {
        const char *file, *section, *items;
        int16_t count;
        const char *why;
    };
    const Row rows[] = {
        {"[a]\r\nx=1\r\ny=2\r\n", "a", "x=1\ry=2\r", 2, "two keys"},
        {"[a]\r\n;c=0\r\nbare\r\n x = \"1\" \r\n\r\ny=2", "a", "x=1\ry=2\r", 2,
         "comments and lines without = left out, quotes dropped"},
        {"[a]\r\nx=1\r\nX=2\r\n", "a", "x=1\rX=1\r", 2, "a repeated key listed twice with the first value"},
        {"[a]\r\nx=\r\n", "a", "x=\r", 1, "an empty value"},
        {"[a]\r\n[b]\r\nx=1\r\n", "a", "", 0, "an empty section"},
        {"[a]\r\nx=1\r\n", "b", "", 0, "a missing section"},
        {"[A]\r\nx=1\r\n[a]\r\ny=2\r\n", "a", "x=1\r", 1, "the first of two sections"},
    };
    for (const Row &r : rows) {
        const auto got = items(r.section, fresh(r.file));
        EXPECT_EQ(got.first, r.items) << r.why;
        EXPECT_EQ(got.second, r.count) << r.why;
    }
    // Each value is read into 256 bytes.
    EXPECT_EQ(items("a", fresh("[a]\r\nx=" + std::string(300, 'v') + "\r\n")).first, "x=" + std::string(255, 'v') + "\r");

    struct ListRow {
        const char *file, *names;
        int16_t count;
        const char *why;
    };
    const ListRow lists[] = {
        {"[a]\r\nx=1\r\n[b]\r\n[c]\r\n", "a\rb\rc", 2, "the count is the separators"},
        {"[a]\r\n", "a", 0, "one section"},
        {"x=1\r\n", "", 0, "no section"},
        {"[a]\r\n[A]\r\n", "a\rA", 1, "a repeated section listed twice"},
        {"[]\r\n[b]\r\n", "b", 0, "an empty name is no section"},
        {"[ s p ]\r\n", "s p", 0, "spaces inside the brackets go"},
    };
    for (const ListRow &r : lists) {
        const auto got = sections(fresh(r.file));
        EXPECT_EQ(got.first, r.names) << r.why;
        EXPECT_EQ(got.second, r.count) << r.why;
    }
    EXPECT_EQ(sections(".\\none.ini"), std::make_pair(std::string(), int16_t{0}));
    EXPECT_EQ(items("a", ".\\none.ini"), std::make_pair(std::string(), int16_t{0}));
}

TEST_F(Profiles, WritesKeepTheRestOfTheFile) {
    // Each row starts from `file`, makes one write, and reads back.
    struct Row {
        const char *file, *section, *key, *value;
        const char *read_section, *read_key, *expected;
        const char *items_of_a;
        const char *why;
    };
    const char *base = "; top\r\n[a]\r\nx=1\r\ny=2\r\n\r\n[b]\r\nz=3\r\n";
    const Row rows[] = {
        {base, "a", "x", "9", "a", "x", "9", "x=9\ry=2\r", "replace a value"},
        {base, "A", "X", "9", "a", "x", "9", "x=9\ry=2\r", "replace without regard to case"},
        {base, "a", "w", "4", "b", "z", "3", "x=1\ry=2\rw=4\r", "a new key goes to its own section"},
        {base, "c", "w", "4", "c", "w", "4", "x=1\ry=2\r", "a new section"},
        {base, "a", "x", "", "a", "x", "d", "y=2\r", "an empty value deletes the key"},
        {base, "a", "", "", "a", "x", "d", "", "an empty key deletes the section"},
        {base, "a", "", "", "b", "z", "3", "", "the next section stays"},
        {base, "a", "x", "   v", "a", "x", "v", "x=v\ry=2\r", "leading spaces of a value go"},
        {"[a]\r\nx=1", "a", "y", "2", "a", "x", "1", "x=1\ry=2\r", "after a last line without line end"},
        {"[a]\nx=1\n", "a", "x", "2", "a", "x", "2", "x=2\r", "an LF file"},
        {"[a]\r\nx=1\r\nx=2\r\n", "a", "x", "3", "a", "x", "3", "x=3\rx=3\r", "the first of two keys"},
        {"[a]\r\nx\r\n", "a", "x", "5", "a", "x", "5", "x=5\r", "a line without = gets a value"},
    };
    for (const Row &r : rows) {
        const std::string file = fresh(r.file);
        EXPECT_NE(put_ini(r.section, r.key, r.value, file), 0) << r.why;
        EXPECT_EQ(get_ini(r.read_section, r.read_key, "d", file), r.expected) << r.why;
        EXPECT_EQ(items("a", file).first, r.items_of_a) << r.why;
        // The comment line outside any section is never lost.
        if (r.file == base) {
            EXPECT_NE(read_file(native(file)).find("; top\r\n"), std::string::npos) << r.why;
        }
    }

    // A new file is made with CR LF lines.
    EXPECT_NE(put_ini("s", "k", "v"), 0);
    EXPECT_NE(read_file("t.ini").find("k=v\r\n"), std::string::npos);
    EXPECT_EQ(sections().first, "s");
    // Deleting from a missing file makes none.
    EXPECT_NE(put_ini("s", "k", "", ".\\gone.ini"), 0);
    EXPECT_NE(put_ini("s", "", "", ".\\gone.ini"), 0);
    EXPECT_FALSE(fs::exists("gone.ini"));
    // A file in a missing directory cannot be written.
    EXPECT_EQ(put_ini("s", "k", "v", ".\\nodir\\t.ini"), 0);
    // The flush reports 0, and the file is as written.
    Bstr f(kFile);
    EXPECT_EQ(cFlushIni(f.val()), 0);
    EXPECT_EQ(get_ini("s", "k", "d"), "v");
}

TEST_F(Profiles, LargeSectionsStayWithinTheirBuffers) {
    // 100,000 keys k00000..k99999 of 6 characters: the key list of 16,384
    // bytes holds 2,340 whole names (7 bytes each with their zero) and a cut
    // one; the cut name has no value, so the default "?" comes back for it.
    std::string text = "[big]\r\n";
    char line[32];
    for (int i = 0; i < 100000; ++i) {
        std::snprintf(line, sizeof line, "k%05d=v\r\n", i);
        text += line;
    }
    const std::string file = fresh(text);
    const auto got = items("big", file);
    EXPECT_EQ(got.second, 2341);
    std::string expected;
    for (int i = 0; i < 2340; ++i) {
        std::snprintf(line, sizeof line, "k%05d=v\r", i);
        expected += line;
    }
    // 16,384 - 2 bytes of list, less 2,340 x 7, leave 2 characters of "k02340".
    expected += "k0=?\r";
    EXPECT_EQ(got.first, expected);
    EXPECT_EQ(get_ini("big", "k99999", "d", file), "v");
}

TEST_F(Profiles, DirectoriesAndBareNames) {
    const std::string system = str(cGetSystemDirectory());
    std::string windows = str(cGetWindowsDirectory());
#ifndef _WIN32
    // The Linux stand-in is the configuration directory; point it here.
    const std::string saved = std::getenv("XDG_CONFIG_HOME") ? std::getenv("XDG_CONFIG_HOME") : "";
    const fs::path config = dir_ / "config";
    setenv("XDG_CONFIG_HOME", config.string().c_str(), 1);
    windows = str(cGetWindowsDirectory());
    std::string expected_windows = "C:" + config.string();
    for (char &c : expected_windows)
        if (c == '/')
            c = '\\';
    EXPECT_EQ(windows, expected_windows);
    EXPECT_EQ(system, "C:\\usr\\lib");
#endif
    for (const std::string &d : {system, windows}) {
        ASSERT_GE(d.size(), 3u) << d;
        EXPECT_EQ(d.substr(1, 2), ":\\") << d;
        EXPECT_NE(d.back(), '\\') << d;
    }
    // A bare file name lives in the Windows directory.
    const std::string bare =
        "brindle-" + std::to_string(std::chrono::steady_clock::now().time_since_epoch().count() % 1000000007) + ".ini";
    EXPECT_NE(put_ini("s", "k", "here", bare), 0);
    EXPECT_EQ(get_ini("s", "k", "d", windows + "\\" + bare), "here");
    EXPECT_EQ(get_ini("s", "k", "d", bare), "here");
#ifdef _WIN32
    std::error_code ignored;
    fs::remove(windows + "\\" + bare, ignored);
#else
    if (saved.empty())
        unsetenv("XDG_CONFIG_HOME");
    else
        setenv("XDG_CONFIG_HOME", saved.c_str(), 1);
#endif
}

#ifndef _WIN32
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// The file as it must be after k has been set to `value`: the original
// with its one line "k=..." replaced.
std::string version_with(const std::string &head, const std::string &tail, const std::string &value) {
    return head + "k=" + value + "\r\n" + tail;
}

} // namespace

TEST_F(Profiles, AKilledWriterLeavesTheOldOrTheNewFile) {
    // Many lines make each rewrite take long enough to be cut in the middle.
    std::string head = "[s]\r\n", tail;
    for (int i = 0; i < 4000; ++i)
        tail += "filler" + std::to_string(i) + "=" + std::string(40, 'x') + "\r\n";
    write_file("t.ini", version_with(head, tail, "start"));
    for (int round = 0; round < 40; ++round) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (int i = 0;; ++i)
                put_ini("s", "k", "v" + std::to_string(i));
        }
        usleep(static_cast<useconds_t>(500 + round * 700));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        const std::string now = read_file("t.ini");
        // Whatever value it holds, the rest of the file is intact.
        const size_t at = now.find("k=");
        ASSERT_NE(at, std::string::npos) << "round " << round;
        const size_t end = now.find("\r\n", at);
        ASSERT_NE(end, std::string::npos) << "round " << round;
        const std::string value = now.substr(at + 2, end - at - 2);
        EXPECT_EQ(now, version_with(head, tail, value)) << "round " << round;
        EXPECT_EQ(get_ini("s", "filler3999", "d"), std::string(40, 'x')) << "round " << round;
    }
}

TEST_F(Profiles, TwoWritersKeepBothValues) {
    write_file("t.ini", "[s]\r\n");
    pid_t children[2];
    for (int w = 0; w < 2; ++w) {
        children[w] = fork();
        ASSERT_GE(children[w], 0);
        if (children[w] == 0) {
            const std::string key = "w" + std::to_string(w);
            int bad = 0;
            // A lost update shows as the writer's own last value gone.
            for (int i = 0; i < 150; ++i) {
                if (i > 0)
                    bad += get_ini("s", key, "lost") != std::to_string(i - 1);
                bad += put_ini("s", key, std::to_string(i)) == 0;
            }
            _exit(bad == 0 ? 0 : 1);
        }
    }
    for (const pid_t child : children) {
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    EXPECT_EQ(get_ini("s", "w0", "lost"), "149");
    EXPECT_EQ(get_ini("s", "w1", "lost"), "149");
    EXPECT_EQ(items("s").second, 2);
}
#endif
