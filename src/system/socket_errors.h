// The names and run-time error numbers of Windows Sockets errors.
#pragma once

#include <cstdint>
#include <string_view>

namespace brindle::system {

// The symbolic name of a Windows Sockets error number ("WSAEWOULDBLOCK" for
// 10035) for 10004 to 10071, 10091 to 10093 and 10101 where the system has
// one; "No error" for every other number.
std::string_view socket_error_name(int32_t code) noexcept;

// The run-time library's errno value a failed read or write reports: 11
// (try again) for "would block" and "in progress", 10054 for a reset or an
// aborted connection, the Windows Sockets number itself otherwise.
int socket_errno_of(int32_t code) noexcept;

} // namespace brindle::system
