// Registry values through the exported interface. The same tables run on
// Linux against the library's own store (kept in a scratch configuration
// directory) and under Wine against the system registry (under a test key
// of HKEY_CURRENT_USER\Software that is deleted afterwards). Expected answers
// are worked out by hand in each row's comment.
#include "support/ole_helpers.h"
#include "support/temp_dir.h"
#include "system/registry_record.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#endif

using namespace brindle::test;
namespace fs = std::filesystem;

namespace {

int16_t put(std::string_view key, std::string_view name, std::string_view value) {
    Bstr k(key), n(name), v(value);
    return cPutRegistry(k.ref(), n.ref(), v.ref());
}
int16_t put_ext(int16_t root, std::string_view key, std::string_view name, std::string_view value) {
    Bstr k(key), n(name), v(value);
    return cPutRegistryExt(root, k.ref(), n.ref(), v.ref());
}
std::string get(std::string_view key, std::string_view name, std::string_view fallback) {
    Bstr k(key), n(name), d(fallback);
    return str(cGetRegistry(k.ref(), n.ref(), d.ref()));
}
std::string get_ext(int16_t root, std::string_view key, std::string_view name, std::string_view fallback) {
    Bstr k(key), n(name), d(fallback);
    return str(cGetRegistryExt(root, k.ref(), n.ref(), d.ref()));
}
int16_t kill_key(std::string_view key, std::string_view sub) {
    Bstr k(key), s(sub);
    return cKillRegistry(k.ref(), s.ref());
}
int16_t kill_key_ext(int16_t root, std::string_view key, std::string_view sub) {
    Bstr k(key), s(sub);
    return cKillRegistryExt(root, k.ref(), s.ref());
}
int16_t kill_value(std::string_view key, std::string_view name) {
    Bstr k(key), n(name);
    return cKillRegistryValue(k.ref(), n.ref());
}
int16_t kill_value_ext(int16_t root, std::string_view key, std::string_view name) {
    Bstr k(key), n(name);
    return cKillRegistryValueExt(root, k.ref(), n.ref());
}

// A String array of `rows` rows (from `lower1`) and `columns` columns (from
// `lower2`), every cell holding "junk".
struct Grid : SafeArray {
    Grid(ULONG rows, LONG lower1, ULONG columns = 2, LONG lower2 = 1)
        : SafeArray(VT_BSTR, {{rows, lower1}, {columns, lower2}}), rows_(rows), columns_(columns) {
        for (size_t i = 0; i < size_t{rows} * columns; ++i)
            data<BSTR>()[i] = SysAllocStringByteLen("junk", 4);
    }
    std::string cell(size_t row, size_t column) const {
        const BSTR b = data<BSTR>()[column * rows_ + row];
        return b == nullptr ? std::string() : std::string(reinterpret_cast<const char *>(b), SysStringByteLen(b));
    }
    ULONG rows_, columns_;
};

int16_t all_settings(SafeArray &grid, std::string_view key) {
    Bstr k(key);
    return cGetAllSettings(grid.ref(), k.ref());
}

#ifdef _WIN32
// Deletes a key with everything below it (cleanup only).
void delete_tree(HKEY root, const std::string &path) {
    HKEY key;
    if (RegOpenKeyExA(root, path.c_str(), 0, KEY_READ, &key) == ERROR_SUCCESS) {
        char name[512];
        for (;;) {
            DWORD len = sizeof name;
            if (RegEnumKeyExA(key, 0, name, &len, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
                break;
            delete_tree(root, path + "\\" + name);
        }
        RegCloseKey(key);
    }
    RegDeleteKeyA(root, path.c_str());
}
#endif

// Each test works below a key of its own: on Linux in a store in a scratch
// configuration directory, on Windows below HKEY_CURRENT_USER\Software
// (and HKEY_LOCAL_MACHINE\Software for the root tests), removed afterwards.
class Registry : public TempDirTest {
  protected:
    void SetUp() override {
        TempDirTest::SetUp();
        base_ = "Software\\BrindleTest" +
                std::to_string(std::chrono::steady_clock::now().time_since_epoch().count() % 1000000007);
#ifndef _WIN32
        const char *old = std::getenv("XDG_CONFIG_HOME");
        saved_ = old == nullptr ? std::nullopt : std::optional<std::string>(old);
        config_ = (dir_ / "config").string();
        setenv("XDG_CONFIG_HOME", config_.c_str(), 1);
#endif
    }
    void TearDown() override {
#ifdef _WIN32
        delete_tree(HKEY_CURRENT_USER, base_);
        delete_tree(HKEY_LOCAL_MACHINE, base_);
#else
        if (saved_)
            setenv("XDG_CONFIG_HOME", saved_->c_str(), 1);
        else
            unsetenv("XDG_CONFIG_HOME");
#endif
        TempDirTest::TearDown();
    }
    std::string key(std::string_view sub = {}) const { return sub.empty() ? base_ : base_ + "\\" + std::string(sub); }

    std::string base_;
#ifndef _WIN32
    std::optional<std::string> saved_;
    std::string config_;
    std::string store_file() const { return config_ + "/brindle-registry.reg"; }
#endif
};

} // namespace

TEST_F(Registry, ValuesReadBackAsWritten) {
    struct Row {
        std::string name, value, read_as, expected, why;
    };
    const std::string k = key("App");
    const std::string full(4096, 'f');
    const std::vector<Row> rows = {
        {"Name", "plain text", "Name", "plain text", "a value"},
        {"", "the default", "", "the default", "an empty name is the key's default value"},
        {"Case", "v", "CASE", "v", "value names compare without case"},
        {"q", "a \"quoted\" \\ path\\", "q", "a \"quoted\" \\ path\\", "quotes and backslashes"},
        {"lines", "one\r\ntwo\nthree", "lines", "one\r\ntwo\nthree", "line ends inside a value"},
        {"high", "\xE9\xFF\x01", "high", "\xE9\xFF\x01", "bytes above 127 and control bytes"},
        {"empty", "", "empty", "", "an empty value is a value, not the default"},
        {"cut", std::string("ab\0cd", 5), "cut", "ab", "the value is read up to its first zero"},
        {"big", full, "big", full, "4,096 characters and the zero fill the buffer exactly"},
        {"spaces ", " v ", "spaces ", " v ", "spaces are kept"},
    };
    for (const Row &r : rows)
        EXPECT_EQ(put(k, r.name, r.value), -1) << r.why;
    for (const Row &r : rows)
        EXPECT_EQ(get(k, r.read_as, "dflt"), r.expected) << r.why;
    // The stored count includes the zero, so one more character no longer fits
    // the 4,097 bytes offered: the default.
    EXPECT_EQ(put(k, "over", full + "x"), -1);
    EXPECT_EQ(get(k, "over", "dflt"), "dflt");
    // A second write replaces the value; key names compare without case.
    EXPECT_EQ(put(k, "Name", "second"), -1);
    EXPECT_EQ(get(key("APP"), "name", "dflt"), "second");
    // Missing values and keys give the default as it stands, up to its zero.
    EXPECT_EQ(get(k, "missing", "dflt"), "dflt");
    EXPECT_EQ(get(key("None"), "Name", "dflt"), "dflt");
    EXPECT_EQ(get(key("None"), "Name", std::string("d\0x", 3)), "d");
    EXPECT_EQ(get(k, "missing", ""), "");
    // A deep key is made with every level.
    EXPECT_EQ(put(key("a\\b\\c"), "v", "deep"), -1);
    EXPECT_EQ(get(key("a\\b\\c"), "v", "dflt"), "deep");
    EXPECT_EQ(get(key("a\\b\\c\\"), "v", "dflt"), "deep");
}

TEST_F(Registry, EmptyKeyNamesAndStatusCodes) {
    Bstr empty, name("n"), value("v");
    EXPECT_EQ(cPutRegistry(empty.ref(), name.ref(), value.ref()), 1);
    EXPECT_EQ(cPutRegistryExt(3, empty.ref(), name.ref(), value.ref()), 1);
    EXPECT_EQ(cKillRegistry(empty.ref(), name.ref()), 1);
    EXPECT_EQ(cKillRegistryExt(2, empty.ref(), name.ref()), 1);
    EXPECT_EQ(cKillRegistryValue(empty.ref(), name.ref()), 1);
    EXPECT_EQ(cKillRegistryValueExt(2, empty.ref(), name.ref()), 1);
    EXPECT_EQ(str(cGetRegistry(empty.ref(), name.ref(), value.ref())), "");
    EXPECT_EQ(str(cGetRegistryExt(2, empty.ref(), name.ref(), value.ref())), "");
    // A key name whose first byte is zero is empty too.
    Bstr zero(std::string_view("\0Software", 9));
    EXPECT_EQ(cPutRegistry(zero.ref(), name.ref(), value.ref()), 1);

    const std::string k = key("K");
    ASSERT_EQ(put(key("K\\Leaf"), "v", "1"), -1);
    ASSERT_EQ(put(key("K\\Branch\\Twig"), "v", "1"), -1);
    ASSERT_EQ(put(k, "a", "1"), -1);
    struct Row {
        int16_t expected;
        std::string key, sub, why;
    };
    const std::vector<Row> kills = {
        {3, key("Missing"), "Leaf", "the key cannot be opened"},
        {5, k, "Missing", "the subkey does not exist"},
        {5, k, "Branch", "a key with keys below it is not deleted"},
        {-1, k, "leaf", "a leaf key, named without regard to case"},
        {5, k, "Leaf", "already gone"},
        {-1, k, "Branch\\Twig", "a subkey path"},
        {-1, key("K\\Branch"), "", "an empty subkey deletes the key itself"},
    };
    for (const Row &r : kills)
        EXPECT_EQ(kill_key(r.key, r.sub), r.expected) << r.why;
    EXPECT_EQ(get(key("K\\Leaf"), "v", "gone"), "gone");
    EXPECT_EQ(get(k, "a", "gone"), "1"); // the parent keeps its values

    // Values: the plain form deletes; the Ext form opens the key for query
    // only, so the system refuses (5) and the value stays.
    EXPECT_EQ(kill_value_ext(2, k, "a"), 5);
    EXPECT_EQ(get(k, "a", "gone"), "1");
    EXPECT_EQ(kill_value_ext(2, key("Missing"), "a"), 3);
    EXPECT_EQ(kill_value(k, "A"), -1);
    EXPECT_EQ(get(k, "a", "gone"), "gone");
    EXPECT_EQ(kill_value(k, "a"), 5);
    EXPECT_EQ(kill_value(key("Missing"), "a"), 3);
    // The key itself stays after its last value goes.
    EXPECT_EQ(kill_key(key(), "K"), -1);
}

TEST_F(Registry, RootSelectors) {
    // Selectors other than 1, 3, 4, 5, 6 and 7 mean the current user's root.
    for (const int16_t selector : {int16_t{2}, int16_t{0}, int16_t{99}, int16_t{-1}, int16_t{8}}) {
        const std::string name = "s" + std::to_string(selector);
        EXPECT_EQ(put_ext(selector, key("Roots"), name, "hkcu"), -1) << selector;
        EXPECT_EQ(get(key("Roots"), name, "none"), "hkcu") << selector;
        EXPECT_EQ(get_ext(selector, key("Roots"), name, "none"), "hkcu") << selector;
    }
    // HKEY_LOCAL_MACHINE is a root of its own.
    EXPECT_EQ(put_ext(3, key("Roots"), "m", "hklm"), -1);
    EXPECT_EQ(get_ext(3, key("Roots"), "m", "none"), "hklm");
    EXPECT_EQ(get(key("Roots"), "m", "none"), "none");
    EXPECT_EQ(kill_key_ext(3, key(), "Roots"), -1);
    EXPECT_EQ(get_ext(3, key("Roots"), "m", "none"), "none");
    EXPECT_EQ(get(key("Roots"), "s2", "none"), "hkcu");
#ifndef _WIN32
    // The performance-data and dynamic-data roots hold nothing on Linux.
    for (const int16_t selector : {int16_t{5}, int16_t{7}}) {
        EXPECT_EQ(put_ext(selector, "Software", "v", "x"), 2) << selector;
        EXPECT_EQ(get_ext(selector, "Software", "v", "none"), "none") << selector;
        EXPECT_EQ(kill_key_ext(selector, "Software", "x"), 3) << selector;
        EXPECT_EQ(kill_value_ext(selector, "Software", "v"), 3) << selector;
    }
#endif
}

TEST_F(Registry, KeyInfo) {
    // Subkeys "abcdefg" (7) and "x"; values "abcde" (5) = 11 characters (12
    // bytes with the zero, as the Linux store keeps them), "a" and "b".
    const std::string k = key("Info");
    ASSERT_EQ(put(k + "\\abcdefg", "v", "1"), -1);
    ASSERT_EQ(put(k + "\\x", "v", "1"), -1);
    ASSERT_EQ(put(k, "a", "b"), -1);
    ASSERT_EQ(put(k, "abcde", "hello world"), -1);
    ASSERT_EQ(put(k, "b", "c"), -1);
    RegistryKeyInfo info{};
    info.Summary = SysAllocStringByteLen("old", 3); // freed and replaced
    Bstr kb(k);
    EXPECT_EQ(cRegistryKeyInfo(kb.ref(), &info), -1);
    EXPECT_EQ(info.SubKeys, 2);
    EXPECT_EQ(info.MaxSubKeyLen, 7);
    EXPECT_EQ(info.Values, 3);
    EXPECT_EQ(info.MaxValueNameLen, 5);
#ifdef _WIN32
    // The system keeps strings in UTF-16: 12 characters with the zero are 24 bytes.
    const int32_t longest = 24;
    const char *summary = "2;7;3;5;24";
#else
    const int32_t longest = 12;
    const char *summary = "2;7;3;5;12";
#endif
    EXPECT_EQ(info.MaxValueLen, longest);
    ASSERT_NE(info.Summary, nullptr);
    EXPECT_EQ(std::string(reinterpret_cast<const char *>(info.Summary), SysStringByteLen(info.Summary)), summary);

    // A missing key, or an empty name, leaves the record alone.
    RegistryKeyInfo untouched{7, 7, 7, 7, 7, nullptr};
    Bstr missing(key("Missing")), empty;
    EXPECT_EQ(cRegistryKeyInfo(missing.ref(), &untouched), 0);
    EXPECT_EQ(cRegistryKeyInfo(empty.ref(), &untouched), 0);
    EXPECT_EQ(untouched.SubKeys, 7);
    EXPECT_EQ(untouched.Summary, nullptr);
    // An empty key: all zero.
    ASSERT_EQ(put(key("Bare\\child"), "v", "1"), -1);
    ASSERT_EQ(kill_key(key("Bare"), "child"), -1);
    Bstr bare(key("Bare"));
    EXPECT_EQ(cRegistryKeyInfo(bare.ref(), &info), -1);
    EXPECT_EQ(std::string(reinterpret_cast<const char *>(info.Summary), SysStringByteLen(info.Summary)), "0;0;0;0;0");
    SysFreeString(info.Summary);
}

TEST_F(Registry, AllSettingsIntoTwoColumns) {
    // Names in alphabetical order, so that the system's enumeration order and
    // the order of writing agree.
    const std::string k = key("All");
    ASSERT_EQ(put(k, "alpha", "1"), -1);
    ASSERT_EQ(put(k, "beta", ""), -1);
    ASSERT_EQ(put(k, "gamma", "three"), -1);

    Grid five(5, 1);
    EXPECT_EQ(all_settings(five, k), 3);
    const char *expected[5][2] = {{"alpha", "1"}, {"beta", ""}, {"gamma", "three"}, {"", ""}, {"", ""}};
    for (size_t r = 0; r < 5; ++r)
        for (size_t c = 0; c < 2; ++c)
            EXPECT_EQ(five.cell(r, c), expected[r][c]) << r << "," << c;

    // Rows used up: -2, the rows filled stay filled.
    Grid two(2, 0);
    EXPECT_EQ(all_settings(two, k), -2);
    EXPECT_EQ(two.cell(1, 0), "beta");
    Grid three(3, 1);
    EXPECT_EQ(all_settings(three, k), -2); // the last row was needed, none left
    EXPECT_EQ(three.cell(2, 1), "three");
    Grid none(0, 1);
    EXPECT_EQ(all_settings(none, k), -2);

    // Three columns: the name goes to the first, the data to the last, the
    // middle one is not touched.
    Grid wide(4, 5, 3, 0);
    EXPECT_EQ(all_settings(wide, k), 3);
    EXPECT_EQ(wide.cell(2, 0), "gamma");
    EXPECT_EQ(wide.cell(2, 2), "three");
    EXPECT_EQ(wide.cell(2, 1), "junk");
    EXPECT_EQ(wide.cell(3, 1), "junk");
    EXPECT_EQ(wide.cell(3, 2), "");

    // The key's default value has an empty name.
    ASSERT_EQ(put(key("Def"), "", "dv"), -1);
    Grid def(2, 1);
    EXPECT_EQ(all_settings(def, key("Def")), 1);
    EXPECT_EQ(def.cell(0, 0), "");
    EXPECT_EQ(def.cell(0, 1), "dv");

    // Refusals: a missing key -1; an empty key, an array of one or three
    // dimensions, a missing array, a Long array: 0 and nothing touched.
    Grid g(2, 1);
    EXPECT_EQ(all_settings(g, key("Missing")), -1);
    EXPECT_EQ(all_settings(g, ""), 0);
    EXPECT_EQ(g.cell(0, 0), "junk");
    SafeArray flat(VT_BSTR, 1, 5);
    EXPECT_EQ(all_settings(flat, k), 0);
    SafeArray cube(VT_BSTR, {{2, 1}, {2, 1}, {2, 1}});
    EXPECT_EQ(all_settings(cube, k), 0);
    SafeArray longs(VT_I4, {{4, 1}, {2, 1}});
    EXPECT_EQ(all_settings(longs, k), 0);
    Bstr kb(k);
    EXPECT_EQ(cGetAllSettings(nullptr, kb.ref()), 0);
    SAFEARRAY *null_array = nullptr;
    EXPECT_EQ(cGetAllSettings(&null_array, kb.ref()), 0);
}

TEST_F(Registry, AllSettingsSkipsWhatDoesNotFit) {
    // Data of 2,048 bytes (2,047 characters and the zero) fits, 2,049 does
    // not; a name of 255 characters fits the 256 bytes with its zero, 256
    // does not.
    const std::string k = key("Room");
    ASSERT_EQ(put(k, "a", std::string(2047, 'd')), -1);
    ASSERT_EQ(put(k, "b", std::string(2048, 'd')), -1);
    ASSERT_EQ(put(k, "c" + std::string(254, 'n'), "long name"), -1);
    ASSERT_EQ(put(k, "d" + std::string(255, 'n'), "too long a name"), -1);
    ASSERT_EQ(put(k, "e", "last"), -1);
    Grid g(6, 1);
    EXPECT_EQ(all_settings(g, k), 3);
    EXPECT_EQ(g.cell(0, 1), std::string(2047, 'd'));
    EXPECT_EQ(g.cell(1, 0), "c" + std::string(254, 'n'));
    EXPECT_EQ(g.cell(2, 1), "last");
    EXPECT_EQ(g.cell(3, 0), "");
}

#ifndef _WIN32
#include <fstream>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

TEST_F(Registry, StoreIsRegedit4Text) {
    ASSERT_EQ(put("Software\\Zed", "Name", "a \"b\" \\c"), -1);
    ASSERT_EQ(put("Software\\Alpha\\Beta", "", "dflt"), -1);
    ASSERT_EQ(put("software\\zed", "lines", "x\r\ny"), -1);
    ASSERT_EQ(put_ext(3, "Software\\M", "v", "1"), -1);
    // Keys in order of their names beneath each root, the key's own case
    // kept; a value holding line ends becomes a byte list of REG_SZ (type 1)
    // with its zero: x CR LF y NUL.
    const std::string expected = "REGEDIT4\r\n\r\n"
                                 "[HKEY_CURRENT_USER\\Software]\r\n\r\n"
                                 "[HKEY_CURRENT_USER\\Software\\Alpha]\r\n\r\n"
                                 "[HKEY_CURRENT_USER\\Software\\Alpha\\Beta]\r\n@=\"dflt\"\r\n\r\n"
                                 "[HKEY_CURRENT_USER\\Software\\Zed]\r\n"
                                 "\"Name\"=\"a \\\"b\\\" \\\\c\"\r\n"
                                 "\"lines\"=hex(1):78,0d,0a,79,00\r\n\r\n"
                                 "[HKEY_LOCAL_MACHINE\\Software]\r\n\r\n"
                                 "[HKEY_LOCAL_MACHINE\\Software\\M]\r\n\"v\"=\"1\"\r\n\r\n";
    EXPECT_EQ(read_whole_file(store_file()), expected);
}

TEST_F(Registry, ReadsFilesOfTheRegistryEditor) {
    fs::create_directories(config_);
    // As the Windows editor exports: the version 5 header, a comment, byte
    // lists over continued lines, LF line ends, abbreviated roots.
    write_file(store_file(), "Windows Registry Editor Version 5.00\n"
                             "; exported\n"
                             "[HKEY_CURRENT_USER\\Software\\Ed]\n"
                             "\"word\"=dword:00434241\n"
                             "\"zero\"=dword:00000000\n"
                             "\"bin\"=hex:41,42,\\\n"
                             "  43,00,44\n"
                             "\"expand\"=hex(2):25,50,41,54,48,25,00\n"
                             "@=\"default\"\n"
                             "[-HKEY_CURRENT_USER\\Software\\Gone]\n"
                             "\"lost\"=\"in a deleted key\"\n"
                             "[HKCU\\Software\\Short]\n"
                             "\"s\"=\"short root\"\n");
    // Numbers and bytes come back as they are stored, up to the first zero:
    // 0x00434241 is the bytes 41 42 43 00, "ABC".
    EXPECT_EQ(get("Software\\Ed", "word", "d"), "ABC");
    EXPECT_EQ(get("Software\\Ed", "zero", "d"), "");
    EXPECT_EQ(get("Software\\Ed", "bin", "d"), "ABC");
    EXPECT_EQ(get("Software\\Ed", "expand", "d"), "%PATH%");
    EXPECT_EQ(get("Software\\Ed", "", "d"), "default");
    EXPECT_EQ(get("Software\\Gone", "lost", "d"), "d");
    EXPECT_EQ(get("Software\\Short", "s", "d"), "short root");
    // A write keeps every value, in the store's own form.
    ASSERT_EQ(put("Software\\Ed", "new", "n"), -1);
    EXPECT_EQ(get("Software\\Ed", "bin", "d"), "ABC");
    EXPECT_EQ(get("Software\\Ed", "word", "d"), "ABC");
    const std::string text = read_whole_file(store_file());
    EXPECT_NE(text.find("\"word\"=dword:00434241\r\n"), std::string::npos);
    EXPECT_NE(text.find("\"bin\"=hex:41,42,43,00,44\r\n"), std::string::npos);
}

TEST_F(Registry, DamagedStoresReadAsFarAsValid) {
    fs::create_directories(config_);
    struct Row {
        std::string file, why;
    };
    const std::string good = "[HKEY_CURRENT_USER\\Software\\D]\r\n\"ok\"=\"yes\"\r\n";
    const std::vector<Row> rows = {
        {good + "\"half\"=\"no end", "cut inside a value"},
        {good + "[HKEY_CURRENT_USER\\Softw", "cut inside a key line"},
        {good + "\"bad\"=hex:4g,00\r\n", "a bad byte"},
        {good + "\"bad\"=dword:123456789\r\n", "too many digits"},
        {good + "\"bad\"=hex(zz):00\r\n", "a bad type"},
        {good + "\"bad\"=\"x\" trailing\r\n", "text after the quotes"},
        {good + "garbage\r\n\x01\x02\x03\r\n=\r\n\"\r\n@\r\n", "junk lines"},
        {good + "\"bad\"=hex:41,\\", "a continued line at the end of the file"},
        {std::string("\0\0\0", 3) + "\r\n" + good, "zero bytes first"},
        {"REGEDIT4\r\n[HKEY_NOWHERE\\x]\r\n\"ok\"=\"no\"\r\n" + good, "an unknown root"},
        {"\xEF\xBB\xBFREGEDIT4\r\n" + good, "a byte-order mark"},
    };
    for (const Row &r : rows) {
        write_file(store_file(), r.file);
        EXPECT_EQ(get("Software\\D", "ok", "d"), "yes") << r.why;
        EXPECT_EQ(get("Software\\D", "bad", "d"), "d") << r.why;
        EXPECT_EQ(get("Software\\D", "half", "d"), "d") << r.why;
        // Writing over a damaged store keeps what was valid.
        EXPECT_EQ(put("Software\\D", "new", "n"), -1) << r.why;
        EXPECT_EQ(get("Software\\D", "ok", "d"), "yes") << r.why;
        EXPECT_EQ(get("Software\\D", "new", "d"), "n") << r.why;
    }
    // A store that is a directory, or unreadable, is no store: defaults and 2.
    fs::remove(store_file());
    fs::create_directory(store_file());
    EXPECT_EQ(get("Software\\D", "ok", "d"), "d");
    EXPECT_EQ(put("Software\\D", "ok", "x"), 2);
}

TEST_F(Registry, LargeKeysStayWithinTheirBuffers) {
    // A key of 100,000 values, written as a file: v00000 .. v99999.
    fs::create_directories(config_);
    std::string text = "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Big]\r\n";
    char line[64];
    for (int i = 0; i < 100000; ++i) {
        std::snprintf(line, sizeof line, "\"v%05d\"=\"%d\"\r\n", i, i);
        text += line;
    }
    write_file(store_file(), text);
    Bstr k("Software\\Big");
    RegistryKeyInfo info{};
    EXPECT_EQ(cRegistryKeyInfo(k.ref(), &info), -1);
    EXPECT_EQ(info.Values, 100000);
    EXPECT_EQ(info.MaxValueNameLen, 6);
    EXPECT_EQ(info.MaxValueLen, 6); // "99999" and its zero
    SysFreeString(info.Summary);
    Grid ten(10, 1);
    EXPECT_EQ(all_settings(ten, "Software\\Big"), -2);
    EXPECT_EQ(ten.cell(9, 0), "v00009");
    // The count is an Integer: at most 32,767 rows are used.
    Grid many(40000, 1);
    EXPECT_EQ(all_settings(many, "Software\\Big"), -2);
    EXPECT_EQ(many.cell(32766, 0), "v32766");
    EXPECT_EQ(many.cell(32766, 1), "32766");
    EXPECT_EQ(many.cell(32767, 0), "junk");
    EXPECT_EQ(get("Software\\Big", "v99999", "d"), "99999");
    EXPECT_EQ(put("Software\\Big", "v99999", "changed"), -1);
    EXPECT_EQ(get("Software\\Big", "v99999", "d"), "changed");
    EXPECT_EQ(get("Software\\Big", "v00000", "d"), "0");
}

TEST_F(Registry, AKilledWriterLeavesTheOldOrTheNewStore) {
    // Many values make each rewrite take long enough to be cut in the middle.
    // The store starts in the writer's own form, so that every version of it
    // is this text with or without the line of k before the last line end.
    fs::create_directories(config_);
    std::string head = "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software]\r\n\r\n[HKEY_CURRENT_USER\\Software\\Kill]\r\n";
    for (int i = 0; i < 4000; ++i)
        head += "\"filler" + std::to_string(i) + "\"=\"" + std::string(40, 'x') + "\"\r\n";
    write_file(store_file(), head + "\r\n");
    for (int round = 0; round < 40; ++round) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (int i = 0;; ++i)
                put("Software\\Kill", "k", "v" + std::to_string(i));
        }
        usleep(static_cast<useconds_t>(300 + round * 500));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        const std::string now = read_whole_file(store_file());
        const std::string value = get("Software\\Kill", "k", "none");
        if (value == "none")
            EXPECT_EQ(now, head + "\r\n") << "round " << round;
        else
            EXPECT_EQ(now, head + "\"k\"=\"" + value + "\"\r\n\r\n") << "round " << round;
        EXPECT_EQ(get("Software\\Kill", "filler3999", "d"), std::string(40, 'x')) << "round " << round;
    }
    // The writers were cut in the middle of writing: their temporaries show it.
    int cut = 0;
    for (const auto &entry : fs::directory_iterator(config_))
        cut += entry.path().extension() == ".tmp";
    std::printf("  %d of 40 writers killed while writing a temporary file\n", cut);
    // Temporary files of killed writers stay behind (hidden, named by their
    // process) but never stand in the way of the next write.
    EXPECT_EQ(put("Software\\Kill", "k", "final"), -1);
    EXPECT_EQ(get("Software\\Kill", "k", "none"), "final");
}

