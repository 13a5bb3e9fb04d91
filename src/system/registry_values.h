// The registry family's work between its exports and the platform's
// registry calls: root selectors, status codes, the getters' bounded
// buffer, the key summary and the rows of cGetAllSettings.
#pragma once

#include "platform/registry.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace brindle::system {

// The getters hold 4,096 bytes of value; the system is offered one byte
// more so that a value of 4,096 characters and its zero still reads.
inline constexpr uint32_t kRegistryValueBuffer = 4096;
// Room cGetAllSettings gives each value's name (its zero included) and data.
inline constexpr uint32_t kSettingNameRoom = 256;
inline constexpr uint32_t kSettingDataRoom = 2048;
// The most rows cGetAllSettings fills: its count is an Integer.
inline constexpr size_t kMaxSettingRows = 32767;

// The root of a selector of the Ext forms: 1, 3, 4, 5, 6, 7 name their
// roots, any other value the current user's.
platform::RegistryRoot registry_root(int16_t selector) noexcept;

// The status code of a put or kill: -1 done, 2 not created, 3 not opened,
// 4 neither made nor found, 5 refused.
int16_t registry_status(platform::RegistryStep step) noexcept;

// A value as the getters give it: the stored bytes up to the first zero, at
// most kRegistryValueBuffer of them; `fallback` when the key cannot be
// opened or the value read (one longer than kRegistryValueBuffer + 1 bytes
// included).
std::string registry_value(platform::RegistryRoot root, const std::string &key, const std::string &name,
                           std::string_view fallback);

// The five numbers joined as "%d;%d;%d;%d;%d".
std::string key_summary(const platform::RegistryKeyFacts &facts);

// What cGetAllSettings stores: the values of `key` under the current user
// (name, data less its final zero) read into `rows` rows, and its result:
// the count, -1 when the key cannot be opened, -2 when the rows ran out
// (the rows filled stay filled). At most kMaxSettingRows rows are used.
struct Settings {
    int16_t code = 0;
    std::vector<std::pair<std::string, std::string>> rows;
};
Settings all_settings(const std::string &key, size_t rows);

} // namespace brindle::system
