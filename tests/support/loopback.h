// Plain loopback sockets for the tests of the socket family: a TCP echo
// server and a UDP peer on 127.0.0.1, each on a thread of the test process,
// with every wait bounded (a server stops on its own after its time limit),
// written against the system's sockets directly so they check the library
// from outside.
#pragma once

#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <winsock2.h>
#include <ws2tcpip.h>
#else
#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

#include <atomic>
#include <chrono>
#include <cstdint>
#include <string>
#include <thread>

namespace brindle::test {

#ifdef _WIN32
using RawSocket = SOCKET;
inline constexpr RawSocket kBadSocket = INVALID_SOCKET;
inline void raw_close(RawSocket s) { closesocket(s); }
inline constexpr int kSendFlags = 0;
inline bool net_ready() {
    static const bool ok = [] {
        WSADATA d;
        return WSAStartup(MAKEWORD(2, 2), &d) == 0;
    }();
    return ok;
}
// Waits up to `ms` for `s` to be readable.
inline bool readable(RawSocket s, int ms) {
    fd_set set;
    FD_ZERO(&set);
    FD_SET(s, &set);
    timeval t{ms / 1000, (ms % 1000) * 1000};
    return select(0, &set, nullptr, nullptr, &t) > 0;
}
inline bool writable(RawSocket s, int ms) {
    fd_set set;
    FD_ZERO(&set);
    FD_SET(s, &set);
    timeval t{ms / 1000, (ms % 1000) * 1000};
    return select(0, nullptr, &set, nullptr, &t) > 0;
}
#else
using RawSocket = int;
inline constexpr RawSocket kBadSocket = -1;
inline void raw_close(RawSocket s) { close(s); }
inline constexpr int kSendFlags = MSG_NOSIGNAL; // a gone peer must not kill the test
inline bool net_ready() { return true; }
inline bool readable(RawSocket s, int ms) {
    pollfd p{s, POLLIN, 0};
    return poll(&p, 1, ms) > 0;
}
inline bool writable(RawSocket s, int ms) {
    pollfd p{s, POLLOUT, 0};
    return poll(&p, 1, ms) > 0;
}
#endif

// A socket bound to 127.0.0.1 at an ephemeral port; its port in `port`.
inline RawSocket bound_loopback(int type, uint16_t *port) {
    if (!net_ready())
        return kBadSocket;
    RawSocket s = socket(AF_INET, type, 0);
    if (s == kBadSocket)
        return s;
    sockaddr_in a{};
    a.sin_family = AF_INET;
    a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof a;
    if (bind(s, reinterpret_cast<sockaddr *>(&a), sizeof a) != 0 ||
        getsockname(s, reinterpret_cast<sockaddr *>(&a), &length) != 0) {
        raw_close(s);
        return kBadSocket;
    }
    *port = ntohs(a.sin_port);
    return s;
}

// A port nothing listens on (bound, then released).
inline uint16_t free_port() {
    uint16_t port = 0;
    const RawSocket s = bound_loopback(SOCK_STREAM, &port);
    if (s != kBadSocket)
        raw_close(s);
    return port;
}

// A TCP server on 127.0.0.1 that accepts up to `connections` connections one
// after another and echoes each (or, with `close_at_once`, closes it as soon
// as it is accepted). It stops after `limit` whatever happens.
class EchoServer {
  public:
    explicit EchoServer(int connections = 1, bool close_at_once = false,
                        std::chrono::seconds limit = std::chrono::seconds(120))
        : deadline_(std::chrono::steady_clock::now() + limit) {
        listener_ = bound_loopback(SOCK_STREAM, &port_);
        if (listener_ == kBadSocket || listen(listener_, 16) != 0)
            return;
        thread_ = std::thread([this, connections, close_at_once] { run(connections, close_at_once); });
    }
    ~EchoServer() {
        stop_ = true;
        if (thread_.joinable())
            thread_.join();
        if (listener_ != kBadSocket)
            raw_close(listener_);
    }
    EchoServer(const EchoServer &) = delete;
    EchoServer &operator=(const EchoServer &) = delete;

    std::string port() const { return std::to_string(port_); }
    bool ok() const { return thread_.joinable(); }
    int64_t echoed() const { return echoed_; }

  private:
    bool running() const { return !stop_ && std::chrono::steady_clock::now() < deadline_; }

    void run(int connections, bool close_at_once) {
        for (int i = 0; i < connections && running(); ++i) {
            while (running() && !readable(listener_, 50)) {
            }
            if (!running())
                return;
            const RawSocket c = accept(listener_, nullptr, nullptr);
            if (c == kBadSocket)
                return;
            if (!close_at_once)
                echo(c);
            raw_close(c);
        }
    }

    void echo(RawSocket c) {
        static char buffer[1 << 16];
        while (running()) {
            if (!readable(c, 50))
                continue;
            const auto n = recv(c, buffer, sizeof buffer, 0);
            if (n <= 0)
                return;
            for (int64_t sent = 0; sent < static_cast<int64_t>(n) && running();) {
                if (!writable(c, 50))
                    continue;
                const auto k = send(c, buffer + sent, static_cast<int>(n - sent), kSendFlags);
                if (k <= 0)
                    return;
                sent += k;
                echoed_ += k;
            }
        }
    }

    RawSocket listener_ = kBadSocket;
    uint16_t port_ = 0;
    std::thread thread_;
    std::atomic<bool> stop_{false};
    std::atomic<int64_t> echoed_{0};
    std::chrono::steady_clock::time_point deadline_;
};

} // namespace brindle::test
