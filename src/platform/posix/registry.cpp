// The registry on POSIX: a per-user store kept as REGEDIT4 text in
// "brindle-registry.reg" in the user's configuration directory
// (platform/registry_text.h reads and writes the text).
//
// A write locks the directory, reads the store, changes it and replaces the
// file with a temporary written beside it, so a crash leaves the old or the
// new store and two processes never lose each other's values. Readers take
// no lock: the file they open is always a whole store. The parsed store is
// kept while the file stays the same (device, inode, size and modification
// time to the nanosecond; every write makes a new inode), so reading many
// values parses it once.
#include "platform/posix/config_files.h"
#include "platform/registry.h"
#include "platform/registry_text.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace brindle::platform {

namespace {

using registry::Key;
using registry::Root;
using registry::Store;

std::optional<Root> store_root(RegistryRoot root) {
    switch (root) {
    case RegistryRoot::ClassesRoot:
        return Root::ClassesRoot;
    case RegistryRoot::CurrentUser:
        return Root::CurrentUser;
    case RegistryRoot::LocalMachine:
        return Root::LocalMachine;
    case RegistryRoot::Users:
        return Root::Users;
    case RegistryRoot::CurrentConfig:
        return Root::CurrentConfig;
    case RegistryRoot::PerformanceData: // counters the system makes up on demand
    case RegistryRoot::DynData:         // gone since Windows 2000
        break;
    }
    return std::nullopt;
}

std::string store_path() {
    const std::string dir = posix::config_directory();
    return dir.empty() ? std::string() : dir + "/brindle-registry.reg";
}

struct Stamp {
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = -1;
    long long seconds = 0, nanoseconds = 0;
    bool operator==(const Stamp &) const = default;
};

Stamp stamp_of(const struct stat &st) {
    return {st.st_dev, st.st_ino, st.st_size, static_cast<long long>(st.st_mtim.tv_sec),
            static_cast<long long>(st.st_mtim.tv_nsec)};
}

struct Cached {
    std::string path;
    Stamp stamp;
    std::shared_ptr<Store> store;
};

std::mutex cache_lock;
Cached cached;
std::atomic<uint64_t> parses{0};

bool read_all(int fd, std::string *bytes) {
    char chunk[65536];
    for (;;) {
        const ssize_t got = ::read(fd, chunk, sizeof chunk);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return false;
        if (got == 0)
            return true;
        bytes->append(chunk, static_cast<size_t>(got));
    }
}

// The store at `path`: the cached one while the file is unchanged, an empty
// one when there is no file, null when the file cannot be read. With
// `for_writing` the caller gets a store of its own to change (the cached one
// is handed over, not shared).
std::shared_ptr<Store> load(const std::string &path, bool for_writing) {
    if (path.empty())
        return nullptr;
    struct stat st{};
    if (::stat(path.c_str(), &st) != 0)
        return errno == ENOENT ? std::make_shared<Store>() : nullptr;
    if (!S_ISREG(st.st_mode))
        return nullptr;
    {
        const std::lock_guard<std::mutex> hold(cache_lock);
        if (cached.store != nullptr && cached.path == path && cached.stamp == stamp_of(st)) {
            if (!for_writing)
                return cached.store;
            std::shared_ptr<Store> mine = std::move(cached.store);
            cached = {};
            if (mine.use_count() == 1)
                return mine;
        }
    }
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return errno == ENOENT ? std::make_shared<Store>() : nullptr;
    struct stat before{}, after{};
    std::string bytes;
    const bool ok = ::fstat(fd, &before) == 0 && read_all(fd, &bytes) && ::fstat(fd, &after) == 0;
    ::close(fd);
    if (!ok)
        return nullptr;
    std::shared_ptr<Store> store = Store::parse(bytes);
    parses.fetch_add(1, std::memory_order_relaxed);
    // A file changed while it was read is not kept: the next read looks again.
    if (!for_writing && stamp_of(before) == stamp_of(after)) {
        const std::lock_guard<std::mutex> hold(cache_lock);
        cached = {path, stamp_of(after), store};
    }
    return store;
}

// Writes the changed store over the file and keeps it as the cached one.
bool save(const std::string &path, const std::shared_ptr<Store> &store) {
    if (!posix::replace_file(path, store->text()))
        return false;
    struct stat st{};
    if (::stat(path.c_str(), &st) == 0) {
        const std::lock_guard<std::mutex> hold(cache_lock);
        cached = {path, stamp_of(st), store};
    }
    return true;
}

// One read-modify-write of the store under the directory lock. `change`
// gives the outcome and whether the store changed; `locked_out` is the
// outcome when the store cannot be reached.
template <class Change> RegistryStep modify(bool make_directory, RegistryStep locked_out, Change change) {
    const std::string path = store_path();
    if (path.empty())
        return locked_out;
    const std::string dir = posix::directory_of(path);
    if (make_directory)
        ::mkdir(dir.c_str(), 0777); // the configuration directory may not exist yet
    const posix::DirectoryLock lock(dir);
    if (!lock.held())
        return locked_out;
    const std::shared_ptr<Store> store = load(path, true);
    if (store == nullptr)
        return locked_out;
    bool changed = false;
    const RegistryStep step = change(*store, &changed);
    if (changed && !save(path, store))
        return RegistryStep::Refused;
    return step;
}

// The key for reading, or null.
const Key *read_key(RegistryRoot root, const char *key, std::shared_ptr<Store> *hold) {
    const auto r = store_root(root);
    if (!r)
        return nullptr;
    *hold = load(store_path(), false);
    return *hold == nullptr ? nullptr : (*hold)->find(*r, key);
}

} // namespace

