// 1 GB over loopback TCP through cSKT_WriteTCP and cSKT_ReadTCP beside plain
// non-blocking send and recv of the same 64 KB blocks, the same loop and the
// same peer (a plain thread that swallows what it gets, or sends blocks as
// fast as it can). The "ratio" counters are plain time over export time
// (1.0: the exports cost nothing extra; the goal is at least 0.8).
#include <brindle/ole.h>
#include <brindle/exports.h>

#include <benchmark/benchmark.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <string>
#include <thread>

namespace {

constexpr int64_t kTotal = int64_t{1} << 30;
constexpr int kBlock = 65536;

struct Listener {
    int fd = -1;
    uint16_t port = 0;
    Listener() {
        fd = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in a{};
        a.sin_family = AF_INET;
        a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t n = sizeof a;
        bind(fd, reinterpret_cast<sockaddr *>(&a), sizeof a);
        listen(fd, 4);
        getsockname(fd, reinterpret_cast<sockaddr *>(&a), &n);
        port = ntohs(a.sin_port);
    }
    ~Listener() { close(fd); }
};

// The peer: accepts one connection and swallows (or sends) kTotal bytes.
std::thread peer(const Listener &l, bool sends) {
    return std::thread([fd = l.fd, sends] {
        const int c = accept(fd, nullptr, nullptr);
        static char buffer[kBlock];
        int64_t moved = 0;
        while (moved < kTotal) {
            const ssize_t n = sends ? send(c, buffer, kBlock, MSG_NOSIGNAL) : recv(c, buffer, kBlock, 0);
            if (n <= 0)
                break;
            moved += n;
        }
        close(c);
    });
}

int plain_connect(uint16_t port) {
    const int s = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0);
    sockaddr_in a{};
    a.sin_family = AF_INET;
    a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    a.sin_port = htons(port);
    connect(s, reinterpret_cast<sockaddr *>(&a), sizeof a);
    return s;
}

double seconds_since(std::chrono::steady_clock::time_point t0) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
}

double plain_write() {
    Listener l;
    std::thread p = peer(l, false);
    const int s = plain_connect(l.port);
    static char block[kBlock];
    const auto t0 = std::chrono::steady_clock::now();
    for (int64_t sent = 0; sent < kTotal;) {
        const ssize_t n = send(s, block, kBlock, MSG_NOSIGNAL);
        if (n > 0)
            sent += n;
        else
            std::this_thread::yield();
    }
    const double t = seconds_since(t0);
    p.join();
    close(s);
    return t;
}

double export_write() {
    Listener l;
    std::thread p = peer(l, false);
    BSTR host = SysAllocStringByteLen("127.0.0.1", 9);
    const std::string port = std::to_string(l.port);
    BSTR service = SysAllocStringByteLen(port.data(), static_cast<UINT>(port.size()));
    const int32_t s = cSKT_ConnectTCP(host, service);
    BSTR block = SysAllocStringByteLen(nullptr, kBlock);
    const auto t0 = std::chrono::steady_clock::now();
    for (int64_t sent = 0; sent < kTotal;) {
        const int32_t n = cSKT_WriteTCP(s, block);
        if (n > 0)
            sent += n;
        else
            std::this_thread::yield();
    }
    const double t = seconds_since(t0);
    p.join();
    cSKT_Close(s);
    SysFreeString(block);
    SysFreeString(service);
    SysFreeString(host);
    return t;
}

double plain_read() {
    Listener l;
    std::thread p = peer(l, true);
    const int s = plain_connect(l.port);
    static char block[kBlock];
    const auto t0 = std::chrono::steady_clock::now();
    for (int64_t got = 0; got < kTotal;) {
        const ssize_t n = recv(s, block, kBlock, 0);
        if (n > 0)
            got += n;
        else if (n == 0)
            break;
        else
            std::this_thread::yield();
    }
    const double t = seconds_since(t0);
    p.join();
    close(s);
    return t;
}

double export_read() {
    Listener l;
    std::thread p = peer(l, true);
    BSTR host = SysAllocStringByteLen("127.0.0.1", 9);
    const std::string port = std::to_string(l.port);
    BSTR service = SysAllocStringByteLen(port.data(), static_cast<UINT>(port.size()));
    const int32_t s = cSKT_ConnectTCP(host, service);
    const auto t0 = std::chrono::steady_clock::now();
    for (int64_t got = 0; got < kTotal;) {
        int32_t n = -1;
        SysFreeString(cSKT_ReadTCP(s, kBlock, &n));
        if (n > 0)
            got += n;
        else if (n == 0)
            break;
        else
            std::this_thread::yield();
    }
    const double t = seconds_since(t0);
    p.join();
    cSKT_Close(s);
    SysFreeString(service);
    SysFreeString(host);
    return t;
}

void BM_SocketsGigabyte(benchmark::State &state) {
    double pw = 0, ew = 0, pr = 0, er = 0;
    for (auto _ : state) {
        pw += plain_write();
        ew += export_write();
        pr += plain_read();
        er += export_read();
    }
    state.counters["write_ratio"] = pw / ew;
    state.counters["read_ratio"] = pr / er;
    state.counters["export_write_MBps"] = 1024.0 * static_cast<double>(state.iterations()) / ew;
    state.counters["export_read_MBps"] = 1024.0 * static_cast<double>(state.iterations()) / er;
    state.counters["plain_write_MBps"] = 1024.0 * static_cast<double>(state.iterations()) / pw;
    state.counters["plain_read_MBps"] = 1024.0 * static_cast<double>(state.iterations()) / pr;
}
BENCHMARK(BM_SocketsGigabyte)->Iterations(1)->Unit(benchmark::kSecond);

} // namespace
