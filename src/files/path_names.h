// Path names as text: the workers behind the path exports, shared by every
// family that takes a file name (disk arrays, scratch files, gzip files, the
// copy, search and text-file functions).
//
// Names are Windows names in ANSI bytes: backslash separator, forward slash
// as a second choice, "X:" drive prefix. None of these touch the disk except
// the two file helpers at the end, which go through the platform layer.
#pragma once

#include "platform/file.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace brindle::files {

// ---------------------------------------------------------------------------
// Validation codes of IsFilenameValid (a VB Integer).
enum NameCode : int16_t {
    kNameValid = -1,
    kNameInvalid = 0,          // empty, > 516 characters, forbidden character,
                               // second or leading full stop, ends in ":" or "\"
    kNameBaseTooLong = 1,      // more than 256 characters before a full stop
    kNameExtTooLong = 2,       // more than 256 characters after a full stop
    kNameThreeBackslashes = 3, // "\\\" anywhere
    kNameDriveNotLetter = 4,   // the character before the colon is no letter
    kNameColonMisplaced = 5,   // a colon anywhere but the second character
    kNameDotAfterSeparator = 6 // a full stop right after "\" or ":"
};

// The longest name the validator accepts.
inline constexpr size_t kMaxValidName = 516;

// A syntax check of a file name; the disk is not touched. One leading "..\"
// is allowed; forward slashes are refused here although the other path
// workers accept them as separators.
int16_t filename_validity(std::string_view name) noexcept;

// The normaliser that runs before any system call on a caller's name: at
// most 2,048 characters are kept; forward slashes become backslashes; a
// trailing backslash goes unless it is the whole root ("\" or "C:\"); a bare
// drive "C:" becomes "C:\".
inline constexpr size_t kNormaliseLimit = 2048;
std::string normalise_path(std::string_view path);

// ---------------------------------------------------------------------------
// Splitting and joining, as the C runtime's path splitter and builder do it.
struct PathPieces {
    std::string drive; // "C:" or empty
    std::string dir;   // with its trailing separator, or empty
    std::string name;  // without extension
    std::string ext;   // with its full stop, or empty
};
PathPieces split_path(std::string_view path);
// The colon after a bare drive, a backslash after a directory without a
// trailing separator, and the full stop before an extension are added.
std::string make_path(std::string_view drive, std::string_view dir, std::string_view name, std::string_view ext);

// ---------------------------------------------------------------------------
// Extensions and strippers.

// True when the text after the last separator holds a full stop (a name
// ending in a full stop counts as having an extension).
bool has_extension(std::string_view name) noexcept;
// `name` with `ext` appended (a full stop is added unless ext begins with
// one), unless it already has an extension or ext is empty.
std::string default_extension(std::string_view name, std::string_view ext);
// The name without its extension (a full stop in a directory name is no
// extension).
std::string strip_extension(std::string_view name);
// The text after the last backslash (else the last forward slash).
std::string strip_file_path(std::string_view name);
// The directory part, normalised: "C:\dir\f" gives "C:\dir", "C:\f" gives
// "C:\", a name without separator gives ".".
std::string strip_file_name(std::string_view name);

// A path shortened for display to at most max_length characters by leaving
// out directory components; empty when the path is invalid or max_length is
// below 25. See the definition for the exact text.
std::string truncate_path(std::string_view path, int32_t max_length);

// ---------------------------------------------------------------------------
// The two file helpers the stores and compressors share (Windows names).

// Size of a named file in bytes; -1 when it is missing or a directory.
inline int64_t named_file_size(std::string_view path) { return platform::file_size(path); }
// Removes a file if it is there; true when the name is free afterwards.
inline bool delete_if_exists(std::string_view path) { return platform::delete_if_exists(path); }

} // namespace brindle::files
