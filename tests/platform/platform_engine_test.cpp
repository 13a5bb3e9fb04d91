// The platform file layer: Windows paths, runtime error numbers, and the
// Windows runtime's text mode on every platform.
#include "platform/file.h"
#include "runtime/text_mode.h"
#include "platform/clock.h"

#include "support/temp_dir.h"

#include <filesystem>
#include <string>

using namespace brindle::platform;
using namespace brindle::runtime;

namespace {

class FileTest : public brindle::test::TempDirTest {
  protected:
    static void put(const char *name, std::string_view bytes) { write_file(name, bytes); }
    static std::string get(const char *name) { return read_file(name); }
    static std::string read_text(const char *name, size_t chunk) {
        File f = File::open(name, OpenMode::Read);
        TextReader reader(f);
        std::string out, buf(chunk, '\0');
        for (;;) {
            const int64_t n = reader.read(buf.data(), buf.size());
            EXPECT_GE(n, 0);
            if (n <= 0)
                return out;
            out.append(buf.data(), static_cast<size_t>(n));
        }
    }
};

} // namespace

TEST(NativePath, WindowsPathsMapToPosix) {
#ifndef _WIN32
    EXPECT_EQ(native_path("C:\\data\\a.txt"), "/data/a.txt");
    EXPECT_EQ(native_path("\\data/a.txt"), "/data/a.txt");
    EXPECT_EQ(native_path("d:rel\\x"), "rel/x");
    EXPECT_EQ(native_path("sub\\file"), "sub/file");
    EXPECT_EQ(native_path("1:x"), "1:x") << "only a letter makes a drive";
#endif
}

TEST_F(FileTest, OpenReportsRuntimeErrorNumbers) {
    int error = -1;
    EXPECT_FALSE(File::open("missing.bin", OpenMode::Read, &error).is_open());
    EXPECT_EQ(error, kNoSuchFile);
    EXPECT_FALSE(File::open("nodir\\x.bin", OpenMode::Create, &error).is_open());
    EXPECT_EQ(error, kNoSuchFile);
    std::filesystem::create_directory("adir");
    EXPECT_FALSE(File::open("adir", OpenMode::Read, &error).is_open());
    EXPECT_EQ(error, kAccessDenied);
    put("there.bin", "x");
    EXPECT_FALSE(File::open("there.bin", OpenMode::CreateNew, &error).is_open());
    EXPECT_EQ(error, kFileExists);
    EXPECT_FALSE(File::open("", OpenMode::Read, &error).is_open());
}

TEST_F(FileTest, WholeFileHelpers) {
    put("a.bin", "hello");
    std::filesystem::create_directory("d");
    EXPECT_TRUE(file_exists("a.bin"));
    EXPECT_FALSE(file_exists("d"));
    EXPECT_TRUE(directory_exists(".\\d"));
    EXPECT_EQ(file_size("a.bin"), 5);
    EXPECT_EQ(file_size("d"), -1);
    EXPECT_EQ(file_size("none"), -1);
    EXPECT_FALSE(rename_file("a.bin", "d")) << "an existing target is refused";
    EXPECT_TRUE(rename_file("a.bin", "d\\b.bin"));
    EXPECT_EQ(get("d/b.bin"), "hello");
    EXPECT_TRUE(delete_if_exists("none"));
    EXPECT_TRUE(delete_if_exists("d\\b.bin"));
    EXPECT_FALSE(file_exists("d\\b.bin"));
    EXPECT_FALSE(delete_if_exists("d")) << "a directory is not deleted as a file";
}

TEST_F(FileTest, TextModeReadingFoldsPairsAndStopsAtCtrlZ) {
    put("t.txt", std::string("a\r\nb\rc\n\r\n\r\r\nend\x1A" "after", 20));
    for (size_t chunk : {1, 2, 3, 7, 4096})
        EXPECT_EQ(read_text("t.txt", chunk), "a\nb\rc\n\n\r\nend") << "chunk " << chunk;
    put("cr.txt", "x\r");
    EXPECT_EQ(read_text("cr.txt", 5), "x\r") << "a final lone CR is kept";
}

TEST_F(FileTest, TextModePairSplitAcrossBlocks) {
    // A CR at the last byte of a 32 KiB block pairs with the LF of the next.
    std::string data(32767, 'x');
    data += "\r\ny";
    put("big.txt", data);
    const std::string got = read_text("big.txt", 65536);
    ASSERT_EQ(got.size(), 32769u);
    EXPECT_EQ(got.substr(32767), "\ny");
}

TEST_F(FileTest, TextModeWritingExpandsLineFeeds) {
    {
        File f = File::open("w.txt", OpenMode::Create);
        TextWriter writer(f);
        ASSERT_TRUE(writer.write("a\nb\r\n", 5));
        std::string many(40000, '\n');
        ASSERT_TRUE(writer.write(many.data(), many.size()));
    }
    const std::string got = get("w.txt");
    EXPECT_EQ(got.substr(0, 7), "a\r\nb\r\r\n");
    EXPECT_EQ(got.size(), 7u + 80000u);
}

TEST(Clock, TicksAdvanceAndLocalTimeIsSane) {
    const uint32_t a = tick_count();
    const LocalTime now = local_now();
    EXPECT_GE(now.year, 2020);
    EXPECT_TRUE(now.month >= 1 && now.month <= 12);
    EXPECT_TRUE(now.millisecond >= 0 && now.millisecond <= 999);
    EXPECT_LT(static_cast<uint32_t>(tick_count() - a), 10000u);
}
