// Morse code against the international table (ITU-R M.1677) with dots and
// dashes exchanged, as the library writes it.
#include "convert/morse.h"

#include <gtest/gtest.h>

#include <string>

using namespace brindle::convert;

namespace {

std::string exchanged(std::string code) {
    for (char &c : code)
        c = c == '.' ? '-' : '.';
    return code;
}

} // namespace

TEST(MorseEngine, InternationalCodeExchanged) {
    const char *const letters[26] = {".-",   "-...", "-.-.", "-..",  ".",    "..-.", "--.",
                                     "....", "..",   ".---", "-.-",  ".-..", "--",   "-.",
                                     "---",  ".--.", "--.-", ".-.",  "...",  "-",    "..-",
                                     "...-", ".--",  "-..-", "-.--", "--.."};
    const char *const digits[10] = {"-----", ".----", "..---", "...--", "....-",
                                    ".....", "-....", "--...", "---..", "----."};
    for (int k = 0; k < 26; ++k)
        EXPECT_EQ(morse_code_of(static_cast<unsigned char>('A' + k)), exchanged(letters[k])) << char('A' + k);
    for (int k = 0; k < 10; ++k)
        EXPECT_EQ(morse_code_of(static_cast<unsigned char>('0' + k)), exchanged(digits[k])) << k;
    EXPECT_EQ(morse_code_of(','), exchanged("--..--"));
    EXPECT_EQ(morse_code_of('.'), exchanged(".-.-.-"));
    EXPECT_EQ(morse_code_of('?'), exchanged("..--.."));
    EXPECT_EQ(morse_code_of('/'), exchanged("-..-."));
    EXPECT_EQ(morse_code_of('a'), nullptr); // the table is upper case
    EXPECT_EQ(morse_code_of('@'), nullptr);
}

TEST(MorseEngine, TextCasesAndGaps) {
    EXPECT_EQ(morse_text("sOs"), "--- ... --- "); // S is "...", O "---" internationally
    EXPECT_EQ(morse_text("a@b"), "-. ~.--- "); // no code: "~" without a space
    EXPECT_EQ(morse_text("e\tt\x80~"), "- . "); // outside 32..90 after upper-casing: skipped
    EXPECT_EQ(morse_text(""), "");
}
