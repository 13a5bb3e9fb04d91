// The export boundary: no C++ exception may reach a VB caller, whose runtime
// cannot unwind it. Every export body runs inside one of these guards, which
// turn an escaping exception (allocation failure included) into the export's
// failure value.
#pragma once

#include "platform/ole.h"

#include <cstddef>
#include <utility>

namespace brindle::frame {

// The empty string result: a real zero-length string, never a null handle.
// When the system has no memory even for that, one of a reserve of
// kEmptyReserve strings made in advance is handed out (the caller frees it
// as any other result); the next call that gets memory fills the reserve
// again. Only more failures in a row than the reserve holds, with no
// success between them, would leave nothing to give.
inline constexpr size_t kEmptyReserve = 32;
BSTR empty_string() noexcept;

// empty_string() with the allocation given (the library passes
// SysAllocStringByteLen; a test passes one that fails).
using StringAllocator = BSTR (*)(const char *bytes, UINT length);
BSTR empty_string_with(StringAllocator allocate) noexcept;

// Runs body(); on any exception returns `failure`.
template <class Result, class Body> Result guarded(Result failure, Body &&body) noexcept {
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        return failure;
    }
}

// Runs body(), which makes a string result; on any exception returns the
// empty string (made only then, so the common path allocates nothing extra).
template <class Body> BSTR guarded_string(Body &&body) noexcept {
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        return empty_string();
    }
}

} // namespace brindle::frame
