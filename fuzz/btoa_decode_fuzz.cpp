// Any text given to the btoa decoder as its input file: a defined code, the
// input file untouched, at most one file written, and that one in the
// current directory whatever the header names. A decoded file encodes and
// decodes back to itself (cut at its first Ctrl-Z, where the encoder's
// text-mode reading stops) when its name fits in a header line.
#include "convert/btoa_coder.h"
#include "fuzz_target.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

// A directory of the process's own for the decoder's files, removed at exit.
struct WorkDir {
    fs::path path;
    WorkDir() {
        std::random_device random;
        path = fs::temp_directory_path() / ("brindle-btoa-fuzz-" + std::to_string(random()));
        fs::create_directories(path);
    }
    ~WorkDir() {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
};

// The decoder works in the current directory: the work directory for the
// time of one input, the caller's again afterwards.
struct InDirectory {
    fs::path previous = fs::current_path();
    explicit InDirectory(const fs::path &dir) { fs::current_path(dir); }
    ~InDirectory() { fs::current_path(previous); }
    InDirectory(const InDirectory &) = delete;
    InDirectory &operator=(const InDirectory &) = delete;
};

std::string contents(const fs::path &file) {
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void write(const fs::path &file, const std::string &bytes) {
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

} // namespace

BRINDLE_FUZZ_TARGET(btoa_decode) {
    static WorkDir work;
    for (const auto &entry : fs::directory_iterator(work.path))
        fs::remove_all(entry.path());
    const std::string input(reinterpret_cast<const char *>(data), size);
    write(work.path / "input.btoa", input);

    InDirectory here(work.path);
    const int32_t rc = brindle::convert::btoa_decode_file("input.btoa");
    FUZZ_CHECK(rc == 0 || rc == -1 || rc == -4 || rc == -5 || rc == -6);
    FUZZ_CHECK(contents("input.btoa") == input);
    std::vector<fs::path> written;
    for (const auto &entry : fs::directory_iterator(work.path))
        if (entry.path().filename() != "input.btoa")
            written.push_back(entry.path().filename());
    FUZZ_CHECK(written.size() <= 1);
    if (rc != 0)
        return 0;
    FUZZ_CHECK(written.size() == 1 && fs::is_regular_file(written[0]));

    const std::string name = written[0].string();
    if (name == "again.btoa")
        return 0;
#ifdef _WIN32
    // The directory listing gives names through a code-page conversion that
    // need not give back the bytes of a name outside ASCII, so the round trip
    // below could not name the file; the Linux run checks such names.
    for (const char c : name)
        if (static_cast<unsigned char>(c) >= 0x80)
            return 0;
#endif
    const std::string decoded = contents(name);
    FUZZ_CHECK(brindle::convert::btoa_encode_file(name, "again.btoa") > 0);
    fs::remove(name);
    // The header line holds 99 characters: "xbtoa5 78 ", the name, " Begin".
    if (name.size() > 83) {
        FUZZ_CHECK(brindle::convert::btoa_decode_file("again.btoa") == -4);
        return 0;
    }
    FUZZ_CHECK(brindle::convert::btoa_decode_file("again.btoa") == 0);
    FUZZ_CHECK(contents(name) == decoded.substr(0, decoded.find('\x1a')));
    return 0;
}
