#include "files/file_compare.h"

#include "files/block_copy.h"
#include "platform/file.h"
#include "platform/file_info.h"

#include <memory>
#include <new>

namespace brindle::files {

namespace {

constexpr size_t kBlock = 32768;

template <class T> int16_t order(T a, T b) { return a > b ? 1 : a < b ? -1 : 0; }

unsigned char fold(unsigned char c) { return c >= 'A' && c <= 'Z' ? static_cast<unsigned char>(c + 32) : c; }

} // namespace

int16_t compare_attributes(std::string_view first, std::string_view second) {
    uint32_t a = 0, b = 0;
    if (platform::get_attributes(first, &a) != platform::kNoError ||
        platform::get_attributes(second, &b) != platform::kNoError)
        return -2;
    return a == b ? -1 : 0;
}

int16_t compare_times(std::string_view first, std::string_view second) {
    platform::FileStatus a, b;
    if (platform::file_status(first, &a) != platform::kNoError || platform::file_status(second, &b) != platform::kNoError)
        return -2;
    // The runtime's status keeps whole seconds.
    return order(a.times.written / 10000000, b.times.written / 10000000);
}

int16_t compare_sizes(std::string_view first, std::string_view second) {
    platform::FileStatus a, b;
    if (platform::file_status(first, &a) != platform::kNoError || platform::file_status(second, &b) != platform::kNoError)
        return -2;
    return order(static_cast<uint32_t>(a.size), static_cast<uint32_t>(b.size));
}

bool blocks_equal(const char *a, const char *b, size_t size, bool case_sensitive) noexcept {
    for (size_t i = 0; i < size; ++i) {
        unsigned char x = static_cast<unsigned char>(a[i]), y = static_cast<unsigned char>(b[i]);
        if (!case_sensitive) {
            x = fold(x);
            y = fold(y);
        }
        if (x != y)
            return false;
        if (x == 0)
            return true; // a zero byte both share ends the comparison
    }
    return true;
}

int16_t compare_contents(std::string_view first, std::string_view second, bool case_sensitive) {
    platform::FileStatus sa, sb;
    if (platform::file_status(first, &sa) != platform::kNoError || platform::file_status(second, &sb) != platform::kNoError ||
        sa.is_directory || sb.is_directory || sa.size != sb.size)
        return 0;
    std::unique_ptr<char[]> a(new (std::nothrow) char[kBlock]);
    if (!a)
        return static_cast<int16_t>(kCopyNoBuffer);
    std::unique_ptr<char[]> b(new (std::nothrow) char[kBlock]);
    if (!b)
        return static_cast<int16_t>(kCopyNoBuffer2);
    platform::File fa = platform::File::open(first, platform::OpenMode::Read);
    if (!fa.is_open())
        return static_cast<int16_t>(kCopySourceOpen);
    platform::File fb = platform::File::open(second, platform::OpenMode::Read);
    if (!fb.is_open())
        return static_cast<int16_t>(kCopyTargetOpen);
    for (;;) {
        const int64_t na = fa.read(a.get(), kBlock), nb = fb.read(b.get(), kBlock);
        if (na < 0 || nb < 0)
            return static_cast<int16_t>(kCopyWriteError);
        if (na == 0)
            return nb == 0 ? int16_t{-1} : static_cast<int16_t>(kCopyShortWrite);
        if (na != nb)
            return static_cast<int16_t>(kCopyShortWrite);
        if (!blocks_equal(a.get(), b.get(), static_cast<size_t>(na), case_sensitive))
            return 0;
    }
}

} // namespace brindle::files
