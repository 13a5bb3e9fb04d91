// Registry values through the system registry (advapi32). Every key opened
// here is closed on every path.
#include "platform/registry.h"

#include <windows.h>

#include <vector>

namespace brindle::platform {

namespace {

HKEY root_key(RegistryRoot root) {
    switch (root) {
    case RegistryRoot::ClassesRoot:
        return HKEY_CLASSES_ROOT;
    case RegistryRoot::CurrentUser:
        return HKEY_CURRENT_USER;
    case RegistryRoot::LocalMachine:
        return HKEY_LOCAL_MACHINE;
    case RegistryRoot::Users:
        return HKEY_USERS;
    case RegistryRoot::PerformanceData:
        return HKEY_PERFORMANCE_DATA;
    case RegistryRoot::CurrentConfig:
        return HKEY_CURRENT_CONFIG;
    case RegistryRoot::DynData:
        return HKEY_DYN_DATA;
    }
    return HKEY_CURRENT_USER;
}

class OpenKey {
  public:
    OpenKey(RegistryRoot root, const char *key, REGSAM access) {
        ok_ = RegOpenKeyExA(root_key(root), key, 0, access, &key_) == ERROR_SUCCESS;
    }
    OpenKey(HKEY key) : key_(key), ok_(true) {}
    ~OpenKey() {
        if (ok_)
            RegCloseKey(key_);
    }
    OpenKey(const OpenKey &) = delete;
    OpenKey &operator=(const OpenKey &) = delete;
    bool ok() const { return ok_; }
    HKEY get() const { return key_; }

  private:
    HKEY key_ = nullptr;
    bool ok_ = false;
};

} // namespace

RegistryStep registry_put(RegistryRoot root, const char *key, const char *name, const char *value) {
    HKEY made = nullptr;
    DWORD disposition = 0;
    if (RegCreateKeyExA(root_key(root), key, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &made, &disposition) !=
        ERROR_SUCCESS)
        return RegistryStep::CreateFailed;
    const OpenKey k(made);
    if (disposition != REG_CREATED_NEW_KEY && disposition != REG_OPENED_EXISTING_KEY)
        return RegistryStep::Disposition;
    const DWORD bytes = static_cast<DWORD>(lstrlenA(value) + 1);
    return RegSetValueExA(k.get(), name, 0, REG_SZ, reinterpret_cast<const BYTE *>(value), bytes) == ERROR_SUCCESS
               ? RegistryStep::Done
               : RegistryStep::Refused;
}

bool registry_get(RegistryRoot root, const char *key, const char *name, char *buffer, uint32_t size,
                  uint32_t *length) {
    const OpenKey k(root, key, KEY_QUERY_VALUE);
    if (!k.ok())
        return false;
    DWORD type = 0, bytes = size;
    if (RegQueryValueExA(k.get(), name, nullptr, &type, reinterpret_cast<BYTE *>(buffer), &bytes) != ERROR_SUCCESS ||
        bytes > size)
        return false;
    *length = bytes;
    return true;
}

RegistryStep registry_delete_key(RegistryRoot root, const char *key, const char *subkey) {
    const OpenKey k(root, key, KEY_QUERY_VALUE);
    if (!k.ok())
        return RegistryStep::OpenFailed;
    return RegDeleteKeyA(k.get(), subkey) == ERROR_SUCCESS ? RegistryStep::Done : RegistryStep::Refused;
}

RegistryStep registry_delete_value(RegistryRoot root, const char *key, const char *name, bool may_set) {
    const OpenKey k(root, key, may_set ? KEY_QUERY_VALUE | KEY_SET_VALUE : KEY_QUERY_VALUE);
    if (!k.ok())
        return RegistryStep::OpenFailed;
    return RegDeleteValueA(k.get(), name) == ERROR_SUCCESS ? RegistryStep::Done : RegistryStep::Refused;
}

RegistryQuery registry_key_info(RegistryRoot root, const char *key, RegistryKeyFacts *facts) {
    *facts = {};
    const OpenKey k(root, key, KEY_QUERY_VALUE);
    if (!k.ok())
        return RegistryQuery::OpenFailed;
    DWORD subkeys = 0, max_subkey = 0, values = 0, max_name = 0, max_data = 0;
    if (RegQueryInfoKeyA(k.get(), nullptr, nullptr, nullptr, &subkeys, &max_subkey, nullptr, &values, &max_name,
                         &max_data, nullptr, nullptr) != ERROR_SUCCESS)
        return RegistryQuery::QueryFailed;
    *facts = {subkeys, max_subkey, values, max_name, max_data};
    return RegistryQuery::Done;
}

bool registry_values(RegistryRoot root, const char *key, uint32_t name_room, uint32_t data_room,
                     const std::function<bool(std::string_view name, std::string_view data)> &take) {
    const OpenKey k(root, key, KEY_ALL_ACCESS);
    if (!k.ok())
        return false;
    std::vector<char> name(name_room + 1u);
    std::vector<BYTE> data(data_room + 1u);
    for (DWORD index = 0;; ++index) {
        DWORD name_len = name_room, data_len = data_room, type = 0;
        const LONG got = RegEnumValueA(k.get(), index, name.data(), &name_len, nullptr, &type, data.data(), &data_len);
        if (got == ERROR_MORE_DATA)
            continue; // a name or data too long for the room: skipped
        if (got != ERROR_SUCCESS)
            break; // the end of the values, or a failure: what was given stands
        if (name_len >= name_room || data_len > data_room)
            continue;
        if (!take(std::string_view(name.data(), name_len),
                  std::string_view(reinterpret_cast<const char *>(data.data()), data_len)))
            break;
    }
    return true;
}

uint64_t registry_store_parses() noexcept { return 0; }

} // namespace brindle::platform
