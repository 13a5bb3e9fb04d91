// The file layer as the families use it, identical on POSIX and Windows:
// positions, sizes, truncation, appending, bytes passed untranslated, closed
// handles, and absolute Windows paths.
#include "platform/file.h"

#include "support/temp_dir.h"

#include <filesystem>
#include <string>

using namespace brindle::platform;

namespace {

class FileLayer : public brindle::test::TempDirTest {
  protected:
    static std::string read_all(File &f) {
        std::string out(4096, '\0');
        const int64_t n = f.read(out.data(), out.size());
        EXPECT_GE(n, 0);
        out.resize(n > 0 ? static_cast<size_t>(n) : 0);
        return out;
    }

    // The scratch directory as a Windows path: "C:\tmp\..." on POSIX (the
    // drive maps to the root), the system's own form on Windows.
    std::string windows_dir() const {
#ifdef _WIN32
        return dir_.string();
#else
        std::string s = "C:" + dir_.string();
        for (char &c : s)
            if (c == '/')
                c = '\\';
        return s;
#endif
    }
};

} // namespace

TEST_F(FileLayer, BytesPassUntranslated) {
    // Binary files: no CR/LF translation and no end of data at Ctrl-Z, which
    // a descriptor left in the Windows runtime's text mode would apply.
    const std::string bytes("a\nb\r\n\x1A" "z\0\r", 9);
    {
        File f = File::open("b.bin", OpenMode::Create);
        ASSERT_TRUE(f.is_open());
        ASSERT_TRUE(f.write(bytes.data(), bytes.size()));
        EXPECT_EQ(f.size(), 9);
        EXPECT_TRUE(f.close());
    }
    EXPECT_EQ(read_file("b.bin"), bytes);
    EXPECT_EQ(file_size("b.bin"), 9);
    File f = File::open("b.bin", OpenMode::Read);
    EXPECT_EQ(read_all(f), bytes);
}

TEST_F(FileLayer, PositionsSizesAndTruncation) {
    File f = File::open("p.bin", OpenMode::CreateReadWrite);
    ASSERT_TRUE(f.is_open());
    ASSERT_TRUE(f.write("0123456789", 10));
    EXPECT_EQ(f.tell(), 10);
    ASSERT_TRUE(f.seek(3));
    EXPECT_EQ(f.tell(), 3);
    char four[4];
    ASSERT_EQ(f.read(four, 4), 4);
    EXPECT_EQ(std::string(four, 4), "3456");
    EXPECT_FALSE(f.seek(-1)) << "a negative position is refused";
    EXPECT_EQ(f.tell(), 7) << "and leaves the position alone";
    ASSERT_TRUE(f.seek(8));
    EXPECT_EQ(read_all(f), "89") << "a read stops short at the end";
    EXPECT_EQ(read_all(f), "") << "and then reads nothing";
    EXPECT_TRUE(f.truncate(5));
    EXPECT_EQ(f.size(), 5);
    EXPECT_FALSE(f.truncate(-1));
    EXPECT_TRUE(f.truncate(12)) << "truncating upwards extends with zeros";
    ASSERT_TRUE(f.seek(0));
    EXPECT_EQ(read_all(f), std::string("01234\0\0\0\0\0\0\0", 12));
    EXPECT_TRUE(f.flush());
    EXPECT_TRUE(f.close());
}

TEST_F(FileLayer, ClosedHandlesRefuseEverything) {
    File never;
    File f = File::open("c.bin", OpenMode::Create);
    ASSERT_TRUE(f.close());
    for (File *h : {&never, &f}) {
        char c = 0;
        EXPECT_FALSE(h->is_open());
        EXPECT_EQ(h->read(&c, 1), -1);
        EXPECT_FALSE(h->write("x", 1));
        EXPECT_FALSE(h->seek(0));
        EXPECT_EQ(h->tell(), -1);
        EXPECT_EQ(h->size(), -1);
        EXPECT_FALSE(h->truncate(0));
        EXPECT_FALSE(h->flush());
        EXPECT_TRUE(h->close()) << "closing twice is harmless";
    }
}

TEST_F(FileLayer, MovedHandlesKeepOneOwner) {
    File a = File::open("m.bin", OpenMode::Create);
    ASSERT_TRUE(a.is_open());
    File b(std::move(a));
    EXPECT_FALSE(a.is_open());
    ASSERT_TRUE(b.write("xy", 2));
    File c = File::open("n.bin", OpenMode::Create);
    c = std::move(b); // closes n.bin, takes m.bin
    EXPECT_FALSE(b.is_open());
    ASSERT_TRUE(c.write("z", 1));
    EXPECT_TRUE(c.close());
    EXPECT_EQ(read_file("m.bin"), "xyz");
    EXPECT_TRUE(delete_file("n.bin")) << "n.bin was closed by the assignment";
}

TEST_F(FileLayer, OpenModes) {
    write_file("o.bin", "abc");
    {
        File f = File::open("o.bin", OpenMode::Append);
        ASSERT_TRUE(f.seek(0));
        ASSERT_TRUE(f.write("d", 1));
    }
    EXPECT_EQ(read_file("o.bin"), "abcd") << "appending writes at the end wherever the position is";
    {
        File f = File::open("new.bin", OpenMode::Append);
        ASSERT_TRUE(f.write("e", 1));
    }
    EXPECT_EQ(read_file("new.bin"), "e") << "appending creates a missing file";
    {
        File f = File::open("o.bin", OpenMode::ReadWrite);
        ASSERT_TRUE(f.write("X", 1));
    }
    EXPECT_EQ(read_file("o.bin"), "Xbcd") << "read-write keeps the content";
    {
        File f = File::open("o.bin", OpenMode::Read);
        EXPECT_FALSE(f.write("Y", 1)) << "a file opened for reading is not written";
    }
    {
        File f = File::open("o.bin", OpenMode::Create);
        ASSERT_TRUE(f.is_open());
    }
    EXPECT_EQ(file_size("o.bin"), 0) << "create truncates";
    int error = -1;
    EXPECT_FALSE(File::open("none.bin", OpenMode::ReadWrite, &error).is_open());
    EXPECT_EQ(error, kNoSuchFile);
    EXPECT_TRUE(File::open("fresh.bin", OpenMode::CreateNew, &error).is_open());
    EXPECT_EQ(error, kNoError);
    EXPECT_FALSE(File::open(std::string("a\0b", 3), OpenMode::Create, &error).is_open());
    EXPECT_EQ(error, kInvalid) << "a name with a zero byte never reaches the system";
    EXPECT_FALSE(file_exists("a"));
}

TEST_F(FileLayer, AbsoluteWindowsPaths) {
    const std::string dir = windows_dir();
    for (const std::string &name : {dir + "\\abs.bin", dir + "/abs.bin"}) {
        SCOPED_TRACE(name);
        int error = -1;
        File f = File::open(name, OpenMode::Create, &error);
        ASSERT_TRUE(f.is_open()) << error;
        ASSERT_TRUE(f.write("1234", 4));
        ASSERT_TRUE(f.close());
        EXPECT_TRUE(file_exists(name));
        EXPECT_EQ(file_size(name), 4);
        EXPECT_TRUE(directory_exists(dir));
        EXPECT_TRUE(rename_file(name, dir + "\\moved.bin"));
        EXPECT_EQ(read_file("moved.bin"), "1234");
        EXPECT_TRUE(delete_file(dir + "\\moved.bin"));
        EXPECT_FALSE(delete_file(dir + "\\moved.bin")) << "a second delete finds nothing";
    }
}
