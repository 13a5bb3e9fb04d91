// Any bytes given to cGZIPStringExpand2 (4-byte length, then a zlib stream):
// a string result, never null, never longer than the length claims, the
// input untouched; what expands compresses and expands back to itself.
// Claims beyond 16 MB are cut to keep runs short; the expansion grows with
// the data anyway, not with the claim.
#include "bstr_helpers.h"
#include "fuzz_target.h"

#include <string>

using brindle::fuzz::Bstr;

BRINDLE_FUZZ_TARGET(gzip_string_expand2) {
    std::string input(brindle::fuzz::as_text(data, size));
    if (input.size() >= 4)
        input[3] = 0;
    uint32_t claimed = 0;
    for (size_t i = 0; i < 4 && i < input.size(); ++i)
        claimed |= static_cast<uint32_t>(static_cast<uint8_t>(input[i])) << (8 * i);
    Bstr in(input);
    const Bstr out = Bstr::adopt(cGZIPStringExpand2(in.ref()));
    FUZZ_CHECK(!out.null());
    FUZZ_CHECK(in.bytes() == input);
    const std::string expanded = out.bytes();
    if (input.size() < 5) {
        FUZZ_CHECK(expanded.empty());
        return 0;
    }
    FUZZ_CHECK(expanded.size() <= claimed);
    if (expanded.empty())
        return 0;
    Bstr again(expanded);
    Bstr packed = Bstr::adopt(cGZIPStringCompress2(again.ref()));
    const std::string packed_bytes = packed.bytes();
    FUZZ_CHECK(packed_bytes.size() > 4);
    FUZZ_CHECK(static_cast<uint8_t>(packed_bytes[0]) == (expanded.size() & 0xFF));
    const Bstr back = Bstr::adopt(cGZIPStringExpand2(packed.ref()));
    FUZZ_CHECK(back.bytes() == expanded);
    return 0;
}
