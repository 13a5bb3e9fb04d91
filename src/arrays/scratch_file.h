// The scratch file of the duplicate removal: created on construction,
// closed and deleted on every way out.
//
// A name the caller gives is created or replaced: the caller gave it.
// Without a name the file is a new one, created exclusively under a name no
// file in the current directory has (the runtime's unique-name maker): a
// name that is taken (by a file, a directory or a link, even a dangling one)
// is never opened, truncated or followed, so that a caller's file is never
// touched and calls at once - on threads or in processes sharing the
// directory - each have their own.
#pragma once

#include "platform/file.h"

#include <string>
#include <string_view>

namespace brindle::arrays {

class ScratchFile {
  public:
    // Creates the file (read and write) under `given`, or under a unique
    // name when `given` is empty; created() tells whether it was made.
    explicit ScratchFile(std::string_view given);
    ~ScratchFile();
    ScratchFile(const ScratchFile &) = delete;
    ScratchFile &operator=(const ScratchFile &) = delete;

    bool created() const { return created_; }
    platform::File &file() { return file_; }

  private:
    // The runtime's error number of the creation (0 when made).
    int create(std::string name, platform::OpenMode mode);

    std::string name_;
    platform::File file_;
    bool created_ = false;
};

} // namespace brindle::arrays
