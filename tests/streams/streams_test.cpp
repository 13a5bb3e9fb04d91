// The stream exports through the interface a client uses, in a scratch
// directory. Expected bytes are worked out by hand in the comments, or by a
// plain whole-string translation of the file (the oracle for the buffered
// reader's edge cases).
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <random>
#include <string>
#include <vector>

using namespace brindle::test;

namespace {

class Streams : public TempDirTest {
  protected:
    static int32_t open(std::string_view path, std::string_view mode) {
        Bstr p(path), m(mode);
        return cFopen(p.val(), m.val());
    }
    // cFgets's result and line.
    static std::pair<int16_t, std::string> gets(int32_t stream, int32_t max = 4096) {
        Bstr line("stale");
        const int16_t r = cFgets(line.ref(), max, stream);
        return {r, line.bytes()};
    }
    static int32_t puts(std::string_view text, int32_t stream) {
        Bstr t(text);
        return cFputs(t.val(), stream);
    }
    void TearDown() override {
        cFcloseall();
        TempDirTest::TearDown();
    }
};

// The runtime's text-mode reading done on the whole file at once: CR LF
// becomes LF, the data end at the first Ctrl-Z; then the line reader's cut
// into pieces of at most max - 1 bytes ending after a line feed.
std::vector<std::string> oracle_lines(std::string raw, size_t max) {
    raw = raw.substr(0, raw.find('\x1a'));
    std::string text;
    for (size_t i = 0; i < raw.size(); ++i) {
        if (raw[i] == '\r' && i + 1 < raw.size() && raw[i + 1] == '\n')
            continue;
        text.push_back(raw[i]);
    }
    std::vector<std::string> out;
    std::string cur;
    for (char c : text) {
        cur.push_back(c);
        if (c == '\n' || cur.size() == max - 1) {
            out.push_back(cur);
            cur.clear();
        }
    }
    if (!cur.empty())
        out.push_back(cur);
    return out;
}

} // namespace

TEST_F(Streams, TextModeWritesCrLfAndBinaryModeDoesNot) {
    const int32_t t = open("t.txt", "w"), b = open("b.txt", "wb");
    ASSERT_NE(t, 0);
    ASSERT_NE(b, 0);
    EXPECT_NE(t, b);
    EXPECT_EQ(puts("a\nb\n", t), 0);
    EXPECT_EQ(cFputc('\n', t), '\n');
    EXPECT_EQ(puts("a\nb\n", b), 0);
    Bstr block(std::string("x\0y", 3));
    EXPECT_EQ(cFwrite(block.ref(), b), 3);
    EXPECT_EQ(cFtell(t), 8); // a CR LF b CR LF CR LF
    EXPECT_EQ(cFclose(t), 0);
    EXPECT_EQ(cFclose(b), 0);
    EXPECT_EQ(read_file("t.txt"), "a\r\nb\r\n\r\n");
    EXPECT_EQ(read_file("b.txt"), std::string("a\nb\nx\0y", 7));
}

TEST_F(Streams, TextModeReadsLinesAsTheRuntimeDoes) {
    // "cd\rx": a lone CR stays; the Ctrl-Z ends the data.
    write_file("in.txt", "ab\r\ncd\rx\r\n\x1atail");
    const int32_t s = open("in.txt", "r");
    ASSERT_NE(s, 0);
    EXPECT_EQ(gets(s), (std::pair<int16_t, std::string>{0, "ab\n"}));
    EXPECT_EQ(cFtell(s), 4); // a byte offset, the CR counted
    EXPECT_EQ(gets(s), (std::pair<int16_t, std::string>{0, "cd\rx\n"}));
    EXPECT_EQ(cFeof(s), 0);
    EXPECT_EQ(gets(s), (std::pair<int16_t, std::string>{-1, ""}));
    EXPECT_EQ(cFeof(s), -1);
    EXPECT_EQ(cFgetc(s), -1);
    // The same bytes in binary mode.
    const int32_t b = open("in.txt", "rb");
    EXPECT_EQ(gets(b), (std::pair<int16_t, std::string>{0, "ab\r\n"}));
    EXPECT_EQ(gets(b), (std::pair<int16_t, std::string>{0, "cd\rx\r\n"}));
    EXPECT_EQ(gets(b), (std::pair<int16_t, std::string>{0, "\x1atail"}));
}

