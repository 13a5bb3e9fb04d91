// The read-only rule across every family that writes files: text files,
// streams, cipher files and profile files refuse to open a read-only file
// for writing, the delete and replace exports leave it, and a read-only
// directory is not removed. The suite runs as root (CI, and Wine run as
// root), whom neither the permission bits nor Wine stop, so each refusal
// here is the library's own. Every refused call is paired with the same
// call on a writable file, which must succeed: the refusal is the read-only
// bit's doing and nothing else's.
#include "support/ole_helpers.h"
#include "support/system_attributes.h"
#include "support/temp_dir.h"

#include <filesystem>
#include <string>
#include <vector>

using namespace brindle::test;
namespace fs = std::filesystem;

namespace {

class ReadOnlyFiles : public TempDirTest {
  protected:
    // A file with `body`, made read-only through the library.
    void read_only(const std::string &name, const std::string &body) {
        write_file(name, body);
        Bstr n(name);
        ASSERT_EQ(cFileSetReadOnly(n.ref()), -1) << name;
        ASSERT_EQ(cIsFileReadOnly(n.ref()), -1) << name;
        made_.push_back(name);
    }
    // The attributes go again, so that the scratch directory can be removed
    // wherever the system keeps the rule itself.
    void TearDown() override {
        for (const std::string &name : made_) {
            Bstr n(name);
            cFileResetReadOnly(n.ref());
        }
        TempDirTest::TearDown();
    }
    std::vector<std::string> made_;
};

int32_t to_upper(const std::string &source, const std::string &target) {
    Bstr s(source), t(target);
    return cFileToUpper(s.val(), t.val());
}

int32_t stream_open(const std::string &path, const std::string &mode) {
    Bstr p(path), m(mode);
    return cFopen(p.val(), m.val());
}

int32_t encrypt_file(const std::string &source, const std::string &target) {
    Bstr s(source), t(target), k("0123456789abcdef0123456789abcdef"); // 32 bytes: a 256-bit key
    return cRIJNDAELencryptFile(s.val(), t.val(), k.ref());
}

int32_t put_ini(const std::string &file, const std::string &value) {
    Bstr s("main"), k("key"), v(value), f(".\\" + file);
    return cPutIni(s.val(), k.val(), v.val(), f.val());
}

int32_t search_and_replace(const std::string &file) {
    Bstr f(file), s("old"), w("new"), reserved("");
    return cFileSearchAndReplace(f.val(), s.val(), w.val(), reserved.val(), 0);
}

} // namespace

TEST_F(ReadOnlyFiles, WriteOpensAreRefusedInEveryFamily) {
    write_file("src", "some text");
    read_only("ro.txt", "old body");
    read_only("ro.ini", "[main]\r\nkey=old\r\n");
    write_file("rw.ini", "[main]\r\nkey=old\r\n");

    // Text files: the target is created with the block copy's code.
    EXPECT_EQ(to_upper("src", "rw.txt"), 9);
    EXPECT_EQ(read_file("rw.txt"), "SOME TEXT");
    EXPECT_EQ(to_upper("src", "ro.txt"), -32751);

    // Streams: every mode that writes is refused; reading is not.
    for (const char *mode : {"w", "wb", "a", "ab", "r+", "w+", "a+"}) {
        SCOPED_TRACE(mode);
        const int32_t rw = stream_open("rw.txt", mode);
        EXPECT_NE(rw, 0);
        cFclose(rw);
        EXPECT_EQ(stream_open("ro.txt", mode), 0);
    }
    const int32_t reader = stream_open("ro.txt", "r");
    EXPECT_NE(reader, 0);
    cFclose(reader);

    // Cipher files: -22, the target's code, and the target is not deleted.
    EXPECT_GT(encrypt_file("src", "rw.enc"), 0);
    EXPECT_EQ(encrypt_file("src", "ro.txt"), -22);

    // Profile files: the write reports failure.
    EXPECT_NE(put_ini("rw.ini", "new"), 0);
    EXPECT_EQ(put_ini("ro.ini", "new"), 0);

    EXPECT_EQ(read_file("ro.txt"), "old body");
    EXPECT_EQ(read_file("ro.ini"), "[main]\r\nkey=old\r\n");
}

