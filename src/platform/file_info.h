// What the system knows about a file besides its bytes: attributes, the
// three times, the runtime's status, volume space, full paths and unique
// names. Every path is a Windows path (see platform/file.h).
//
// Attributes on POSIX follow the convention Wine and Samba share:
//   read-only    no write permission bit set (setting it clears them all;
//                clearing it gives the owner write permission)
//   hidden       a name beginning with a full stop, or the bit stored below
//   system, archive, temporary
//                kept as "0x<hex>" in the user.DOSATTRIB extended attribute;
//                without that attribute a file reads as archive and a
//                directory as nothing
//   directory    from the file type
//   compressed   never; it cannot be set
//   normal       reported alone when no other bit is set
//   reparse      a symbolic link
// A setter that cannot store a bit (no extended attributes on the file
// system, compressed asked for, hidden cleared on a dotted name) fails and
// leaves the file as it was.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace brindle::platform {

enum FileAttribute : uint32_t {
    kAttrReadOnly = 0x1,
    kAttrHidden = 0x2,
    kAttrSystem = 0x4,
    kAttrDirectory = 0x10,
    kAttrArchive = 0x20,
    kAttrNormal = 0x80,
    kAttrTemporary = 0x100,
    kAttrReparsePoint = 0x400,
    kAttrCompressed = 0x800,
};

// Times as Windows keeps them: 100-nanosecond intervals since 1601-01-01 UTC.
struct FileTimes {
    int64_t created = 0;
    int64_t accessed = 0;
    int64_t written = 0;
};

// Seconds since 1970 (UTC) to the Windows count and back.
constexpr int64_t kUnixEpochAsFileTime = 116444736000000000LL;
constexpr int64_t file_time_from_unix(int64_t seconds, int64_t nanoseconds = 0) {
    return kUnixEpochAsFileTime + seconds * 10000000LL + nanoseconds / 100;
}

// The attribute word of a file or directory; 0 and *attributes set on
// success, else the runtime error number (2 missing, 13 denied).
int get_attributes(std::string_view path, uint32_t *attributes);
// Sets read-only, hidden, system, archive and temporary to the given bits
// (directory and normal are ignored, as the system does); 0 on success,
// else a runtime error number (13 where the bit cannot be stored).
int set_attributes(std::string_view path, uint32_t attributes);

// The three times; 0 on success, else a runtime error number.
int get_file_times(std::string_view path, FileTimes *times);
// Sets the times whose pointer is not null. 0 on success, else an error.
// POSIX cannot set a creation time: there a creation time other than the
// one the file reports (to the millisecond) gives 13, after the other two
// were set. The creation time read is the file system's birth time where it
// keeps one (statx), else the older of the last change and the last write.
int set_file_times(std::string_view path, const int64_t *created, const int64_t *accessed, const int64_t *written);

// The runtime's status call (_stat).
struct FileStatus {
    bool is_directory = false;
    int64_t size = 0;
    FileTimes times;
    int drive = 0; // 0 = A; on POSIX every path is on drive C (2)
};
// 0 on success, else the runtime error number (2 no such file or path,
// 13 denied access).
int file_status(std::string_view path, FileStatus *status);

// Space on the volume that holds `root` (a root directory such as "C:\";
// empty means the current drive). False when the system refuses.
struct VolumeSpace {
    uint32_t sectors_per_cluster = 0;
    uint32_t bytes_per_sector = 0;
    uint32_t free_clusters = 0;  // available to the caller; capped at 2^32-1
    uint32_t total_clusters = 0; // capped at 2^32-1
    uint64_t total_bytes = 0;
    uint64_t free_bytes = 0;        // the whole volume's free bytes
    uint64_t caller_free_bytes = 0; // what the caller may use
};
bool volume_space(std::string_view root, VolumeSpace *space);

// The current directory as a Windows path ("C:\work"); empty on failure.
std::string current_directory();
// The absolute form of a path against the current directory, "." and ".."
// resolved, as the runtime's full-path call gives it in a buffer of `limit`
// characters (the terminating zero included); false when it does not fit or
// the system refuses.
bool full_path(std::string_view path, std::string *out, size_t limit = 260);

uint32_t process_id() noexcept;

} // namespace brindle::platform