TEST_F(Streams, LongLinesComeInPiecesAndMaxZeroTouchesNothing) {
    write_file("in.txt", "abcdef\nz");
    const int32_t s = open("in.txt", "rb");
    EXPECT_EQ(gets(s, 0), (std::pair<int16_t, std::string>{-1, ""}));
    EXPECT_EQ(gets(s, -5), (std::pair<int16_t, std::string>{-1, ""}));
    EXPECT_EQ(gets(s, 1), (std::pair<int16_t, std::string>{0, ""})); // room for the terminator only
    EXPECT_EQ(cFtell(s), 0);
    EXPECT_EQ(gets(s, 4), (std::pair<int16_t, std::string>{0, "abc"}));
    EXPECT_EQ(gets(s, 4), (std::pair<int16_t, std::string>{0, "def"}));
    EXPECT_EQ(gets(s, 4), (std::pair<int16_t, std::string>{0, "\n"}));
    EXPECT_EQ(gets(s, 4), (std::pair<int16_t, std::string>{0, "z"})); // a last line without LF
    EXPECT_EQ(gets(s, 4), (std::pair<int16_t, std::string>{-1, ""}));
}

TEST_F(Streams, BufferBoundariesAgreeWithAWholeFileTranslation) {
    // Lines whose CR LF pairs, lone CRs and ends fall on every side of the
    // 32,768-byte buffer's edges, read with several line-buffer sizes.
    std::mt19937 rng(7);
    std::string raw;
    while (raw.size() < 200000) {
        const size_t len = rng() % 3 == 0 ? rng() % 40000 : rng() % 80;
        for (size_t i = 0; i < len; ++i)
            raw.push_back(static_cast<char>(rng() % 50 == 0 ? '\r' : 'a' + rng() % 26));
        raw += rng() % 4 == 0 ? "\n" : "\r\n";
    }
    raw += "\r"; // a carriage return as the very last byte
    write_file("in.txt", raw);
    for (const int32_t max : {2, 3, 100, 16384, 100000}) {
        const int32_t s = open("in.txt", "rt");
        std::vector<std::string> got;
        for (auto r = gets(s, max); r.first == 0; r = gets(s, max))
            got.push_back(r.second);
        EXPECT_EQ(cFeof(s), -1);
        EXPECT_EQ(cFerror(s), 0);
        EXPECT_EQ(cFtell(s), static_cast<int32_t>(raw.size()));
        cFclose(s);
        EXPECT_EQ(got, oracle_lines(raw, static_cast<size_t>(max))) << "max " << max;
    }
}

TEST_F(Streams, CharactersAndBlocks) {
    std::string data(40000, 'q');
    data[0] = 'A';
    write_file("in.bin", data);
    const int32_t s = open("in.bin", "rb");
    EXPECT_EQ(cFgetc(s), 'A');
    Bstr buffer("old");
    // 39,999 bytes in 16 bits: 39,999 - 65,536.
    EXPECT_EQ(cFread(buffer.ref(), 50000, s), 39999 - 65536);
    EXPECT_EQ(buffer.bytes(), data.substr(1));
    EXPECT_EQ(cFread(buffer.ref(), 10, s), 0);
    EXPECT_EQ(buffer.bytes(), "");
    EXPECT_EQ(cFread(buffer.ref(), -1, s), 0);
    // A byte above 127 comes back as 0-255, and putc keeps the low 8 bits.
    const int32_t w = open("out.bin", "wb");
    EXPECT_EQ(cFputc(0x1C8, w), 0xC8);
    EXPECT_EQ(cFclose(w), 0);
    const int32_t r = open("out.bin", "rb");
    EXPECT_EQ(cFgetc(r), 0xC8);
}

TEST_F(Streams, SeekTellRewindAndFlags) {
    write_file("in.txt", "0123456789");
    const int32_t s = open("in.txt", "rb");
    EXPECT_EQ(cFseek(s, -3, 2), 0);
    EXPECT_EQ(cFtell(s), 7);
    EXPECT_EQ(cFgetc(s), '7');
    EXPECT_EQ(cFseek(s, -2, 1), 0);
    EXPECT_EQ(cFgetc(s), '6');
    EXPECT_EQ(cFseek(s, -1, 0), 1); // before the start
    EXPECT_EQ(cFseek(s, 0, 3), 1);  // no such origin
    EXPECT_EQ(cFtell(s), 7);
    EXPECT_EQ(cFseek(s, 0, 2), 0);
    EXPECT_EQ(cFgetc(s), -1);
    EXPECT_EQ(cFeof(s), -1);
    EXPECT_EQ(cFseek(s, 0, 2), 0); // a seek clears the end flag
    EXPECT_EQ(cFeof(s), 0);
    EXPECT_EQ(cFputc('x', s), -1); // read only
    EXPECT_EQ(cFerror(s), -32);
    cFclearerr(s);
    EXPECT_EQ(cFerror(s), 0);
    EXPECT_EQ(cFputc('x', s), -1);
    cFrewind(s);
    EXPECT_EQ(cFerror(s), 0);
    EXPECT_EQ(cFtell(s), 0);
    EXPECT_EQ(cFgetc(s), '0');
    // Opening an empty file does not set the end flag; a read does.
    write_file("empty.txt", "");
    const int32_t e = open("empty.txt", "r");
    EXPECT_EQ(cFeof(e), 0);
    EXPECT_EQ(cFgetc(e), -1);
    EXPECT_EQ(cFeof(e), -1);
}

