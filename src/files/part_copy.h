// Copies of parts of a file: from an offset to the end or up to it (into a
// new target or appended to one), numbered pieces of a fixed size, and a
// cut in two. Files are read and written in 32,768-byte blocks; a target
// made by a failed call is deleted, and a target appended to is cut back to
// its old length.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace brindle::files {

enum PartCopyCode : int32_t {
    kPartBadOffset = -1,
    kPartBadSource = -2, // the name fails the validator
    kPartBadTarget = -3,
    kPartOffsetBeyondEnd = -4,
    kPartSourceNotOpened = -5,
    kPartTargetNotOpened = -6, // also when both names are one file
};

// head false: bytes offset .. end; head true: bytes 0 .. offset - 1. 0, a
// PartCopyCode, or kTextNoBuffer, kTextReadError, kTextWriteError.
int32_t copy_part(std::string_view source, std::string_view target, int32_t offset, bool head, bool append);

enum SplitCode : int32_t {
    kSplitBadSize = -1,
    kSplitBadSource = -2,
    kSplitBadPattern = -3,
    kSplitSourceNotOpened = -4,
    kSplitPieceNotCreated = -5, // also when a piece would be the source itself
};

// The name of piece `n` of a pattern: its drive, directory and name with
// the extension replaced by n in three digits at least ("%03d").
std::string piece_name(std::string_view pattern, int32_t n);

// Pieces of at most piece_size bytes named by piece_name from 0 up; the
// number written, a SplitCode, or kTextNoBuffer/kTextReadError/
// kTextWriteError (the pieces of a failed call are all deleted). An empty
// source gives no piece.
int32_t split_file(std::string_view source, std::string_view pattern, int32_t piece_size);

enum CutCode : int32_t {
    kCutBadPosition = -1,
    kCutBadSource = -2,
    kCutBadFirst = -3,
    kCutBadSecond = -4,
    kCutBeyondEnd = -5,
    kCutSourceNotOpened = -6,
    kCutFirstNotCreated = -7, // also when it is the source or the second target
    kCutSecondNotCreated = -8,
};

// Bytes 0 .. position - 1 to `first`, the rest to `second`: 0 or a code.
int32_t cut_file(std::string_view source, std::string_view first, std::string_view second, int32_t position);

} // namespace brindle::files
