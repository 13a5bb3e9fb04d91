// Byte-pair compression of strings and files: the exports
// (compress/byte_pair_container.h).
#include "compress/byte_pair_container.h"
#include "compress/compress_files.h"
#include "frame/frame.h"

using namespace brindle;
using namespace brindle::compress;
using brindle::frame::StrArg;

// Compresses a file into the byte-pair format; the target's size or -1 .. -7.
BRINDLE_EXPORT(int32_t) cFileCompress(BSTR *SourceFile, BSTR *TargetFile) {
    return frame::guarded(int32_t{-6}, [&] {
        return run_file_coder(StrArg::by_ref(SourceFile).text(), StrArg::by_ref(TargetFile).text(), byte_pair_compress_file);
    });
}

// Expands a byte-pair file; a source without the magic, or with a damaged
// block, gives -6.
BRINDLE_EXPORT(int32_t) cFileExpand(BSTR *SourceFile, BSTR *TargetFile) {
    return frame::guarded(int32_t{-6}, [&] {
        return run_file_coder(StrArg::by_ref(SourceFile).text(), StrArg::by_ref(TargetFile).text(), byte_pair_expand_file);
    });
}

// "KOV", the payload length (modulo 65536, high byte first) and the blocks;
// the empty string for an empty input.
BRINDLE_EXPORT(BSTR) cStringCompress(BSTR *Txt) {
    return frame::guarded_string([&] {
        const StrArg text = StrArg::by_ref(Txt);
        return text.empty() ? frame::empty_string() : frame::new_string(byte_pair_pack_string(text.bytes()));
    });
}

// The original string; the empty string when the magic or the stored length
// does not match (so a payload above 65535 bytes is refused) or a block is
// damaged.
BRINDLE_EXPORT(BSTR) cStringExpand(BSTR *Txt) {
    return frame::guarded_string([&] {
        const std::optional<std::string> out = byte_pair_unpack_string(StrArg::by_ref(Txt).bytes());
        return out ? frame::new_string(*out) : frame::empty_string();
    });
}
