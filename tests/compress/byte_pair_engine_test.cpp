// The byte-pair coder's engine: block limits, round trips, and expansion of
// damaged and hostile blocks. The exact output is checked against vectors of
// the published coder in the export tests.
#include "compress/byte_pair.h"
#include "compress/test_inputs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

using namespace brindle::compress;
using namespace brindle::test;

namespace {

const uint8_t *bytes(const std::string &s) { return reinterpret_cast<const uint8_t *>(s.data()); }

std::string expand_or_fail(const std::string &blocks) {
    std::string out;
    EXPECT_TRUE(byte_pair_expand(blocks, out));
    return out;
}

} // namespace

TEST(BytePairEngine, RoundTripsEveryKindAcrossBlockLimits) {
    for (Kind kind : {Kind::Same, Kind::Text, Kind::Random, Kind::SmallAlphabet})
        for (size_t size : {0, 1, 2, 3, 4, 199, 200, 201, 4999, 5000, 5001, 10000, 15001, 200000}) {
            const std::string in = make_input(kind, size, static_cast<uint32_t>(size));
            const std::string packed = byte_pair_compress(in);
            EXPECT_EQ(expand_or_fail(packed), in) << kind_name(kind) << " " << size;
            if (kind == Kind::Same && size >= 4999) {
                EXPECT_LT(packed.size() * 20, size) << "long runs must shrink " << size;
            }
        }
}

TEST(BytePairEngine, BlockLimitsDecideWhereBlocksEnd) {
    struct Row {
        const char *what;
        std::string input;
        size_t first_block; // bytes the first block takes
        bool first_is_last;
    };
    std::string all(256, '\0');
    for (int i = 0; i < 256; ++i)
        all[static_cast<size_t>(i)] = static_cast<char>(i);
    const Row rows[] = {
        {"200 distinct values end the block", all, 200, false},
        {"a full block is not the last even at the end", std::string(5000, 'x'), 5000, false},
        {"a short input is one last block", std::string(4999, 'x'), 4999, true},
        {"the 200th value at the very end still leaves an empty block", all.substr(0, 200), 200, false},
        {"199 values are one last block", all.substr(0, 199), 199, true},
        {"repeats do not count as new values", all.substr(0, 150) + all.substr(0, 150) + all.substr(150, 60), 350,
         false},
    };
    for (const Row &row : rows) {
        std::string out;
        bool last = true;
        const size_t taken = byte_pair_compress_block(bytes(row.input), row.input.size(), true, out, &last);
        EXPECT_EQ(taken, row.first_block) << row.what;
        EXPECT_EQ(last, row.first_is_last) << row.what;
        EXPECT_EQ(expand_or_fail(byte_pair_compress(row.input)), row.input) << row.what;
    }
    // What follows a block that stopped at a limit right at the end: one
    // empty block, the table of 256 self-standing values and a zero length.
    std::string out;
    bool last = false;
    EXPECT_EQ(byte_pair_compress_block(nullptr, 0, true, out, &last), 0u);
    EXPECT_TRUE(last);
    EXPECT_EQ(out, std::string("\xFE\x7F\xFE\xFF\x00\x00", 6));
}

TEST(BytePairEngine, MoreDistinctPairsThanTableSlotsStillFinishes) {
    // 4900 distinct pairs over 70 values in one block: the published coder's
    // table search never ends here; ours leaves the excess uncounted.
    const std::string in = de_bruijn_pairs(70, 40);
    ASSERT_EQ(in.size(), 4901u);
    EXPECT_EQ(expand_or_fail(byte_pair_compress(in)), in);
    const std::string doubled = in.substr(0, 2500) + in.substr(0, 2500);
    EXPECT_EQ(expand_or_fail(byte_pair_compress(doubled)), doubled);
}

