// Copies and moves of the files of a directory that match a mask, with the
// system's copy and move, optionally through its subdirectories.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace brindle::files {

enum SetCopyOption : int32_t {
    kSetOverwrite = 1,     // an existing target is replaced (else it is a failure)
    kSetSubdirs = 2,       // subdirectories too, with the same options
    kSetProgressLayout = 8,// the progress text on two lines
    kSetKeepAttributes = 16// the target's attributes are not cleared before a copy
};

// Called with the progress text before each file when given.
using Progress = std::function<void(const std::string &text)>;

// The progress text of one file: source and target joined by " >>> ", or,
// with kSetProgressLayout, the source, a line break (CR LF) and " >>> " and
// the target.
std::string progress_text(std::string_view source, std::string_view target, int32_t options);

// Copies (or moves) every file of source_dir whose name does not begin with
// "." and matches the mask (the wildcard matcher, case ignored; "" and "*.*"
// mean "*") to target_dir under the same name. With kSetSubdirs each
// subdirectory of source_dir (names beginning with "." left out; links not
// followed; never the target directory itself, nor one below it) is done in
// the same way into the subdirectory of the same name in target_dir, which
// is made when missing. Moved files leave their source directories behind.
// The number of files done, or minus the number of failures when there was one.
// An empty source or target directory name is refused with 0.
int32_t copy_file_set(std::string_view source_dir, std::string_view target_dir, std::string_view mask,
                      int32_t options, bool move, const Progress &progress);

} // namespace brindle::files
