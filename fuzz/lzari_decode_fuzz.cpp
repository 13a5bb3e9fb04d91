// Any bytes given to the LZARI decoder: no crash or overrun, never more
// output than the header claims. Claims are capped at 1 MB to keep runs short.
#include "compress/lzari.h"
#include "fuzz_target.h"

#include <string>

BRINDLE_FUZZ_TARGET(lzari_decode) {
    std::string in(reinterpret_cast<const char *>(data), size);
    if (in.size() >= 4)
        in[3] = 0, in[2] = static_cast<char>(in[2] & 0x0F);
    brindle::compress::MemorySource source(in);
    brindle::compress::StringSink sink;
    const auto status = brindle::compress::lzari_decode(source, sink);
    if (in.size() < 4) {
        FUZZ_CHECK(status == brindle::compress::LzariDecode::NoHeader);
        return 0;
    }
    const uint32_t claimed = static_cast<uint8_t>(in[0]) | static_cast<uint8_t>(in[1]) << 8 |
                             static_cast<uint8_t>(in[2]) << 16;
    FUZZ_CHECK(sink.str().size() <= claimed);
    FUZZ_CHECK(status != brindle::compress::LzariDecode::Ok || sink.str().size() == claimed);
    return 0;
}
