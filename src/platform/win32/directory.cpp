// Directory search on Windows: the system's own find-first/find-next, whose
// patterns are the ones the library speaks. The search runs on wide paths in
// the "\\?\" form, so that directories deeper than MAX_PATH characters are
// reached as on POSIX; names come back in the caller's ANSI code page.
#include "platform/directory.h"
#include "platform/ole.h"

#include <climits>

namespace brindle::platform {

namespace {

int64_t as_int64(const FILETIME &t) {
    return static_cast<int64_t>((static_cast<uint64_t>(t.dwHighDateTime) << 32) | t.dwLowDateTime);
}

// A run of stars matches what one star matches; the system refuses a pattern
// longer than a path may be, so "a\*****...*" is shortened to "a\*".
std::string collapse_stars(std::string_view pattern) {
    std::string out;
    out.reserve(pattern.size());
    for (char c : pattern)
        if (c != '*' || out.empty() || out.back() != '*')
            out.push_back(c);
    return out;
}

std::wstring widen(const std::string &text) {
    if (text.empty() || text.size() > static_cast<size_t>(INT_MAX))
        return {};
    const int n = MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
    std::wstring out(static_cast<size_t>(n > 0 ? n : 0), L'\0');
    if (n > 0)
        MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()), out.data(), n);
    return out;
}

std::string narrow(const wchar_t *text) {
    const int n = WideCharToMultiByte(CP_ACP, 0, text, -1, nullptr, 0, nullptr, nullptr);
    if (n <= 1)
        return {};
    std::string out(static_cast<size_t>(n), '\0');
    WideCharToMultiByte(CP_ACP, 0, text, -1, out.data(), n, nullptr, nullptr);
    out.resize(static_cast<size_t>(n - 1));
    return out;
}

// The pattern as an absolute "\\?\" path, which the wide calls accept at any
// length. Short patterns stay as they are: the system then applies its own
// rules (a trailing dot or space trimmed) exactly as for any caller.
std::wstring system_pattern(const std::string &pattern) {
    const std::wstring wide = widen(pattern);
    if (wide.empty() || wide.size() < MAX_PATH - 12)
        return wide;
    const DWORD n = GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr);
    if (n == 0)
        return wide;
    std::wstring full(n, L'\0');
    const DWORD got = GetFullPathNameW(wide.c_str(), n, full.data(), nullptr);
    if (got == 0 || got >= n)
        return wide;
    full.resize(got);
    if (full.rfind(L"\\\\?\\", 0) == 0)
        return full;
    if (full.rfind(L"\\\\", 0) == 0)
        return L"\\\\?\\UNC\\" + full.substr(2);
    return L"\\\\?\\" + full;
}

void convert(const WIN32_FIND_DATAW &data, DirEntry &out) {
    out.name = narrow(data.cFileName);
    out.attributes = data.dwFileAttributes;
    out.size = (static_cast<uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
    out.times.created = as_int64(data.ftCreationTime);
    out.times.accessed = as_int64(data.ftLastAccessTime);
    out.times.written = as_int64(data.ftLastWriteTime);
}

} // namespace

struct DirectorySearch::State {
    HANDLE handle = INVALID_HANDLE_VALUE;
    ~State() {
        if (handle != INVALID_HANDLE_VALUE)
            ::FindClose(handle);
    }
};

DirectorySearch::DirectorySearch() noexcept = default;
DirectorySearch::~DirectorySearch() = default;

void DirectorySearch::close() noexcept { state_.reset(); }

bool DirectorySearch::is_open() const noexcept { return state_ != nullptr; }

bool DirectorySearch::first(std::string_view pattern, EntryDetail) {
    close();
    if (pattern.empty() || pattern.find('\0') != std::string_view::npos)
        return false;
    const std::wstring text = system_pattern(collapse_stars(pattern));
    if (text.empty())
        return false;
    WIN32_FIND_DATAW data;
    auto state = std::make_unique<State>();
    state->handle = ::FindFirstFileW(text.c_str(), &data);
    if (state->handle == INVALID_HANDLE_VALUE)
        return false;
    convert(data, entry_);
    state_ = std::move(state);
    return true;
}

bool DirectorySearch::next() {
    if (!state_)
        return false;
    WIN32_FIND_DATAW data;
    if (!::FindNextFileW(state_->handle, &data))
        return false;
    convert(data, entry_);
    return true;
}

} // namespace brindle::platform
