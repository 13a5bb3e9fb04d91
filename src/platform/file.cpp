// The portable part of the file layer: handle ownership and the helpers
// built on the platform's own calls.
#include "platform/file.h"

namespace brindle::platform {

File::~File() { close(); }

File::File(File &&other) noexcept : fd_(other.fd_) { other.fd_ = -1; }

File &File::operator=(File &&other) noexcept {
    if (this != &other) {
        close();
        fd_ = other.fd_;
        other.fd_ = -1;
    }
    return *this;
}

bool delete_if_exists(std::string_view path) {
    if (!file_exists(path))
        return !directory_exists(path);
    return delete_file(path);
}

} // namespace brindle::platform
