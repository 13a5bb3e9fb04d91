// The socket family's engine: TCP and UDP sockets over IPv4 kept in the
// frame's handle table. A client holds the table's number (a Long on every
// build), never the system's socket, so a closed, foreign or random number
// finds nothing and can never reach a descriptor the library did not open.
// Every socket the library opens is non-blocking.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace brindle::system {

// Why the last open failed (kept for the tests; clients see only 0).
enum SocketFailure : int32_t {
    kSocketOpened = 0,
    kHostUnknown = 2,     // the host cannot be resolved (or is no host name)
    kServiceUnknown = 3,  // neither a known service nor a port 1..65535
    kProtocolUnknown = 4, // not "tcp" or "udp"
    kSocketRefused = 5,   // no socket could be made (or no table entry)
    kConnectFailed = 6,   // connect failed on every attempt
    kBindFailed = 7,
    kListenFailed = 8,
};

// The most bytes one read takes from the system.
inline constexpr size_t kReadLimit = size_t{1} << 20;

// Starts and stops the system's socket layer for a client (balanced: a stop
// without a start of this client's does nothing).
bool sockets_start() noexcept;
void sockets_stop() noexcept;

// The port of a service: the system's port for a service name and protocol,
// else the text read as a decimal number (blanks, an optional sign, digits,
// as far as they go); 0 when that is not 1..65535.
uint16_t service_port(std::string_view service, std::string_view protocol);

// A listening TCP socket (protocol "tcp", with `backlog`, below 1 counting as
// 1) or a bound UDP socket ("udp") on all local addresses at the service's
// port; its number, or 0 (socket_last_failure tells why).
int32_t socket_passive(std::string_view service, std::string_view protocol, int32_t backlog);

// A socket connected to `host` ("" is 127.0.0.1; a dotted address, or a
// name of letters, digits, '-', '_' and '.' of at most 255 characters that
// the system resolves) at the service's port, up to 3 attempts; a connect
// still under way counts as made. Its number, or 0.
int32_t socket_connect(std::string_view host, std::string_view service, std::string_view protocol);

SocketFailure socket_last_failure() noexcept;

// How many sockets are open.
int32_t sockets_open() noexcept;

// Receives at most `size` bytes (kReadLimit at most) into `buffer`: the count,
// 0 when the peer closed, -1 on failure (errno set by socket_errno_of).
int64_t socket_read(int32_t number, char *buffer, size_t size);

// How many bytes a read would find waiting now (0 when none, or for a
// number that names no open socket).
int64_t socket_pending(int32_t number);

// Sends `bytes`: the count the system took, or -1 (errno as for reads).
int64_t socket_write(int32_t number, std::string_view bytes);

// The local IPv4 address in dotted form; "127.0.0.1" when it cannot be read.
std::string socket_local_address(int32_t number);

bool socket_no_delay(int32_t number);
bool socket_alive(int32_t number);

// Shuts down and closes the socket: 0 also when `number` names no open
// socket (nothing is done then), else the system's close result (0 or -1).
int32_t socket_close(int32_t number);

} // namespace brindle::system