TEST_F(Streams, ModesAsTheRuntimeReadsThem) {
    write_file("abc.txt", "abc");
    std::filesystem::create_directory("dir");
    struct Case {
        const char *path, *mode;
        bool opens;
    } cases[] = {
        {"abc.txt", "r", true},     {"abc.txt", "rb", true},     {"abc.txt", "r+t", true},
        {"abc.txt", "rbc", true},   {"abc.txt", "rN", true},     {"missing", "r", false},
        {"abc.txt", "", false},     {"abc.txt", "x", false},     {"abc.txt", "rtb", false},
        {"abc.txt", "r++", false},  {"abc.txt", "rq", false},    {"dir", "r", false},
        {"", "w", false},           {"new.txt", "w+b", true},    {"app.txt", "a+", true},
    };
    for (const Case &c : cases) {
        const int32_t s = open(c.path, c.mode);
        EXPECT_EQ(s != 0, c.opens) << c.path << " " << c.mode;
        cFclose(s);
    }
}

TEST_F(Streams, AppendUpdateAndDirectionChanges) {
    write_file("log.txt", "abc");
    int32_t s = open("log.txt", "ab");
    EXPECT_EQ(cFtell(s), 3);
    EXPECT_EQ(cFseek(s, 0, 0), 0);
    EXPECT_EQ(cFputc('d', s), 'd'); // still at the end
    EXPECT_EQ(cFclose(s), 0);
    EXPECT_EQ(read_file("log.txt"), "abcd");
    s = open("log.txt", "a+b");
    EXPECT_EQ(cFgetc(s), 'a'); // "a+" reads from the start
    EXPECT_EQ(cFputc('e', s), 'e');
    EXPECT_EQ(cFseek(s, 1, 0), 0);
    EXPECT_EQ(cFgetc(s), 'b');
    EXPECT_EQ(cFclose(s), 0);
    EXPECT_EQ(read_file("log.txt"), "abcde");
    // "r+": a write after a read goes where the reading stopped.
    s = open("log.txt", "r+b");
    EXPECT_EQ(cFgetc(s), 'a');
    EXPECT_EQ(cFputc('X', s), 'X');
    EXPECT_EQ(cFgetc(s), 'c');
    EXPECT_EQ(cFclose(s), 0);
    EXPECT_EQ(read_file("log.txt"), "aXcde");
    // "w+" empties, writes, and reads back after a seek.
    s = open("log.txt", "w+");
    EXPECT_EQ(puts("hi\n", s), 0);
    EXPECT_EQ(cFseek(s, 0, 0), 0);
    EXPECT_EQ(gets(s), (std::pair<int16_t, std::string>{0, "hi\n"}));
    EXPECT_EQ(cFclose(s), 0);
    EXPECT_EQ(read_file("log.txt"), "hi\r\n");
}

TEST_F(Streams, NumbersThatNameNoStreamAreRefused) {
    write_file("in.txt", "abc");
    const int32_t closed = open("in.txt", "r+");
    ASSERT_EQ(cFclose(closed), 0);
    for (const int32_t n : {closed, 0, 1, 2, 3, -1, 65535, 0x7FFFFFFF}) {
        SCOPED_TRACE(n);
        EXPECT_EQ(cFclose(n), -1);
        EXPECT_EQ(cFflush(n), -1);
        EXPECT_EQ(puts("x", n), -1);
        EXPECT_EQ(gets(n), (std::pair<int16_t, std::string>{-32, ""}));
        EXPECT_EQ(cFgetc(n), -1);
        EXPECT_EQ(cFputc('x', n), -1);
        Bstr b("abc");
        EXPECT_EQ(cFread(b.ref(), 3, n), 0);
        EXPECT_EQ(cFwrite(b.ref(), n), 0);
        EXPECT_EQ(cFseek(n, 0, 0), 1);
        EXPECT_EQ(cFtell(n), -1);
        cFrewind(n);
        cFclearerr(n);
        EXPECT_EQ(cFeof(n), -1);
        EXPECT_EQ(cFerror(n), -32);
        SafeArray index(VT_I4, 1, 4);
        EXPECT_EQ(cFProcessAsciiFile(n, index.ref()), -32);
        EXPECT_EQ(cFGotoRecord(n, index.ref(), 1), 1);
    }
    EXPECT_EQ(read_file("in.txt"), "abc");
}

