// What the POSIX profile files and registry store share: the user's
// configuration directory, the atomic replacement of a file and the lock
// that serialises read-modify-write cycles across processes.
#pragma once

#include <string>

namespace brindle::platform::posix {

// The user's configuration directory: $XDG_CONFIG_HOME when it is an
// absolute path, otherwise $HOME/.config; "" when neither is usable.
std::string config_directory();

// The directory part of a native path ("." for a bare name).
std::string directory_of(const std::string &path);

// Replaces `path` with `bytes`: a temporary file in the same directory,
// written and synced, then renamed over the target (keeping its mode), so
// a crash at any point leaves the old file or the new one. False (and no
// temporary left behind) on any failure.
bool replace_file(const std::string &path, const std::string &bytes);

// An exclusive lock (flock) on a directory for one read-modify-write; it
// blocks until granted and is released when the object goes.
class DirectoryLock {
  public:
    explicit DirectoryLock(const std::string &dir);
    ~DirectoryLock();
    DirectoryLock(const DirectoryLock &) = delete;
    DirectoryLock &operator=(const DirectoryLock &) = delete;
    bool held() const noexcept { return held_; }

  private:
    int fd_;
    bool held_ = false;
};

} // namespace brindle::platform::posix
