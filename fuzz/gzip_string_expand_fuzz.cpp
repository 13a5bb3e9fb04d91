// Any bytes given to cGZIPStringExpand (a zlib stream without a length
// prefix): a string result, never null, at most 75 times the input, the
// input untouched; what expands compresses and expands back to itself.
#include "bstr_helpers.h"
#include "fuzz_target.h"

using brindle::fuzz::Bstr;

BRINDLE_FUZZ_TARGET(gzip_string_expand) {
    const std::string_view input = brindle::fuzz::as_text(data, size);
    Bstr in(input);
    const Bstr out = Bstr::adopt(cGZIPStringExpand(in.ref()));
    FUZZ_CHECK(!out.null());
    FUZZ_CHECK(in.bytes() == input);
    const std::string expanded = out.bytes();
    FUZZ_CHECK(expanded.size() <= 75 * input.size());
    if (expanded.empty())
        return 0;
    Bstr again(expanded);
    Bstr packed = Bstr::adopt(cGZIPStringCompress(again.ref()));
    const size_t packed_size = packed.bytes().size();
    FUZZ_CHECK(packed_size > 0);
    // Only a compression that stays within the ratio can come back.
    if (75 * packed_size >= expanded.size()) {
        const Bstr back = Bstr::adopt(cGZIPStringExpand(packed.ref()));
        FUZZ_CHECK(back.bytes() == expanded);
    }
    return 0;
}
