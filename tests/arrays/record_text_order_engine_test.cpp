// RecordTextOrder must answer exactly what the runtime's comparison that runs
// past the record answers, for every pair of records.
#include "arrays/record_text_order.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using brindle::arrays::compare_text_nocase;
using brindle::arrays::RecordTextOrder;

TEST(RecordTextOrder, AgreesWithTheDirectComparisonOnEveryPair) {
    std::mt19937 rng(17);
    // Small alphabets with case pairs and zero bytes, and buffers built from
    // repeated blocks, so that long equal runs and ties abound.
    const std::string alphabets[] = {"aA", "aAbB", std::string("aA\0", 3), "ab", "a"};
    for (const std::string &alphabet : alphabets) {
        for (size_t size : {1u, 2u, 3u, 5u}) {
            for (int trial = 0; trial < 12; ++trial) {
                const size_t count = 1 + rng() % 40;
                const size_t tail = rng() % (2 * size + 1);
                std::string block;
                for (size_t k = 0, n = 1 + rng() % 6; k < n; ++k)
                    block += alphabet[rng() % alphabet.size()];
                std::string text;
                while (text.size() < count * size + tail)
                    text += (rng() % 4 == 0) ? std::string(1, alphabet[rng() % alphabet.size()]) : block;
                text.resize(count * size + tail);
                const auto *base = reinterpret_cast<const unsigned char *>(text.data());
                const RecordTextOrder order(base, size, text.size());
                for (size_t i = 0; i < count; ++i)
                    for (size_t j = 0; j < count; ++j)
                        ASSERT_EQ(order.compare(i, j),
                                  compare_text_nocase(base + i * size, base + j * size, base + text.size()))
                            << "size " << size << " i " << i << " j " << j << " text '" << text << "'";
            }
        }
    }
}

TEST(RecordTextOrder, DirectComparisonFoldsOnlyAsciiLettersAndStopsAtTheEnd) {
    const auto cmp = [](const std::string &a, const std::string &b) {
        const std::string text = a + b;
        const auto *p = reinterpret_cast<const unsigned char *>(text.data());
        return compare_text_nocase(p, p + a.size(), p + text.size());
    };
    EXPECT_EQ(cmp("A", "a"), 'a' - 0);      // "Aa" against "a": then 'a' against the end
    EXPECT_EQ(cmp("b", "A"), 'b' - 'a');
    EXPECT_EQ(cmp("\xC4", "\xE4"), 0xC4 - 0xE4); // no folding beyond ASCII
    EXPECT_EQ(cmp(std::string("x\0", 2), std::string("x\0", 2)), 0);
}
