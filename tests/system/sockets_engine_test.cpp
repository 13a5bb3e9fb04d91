// The engines behind the socket and process exports: service ports, the
// failure codes clients never see, the open count, the Windows Sockets
// numbers of POSIX errors, and the command-line splitter.
#include "platform/net.h"
#include "system/command_line.h"
#include "system/sockets.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <vector>

using namespace brindle::system;

TEST(SocketEngine, ServicePorts) {
    const struct {
        const char *service;
        uint16_t port;
    } rows[] = {
        {"80", 80}, {" 80", 80}, {"+21", 21}, {"80x", 80}, {"1", 1}, {"65535", 65535},
        {"0", 0}, {"65536", 0}, {"-1", 0}, {"", 0}, {"x80", 0}, {"00000000000000000000443", 443},
        {"99999999999999999999", 0},
    };
    for (const auto &r : rows)
        EXPECT_EQ(service_port(r.service, "tcp"), r.port) << r.service;
#ifndef _WIN32
    // IANA's assignments, as /etc/services lists them.
    EXPECT_EQ(service_port("echo", "tcp"), 7);
    EXPECT_EQ(service_port("domain", "udp"), 53);
#endif
}

TEST(SocketEngine, FailureCodesOfTheOpens) {
    EXPECT_EQ(socket_passive("0", "tcp", 5), 0);
    EXPECT_EQ(socket_last_failure(), kServiceUnknown);
    EXPECT_EQ(socket_passive("8080", "icmp", 5), 0);
    EXPECT_EQ(socket_last_failure(), kProtocolUnknown);
    EXPECT_EQ(socket_connect("no host!", "80", "tcp"), 0);
    EXPECT_EQ(socket_last_failure(), kHostUnknown);

    const int32_t open_before = sockets_open();
    const int32_t a = socket_passive("0 is not it, but 47123", "tcp", 5); // atoi reading: 0
    EXPECT_EQ(a, 0);
    const int32_t listener = socket_passive("47123", "tcp", 5);
    if (listener == 0)
        GTEST_SKIP() << "port 47123 is in use on this machine";
    EXPECT_EQ(socket_last_failure(), kSocketOpened);
    EXPECT_EQ(sockets_open(), open_before + 1);
    EXPECT_EQ(socket_passive("47123", "tcp", 5), 0);
    EXPECT_EQ(socket_last_failure(), kBindFailed);
    EXPECT_EQ(socket_close(listener), 0);
    EXPECT_EQ(sockets_open(), open_before);
    EXPECT_EQ(socket_close(listener), 0); // a second close leaves the count alone
    EXPECT_EQ(sockets_open(), open_before);
}

#ifndef _WIN32
// Windows Sockets numbers are WSABASEERR (10000) plus the 4.3BSD errno
// number for the socket errors (BSD's EWOULDBLOCK is 35, ECONNRESET 54);
// Linux numbers its errno values differently, so each is mapped by name.
TEST(SocketEngine, PosixErrorsAsWindowsSocketsNumbers) {
    const struct {
        int posix;
        int32_t wsa;
    } rows[] = {
        {EINTR, 10004}, {EBADF, 10009}, {EACCES, 10013}, {EFAULT, 10014}, {EINVAL, 10022}, {EMFILE, 10024},
        {EWOULDBLOCK, 10035}, {EINPROGRESS, 10036}, {EALREADY, 10037}, {ENOTSOCK, 10038},
        {EMSGSIZE, 10040}, {EADDRINUSE, 10048}, {EADDRNOTAVAIL, 10049}, {ENETUNREACH, 10051},
        {ECONNABORTED, 10053}, {ECONNRESET, 10054}, {EPIPE, 10054}, {ENOBUFS, 10055}, {EISCONN, 10056},
        {ENOTCONN, 10057}, {ESHUTDOWN, 10058}, {ETIMEDOUT, 10060}, {ECONNREFUSED, 10061},
        {EHOSTUNREACH, 10065}, {ENAMETOOLONG, 10063},
    };
    for (const auto &r : rows)
        EXPECT_EQ(brindle::platform::net_error_of_errno(r.posix), r.wsa) << r.posix;
}
#endif

TEST(CommandLine, Words) {
    using W = std::vector<std::string>;
    const struct {
        const char *line;
        W words;
    } rows[] = {
        {"", {}},
        {"  \t ", {}},
        {"prog", {"prog"}},
        {"  prog   a\tb  ", {"prog", "a", "b"}},
        {"\"C:\\Program Files\\x.exe\" /q", {"C:\\Program Files\\x.exe", "/q"}},
        {"p \"a b\"c d", {"p", "a bc", "d"}},
        {"p \"\"", {"p", ""}},
        {"p \"unclosed quote", {"p", "unclosed quote"}},
        {"p a\\\"b", {"p", "a\\b"}}, // a backslash is ordinary; the quote still toggles
        {"p 'single quotes' stay", {"p", "'single", "quotes'", "stay"}},
    };
    for (const auto &r : rows)
        EXPECT_EQ(command_words(r.line), r.words) << r.line;
    EXPECT_TRUE(names_a_path("./x"));
    EXPECT_TRUE(names_a_path("C:\\x.exe"));
    EXPECT_FALSE(names_a_path("sleep"));
}
