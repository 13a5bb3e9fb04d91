// Placeholder filling against a reference that splits the blocks first.
#include "strings/block_insert.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace brindle::strings;

namespace {

std::string fill_ref(const std::string &text, const std::string &blocks, char mark) {
    std::vector<std::string> parts;
    if (!blocks.empty()) {
        parts.emplace_back();
        for (const char c : blocks)
            if (c == mark)
                parts.emplace_back();
            else
                parts.back().push_back(c);
        if (blocks.back() == mark)
            parts.pop_back(); // a closing separator opens no block
    }
    std::string out;
    size_t next = 0;
    for (const char c : text) {
        if (c != mark)
            out.push_back(c);
        else if (next < parts.size())
            out += parts[next++];
    }
    return out;
}

} // namespace

TEST(BlockInsertEngine, AgreesWithSplitBlocks) {
    std::mt19937 rng(9);
    auto rnd = [&](const char *alphabet, size_t max_len) {
        const std::string a(alphabet);
        std::string s(rng() % (max_len + 1), ' ');
        for (char &c : s)
            c = a[rng() % a.size()];
        return s;
    };
    for (int i = 0; i < 3000; ++i) {
        const std::string text = rnd("x~", 8), blocks = rnd("ab~", 8);
        EXPECT_EQ(insert_blocks(text, blocks, '~'), fill_ref(text, blocks, '~')) << text << " / " << blocks;
    }
    EXPECT_EQ(insert_blocks("Dear #, your # is due", "Ann#invoice", '#'), "Dear Ann, your invoice is due");
}

TEST(BlockInsertEngine, MaskTakesDataThenSpaces) {
    EXPECT_EQ(insert_by_mask("(###) ###-####", '#', "5551234567"), "(555) 123-4567");
    EXPECT_EQ(insert_by_mask("##-##", '#', "123"), "12-3 ");
    EXPECT_EQ(insert_by_mask("abc", '#', "99"), "abc");
}
