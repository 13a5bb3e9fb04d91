// Bytewise logic: the laws of the operations hold byte by byte over every
// pair of byte values.
#include "strings/bytewise.h"

#include <gtest/gtest.h>

#include <string>

using namespace brindle::strings;

TEST(BytewiseEngine, LawsHoldForEveryPairOfBytes) {
    std::string a, b;
    for (int x = 0; x < 256; ++x)
        for (int y = 0; y < 256; ++y) {
            a.push_back(static_cast<char>(x));
            b.push_back(static_cast<char>(y));
        }
    const std::string conj = bytewise(a, b, ByteLogic::And);
    const std::string disj = bytewise(a, b, ByteLogic::Or);
    const std::string excl = bytewise(a, b, ByteLogic::Xor);
    EXPECT_EQ(bytewise(excl, b, ByteLogic::Xor), a);        // xor undoes itself
    EXPECT_EQ(bytewise(conj, excl, ByteLogic::Or), disj);   // or = and + xor
    EXPECT_EQ(bytewise(conj, excl, ByteLogic::And), std::string(a.size(), '\0'));
    EXPECT_EQ(bytewise(disj, a, ByteLogic::And), a);        // absorption
    EXPECT_EQ(bytewise("\xF0\x0F", "\x3C\x3C", ByteLogic::Xor), "\xCC\x33");
}
