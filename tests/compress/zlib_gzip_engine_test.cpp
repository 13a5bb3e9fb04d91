// zlib strings against Python's zlib, and the gzip file coders: round trips,
// the gzip magic, and a stream cut short.
#include "compress/gzip_files.h"
#include "compress/zlib_strings.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace brindle::compress;
namespace platform = brindle::platform;

TEST(ZlibStringsEngine, KnownAnswerAndLimits) {
    std::string out;
    ASSERT_TRUE(zlib_compress("hello", 2, out));
    // Python: zlib.compress(b"hello").hex(), after two bytes of room.
    EXPECT_EQ(out.substr(2), std::string("\x78\x9c\xcb\x48\xcd\xc9\xc9\x07\x00\x06\x2c\x02\x15", 13));
    std::string back;
    ASSERT_TRUE(zlib_expand(out.substr(2), 5, back));
    EXPECT_EQ(back, "hello");
    back.clear();
    EXPECT_FALSE(zlib_expand(out.substr(2), 4, back)); // one byte over the limit
    back.clear();
    EXPECT_FALSE(zlib_expand(out.substr(2, 8), 100, back)); // cut short
    back.clear();
    EXPECT_TRUE(zlib_expand(out.substr(2) + "trailing", 5, back)); // bytes after the end ignored
    EXPECT_EQ(back, "hello");
}

TEST(ZlibStringsEngine, RoundTripsLargeData) {
    std::mt19937 gen(1);
    std::string data(300000, '\0');
    for (char &c : data)
        c = static_cast<char>('a' + gen() % 4);
    std::string packed, back;
    ASSERT_TRUE(zlib_compress(data, 0, packed));
    EXPECT_LT(packed.size(), data.size() / 2);
    ASSERT_TRUE(zlib_expand(packed, data.size(), back));
    EXPECT_EQ(back, data);
}

class GzipFilesEngine : public brindle::test::TempDirTest {};

TEST_F(GzipFilesEngine, RoundTripMagicAndCutStream) {
    std::mt19937 gen(2);
    std::string data(200000, '\0');
    for (char &c : data)
        c = static_cast<char>(gen() % 16);
    write_file("plain.bin", data);
    {
        platform::File in = platform::File::open("plain.bin", platform::OpenMode::Read);
        GzipFile out("packed.gz", "wb");
        ASSERT_TRUE(in.is_open() && out.is_open());
        ASSERT_TRUE(gzip_compress_file(in, out));
        EXPECT_TRUE(out.close());
    }
    const std::string packed = read_file("packed.gz");
    EXPECT_EQ(packed.substr(0, 2), "\x1f\x8b"); // the gzip magic (RFC 1952)

    // Expands `source` into back.bin: the coder's result and the close's.
    const auto expand = [](const char *source, bool *closed) {
        GzipFile in(source, "rb");
        platform::File out = platform::File::open("back.bin", platform::OpenMode::Create);
        const bool ok = in.is_open() && gzip_expand_file(in, out);
        *closed = close_coder_input(in);
        return ok;
    };
    bool closed = false;
    EXPECT_TRUE(expand("packed.gz", &closed));
    EXPECT_TRUE(closed);
    EXPECT_EQ(read_file("back.bin"), data);

    write_file("cut.gz", packed.substr(0, packed.size() / 2));
    expand("cut.gz", &closed);
    EXPECT_FALSE(closed); // cut short: the reader's close reports it
    EXPECT_FALSE(GzipFile("missing.gz", "rb").is_open());
    std::filesystem::create_directory("dir.gz");
    EXPECT_FALSE(GzipFile("dir.gz", "rb").is_open());
}
