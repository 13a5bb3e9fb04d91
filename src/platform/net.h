// IPv4 sockets, the little the socket family needs of them. A socket is the
// system's own number (a descriptor on POSIX, a SOCKET on Windows) in an
// intptr_t; kNoSocket is none. Errors are reported as Windows Sockets error
// numbers on every system (10035 would block, 10054 reset, ...), so that a
// client sees the same codes on Linux as on Windows.
#pragma once

#include <cstddef>
#include <cstdint>

namespace brindle::platform {

using NetSocket = intptr_t;
inline constexpr NetSocket kNoSocket = -1;

// Starts the system's socket layer (version 1.1 asked for); false when it
// cannot. net_stop undoes one start. Both do nothing on POSIX.
bool net_start() noexcept;
void net_stop() noexcept;

// The Windows Sockets number of the last failure of a net_ call on this
// thread (POSIX errno values mapped to their Windows Sockets numbers).
int32_t net_last_error() noexcept;

// The Windows Sockets number of a POSIX errno value (10000 + the BSD number
// for the socket errors); other values give themselves. Used by net_last_error.
int32_t net_error_of_errno(int e) noexcept;

// The IPv4 address of a host name (resolved by the system) in network
// byte order; false when the name does not resolve.
bool net_resolve(const char *host, uint32_t *address) noexcept;

// A dotted IPv4 address ("127.0.0.1") in network byte order; false when
// `text` is not one.
bool net_parse_dotted(const char *text, uint32_t *address) noexcept;

// The port of a service name for "tcp" or "udp" (host byte order); false when
// the system knows no such service.
bool net_service(const char *name, const char *protocol, uint16_t *port) noexcept;

// A new non-blocking Internet socket (stream or datagram); kNoSocket when it
// cannot be made, or when its number would not fit a 32-bit signed Long.
NetSocket net_open(bool stream) noexcept;

bool net_bind_any(NetSocket s, uint16_t port) noexcept;
bool net_listen(NetSocket s, int32_t backlog) noexcept;

// Connects to `address` (network order) at `port`; 0 on success, else the
// error number (10035 for a non-blocking connect under way).
int32_t net_connect(NetSocket s, uint32_t address, uint16_t port) noexcept;

// recv and send with no flags (a send to a closed peer never raises a
// signal); the byte count, or -1 (then net_last_error tells why).
int64_t net_recv(NetSocket s, char *buffer, size_t size) noexcept;
int64_t net_send(NetSocket s, const char *bytes, size_t size) noexcept;

// How many bytes a recv would take at once now (0 when none are waiting),
// or -1 when the system cannot tell.
int64_t net_pending(NetSocket s) noexcept;

// The local IPv4 address the socket is bound to (network order).
bool net_local_address(NetSocket s, uint32_t *address) noexcept;

// Switches Nagle's algorithm off; false when the socket refuses.
bool net_no_delay(NetSocket s) noexcept;

// True when the socket's type can still be read.
bool net_alive(NetSocket s) noexcept;

// Shuts both directions down (the result ignored) and closes; 0 or -1.
int32_t net_close(NetSocket s) noexcept;

} // namespace brindle::platform
