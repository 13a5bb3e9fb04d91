// The frame every fuzz target is written in. A target's body is built two
// ways from the same source:
//   - in the fuzz project (fuzz/CMakeLists.txt, clang) it is the program's
//     LLVMFuzzerTestOneInput, and a failed check aborts so libFuzzer keeps
//     the input;
//   - in the engine tests (BRINDLE_FUZZ_REPLAY) it is registered under its
//     name, and the test replays every committed input of
//     tests/data/fuzz/<name>/ through it; a failed check throws.
//
//     BRINDLE_FUZZ_TARGET(lzari_decode) { ... FUZZ_CHECK(...); return 0; }
//
// The body sees `data` and `size`. Inputs that found faults are committed
// under the target's name, so every fixed fault stays tested.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>

namespace brindle::fuzz {

using Entry = int (*)(const uint8_t *data, size_t size);

// Reports a failed check: aborts in a fuzzer, throws Finding in the tests.
[[noreturn]] void fail(const char *condition, const char *file, int line);

struct Finding : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The registered targets by name (replay builds only).
std::map<std::string, Entry> &targets();

struct Registration {
    Registration(const char *name, Entry entry) { targets()[name] = entry; }
};

} // namespace brindle::fuzz

#define FUZZ_CHECK(condition) ((condition) ? void(0) : ::brindle::fuzz::fail(#condition, __FILE__, __LINE__))

#ifdef BRINDLE_FUZZ_REPLAY
#define BRINDLE_FUZZ_TARGET(name)                                                                                     \
    static int name##_entry(const uint8_t *data, size_t size);                                                         \
    static const ::brindle::fuzz::Registration name##_registration(#name, name##_entry);                               \
    static int name##_entry(const uint8_t *data, size_t size)
#else
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
#define BRINDLE_FUZZ_TARGET(name) extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
#endif
