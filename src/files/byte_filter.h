// Byte filters of whole files: a copy of a file without the bytes of a
// character set, or with only them, read and written in blocks of 32,768
// bytes. The target is deleted again when anything fails after creating it.
#pragma once

#include <cstdint>
#include <string_view>

namespace brindle::files {

enum FilterCode : int32_t {
    kFilterNoFirstBuffer = -32760,
    kFilterNoSecondBuffer = -32761,
    kFilterEmptySet = -1,
    kFilterSourceNotOpened = -32750,
    kFilterTargetNotCreated = -32751, // also when both names are one file
    kFilterReadError = -32730,
    kFilterWriteError = -32740,
};

// Copies `source` to `target` keeping only the bytes of `set`
// (`keep_members`) or dropping them. A set of one byte is always dropped.
// The set is counted: a zero byte in it is a member like any other. Returns
// the bytes written (the largest Long for 2 GiB and more) or a FilterCode.
int32_t filter_file(std::string_view source, std::string_view target, std::string_view set, bool keep_members);

} // namespace brindle::files