// A rewrite in place puts a new file in the old one's place: a read-only
// one keeps its place and its bytes.
TEST_F(ReadOnlyFiles, ReplacementsAreRefused) {
    write_file("rw.txt", "an old word");
    read_only("ro.txt", "an old word");
    EXPECT_EQ(search_and_replace("rw.txt"), 1);
    EXPECT_EQ(read_file("rw.txt"), "an new word");
    EXPECT_EQ(search_and_replace("ro.txt"), -32750);
    EXPECT_EQ(read_file("ro.txt"), "an old word");
    // The system's copy and move onto a read-only file: see the copy tests.
}

TEST_F(ReadOnlyFiles, DeletesLeaveReadOnlyFiles) {
    fs::create_directories("tree/sub");
    write_file("tree/rw.dat", "a");
    read_only("tree/ro.dat", "b");
    write_file("tree/sub/rw.dat", "c");
    read_only("tree/sub/ro.dat", "d");
    read_only("alone.dat", "e");

    Bstr alone("alone.dat"), pattern("tree\\*.dat"), tree("tree"), mask("*.dat"), sub("tree\\sub");
    EXPECT_EQ(cKillFile(alone.ref()), 13);
    EXPECT_EQ(cKillFiles(pattern.ref()), 1); // rw.dat only
    write_file("tree/rw.dat", "a");          // again, for the tree delete below
    EXPECT_EQ(cKillDirFilesAll(sub.ref(), mask.ref()), -1); // one failure, rw.dat deleted
    EXPECT_FALSE(fs::exists("tree/sub/rw.dat"));
    // The tree delete leaves both read-only files, so no directory goes.
    EXPECT_LT(cKillDirs(tree.ref(), -1), 0);
    EXPECT_FALSE(fs::exists("tree/rw.dat"));
    for (const char *name : {"alone.dat", "tree/ro.dat", "tree/sub/ro.dat"})
        EXPECT_TRUE(fs::exists(name)) << name;
    EXPECT_EQ(read_file("tree/sub/ro.dat"), "d");
}

TEST_F(ReadOnlyFiles, ReadOnlyDirectoriesAreNotRemoved) {
    fs::create_directories("empty");
    fs::create_directories("top/inner");
    Bstr empty("empty"), top("top"), inner("top\\inner");
    if (!system_keeps_read_only_directories()) {
        // Wine keeps no read-only bit on a directory: the setter says so
        // and the directory stays removable.
        EXPECT_EQ(cFileSetReadOnly(empty.ref()), 0);
        EXPECT_EQ(cIsFileReadOnly(empty.ref()), 0);
        EXPECT_EQ(cKillDir(empty.ref()), -1);
        return;
    }
    ASSERT_EQ(cFileSetReadOnly(empty.ref()), -1);
    EXPECT_EQ(cKillDir(empty.ref()), 13);
    EXPECT_TRUE(fs::is_directory("empty"));
    // In a tree: the read-only subdirectory stays (one failure), and so
    // does the top, which is not empty then.
    ASSERT_EQ(cFileSetReadOnly(inner.ref()), -1);
    EXPECT_LT(cKillDirs(top.ref(), -1), 0);
    EXPECT_TRUE(fs::is_directory("top/inner"));
    // Cleared again, both go.
    EXPECT_EQ(cFileResetReadOnly(empty.ref()), -1);
    EXPECT_EQ(cKillDir(empty.ref()), -1);
    EXPECT_EQ(cFileResetReadOnly(inner.ref()), -1);
    EXPECT_EQ(cKillDirs(top.ref(), -1), 2);
    EXPECT_FALSE(fs::exists("top"));
}
