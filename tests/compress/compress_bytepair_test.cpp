// Byte-pair compression of strings and files through the exports.
#include "compress/compress_files.h"

using namespace brindle::test;

namespace {

class BytePairFiles : public TempDirTest {};

std::string header_of(size_t payload) {
    return std::string("KOV") + static_cast<char>((payload >> 8) & 0xFF) + static_cast<char>(payload & 0xFF);
}

} // namespace

TEST_F(BytePairFiles, KnownAnswersOfThePublishedCoder) {
    for (const auto &[name, input] : known_inputs()) {
        const std::string expected = vector_file(name + ".kov");
        ASSERT_GE(expected.size(), 9u) << name;
        write_file("in.bin", input);
        EXPECT_EQ(call_by_ref(cFileCompress, "in.bin", "out.kov"), static_cast<int32_t>(expected.size())) << name;
        EXPECT_EQ(read_file("out.kov"), expected) << name;
        EXPECT_EQ(call_by_ref(cFileExpand, "out.kov", "back.bin"), static_cast<int32_t>(input.size())) << name;
        EXPECT_EQ(read_file("back.bin"), input) << name;
        // A string carries the same blocks behind its own header.
        if (!input.empty()) {
            const std::string packed = call_text(cStringCompress, input);
            EXPECT_EQ(packed, header_of(expected.size() - 3) + expected.substr(3)) << name;
            EXPECT_EQ(call_text(cStringExpand, packed), input) << name;
        }
    }
    // The empty file: magic, the table of a block without pairs, length 0.
    EXPECT_EQ(vector_file("empty.kov"), std::string("KOV\xFE\x7F\xFE\xFF\x00\x00", 9));
}

TEST_F(BytePairFiles, FailureCodesInTheirOrder) {
    write_file("src.txt", "some text some text some text");
    write_file("notkov.bin", "KOX and more");
    write_file("short.bin", "KO");
    call_by_ref(cFileCompress, "src.txt", "good.kov");
    const std::string good = read_file("good.kov");
    write_file("cut.kov", good.substr(0, good.size() - 3));
    write_file("bad-table.kov", std::string("KOV\xFF\x80\xFF", 6));
    struct Row {
        const char *what;
        decltype(&cFileCompress) f;
        std::string source, target;
        int32_t code;
    };
    const Row rows[] = {
        {"empty source name", cFileCompress, "", "t.kov", -1},
        {"empty source name wins", cFileExpand, "", "", -1},
        {"empty target name", cFileCompress, "src.txt", "", -2},
        {"names equal ignoring case", cFileCompress, "src.txt", "SRC.TXT", -3},
        {"another spelling of the source", cFileCompress, "src.txt", "./src.txt", -3},
        {"source missing", cFileCompress, "missing.txt", "t1.kov", -4},
        {"target folder missing", cFileCompress, "src.txt", "nodir/t.kov", -5},
        {"no magic", cFileExpand, "notkov.bin", "t2.txt", -6},
        {"shorter than the magic", cFileExpand, "short.bin", "t3.txt", -6},
        {"cut in its last block", cFileExpand, "cut.kov", "t4.txt", -6},
        {"table runs past 255", cFileExpand, "bad-table.kov", "t5.txt", -6},
        {"a folder as source", cFileExpand, ".", "t6.txt", -4},
    };
    for (const Row &row : rows)
        EXPECT_EQ(call_by_ref(row.f, row.source, row.target), row.code) << row.what;
    EXPECT_EQ(read_file("src.txt"), "some text some text some text");
    // The target is created before the source is found missing, and stays.
    EXPECT_TRUE(exists("t1.kov"));
    EXPECT_EQ(read_file("t1.kov"), "");
    EXPECT_TRUE(exists("t4.txt"));
    // Null handles are empty names.
    EXPECT_EQ(cFileCompress(nullptr, nullptr), -1);
}

