#include "system/command_line.h"

namespace brindle::system {

std::vector<std::string> command_words(std::string_view line) {
    std::vector<std::string> words;
    size_t i = 0;
    while (true) {
        while (i < line.size() && (line[i] == ' ' || line[i] == '\t'))
            ++i;
        if (i == line.size())
            return words;
        std::string word;
        bool quoted = false;
        for (; i < line.size() && (quoted || (line[i] != ' ' && line[i] != '\t')); ++i) {
            if (line[i] == '"')
                quoted = !quoted;
            else
                word += line[i];
        }
        words.push_back(std::move(word));
    }
}

bool names_a_path(std::string_view program) noexcept {
    return program.find_first_of("/\\") != std::string_view::npos;
}

} // namespace brindle::system
