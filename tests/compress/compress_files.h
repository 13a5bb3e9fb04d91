// Helpers of the compression export tests: the exports called with names
// and strings as a client passes them, and the committed known answers.
#pragma once

#include "compress/test_inputs.h"
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace brindle::test {

// A call of a file export that takes its two names by reference.
template <class F> int32_t call_by_ref(F f, const std::string &source, const std::string &target) {
    Bstr s(source), t(target);
    return f(s.ref(), t.ref());
}

// ... and by value.
template <class F> int32_t call_by_val(F f, const std::string &source, const std::string &target) {
    Bstr s(source), t(target);
    return f(s.val(), t.val());
}

// A string export taking its text by reference.
template <class F> std::string call_text(F f, const std::string &text) {
    Bstr t(text);
    return str(f(t.ref()));
}

// A committed test file (made with the published coders).
inline std::string vector_file(const std::string &name) {
    std::ifstream in(std::string(BRINDLE_TEST_DATA) + "/compress/" + name, std::ios::binary);
    EXPECT_TRUE(in.good()) << name;
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// The inputs of the known answers: name and bytes.
inline std::vector<std::pair<std::string, std::string>> known_inputs() {
    return {{"empty", ""},
            {"one", "A"},
            {"hello", vector_file("hello.bin")},
            {"bridge", vector_file("bridge.bin")},
            {"distinct", vector_file("distinct.bin")},
            {"x5000", vector_file("x5000.bin")},
            {"text", vector_file("text.bin")}};
}

// Tens of megabytes in optimised builds; less under the sanitizers, which
// are there for the memory checks, not the size.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr size_t kLargeInput = 3u << 20;
#else
inline constexpr size_t kLargeInput = 20u << 20;
#endif

// Text with stretches of random bytes in it, like a mixed archive.
inline std::string large_input() {
    std::string s = make_input(Kind::Text, kLargeInput * 3 / 4, 11);
    const std::string noise = make_input(Kind::Random, kLargeInput / 16, 12);
    for (size_t at = 1000; at < s.size() && s.size() < kLargeInput; at += kLargeInput / 4)
        s.insert(at, noise);
    return s;
}

inline bool tool_available(const char *name) {
    return std::system((std::string("command -v ") + name + " > /dev/null 2>&1").c_str()) == 0;
}

inline bool exists(const std::string &name) { return std::filesystem::exists(name); }

} // namespace brindle::test
