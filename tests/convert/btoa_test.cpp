// Btoa files, through the exported interface: round trips, the exact layout,
// the return codes, and damaged input that must never crash the decoder.
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <algorithm>
#include <filesystem>
#include <random>
#include <string>

using namespace brindle::test;

namespace {

class Btoa : public TempDirTest {
  protected:
    static int32_t encode(const std::string &in, const std::string &out) {
        Bstr i(in), o(out);
        return cBtoA(i.val(), o.val());
    }
    static int32_t decode(const std::string &in) {
        Bstr i(in);
        return cAtoB(i.val());
    }
    // Encodes `data` saved as `name` into name.btoa, removes the original.
    std::string encoded(const std::string &name, const std::string &data) {
        write_file(name, data);
        EXPECT_GT(encode(name, name + ".btoa"), 0);
        std::filesystem::remove(name);
        return read_file(name + ".btoa");
    }
    // The lines of a CR LF text.
    static std::vector<std::string> lines(const std::string &text) {
        std::vector<std::string> out;
        size_t start = 0;
        for (size_t end; (end = text.find("\r\n", start)) != std::string::npos; start = end + 2)
            out.push_back(text.substr(start, end - start));
        return out;
    }
    static std::string join(const std::vector<std::string> &ls) {
        std::string t;
        for (const auto &l : ls)
            t += l + "\r\n";
        return t;
    }
};

std::string random_bytes(std::mt19937 &rng, size_t n) {
    std::string s(n, '\0');
    for (char &c : s)
        c = static_cast<char>(rng() & 0xFF);
    return s;
}

} // namespace

TEST_F(Btoa, LayoutOfASmallFile) {
    write_file("zero.bin", std::string(4, '\0'));
    const int32_t size = encode("zero.bin", "zero.txt");
    const std::string text = read_file("zero.txt");
    EXPECT_EQ(text, "xbtoa5 78 zero.bin Begin\r\nzG\r\nxbtoa End N 4 4 E 7a S 7b R 7a\r\n");
    EXPECT_EQ(size, static_cast<int32_t>(text.size()));

    write_file("empty.bin", "");
    encode("empty.bin", "empty.txt");
    EXPECT_EQ(read_file("empty.txt"), "xbtoa5 78 empty.bin Begin\r\nxbtoa End N 0 0 E 0 S 0 R 0\r\n");
}

TEST_F(Btoa, RoundTripsOfEveryLengthModuloFour) {
    std::mt19937 rng(7);
    // Text mode on both sides: CR LF pairs come back as they were; bytes
    // other than CR, LF and Ctrl-Z survive whatever they are.
    for (size_t n : {0u, 1u, 2u, 3u, 4u, 5u, 76u, 77u, 78u, 79u, 155u, 1000u, 100003u}) {
        std::string data = random_bytes(rng, n);
        for (char &c : data)
            if (c == '\r' || c == '\n' || c == 0x1A)
                c = 'x';
        if (n > 10)
            data.replace(3, 8, std::string(4, ' ') + std::string(4, '\0')); // a "y" and a "z" group
        const std::string text = encoded("data.bin", data);
        ASSERT_EQ(decode("data.bin.btoa"), 0) << n;
        ASSERT_EQ(read_file("data.bin"), data) << n;
        for (const std::string &l : lines(text))
            ASSERT_LE(l.size(), 78u);
    }
    // Each decoding writes the file its own header names.
    const std::string windows_text = "line one\r\nline two\r\n\r\nend";
    encoded("notes.txt", windows_text);
    EXPECT_EQ(decode("notes.txt.btoa"), 0);
    EXPECT_EQ(read_file("notes.txt"), windows_text);
    std::filesystem::remove("data.bin");
    EXPECT_EQ(decode("data.bin.btoa"), 0);
    EXPECT_EQ(read_file("data.bin").size(), 100003u);
    EXPECT_EQ(read_file("notes.txt"), windows_text);
}

TEST_F(Btoa, TextModeOnBothSides) {
    // Reading: CR LF is read as LF and Ctrl-Z ends the input.
    write_file("in.bin", std::string("a\r\nb\x1A" "after", 9));
    encode("in.bin", "in.txt");
    const std::string text = read_file("in.txt");
    EXPECT_NE(text.find("xbtoa End N 3 3 "), std::string::npos) << text;
    // Writing: the decoded LF becomes CR LF again.
    std::filesystem::remove("in.bin");
    EXPECT_EQ(decode("in.txt"), 0);
    EXPECT_EQ(read_file("in.bin"), "a\r\nb");
}

