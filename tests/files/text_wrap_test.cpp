// Line wrapping and mail-header scans through the exported interface, in a
// scratch directory. Expected outputs are worked out by hand in the comments.
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <random>
#include <string>
#include <vector>

using namespace brindle::test;

namespace {

class TextWrap : public TempDirTest {
  protected:
    static int32_t wrap(std::string_view source, std::string_view target, int32_t width, std::string_view delimiters,
                        std::string_view line_break) {
        Bstr s(source), t(target), d(delimiters), b(line_break);
        return cFileWrapLine(s.val(), t.val(), width, d.val(), b.val());
    }
    static std::string header(std::string_view file, std::string_view field) {
        Bstr f(file), n(field);
        return str(cFileScanHeader(f.val(), n.val()));
    }
    static std::string recipients(std::string_view file, std::string_view separator) {
        Bstr f(file), s(separator);
        return str(cFileScanHeaderForRecipients(f.val(), s.val()));
    }
};

} // namespace

TEST_F(TextWrap, BreaksAtTheLastPlaceThatFits) {
    struct Case {
        const char *input;
        int32_t width;
        const char *delimiters, *line_break;
        const char *output;
        int32_t breaks;
    } cases[] = {
        // "hello " is 6 bytes: the space at 5 is the break; the blank is dropped.
        {"hello world\r\n", 5, "", "", "hello\r\nworld\r\n", 1},
        // Width 8: "a well-k" has the hyphen at 6 ("a well-"), "known ta" the
        // space at 5 ("known"); the source's LF endings stay.
        {"a well-known tale\n", 8, " -", "\n", "a well-\nknown\ntale\n", 2},
        // A hyphen is not a delimiter unless listed: the space at 1 wins.
        {"a well-known\n", 10, "", "|", "a|well-known\n", 1},
        // Lines that fit are not touched, nor is an empty line.
        {"abcde\n\nfg\r\n", 5, "", "|", "abcde\n\nfg\r\n", 0},
        // Blanks at a break that runs into the end of the line: no break, no
        // empty piece.
        {"hello   \r\nx", 5, "", "|", "hello\r\nx", 0},
        // No place to break: cut at the width, the last piece without an ending.
        {"abcdefghij", 4, "", "|", "abcd|efgh|ij", 2},
        // A lone carriage return is text, and counts toward the width.
        {"ab\rcd\n", 3, "", "#", "ab\r#cd\n", 1},
        // The break text may indent the continued line.
        {"one two three\n", 7, "", "\r\n  ", "one two\r\n  three\n", 1},
        // Only listed bytes break: with "-" alone the spaces do not.
        {"ab cd ef\n", 4, "-", "|", "ab c|d ef\n", 1},
        // Leading blanks give no place before the width: a hard cut.
        {"     x\n", 3, "", "|", "   |  x\n", 1},
        // Runs of blanks inside a line: the whole run goes at the break.
        {"aa   bb cc\n", 4, "", "|", "aa|bb|cc\n", 2},
        {"", 5, "", "", "", 0},
    };
    for (const Case &c : cases) {
        write_file("in.txt", c.input);
        EXPECT_EQ(wrap("in.txt", "out.txt", c.width, c.delimiters, c.line_break), c.breaks) << c.input;
        EXPECT_EQ(read_file("out.txt"), c.output) << c.input;
    }
}

// Random words at random widths, one space apart: no piece is longer than
// the width, nothing but blanks is lost, and a break made before the width
// leaves no room for the next word on the line before.
TEST_F(TextWrap, RandomTextKeepsItsWordsWithinTheWidth) {
    std::mt19937 rng(17);
    for (int round = 0; round < 40; ++round) {
        std::string input;
        const int lines = 1 + static_cast<int>(rng() % 20);
        for (int l = 0; l < lines; ++l) {
            for (int w = static_cast<int>(rng() % 30); w > 0; --w) {
                input += ' ';
                input.append(1 + rng() % 12, static_cast<char>('a' + rng() % 26));
            }
            input += rng() % 2 ? "\r\n" : "\n";
        }
        const int32_t width = 1 + static_cast<int32_t>(rng() % 20);
        write_file("in.txt", input);
        const int32_t breaks = wrap("in.txt", "out.txt", width, " ", "|");
        ASSERT_GE(breaks, 0);
        const std::string out = read_file("out.txt");
        std::string in_letters, out_letters;
        for (char c : input)
            if (c != ' ')
                in_letters += c;
        int32_t bars = 0;
        for (char c : out) {
            if (c == '|')
                ++bars;
            else if (c != ' ')
                out_letters += c;
        }
        EXPECT_EQ(in_letters, out_letters);
        EXPECT_EQ(bars, breaks);
        // Pieces: split at breaks and line ends.
        std::vector<std::string> pieces(1);
        std::vector<bool> broken; // piece i ended at a break
        for (char c : out) {
            if (c == '|' || c == '\n') {
                broken.push_back(c == '|');
                pieces.emplace_back();
            } else if (c != '\r') {
                pieces.back() += c;
            }
        }
        for (size_t i = 0; i < pieces.size(); ++i) {
            EXPECT_LE(pieces[i].size(), static_cast<size_t>(width)) << pieces[i];
            if (i + 1 < pieces.size() && broken[i] && pieces[i].size() < static_cast<size_t>(width)) {
                // Broken early: the next word would not have fitted.
                const std::string &next = pieces[i + 1];
                const size_t word = next.find(' ') == std::string::npos ? next.size() : next.find(' ');
                EXPECT_GT(pieces[i].size() + 1 + word, static_cast<size_t>(width)) << pieces[i] << "|" << next;
            }
        }
    }
}

