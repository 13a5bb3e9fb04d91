// The text of a profile file: parsing, the reads the system's profile calls
// give, and the edits of its writes. The POSIX side of platform/profile.h
// stands on it; it is plain code, built everywhere.
//
// A line ends at a line feed (a carriage return before it, like spaces, tabs
// and Ctrl-Z, is trimmed from both ends of every line); the last line may
// have no line end. A line whose trimmed text starts with "[" and holds a
// "]" opens a section named by the text between the "[" and the last "]",
// trimmed.
// Any other non-blank line is an entry: the name before its first "=" and
// the value after it, each trimmed where it meets the "="; a line without
// "=" is an entry with a name and no value. Lines before the first section,
// and sections with an empty name, are never found.
//
// Lookups compare names without regard to ASCII case, and the first section
// of a name (and within it the first entry of a name) is the one used. The
// edits splice the text: lines they do not touch keep their bytes, and new
// lines end in CR LF.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace brindle::platform::profile {

struct Line {
    enum class Kind { Blank, Section, Entry };
    Kind kind = Kind::Blank;
    size_t begin = 0; // the line's first byte
    size_t next = 0;  // the first byte of the next line (past the line feed)
    std::string_view name;
    std::string_view value; // of an entry with "=" only
    bool has_value = false;
};

// Spaces of profile text: blanks, tabs, line ends and Ctrl-Z.
bool is_profile_space(char c) noexcept;
std::string_view trim(std::string_view s) noexcept;

class ProfileText {
  public:
    explicit ProfileText(std::string text);
    ProfileText(const ProfileText &) = delete;
    ProfileText &operator=(const ProfileText &) = delete;

    const std::string &text() const noexcept { return text_; }
    const std::vector<Line> &lines() const noexcept { return lines_; }

    // The entry `key` of section `section`, both compared after trimming;
    // null when either is missing.
    const Line *find(std::string_view section, std::string_view key) const;
    // The names of the first section named exactly `section` (case aside)
    // that have a value, in order: empty names and comments (";") left out,
    // a name that comes twice given twice.
    std::vector<std::string_view> key_names(std::string_view section) const;
    // Every section with a non-empty name, in order.
    std::vector<std::string_view> section_names() const;

    // Sets `key` of `section` (both trimmed) to `value` less its leading
    // spaces, adding the key after the section's last non-blank line, or the
    // section at the end. False when the text already held that value.
    bool set_value(std::string_view section, std::string_view key, std::string_view value);
    // Removes the first entry named `key` (untrimmed) from the sections
    // named `section` (untrimmed); false when there was none.
    bool erase_key(std::string_view section, std::string_view key);
    // Removes the first section named `section` (untrimmed) with all its
    // lines; false when there was none.
    bool erase_section(std::string_view section);

  private:
    void parse();
    // Index of the first section line named `name` (exact, case aside), or
    // lines_.size().
    size_t section_line(std::string_view name) const;
    // One past the last line of the section that starts at line `at`.
    size_t section_end(size_t at) const;
    void splice(size_t from, size_t to, std::string_view with);

    std::string text_;
    std::vector<Line> lines_;
};

// A single value into `buffer` of `size` bytes as the system's read gives
// it: a value in matching quotes loses them, at most size - 1 bytes are
// kept. The length placed.
uint32_t copy_value(std::string_view value, char *buffer, uint32_t size) noexcept;
// A list of names (each ended by a zero, the list by one more) as a key
// list is given: a name that does not fit is cut, and a cut list gives
// size - 2. The count placed before the final zero.
uint32_t copy_key_list(const std::vector<std::string_view> &names, char *buffer, uint32_t size) noexcept;
// The same for the section list.
uint32_t copy_section_list(const std::vector<std::string_view> &names, char *buffer, uint32_t size) noexcept;

} // namespace brindle::platform::profile
