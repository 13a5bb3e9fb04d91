// The target file of the enciphering file forms: created ("wb"), and deleted
// again unless finish() closed it without an error, so that a failure never
// leaves a partial target behind. An existing target is written over from
// its start and cut at the end of what was written when it is finished:
// the same file as after a truncation, without the flush of the whole file
// that ext4 makes when a file truncated to zero is closed (it doubled the
// time of deciphering onto an existing 1 GiB target).
#pragma once

#include "platform/file.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

namespace brindle::crypto {

class CipherTarget {
  public:
    // Creates `name` (a Windows path) or opens it to be written over; see
    // open().
    explicit CipherTarget(std::string_view name);
    ~CipherTarget();
    CipherTarget(const CipherTarget &) = delete;
    CipherTarget &operator=(const CipherTarget &) = delete;

    bool open() const noexcept { return file_.is_open(); }
    // All `size` bytes, or false.
    bool write(const void *bytes, std::size_t size) noexcept {
        if (!file_.write(bytes, size))
            return false;
        written_ += size;
        return true;
    }
    // Cuts the file after the bytes written, closes it and keeps it; false
    // (and the file deleted) when the system reports that a write did not
    // reach it.
    bool finish() noexcept;

  private:
    std::string_view name_;
    platform::File file_;
    bool created_;
    bool kept_ = false;
    uint64_t written_ = 0;
};

// Opens `source` for reading into `in`, unless it and `target` lead to the
// same file (creating the target would empty the source). 0 when both may
// be used, else `source_code` (not opened) or `target_code` (same file).
int32_t open_cipher_source(std::string_view source, std::string_view target, platform::File &in,
                           int32_t source_code, int32_t target_code);

// A byte count as a Long result: at most 2,147,483,647.
int32_t byte_count_result(uint64_t total) noexcept;

// The codes a family's file forms give for each failure.
struct FileFailureCodes {
    int32_t no_buffer, source_not_opened, target_not_created, read_failed, write_failed;
};

// Copies `source` into `target` (Windows paths) through `chunk`, called in
// order on each piece of `chunk_bytes` (the last shorter) and transforming
// it in place: no header, no padding, the target as long as the source.
// Returns the bytes written (at most 2,147,483,647 reported) or one of
// `codes`; on a code the target is deleted. The work buffer is wiped before
// it is freed.
int32_t transform_file_chunks(std::string_view source, std::string_view target, std::size_t chunk_bytes,
                              const FileFailureCodes &codes, const std::function<void(std::span<uint8_t>)> &chunk);

} // namespace brindle::crypto
