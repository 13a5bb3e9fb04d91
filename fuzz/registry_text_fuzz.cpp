// The registry store's parser and writer on any bytes: whatever a damaged
// file holds, the store written from it reads back to the same store (its
// text is a fixed point), every value is found again by its name, and an
// edit made on the parsed store survives the round trip. Layout of an input:
// the file's bytes, then optionally a zero byte and "path\0name\0value" for
// the edit.
#include "fuzz_target.h"
#include "platform/registry_text.h"

#include <string>
#include <string_view>

using namespace brindle::platform::registry;

namespace {

std::string_view next_field(std::string_view &rest) {
    const size_t zero = rest.find('\0');
    const std::string_view field = rest.substr(0, zero);
    rest = zero == std::string_view::npos ? std::string_view() : rest.substr(zero + 1);
    return field;
}

// Every value of every key is found by its own name; returns the keys seen.
size_t check_keys(const Key &key) {
    size_t keys = 1;
    for (const Value &v : key.values())
        FUZZ_CHECK(key.value(v.name) == &v);
    for (const auto &[upper_name, child] : key.children()) {
        FUZZ_CHECK(key.child(child->name()) == child.get());
        keys += check_keys(*child);
    }
    return keys;
}

} // namespace

BRINDLE_FUZZ_TARGET(registry_text) {
    std::string_view rest(reinterpret_cast<const char *>(data), size);
    const std::string_view body = next_field(rest);
    const std::string_view path = next_field(rest), name = next_field(rest), value = next_field(rest);

    const auto store = Store::parse(body);
    for (size_t r = 0; r < kRoots; ++r)
        check_keys(store->root(static_cast<Root>(r)));
    const std::string text = store->text();
    const auto again = Store::parse(text);
    FUZZ_CHECK(again->text() == text);

    if (Key *key = store->create(Root::CurrentUser, path, nullptr); key != nullptr && storable_value_name(name)) {
        std::string bytes(value);
        bytes.push_back('\0');
        key->set_value(name, kString, bytes);
        const auto edited = Store::parse(store->text());
        const Key *found = edited->find(Root::CurrentUser, path);
        FUZZ_CHECK(found != nullptr);
        const Value *v = found->value(name);
        FUZZ_CHECK(v != nullptr && v->type == kString && v->data == bytes);
    }
    return 0;
}
