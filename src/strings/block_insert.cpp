#include "strings/block_insert.h"

namespace brindle::strings {

std::string insert_blocks(std::string_view text, std::string_view blocks, char mark) {
    std::string out;
    out.reserve(text.size() + blocks.size());
    size_t cursor = 0; // next unread byte of blocks
    for (const char c : text) {
        if (c != mark) {
            out.push_back(c);
            continue;
        }
        if (cursor >= blocks.size())
            continue;
        size_t end = blocks.find(mark, cursor);
        if (end == std::string_view::npos)
            end = blocks.size();
        out.append(blocks.substr(cursor, end - cursor));
        cursor = end + 1; // the separator goes with its block
    }
    return out;
}

std::string insert_by_mask(std::string_view text, char mark, std::string_view data) {
    std::string out(text);
    size_t next = 0;
    for (char &c : out)
        if (c == mark)
            c = next < data.size() ? data[next++] : ' ';
    return out;
}

} // namespace brindle::strings
