// The export boundary: no C++ exception may reach a VB caller, whose runtime
// cannot unwind it. Every export body runs inside one of these guards, which
// turn an escaping exception (allocation failure included) into the export's
// failure value.
#pragma once

#include "platform/ole.h"

#include <utility>

namespace brindle::frame {

BSTR empty_string() noexcept;

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
