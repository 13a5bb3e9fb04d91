// The ISBN-10 check on published numbers, and the faults a check digit is
// meant to catch.
#include "strings/isbn.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

using namespace brindle::strings;

TEST(IsbnEngine, PublishedNumbers) {
    EXPECT_TRUE(isbn10_valid("0-306-40615-2"));
    EXPECT_TRUE(isbn10_valid("0306406152"));
    EXPECT_TRUE(isbn10_valid("ISBN 0 19 853453 1"));
    EXPECT_TRUE(isbn10_valid("0-201-63361-2"));
    // A check digit of ten is written X, which is not a digit.
    EXPECT_FALSE(isbn10_valid("0-8044-2957-X"));
    EXPECT_FALSE(isbn10_valid("030640615"));
    EXPECT_FALSE(isbn10_valid("03064061520"));
}

TEST(IsbnEngine, CatchesOneWrongDigitAndSwappedNeighbours) {
    const std::string good = "0306406152";
    for (size_t k = 0; k < good.size(); ++k) {
        for (char d = '0'; d <= '9'; ++d) {
            if (d == good[k])
                continue;
            std::string bad = good;
            bad[k] = d;
            EXPECT_FALSE(isbn10_valid(bad)) << bad;
        }
        if (k + 1 < good.size() && good[k] != good[k + 1]) {
            std::string swapped = good;
            std::swap(swapped[k], swapped[k + 1]);
            EXPECT_FALSE(isbn10_valid(swapped)) << swapped;
        }
    }
}
