// The path normaliser, the name validator and the path workers built on
// them, on any bytes: the normaliser's result stays within its limit,
// holds no forward slash and differs from the input only as its contract
// says; a name the validator accepts is one the normaliser leaves as it is;
// splitting and joining give the path back; truncation keeps the name and
// stays within the asked length unless the name alone is longer. Layout of an input: four bytes of a maximum length (least
// significant first), one byte giving the length of an extension taken from
// the path's start, then the path.
#include "files/path_names.h"
#include "fuzz_target.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

using namespace brindle::files;

namespace {

bool ends_with(std::string_view s, std::string_view tail) {
    return s.size() >= tail.size() && s.substr(s.size() - tail.size()) == tail;
}

} // namespace

BRINDLE_FUZZ_TARGET(path_names) {
    if (size < 5)
        return 0;
    const int32_t max_length = static_cast<int32_t>(static_cast<uint32_t>(data[0]) | static_cast<uint32_t>(data[1]) << 8 |
                                                    static_cast<uint32_t>(data[2]) << 16 |
                                                    static_cast<uint32_t>(data[3]) << 24);
    const std::string_view path(reinterpret_cast<const char *>(data) + 5, size - 5);
    const std::string_view ext = path.substr(0, data[4] % 8);

    // The normaliser.
    const std::string normal = normalise_path(path);
    std::string cut(path.substr(0, kNormaliseLimit));
    for (char &c : cut)
        if (c == '/')
            c = '\\';
    FUZZ_CHECK(normal.find('/') == std::string::npos);
    FUZZ_CHECK(normal == cut || normal + "\\" == cut || (cut.size() == 2 && cut[1] == ':' && normal == cut + "\\"));

    // The validator.
    const int16_t code = filename_validity(path);
    FUZZ_CHECK(code >= kNameValid && code <= kNameDotAfterSeparator);
    if (code == kNameValid) {
        FUZZ_CHECK(!path.empty() && path.size() <= kMaxValidName);
        FUZZ_CHECK(path.find_first_of("/*?<>|\"") == std::string_view::npos);
        FUZZ_CHECK(path.find("\\\\\\") == std::string_view::npos);
        FUZZ_CHECK(normalise_path(path) == path);
    }

    // Splitting, joining, strippers.
    const PathPieces pieces = split_path(path);
    FUZZ_CHECK(make_path(pieces.drive, pieces.dir, pieces.name, pieces.ext) == path);
    FUZZ_CHECK(ends_with(path, strip_file_path(path)));
    FUZZ_CHECK(path.substr(0, strip_extension(path).size()) == strip_extension(path));
    FUZZ_CHECK(default_extension(path, ext).substr(0, path.size()) == path);
    (void)strip_file_name(path);

    const std::string shorter = truncate_path(path, max_length);
    if (!shorter.empty()) {
        // Only drive, name and extension are never left out: with the
        // marking full stop they may exceed the length asked for.
        const size_t kept = pieces.drive.size() + pieces.name.size() + pieces.ext.size();
        FUZZ_CHECK(code == kNameValid);
        FUZZ_CHECK(shorter.size() <= std::max(static_cast<size_t>(max_length), kept + 1));
        FUZZ_CHECK(ends_with(shorter, pieces.name + pieces.ext));
    }
    if (code == kNameValid && max_length >= 25 && path.size() <= static_cast<size_t>(max_length))
        FUZZ_CHECK(shorter == path);
    return 0;
}
