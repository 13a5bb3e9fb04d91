// The library's own block copy of one file, with its codes, and the forced
// copy that replaces a read-only target.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

namespace brindle::files {

// Codes of the block copy and the content comparison (a Long, or the same
// value as an Integer).
enum CopyCode : int32_t {
    kCopyNoBuffer = -32760,    // the first 32,768-byte buffer
    kCopyNoBuffer2 = -32761,   // the second buffer (comparison)
    kCopySourceOpen = -32750,  // the source (first file) cannot be opened
    kCopyTargetOpen = -32751,  // the target (second file) cannot be created or opened
    kCopyReadError = -32730,   // read error on the source
    kCopyWriteError = -32740,  // write error on the target (read error in a comparison)
    kCopyShortWrite = -32720,  // fewer bytes written than read (reads of unequal length)
};

// Copies source to target, creating or emptying the target: the number of
// bytes copied as a 32-bit count, or a code. A target that is the source
// under another name (a second spelling, a hard or symbolic link) is refused
// with kCopyTargetOpen before anything is opened for writing. On every
// failure after the target was created the target is deleted; a count that
// has turned negative (past 2 GB) is returned as it is and the target is
// deleted too. The source is only ever read. The system's copy offload is
// used where it gives the same bytes.
int32_t block_copy(std::string_view source, std::string_view target);

// block_copy, and when `force`: the target's attributes cleared first (so a
// read-only target can be replaced) and, after a successful copy, set to the
// source's attribute word (-1 when that fails).
int32_t force_copy(std::string_view source, std::string_view target, bool force);

// The copy behind the progress-window copies: 32,768-byte blocks, `start`
// called once with the number of blocks a progress bar should count (the
// size divided by 32,768), `step` after each block. The target is made anew;
// a failed copy deletes it, and a target that is the source under another
// name is refused. True on success.
bool stepped_copy(std::string_view source, std::string_view target, const std::function<void(int32_t)> &start,
                  const std::function<void()> &step);

} // namespace brindle::files