TEST_F(BytePairFiles, FilesRoundTripAtBlockLimitsAndLarge) {
    for (Kind kind : {Kind::Same, Kind::Text, Kind::Random, Kind::SmallAlphabet})
        for (size_t size : {1, 4999, 5000, 5001, 70000}) {
            const std::string in = make_input(kind, size, 21);
            write_file("in.bin", in);
            const int32_t packed = call_by_ref(cFileCompress, "in.bin", "in.kov");
            ASSERT_GT(packed, 0);
            EXPECT_EQ(call_by_ref(cFileExpand, "in.kov", "out.bin"), static_cast<int32_t>(size));
            EXPECT_EQ(read_file("out.bin"), in) << kind_name(kind) << " " << size;
        }
    const std::string big = large_input();
    write_file("big.bin", big);
    const int32_t packed = call_by_ref(cFileCompress, "big.bin", "big.kov");
    EXPECT_GT(packed, 0);
    EXPECT_LT(packed, static_cast<int32_t>(big.size()));
    EXPECT_EQ(call_by_ref(cFileExpand, "big.kov", "big.out"), static_cast<int32_t>(big.size()));
    EXPECT_TRUE(read_file("big.out") == big);
}

TEST(BytePairStrings, HeaderAndLimits) {
    EXPECT_EQ(call_text(cStringCompress, ""), "");
    EXPECT_EQ(str(cStringCompress(nullptr)), "");
    // The stored length is the payload's, modulo 65536; a payload that long
    // cannot be expanded again, which is a limit of the format.
    const std::string random = make_input(Kind::Random, 70000, 5);
    const std::string packed = call_text(cStringCompress, random);
    ASSERT_GT(packed.size(), 65536u + 5);
    EXPECT_EQ(packed.substr(0, 5), header_of(packed.size() - 5));
    EXPECT_EQ(call_text(cStringExpand, packed), "");
    // Up to 65535 bytes of payload it works, also for binary data.
    const std::string binary = make_input(Kind::Random, 60000, 6);
    EXPECT_EQ(call_text(cStringExpand, call_text(cStringCompress, binary)), binary);
    // Far more than 10 times its length: the result grows as needed.
    const std::string runs(300000, 'r');
    const std::string small = call_text(cStringCompress, runs);
    EXPECT_LT(small.size() * 10, runs.size());
    EXPECT_EQ(call_text(cStringExpand, small), runs);
}

TEST(BytePairStrings, RefusedInputs) {
    const std::string good = call_text(cStringCompress, "abcabcabcabcabc");
    std::string wrong_length = good;
    wrong_length[4] = static_cast<char>(wrong_length[4] + 1);
    std::string wrong_magic = good;
    wrong_magic[2] = 'W';
    struct Row {
        const char *what;
        std::string input;
    };
    const Row rows[] = {
        {"empty", ""},
        {"magic alone", "KOV"},
        {"header of an empty payload", std::string("KOV\0\0", 5)},
        {"wrong magic", wrong_magic},
        {"length one more than the payload", wrong_length},
        {"one byte cut", good.substr(0, good.size() - 1)},
        {"table runs past 255", std::string("KOV\0\3\xFF\x80\xFF", 8)},
    };
    for (const Row &row : rows)
        EXPECT_EQ(call_text(cStringExpand, row.input), "") << row.what;
    EXPECT_EQ(str(cStringExpand(nullptr)), "");
    EXPECT_EQ(call_text(cStringExpand, good), "abcabcabcabcabc");
}

TEST(BytePairStrings, RoundTrips) {
    for (Kind kind : {Kind::Same, Kind::Text, Kind::Random, Kind::SmallAlphabet})
        for (size_t size : {1, 2, 199, 200, 201, 5000, 5001, 20000}) {
            const std::string in = make_input(kind, size, 31);
            EXPECT_EQ(call_text(cStringExpand, call_text(cStringCompress, in)), in) << kind_name(kind) << " " << size;
        }
}