TEST_F(Btoa, EncoderReturnCodes) {
    EXPECT_EQ(encode("missing.bin", "out.txt"), -1);
    EXPECT_FALSE(std::filesystem::exists("out.txt"));
    write_file("in.bin", "data");
    std::filesystem::create_directory("dir");
    EXPECT_EQ(encode("in.bin", "dir"), -2);
    EXPECT_EQ(encode("in.bin", "nodir\\out.txt"), -2);
    EXPECT_EQ(encode("", "out.txt"), -1);
    EXPECT_EQ(cBtoA(nullptr, nullptr), -1);
    // The input is never truncated by its own output, however it is named.
    EXPECT_EQ(encode("in.bin", "in.bin"), -2);
    EXPECT_EQ(encode("in.bin", ".\\in.bin"), -2);
    EXPECT_EQ(read_file("in.bin"), "data");
    // The name recorded is the part after the last "\" or ":".
    std::filesystem::create_directory("sub");
    write_file("sub/x.bin", "1234");
    EXPECT_GT(encode("C:sub\\x.bin", "x.txt"), 0);
    EXPECT_EQ(read_file("x.txt").substr(0, 22), "xbtoa5 78 x.bin Begin\r");
}

TEST_F(Btoa, DecoderReturnCodes) {
    const std::string good = encoded("f.bin", std::string(200, 'q'));
    std::vector<std::string> ls = lines(good);
    ASSERT_EQ(ls.size(), 6u); // header, 4 body lines (250 characters: 3 x 77 + 19), trailer

    EXPECT_EQ(decode("missing.btoa"), -1);
    EXPECT_EQ(cAtoB(nullptr), -1);

    write_file("none.txt", "hello\r\nworld\r\n");
    EXPECT_EQ(decode("none.txt"), -4);
    write_file("archive.txt", "this is a btoa archive\r\n" + good);
    EXPECT_EQ(decode("archive.txt"), -1);
    write_file("old.txt", "xbtoa Begin\r\n" + good.substr(good.find('\n') + 1));
    EXPECT_EQ(decode("old.txt"), -4);
    write_file("dash.txt", "xbtoa5 78 - Begin\r\n" + good.substr(good.find('\n') + 1));
    EXPECT_EQ(decode("dash.txt"), -4);
    const std::string self = "xbtoa5 78 self.txt Begin\r\n" + good.substr(good.find('\n') + 1);
    write_file("self.txt", self);
    EXPECT_EQ(decode("self.txt"), -1); // its header names the input itself
    EXPECT_EQ(read_file("self.txt"), self);

    // A preamble before the header is skipped.
    write_file("mail.txt", "From: someone\r\nSubject: file\r\n\r\n" + good);
    EXPECT_EQ(decode("mail.txt"), 0);
    EXPECT_EQ(read_file("f.bin"), std::string(200, 'q'));

    auto with = [&](size_t index, const std::string &line) {
        std::vector<std::string> copy = ls;
        copy[index] = line;
        write_file("case.txt", join(copy));
        return decode("case.txt");
    };
    std::string changed = ls[2];
    changed[10] = changed[10] == '!' ? '"' : '!';
    EXPECT_EQ(with(2, changed), -1);                                           // one body character
    EXPECT_EQ(with(5, "xbtoa End N 200 c8 E 0 S 0 R 0"), -5);                  // checksums
    std::string trailer = ls[5];
    EXPECT_EQ(with(5, trailer.replace(trailer.find(" c8 "), 4, " c9 ")), -5);  // counts differ
    trailer = ls[5];
    EXPECT_EQ(with(5, trailer.replace(trailer.find(" 200 c8 "), 8, " 196 c4 ")), -5); // N short of the body
    EXPECT_EQ(with(5, "xbtoa End"), -6);
    EXPECT_EQ(with(5, "x"), -6);
    EXPECT_EQ(with(5, ls[5]), 0);
    // No trailer: after a full line the trailer is missing; after the short
    // last line the body is damaged, since only a trailer may follow it.
    write_file("cut.txt", join({ls[0], ls[1], ls[2], ls[3], ls[4]}));
    EXPECT_EQ(decode("cut.txt"), -1);
    write_file("cut.txt", join({ls[0], ls[1], ls[2], ls[3]})); // ends inside a group
    EXPECT_EQ(decode("cut.txt"), -1);
    const std::vector<std::string> zeros = lines(encoded("z.bin", std::string(77 * 4, '\0'))); // one line of 77 "z"
    ASSERT_EQ(zeros.size(), 3u);
    write_file("cut.txt", join({zeros[0], zeros[1]}));
    EXPECT_EQ(decode("cut.txt"), -6);
    write_file("cut.txt", join({zeros[0]}));
    EXPECT_EQ(decode("cut.txt"), -6);
    // A short line that is not the last one damages the body.
    write_file("short.txt", join({ls[0], ls[4], ls[1], ls[2], ls[3], ls[5]}));
    EXPECT_EQ(decode("short.txt"), -1);
    // An overlong line.
    EXPECT_EQ(with(2, ls[2] + std::string(200, '!')), -1);
}

