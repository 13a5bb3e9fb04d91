// Key searches over texts with null elements, against a plain reference
// that folds case with std::tolower in the "C" locale.
#include "arrays/text_search.h"

#include <gtest/gtest.h>

#include <cctype>
#include <optional>
#include <string>
#include <vector>

using namespace brindle::arrays;

namespace {

using Texts = std::vector<std::optional<std::string>>;

auto reader(const Texts &t) {
    return [&t](size_t k) { return t[k]; };
}

} // namespace

TEST(TextSearchEngine, EqualityAsTheRuntimeComparesIt) {
    const char *const words[] = {"Alpha", "ALPHA", "alpha", "alphA\0x", "alpha ", "\xC4lpha", "\xE4lpha", ""};
    for (const char *x : words) {
        for (const char *y : words) {
            std::string a(x), b(y);
            std::string fa = a, fb = b;
            for (char &c : fa)
                c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
            for (char &c : fb)
                c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
            EXPECT_EQ(c_text_equal(a, b, true), a == b) << a << "|" << b;
            EXPECT_EQ(c_text_equal(a, b, false), fa == fb) << a << "|" << b;
        }
    }
    // Only up to the first zero byte.
    EXPECT_TRUE(c_text_equal(std::string("ab\0c", 4), std::string("ab\0d", 4), true));
}

TEST(TextSearchEngine, LastMatchWinsAndNullElements) {
    const Texts t = {"Key", std::nullopt, "other", "KEY", std::nullopt};
    EXPECT_EQ(last_equal_text(t.size(), reader(t), "key", false), 3u);
    EXPECT_EQ(last_equal_text(t.size(), reader(t), "Key", true), 0u);
    EXPECT_EQ(last_equal_text(t.size(), reader(t), "", true), 4u); // a null matches only ""
    EXPECT_EQ(last_equal_text(t.size(), reader(t), "none", false), std::nullopt);
    // In a look-up table a null key matches anything.
    EXPECT_EQ(last_lookup_row(t.size(), reader(t), "none", false), 4u);
    EXPECT_EQ(last_lookup_row(4, reader(t), "key", false), 3u);
    EXPECT_EQ(last_lookup_row(1, reader(t), "nope", false), std::nullopt);
}
