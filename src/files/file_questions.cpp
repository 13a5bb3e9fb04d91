#include "files/file_questions.h"

#include "common/ascii.h"
#include "files/path_names.h"
#include "files/tree_walk.h"
#include "platform/file.h"
#include "platform/file_info.h"
#include "platform/file_ops.h"

#include <string>

namespace brindle::files {

namespace {

bool attributes_of(std::string_view name, uint32_t *a) {
    if (platform::get_attributes(name, a) == platform::kNoError)
        return true;
    const std::string n = normalise_path(name);
    return n != name && platform::get_attributes(n, a) == platform::kNoError;
}

bool visible(std::string_view name, bool directory_writeable) {
    if (name.empty() || name.back() == '/')
        return false;
    uint32_t a = 0;
    if (!attributes_of(name, &a) || (a & platform::kAttrHidden))
        return false;
    if (directory_writeable && (a & platform::kAttrDirectory) && (a & platform::kAttrReadOnly))
        return false;
    return true;
}

const char *const kRunnable[] = {".com", ".exe", ".bat"};

constexpr size_t kLongestName = 32767; // the longest path any system accepts

} // namespace

bool file_is_readable(std::string_view name) { return visible(name, false); }

bool file_is_writeable(std::string_view name) { return visible(name, true); }

bool file_is_executable(std::string_view name) {
    if (name.empty())
        return false;
    const std::string ext = split_path(name).ext;
    for (const char *r : kRunnable)
        if (common::equal_no_case(ext, r))
            return platform::file_exists(name);
    if (!has_extension(name))
        for (const char *r : kRunnable)
            if (platform::file_exists(std::string(name) + r))
                return true;
    platform::File f = platform::File::open(name, platform::OpenMode::Read);
    char head[3] = {0, 0, 0};
    const int64_t got = f.is_open() ? f.read(head, sizeof head) : 0;
    if (got >= 2 && ((head[0] == 'M' && head[1] == 'Z') || (head[0] == '#' && head[1] == '!')))
        return true;
    return got == 3 && head[0] == '/' && head[1] == '*' && head[2] == '!';
}

bool file_is_program(std::string_view name) {
    // No system keeps a name this long; a 10 MB one would be tried along
    // every directory of the search path for nothing.
    if (name.empty() || name.size() > kLongestName)
        return false;
    auto found = [&](const std::string &base) {
        if (has_extension(base))
            return platform::file_exists(base);
        for (const char *ext : {".exe", ".com", ".bat"})
            if (platform::file_exists(base + ext))
                return true;
        return false;
    };
    const std::string n(name);
    if (n.find_first_of("\\/:") != std::string::npos)
        return found(n);
    if (found(n))
        return true;
    for (const std::string &dir : platform::program_directories())
        if (!dir.empty() && found(walk_prefix(dir) + n))
            return true;
    return false;
}

bool file_is_directory(std::string_view name) {
    if (name.empty())
        return false;
    uint32_t a = 0;
    return platform::get_attributes(normalise_path(name), &a) == platform::kNoError && (a & platform::kAttrDirectory);
}

int16_t make_directories(std::string_view path) {
    if (filename_validity(path) != kNameValid)
        return 2;
    const std::string p(path);
    for (size_t i = 1; i < p.size(); ++i)
        if (p[i] == '\\' && p[i - 1] != ':' && p[i - 1] != '\\')
            platform::make_directory(p.substr(0, i)); // existing ones refuse: no matter
    const int e = platform::make_directory(p);
    if (platform::directory_exists(p))
        return -1;
    return static_cast<int16_t>(e != 0 ? e : platform::kNoSuchFile);
}

} // namespace brindle::files