RegistryStep registry_put(RegistryRoot root, const char *key, const char *name, const char *value) {
    const auto r = store_root(root);
    if (!r || !registry::split_key_path(key))
        return RegistryStep::CreateFailed;
    return modify(true, RegistryStep::CreateFailed, [&](Store &store, bool *changed) {
        bool created = false;
        Key *k = store.create(*r, key, &created);
        if (k == nullptr)
            return RegistryStep::CreateFailed;
        *changed = created;
        if (!registry::storable_value_name(name))
            return RegistryStep::Refused;
        std::string data(value);
        data.push_back('\0');
        const registry::Value *old = k->value(name);
        if (old == nullptr || old->type != registry::kString || old->data != data) {
            k->set_value(name, registry::kString, std::move(data));
            *changed = true;
        }
        return RegistryStep::Done;
    });
}

bool registry_get(RegistryRoot root, const char *key, const char *name, char *buffer, uint32_t size,
                  uint32_t *length) {
    std::shared_ptr<Store> hold;
    const Key *k = read_key(root, key, &hold);
    const registry::Value *v = k == nullptr ? nullptr : k->value(name);
    if (v == nullptr || v->data.size() > size || (buffer == nullptr && !v->data.empty()))
        return false;
    if (!v->data.empty())
        std::memcpy(buffer, v->data.data(), v->data.size());
    *length = static_cast<uint32_t>(v->data.size());
    return true;
}

RegistryStep registry_delete_key(RegistryRoot root, const char *key, const char *subkey) {
    const auto r = store_root(root);
    if (!r)
        return RegistryStep::OpenFailed;
    return modify(false, RegistryStep::OpenFailed, [&](Store &store, bool *changed) {
        const auto key_steps = registry::split_key_path(key);
        if (!key_steps || store.find(*r, key) == nullptr)
            return RegistryStep::OpenFailed;
        const auto sub_steps = registry::split_key_path(subkey);
        if (!sub_steps)
            return RegistryStep::Refused;
        std::vector<std::string_view> steps = *key_steps;
        steps.insert(steps.end(), sub_steps->begin(), sub_steps->end());
        if (steps.empty())
            return RegistryStep::Refused; // a root is never deleted
        Key *parent = &store.root(*r);
        for (size_t i = 0; i + 1 < steps.size() && parent != nullptr; ++i)
            parent = parent->child(steps[i]);
        const Key *target = parent == nullptr ? nullptr : parent->child(steps.back());
        if (target == nullptr || !target->children().empty())
            return RegistryStep::Refused;
        parent->erase_child(steps.back());
        *changed = true;
        return RegistryStep::Done;
    });
}

RegistryStep registry_delete_value(RegistryRoot root, const char *key, const char *name, bool may_set) {
    const auto r = store_root(root);
    if (!r)
        return RegistryStep::OpenFailed;
    return modify(false, RegistryStep::OpenFailed, [&](Store &store, bool *changed) {
        Key *k = store.find(*r, key);
        if (k == nullptr)
            return RegistryStep::OpenFailed;
        // A key opened only for query may not have its values deleted.
        if (!may_set || !k->erase_value(name))
            return RegistryStep::Refused;
        *changed = true;
        return RegistryStep::Done;
    });
}

RegistryQuery registry_key_info(RegistryRoot root, const char *key, RegistryKeyFacts *facts) {
    *facts = {};
    std::shared_ptr<Store> hold;
    const Key *k = read_key(root, key, &hold);
    if (k == nullptr)
        return RegistryQuery::OpenFailed;
    facts->subkeys = static_cast<uint32_t>(k->children().size());
    for (const auto &[upper_name, child] : k->children())
        facts->max_subkey_len = std::max(facts->max_subkey_len, static_cast<uint32_t>(child->name().size()));
    facts->values = static_cast<uint32_t>(k->values().size());
    for (const registry::Value &v : k->values()) {
        facts->max_value_name_len = std::max(facts->max_value_name_len, static_cast<uint32_t>(v.name.size()));
        facts->max_value_len = std::max(facts->max_value_len, static_cast<uint32_t>(v.data.size()));
    }
    return RegistryQuery::Done;
}

bool registry_values(RegistryRoot root, const char *key, uint32_t name_room, uint32_t data_room,
                     const std::function<bool(std::string_view name, std::string_view data)> &take) {
    std::shared_ptr<Store> hold;
    const Key *k = read_key(root, key, &hold);
    if (k == nullptr)
        return false;
    for (const registry::Value &v : k->values()) {
        if (v.name.size() >= name_room || v.data.size() > data_room)
            continue;
        if (!take(v.name, v.data))
            break;
    }
    return true;
}

uint64_t registry_store_parses() noexcept { return parses.load(std::memory_order_relaxed); }

} // namespace brindle::platform
