// The process's standard input, output and error, for the stream family's
// standard streams. The descriptors are never closed through these.
#pragma once

#include <cstddef>
#include <cstdint>

namespace brindle::platform {

enum class StdStream { Input = 0, Output = 1, Error = 2 };

// Up to `size` bytes of standard input; 0 at its end, -1 on error.
int64_t std_read(void *buffer, size_t size) noexcept;
// All `size` bytes to standard output or error, or false.
bool std_write(StdStream which, const void *buffer, size_t size) noexcept;
// True where the standard streams are in the runtime's text mode (Windows:
// a line feed written goes out as carriage return and line feed); on POSIX
// they pass bytes unchanged, as every program there expects.
bool std_text_mode() noexcept;

} // namespace brindle::platform
