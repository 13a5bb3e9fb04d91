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

} // namespace brindle::crypto
