// Byte filters of whole files: the exports (files/byte_filter.h).
#include "files/byte_filter.h"
#include "frame/frame.h"

using namespace brindle::frame;
using brindle::files::filter_file;
using brindle::files::kFilterNoFirstBuffer;

// Drops every byte of the set.
BRINDLE_EXPORT(int32_t) cFileFilter(BSTR Source, BSTR Target, BSTR *CharSet) {
    return guarded(int32_t{kFilterNoFirstBuffer}, [&] {
        return filter_file(StrArg::by_val(Source).text(), StrArg::by_val(Target).text(), StrArg::by_ref(CharSet).bytes(),
                           false);
    });
}

// Keeps only the bytes of the set - except that a one-byte set is dropped,
// as cFileFilter does.
BRINDLE_EXPORT(int32_t) cFileFilterNot(BSTR Source, BSTR Target, BSTR *CharSet) {
    return guarded(int32_t{kFilterNoFirstBuffer}, [&] {
        return filter_file(StrArg::by_val(Source).text(), StrArg::by_val(Target).text(), StrArg::by_ref(CharSet).bytes(),
                           true);
    });
}