TEST_F(TextWrap, CodesAndRefusals) {
    write_file("s.txt", "some text to wrap\n");
    EXPECT_EQ(wrap("s.txt", "o.txt", 0, "", ""), -1);
    EXPECT_EQ(wrap("s.txt", "o.txt", 4097, "", ""), -1);
    EXPECT_EQ(wrap("s.txt", "o.txt", -5, "", ""), -1);
    EXPECT_EQ(wrap("s.txt", "o.txt", 10, "", std::string(256, '\n')), -1);
    EXPECT_EQ(wrap("s.txt", "o.txt", 4096, "", std::string(255, '\n')), 0);
    EXPECT_EQ(wrap("", "o.txt", 10, "", ""), -2);
    EXPECT_EQ(wrap("s*.txt", "o.txt", 10, "", ""), -2);
    EXPECT_EQ(wrap("s.txt", "o?.txt", 10, "", ""), -3);
    // One file under two spellings: refused before the target is opened,
    // so the source is intact.
    EXPECT_EQ(wrap("s.txt", "s.txt", 4, "", ""), -4);
    std::filesystem::create_hard_link("s.txt", "link.txt");
    EXPECT_EQ(wrap("s.txt", "link.txt", 4, "", ""), -4);
    EXPECT_EQ(read_file("s.txt"), "some text to wrap\n");
    EXPECT_EQ(wrap("missing.txt", "o.txt", 10, "", ""), -5);
    std::filesystem::create_directory("dir");
    EXPECT_EQ(wrap("s.txt", "no-such-dir\\o.txt", 10, "", ""), -7);
    EXPECT_EQ(wrap("s.txt", "dir", 10, "", ""), -7);
    EXPECT_TRUE(std::filesystem::is_directory("dir"));
}

TEST_F(TextWrap, HeaderFields) {
    write_file("m.eml",
               "From someone@example.com Mon Jan  1 00:00:00 2001\r\n"
               "Received: from a\r\n"
               "\tby b\r\n"
               "Subject:  Hello\r\n"
               "  folded world  \r\n"
               "X-Empty:\r\n"
               "subject: the second is never read\r\n"
               "Date : Tue, 2 Jan 2001\n"
               "\r\n"
               "To: after@the.header\r\n");
    struct Case {
        const char *field, *value;
    } cases[] = {
        {"Subject", "Hello  folded world"}, // the line break out, the blanks kept
        {"SUBJECT:", "Hello  folded world"},
        {"received", "from a\tby b"},
        {"Date", "Tue, 2 Jan 2001"}, // blanks before the colon, LF ending
        {"X-Empty", ""},
        {"To", ""},   // in the body
        {"From", ""}, // the mailbox line is no field
        {"", ""},
    };
    for (const Case &c : cases)
        EXPECT_EQ(header("m.eml", c.field), c.value) << c.field;
    EXPECT_EQ(header("missing.eml", "Subject"), "");
    write_file("nohead.eml", "\r\nSubject: body only\r\n");
    EXPECT_EQ(header("nohead.eml", "Subject"), "");
}

TEST_F(TextWrap, Recipients) {
    write_file("m.eml",
               "To: \"Lee, Ann\" <ann@example.com>, bob@example.org (Bob Smith),\r\n"
               " team: carl@example.net, <@relay.one,@relay.two:dora@example.com>;\r\n"
               "Subject: not an address <x@y.z>\r\n"
               "Cc: undisclosed-recipients:;\r\n"
               "CC: \"odd name\"@example.com , , eve @ example.com\r\n"
               "bcc: <fay@example.com>\r\n"
               "\r\n"
               "To: body@example.com\r\n");
    EXPECT_EQ(recipients("m.eml", ""),
              "ann@example.com;bob@example.org;carl@example.net;dora@example.com;\"odd name\"@example.com;"
              "eve@example.com;fay@example.com");
    EXPECT_EQ(recipients("m.eml", ", ").substr(0, 34), "ann@example.com, bob@example.org, ");
    write_file("none.eml", "Subject: hi\r\n\r\n");
    EXPECT_EQ(recipients("none.eml", ";"), "");
    EXPECT_EQ(recipients("missing.eml", ";"), "");
}
