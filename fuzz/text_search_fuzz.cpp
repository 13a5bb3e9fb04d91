// The quick search of a text file over raw blocks against the line-by-line
// reading that defines it, on any file content: both give the same count
// and the same yes or no. Layout of an input: one byte of choices (bits 0-3
// the text's length less one, bit 4 exact case, bit 5 repeat the file
// content until it passes the 2,559-byte line limit), the text, the file.
#include "files/file_text_search.h"
#include "fuzz_target.h"
#include "platform/file_info.h"

#include <filesystem>
#include <fstream>
#include <string>

using namespace brindle::files;

BRINDLE_FUZZ_TARGET(text_search) {
    if (size < 2)
        return 0;
    const size_t text_size = (data[0] & 15u) + 1 < size ? (data[0] & 15u) + 1 : size - 1;
    const bool exact = (data[0] & 16) != 0, repeat = (data[0] & 32) != 0;
    const std::string text(reinterpret_cast<const char *>(data) + 1, text_size);
    std::string content(reinterpret_cast<const char *>(data) + 1 + text_size, size - 1 - text_size);
    if (repeat && !content.empty())
        while (content.size() < 3000)
            content += content;
    static const std::string path =
        (std::filesystem::temp_directory_path() / ("brindle-search-fuzz-" + std::to_string(brindle::platform::process_id())))
            .string();
    {
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out.write(content.data(), static_cast<std::streamsize>(content.size()));
    }
    FUZZ_CHECK(search_text_file(path, text, exact, false) == search_text_file_by_lines(path, text, exact, false));
    FUZZ_CHECK(search_text_file(path, text, exact, true) == search_text_file_by_lines(path, text, exact, true));
    return 0;
}
