// The caller's ANSI bytes and the wide text of the OLE types: Latin-1 on
// POSIX, the system's ANSI code page on Windows.
#include "platform/ole.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using brindle::platform::ansi_to_wide;
using brindle::platform::wide_to_ansi;

namespace {

std::vector<OLECHAR> wide_of(const std::string &bytes) {
    BSTR w = ansi_to_wide(bytes.data(), bytes.size());
    EXPECT_NE(w, nullptr);
    std::vector<OLECHAR> out(w, w + SysStringLen(w));
    SysFreeString(w);
    return out;
}

// True when the ANSI code page is the western one the rows below assume
// (Latin-1 on POSIX; Windows-1252 on Windows and Wine).
bool western() {
#ifdef _WIN32
    return GetACP() == 1252;
#else
    return true;
#endif
}

} // namespace

TEST(CodePage, EveryByteSurvivesTheRoundTrip) {
    if (!western())
        GTEST_SKIP() << "not a western single-byte code page";
    std::string all(256, '\0');
    for (int i = 0; i < 256; ++i)
        all[static_cast<size_t>(i)] = static_cast<char>(i);
    const std::vector<OLECHAR> wide = wide_of(all);
    ASSERT_EQ(wide.size(), 256u) << "one wide character per byte, zero bytes included";
    EXPECT_EQ(wide_to_ansi(wide.data(), wide.size()), all);
}

TEST(CodePage, KnownCharacters) {
    if (!western())
        GTEST_SKIP() << "not a western single-byte code page";
    struct Row {
        unsigned char ansi;
        OLECHAR wide;
    };
#ifdef _WIN32
    const Row rows[] = {{'A', 0x41}, {0xE9, 0xE9}, {0x80, 0x20AC}, {0x9F, 0x178}, {0xA0, 0xA0}, {0xFF, 0xFF}};
#else
    const Row rows[] = {{'A', 0x41}, {0xE9, 0xE9}, {0x80, 0x80}, {0x9F, 0x9F}, {0xA0, 0xA0}, {0xFF, 0xFF}};
#endif
    for (const Row &r : rows) {
        const std::string ansi(1, static_cast<char>(r.ansi));
        EXPECT_EQ(wide_of(ansi), std::vector<OLECHAR>{r.wide}) << int(r.ansi);
        EXPECT_EQ(wide_to_ansi(&r.wide, 1), ansi) << int(r.ansi);
    }
}

TEST(CodePage, UnmappableAndEmptyText) {
    const OLECHAR cjk[] = {'a', 0x4E00, 'b'};
    EXPECT_EQ(wide_to_ansi(cjk, 3), "a?b") << "a character the code page lacks becomes ?";
    EXPECT_EQ(wide_to_ansi(nullptr, 0), "");
    EXPECT_EQ(wide_to_ansi(cjk, 0), "");
    BSTR empty = ansi_to_wide("", 0);
    ASSERT_NE(empty, nullptr) << "empty text is a zero-length string, not a null handle";
    EXPECT_EQ(SysStringLen(empty), 0u);
    SysFreeString(empty);
}