// A header line holds at most 99 characters: a name of 83 fits beside
// "xbtoa5 78 " and " Begin". A longer header is refused before any file is
// made, rather than read from its first 99 characters, which would decode
// into the name cut short (or, cut inside " Begin", treat the rest as a body line).
TEST_F(Btoa, HeaderNamesUpToTheLineLimit) {
    const std::string fits(83, 'n');
    encoded(fits, "data");
    EXPECT_EQ(decode(fits + ".btoa"), 0);
    EXPECT_EQ(read_file(fits), "data");
    for (const size_t length : {84, 89, 120}) {
        const std::string name(length, 'm');
        encoded(name, "data");
        EXPECT_EQ(decode(name + ".btoa"), -4) << length;
        size_t written = 0;
        for (const auto &entry : std::filesystem::directory_iterator("."))
            written += entry.path().filename().string().rfind(".btoa") == std::string::npos;
        EXPECT_EQ(written, 1u) << length; // only the 83-character one
    }
}

TEST_F(Btoa, DecoderStaysInTheCurrentDirectory) {
    const std::string good = encoded("f.bin", "payload");
    const std::string body = good.substr(good.find('\n') + 1);
    std::filesystem::create_directory("inner");
    std::filesystem::current_path("inner");
    write_file("evil.txt", "xbtoa5 78 ..\\..\\f.bin Begin\r\n" + body);
    EXPECT_EQ(decode("evil.txt"), 0);
    EXPECT_EQ(read_file("f.bin"), "payload");
    std::filesystem::current_path("..");
    EXPECT_FALSE(std::filesystem::exists("f.bin"));
    std::filesystem::current_path("inner");
    write_file("dots.txt", "xbtoa5 78 a/.. Begin\r\n" + body);
    EXPECT_EQ(decode("dots.txt"), -4);
    std::filesystem::current_path("..");
}

TEST_F(Btoa, DamagedFilesNeverCrashTheDecoder) {
    std::mt19937 rng(2024);
    std::string data = random_bytes(rng, 3000);
    for (char &c : data)
        if (c == '\r' || c == '\n' || c == 0x1A)
            c = '.';
    const std::string good = encoded("f.bin", data);
    const std::vector<int32_t> allowed = {0, -1, -4, -5, -6};
    auto check = [&](const std::string &text, const char *what, int i) -> int32_t {
        write_file("fuzz.txt", text);
        const int32_t r = decode("fuzz.txt");
        EXPECT_NE(std::find(allowed.begin(), allowed.end(), r), allowed.end()) << what << " " << i << ": " << r;
        return r;
    };
    for (int i = 0; i < 200; ++i) {
        // Truncated anywhere; only the final line end may go unnoticed.
        const size_t cut = rng() % good.size();
        const int32_t r = check(good.substr(0, cut), "truncated", i);
        if (cut + 2 < good.size()) {
            EXPECT_NE(r, 0) << cut;
        }
        // Random bytes, with and without a valid header.
        check(random_bytes(rng, rng() % 500), "random", i);
        check("xbtoa5 78 f.bin Begin\r\n" + random_bytes(rng, rng() % 2000), "random body", i);
        // A few bytes changed.
        std::string damaged = good;
        for (int k = 0; k < 3; ++k)
            damaged[40 + rng() % (damaged.size() - 40)] = static_cast<char>(rng() & 0xFF);
        check(damaged, "changed", i);
        // Overlong and odd declared line lengths.
        check("xbtoa5 " + std::to_string(static_cast<int>(rng() % 300) - 100) + " f.bin Begin\r\n" +
                  std::string(rng() % 400, 'u') + "\r\nxbtoa End N 0 0 E 0 S 0 R 0\r\n",
              "lengths", i);
    }
    // Five digits above 2^32 - 1 with a correct check character.
    std::string over = "uuuuu";
    uint32_t s = 0;
    for (char c : over)
        s += static_cast<unsigned char>(c) + 1u;
    write_file("over.txt", "xbtoa5 78 f.bin Begin\r\n" + over + static_cast<char>(s % 85 + 33) + "\r\nxbtoa End N 4 4 E 0 S 0 R 0\r\n");
    EXPECT_EQ(decode("over.txt"), -1);
}
