// The POSIX side of the attribute convention, shared by the status calls
// and the directory search of this folder.
#pragma once

#include "platform/file_info.h"

#include <string_view>
#include <sys/stat.h>

namespace brindle::platform::posix {

// An errno value as the Windows runtime's error number.
int errno_to_runtime(int e);

// A name beginning with a full stop (but not "." or "..") is hidden.
bool dotted_name(std::string_view name);

// The last component of a native path (trailing slashes ignored).
std::string_view last_component(std::string_view native);

// The DOS bits stored in user.DOSATTRIB; false when there are none.
bool read_stored_bits(const char *native, uint32_t *bits);

// The attribute word of a file from its status (links followed), whether
// the name itself is a link, its name, and - when not null - the native
// path whose extended attribute holds the stored bits.
uint32_t dos_attributes(const struct stat &st, bool is_link, std::string_view name, const char *native_for_xattr);

FileTimes times_of(const struct stat &st);

} // namespace brindle::platform::posix
