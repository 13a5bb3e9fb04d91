// Any bytes given to the byte-pair expander: no crash, no read or write out
// of bounds, no block larger than the coder can write.
#include "compress/byte_pair.h"
#include "fuzz_target.h"

#include <string>

BRINDLE_FUZZ_TARGET(byte_pair_expand) {
    std::string out;
    size_t at = 0, blocks = 0;
    while (at < size) {
        size_t used = 0;
        const size_t before = out.size();
        if (brindle::compress::byte_pair_expand_block(data + at, size - at, out, &used) !=
            brindle::compress::BlockStatus::Ok)
            break;
        FUZZ_CHECK(used > 0 && used <= size - at);
        FUZZ_CHECK(out.size() - before <= brindle::compress::kBytePairBlockSize);
        at += used;
        ++blocks;
    }
    // What expands must compress and expand back to itself.
    if (blocks > 0) {
        std::string again;
        FUZZ_CHECK(brindle::compress::byte_pair_expand(brindle::compress::byte_pair_compress(out), again));
        FUZZ_CHECK(again == out);
    }
    return 0;
}
