// Gzip files and zlib strings through the exports, with zlib's own compress()
// and the gzip tool as oracles.
#include "compress/compress_files.h"

#include <zlib.h>

#include <cstdlib>
#include <fstream>
#include <random>
#include <string>

using namespace brindle::test;

namespace {

class GzipFiles : public TempDirTest {
  protected:
    void SetUp() override {
        TempDirTest::SetUp();
        if (!tool_available("gzip"))
            GTEST_SKIP() << "the gzip tool is not installed";
    }
    static int shell(const std::string &command) { return std::system(command.c_str()); }
};

std::string zlib_compress(const std::string &text) {
    uLongf size = compressBound(static_cast<uLong>(text.size()));
    std::string out(size, '\0');
    EXPECT_EQ(compress(reinterpret_cast<Bytef *>(out.data()), &size, reinterpret_cast<const Bytef *>(text.data()),
                       static_cast<uLong>(text.size())),
              Z_OK);
    out.resize(size);
    return out;
}

std::string le32(uint32_t n) {
    return {static_cast<char>(n), static_cast<char>(n >> 8), static_cast<char>(n >> 16), static_cast<char>(n >> 24)};
}

#if defined(__linux__)
// A field of /proc/self/status in KiB, or -1.
long status_kib(const std::string &field) {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind(field + ":", 0) == 0)
            return std::strtol(line.c_str() + field.size() + 1, nullptr, 10);
    return -1;
}

// Starts measuring the peak resident memory afresh; false where the system
// does not allow it.
bool reset_peak_memory() {
    std::ofstream("/proc/self/clear_refs") << "5";
    const long peak = status_kib("VmHWM"), now = status_kib("VmRSS");
    return peak >= 0 && now >= 0 && peak <= now + 1024;
}
#endif

} // namespace

TEST(GzipStrings, CompressIsZlibsCompressAndThePrefixIsTheLength) {
    for (Kind kind : {Kind::Same, Kind::Text, Kind::Random})
        for (size_t size : {1, 2, 1000, 65536, 300001}) {
            const std::string text = make_input(kind, size, 41);
            const std::string plain = call_text(cGZIPStringCompress, text);
            EXPECT_TRUE(plain == zlib_compress(text)) << kind_name(kind) << " " << size;
            EXPECT_TRUE(call_text(cGZIPStringCompress2, text) == le32(static_cast<uint32_t>(size)) + plain);
            // The plain form expands into 75 times its length at most.
            EXPECT_TRUE(call_text(cGZIPStringExpand, plain) == (plain.size() * 75 >= size ? text : ""))
                << kind_name(kind) << " " << size;
            EXPECT_TRUE(call_text(cGZIPStringExpand2, le32(static_cast<uint32_t>(size)) + plain) == text);
        }
    for (auto f : {cGZIPStringCompress, cGZIPStringCompress2, cGZIPStringExpand, cGZIPStringExpand2}) {
        EXPECT_EQ(call_text(f, ""), "");
        EXPECT_EQ(str(f(nullptr)), "");
    }
}

TEST(GzipStrings, ExpansionLimits) {
    // Better than 75 to 1: the plain form has no room for it, the prefixed
    // form expands up to what its prefix says.
    const std::string same(100000, 'q');
    const std::string plain = call_text(cGZIPStringCompress, same);
    ASSERT_LT(plain.size() * 75, same.size());
    EXPECT_EQ(call_text(cGZIPStringExpand, plain), "");
    EXPECT_EQ(call_text(cGZIPStringExpand2, call_text(cGZIPStringCompress2, same)), same);
    // Exactly 75 times still fits; see where the border lies for this text.
    const std::string text = make_input(Kind::Text, 5000, 3);
    const std::string packed = call_text(cGZIPStringCompress, text);
    EXPECT_GT(packed.size() * 75, text.size());
    EXPECT_EQ(call_text(cGZIPStringExpand, packed), text);
    struct Row {
        const char *what;
        std::string input;
        std::string expected;
    };
    const Row rows[] = {
        {"prefix alone", le32(5), ""},
        {"prefix claims one byte less", le32(4999) + packed, ""},
        {"prefix claims zero", le32(0) + packed, ""},
        {"prefix claims more: the real length comes back", le32(1u << 30) + packed, text},
        {"prefix claims four gigabytes of nothing", le32(0xFFFFFFFFu) + "\x78", ""},
        {"stream of an empty text with prefix zero", le32(0) + zlib_compress(""), ""},
    };
    for (const Row &row : rows)
        EXPECT_EQ(call_text(cGZIPStringExpand2, row.input), row.expected) << row.what;
}

