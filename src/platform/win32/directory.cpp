// Directory search on Windows: the system's own find-first/find-next, whose
// patterns are the ones the library speaks.
#include "platform/directory.h"

#include <windows.h>

namespace brindle::platform {

namespace {

int64_t as_int64(const FILETIME &t) {
    return static_cast<int64_t>((static_cast<uint64_t>(t.dwHighDateTime) << 32) | t.dwLowDateTime);
}

void convert(const WIN32_FIND_DATAA &data, DirEntry &out) {
    out.name = data.cFileName;
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
    const std::string text(pattern);
    WIN32_FIND_DATAA data;
    auto state = std::make_unique<State>();
    state->handle = ::FindFirstFileA(text.c_str(), &data);
    if (state->handle == INVALID_HANDLE_VALUE)
        return false;
    convert(data, entry_);
    state_ = std::move(state);
    return true;
}

bool DirectorySearch::next() {
    if (!state_)
        return false;
    WIN32_FIND_DATAA data;
    if (!::FindNextFileA(state_->handle, &data))
        return false;
    convert(data, entry_);
    return true;
}

} // namespace brindle::platform
