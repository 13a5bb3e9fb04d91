// Files, for every family that reads or writes them. The library speaks
// Windows paths everywhere (backslash separator, forward slash accepted,
// "X:" drive prefix); the platform maps them for its own calls.
//
// Error numbers are the Windows C runtime's: 2 no such file or directory,
// 13 access denied, 17 file exists, 28 no space left, 22 invalid argument.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace brindle::platform {

enum RuntimeError : int {
    kNoError = 0,
    kNoSuchFile = 2,    // ENOENT
    kIoError = 5,       // EIO
    kBadHandle = 9,     // EBADF
    kNoMemory = 12,     // ENOMEM
    kAccessDenied = 13, // EACCES
    kFileExists = 17,   // EEXIST
    kIsDirectory = 21,  // EISDIR (on Windows opening a directory gives 13)
    kInvalid = 22,      // EINVAL
    kTooManyFiles = 24, // EMFILE
    kNoSpace = 28,      // ENOSPC
};

// A Windows path as the system call wants it. On POSIX backslashes become
// slashes and a drive prefix "X:" maps to the root ("C:\\a" and "\\a" are
// both "/a"; "C:a" is "a"). On Windows the path is unchanged.
std::string native_path(std::string_view path);

enum class OpenMode {
    Read,           // existing file, read only
    ReadWrite,      // existing file, read and write
    Create,         // create or truncate, write only
    CreateReadWrite,// create or truncate, read and write
    CreateNew,      // create, failing with kFileExists if it exists
    Append,         // create if missing, every write at the end
    // Create if missing, write only, the old contents left in place to be
    // written over; the writer cuts the file at its end with truncate()
    // before closing it. A replaced file then needs no truncation to zero,
    // which some file systems (ext4) answer with a flush of the whole file
    // when it is closed.
    Overwrite,
};

// A binary file handle. Closed by its destructor; movable, not copyable.
class File {
  public:
    File() = default;
    ~File();
    File(File &&other) noexcept;
    File &operator=(File &&other) noexcept;
    File(const File &) = delete;
    File &operator=(const File &) = delete;

    // Opens `path` (a Windows path). On failure the File is closed and
    // *error, when given, holds the runtime error number.
    static File open(std::string_view path, OpenMode mode, int *error = nullptr);

    bool is_open() const noexcept { return fd_ >= 0; }

    // Up to `size` bytes at the current position; the count read (0 at the
    // end of the file) or -1 on error. Retries short reads until `size`
    // bytes or the end.
    int64_t read(void *buffer, size_t size) noexcept;
    // All `size` bytes or false.
    bool write(const void *buffer, size_t size) noexcept;
    bool seek(int64_t offset) noexcept; // from the start
    // Positioned transfers: all `size` bytes at `offset` from the start, or
    // false. One system call where the system has one (pread, pwrite); the
    // current position is unspecified afterwards.
    bool read_at(int64_t offset, void *buffer, size_t size) noexcept;
    bool write_at(int64_t offset, const void *buffer, size_t size) noexcept;
    int64_t tell() const noexcept;      // -1 on error
    int64_t size() const noexcept;      // -1 on error
    bool truncate(int64_t size) noexcept;
    bool flush() noexcept;
    // Closes the file; false when the system reported an error (a write
    // that could not be completed), which file producers must treat as a
    // failed write.
    bool close() noexcept;

    // The descriptor of the platform (a POSIX file descriptor, or a CRT
    // descriptor on Windows), for the platform layer's own use.
    int native() const noexcept { return fd_; }

  private:
    explicit File(int fd) noexcept : fd_(fd) {}
    int fd_ = -1;
};

// Whole-file helpers. All take Windows paths.
bool file_exists(std::string_view path);          // an existing file, not a directory
bool directory_exists(std::string_view path);
int64_t file_size(std::string_view path);         // -1 when missing or a directory
bool delete_file(std::string_view path);          // true when it existed and is gone
bool delete_if_exists(std::string_view path);     // true when the path is free afterwards
bool rename_file(std::string_view from, std::string_view to, int *error = nullptr);
// True when both paths name one existing file (however they are spelled), so
// that a producer never truncates its own source.
bool same_file(std::string_view a, std::string_view b);

} // namespace brindle::platform