// The length prefix is a limit, not an allocation: 100 KB of damaged stream
// claiming 100 MB (about what deflate could make of 100 KB) must not take
// 100 MB of memory before the damage shows.
TEST(GzipStrings, AClaimedLengthIsNotAllocatedBeforeTheDataArrive) {
#if !defined(__linux__)
    GTEST_SKIP() << "the peak memory is read from /proc";
#else
    const std::string input = le32(100000000) + "\x78\x9c" + std::string(100000, '\xff');
    if (!reset_peak_memory())
        GTEST_SKIP() << "the peak memory cannot be reset here";
    const long before = status_kib("VmRSS");
    EXPECT_EQ(call_text(cGZIPStringExpand2, input), "");
    EXPECT_LT(status_kib("VmHWM") - before, 32 * 1024) << "KiB more at the peak";
#endif
}

TEST(GzipStrings, DamagedStreamsGiveTheEmptyString) {
    const std::string text = make_input(Kind::Text, 20000, 9);
    const std::string packed = call_text(cGZIPStringCompress, text);
    // Every cut is noticed (the Adler-32 trailer comes last).
    for (size_t cut = 1; cut < packed.size(); cut += 7) {
        EXPECT_EQ(call_text(cGZIPStringExpand, packed.substr(0, cut)), "") << cut;
        EXPECT_EQ(call_text(cGZIPStringExpand2, le32(20000) + packed.substr(0, cut)), "") << cut;
    }
    std::mt19937 rng(5);
    int refused = 0;
    for (int round = 0; round < 300; ++round) {
        std::string damaged = packed;
        damaged[rng() % damaged.size()] ^= static_cast<char>(1 + rng() % 255);
        const std::string out = call_text(cGZIPStringExpand, damaged);
        refused += out.empty();
        EXPECT_TRUE(out.empty() || out == text) << round;
    }
    EXPECT_GT(refused, 250);
    EXPECT_EQ(call_text(cGZIPStringExpand, "not a zlib stream"), "");
}

TEST_F(GzipFiles, OurGzipFilesAreReadByTheToolAndTheirsByUs) {
    for (size_t size : {0, 1, 4095, 4096, 4097, 100000}) {
        const std::string in = make_input(Kind::Text, size, 13);
        write_file("in.txt", in);
        const int32_t written = call_by_val(cGZIPFileCompress, "in.txt", "ours.gz");
        EXPECT_EQ(written, static_cast<int32_t>(read_file("ours.gz").size()));
        ASSERT_EQ(shell("gzip -t ours.gz && gzip -dc ours.gz > tool.txt"), 0) << size;
        EXPECT_EQ(read_file("tool.txt"), in) << size;
        if (size == 0)
            continue; // an empty source is refused for expansion
        ASSERT_EQ(shell("gzip -9 -c in.txt > theirs.gz"), 0);
        EXPECT_EQ(call_by_val(cGZIPFileExpand, "theirs.gz", "back.txt"), static_cast<int32_t>(size));
        EXPECT_EQ(read_file("back.txt"), in) << size;
    }
    // Several members one after the other, as gzip writes for appended input.
    write_file("a.txt", "first part\n");
    write_file("b.txt", "second part\n");
    ASSERT_EQ(shell("gzip -c a.txt > two.gz && gzip -c b.txt >> two.gz"), 0);
    EXPECT_EQ(call_by_val(cGZIPFileExpand, "two.gz", "two.txt"), 23);
    EXPECT_EQ(read_file("two.txt"), "first part\nsecond part\n");
    // Large and mixed.
    const std::string big = large_input();
    write_file("big.bin", big);
    EXPECT_GT(call_by_val(cGZIPFileCompress, "big.bin", "big.gz"), 0);
    ASSERT_EQ(shell("gzip -dc big.gz > big.tool"), 0);
    EXPECT_TRUE(read_file("big.tool") == big);
    EXPECT_EQ(call_by_val(cGZIPFileExpand, "big.gz", "big.back"), static_cast<int32_t>(big.size()));
    EXPECT_TRUE(read_file("big.back") == big);
}

