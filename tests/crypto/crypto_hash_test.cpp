// cHashMD5 through the library: every RFC 1321 and boundary record of
// tests/data/vectors/md5.txt with its words reversed by the test, the
// length limits, and bytes that zero-terminated handling would lose.
#include "crypto/vector_file.h"
#include "support/ole_helpers.h"

#include <string>

using namespace brindle::test;

namespace {

std::string hash(const std::string &text) {
    Bstr t(text);
    return str(cHashMD5(t.ref()));
}

// The standard digest with each 4-byte word reversed, as the export gives it.
std::string words_reversed(const std::vector<uint8_t> &d) {
    std::string out;
    for (std::size_t w = 0; w < 16; w += 4)
        for (int i = 3; i >= 0; --i)
            out += static_cast<char>(d[w + static_cast<std::size_t>(i)]);
    return out;
}

std::string hex(const std::string &bytes) {
    return to_hex(reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size());
}

} // namespace

TEST(HashMD5, KnownAnswersWordsReversed) {
    int checked = 0;
    for (const auto &rec : read_vector_file("md5.txt")) {
        const auto msg = from_hex(rec.count("MSG") ? rec.at("MSG") : "");
        if (msg.empty())
            continue; // the empty text is refused (below)
        const std::string text(msg.begin(), msg.end());
        EXPECT_EQ(hash(text), words_reversed(from_hex(rec.at("DIGEST")))) << "length " << msg.size();
        ++checked;
    }
    EXPECT_EQ(checked, stated_record_count("md5.txt") - 1);
    // The byte-reversed form printed beside RFC 1321's "abc" record.
    EXPECT_EQ(hex(hash("abc")), "98500190B04FD23C7D3F96D6727FE128");
}

TEST(HashMD5, LengthLimitsAndZeroBytes) {
    Bstr null_handle;
    EXPECT_EQ(str(cHashMD5(null_handle.ref())), "");
    EXPECT_EQ(hash(""), "");
    // Python: hashlib.md5(bytes(32766)).hexdigest() = 493c770bee1b82bcb98befaba69f810a
    EXPECT_EQ(hex(hash(std::string(32766, '\0'))), "0B773C49BC821BEEABEF8BB90A819FA6");
    EXPECT_EQ(hash(std::string(32767, '\0')), "");
    EXPECT_EQ(hash(std::string(100000, 'x')), "");
    // A zero byte is part of the text: "a\0" and "a" differ.
    EXPECT_NE(hash(std::string("a\0", 2)), hash("a"));
    EXPECT_EQ(hash(std::string("a\0", 2)).size(), 16u);
}
