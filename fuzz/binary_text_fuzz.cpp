// Binary text read back into bytes and numbers, through the exports a client
// calls, against a direct transcription of the rules. Layout of an input: one
// byte that is the pair's character for a 1-bit, then the text.
#include "bstr_helpers.h"
#include "fuzz_target.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

// Each whole group of 8 characters is a byte, first character highest;
// `one` is a 1-bit, anything else a 0-bit.
std::string reference_bytes(std::string_view text, char one) {
    std::string out;
    for (size_t i = 0; i + 8 <= text.size(); i += 8) {
        int b = 0;
        for (size_t k = 0; k < 8; ++k)
            if (text[i + k] == one)
                b |= 128 >> k;
        out.push_back(static_cast<char>(b));
    }
    return out;
}

// Empty or longer than `digits` characters reads 0; otherwise the leading
// run of "0" and "1", kept to the low `digits` bits.
uint32_t reference_number(std::string_view text, size_t digits) {
    if (text.empty() || text.size() > digits)
        return 0;
    uint64_t v = 0;
    for (size_t i = 0; i < text.size() && (text[i] == '0' || text[i] == '1'); ++i)
        v = (v << 1 | static_cast<uint64_t>(text[i] - '0')) & 0xFFFFFFFFu;
    return static_cast<uint32_t>(digits == 16 ? v & 0xFFFF : v);
}

} // namespace

BRINDLE_FUZZ_TARGET(binary_text) {
    if (size < 1)
        return 0;
    const char one = static_cast<char>(data[0]);
    const std::string_view text(reinterpret_cast<const char *>(data) + 1, size - 1);
    using brindle::fuzz::Bstr;

    Bstr txt(text), pair(std::string(1, one)), none("");
    const std::string bytes = Bstr::adopt(cFromBinary2(txt.ref(), pair.ref())).bytes();
    FUZZ_CHECK(bytes == reference_bytes(text, one));
    FUZZ_CHECK(Bstr::adopt(cFromBinary(txt.ref())).bytes() == reference_bytes(text, '1'));
    FUZZ_CHECK(Bstr::adopt(cFromBinary2(txt.ref(), none.ref())).bytes() == reference_bytes(text, '1'));
    FUZZ_CHECK(static_cast<uint16_t>(cB2I(txt.ref())) == reference_number(text, 16));
    FUZZ_CHECK(static_cast<uint32_t>(cB2L(txt.ref())) == reference_number(text, 32));

    // Written back with the same pair, the bytes give the text's whole groups
    // with every character other than `one` turned into the 0-bit character.
    const char zero = one == '0' ? '1' : '0';
    std::string pair_text{one, zero};
    Bstr two(pair_text), made(bytes);
    std::string expected(text.substr(0, text.size() / 8 * 8));
    for (char &c : expected)
        c = c == one ? one : zero;
    FUZZ_CHECK(Bstr::adopt(cToBinary2(made.ref(), two.ref())).bytes() == expected);
    return 0;
}
