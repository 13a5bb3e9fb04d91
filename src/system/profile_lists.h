// The lists of profile files as the profile exports give them: the items of
// a section and the section names, read through the platform's profile
// calls with the buffers the exports have always used.
#pragma once

#include <cstdint>
#include <string>

namespace brindle::system {

inline constexpr uint32_t kValueBuffer = 2048;    // one value (cGetIni)
inline constexpr uint32_t kListBuffer = 16384;    // key and section lists
inline constexpr uint32_t kItemValueBuffer = 256; // each value of a section's items

// One value: the platform's read of `key` in `section` with `fallback`,
// cut to kValueBuffer - 1 bytes.
std::string profile_value(const std::string &section, const std::string &key, const std::string &fallback,
                          const std::string &file);

// Every key of `section` that has a value, as "name=value" each followed by
// a carriage return; *count the number of items. A value is read with the
// default "?" into kItemValueBuffer bytes. The key names come from one read
// of kListBuffer bytes; the text itself grows as needed.
std::string section_items(const std::string &section, const std::string &file, int16_t *count);

// The section names joined by carriage returns; *count the number of
// carriage returns (one less than the names). A file with no sections, or
// with a list of one byte, gives "" and 0.
std::string section_list(const std::string &file, int16_t *count);

// A system directory read into a 256-byte buffer: "" when the platform
// gives nothing or needs more room.
std::string directory_text(uint32_t (*read)(char *, uint32_t));

} // namespace brindle::system
