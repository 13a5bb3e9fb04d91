#include "fuzz_target.h"

#include <cstdio>
#include <cstdlib>

namespace brindle::fuzz {

void fail(const char *condition, const char *file, int line) {
    const std::string what = std::string(file) + ":" + std::to_string(line) + ": check failed: " + condition;
#ifdef BRINDLE_FUZZ_REPLAY
    throw Finding(what);
#else
    std::fprintf(stderr, "%s\n", what.c_str());
    std::abort();
#endif
}

std::map<std::string, Entry> &targets() {
    static std::map<std::string, Entry> all;
    return all;
}

} // namespace brindle::fuzz
