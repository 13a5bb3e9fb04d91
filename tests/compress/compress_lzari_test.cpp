// LZARI file compression through the exports.
#include "compress/compress_files.h"

using namespace brindle::test;

namespace {

class LzariFiles : public TempDirTest {};

} // namespace

TEST_F(LzariFiles, KnownAnswersOfThePublishedProgram) {
    for (const auto &[name, input] : known_inputs()) {
        const std::string expected = vector_file(name + ".lz");
        ASSERT_GE(expected.size(), 4u) << name;
        write_file("in.bin", input);
        EXPECT_EQ(call_by_val(cLZARIcompress, "in.bin", "out.lz"), static_cast<int32_t>(expected.size())) << name;
        EXPECT_EQ(read_file("out.lz"), expected) << name;
        EXPECT_EQ(call_by_val(cLZARIexpand, "out.lz", "back.bin"), static_cast<int32_t>(input.size())) << name;
        EXPECT_EQ(read_file("back.bin"), input) << name;
    }
    EXPECT_EQ(vector_file("empty.lz"), std::string(4, '\0'));
}

TEST_F(LzariFiles, RoundTripsIncludingLargeAndIncompressible) {
    for (Kind kind : {Kind::Text, Kind::Random})
        for (size_t size : {1, 80, 4096, 40000}) {
            const std::string in = make_input(kind, size, 17);
            write_file("in.bin", in);
            const int32_t packed = call_by_val(cLZARIcompress, "in.bin", "in.lz");
            ASSERT_GT(packed, 4);
            const std::string lz = read_file("in.lz");
            EXPECT_EQ(lz.substr(0, 4), std::string({static_cast<char>(size & 0xFF), static_cast<char>(size >> 8 & 0xFF),
                                                    static_cast<char>(size >> 16), '\0'}));
            EXPECT_EQ(call_by_val(cLZARIexpand, "in.lz", "out.bin"), static_cast<int32_t>(size));
            EXPECT_EQ(read_file("out.bin"), in) << kind_name(kind) << " " << size;
        }
    const std::string big = large_input();
    write_file("big.bin", big);
    const int32_t packed = call_by_val(cLZARIcompress, "big.bin", "big.lz");
    EXPECT_GT(packed, 0);
    EXPECT_LT(packed, static_cast<int32_t>(big.size()));
    EXPECT_EQ(call_by_val(cLZARIexpand, "big.lz", "big.out"), static_cast<int32_t>(big.size()));
    EXPECT_TRUE(read_file("big.out") == big);
}

TEST_F(LzariFiles, FailureCodes) {
    write_file("src.txt", "lzari me lzari me");
    write_file("empty.txt", "");
    write_file("three.lz", "abc");
    struct Row {
        const char *what;
        decltype(&cLZARIcompress) f;
        std::string source, target;
        int32_t code;
    };
    const Row rows[] = {
        {"empty source name", cLZARIcompress, "", "x.lz", -1},
        {"empty target name", cLZARIexpand, "src.txt", "", -2},
        {"same name ignoring case", cLZARIcompress, "src.txt", "SRC.txt", -3},
        {"same file by a path", cLZARIexpand, "src.txt", "./src.txt", -3},
        {"source missing", cLZARIcompress, "missing.txt", "left.lz", -4},
        {"target folder missing", cLZARIcompress, "src.txt", "nodir/x.lz", -5},
        {"empty source: no header", cLZARIexpand, "empty.txt", "e.txt", -6},
        {"header cut short", cLZARIexpand, "three.lz", "t.txt", -6},
        {"empty source compresses to the header", cLZARIcompress, "empty.txt", "e.lz", 4},
    };
    for (const Row &row : rows)
        EXPECT_EQ(call_by_val(row.f, row.source, row.target), row.code) << row.what;
    EXPECT_EQ(read_file("src.txt"), "lzari me lzari me");
    EXPECT_TRUE(exists("left.lz"));
    EXPECT_EQ(read_file("left.lz"), "");
    EXPECT_EQ(read_file("e.lz"), std::string(4, '\0'));
    EXPECT_EQ(call_by_val(cLZARIexpand, "e.lz", "e2.txt"), 0);
    EXPECT_TRUE(exists("e2.txt"));
}

TEST_F(LzariFiles, DamagedFilesDecodeToAtMostTheirClaimedLength) {
    // (Damage of every kind is exercised on the engine; here the file path.)
    const std::string in = make_input(Kind::Text, 50000, 23);
    write_file("in.bin", in);
    ASSERT_GT(call_by_val(cLZARIcompress, "in.bin", "in.lz"), 0);
    write_file("cut.lz", read_file("in.lz").substr(0, 1000));
    const int32_t cut = call_by_val(cLZARIexpand, "cut.lz", "cut.out");
    EXPECT_GT(cut, 1000);
    EXPECT_LE(cut, static_cast<int32_t>(in.size()));
    EXPECT_EQ(read_file("cut.out").substr(0, 1000), in.substr(0, 1000));
    // A header claiming 4 GB in front of a few bytes ends soon, not after
    // writing gigabytes.
    write_file("huge.lz", std::string("\xFF\xFF\xFF\xFF\x01\x02\x03", 7));
    const int32_t size = call_by_val(cLZARIexpand, "huge.lz", "huge.out");
    EXPECT_GE(size, 0);
    EXPECT_LT(size, 8 << 20);
}
