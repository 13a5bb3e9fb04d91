// The command-line splitter: its words, put back together with each one in
// quotes, split into the same words again; a line without quotes splits
// exactly where its blanks are.
#include "fuzz_target.h"
#include "system/command_line.h"

#include <string>
#include <string_view>
#include <vector>

BRINDLE_FUZZ_TARGET(command_line) {
    const std::string_view line(reinterpret_cast<const char *>(data), size);
    const std::vector<std::string> words = brindle::system::command_words(line);
    std::string rebuilt;
    size_t total = 0;
    for (const std::string &w : words) {
        FUZZ_CHECK(w.find('"') == std::string::npos);
        rebuilt += " \"" + w + "\"";
        total += w.size();
    }
    FUZZ_CHECK(brindle::system::command_words(rebuilt) == words);
    FUZZ_CHECK(total <= line.size());
    if (line.find('"') == std::string_view::npos) {
        std::vector<std::string> plain;
        size_t at = 0;
        while ((at = line.find_first_not_of(" \t", at)) != std::string_view::npos) {
            const size_t end = line.find_first_of(" \t", at);
            plain.emplace_back(line.substr(at, end == std::string_view::npos ? std::string_view::npos : end - at));
            at = end == std::string_view::npos ? line.size() : end;
        }
        FUZZ_CHECK(plain == words);
    }
    return 0;
}
