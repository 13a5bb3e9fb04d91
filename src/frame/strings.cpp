#include "frame/string_args.h"
#include "frame/string_results.h"
#include "frame/boundary.h"
#include "common/hex_digits.h"

#include <array>
#include <atomic>
#include <cstring>
#include <limits>
#include <new>

namespace brindle::frame {

StrArg::StrArg(BSTR handle) noexcept
    : handle_(handle), data_(reinterpret_cast<const char *>(handle)), size_(SysStringByteLen(handle)) {
    if (data_ == nullptr)
        data_ = "";
}

std::string_view StrArg::text() const noexcept {
    const void *zero = std::memchr(data_, 0, size_);
    return {data_, zero == nullptr ? size_ : static_cast<size_t>(static_cast<const char *>(zero) - data_)};
}

namespace {

// Empty strings made while memory was to be had, for the moment it is not.
// Lock-free, since exports may run on several threads: a slot is taken by
// swapping it for null and filled by swapping null for a fresh string.
// Constant-initialised, so it exists before any code of the library runs;
// the first string result fills it (not the loader, which must not call
// into OLE). Its strings are never freed: a few bytes, reachable to the end.
class EmptyReserve {
  public:
    constexpr EmptyReserve() noexcept = default;
    EmptyReserve(const EmptyReserve &) = delete;
    EmptyReserve &operator=(const EmptyReserve &) = delete;

    // One of the reserve's strings, now the caller's; null when none is left.
    BSTR take() noexcept {
        for (auto &slot : slots_)
            if (BSTR text = slot.exchange(nullptr); text != nullptr) {
                short_.store(true);
                return text;
            }
        return nullptr;
    }

    // Fills the empty slots while `allocate` succeeds. Costs one flag read
    // while nothing has been taken.
    void refill(StringAllocator allocate) noexcept {
        if (!short_.load(std::memory_order_relaxed) || !short_.exchange(false))
            return;
        for (auto &slot : slots_) {
            if (slot.load() != nullptr)
                continue;
            BSTR fresh = allocate(nullptr, 0);
            if (fresh == nullptr) {
                short_.store(true);
                return;
            }
            BSTR expected = nullptr;
            if (!slot.compare_exchange_strong(expected, fresh))
                SysFreeString(fresh); // another thread filled it first
        }
    }

  private:
    std::array<std::atomic<BSTR>, kEmptyReserve> slots_{};
    std::atomic<bool> short_{true};
};

constinit EmptyReserve g_empty_reserve;

// The system's allocation as a StringAllocator (whose calling convention
// is the compiler's own, not the system's).
BSTR system_allocate(const char *bytes, UINT length) { return SysAllocStringByteLen(bytes, length); }

} // namespace

BSTR empty_string_with(StringAllocator allocate) noexcept {
    BSTR result = allocate(nullptr, 0);
    if (result == nullptr)
        return g_empty_reserve.take();
    g_empty_reserve.refill(allocate);
    return result;
}

BSTR empty_string() noexcept { return empty_string_with(system_allocate); }

BSTR new_string(std::string_view bytes) {
    if (bytes.size() > std::numeric_limits<UINT>::max())
        throw std::bad_alloc();
    BSTR result = SysAllocStringByteLen(bytes.empty() ? nullptr : bytes.data(), static_cast<UINT>(bytes.size()));
    if (result == nullptr)
        throw std::bad_alloc();
    g_empty_reserve.refill(system_allocate);
    return result;
}

BSTR new_ztext(const char *text) { return new_string(std::string_view(text, std::strlen(text))); }

BSTR hex_string(std::string_view bytes) {
    if (bytes.empty())
        return empty_string();
    StringResult result(bytes.size() * 2);
    char *out = result.data();
    for (const char ch : bytes) {
        const auto b = static_cast<unsigned char>(ch);
        *out++ = common::kHexDigits[b >> 4];
        *out++ = common::kHexDigits[b & 15];
    }
    return result.take();
}

StringResult::StringResult(size_t length) : handle_(nullptr), size_(length) {
    if (length > std::numeric_limits<UINT>::max())
        throw std::bad_alloc();
    handle_ = SysAllocStringByteLen(nullptr, static_cast<UINT>(length));
    if (handle_ == nullptr)
        throw std::bad_alloc();
    g_empty_reserve.refill(system_allocate);
}

StringResult::~StringResult() { SysFreeString(handle_); }

BSTR StringResult::take() noexcept {
    BSTR result = handle_;
    handle_ = nullptr;
    return result;
}

} // namespace brindle::frame
