// The codes the whole-file text operations share with the copy family.
#pragma once

#include <cstdint>

namespace brindle::files {

enum TextFileCode : int32_t {
    kTextNoBuffer = -32760,
    kTextNoSecondBuffer = -32761,
    kTextSourceNotOpened = -32750,
    kTextTargetNotCreated = -32751, // also when source and target are one file
    kTextReadError = -32730,
    kTextWriteError = -32740,
    kTextShortWrite = -32720,
};

// A byte count as a Long: 2 GiB and more is the largest Long, never a code.
constexpr int32_t long_count(int64_t n) { return n > INT32_MAX ? INT32_MAX : static_cast<int32_t>(n); }

} // namespace brindle::files
