#include "system/registry_values.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace brindle::system {

using platform::RegistryRoot;
using platform::RegistryStep;

RegistryRoot registry_root(int16_t selector) noexcept {
    switch (selector) {
    case 1:
        return RegistryRoot::ClassesRoot;
    case 3:
        return RegistryRoot::LocalMachine;
    case 4:
        return RegistryRoot::Users;
    case 5:
        return RegistryRoot::PerformanceData;
    case 6:
        return RegistryRoot::CurrentConfig;
    case 7:
        return RegistryRoot::DynData;
    default:
        return RegistryRoot::CurrentUser;
    }
}

int16_t registry_status(RegistryStep step) noexcept {
    switch (step) {
    case RegistryStep::Done:
        return -1;
    case RegistryStep::CreateFailed:
        return 2;
    case RegistryStep::OpenFailed:
        return 3;
    case RegistryStep::Disposition:
        return 4;
    case RegistryStep::Refused:
        break;
    }
    return 5;
}

std::string registry_value(RegistryRoot root, const std::string &key, const std::string &name,
                           std::string_view fallback) {
    // One byte beyond the 4,096 the result may hold, so that the system can
    // place a 4,096-character string with its zero; that byte is never given.
    std::vector<char> buffer(kRegistryValueBuffer + 1);
    uint32_t length = 0;
    if (!platform::registry_get(root, key.c_str(), name.c_str(), buffer.data(), kRegistryValueBuffer + 1, &length))
        return std::string(fallback);
    const std::string_view got(buffer.data(), std::min<uint32_t>(length, kRegistryValueBuffer));
    return std::string(got.substr(0, got.find('\0')));
}

std::string key_summary(const platform::RegistryKeyFacts &f) {
    char text[64];
    std::snprintf(text, sizeof text, "%d;%d;%d;%d;%d", static_cast<int>(f.subkeys), static_cast<int>(f.max_subkey_len),
                  static_cast<int>(f.values), static_cast<int>(f.max_value_name_len),
                  static_cast<int>(f.max_value_len));
    return text;
}

Settings all_settings(const std::string &key, size_t rows) {
    Settings out;
    rows = std::min(rows, kMaxSettingRows);
    bool ran_out = false;
    const bool opened = platform::registry_values(
        RegistryRoot::CurrentUser, key.c_str(), kSettingNameRoom, kSettingDataRoom,
        [&](std::string_view name, std::string_view data) {
            if (out.rows.size() == rows) {
                ran_out = true;
                return false;
            }
            if (!data.empty() && data.back() == '\0')
                data.remove_suffix(1);
            out.rows.emplace_back(std::string(name), std::string(data));
            return true;
        });
    if (!opened)
        out.code = -1;
    else if (ran_out || out.rows.size() == rows)
        out.code = -2; // also an array without rows
    else
        out.code = static_cast<int16_t>(out.rows.size());
    return out;
}

} // namespace brindle::system
