// The registry store's text engine, and (on Linux) the reuse of the parsed
// store across reads.
#include "platform/registry.h"
#include "platform/registry_text.h"
#include "system/registry_values.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <optional>
#include <random>
#include <string>
#include <vector>

using namespace brindle::platform::registry;
using brindle::test::TempDirTest;

TEST(RegistryText, ValueDataForms) {
    struct Row {
        const char *text;
        std::optional<uint32_t> type;
        std::string bytes;
    };
    using namespace std::string_literals;
    const Row rows[] = {
        {R"("plain")", kString, "plain\0"s},
        {R"("a\\b\"c")", kString, "a\\b\"c\0"s},
        {R"("")", kString, "\0"s},
        {"dword:1", kDword, "\x01\0\0\0"s},
        {"DWORD:FFFFFFFE", kDword, "\xFE\xFF\xFF\xFF"s},
        {"hex:", kBinary, ""},
        {"hex: 41 , 42 ,", kBinary, "AB"},
        {"hex(7):61,00,00", 7u, "a\0\0"s},
        {"hex(ffffffff):0", 0xFFFFFFFFu, "\0"s},
        {"-", std::nullopt, ""},         // a deletion
        {"dword:", std::nullopt, ""},    // no digits
        {"dword:1x", std::nullopt, ""},  // not hex
        {"hex:123", std::nullopt, ""},   // three digits in a byte
        {"hex:41,,42", std::nullopt, ""}, // an empty byte inside the list
        {"hex(1:41", std::nullopt, ""},  // unclosed type
        {"\"open", std::nullopt, ""},    // unclosed quote
        {"\"a\" b", std::nullopt, ""},   // text after the quotes
    };
    for (const Row &r : rows) {
        const auto v = parse_value_data(r.text);
        ASSERT_EQ(v.has_value(), r.type.has_value()) << r.text;
        if (v) {
            EXPECT_EQ(v->type, *r.type) << r.text;
            EXPECT_EQ(v->data, r.bytes) << r.text;
        }
    }
}

TEST(RegistryText, KeyPaths) {
    EXPECT_EQ(split_key_path("a\\b\\c")->size(), 3u);
    EXPECT_EQ(split_key_path("a\\b\\")->size(), 2u);
    EXPECT_TRUE(split_key_path("")->empty());
    for (const std::string &bad : std::vector<std::string>{"\\a", "a\\\\b", "a\\b\\\\", "\\", std::string(256, 'k'), "a\rb"})
        EXPECT_FALSE(split_key_path(bad).has_value()) << bad.substr(0, 10);
    EXPECT_TRUE(split_key_path(std::string(255, 'k')).has_value());
}

// Random values of every kind survive the text byte for byte: names with
// quotes and backslashes, data with zeros, line ends and high bytes, types
// 0 to 11, in keys of random case.
TEST(RegistryText, RandomStoresRoundTrip) {
    std::mt19937 rng(20261124);
    auto bytes = [&](size_t most, bool line_ends) {
        std::string s(rng() % (most + 1), '\0');
        for (char &c : s) {
            c = static_cast<char>(rng() % 256);
            if (!line_ends && (c == '\r' || c == '\n'))
                c = '"';
        }
        return s;
    };
    for (int round = 0; round < 50; ++round) {
        Store store;
        struct Want {
            Root root;
            std::string path, name;
            uint32_t type;
            std::string data;
        };
        std::vector<Want> wants;
        for (int i = 0; i < 40; ++i) {
            const auto root = static_cast<Root>(rng() % kRoots);
            std::string path = "K" + std::to_string(rng() % 5);
            if (rng() % 2)
                path += "\\Sub" + std::to_string(rng() % 3) + "\\[x] \"y\"";
            const std::string name = std::to_string(i) + ":" + bytes(12, false);
            const uint32_t type = rng() % 12;
            std::string data = bytes(40, true);
            if (type == kString && rng() % 2)
                data = "plain \\ \"text\"" + std::to_string(i) + std::string(1, '\0');
            Key *k = store.create(root, path, nullptr);
            ASSERT_NE(k, nullptr);
            k->set_value(name, type, data);
            wants.push_back({root, path, name, type, data});
        }
        const std::string text = store.text();
        const auto back = Store::parse(text);
        EXPECT_EQ(back->text(), text);
        for (const Want &w : wants) {
            const Key *k = back->find(w.root, w.path);
            ASSERT_NE(k, nullptr) << w.path;
            const Value *v = k->value(w.name);
            ASSERT_NE(v, nullptr);
            EXPECT_EQ(v->type, w.type);
            EXPECT_EQ(v->data, w.data);
        }
    }
}