TEST(BytePairEngine, HandMadeBlocks) {
    struct Row {
        const char *what;
        std::string block;
        BlockStatus status;
        std::string expanded;
    };
    // The table of a block without pairs: 127 self-standing values, 127 as
    // itself, 127 more, 255 as itself.
    const std::string self_table("\xFE\x7F\xFE\xFF", 4);
    // 255 = ('a', 'b'), everything else self-standing.
    const std::string ab_table = std::string("\xFE\x7F\xFE", 3) + "ab";
    // 0..128 self-standing, then 129..255 a chain: each value the pair (next
    // value, 'z'), and 255 = ('y', 'z').
    std::string chain_table("\xFE\x7F\x80", 3);
    for (int c = 129; c <= 255; ++c) {
        if (c == 130)
            chain_table += static_cast<char>(125); // a run of 126 pair values follows
        chain_table += static_cast<char>(c == 255 ? 'y' : c + 1);
        chain_table += 'z';
    }
    // 254 = (255, 'a') and 255 = (254, 'a'): each stands for itself in the end.
    const std::string cycle_table("\xFE\x7F\xFD\xFF\x61\x00\xFE\x61", 8);
    // 0..127 self-standing, 128 a pair, 129..200 self-standing, 201 a pair,
    // then a run of 101 pair values from 202, which passes 255.
    std::string long_pair_run = "\xFF" "ab" "\xC7" "ab" "\x64";
    for (int i = 0; i < 101; ++i)
        long_pair_run += "ab";
    const Row rows[] = {
        {"empty block", self_table + std::string("\0\0", 2), BlockStatus::Ok, ""},
        {"literals only", self_table + std::string("\0\3", 2) + "abc", BlockStatus::Ok, "abc"},
        {"one pair", ab_table + std::string("\0\3", 2) + "\xFF" "c\xFF", BlockStatus::Ok, "abcab"},
        {"a chain 127 deep expands fully", chain_table + std::string("\0\1", 2) + "\x81", BlockStatus::Ok,
         "y" + std::string(127, 'z')},
        {"no length", self_table, BlockStatus::Truncated, ""},
        {"packed bytes missing", self_table + std::string("\0\5", 2) + "abc", BlockStatus::Truncated, ""},
        {"pair half missing", std::string("\xFE\x7F\xFE\x61", 4), BlockStatus::Truncated, ""},
        {"literal run past 255", std::string("\xFF\x80\xFF", 3), BlockStatus::Corrupt, ""},
        {"pair run past 255", long_pair_run, BlockStatus::Corrupt, ""},
        {"pair values in a cycle", cycle_table + std::string("\0\1", 2) + "\xFF", BlockStatus::Corrupt, ""},
        {"a cycle that is never used", cycle_table + std::string("\0\1", 2) + "q", BlockStatus::Ok, "q"},
    };
    for (const Row &row : rows) {
        std::string out;
        size_t used = 0;
        EXPECT_EQ(byte_pair_expand_block(bytes(row.block), row.block.size(), out, &used), row.status) << row.what;
        if (row.status == BlockStatus::Ok) {
            EXPECT_EQ(out, row.expanded) << row.what;
            EXPECT_EQ(used, row.block.size()) << row.what;
        }
    }
}

TEST(BytePairEngine, ExpansionBeyondOneBlockIsRefused) {
    // 255 = (254, 254), 254 = (253, 253) ... 243 = ('a','a'): 2^13 = 8192
    // bytes from one packed byte, more than any block can hold.
    std::string block("\xFE\x7F", 2); // 0..126 self-standing, 127 as itself
    block += static_cast<char>(127 + 115); // 128..242 self-standing
    block += "aa";                          // 243, at once after the run
    block += static_cast<char>(11);         // then 12 pair values 244..255
    for (int c = 244; c <= 255; ++c)
        block += std::string(2, static_cast<char>(c - 1));
    const std::string ok = block + std::string("\0\1", 2) + "\xF7"; // 247 = 2^5 bytes
    const std::string big = block + std::string("\0\1", 2) + "\xFF";
    std::string out;
    size_t used = 0;
    ASSERT_EQ(byte_pair_expand_block(bytes(ok), ok.size(), out, &used), BlockStatus::Ok);
    EXPECT_EQ(out, std::string(32, 'a'));
    out.clear();
    EXPECT_EQ(byte_pair_expand_block(bytes(big), big.size(), out, &used), BlockStatus::Corrupt);
    // Twenty packed bytes of 2^12 each are also too much together.
    const std::string many = block + std::string("\0\x14", 2) + std::string(20, '\xFE');
    EXPECT_EQ(byte_pair_expand_block(bytes(many), many.size(), out, &used), BlockStatus::Corrupt);
}

TEST(BytePairEngine, DamagedStreamsNeverOverrunOrHang) {
    std::mt19937 rng(2024);
    const std::string sources[] = {make_input(Kind::Text, 12000, 3), make_input(Kind::Same, 9000),
                                   make_input(Kind::SmallAlphabet, 7000, 5), make_input(Kind::Random, 3000, 9)};
    int refused = 0;
    for (const std::string &source : sources) {
        const std::string packed = byte_pair_compress(source);
        // Every cut inside the last block is noticed.
        const std::string one_block = byte_pair_compress(source.substr(0, 150));
        for (size_t cut = 1; cut < one_block.size(); ++cut) {
            std::string out;
            EXPECT_FALSE(byte_pair_expand(one_block.substr(0, cut), out)) << cut;
        }
        for (int round = 0; round < 400; ++round) {
            std::string damaged = packed;
            const int flips = 1 + static_cast<int>(rng() % 4);
            for (int f = 0; f < flips; ++f)
                damaged[rng() % damaged.size()] = static_cast<char>(rng());
            if (rng() % 3 == 0)
                damaged.resize(rng() % damaged.size());
            std::string out;
            const bool ok = byte_pair_expand(damaged, out);
            refused += !ok;
            // No block yields more than 5000 bytes, and every block takes at
            // least 6 bytes of input.
            EXPECT_LE(out.size(), (damaged.size() / 6 + 1) * kBytePairBlockSize);
        }
    }
    EXPECT_GT(refused, 0);
    // Pure noise.
    for (int round = 0; round < 2000; ++round) {
        std::string noise(rng() % 2000, '\0');
        for (char &c : noise)
            c = static_cast<char>(rng());
        std::string out;
        byte_pair_expand(noise, out);
        EXPECT_LE(out.size(), (noise.size() / 6 + 1) * kBytePairBlockSize);
    }
}