TEST_F(Registry, TwoWritersKeepBothValues) {
    pid_t children[2];
    for (int w = 0; w < 2; ++w) {
        children[w] = fork();
        ASSERT_GE(children[w], 0);
        if (children[w] == 0) {
            const std::string name = "w" + std::to_string(w);
            int bad = 0;
            // A lost update shows as the writer's own last value gone.
            for (int i = 0; i < 150; ++i) {
                if (i > 0)
                    bad += get("Software\\Two", name, "lost") != std::to_string(i - 1);
                bad += put("Software\\Two", name, std::to_string(i)) != -1;
            }
            _exit(bad == 0 ? 0 : 1);
        }
    }
    for (const pid_t child : children) {
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    EXPECT_EQ(get("Software\\Two", "w0", "lost"), "149");
    EXPECT_EQ(get("Software\\Two", "w1", "lost"), "149");
}

TEST_F(Registry, NamesTheStoreCannotHold) {
    // A value name with a line end cannot stand on a line: 5, the key made.
    EXPECT_EQ(put("Software\\N", "a\nb", "v"), 5);
    Bstr k("Software\\N");
    RegistryKeyInfo info{};
    EXPECT_EQ(cRegistryKeyInfo(k.ref(), &info), -1);
    EXPECT_EQ(info.Values, 0);
    SysFreeString(info.Summary);
    // Key paths with an empty level, a level of 256 characters, a line end,
    // or more than 512 levels are refused as the system refuses them.
    std::string deep;
    for (int i = 0; i < 513; ++i)
        deep += "k\\";
    for (const std::string &bad : {std::string("\\Software"), std::string("Software\\\\x"), "Software\\" + std::string(256, 'k'),
                                   std::string("Soft\nware"), deep}) {
        EXPECT_EQ(put(bad, "v", "x"), 2) << bad.substr(0, 20);
        EXPECT_EQ(get(bad, "v", "d"), "d");
    }
    EXPECT_EQ(put("Software\\" + std::string(255, 'k'), "v", "x"), -1);
}
#endif
