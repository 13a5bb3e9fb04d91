#include "system/sockets.h"

#include "common/ascii.h"
#include "frame/handles.h"
#include "platform/net.h"
#include "system/socket_errors.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <mutex>
#include <shared_mutex>

namespace brindle::system {

namespace {

using frame::HandleKind;
using platform::kNoSocket;
using platform::NetSocket;

// An open socket. Reads and writes hold the lock shared while they use the
// system's socket; a close takes it whole, so a socket is never closed under
// a call on another thread (whose number could meanwhile name a new one).
class OpenSocket : public frame::HandleObject {
  public:
    explicit OpenSocket(NetSocket s) : native_(s) {}
    ~OpenSocket() override { close(); }

    template <class Use> auto use(Use &&f, decltype(f(NetSocket{})) failure) {
        std::shared_lock guard(lock_);
        return native_ == kNoSocket ? failure : f(native_);
    }

    int32_t close() {
        std::unique_lock guard(lock_);
        if (native_ == kNoSocket)
            return 0;
        const int32_t r = platform::net_close(native_);
        native_ = kNoSocket;
        return r;
    }

  private:
    std::shared_mutex lock_;
    NetSocket native_;
};

std::atomic<int32_t> g_open{0};
std::atomic<int32_t> g_started{0};
std::atomic<SocketFailure> g_failure{kSocketOpened};

int32_t fail(SocketFailure why) {
    g_failure = why;
    return 0;
}

// Registers a new socket; its number, or 0 (and the socket closed).
int32_t keep(NetSocket s) {
    auto object = std::make_shared<OpenSocket>(s);
    const int32_t number = frame::handle_add(HandleKind::Socket, object);
    if (number == 0)
        return fail(kSocketRefused); // the object's destructor closes the socket
    ++g_open;
    g_failure = kSocketOpened;
    return number;
}

std::shared_ptr<OpenSocket> find(int32_t number) {
    return frame::handle_get<OpenSocket>(HandleKind::Socket, number);
}

int protocol_of(std::string_view protocol) {
    if (common::equal_no_case(protocol, "tcp"))
        return 1;
    if (common::equal_no_case(protocol, "udp"))
        return 2;
    return 0;
}

bool host_name_shape(std::string_view host) {
    if (host.size() > 255)
        return false;
    for (const char c : host)
        if (!(common::is_ascii_digit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '-' ||
              c == '_' || c == '.'))
            return false;
    return true;
}

} // namespace

bool sockets_start() noexcept {
    if (!platform::net_start())
        return false;
    ++g_started;
    return true;
}

void sockets_stop() noexcept {
    int32_t n = g_started.load();
    while (n > 0 && !g_started.compare_exchange_weak(n, n - 1)) {
    }
    if (n > 0)
        platform::net_stop();
}

uint16_t service_port(std::string_view service, std::string_view protocol) {
    if (service.empty() || service.size() > 255)
        return 0;
    const std::string name(service);
    const std::string proto(protocol);
    uint16_t port = 0;
    if (name.find('\0') == std::string::npos && platform::net_service(name.c_str(), proto.c_str(), &port))
        return port;
    size_t i = 0;
    while (i < service.size() && common::is_c_space(service[i]))
        ++i;
    bool negative = false;
    if (i < service.size() && (service[i] == '+' || service[i] == '-'))
        negative = service[i++] == '-';
    long value = 0;
    for (; i < service.size() && common::is_ascii_digit(service[i]); ++i) {
        value = value * 10 + (service[i] - '0');
        if (value > 65535)
            return 0;
    }
    if (negative || value < 1)
        return 0;
    return static_cast<uint16_t>(value);
}

int32_t socket_passive(std::string_view service, std::string_view protocol, int32_t backlog) {
    const int kind = protocol_of(protocol);
    if (kind == 0)
        return fail(kProtocolUnknown);
    const uint16_t port = service_port(service, protocol);
    if (port == 0)
        return fail(kServiceUnknown);
    const NetSocket s = platform::net_open(kind == 1);
    if (s == kNoSocket)
        return fail(kSocketRefused);
    if (!platform::net_bind_any(s, port)) {
        platform::net_close(s);
        return fail(kBindFailed);
    }
    if (kind == 1 && !platform::net_listen(s, backlog < 1 ? 1 : backlog)) {
        platform::net_close(s);
        return fail(kListenFailed);
    }
    return keep(s);
}

int32_t socket_connect(std::string_view host, std::string_view service, std::string_view protocol) {
    const int kind = protocol_of(protocol);
    if (kind == 0)
        return fail(kProtocolUnknown);
    uint32_t address = 0;
    const std::string name = host.empty() ? std::string("127.0.0.1") : std::string(host);
    if (!platform::net_parse_dotted(name.c_str(), &address) &&
        (!host_name_shape(name) || !platform::net_resolve(name.c_str(), &address)))
        return fail(kHostUnknown);
    const uint16_t port = service_port(service, protocol);
    if (port == 0)
        return fail(kServiceUnknown);
    for (int attempt = 0; attempt < 3; ++attempt) {
        const NetSocket s = platform::net_open(kind == 1);
        if (s == kNoSocket)
            return fail(kSocketRefused);
        const int32_t r = platform::net_connect(s, address, port);
        if (r == 0 || r == 10035)
            return keep(s);
        platform::net_close(s);
    }
    return fail(kConnectFailed);
}

SocketFailure socket_last_failure() noexcept { return g_failure.load(); }

int32_t sockets_open() noexcept { return g_open.load(); }

int64_t socket_read(int32_t number, char *buffer, size_t size) {
    const auto s = find(number);
    if (!s) {
        errno = socket_errno_of(10038); // not a socket
        return -1;
    }
    const int64_t n = s->use([&](NetSocket native) { return platform::net_recv(native, buffer, size < kReadLimit ? size : kReadLimit); },
                             int64_t{-1});
    if (n < 0)
        errno = socket_errno_of(platform::net_last_error());
    return n;
}

int64_t socket_pending(int32_t number) {
    const auto s = find(number);
    if (!s)
        return 0;
    const int64_t n = s->use([](NetSocket native) { return platform::net_pending(native); }, int64_t{0});
    return n > 0 ? n : 0;
}

int64_t socket_write(int32_t number, std::string_view bytes) {
    const auto s = find(number);
    if (!s) {
        errno = socket_errno_of(10038);
        return -1;
    }
    const int64_t n = s->use([&](NetSocket native) { return platform::net_send(native, bytes.data(), bytes.size()); },
                             int64_t{-1});
    if (n < 0)
        errno = socket_errno_of(platform::net_last_error());
    return n;
}

std::string socket_local_address(int32_t number) {
    uint32_t address = 0; // network order
    const auto s = find(number);
    if (!s || !s->use([&](NetSocket native) { return platform::net_local_address(native, &address); }, false))
        return "127.0.0.1";
    const auto *b = reinterpret_cast<const unsigned char *>(&address);
    char text[16];
    std::snprintf(text, sizeof text, "%u.%u.%u.%u", b[0], b[1], b[2], b[3]);
    return text;
}

bool socket_no_delay(int32_t number) {
    const auto s = find(number);
    return s && s->use([](NetSocket native) { return platform::net_no_delay(native); }, false);
}

bool socket_alive(int32_t number) {
    const auto s = find(number);
    return s && s->use([](NetSocket native) { return platform::net_alive(native); }, false);
}

int32_t socket_close(int32_t number) {
    const auto s = frame::handle_remove(HandleKind::Socket, number);
    if (!s)
        return 0;
    --g_open;
    return std::static_pointer_cast<OpenSocket>(s)->close();
}

} // namespace brindle::system
