// Profile (initialisation) files and the directories they default to, as
// the system's private-profile calls give them. Strings are zero-terminated
// byte strings; a null pointer is an absent argument, which selects the
// call's other forms (a missing key lists the section's keys, a missing
// section lists the sections, a missing value deletes the key, a missing key
// on a write deletes the section, all three missing flush the file).
//
// On Windows these are the system's own calls; on POSIX the library's
// reader and writer in platform/profile_text.h, which follow them.
#pragma once

#include <cstdint>

namespace brindle::platform {

// Reads into `buffer` of `size` bytes and gives the number of bytes placed
// before the final zero (lists: names each ended by a zero, the list by one
// more; cut lists give size - 2).
uint32_t profile_read(const char *section, const char *key, const char *fallback, char *buffer, uint32_t size,
                      const char *file);

// Writes, deletes or flushes; non-zero on success. A flush gives 0.
int32_t profile_write(const char *section, const char *key, const char *value, const char *file);

// The system and Windows directories into `buffer` of `size` bytes: the
// length placed, or the size needed (terminator included) when it does not
// fit, or 0 on failure.
uint32_t system_directory(char *buffer, uint32_t size);
uint32_t windows_directory(char *buffer, uint32_t size);

} // namespace brindle::platform
