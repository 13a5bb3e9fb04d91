#include "system/profile_lists.h"

#include "platform/profile.h"

#include <cstring>
#include <vector>

namespace brindle::system {

std::string profile_value(const std::string &section, const std::string &key, const std::string &fallback,
                          const std::string &file) {
    std::vector<char> buffer(kValueBuffer, '\0');
    const uint32_t n =
        platform::profile_read(section.c_str(), key.c_str(), fallback.c_str(), buffer.data(), kValueBuffer, file.c_str());
    return std::string(buffer.data(), n < kValueBuffer ? n : kValueBuffer - 1);
}

std::string section_items(const std::string &section, const std::string &file, int16_t *count) {
    *count = 0;
    std::vector<char> names(kListBuffer + 1, '\0');
    platform::profile_read(section.c_str(), nullptr, "", names.data(), kListBuffer, file.c_str());
    std::string out;
    std::vector<char> value(kItemValueBuffer, '\0');
    // The list ends at an empty name; the extra zero past the buffer stops
    // the walk even if the platform filled every byte.
    for (const char *name = names.data(); *name != '\0' && name < names.data() + kListBuffer;
         name += std::strlen(name) + 1) {
        std::memset(value.data(), 0, kItemValueBuffer);
        platform::profile_read(section.c_str(), name, "?", value.data(), kItemValueBuffer, file.c_str());
        out += name;
        out += '=';
        out += value.data();
        out += '\r';
        ++*count;
    }
    return out;
}

std::string section_list(const std::string &file, int16_t *count) {
    *count = 0;
    std::vector<char> buffer(kListBuffer, '\0');
    uint32_t n = platform::profile_read(nullptr, "?", "?", buffer.data(), kListBuffer, file.c_str());
    if (n > kListBuffer)
        n = kListBuffer;
    if (n <= 1)
        return {};
    std::string out(buffer.data(), n - 1);
    for (char &c : out)
        if (c == '\0') {
            c = '\r';
            ++*count;
        }
    return out;
}

std::string directory_text(uint32_t (*read)(char *, uint32_t)) {
    char buffer[256] = {};
    const uint32_t n = read(buffer, sizeof buffer);
    if (n == 0 || n >= sizeof buffer)
        return {};
    return std::string(buffer, n);
}

} // namespace brindle::system
