// IPv4 sockets over Windows Sockets. The library takes one start-up of its
// own on first use and keeps it while it is loaded, so that a client's
// unbalanced cleanup never invalidates a socket the library still has open.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <winsock2.h>
#include <ws2tcpip.h>

#include "platform/net.h"

#include <climits>

namespace brindle::platform {

namespace {

bool own_start() noexcept {
    static const bool started = [] {
        WSADATA data;
        return WSAStartup(MAKEWORD(2, 2), &data) == 0;
    }();
    return started;
}

thread_local int32_t t_last_error = 0;

template <class T> T failed(T value) noexcept {
    t_last_error = WSAGetLastError();
    return value;
}

SOCKET sock_of(NetSocket s) noexcept { return static_cast<SOCKET>(s); }

} // namespace

bool net_start() noexcept {
    WSADATA data;
    return WSAStartup(0x0101, &data) == 0;
}

void net_stop() noexcept { WSACleanup(); }

int32_t net_last_error() noexcept { return t_last_error; }

int32_t net_error_of_errno(int e) noexcept { return e; }

bool net_resolve(const char *host, uint32_t *address) noexcept {
    if (!own_start())
        return false;
    addrinfo hints{};
    hints.ai_family = AF_INET;
    addrinfo *list = nullptr;
    if (getaddrinfo(host, nullptr, &hints, &list) != 0 || list == nullptr) {
        t_last_error = WSAHOST_NOT_FOUND;
        return false;
    }
    *address = reinterpret_cast<const sockaddr_in *>(list->ai_addr)->sin_addr.s_addr;
    freeaddrinfo(list);
    return true;
}

bool net_parse_dotted(const char *text, uint32_t *address) noexcept {
    // Four decimal parts of 0..255 separated by dots, nothing else (what
    // inet_pton accepts, written out: older systems lack it).
    uint32_t value = 0;
    int parts = 0;
    const char *p = text;
    while (true) {
        if (*p < '0' || *p > '9')
            return false;
        unsigned part = 0;
        int digits = 0;
        while (*p >= '0' && *p <= '9') {
            part = part * 10 + static_cast<unsigned>(*p++ - '0');
            if (++digits > 3 || part > 255)
                return false;
        }
        value = (value << 8) | part;
        if (++parts == 4)
            break;
        if (*p++ != '.')
            return false;
    }
    if (*p != '\0')
        return false;
    *address = htonl(value);
    return true;
}

bool net_service(const char *name, const char *protocol, uint16_t *port) noexcept {
    if (!own_start())
        return false;
    const servent *found = getservbyname(name, protocol);
    if (found == nullptr)
        return false;
    *port = ntohs(static_cast<u_short>(found->s_port));
    return true;
}

NetSocket net_open(bool stream) noexcept {
    if (!own_start())
        return kNoSocket;
    const SOCKET s = socket(AF_INET, stream ? SOCK_STREAM : SOCK_DGRAM, stream ? IPPROTO_TCP : IPPROTO_UDP);
    if (s == INVALID_SOCKET)
        return failed(kNoSocket);
    // A socket number must fit the Long of the interface, even on 64-bit
    // Windows where SOCKET is pointer-sized.
    if (s > static_cast<SOCKET>(INT32_MAX)) {
        closesocket(s);
        t_last_error = WSAEMFILE;
        return kNoSocket;
    }
    u_long one = 1;
    if (ioctlsocket(s, FIONBIO, &one) != 0) {
        failed(0);
        closesocket(s);
        return kNoSocket;
    }
    return static_cast<NetSocket>(s);
}

bool net_bind_any(NetSocket s, uint16_t port) noexcept {
    sockaddr_in a{};
    a.sin_family = AF_INET;
    a.sin_port = htons(port);
    a.sin_addr.s_addr = htonl(INADDR_ANY);
    return bind(sock_of(s), reinterpret_cast<const sockaddr *>(&a), sizeof a) == 0 || failed(false);
}

bool net_listen(NetSocket s, int32_t backlog) noexcept {
    return listen(sock_of(s), backlog) == 0 || failed(false);
}

int32_t net_connect(NetSocket s, uint32_t address, uint16_t port) noexcept {
    sockaddr_in a{};
    a.sin_family = AF_INET;
    a.sin_port = htons(port);
    a.sin_addr.s_addr = address;
    if (connect(sock_of(s), reinterpret_cast<const sockaddr *>(&a), sizeof a) == 0)
        return 0;
    t_last_error = WSAGetLastError();
    return t_last_error;
}

int64_t net_recv(NetSocket s, char *buffer, size_t size) noexcept {
    const int n = recv(sock_of(s), buffer, size > INT_MAX ? INT_MAX : static_cast<int>(size), 0);
    return n != SOCKET_ERROR ? n : failed(int64_t{-1});
}

int64_t net_send(NetSocket s, const char *bytes, size_t size) noexcept {
    const int n = send(sock_of(s), bytes, size > INT_MAX ? INT_MAX : static_cast<int>(size), 0);
    return n != SOCKET_ERROR ? n : failed(int64_t{-1});
}

int64_t net_pending(NetSocket s) noexcept {
    u_long n = 0;
    return ioctlsocket(sock_of(s), FIONREAD, &n) == 0 ? static_cast<int64_t>(n) : failed(int64_t{-1});
}

bool net_local_address(NetSocket s, uint32_t *address) noexcept {
    sockaddr_in a{};
    int length = sizeof a;
    if (getsockname(sock_of(s), reinterpret_cast<sockaddr *>(&a), &length) != 0 || a.sin_family != AF_INET)
        return failed(false);
    *address = a.sin_addr.s_addr;
    return true;
}

bool net_no_delay(NetSocket s) noexcept {
    const BOOL one = TRUE;
    return setsockopt(sock_of(s), IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char *>(&one), sizeof one) == 0 ||
           failed(false);
}

bool net_alive(NetSocket s) noexcept {
    int type = 0;
    int length = sizeof type;
    return getsockopt(sock_of(s), SOL_SOCKET, SO_TYPE, reinterpret_cast<char *>(&type), &length) == 0 ||
           failed(false);
}

int32_t net_close(NetSocket s) noexcept {
    shutdown(sock_of(s), SD_BOTH);
    return closesocket(sock_of(s)) == 0 ? 0 : failed(-1);
}

} // namespace brindle::platform
