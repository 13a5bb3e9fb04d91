// Any bytes given to the LZARI decoder: no crash or overrun, never more
// output than the header claims. Claims are capped at 1 MB to keep runs short.
#include "compress/lzari.h"

#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    std::string in(reinterpret_cast<const char *>(data), size);
    if (in.size() >= 4)
        in[3] = 0, in[2] = static_cast<char>(in[2] & 0x0F);
    brindle::compress::MemorySource source(in);
    brindle::compress::StringSink sink;
    const auto status = brindle::compress::lzari_decode(source, sink);
    if (in.size() < 4) {
        if (status != brindle::compress::LzariDecode::NoHeader)
            std::abort();
        return 0;
    }
    const uint32_t claimed = static_cast<uint8_t>(in[0]) | static_cast<uint8_t>(in[1]) << 8 |
                             static_cast<uint8_t>(in[2]) << 16;
    if (sink.str().size() > claimed)
        std::abort();
    if (status == brindle::compress::LzariDecode::Ok && sink.str().size() != claimed)
        std::abort();
    return 0;
}
