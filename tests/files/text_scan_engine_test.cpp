// The quick whole-file scans tested directly: the SSE2 byte count against a
// plain loop, and the block search against the line-by-line reading that
// defines it, with lines, matches and CR LF pairs placed across the
// 1 MiB reads.
#include "files/byte_count.h"
#include "files/file_text_search.h"
#include "files/line_counts.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

using namespace brindle::files;
using brindle::test::TempDirTest;

namespace {
constexpr size_t kRead = 1 << 20; // the quick search's block

class TextScan : public TempDirTest {};

// Lines of `line` bytes (CR LF included) of x's, with "Needle" written so
// that it starts at each of `starts` (file offsets, not on a line end).
std::string lines_with_needles(size_t total, size_t line, const std::vector<size_t> &starts) {
    std::string s;
    while (s.size() < total) {
        s.append(line - 2, 'x');
        s += "\r\n";
    }
    for (size_t at : starts)
        s.replace(at, 6, "Needle");
    return s;
}
} // namespace

TEST(ByteCount, AgreesWithAPlainCountAtEveryAlignment) {
    std::mt19937 rng(3);
    std::vector<unsigned char> data(5000);
    for (auto &b : data)
        b = static_cast<unsigned char>(rng() % 4 == 0 ? '\r' : rng());
    for (size_t offset = 0; offset < 17; ++offset)
        for (size_t size : {0u, 1u, 15u, 16u, 63u, 64u, 65u, 1000u, 4096u + 7u})
            for (unsigned char value : {static_cast<unsigned char>('\r'), static_cast<unsigned char>(0),
                                        static_cast<unsigned char>(255)}) {
                const auto expected = std::count(data.begin() + offset, data.begin() + offset + size, value);
                EXPECT_EQ(count_byte(data.data() + offset, size, value), static_cast<uint64_t>(expected))
                    << offset << " " << size;
            }
    // Every byte a match: the per-lane counters must be emptied before 256.
    const std::vector<unsigned char> all(100003, '\r');
    EXPECT_EQ(count_byte(all.data(), all.size(), '\r'), 100003u);
}

TEST_F(TextScan, LineCountAcrossReads) {
    // 40-byte lines after a head chosen so that a CR LF pair straddles the
    // first 1 MiB read: its CR at offset 1,048,575, its LF at 1,048,576.
    const size_t head = (kRead - 1 - 38) % 40;
    std::string s(head, 'h');
    while (s.size() < 3 * kRead)
        s += std::string(38, 'y') + "\r\n";
    ASSERT_EQ(s.substr(kRead - 1, 2), "\r\n");
    write_file("l.txt", s);
    EXPECT_EQ(count_carriage_returns("l.txt"), static_cast<int32_t>((s.size() - head) / 40));
}

TEST_F(TextScan, MatchesAtAReadBoundaryAreCounted) {
    // 50-byte lines (1 MiB falls 26 bytes into one); "Needle" at the start,
    // near the 1 MiB boundary (ending right before it, across it, starting
    // at it), two lines further on, and in an unfinished last line.
    for (const long shift : {-6L, -5L, -3L, -1L, 0L}) {
        const size_t at = static_cast<size_t>(static_cast<long>(kRead) + shift);
        std::string s = lines_with_needles(2 * kRead + 500, 50, {0, at, at + 100});
        s += "NEEDLE";
        write_file("n.txt", s);
        EXPECT_EQ(search_text_file("n.txt", "needle", false, false), 4) << shift;
        EXPECT_EQ(search_text_file("n.txt", "Needle", true, false), 3) << shift;
        EXPECT_EQ(search_text_file("n.txt", "NEEDLE", true, true), 1) << shift;
        EXPECT_EQ(search_text_file("n.txt", "needle", true, true), 0) << shift;
    }
}

// Random files of every kind the quick search must hand over (zero bytes,
// Ctrl-Z, long lines, lone CRs, texts with line breaks) and of plain text,
// large enough to take several reads: both ways count the same.
TEST_F(TextScan, QuickSearchAgreesWithTheLineReader) {
    std::mt19937 rng(11);
    const char *texts[] = {"ab", "aB", "a", "abab", "b\r", "b\n", "\x1a", "ba b", "xx"};
    for (int round = 0; round < 24; ++round) {
        const int kind = round % 6;
        const size_t size = (round % 3 == 0) ? kRead + 3000 + rng() % 5000 : 1 + rng() % 9000;
        std::string s;
        while (s.size() < size) {
            const unsigned r = rng() % 100;
            if (r < 40)
                s += static_cast<char>("abAB "[rng() % 5]);
            else if (r < 45)
                s += "\r\n";
            else if (r < 47)
                s += '\n';
            else if (r < 48 && kind == 1)
                s += '\r';
            else if (r < 48 && kind == 2 && rng() % 50 == 0)
                s += '\0';
            else if (r < 48 && kind == 3 && rng() % 500 == 0)
                s += '\x1a';
            else if (r < 48 && kind == 4 && rng() % 200 == 0)
                s += std::string(2540 + rng() % 40, 'a'); // near and past the piece limit
            else
                s += static_cast<char>('c' + rng() % 3);
        }
        write_file("r.txt", s);
        for (const char *text : texts)
            for (bool exact : {false, true})
                for (bool first : {false, true})
                    EXPECT_EQ(search_text_file("r.txt", text, exact, first),
                              search_text_file_by_lines("r.txt", text, exact, first))
                        << "round " << round << " text " << text << " exact " << exact << " first " << first;
    }
}

TEST_F(TextScan, LongLineLimitIsExact) {
    // A line of n bytes, "ab" and its LF at the end, then the line "ab". The
    // reader takes pieces of 2,559 bytes: up to n = 2,560 the first "ab" is
    // whole in a piece; at 2,561 the cut falls between a and b. A line of
    // 5,000 has its "ab" in the second piece (2,559 .. 4,999), one of 5,120
    // has it cut again (a at 5,117, the last byte of that piece).
    const struct {
        size_t n;
        int32_t count;
    } rows[] = {{2558, 2}, {2559, 2}, {2560, 2}, {2561, 1}, {5000, 2}, {5120, 1}};
    for (const auto &row : rows) {
        write_file("p.txt", std::string(row.n - 3, 'x') + "ab\n" + "ab\n");
        EXPECT_EQ(search_text_file("p.txt", "ab", true, false), row.count) << row.n;
        EXPECT_EQ(search_text_file("p.txt", "AB", false, false), row.count) << row.n;
    }
}
