// IPv4 sockets over BSD sockets, with errno values reported as the Windows
// Sockets numbers a client of the Windows library sees.
#include "platform/net.h"

#include <cerrno>
#include <climits>
#include <cstring>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace brindle::platform {

namespace {

thread_local int32_t t_last_error = 0;

template <class T> T failed(T value) noexcept {
    t_last_error = net_error_of_errno(errno);
    return value;
}

int fd_of(NetSocket s) noexcept { return s >= 0 && s <= INT_MAX ? static_cast<int>(s) : -1; }

} // namespace

bool net_start() noexcept { return true; }
void net_stop() noexcept {}

int32_t net_last_error() noexcept { return t_last_error; }

int32_t net_error_of_errno(int e) noexcept {
    switch (e) {
    case EINTR: return 10004;
    case EBADF: return 10009;
    case EACCES: case EPERM: return 10013;
    case EFAULT: return 10014;
    case EINVAL: return 10022;
    case EMFILE: case ENFILE: return 10024;
    case EWOULDBLOCK: return 10035;
    case EINPROGRESS: return 10036;
    case EALREADY: return 10037;
    case ENOTSOCK: return 10038;
    case EDESTADDRREQ: return 10039;
    case EMSGSIZE: return 10040;
    case EPROTOTYPE: return 10041;
    case ENOPROTOOPT: return 10042;
    case EPROTONOSUPPORT: return 10043;
    case ESOCKTNOSUPPORT: return 10044;
    case EOPNOTSUPP: return 10045;
    case EPFNOSUPPORT: return 10046;
    case EAFNOSUPPORT: return 10047;
    case EADDRINUSE: return 10048;
    case EADDRNOTAVAIL: return 10049;
    case ENETDOWN: return 10050;
    case ENETUNREACH: return 10051;
    case ENETRESET: return 10052;
    case ECONNABORTED: return 10053;
    case ECONNRESET: case EPIPE: return 10054; // Windows reports a send to a gone peer as a reset
    case ENOBUFS: case ENOMEM: return 10055;
    case EISCONN: return 10056;
    case ENOTCONN: return 10057;
    case ESHUTDOWN: return 10058;
    case ETOOMANYREFS: return 10059;
    case ETIMEDOUT: return 10060;
    case ECONNREFUSED: return 10061;
    case ELOOP: return 10062;
    case ENAMETOOLONG: return 10063;
    case EHOSTDOWN: return 10064;
    case EHOSTUNREACH: return 10065;
    case ENOTEMPTY: return 10066;
    case EUSERS: return 10068;
    case EDQUOT: return 10069;
    case ESTALE: return 10070;
    case EREMOTE: return 10071;
    default: return e;
    }
}

bool net_resolve(const char *host, uint32_t *address) noexcept {
    addrinfo hints{};
    hints.ai_family = AF_INET;
    addrinfo *list = nullptr;
    if (getaddrinfo(host, nullptr, &hints, &list) != 0 || list == nullptr) {
        t_last_error = 11001; // WSAHOST_NOT_FOUND
        return false;
    }
    *address = reinterpret_cast<const sockaddr_in *>(list->ai_addr)->sin_addr.s_addr;
    freeaddrinfo(list);
    return true;
}

bool net_parse_dotted(const char *text, uint32_t *address) noexcept {
    in_addr a{};
    if (inet_pton(AF_INET, text, &a) != 1)
        return false;
    *address = a.s_addr;
    return true;
}

bool net_service(const char *name, const char *protocol, uint16_t *port) noexcept {
    servent entry{}, *found = nullptr;
    char buffer[4096];
    if (getservbyname_r(name, protocol, &entry, buffer, sizeof buffer, &found) != 0 || found == nullptr)
        return false;
    *port = ntohs(static_cast<uint16_t>(found->s_port));
    return true;
}

NetSocket net_open(bool stream) noexcept {
    const int fd = socket(AF_INET, (stream ? SOCK_STREAM : SOCK_DGRAM) | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (fd < 0)
        return failed(kNoSocket);
    return fd;
}

bool net_bind_any(NetSocket s, uint16_t port) noexcept {
    // A TCP port whose old connections still wait out their time may be
    // bound again at once, as on Windows (two listeners on one port are still
    // refused; UDP keeps the plain rule, where the option would share ports).
    int type = 0;
    socklen_t length = sizeof type;
    if (getsockopt(fd_of(s), SOL_SOCKET, SO_TYPE, &type, &length) == 0 && type == SOCK_STREAM) {
        const int one = 1;
        setsockopt(fd_of(s), SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
    }
    sockaddr_in a{};
    a.sin_family = AF_INET;
    a.sin_port = htons(port);
    a.sin_addr.s_addr = htonl(INADDR_ANY);
    return bind(fd_of(s), reinterpret_cast<const sockaddr *>(&a), sizeof a) == 0 || failed(false);
}

bool net_listen(NetSocket s, int32_t backlog) noexcept {
    return listen(fd_of(s), backlog) == 0 || failed(false);
}

int32_t net_connect(NetSocket s, uint32_t address, uint16_t port) noexcept {
    sockaddr_in a{};
    a.sin_family = AF_INET;
    a.sin_port = htons(port);
    a.sin_addr.s_addr = address;
    if (connect(fd_of(s), reinterpret_cast<const sockaddr *>(&a), sizeof a) == 0)
        return 0;
    // A non-blocking connect under way is what Windows calls "would block".
    const int32_t e = errno == EINPROGRESS ? 10035 : net_error_of_errno(errno);
    t_last_error = e;
    return e;
}

int64_t net_recv(NetSocket s, char *buffer, size_t size) noexcept {
    const ssize_t n = recv(fd_of(s), buffer, size, 0);
    return n >= 0 ? n : failed(int64_t{-1});
}

int64_t net_send(NetSocket s, const char *bytes, size_t size) noexcept {
    const ssize_t n = send(fd_of(s), bytes, size, MSG_NOSIGNAL);
    return n >= 0 ? n : failed(int64_t{-1});
}

int64_t net_pending(NetSocket s) noexcept {
    int n = 0;
    return ioctl(fd_of(s), FIONREAD, &n) == 0 ? n : failed(int64_t{-1});
}

bool net_local_address(NetSocket s, uint32_t *address) noexcept {
    sockaddr_in a{};
    socklen_t length = sizeof a;
    if (getsockname(fd_of(s), reinterpret_cast<sockaddr *>(&a), &length) != 0 || a.sin_family != AF_INET)
        return failed(false);
    *address = a.sin_addr.s_addr;
    return true;
}

bool net_no_delay(NetSocket s) noexcept {
    const int one = 1;
    return setsockopt(fd_of(s), IPPROTO_TCP, TCP_NODELAY, &one, sizeof one) == 0 || failed(false);
}

bool net_alive(NetSocket s) noexcept {
    int type = 0;
    socklen_t length = sizeof type;
    return getsockopt(fd_of(s), SOL_SOCKET, SO_TYPE, &type, &length) == 0 || failed(false);
}

int32_t net_close(NetSocket s) noexcept {
    const int fd = fd_of(s);
    shutdown(fd, SHUT_RDWR);
    return close(fd) == 0 ? 0 : failed(-1);
}

} // namespace brindle::platform
