// The token tests against a plain reference: split the list, then search
// each token with std::string::find.
#include "strings/token_test.h"

#include "support/random_text.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace brindle::strings;

namespace {

std::vector<std::string> tokens_of(const std::string &list, char sep) {
    std::vector<std::string> out(1);
    for (size_t k = 0; k < list.size(); ++k) {
        if (list[k] == sep && k + 1 < list.size())
            out.emplace_back();
        else
            out.back().push_back(list[k]); // a final separator stays in its token
    }
    return out;
}

bool ref_any(const std::string &text, const std::string &list, char sep) {
    for (const auto &t : tokens_of(list, sep))
        if (!t.empty() && text.find(t) != std::string::npos)
            return true;
    return false;
}

bool ref_all(const std::string &text, const std::string &list, char sep) {
    for (const auto &t : tokens_of(list, sep))
        if (!t.empty() && text.find(t) == std::string::npos)
            return false;
    return true;
}

using brindle::test::random_string;

} // namespace

TEST(TokenTestEngine, AgreesWithSplitAndSearch) {
    std::mt19937 rng(7);
    for (int i = 0; i < 4000; ++i) {
        const std::string text = random_string(rng, "abc", 12);
        const std::string list = random_string(rng, "abc|", 10);
        if (text.empty() || list.empty())
            continue;
        SCOPED_TRACE(text + " / " + list);
        EXPECT_EQ(any_token_in(text, list, '|'), ref_any(text, list, '|'));
        EXPECT_EQ(all_tokens_in(text, list, '|'), ref_all(text, list, '|'));
    }
}

TEST(TokenTestEngine, EmptyInputsAndSixteenBitListLength) {
    EXPECT_FALSE(any_token_in("", "a", '|'));
    EXPECT_FALSE(all_tokens_in("", "a", '|'));
    EXPECT_FALSE(all_tokens_in("abc", "", '|'));
    // 65,536 + 2 bytes are seen as the first two; 32,768 bytes as none.
    std::string list = "zq" + std::string(65536, 'a');
    EXPECT_FALSE(any_token_in("a", list, '|'));
    EXPECT_TRUE(any_token_in("xzqx", list, '|'));
    const std::string found(2559, 'a');
    EXPECT_TRUE(any_token_in(found, std::string(32767, 'a'), '|'));
    EXPECT_FALSE(any_token_in(found, std::string(32768, 'a'), '|'));
}

TEST(TokenTestEngine, LongTokensAreSearchedByTheirFirst2559Bytes) {
    const std::string head(2559, 'k');
    EXPECT_TRUE(any_token_in(head, head + "zzz", '|'));
    EXPECT_FALSE(any_token_in(head.substr(1), head + "zzz", '|'));
}
