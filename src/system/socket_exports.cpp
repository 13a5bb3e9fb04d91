// Sockets: the exports. Host and service names arrive by value and are read
// up to their first zero byte; data to send is counted (zero bytes go out).
#include "frame/frame.h"
#include "system/permit_list.h"
#include "system/socket_errors.h"
#include "system/sockets.h"

#include <memory>
#include <string>

using namespace brindle::frame;
using namespace brindle::system;

namespace {

constexpr int16_t kTrue = -1;
constexpr int16_t kFalse = 0;

// The reading buffer of the calling thread, grown to the largest read asked.
char *read_buffer(size_t size) {
    thread_local std::unique_ptr<char[]> buffer;
    thread_local size_t capacity = 0;
    if (capacity < size) {
        buffer.reset();
        capacity = 0;
        buffer = std::make_unique<char[]>(size);
        capacity = size;
    }
    return buffer.get();
}

} // namespace

BRINDLE_EXPORT(int16_t) cSKT_Init() {
    return guarded(kFalse, [] { return vb_bool(sockets_start()); });
}

BRINDLE_EXPORT(int16_t) cSKT_Terminate() {
    return guarded(kTrue, [] {
        sockets_stop();
        return kTrue;
    });
}

BRINDLE_EXPORT(int32_t) cSKT_PassiveTCP(BSTR Service, int32_t Backlog) {
    return guarded(int32_t{0}, [&] { return socket_passive(StrArg::by_val(Service).text(), "tcp", Backlog); });
}

BRINDLE_EXPORT(int32_t) cSKT_PassiveUDP(BSTR Service) {
    return guarded(int32_t{0}, [&] { return socket_passive(StrArg::by_val(Service).text(), "udp", 0); });
}

BRINDLE_EXPORT(int32_t) cSKT_ConnectTCP(BSTR Host, BSTR Service) {
    return guarded(int32_t{0},
                   [&] { return socket_connect(StrArg::by_val(Host).text(), StrArg::by_val(Service).text(), "tcp"); });
}

BRINDLE_EXPORT(int32_t) cSKT_ConnectUDP(BSTR Host, BSTR Service) {
    return guarded(int32_t{0},
                   [&] { return socket_connect(StrArg::by_val(Host).text(), StrArg::by_val(Service).text(), "udp"); });
}

BRINDLE_EXPORT(BSTR) cSKT_LocalAddress(int32_t Socket) {
    return guarded_string([&] { return new_string(socket_local_address(Socket)); });
}

BRINDLE_EXPORT(int16_t) cSKT_NodeDelay(int32_t Socket) {
    return guarded(kFalse, [&] { return vb_bool(socket_no_delay(Socket)); });
}

BRINDLE_EXPORT(int16_t) cSKT_IsAlive(int32_t Socket) {
    return guarded(kFalse, [&] { return vb_bool(socket_alive(Socket)); });
}

BRINDLE_EXPORT(BSTR) cSKT_ReadTCP(int32_t Socket, int32_t MaxLength, int32_t *Count) {
    int32_t count = -1;
    BSTR result = guarded_string([&] {
        if (MaxLength < 1)
            return empty_string();
        size_t size = static_cast<size_t>(MaxLength) < kReadLimit ? static_cast<size_t>(MaxLength) : kReadLimit;
        // What is waiting goes straight into the result, with no copy between.
        const int64_t pending = socket_pending(Socket);
        if (pending > 0) {
            if (static_cast<uint64_t>(pending) < size)
                size = static_cast<size_t>(pending);
            StringResult direct(size);
            const int64_t n = socket_read(Socket, direct.data(), size);
            count = static_cast<int32_t>(n < 0 ? -1 : n);
            if (n == static_cast<int64_t>(size))
                return direct.take();
            return n > 0 ? new_string(std::string_view(direct.data(), static_cast<size_t>(n))) : empty_string();
        }
        char *buffer = read_buffer(size);
        const int64_t n = socket_read(Socket, buffer, size);
        if (n <= 0) {
            count = static_cast<int32_t>(n);
            return empty_string();
        }
        BSTR s = new_string(std::string_view(buffer, static_cast<size_t>(n)));
        count = static_cast<int32_t>(n);
        return s;
    });
    if (Count != nullptr)
        *Count = count;
    return result;
}

BRINDLE_EXPORT(int32_t) cSKT_WriteTCP(int32_t Socket, BSTR Data) {
    return guarded(int32_t{-1}, [&] {
        const int64_t n = socket_write(Socket, StrArg::by_val(Data).bytes());
        return static_cast<int32_t>(n);
    });
}

BRINDLE_EXPORT(int32_t) cSKT_Close(int32_t Socket) {
    return guarded(int32_t{0}, [&] { return socket_close(Socket); });
}

BRINDLE_EXPORT(BSTR) cSKT_Message(int32_t ErrorCode) {
    return guarded_string([&] { return new_string(socket_error_name(ErrorCode)); });
}

BRINDLE_EXPORT(int16_t) cSKT_IsPermitted(BSTR Address, BSTR PatternList) {
    return guarded(kFalse, [&] {
        return vb_bool(address_permitted(StrArg::by_val(Address).text(), StrArg::by_val(PatternList).text()));
    });
}
