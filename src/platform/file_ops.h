// Whole-file operations of the system: delete, make and remove directories,
// the system's copy and move, and the copy offload a block copy may use.
// Every path is a Windows path (see platform/file.h).
//
// The read-only attribute means on every platform what it means on Windows,
// for every user, root included: a read-only file is not opened for
// writing (File::open), not deleted (delete_file, remove_file), and not
// replaced by a copy or a move; a read-only directory is not removed.
#pragma once

#include "platform/file.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace brindle::platform {

// Deletes one file (a symbolic link itself, never its target). 0 on success,
// else the runtime error number: 2 missing, 13 read-only, a directory or denied.
int remove_file(std::string_view path);
// Makes one directory; 0 or the runtime error number (17 exists, 2 no parent).
int make_directory(std::string_view path);
// Removes an empty directory, or a symbolic link or junction to a directory
// (the link only); 0 or the runtime error number (41 not empty, 13 read-only
// or denied, 2 missing).
int remove_directory(std::string_view path);

// The system's last-error values the copy and move report.
enum SystemError : uint32_t {
    kSysOk = 0,
    kSysFileNotFound = 2,
    kSysPathNotFound = 3,
    kSysAccessDenied = 5,
    kSysNotSameDevice = 17,
    kSysSharingViolation = 32,
    kSysFileExists = 80,
    kSysDiskFull = 112,
    kSysInvalidName = 123,
    kSysAlreadyExists = 183,
};

// The system's copy: bytes, attributes and last-write time. An existing
// target is replaced unless fail_if_exists (then 80); a read-only target is
// refused (5), and so is a target that is the source under another name
// (32). A failed copy leaves no partial target and never touches the source.
// 0 on success, else the system's last-error value.
uint32_t system_copy_file(std::string_view from, std::string_view to, bool fail_if_exists);

// The system's move. `replace` lets an existing target (not read-only, not
// another name of the source) be replaced, else 183; `allow_copy` lets a
// file move to another volume by a copy and a delete. 0 or the last-error value.
uint32_t system_move_file(std::string_view from, std::string_view to, bool replace, bool allow_copy);

// Copies the rest of `from` (from its position) to `to` (at its position)
// with the system's copy offload, where the result is byte for byte what a
// read and write loop gives. Done: *copied bytes were copied and `from` is at
// its end. Unsupported: nothing was copied; use the loop. Failed: a read or
// write failed after *copied bytes (a full disk, a file size limit).
enum class Offload { Done, Unsupported, Failed };
Offload copy_offload(File &from, File &to, int64_t *copied) noexcept;

// The directories of the program search path (the environment variable
// PATH, split at ";" on Windows and ":" on POSIX), in order.
std::vector<std::string> program_directories();

} // namespace brindle::platform
