// Btoa file exports: cBtoA encodes any file into "xbtoa5" text, cAtoB
// decodes such a text back into the file named in its header. Paths are
// strings by value, read up to their first zero byte. The coder and its
// choices are described in convert/btoa_coder.h.
#include "convert/btoa_coder.h"
#include "frame/frame.h"

using namespace brindle::frame;

BRINDLE_EXPORT(int32_t) cBtoA(BSTR InputFile, BSTR OutputFile) {
    return guarded(int32_t{-1}, [&] {
        return brindle::convert::btoa_encode_file(StrArg::by_val(InputFile).text(), StrArg::by_val(OutputFile).text());
    });
}

BRINDLE_EXPORT(int32_t) cAtoB(BSTR InputFile) {
    return guarded(int32_t{-1}, [&] { return brindle::convert::btoa_decode_file(StrArg::by_val(InputFile).text()); });
}
