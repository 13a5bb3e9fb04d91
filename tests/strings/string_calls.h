// Calls the string exports as a VB caller does: every text argument becomes
// a fresh string handle, passed by value or by reference as the export's
// parameter asks; numbers pass through.
#pragma once

#include "support/ole_helpers.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace brindle::test {

inline std::string B(const char *s, size_t n) { return std::string(s, n); }

inline std::string repeat(std::string_view s, int n) {
    std::string r;
    for (int k = 0; k < n; ++k)
        r += s;
    return r;
}

// One text argument (or a null handle, default-constructed).
struct Text {
    Bstr b;
    Text() = default;
    explicit Text(std::string_view s) : b(s) {}
    operator BSTR() const { return b.val(); }
    operator BSTR *() { return b.ref(); }
};
struct NullHandle {};
inline constexpr NullHandle null_handle{};

inline Text arg(std::string_view s) { return Text(s); }
inline Text arg(NullHandle) { return Text(); }
template <class T>
    requires std::is_arithmetic_v<T>
T arg(T x) {
    return x;
}

// A numeric result.
template <class F, class... A> auto num(F f, A &&...a) { return f(arg(std::forward<A>(a))...); }

// A string result (never a null handle); is_input when it is the first
// argument's own handle.
template <class F, class First, class... A> Returned call(F f, First &&first, A &&...rest) {
    auto a0 = arg(std::forward<First>(first));
    Returned r;
    if constexpr (std::is_same_v<decltype(a0), Text>)
        r = returned(f(a0, arg(std::forward<A>(rest))...), {&a0.b});
    else
        r = returned(f(a0, arg(std::forward<A>(rest))...));
    EXPECT_FALSE(r.is_null) << "a string result must never be a null handle";
    return r;
}

// An in-place edit: the result and the text afterwards, checking the
// handle was kept.
struct Edited {
    int32_t result;
    std::string text;
};
template <class F, class... A> Edited edit(F f, std::string_view text, A &&...rest) {
    Text t(text);
    const BSTR before = t.b.val();
    const int32_t r = f(t, arg(std::forward<A>(rest))...);
    EXPECT_EQ(t.b.val(), before) << "edited in place, never reallocated";
    return {r, t.b.bytes()};
}

// Rows of (string result, expected bytes); input_handle expects the first
// argument's own handle back. A failure names the row by its number.
inline constexpr std::string_view input_handle{};
struct BytesRow {
    Returned got;
    std::string_view want;
};
inline void expect_rows(std::initializer_list<BytesRow> rows) {
    int k = 0;
    for (const BytesRow &r : rows) {
        if (r.want.data() == nullptr) {
            EXPECT_TRUE(r.got.is_input) << "row " << k << " gave " << r.got.bytes;
        } else {
            EXPECT_EQ(r.got.bytes, r.want) << "row " << k;
        }
        ++k;
    }
}

} // namespace brindle::test
