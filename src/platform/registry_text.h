// The per-user registry store of the POSIX platform: a tree of keys under
// the five roots that can hold keys, read from and written as REGEDIT4
// text. Plain code, built everywhere (the fuzz target drives it).
//
// Reading is forgiving: a damaged file gives every key and value it still
// holds in a valid line, and lines that do not parse are skipped (so the
// next write drops them). A file exported by the Windows registry editor
// reads too: "REGEDIT4" or the version 5 header, `[ROOT\path]` key lines
// (root names in full or abbreviated: HKCU, HKLM, HKCR, HKU, HKCC), values as
// `"name"=` or `@=` followed by a quoted string, `dword:` and eight hex
// digits, or `hex:` / `hex(N):` byte lists that may go on over lines ended by
// a backslash. Deletion lines (`[-key]`, `"name"=-`) and comments are
// skipped.
//
// Writing gives REGEDIT4 text with CR LF line ends, the keys in order of
// their names (case aside) beneath each root, each followed by its values in
// the order they were first set. A string value is written quoted (with "\"
// before every backslash and quote) when it is one string ended by its one
// zero byte and holds no line end; any other value is written as a byte
// list, so every value survives a round trip byte for byte.
//
// Names compare without regard to ASCII case; a key keeps the case it was
// created with.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace brindle::platform::registry {

inline constexpr uint32_t kString = 1; // REG_SZ
inline constexpr uint32_t kBinary = 3; // REG_BINARY
inline constexpr uint32_t kDword = 4;  // REG_DWORD

// The roots a store holds, in the order they are written.
enum class Root : uint8_t { ClassesRoot, CurrentUser, LocalMachine, Users, CurrentConfig };
inline constexpr size_t kRoots = 5;
std::string_view root_name(Root root) noexcept;

// The longest key name (one step of a path) and value name the store takes,
// as the Windows registry limits them.
inline constexpr size_t kMaxKeyName = 255;
inline constexpr size_t kMaxValueName = 16383;

struct Value {
    std::string name;
    uint32_t type = kString;
    std::string data; // the stored bytes; a string's include its final zero
};

class Key {
  public:
    explicit Key(std::string name) : name_(std::move(name)) {}
    Key(const Key &) = delete;
    Key &operator=(const Key &) = delete;

    const std::string &name() const noexcept { return name_; }
    const std::vector<Value> &values() const noexcept { return values_; }
    // Children in order of their upper-case names.
    const std::map<std::string, std::unique_ptr<Key>> &children() const noexcept { return children_; }

    Key *child(std::string_view name) const;
    // The child of that name, made when missing (*created tells which).
    Key &make_child(std::string_view name, bool *created = nullptr);
    // False when there is no child of that name.
    bool erase_child(std::string_view name);

    const Value *value(std::string_view name) const;
    // Sets (or adds, at the end) the value of that name.
    void set_value(std::string_view name, uint32_t type, std::string data);
    // False when there is no value of that name.
    bool erase_value(std::string_view name);

  private:
    std::string name_;
    std::vector<Value> values_;
    std::unordered_map<std::string, size_t> value_index_; // upper-case name -> index
    std::map<std::string, std::unique_ptr<Key>> children_;
};

// A key path ("Software\App\Settings") split into its steps: a single
// trailing backslash is allowed; an empty step, a step longer than
// kMaxKeyName or one holding a line end make the path unusable (nothing).
// The empty path is the root itself (no steps).
std::optional<std::vector<std::string_view>> split_key_path(std::string_view path);

// Whether a value name can stand in the store (not longer than
// kMaxValueName, no line end).
bool storable_value_name(std::string_view name) noexcept;

class Store {
  public:
    Store();
    Store(const Store &) = delete;
    Store &operator=(const Store &) = delete;

    // Reads REGEDIT4 text as described above; never fails.
    static std::unique_ptr<Store> parse(std::string_view text);
    // The store as REGEDIT4 text.
    std::string text() const;

    Key &root(Root r) noexcept { return *roots_[static_cast<size_t>(r)]; }
    const Key &root(Root r) const noexcept { return *roots_[static_cast<size_t>(r)]; }

    // The key at `path` under `r`, or null when a step is missing or the
    // path is unusable.
    Key *find(Root r, std::string_view path) const;
    // The key at `path`, made with every missing step; null for an unusable
    // path. *created tells whether the last step was new.
    Key *create(Root r, std::string_view path, bool *created);

  private:
    std::unique_ptr<Key> roots_[kRoots];
};

// The value of a data text after `name=`: its type and bytes, or nothing
// when it does not parse (a deletion "-" included).
std::optional<Value> parse_value_data(std::string_view data);

} // namespace brindle::platform::registry