TEST_F(GzipFiles, FailureCodes) {
    write_file("src.txt", "gzip me");
    write_file("empty.txt", "");
    write_file("keep.txt", "untouched");
    ASSERT_EQ(shell("gzip -c src.txt > src.gz"), 0);
    const std::string gz = read_file("src.gz");
    write_file("cut.gz", gz.substr(0, gz.size() - 4));
    std::string bad_crc = gz;
    bad_crc[bad_crc.size() - 6] ^= 0x55;
    write_file("badcrc.gz", bad_crc);
    struct Row {
        const char *what;
        decltype(&cGZIPFileCompress) f;
        std::string source, target;
        int32_t code;
    };
    const Row rows[] = {
        {"compress: empty source name", cGZIPFileCompress, "", "x.gz", -1},
        {"compress: empty target name", cGZIPFileCompress, "src.txt", "", -2},
        {"compress: same name ignoring case", cGZIPFileCompress, "src.txt", "Src.Txt", -3},
        {"compress: same file by a path", cGZIPFileCompress, "src.txt", "sub/../src.txt", -3},
        {"compress: same name once normalised", cGZIPFileCompress, "sub/new.txt", "SUB\\NEW.TXT\\", -3},
        {"compress: source missing", cGZIPFileCompress, "missing.txt", "left.gz", -4},
        {"compress: target folder missing", cGZIPFileCompress, "src.txt", "nodir/x.gz", -5},
        {"expand: empty source name", cGZIPFileExpand, "", "x.txt", -1},
        {"expand: empty target name", cGZIPFileExpand, "src.gz", "", -2},
        {"expand: same name", cGZIPFileExpand, "src.gz", "SRC.GZ", -3},
        {"expand: empty source", cGZIPFileExpand, "empty.txt", "keep.txt", -8},
        {"expand: source missing", cGZIPFileExpand, "missing.gz", "made.txt", -4},
        {"expand: target folder missing", cGZIPFileExpand, "src.gz", "nodir/x.txt", -5},
        {"expand: a trailing backslash is dropped", cGZIPFileExpand, "src.gz\\", "slash.txt", 7},
        {"expand: cut short", cGZIPFileExpand, "cut.gz", "cut.txt", -6},
        {"expand: wrong check value", cGZIPFileExpand, "badcrc.gz", "badcrc.txt", -6},
    };
    std::filesystem::create_directory("sub");
    for (const Row &row : rows)
        EXPECT_EQ(call_by_val(row.f, row.source, row.target), row.code) << row.what;
    EXPECT_EQ(read_file("src.txt"), "gzip me");
    EXPECT_EQ(read_file("keep.txt"), "untouched");
    // A missing source leaves a valid, empty gzip file behind.
    ASSERT_TRUE(exists("left.gz"));
    EXPECT_EQ(shell("gzip -t left.gz"), 0);
    EXPECT_EQ(read_file("made.txt"), "");
    EXPECT_TRUE(exists("made.txt"));
    EXPECT_EQ(cGZIPFileCompress(nullptr, nullptr), -1);
}
