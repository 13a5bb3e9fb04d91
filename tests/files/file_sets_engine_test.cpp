// The small rules of the listing and counting exports.
#include "files/file_sets.h"

#include <gtest/gtest.h>

using namespace brindle::files;

namespace {
constexpr uint32_t R = 1, H = 2, S = 4, D = 16, A = 32, N = 128, C = 2048;
}

TEST(FileSets, AttributeTestsAndSelectors) {
    // Exact: the five bits agree. Loose: fails only when all five differ.
    EXPECT_TRUE(attributes_exact(A | R, A | R));
    EXPECT_TRUE(attributes_exact(A | R | N | 256, A | R)) << "normal and temporary are not compared";
    EXPECT_FALSE(attributes_exact(A, A | R));
    EXPECT_FALSE(attributes_exact(D | A, A)) << "a directory never passes";
    EXPECT_TRUE(attributes_loose(0, A)) << "four of five agree";
    EXPECT_TRUE(attributes_loose(A | H | S, R)) << "compressed agrees";
    EXPECT_FALSE(attributes_loose(A | H | S | C, R)) << "all five differ";
    EXPECT_FALSE(attributes_loose(R, A | H | S | C)) << "all five differ";
    EXPECT_FALSE(attributes_loose(D, D)) << "a directory never passes";

    const struct {
        int16_t selector;
        uint32_t entry;
        bool accepted;
    } rows[] = {
        {255, R | H | S | A | C, true}, {255, D, false},       {0, 0, true},          {0, N, true},
        {0, A, false},                  {254, 0, true},        {254, N, true},        {254, A, true},
        {254, R | H | S | C, false},    {1, R, true},          {1, A | H | S | C, false}, {32, A, true},
        {-32, A, true},                 {-32, A | R, false},   {-33, A | R, true},    {-33, A, false},
        {-2048, C, true},               {-2048, C | A, false}, {1, D | R, false},
    };
    for (const auto &r : rows)
        EXPECT_EQ(selector_accepts(r.selector, r.entry), r.accepted) << r.selector << " vs " << r.entry;
}

TEST(FileSets, ClustersSlackAndBorrowFreeSubtraction) {
    EXPECT_EQ(round_to_clusters(1, 4096), 4096u);
    EXPECT_EQ(round_to_clusters(0, 4096), 0u);
    EXPECT_EQ(round_to_clusters(8192, 4096), 8192u);
    EXPECT_EQ(round_to_clusters(8193, 4096), 12288u);
    EXPECT_EQ(round_to_clusters(5, 0), 5u);

    EXPECT_EQ(slack_percent(0, 0), -1);
    EXPECT_EQ(slack_percent(1, 4096), 99);
    EXPECT_EQ(slack_percent(4096, 4096), 0);
    EXPECT_EQ(slack_percent(3000, 4096), 26) << "26.75 truncated";

    EXPECT_EQ(subtract_without_borrow(0x500000000ULL, 0x100000000ULL), 0x400000000ULL);
    // The low half wraps on its own; the high half keeps its difference.
    EXPECT_EQ(subtract_without_borrow(0x200000010ULL, 0x100000020ULL), 0x1FFFFFFF0ULL);
    EXPECT_EQ(subtract_without_borrow(0x10ULL, 0x20ULL), 0xFFFFFFF0ULL);

    EXPECT_EQ(volume_root(""), "");
    EXPECT_EQ(volume_root("c"), "c:\\");
    EXPECT_EQ(volume_root("c:"), "c:\\");
    EXPECT_EQ(volume_root("c:\\x"), "c:\\x");
    EXPECT_EQ(pattern_volume_root("d:\\dir\\*.*"), "d:\\");
    EXPECT_EQ(pattern_volume_root("dir\\*.*"), "");
}

// The total of the file filters, block by block as they count it: past 2 GiB
// it stays at the largest Long instead of wrapping into the negative codes.
TEST(FileSets, ByteTotalsStopAtTheLargestLong) {
    ByteTotal total;
    EXPECT_EQ(total.as_long(), 0);
    for (int block = 0; block < 65535; ++block)
        total.add(32768);
    total.add(32767);
    EXPECT_EQ(total.as_long(), INT32_MAX) << "2 GiB - 1 is still exact";
    total.add(1);
    EXPECT_EQ(total.as_long(), INT32_MAX) << "2 GiB";
    for (int block = 0; block < 65536 * 4; ++block) // past 4 GiB, where 32 bits start again from 0
        total.add(32768);
    total.add(5);
    EXPECT_EQ(total.as_long(), INT32_MAX);
    ByteTotal small;
    small.add(32768);
    small.add(0);
    small.add(100);
    EXPECT_EQ(small.as_long(), 32868);
}
