// Yes/no questions about a file, and the directory maker of whole paths.
#pragma once

#include <cstdint>
#include <string_view>

namespace brindle::files {

// Readable: the entry exists and is not hidden (a directory is looked up
// after normalisation); a name ending in "/" is not readable.
bool file_is_readable(std::string_view name);
// Writeable: as readable, and a directory must not be read-only either (a
// read-only file still counts as writeable: the asymmetry is kept).
bool file_is_writeable(std::string_view name);
// Executable: ".com", ".exe" or ".bat" (case ignored) on an existing file; a
// name without extension when one of those added gives an existing file;
// else a file beginning with "MZ", "#!" or "/*!".
bool file_is_executable(std::string_view name);
// Program: the name with ".exe", ".com", then ".bat" added (unless it has an
// extension) exists, looked up in the current directory and along the
// program search path when the name holds no separator, else as given.
bool file_is_program(std::string_view name);
// Directory: the normalised name is a directory.
bool file_is_directory(std::string_view name);

// Makes every directory of a path: 2 when the name fails the path check,
// -1 when the whole path exists as a directory at the end, else the runtime
// error number of making the last one.
int16_t make_directories(std::string_view path);

} // namespace brindle::files
