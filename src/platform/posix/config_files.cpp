#include "platform/posix/config_files.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace brindle::platform::posix {

namespace {

bool write_all(int fd, const std::string &bytes) {
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t put = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (put < 0 && errno == EINTR)
            continue;
        if (put <= 0)
            return false;
        done += static_cast<size_t>(put);
    }
    return true;
}

} // namespace

std::string config_directory() {
    const char *xdg = std::getenv("XDG_CONFIG_HOME");
    if (xdg != nullptr && xdg[0] == '/')
        return xdg;
    const char *home = std::getenv("HOME");
    if (home == nullptr || home[0] != '/')
        return {};
    std::string dir(home);
    while (dir.size() > 1 && dir.back() == '/')
        dir.pop_back();
    return dir == "/" ? "/.config" : dir + "/.config";
}

std::string directory_of(const std::string &path) {
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

bool replace_file(const std::string &path, const std::string &bytes) {
    const std::string dir = directory_of(path);
    const size_t slash = path.rfind('/');
    const std::string base = slash == std::string::npos ? path : path.substr(slash + 1);
    struct stat old{};
    const bool existed = ::stat(path.c_str(), &old) == 0;
    std::string temp;
    int fd = -1;
    for (int attempt = 0; attempt < 100 && fd < 0; ++attempt) {
        temp = dir + "/." + base + "." + std::to_string(::getpid()) + "." + std::to_string(attempt) + ".tmp";
        fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd < 0 && errno != EEXIST)
            return false;
    }
    if (fd < 0)
        return false;
    bool ok = write_all(fd, bytes);
    if (ok && existed)
        ok = ::fchmod(fd, old.st_mode & 07777) == 0;
    ok = ok && ::fsync(fd) == 0;
    ok = (::close(fd) == 0) && ok;
    ok = ok && ::rename(temp.c_str(), path.c_str()) == 0;
    if (!ok) {
        ::unlink(temp.c_str());
        return false;
    }
    const int dfd = ::open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dfd >= 0) {
        ::fsync(dfd);
        ::close(dfd);
    }
    return true;
}

DirectoryLock::DirectoryLock(const std::string &dir) : fd_(::open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (fd_ < 0)
        return;
    int got;
    while ((got = ::flock(fd_, LOCK_EX)) != 0 && errno == EINTR) {
    }
    held_ = got == 0;
}

DirectoryLock::~DirectoryLock() {
    if (fd_ >= 0)
        ::close(fd_);
}

} // namespace brindle::platform::posix