TEST(RegistryText, ValuesKeepTheirOrderAndNamesTheirCase) {
    Key k("k");
    k.set_value("Beta", kString, "1");
    k.set_value("alpha", kString, "2");
    k.set_value("BETA", kString, "3"); // the same value
    k.set_value("gamma", kString, "4");
    ASSERT_EQ(k.values().size(), 3u);
    EXPECT_EQ(k.values()[0].name, "Beta");
    EXPECT_EQ(k.values()[0].data, "3");
    EXPECT_TRUE(k.erase_value("ALPHA"));
    EXPECT_FALSE(k.erase_value("alpha"));
    ASSERT_EQ(k.values().size(), 2u);
    EXPECT_EQ(k.value("GAMMA")->data, "4"); // found again after the shift
    EXPECT_EQ(k.values()[1].name, "gamma");
}

#ifndef _WIN32
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

// Reading 10,000 values one by one parses the store once; a store replaced
// by another process (a new file) is parsed again.
class RegistryCache : public TempDirTest {
  protected:
    void SetUp() override {
        TempDirTest::SetUp();
        const char *old = std::getenv("XDG_CONFIG_HOME");
        saved_ = old == nullptr ? std::nullopt : std::optional<std::string>(old);
        setenv("XDG_CONFIG_HOME", dir_.c_str(), 1);
    }
    void TearDown() override {
        if (saved_)
            setenv("XDG_CONFIG_HOME", saved_->c_str(), 1);
        else
            unsetenv("XDG_CONFIG_HOME");
        TempDirTest::TearDown();
    }
    std::optional<std::string> saved_;
};

TEST_F(RegistryCache, TenThousandReadsParseOnce) {
    using brindle::platform::RegistryRoot;
    using brindle::platform::registry_store_parses;
    std::string text = "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Many]\r\n";
    char line[64];
    for (int i = 0; i < 10000; ++i) {
        std::snprintf(line, sizeof line, "\"n%d\"=\"%d\"\r\n", i, i * 7);
        text += line;
    }
    write_file("brindle-registry.reg", text);
    const uint64_t before = registry_store_parses();
    for (int i = 0; i < 10000; ++i)
        ASSERT_EQ(brindle::system::registry_value(RegistryRoot::CurrentUser, "Software\\Many", "n" + std::to_string(i),
                                                  "d"),
                  std::to_string(i * 7));
    EXPECT_EQ(registry_store_parses() - before, 1u);

    // Another writer replaces the file (same size, a new file): seen at once.
    std::string other = text;
    other.replace(other.find("\"n5\"=\"35\""), 9, "\"n5\"=\"99\"");
    write_file("other.tmp", other);
    std::filesystem::rename("other.tmp", "brindle-registry.reg");
    EXPECT_EQ(brindle::system::registry_value(RegistryRoot::CurrentUser, "Software\\Many", "n5", "d"), "99");
    EXPECT_EQ(registry_store_parses() - before, 2u);
    // Our own write keeps the parsed store it wrote: reads after it parse
    // nothing.
    EXPECT_EQ(brindle::platform::registry_put(RegistryRoot::CurrentUser, "Software\\Many", "n6", "x"),
              brindle::platform::RegistryStep::Done);
    const uint64_t after_write = registry_store_parses();
    EXPECT_EQ(brindle::system::registry_value(RegistryRoot::CurrentUser, "Software\\Many", "n6", "d"), "x");
    EXPECT_EQ(brindle::system::registry_value(RegistryRoot::CurrentUser, "Software\\Many", "n9999", "d"), "69993");
    EXPECT_EQ(registry_store_parses(), after_write);
}
#endif