TEST_F(Streams, StandardStreamsStayOpen) {
    const int32_t out = cFStdOut(), err = cFStdErr(), in = cFStdIn();
    EXPECT_NE(out, 0);
    EXPECT_EQ(cFStdOut(), out);
    EXPECT_NE(out, err);
    EXPECT_NE(in, err);
    EXPECT_EQ(cFclose(out), -1);
    EXPECT_EQ(cFflush(out), 0);
    EXPECT_EQ(cFtell(out), -1);
    EXPECT_EQ(cFseek(err, 0, 0), 1);
    EXPECT_EQ(cFputc('x', in), -1); // input only
    write_file("a.txt", "");
    const int32_t a = open("a.txt", "r"), b = open("a.txt", "r");
    EXPECT_EQ(cFflushall(), 5); // the three standard streams and two files
    EXPECT_EQ(cFcloseall(), 2);
    EXPECT_EQ(cFcloseall(), 0);
    EXPECT_EQ(cFgetc(a), -1);
    EXPECT_EQ(cFerror(b), -32);
    EXPECT_EQ(cFflush(out), 0);
}

TEST_F(Streams, LineIndexAndGotoRecord) {
    // one CR LF two CR LF three CR LF: lines start at 0, 5, 10; the end is 17.
    write_file("three.txt", "one\r\ntwo\r\nthree\r\n");
    int32_t s = open("three.txt", "r");
    SafeArray index(VT_I4, 1, 10);
    EXPECT_EQ(cFProcessAsciiFile(s, index.ref()), 3);
    const int32_t *v = index.data<int32_t>();
    EXPECT_EQ((std::vector<int32_t>{v[0], v[1], v[2], v[3], v[4]}), (std::vector<int32_t>{0, 5, 10, 17, 0}));
    EXPECT_EQ(cFeof(s), -1);
    EXPECT_EQ(cFGotoRecord(s, index.ref(), 2), -1);
    EXPECT_EQ(gets(s), (std::pair<int16_t, std::string>{0, "two\n"}));
    EXPECT_EQ(cFGotoRecord(s, index.ref(), 0), 0);
    EXPECT_EQ(cFGotoRecord(s, index.ref(), 11), 0);
    EXPECT_EQ(gets(s), (std::pair<int16_t, std::string>{0, "three\n"})); // not moved
    // Element 1 is the first used whatever the lower bound; a short array
    // stops the indexing one line past its size.
    cFrewind(s);
    SafeArray zero_based(VT_I4, 0, 3); // elements 0..2
    EXPECT_EQ(cFProcessAsciiFile(s, zero_based.ref()), 3);
    const int32_t *z = zero_based.data<int32_t>();
    EXPECT_EQ((std::vector<int32_t>{z[0], z[1], z[2]}), (std::vector<int32_t>{0, 0, 5}));
    cFrewind(s);
    SafeArray two(VT_I4, 1, 2);
    EXPECT_EQ(cFProcessAsciiFile(s, two.ref()), 3);
    // An empty file, and arrays of another type.
    write_file("empty.txt", "");
    const int32_t e = open("empty.txt", "r");
    SafeArray fresh(VT_I4, 1, 4);
    fresh.data<int32_t>()[0] = 99;
    EXPECT_EQ(cFProcessAsciiFile(e, fresh.ref()), 0);
    EXPECT_EQ(fresh.data<int32_t>()[0], 0);
    SafeArray doubles(VT_R8, 1, 4), strings(VT_BSTR, 1, 4);
    EXPECT_EQ(cFProcessAsciiFile(s, doubles.ref()), 0);
    EXPECT_EQ(cFProcessAsciiFile(s, strings.ref()), 0);
    EXPECT_EQ(cFGotoRecord(s, strings.ref(), 1), 0);
    EXPECT_EQ(cFProcessAsciiFile(s, nullptr), 0);
}
