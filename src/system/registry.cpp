// Registry values: the exports. Every string arrives by reference and is read
// up to its first zero byte; an empty value name addresses the key's default
// value.
#include "frame/frame.h"
#include "platform/registry.h"
#include "system/registry_record.h"
#include "system/registry_values.h"

#include <string>

using namespace brindle::frame;
using namespace brindle::system;
namespace platform = brindle::platform;
using platform::RegistryRoot;

namespace {

std::string text_of(BSTR *s) { return std::string(StrArg::by_ref(s).text()); }

// Put and kill failures that no step reported (no memory, say) read as a
// refusal of the system.
constexpr int16_t kRefused = 5;

int16_t put(RegistryRoot root, BSTR *Key, BSTR *ValueName, BSTR *Value) {
    return guarded(kRefused, [&]() -> int16_t {
        const std::string key = text_of(Key);
        if (key.empty())
            return 1;
        return registry_status(
            platform::registry_put(root, key.c_str(), text_of(ValueName).c_str(), text_of(Value).c_str()));
    });
}

BSTR get(RegistryRoot root, BSTR *Key, BSTR *ValueName, BSTR *DefaultValue) {
    return guarded_string([&] {
        const std::string key = text_of(Key);
        if (key.empty())
            return empty_string();
        return new_string(registry_value(root, key, text_of(ValueName), StrArg::by_ref(DefaultValue).text()));
    });
}

int16_t kill_key(RegistryRoot root, BSTR *Key, BSTR *SubKey) {
    return guarded(kRefused, [&]() -> int16_t {
        const std::string key = text_of(Key);
        if (key.empty())
            return 1;
        return registry_status(platform::registry_delete_key(root, key.c_str(), text_of(SubKey).c_str()));
    });
}

int16_t kill_value(RegistryRoot root, BSTR *Key, BSTR *ValueName, bool may_set) {
    return guarded(kRefused, [&]() -> int16_t {
        const std::string key = text_of(Key);
        if (key.empty())
            return 1;
        return registry_status(
            platform::registry_delete_value(root, key.c_str(), text_of(ValueName).c_str(), may_set));
    });
}

} // namespace

BRINDLE_EXPORT(int16_t) cPutRegistry(BSTR *Key, BSTR *ValueName, BSTR *Value) {
    return put(RegistryRoot::CurrentUser, Key, ValueName, Value);
}

BRINDLE_EXPORT(BSTR) cGetRegistry(BSTR *Key, BSTR *ValueName, BSTR *DefaultValue) {
    return get(RegistryRoot::CurrentUser, Key, ValueName, DefaultValue);
}

BRINDLE_EXPORT(int16_t) cKillRegistry(BSTR *Key, BSTR *SubKey) {
    return kill_key(RegistryRoot::CurrentUser, Key, SubKey);
}

BRINDLE_EXPORT(int16_t) cKillRegistryValue(BSTR *Key, BSTR *ValueName) {
    return kill_value(RegistryRoot::CurrentUser, Key, ValueName, true);
}

BRINDLE_EXPORT(int16_t) cPutRegistryExt(int16_t Root, BSTR *Key, BSTR *ValueName, BSTR *Value) {
    return put(registry_root(Root), Key, ValueName, Value);
}

BRINDLE_EXPORT(BSTR) cGetRegistryExt(int16_t Root, BSTR *Key, BSTR *ValueName, BSTR *DefaultValue) {
    return get(registry_root(Root), Key, ValueName, DefaultValue);
}

BRINDLE_EXPORT(int16_t) cKillRegistryExt(int16_t Root, BSTR *Key, BSTR *SubKey) {
    return kill_key(registry_root(Root), Key, SubKey);
}

// The Ext form opens the key for query only, so the system refuses the
// deletion wherever it checks access rights: kept as it always was.
BRINDLE_EXPORT(int16_t) cKillRegistryValueExt(int16_t Root, BSTR *Key, BSTR *ValueName) {
    return kill_value(registry_root(Root), Key, ValueName, false);
}

BRINDLE_EXPORT(int16_t) cRegistryKeyInfo(BSTR *Key, RegistryKeyInfo *Info) {
    return guarded(int16_t{0}, [&]() -> int16_t {
        const std::string key = text_of(Key);
        if (key.empty() || Info == nullptr)
            return 0;
        platform::RegistryKeyFacts facts;
        const platform::RegistryQuery query = platform::registry_key_info(RegistryRoot::CurrentUser, key.c_str(), &facts);
        if (query == platform::RegistryQuery::OpenFailed)
            return 0;
        Info->SubKeys = static_cast<int32_t>(facts.subkeys);
        Info->MaxSubKeyLen = static_cast<int32_t>(facts.max_subkey_len);
        Info->Values = static_cast<int32_t>(facts.values);
        Info->MaxValueNameLen = static_cast<int32_t>(facts.max_value_name_len);
        Info->MaxValueLen = static_cast<int32_t>(facts.max_value_len);
        put_string_field(&Info->Summary, key_summary(facts));
        return query == platform::RegistryQuery::Done ? -1 : 0;
    });
}

BRINDLE_EXPORT(int16_t) cGetAllSettings(SAFEARRAY **Settings, BSTR *Key) {
    return guarded(int16_t{0}, [&]() -> int16_t {
        size_t rows = 0, columns = 0;
        {
            const ArrayBlock shape(Settings);
            if (!shape.ok() || shape.dims() != 2)
                return 0;
            rows = shape.count1();
            columns = shape.count2();
        }
        const std::string key = text_of(Key);
        if (key.empty() || !is_string_array(Settings))
            return 0;
        const auto got = all_settings(key, rows);
        if (got.code == -1)
            return -1;
        WholeArray cells(Settings);
        if (!cells.ok() || cells.elements() != rows * columns)
            return 0;
        // Column-major: the name column is the first index of dimension 2,
        // the data column its last.
        const size_t data_column = (columns - 1) * rows;
        for (size_t row = 0; row < rows; ++row) {
            if (row < got.rows.size()) {
                cells.set_string(row, got.rows[row].first);
                cells.set_string(data_column + row, got.rows[row].second);
            } else if (got.code >= 0) {
                cells.set_string(row, {});
                cells.set_string(data_column + row, {});
            }
        }
        return got.code;
    });
}
