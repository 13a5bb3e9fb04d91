// Registry values: the calls of the system registry that the registry
// family makes, one function per step that can fail on its own. Strings are
// zero-terminated byte strings; a key path is taken relative to its root and
// an empty value name addresses the key's default value.
//
// On Windows these are the system registry's own calls (advapi32). On POSIX
// they work on the per-user store, a REGEDIT4 file in the user's
// configuration directory (platform/registry_text.h), replaced atomically
// under a lock on each write and parsed again only when the file changed.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

namespace brindle::platform {

enum class RegistryRoot : uint8_t {
    ClassesRoot,
    CurrentUser,
    LocalMachine,
    Users,
    PerformanceData,
    CurrentConfig,
    DynData,
};

// The outcomes of the writing calls, by the step that failed.
enum class RegistryStep : uint8_t {
    Done,
    CreateFailed, // the key could not be created or opened for writing
    OpenFailed,   // the key could not be opened
    Disposition,  // the key was neither made nor found (never on POSIX)
    Refused,      // the value or key could not be set or deleted
};

// Creates or opens `key` for all access and sets value `name` to `value` as
// a string, its stored byte count including the final zero.
RegistryStep registry_put(RegistryRoot root, const char *key, const char *name, const char *value);

// Opens `key` for query and reads value `name` into `buffer` of `size`
// bytes: true with *length the bytes placed (the stored bytes, type not
// looked at), false when the key cannot be opened or the value cannot be
// read, a value of more than `size` bytes included.
bool registry_get(RegistryRoot root, const char *key, const char *name, char *buffer, uint32_t size,
                  uint32_t *length);

// Opens `key` for query and deletes its subkey `subkey` (a path; "" is the
// key itself). A key that has subkeys of its own is not deleted (Refused).
RegistryStep registry_delete_key(RegistryRoot root, const char *key, const char *subkey);

// Opens `key` for query, and with the right to set values when
// `may_set` (without it the system refuses the deletion), and deletes value
// `name`.
RegistryStep registry_delete_value(RegistryRoot root, const char *key, const char *name, bool may_set);

struct RegistryKeyFacts {
    uint32_t subkeys = 0;
    uint32_t max_subkey_len = 0;
    uint32_t values = 0;
    uint32_t max_value_name_len = 0;
    uint32_t max_value_len = 0; // bytes
};

enum class RegistryQuery : uint8_t { Done, OpenFailed, QueryFailed };

// Opens `key` for query and gives its counts and longest names and data
// (names in characters without their zero). QueryFailed leaves *facts zero.
RegistryQuery registry_key_info(RegistryRoot root, const char *key, RegistryKeyFacts *facts);

// Opens `key` for all access and calls `take` with each value in index
// order whose name fits in `name_room` bytes with its zero and whose data
// fits in `data_room` bytes (others are skipped), until `take` gives false
// or the values end. False when the key cannot be opened.
bool registry_values(RegistryRoot root, const char *key, uint32_t name_room, uint32_t data_room,
                     const std::function<bool(std::string_view name, std::string_view data)> &take);

// How many times this process has parsed the POSIX store (0 on Windows):
// for the tests and benchmarks that check the parsed store is reused.
uint64_t registry_store_parses() noexcept;

} // namespace brindle::platform