namespace {

// Expands `packed` by the definition, one half after the other: endless
// (deeper than 256 levels, so a cycle) or more than a block is refused.
bool expand_by_definition(const uint8_t (&left)[256], const uint8_t (&right)[256], const std::string &packed,
                          std::string &out) {
    auto put = [&](auto &&self, uint8_t v, int depth) -> bool {
        if (depth > 256 || out.size() > kBytePairBlockSize)
            return false;
        if (left[v] == v) {
            out.push_back(static_cast<char>(v));
            return true;
        }
        return self(self, left[v], depth + 1) && self(self, right[v], depth + 1);
    };
    for (const char c : packed)
        if (!put(put, static_cast<uint8_t>(c), 0))
            return false;
    return out.size() <= kBytePairBlockSize;
}

} // namespace

TEST(BytePairEngine, TablesInAnyOrderExpandByTheirDefinition) {
    // The coder hands out pair values from 255 down; a hostile or foreign
    // table may define them in any order, nest them deeply, repeat long
    // values inside others or close cycles. Every result must match the
    // definition, and a cycle only matters where it is used.
    std::mt19937 rng(77);
    int ok = 0, refused = 0;
    for (int round = 0; round < 3000; ++round) {
        uint8_t left[256], right[256] = {};
        for (int v = 0; v < 256; ++v)
            left[v] = static_cast<uint8_t>(v);
        // Pairs defined in a random order, each from literals and pairs
        // defined before it; now and then a half points anywhere.
        std::vector<uint8_t> order(256);
        for (int v = 0; v < 256; ++v)
            order[static_cast<size_t>(v)] = static_cast<uint8_t>(v);
        std::shuffle(order.begin(), order.end(), rng);
        const size_t pairs = 1 + rng() % 120;
        for (size_t k = 0; k < pairs; ++k) {
            const uint8_t v = order[k];
            auto half = [&]() -> uint8_t {
                if (rng() % 40 == 0)
                    return static_cast<uint8_t>(rng()); // may close a cycle
                if (k > 0 && rng() % 3 != 0)
                    return order[k - 1 - rng() % std::min<size_t>(k, 4)]; // a recent pair: long values
                return order[pairs + rng() % (256 - pairs)];              // a literal
            };
            left[v] = half();
            if (left[v] == v)
                left[v] = order[255];
            right[v] = half();
        }
        // Two runs of 128 entries, every value written out.
        std::string block;
        for (int c = 0; c < 256; ++c) {
            if (c % 128 == 0)
                block += '\x7F';
            block += static_cast<char>(left[c]);
            if (left[c] != c)
                block += static_cast<char>(right[c]);
        }
        std::string packed(1 + rng() % 40, '\0');
        for (char &c : packed)
            c = static_cast<char>(order[rng() % std::min<size_t>(256, pairs + 8)]);
        block += static_cast<char>(packed.size() >> 8);
        block += static_cast<char>(packed.size() & 0xFF);
        block += packed;

        std::string expected;
        const bool valid = expand_by_definition(left, right, packed, expected);
        std::string out = "before";
        size_t used = 0;
        const BlockStatus status = byte_pair_expand_block(bytes(block), block.size(), out, &used);
        ASSERT_EQ(status, valid ? BlockStatus::Ok : BlockStatus::Corrupt) << round;
        if (valid) {
            EXPECT_EQ(out, "before" + expected) << round;
            EXPECT_EQ(used, block.size()) << round;
            ++ok;
        } else {
            EXPECT_EQ(out, "before") << round;
            ++refused;
        }
        // A stream of the block twice, then a cut one, keeps what came before.
        std::string whole;
        EXPECT_FALSE(byte_pair_expand(block + block + block.substr(0, block.size() - 1), whole));
        EXPECT_EQ(whole, valid ? expected + expected : "") << round;
    }
    EXPECT_GT(ok, 500);
    EXPECT_GT(refused, 100);
}
