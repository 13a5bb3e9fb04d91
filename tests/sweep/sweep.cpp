// The adversarial sweep: every export of the list (tools/gen_sweep.py writes
// the table) is called with hostile arguments, each call in a child process
// with a time limit. A crash, a sanitizer or leak report, a hang, or a string
// result that is a null handle fails the export's test, naming the arguments.
//
// Per export the calls are: every argument at an ordinary value; each
// argument in turn through its pool of hostile values, the others ordinary
// (a fixed-seed selection when there are more than kOneAtATime); kCombined
// random combinations; and, per argument that takes text, one call with 10 MB
// of text there and ordinary values elsewhere, under a longer limit (a hang
// detector: a linear pass over 10 MB takes milliseconds). No call gets more
// than one long (70,000) argument, so an export that is n x m by nature
// (a pattern against a text) is never asked for 70,000 x 70,000.
//
// Environment: BRINDLE_SWEEP_JOBS (children at once, default 2),
// BRINDLE_SWEEP_LIMIT and BRINDLE_SWEEP_BIG_LIMIT (seconds, default 10 and 30),
// BRINDLE_SWEEP_SLOW (seconds: list the calls that took at least this long).
#include "sweep/sweep.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#include <sanitizer/lsan_interface.h>
// The allocator's statistics (GCC ships no header for them).
extern "C" size_t __sanitizer_get_current_allocated_bytes();
#define BRINDLE_SWEEP_LSAN 1

// A call that asks for gigabytes (a width of 2^31 - 1) meets the library's
// out-of-memory path, as it does with the address-space limit of the other
// builds, instead of filling the machine.
extern "C" const char *__asan_default_options() { return "max_allocation_size_mb=1024:allocator_may_return_null=1"; }
#endif

namespace brindle::sweep {
namespace {

namespace fs = std::filesystem;

// ---------------------------------------------------------------------------
// What is not swept, or swept with safe values only. The one place for it.

struct Excluded {
    const char *name;
    const char *reason;
};
const Excluded kExcluded[] = {
    {"cSetLocalDateTime", "sets the machine's clock"},
    {"cSetLocalTime", "sets the machine's clock"},
    {"cKillProcess", "ends any process by identifier (1 is init; the sweep runs as root)"},
    {"cProcessCreate", "starts whatever program its text names"},
    {"cRunFile", "hands a document or an address to the desktop's open action"},
};

struct SafeValues {
    const char *name;
    const char *arg;
    std::vector<std::string> labels; // the only pool values this argument gets
    const char *reason;
};
const SafeValues kSafeValues[] = {
    {"cSleep", "Milliseconds", {"3", "0", "1", "-1", "-2147483648"}, "sleeps as long as it is asked to"},
    // The record helpers trust the caller's length by contract; the sweep's
    // records (and "As Any" buffers) are at least 65,536 bytes long.
    {"cTypesCompare", "Length", {"3", "0", "1", "-1", "65536", "-2147483648"}, "trusts the record's length"},
    {"cTypesCopy", "Length", {"3", "0", "1", "-1", "65536", "-2147483648"}, "trusts the record's length"},
    {"cTypeTransfert", "Length", {"3", "0", "1", "-1", "65536", "-2147483648"}, "trusts the record's length"},
    {"cTypeClear", "Length", {"3", "0", "1", "-1", "65536", "-2147483648"}, "trusts the record's length"},
    {"cTypeMid", "Start", {"3", "0", "1", "-1", "-2147483648"}, "trusts the record's length"},
    {"cTypeMid", "Length", {"3", "0", "1", "-1", "-2147483648"}, "trusts the record's length"},
    // "" is 127.0.0.1; any other name would go to the system's resolver and
    // the network. Ports stay on the loopback host and connects never wait.
    {"cSKT_ConnectTCP", "Host", {"null string", "\"\""}, "resolves host names over the network"},
    {"cSKT_ConnectUDP", "Host", {"null string", "\"\""}, "resolves host names over the network"},
};

// Families that name files: their exports run with a fresh copy of the
// scratch folder, and their file-name arguments get names without path
// separators or drive prefixes, so that nothing outside the scratch folder is
// written, deleted or walked.
const char *const kFileFamilies[] = {
    "files_paths.bas", "files_search.bas", "compress_bytepair.bas", "compress_crc32.bas",
    "compress_gzip.bas", "compress_lzari.bas", "convert_btoa.bas", "arrays_dedup.bas",
    "stores_huge_strings.bas", "stores_disk_images.bas", "system_profiles.bas", "files_copy.bas",
    "files_attributes.bas", "streams_files.bas", "files_text.bas", "crypto_blocks.bas",
    "crypto_own.bas",
};
const char *const kFileArgWords[] = {"File", "Path", "Pattern", "Root", "Mask", "Prefix",
                                     "Source", "Target", "Drive", "Directory", "Ext"};

constexpr size_t kOneAtATime = 36; // most hostile-value calls per export
constexpr size_t kCombined = 10;   // random combinations per export
constexpr size_t kLongLength = 70000;
constexpr size_t kBigLength = 10u << 20;
constexpr rlim_t kMemoryLimit = rlim_t{1} << 30; // address space of a child (not under ASan)

// ---------------------------------------------------------------------------
// Deterministic randomness.

struct Rng {
    uint64_t state;
    explicit Rng(uint64_t seed) : state(seed) {}
    uint64_t next() {
        uint64_t z = (state += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    size_t below(size_t n) { return n == 0 ? 0 : static_cast<size_t>(next() % n); }
};

uint64_t seed_of(std::string_view s) {
    uint64_t h = 14695981039346656037ull;
    for (unsigned char c : s)
        h = (h ^ c) * 1099511628211ull;
    return h;
}

bool file_safe_byte(unsigned char c) { return c != 0 && c != '/' && c != '\\' && c != ':'; }

std::string random_bytes(size_t n, uint64_t seed, bool file_safe) {
    Rng r(seed);
    std::string s(n, '\0');
    for (auto &c : s) {
        unsigned char b;
        do
            b = static_cast<unsigned char>(r.next());
        while (file_safe && !file_safe_byte(b));
        c = static_cast<char>(b);
    }
    return s;
}

// Text for the 10 MB calls: blocks of random printable text (words, digits,
// punctuation) alternating with long runs of one character, so that work that
// rescans a run and work that backtracks over varied text both show.
void mixed_text(char *out, size_t n, uint64_t seed, bool file_safe) {
    static const char alphabet[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789"
                                   "     ,.;-+*?#[]!&%$()\"'\r\n\t/\\:";
    Rng r(seed);
    for (size_t at = 0; at < n;) {
        const size_t block = std::min<size_t>(n - at, 1 + r.below(65536));
        const bool run = r.below(2) == 0;
        char c = alphabet[r.below(sizeof alphabet - 1)];
        for (size_t i = 0; i < block; ++i, ++at) {
            if (!run)
                c = alphabet[r.below(sizeof alphabet - 1)];
            out[at] = file_safe && !file_safe_byte(static_cast<unsigned char>(c)) ? '_' : c;
        }
    }
}

// The 10 MB texts, made once in the parent before the children are forked,
// outside the heap (the leak check of every child would scan them) and
// shared (a fork copies no page tables for them).
std::string_view big_text(bool file_safe) {
    static std::string_view cache[2];
    std::string_view &v = cache[file_safe ? 1 : 0];
    if (v.empty()) {
        void *block = mmap(nullptr, kBigLength, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        if (block == MAP_FAILED)
            std::abort();
        mixed_text(static_cast<char *>(block), kBigLength, file_safe ? 4 : 2, file_safe);
        v = std::string_view(static_cast<const char *>(block), kBigLength);
    }
    return v;
}

// ---------------------------------------------------------------------------
// Pools of values. Entry 0 of every pool is the ordinary value.

enum Flags { kPlain = 0, kLong = 1, kBig = 2 };

struct Text {
    const char *label;
    int flags;
    bool null;
    std::string (*make)();
};

const std::vector<Text> &text_pool() {
    static const std::vector<Text> pool = {
        {"\"Hello, World 123\"", kPlain, false, [] { return std::string("Hello, World 123"); }},
        {"null string", kPlain, true, nullptr},
        {"\"\"", kPlain, false, [] { return std::string(); }},
        {"\"a\"", kPlain, false, [] { return std::string("a"); }},
        {"\"-1.5E+308\"", kPlain, false, [] { return std::string("-1.5E+308"); }},
        {"bytes 0 to 255", kPlain, false,
         [] {
             std::string s(256, '\0');
             for (int i = 0; i < 256; ++i)
                 s[static_cast<size_t>(i)] = static_cast<char>(i);
             return s;
         }},
        {"wildcards and separators", kPlain, false, [] { return std::string("*?[!a-z]#\\/:\xff,;|*"); }},
        {"\"12/31/1999 23:59:59\"", kPlain, false, [] { return std::string("12/31/1999 23:59:59"); }},
        {"white space", kPlain, false, [] { return std::string(" \r\n\t  "); }},
        {"byte-255 separators", kPlain, false, [] { return std::string("\xff" "a\xff\xff,b,,\xff"); }},
        {"70,000 x \"a\"", kLong, false, [] { return std::string(kLongLength, 'a'); }},
        {"70,000 random bytes", kLong, false, [] { return random_bytes(kLongLength, 1, false); }},
        {"10 MB of text", kBig, false, [] { return std::string(big_text(false)); }},
    };
    return pool;
}

// File names: relative, no separators that could climb out of the scratch
// folder, no drive prefix (which maps to the root).
const std::vector<Text> &file_pool() {
    static const std::vector<Text> pool = {
        {"\"data.txt\"", kPlain, false, [] { return std::string("data.txt"); }},
        {"null string", kPlain, true, nullptr},
        {"\"\"", kPlain, false, [] { return std::string(); }},
        {"\"*.*\"", kPlain, false, [] { return std::string("*.*"); }},
        {"\"sub\"", kPlain, false, [] { return std::string("sub"); }},
        {"\"sub\\*.t?t\"", kPlain, false, [] { return std::string("sub\\*.t?t"); }},
        {"\"missing\\none.txt\"", kPlain, false, [] { return std::string("missing\\none.txt"); }},
        {"\"data.bin\"", kPlain, false, [] { return std::string("data.bin"); }},
        {"\"empty.txt\"", kPlain, false, [] { return std::string("empty.txt"); }},
        {"\"out.tmp\"", kPlain, false, [] { return std::string("out.tmp"); }},
        {"odd bytes", kPlain, false, [] { return std::string("\xff\xfe\x01*. "); }},
        {"70,000 x \"a\"", kLong, false, [] { return std::string(kLongLength, 'a'); }},
        {"70,000 random bytes", kLong, false, [] { return random_bytes(kLongLength, 3, true); }},
        {"10 MB of text", kBig, false, [] { return std::string(big_text(true)); }},
    };
    return pool;
}

template <class T> struct Number {
    const char *label;
    T value;
};

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

const std::vector<Number<int16_t>> kI16 = {{"2", 2},         {"0", 0},       {"-1", -1},     {"1", 1},
                                           {"7", 7},         {"255", 255},   {"32767", 32767},
                                           {"-32768", -32768}, {"100", 100}};
const std::vector<Number<int32_t>> kI32 = {
    {"3", 3},           {"0", 0},
    {"-1", -1},         {"1", 1},
    {"70000", 70000},   {"65536", 65536},
    {"2147483647", INT32_MAX}, {"-2147483648", INT32_MIN},
    {"16777216", 16777216}};
const std::vector<Number<double>> kF64 = {
    {"1.5", 1.5},    {"0", 0.0},     {"-1", -1.0},        {"NaN", kNaN},
    {"+Inf", kInf},  {"-Inf", -kInf}, {"1.79e308", 1.7976931348623157e308}, {"-1.79e308", -1.7976931348623157e308},
    {"4.9e-324", 4.9406564584124654e-324}, {"2147483648", 2147483648.0}, {"65536.5", 65536.5},
    {"-1e15", -1e15}};
const std::vector<Number<float>> kF32 = {
    {"1.5", 1.5f},   {"0", 0.0f},     {"-1", -1.0f},   {"NaN", std::numeric_limits<float>::quiet_NaN()},
    {"+Inf", std::numeric_limits<float>::infinity()}, {"-Inf", -std::numeric_limits<float>::infinity()},
    {"3.4e38", 3.4028235e38f}, {"-3.4e38", -3.4028235e38f}, {"1.4e-45", 1.4e-45f}, {"2147483648", 2147483648.0f},
    {"65536.5", 65536.5f}};
const std::vector<Number<uint8_t>> kU8 = {{"65", 65}, {"0", 0}, {"1", 1}, {"255", 255}, {"32", 32}};
const std::vector<Number<int16_t>> kBool = {{"-1", -1}, {"0", 0}, {"1", 1}, {"2", 2}, {"-32768", -32768}};
const std::vector<Number<int64_t>> kCy = {{"123.45", 1234500}, {"0", 0}, {"-0.0001", -1}, {"1", 10000},
                                          {"max", INT64_MAX},  {"min", INT64_MIN}};
const std::vector<Number<double>> kDate = {{"36526.5", 36526.5}, {"0", 0.0},     {"-1", -1.0},
                                           {"NaN", kNaN},         {"+Inf", kInf}, {"1e308", 1e308},
                                           {"-657435", -657435.0}, {"2958466", 2958466.0}};

// Variants.
struct VariantValue {
    const char *label;
    int flags;
};
const std::vector<VariantValue> kVariants = {
    {"Long 5", kPlain},          {"Empty", kPlain},          {"Null", kPlain},
    {"Long 0", kPlain},          {"Long -1", kPlain},        {"Long 2147483647", kPlain},
    {"Long -2147483648", kPlain}, {"Integer -32768", kPlain}, {"Double NaN", kPlain},
    {"Double 1e308", kPlain},    {"Double -1.5", kPlain},    {"Double +Inf", kPlain},
    {"String \"\"", kPlain},     {"String null handle", kPlain}, {"String \"12:30\"", kPlain},
    {"String \"abc\"", kPlain},  {"Boolean True", kPlain},   {"Date 36526.25", kPlain},
    {"Currency max", kPlain},    {"Error", kPlain},          {"Object Nothing", kPlain},
    {"Byte 200", kPlain},        {"LongLong min", kPlain},   {"Decimal 0", kPlain},
    {"Long() array", kPlain},    {"ByRef Long 7", kPlain},   {"ByRef Variant String \"42\"", kPlain},
    {"String of 70,000 digits", kLong}, {"String of 10 MB text", kBig},
};

// Arrays.
enum class Shape {
    Ordinary, Null, Empty, One, Hostile, LowerMinus5, LowerHigh, TwoD, FixedSize, Long,
    WrongText, WrongVariant, WrongNumber
};
struct ArrayValue {
    const char *label;
    int flags;
    Shape shape;
};
const std::vector<ArrayValue> kArrays = {
    {"8 ordinary elements", kPlain, Shape::Ordinary},
    {"null array", kPlain, Shape::Null},
    {"empty (0 To -1)", kPlain, Shape::Empty},
    {"1 element", kPlain, Shape::One},
    {"hostile elements", kPlain, Shape::Hostile},
    {"(-5 To 4)", kPlain, Shape::LowerMinus5},
    {"(32760 To 32779)", kPlain, Shape::LowerHigh},
    {"2-D (0 To 2, 0 To 3)", kPlain, Shape::TwoD},
    {"fixed-size", kPlain, Shape::FixedSize},
    {"70,000 elements", kLong, Shape::Long},
    {"String() instead", kPlain, Shape::WrongText},
    {"Variant() instead", kPlain, Shape::WrongVariant},
    {"other numeric type instead", kPlain, Shape::WrongNumber},
};
// "As Any" arrays: whatever a caller may pass.
struct AnyValue {
    const char *label;
    int flags;
    VARTYPE vt;
    Shape shape;
};
const std::vector<AnyValue> kAnyArrays = {
    {"Integer(), 8 ordinary", kPlain, VT_I2, Shape::Ordinary},
    {"null array", kPlain, VT_I2, Shape::Null},
    {"empty Long()", kPlain, VT_I4, Shape::Empty},
    {"Double(), hostile", kPlain, VT_R8, Shape::Hostile},
    {"String(), hostile", kPlain, VT_BSTR, Shape::Hostile},
    {"Variant(), hostile", kPlain, VT_VARIANT, Shape::Hostile},
    {"Byte(), 8 ordinary", kPlain, VT_UI1, Shape::Ordinary},
    {"records of 16 bytes", kPlain, VT_UI1, Shape::One /* reshaped below */},
    {"2-D Long()", kPlain, VT_I4, Shape::TwoD},
    {"Long() (-5 To 4)", kPlain, VT_I4, Shape::LowerMinus5},
    {"Currency(), 1 element", kPlain, VT_CY, Shape::One},
    {"Byte(), 70,000", kLong, VT_UI1, Shape::Long},
};

// Records.
enum class RecordFill { Zero, Small, Random, Ones, LongStrings };
struct RecordValue {
    const char *label;
    int flags;
    RecordFill fill;
};
const std::vector<RecordValue> kRecords = {
    {"zero record", kPlain, RecordFill::Zero},
    {"small random fields", kPlain, RecordFill::Small},
    {"random record", kPlain, RecordFill::Random},
    {"all bytes 255", kPlain, RecordFill::Ones},
    {"70,000-byte strings", kLong, RecordFill::LongStrings},
};

// ---------------------------------------------------------------------------
// The pools as the selection sees them.

bool is_file_family(const Export &e) {
    for (const char *f : kFileFamilies)
        if (std::strcmp(e.file, f) == 0)
            return true;
    return false;
}

bool is_file_arg(const Export &e, const Arg &a) {
    if (!is_file_family(e))
        return false;
    for (const char *w : kFileArgWords)
        if (std::strstr(a.name, w) != nullptr)
            return true;
    return false;
}

bool is_text(Kind k) { return k == Kind::Str || k == Kind::StrRef; }
bool is_array(Kind k) { return k >= Kind::ArrI16 && k <= Kind::ArrAny; }

struct PoolEntry {
    std::string label;
    int flags;
};

std::vector<PoolEntry> pool_of(const Export &e, const Arg &a) {
    std::vector<PoolEntry> out;
    auto add = [&out](const auto &values) {
        for (const auto &v : values)
            out.push_back({v.label, 0});
    };
    auto add_flagged = [&out](const auto &values) {
        for (const auto &v : values)
            out.push_back({v.label, v.flags});
    };
    switch (a.kind) {
    case Kind::Str:
    case Kind::StrRef: add_flagged(is_file_arg(e, a) ? file_pool() : text_pool()); break;
    case Kind::I16:
    case Kind::I16Ref: add(kI16); break;
    case Kind::I32:
    case Kind::I32Ref: add(kI32); break;
    case Kind::F32:
    case Kind::F32Ref: add(kF32); break;
    case Kind::F64:
    case Kind::F64Ref: add(kF64); break;
    case Kind::U8:
    case Kind::U8Ref: add(kU8); break;
    case Kind::Bool:
    case Kind::BoolRef: add(kBool); break;
    case Kind::Cy:
    case Kind::CyRef: add(kCy); break;
    case Kind::Date:
    case Kind::DateRef: add(kDate); break;
    case Kind::VarRef: add_flagged(kVariants); break;
    case Kind::ArrAny: add_flagged(kAnyArrays); break;
    case Kind::Record: add_flagged(kRecords); break;
    default: add_flagged(kArrays); break; // the typed arrays
    }
    return out;
}

// ---------------------------------------------------------------------------
// Building the arguments (in the child) and giving them back after the call.

// What a ByRef Variant refers to, freed after the call.
struct Extra {
    std::vector<void *> plain;
    std::vector<VARIANT *> variants;
};

// Steps that give an argument back its own shape before it is freed.
struct Cleanup {
    std::vector<std::function<void()>> steps;
};

BSTR make_bstr(const Text &t) {
    if (t.null)
        return nullptr;
    const std::string s = t.make();
    return SysAllocStringByteLen(s.data(), static_cast<UINT>(s.size()));
}

BSTR wide_bstr(std::string_view latin1) {
    std::vector<OLECHAR> w(latin1.size());
    for (size_t i = 0; i < latin1.size(); ++i)
        w[i] = static_cast<unsigned char>(latin1[i]);
    return SysAllocStringLen(w.data(), static_cast<UINT>(w.size()));
}

void fill_variant(VARIANT *v, size_t choice, Extra &extra) {
    VariantInit(v);
    switch (choice) {
    case 0: V_VT(v) = VT_I4, V_I4(v) = 5; break;
    case 1: break;
    case 2: V_VT(v) = VT_NULL; break;
    case 3: V_VT(v) = VT_I4, V_I4(v) = 0; break;
    case 4: V_VT(v) = VT_I4, V_I4(v) = -1; break;
    case 5: V_VT(v) = VT_I4, V_I4(v) = INT32_MAX; break;
    case 6: V_VT(v) = VT_I4, V_I4(v) = INT32_MIN; break;
    case 7: V_VT(v) = VT_I2, V_I2(v) = -32768; break;
    case 8: V_VT(v) = VT_R8, V_R8(v) = kNaN; break;
    case 9: V_VT(v) = VT_R8, V_R8(v) = 1e308; break;
    case 10: V_VT(v) = VT_R8, V_R8(v) = -1.5; break;
    case 11: V_VT(v) = VT_R8, V_R8(v) = kInf; break;
    case 12: V_VT(v) = VT_BSTR, V_BSTR(v) = wide_bstr(""); break;
    case 13: V_VT(v) = VT_BSTR, V_BSTR(v) = nullptr; break;
    case 14: V_VT(v) = VT_BSTR, V_BSTR(v) = wide_bstr("12:30"); break;
    case 15: V_VT(v) = VT_BSTR, V_BSTR(v) = wide_bstr("abc"); break;
    case 16: V_VT(v) = VT_BOOL, V_BOOL(v) = VARIANT_TRUE; break;
    case 17: V_VT(v) = VT_DATE, V_DATE(v) = 36526.25; break;
    case 18: V_VT(v) = VT_CY, V_CY(v).int64 = INT64_MAX; break;
    case 19: V_VT(v) = VT_ERROR, V_ERROR(v) = static_cast<SCODE>(0x80020004u); break;
    case 20: V_VT(v) = VT_DISPATCH, V_UNION(v, pdispVal) = nullptr; break;
    case 21: V_VT(v) = VT_UI1, V_UI1(v) = 200; break;
    case 22: V_VT(v) = VT_I8, V_I8(v) = INT64_MIN; break;
    case 23: V_VT(v) = VT_DECIMAL; break; // all other bytes zero: the value 0
    case 24: {
        SAFEARRAYBOUND b{3, 0};
        SAFEARRAY *sa = SafeArrayCreate(VT_I4, 1, &b);
        V_VT(v) = VT_ARRAY | VT_I4, V_ARRAY(v) = sa;
        break;
    }
    case 25: {
        auto *p = static_cast<LONG *>(std::malloc(sizeof(LONG)));
        *p = 7;
        extra.plain.push_back(p);
        V_VT(v) = VT_BYREF | VT_I4, V_UNION(v, plVal) = p;
        break;
    }
    case 26: {
        auto *inner = static_cast<VARIANT *>(std::malloc(sizeof(VARIANT)));
        VariantInit(inner);
        V_VT(inner) = VT_BSTR, V_BSTR(inner) = wide_bstr("42");
        extra.variants.push_back(inner);
        V_VT(v) = VT_BYREF | VT_VARIANT, V_VARIANTREF(v) = inner;
        break;
    }
    case 27: V_VT(v) = VT_BSTR, V_BSTR(v) = wide_bstr(std::string(kLongLength, '9')); break;
    case 28: V_VT(v) = VT_BSTR, V_BSTR(v) = wide_bstr(big_text(false)); break;
    default: break;
    }
}

template <class T> T nth(const std::vector<Number<T>> &pool, size_t i) { return pool[i % pool.size()].value; }

// Writes element i of an array of type vt: an ordinary value, or one from the
// hostile end of the pool.
void put_element(VARTYPE vt, void *data, size_t i, bool hostile, Rng &r) {
    const size_t k = hostile ? 1 + i : r.below(3);
    switch (vt) {
    case VT_I2: static_cast<int16_t *>(data)[i] = hostile ? nth(kI16, k) : static_cast<int16_t>(r.below(2000) - 1000); break;
    case VT_I4: static_cast<int32_t *>(data)[i] = hostile ? nth(kI32, k) : static_cast<int32_t>(r.below(200000) - 100000); break;
    case VT_R4: static_cast<float *>(data)[i] = hostile ? nth(kF32, k) : static_cast<float>(r.below(20000)) / 8.0f - 1000.0f; break;
    case VT_R8: static_cast<double *>(data)[i] = hostile ? nth(kF64, k) : static_cast<double>(r.below(20000)) / 8.0 - 1000.0; break;
    case VT_UI1: static_cast<uint8_t *>(data)[i] = hostile ? nth(kU8, k) : static_cast<uint8_t>(r.next()); break;
    case VT_BOOL: static_cast<VARIANT_BOOL *>(data)[i] = hostile ? nth(kBool, k) : static_cast<VARIANT_BOOL>(r.below(2) ? -1 : 0); break;
    case VT_CY: static_cast<CY *>(data)[i].int64 = hostile ? nth(kCy, k) : static_cast<int64_t>(r.below(2000000)) - 1000000; break;
    case VT_DATE: static_cast<DATE *>(data)[i] = hostile ? nth(kDate, k) : 30000.0 + static_cast<double>(r.below(20000)) / 4.0; break;
    case VT_BSTR: {
        static const char *const ordinary[] = {"pear", "apple", "Fig", "", "kiwi", "Apple", "lime", "fig"};
        BSTR &slot = static_cast<BSTR *>(data)[i];
        if (hostile) {
            const std::vector<Text> &pool = text_pool();
            const Text &t = pool[1 + (i % (pool.size() - 4))]; // the plain hostile entries
            slot = make_bstr(t);
        } else {
            const char *s = ordinary[r.below(8)];
            slot = SysAllocStringByteLen(s, static_cast<UINT>(std::strlen(s)));
        }
        break;
    }
    case VT_VARIANT: {
        Extra none; // the plain entries refer to nothing
        static const size_t plain[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24};
        fill_variant(&static_cast<VARIANT *>(data)[i], hostile ? plain[i % 25] : 3 + r.below(3), none);
        break;
    }
    default: break;
    }
}

VARTYPE vt_of(Kind k) {
    switch (k) {
    case Kind::ArrI16: return VT_I2;
    case Kind::ArrI32: return VT_I4;
    case Kind::ArrF32: return VT_R4;
    case Kind::ArrF64: return VT_R8;
    case Kind::ArrU8: return VT_UI1;
    case Kind::ArrBool: return VT_BOOL;
    case Kind::ArrCy: return VT_CY;
    case Kind::ArrDate: return VT_DATE;
    case Kind::ArrStr: return VT_BSTR;
    case Kind::ArrVar: return VT_VARIANT;
    default: return VT_I2;
    }
}

SAFEARRAY *make_array(VARTYPE vt, Shape shape, Rng &r, Cleanup &c) {
    std::vector<SAFEARRAYBOUND> bounds;
    bool hostile = false;
    switch (shape) {
    case Shape::Null: return nullptr;
    case Shape::Ordinary: bounds = {{8, 0}}; break;
    case Shape::Empty: bounds = {{0, 0}}; break;
    case Shape::One: bounds = {{1, 0}}, hostile = true; break;
    case Shape::Hostile: bounds = {{12, 0}}, hostile = true; break;
    case Shape::LowerMinus5: bounds = {{10, -5}}; break;
    case Shape::LowerHigh: bounds = {{20, 32760}}; break;
    case Shape::TwoD: bounds = {{4, 0}, {3, 0}}; break; // stored last dimension first
    case Shape::FixedSize: bounds = {{8, 1}}; break;
    case Shape::Long: bounds = {{static_cast<ULONG>(kLongLength), 0}}; break;
    default: return nullptr;
    }
    SAFEARRAY *sa = SafeArrayCreate(vt, static_cast<UINT>(bounds.size()), bounds.data());
    if (sa == nullptr)
        return nullptr;
    size_t n = 1;
    for (const auto &b : bounds)
        n *= b.cElements;
    for (size_t i = 0; i < n; ++i)
        put_element(vt, sa->pvData, i, hostile, r);
    if (shape == Shape::FixedSize) {
        sa->fFeatures |= FADF_FIXEDSIZE;
        c.steps.push_back([sa] { sa->fFeatures &= static_cast<USHORT>(~FADF_FIXEDSIZE); });
    }
    return sa;
}

SAFEARRAY *typed_array(Kind k, Shape shape, Rng &r, Cleanup &c) {
    const VARTYPE vt = vt_of(k);
    switch (shape) {
    case Shape::WrongText: return make_array(vt == VT_BSTR ? VT_I4 : VT_BSTR, Shape::Hostile, r, c);
    case Shape::WrongVariant: return make_array(vt == VT_VARIANT ? VT_BSTR : VT_VARIANT, Shape::Hostile, r, c);
    case Shape::WrongNumber: return make_array(vt == VT_UI1 ? VT_R8 : VT_UI1, Shape::Ordinary, r, c);
    default: return make_array(vt, shape, r, c);
    }
}

// One argument cell, exactly the size of what it holds.
void *make_cell(const Export &e, const Arg &a, size_t choice, Rng &r, Cleanup &c, Extra &extra) {
    auto number = [&](const auto &pool) {
        using T = decltype(pool[0].value);
        auto *p = static_cast<T *>(std::malloc(sizeof(T)));
        *p = pool[choice].value;
        return static_cast<void *>(p);
    };
    switch (a.kind) {
    case Kind::Str:
    case Kind::StrRef: {
        auto *p = static_cast<BSTR *>(std::malloc(sizeof(BSTR)));
        *p = make_bstr((is_file_arg(e, a) ? file_pool() : text_pool())[choice]);
        return p;
    }
    case Kind::I16:
    case Kind::I16Ref: return number(kI16);
    case Kind::I32:
    case Kind::I32Ref: return number(kI32);
    case Kind::F32:
    case Kind::F32Ref: return number(kF32);
    case Kind::F64:
    case Kind::F64Ref: return number(kF64);
    case Kind::U8:
    case Kind::U8Ref: return number(kU8);
    case Kind::Bool:
    case Kind::BoolRef: return number(kBool);
    case Kind::Date:
    case Kind::DateRef: return number(kDate);
    case Kind::Cy:
    case Kind::CyRef: {
        auto *p = static_cast<CY *>(std::malloc(sizeof(CY)));
        p->int64 = kCy[choice].value;
        return p;
    }
    case Kind::VarRef: {
        auto *p = static_cast<VARIANT *>(std::malloc(sizeof(VARIANT)));
        fill_variant(p, choice, extra);
        return p;
    }
    case Kind::Record: {
        const RecordInfo &info = *a.record;
        auto *p = static_cast<unsigned char *>(std::malloc(info.size));
        const RecordFill fill = kRecords[choice].fill;
        for (size_t i = 0; i < info.size; ++i) {
            switch (fill) {
            case RecordFill::Zero: p[i] = 0; break;
            case RecordFill::Small: p[i] = (i % 2 == 0) ? static_cast<unsigned char>(r.below(12)) : 0; break;
            case RecordFill::Random:
            case RecordFill::LongStrings: p[i] = static_cast<unsigned char>(r.next()); break;
            case RecordFill::Ones: p[i] = 0xFF; break;
            }
        }
        // String fields hold handles: a caller cannot put anything else there.
        for (size_t s = 0; s < info.string_count; ++s) {
            BSTR b = nullptr;
            if (fill == RecordFill::Small || fill == RecordFill::Random)
                b = SysAllocStringByteLen("a\\b.c", 5);
            else if (fill == RecordFill::Ones || fill == RecordFill::LongStrings) {
                const std::string t = random_bytes(fill == RecordFill::Ones ? 9 : kLongLength, 6 + s, false);
                b = SysAllocStringByteLen(t.data(), static_cast<UINT>(t.size()));
            }
            std::memcpy(p + info.strings[s], &b, sizeof b);
        }
        return p;
    }
    case Kind::ArrAny: {
        auto *p = static_cast<SAFEARRAY **>(std::malloc(sizeof(SAFEARRAY *)));
        const AnyValue &v = kAnyArrays[choice];
        if (std::string_view(v.label) == "records of 16 bytes") {
            SAFEARRAYBOUND b{8 * 16, 0};
            SAFEARRAY *sa = SafeArrayCreate(VT_UI1, 1, &b);
            for (size_t i = 0; i < 8 * 16; ++i)
                static_cast<uint8_t *>(sa->pvData)[i] = static_cast<uint8_t>(r.next());
            sa->cbElements = 16;
            sa->rgsabound[0].cElements = 8;
            sa->rgsabound[0].lLbound = 1;
            // Back to its byte shape before it is freed, if it is still there.
            c.steps.push_back([p, sa] {
                if (*p == sa) {
                    sa->rgsabound[0].cElements *= sa->cbElements;
                    sa->cbElements = 1;
                }
            });
            *p = sa;
        } else {
            *p = make_array(v.vt, v.shape, r, c);
        }
        return p;
    }
    default: {
        auto *p = static_cast<SAFEARRAY **>(std::malloc(sizeof(SAFEARRAY *)));
        *p = typed_array(a.kind, kArrays[choice].shape, r, c);
        return p;
    }
    }
}

// ---------------------------------------------------------------------------
// One call, in the child.

struct Call {
    std::vector<size_t> choices; // pool index per argument
    bool big = false;
};

// The bytes the sanitizer's allocator holds for the program (0 in other
// builds).
size_t allocated_bytes() {
#ifdef BRINDLE_SWEEP_LSAN
    return __sanitizer_get_current_allocated_bytes();
#else
    return 0;
#endif
}

// Ends a child: status 4 when the leak check finds memory nobody refers to
// (sanitizer builds), otherwise the given status (0: nothing wrong). The full
// check, far slower than a call, runs only when the child holds more than
// the `before` bytes it started with; what it finds still referred to (a
// table the library made on first use) is no leak.
[[noreturn]] void end_child(int status, size_t before = 0) {
#ifdef BRINDLE_SWEEP_LSAN
    if ((before == 0 || allocated_bytes() > before) && __lsan_do_recoverable_leak_check() != 0)
        status = 4;
#else
    (void)before;
#endif
    std::fflush(stdout);
    std::fflush(stderr);
    _exit(status);
}

// Builds the arguments, calls, checks and frees; the verdict (0: nothing
// wrong).
int run_call(const Export &e, const Call &call) {
    Rng r(seed_of(e.name) ^ 0x5EED);
    Cleanup cleanup;
    Extra extra;
    void *cells[kMaxArgs] = {};
    std::vector<BSTR> given; // every string handle passed in, to recognise "the caller's own"
    for (size_t i = 0; i < e.argc; ++i) {
        cells[i] = make_cell(e, e.args[i], call.choices[i], r, cleanup, extra);
        if (is_text(e.args[i].kind))
            given.push_back(*static_cast<BSTR *>(cells[i]));
    }

    Result result;
    e.call(cells, result);

    int status = 0;
    if (result.has_string()) {
        BSTR s = result.string_value();
        bool own = false;
        for (size_t i = 0; i < e.argc; ++i)
            if (is_text(e.args[i].kind) && s == *static_cast<BSTR *>(cells[i]))
                own = true;
        if (!own && std::find(given.begin(), given.end(), s) != given.end()) {
            std::fprintf(stderr, "returned a string handle it was given and has since replaced\n");
            status = 5;
        }
        if (s == nullptr) {
            std::fprintf(stderr, "returned a null string handle\n");
            status = 3;
        } else if (!own) {
            SysFreeString(s);
        }
    }
    if (result.has_variant() && VariantClear(result.variant_value()) != S_OK) {
        std::fprintf(stderr, "returned a Variant that VariantClear refuses\n");
        status = 3;
    }

    for (auto &step : cleanup.steps)
        step();
    for (size_t i = 0; i < e.argc; ++i) {
        const Arg &a = e.args[i];
        if (is_text(a.kind)) {
            SysFreeString(*static_cast<BSTR *>(cells[i]));
        } else if (a.kind == Kind::VarRef) {
            if (VariantClear(static_cast<VARIANT *>(cells[i])) != S_OK) {
                std::fprintf(stderr, "left argument %s a Variant that VariantClear refuses\n", a.name);
                status = 3;
            }
        } else if (is_array(a.kind)) {
            SAFEARRAY *sa = *static_cast<SAFEARRAY **>(cells[i]);
            if (sa != nullptr && SafeArrayDestroy(sa) != S_OK) {
                std::fprintf(stderr, "left argument %s an array that cannot be freed (still locked?)\n", a.name);
                status = 3;
            }
        } else if (a.kind == Kind::Record) {
            for (size_t s = 0; s < a.record->string_count; ++s) {
                BSTR b;
                std::memcpy(&b, static_cast<unsigned char *>(cells[i]) + a.record->strings[s], sizeof b);
                SysFreeString(b);
            }
        }
        std::free(cells[i]);
    }
    for (VARIANT *v : extra.variants) {
        VariantClear(v);
        std::free(v);
    }
    for (void *p : extra.plain)
        std::free(p);
    return status;
}

// Runs in the child: the call and its verdict.
[[noreturn]] void child_main(const Export &e, const Call &call) {
#ifndef BRINDLE_SWEEP_LSAN
    // A call that asks for gigabytes (a width of 2^31 - 1) meets the
    // out-of-memory path instead of filling the machine. The sanitizer build
    // reserves its shadow memory as address space, so it is left without.
    const rlimit memory{kMemoryLimit, kMemoryLimit};
    setrlimit(RLIMIT_AS, &memory);
#endif
    const size_t before = allocated_bytes();
    const int status = run_call(e, call);
    end_child(status, before);
}


// ---------------------------------------------------------------------------
// Choosing the calls of one export.

struct Plan {
    std::vector<std::vector<size_t>> allowed; // per argument: pool indices it may take
    std::vector<std::vector<PoolEntry>> pools;
};

Plan plan_of(const Export &e) {
    Plan p;
    for (size_t i = 0; i < e.argc; ++i) {
        p.pools.push_back(pool_of(e, e.args[i]));
        std::vector<size_t> allowed;
        const SafeValues *safe = nullptr;
        for (const SafeValues &s : kSafeValues)
            if (std::strcmp(s.name, e.name) == 0 && std::strcmp(s.arg, e.args[i].name) == 0)
                safe = &s;
        for (size_t k = 0; k < p.pools[i].size(); ++k)
            if (safe == nullptr || std::find(safe->labels.begin(), safe->labels.end(), p.pools[i][k].label) != safe->labels.end())
                allowed.push_back(k);
        p.allowed.push_back(allowed);
    }
    return p;
}

std::vector<Call> calls_of(const Export &e) {
    const Plan p = plan_of(e);
    Rng r(seed_of(e.name));
    std::vector<size_t> ordinary;
    for (size_t i = 0; i < e.argc; ++i)
        ordinary.push_back(p.allowed[i].front());
    const auto flags = [&p](size_t arg, size_t k) { return p.pools[arg][k].flags; };

    std::vector<Call> calls{{ordinary, false}};
    std::vector<Call> singles;
    for (size_t i = 0; i < e.argc; ++i)
        for (size_t k : p.allowed[i])
            if (k != ordinary[i] && !(flags(i, k) & kBig)) {
                Call c{ordinary, false};
                c.choices[i] = k;
                singles.push_back(c);
            }
    for (size_t i = singles.size(); i > 1; --i)
        std::swap(singles[i - 1], singles[r.below(i)]);
    if (singles.size() > kOneAtATime)
        singles.resize(kOneAtATime);
    calls.insert(calls.end(), singles.begin(), singles.end());

    if (e.argc > 1) {
        for (size_t n = 0; n < kCombined; ++n) {
            Call c{ordinary, false};
            const size_t long_arg = r.below(e.argc); // the one argument that may be long
            for (size_t i = 0; i < e.argc; ++i) {
                size_t k;
                do
                    k = p.allowed[i][r.below(p.allowed[i].size())];
                while ((flags(i, k) & kBig) || ((flags(i, k) & kLong) && i != long_arg));
                c.choices[i] = k;
            }
            calls.push_back(c);
        }
    }

    // 10 MB of text in each argument that takes text, one at a time.
    for (size_t i = 0; i < e.argc; ++i)
        for (size_t k : p.allowed[i])
            if (flags(i, k) & kBig) {
                Call c{ordinary, true};
                c.choices[i] = k;
                calls.push_back(c);
            }
    return calls;
}

std::string describe(const Export &e, const Call &c) {
    const Plan p = plan_of(e);
    std::string s = std::string(e.name) + "(";
    for (size_t i = 0; i < e.argc; ++i) {
        if (i > 0)
            s += ", ";
        s += std::string(e.args[i].name) + " = " + p.pools[i][c.choices[i]].label;
    }
    return s + ")";
}

// ---------------------------------------------------------------------------
// Running calls in children, a few at a time.

double env_seconds(const char *name, double fallback) {
    const char *v = std::getenv(name);
    return v != nullptr && std::atof(v) > 0 ? std::atof(v) : fallback;
}

// The scratch folder each child works in: a fresh copy for the families that
// name files.
void make_fixture(const fs::path &dir) {
    std::error_code ec;
    fs::remove_all(dir, ec);
    fs::create_directories(dir / "sub" / "deeper");
    std::ofstream(dir / "data.txt", std::ios::binary) << "First line\r\nSecond, line; 12:30\r\n\x1a" << std::string(2000, 'x');
    std::ofstream(dir / "data.bin", std::ios::binary) << random_bytes(4096, 7, false);
    std::ofstream(dir / "empty.txt", std::ios::binary);
    std::ofstream(dir / "sub" / "file.txt", std::ios::binary) << "in sub";
    std::ofstream(dir / "sub" / "note.tmp", std::ios::binary) << "note";
    std::ofstream(dir / "sub" / "deeper" / "x.txt", std::ios::binary) << "deep";
}

struct Running {
    pid_t pid = -1;
    int output = -1; // the child's stdout and stderr
    size_t call = 0;
    std::chrono::steady_clock::time_point start, deadline;
    double limit = 0;
};

std::string read_all(int fd) {
    std::string out;
    char buf[4096];
    lseek(fd, 0, SEEK_SET);
    for (ssize_t n; (n = read(fd, buf, sizeof buf)) > 0;)
        out.append(buf, static_cast<size_t>(n));
    return out;
}

// Any sanitizer error counts, even where the options let the child go on
// (a warning that an allocation too large for the limit above failed does
// not: the library meets a null block there and must cope).
bool reports_fault(const std::string &output) {
    for (size_t at = 0; (at = output.find("ERROR: ", at)) != std::string::npos; ++at) {
        const size_t eol = output.find('\n', at);
        if (output.substr(at, eol == std::string::npos ? std::string::npos : eol - at).find("Sanitizer") != std::string::npos)
            return true;
    }
    return output.find("runtime error:") != std::string::npos;
}

std::string verdict(int status, bool timed_out, double limit, const std::string &output) {
    std::string why;
    if (timed_out)
        why = "did not finish within " + std::to_string(static_cast<int>(limit)) + " s";
    else if (WIFSIGNALED(status))
        why = std::string("killed by signal ") + std::to_string(WTERMSIG(status)) + " (" + strsignal(WTERMSIG(status)) + ")";
    else if (WIFEXITED(status) && WEXITSTATUS(status) == 4)
        why = "leaked memory";
    else if (WIFEXITED(status) && WEXITSTATUS(status) != 0)
        why = "child exited with status " + std::to_string(WEXITSTATUS(status));
    else if (reports_fault(output))
        why = "sanitizer report";
    else
        return {};
    std::string shown = output.size() > 6000 ? output.substr(0, 6000) + "\n[...]" : output;
    return why + (shown.empty() ? "" : "\n" + shown);
}

// Runs child(i) in a child process for i below count, at most jobs at once;
// returns (i, what went wrong) for every child that failed, and the time
// each took in *seconds.
std::vector<std::pair<size_t, std::string>> run_children(size_t count, const std::function<void(size_t)> &child,
                                      const std::function<double(size_t)> &limit_of,
                                      const std::function<void(size_t, size_t)> &before, size_t jobs,
                                      std::vector<double> *seconds = nullptr) {
    std::vector<std::string> failures(count);
    std::vector<Running> slots(std::max<size_t>(jobs, 1));
    if (seconds != nullptr)
        seconds->assign(count, 0.0);
    size_t next = 0, busy = 0;
    std::fflush(stdout);
    std::fflush(stderr);
    while (next < count || busy > 0) {
        for (size_t s = 0; s < slots.size() && next < count; ++s) {
            if (slots[s].pid != -1)
                continue;
            before(next, s);
            Running &run = slots[s];
            run.output = static_cast<int>(syscall(SYS_memfd_create, "sweep-child", 0));
            run.call = next;
            run.limit = limit_of(next);
            run.start = std::chrono::steady_clock::now();
            run.deadline = run.start + std::chrono::milliseconds(static_cast<int64_t>(run.limit * 1000));
            const pid_t pid = fork();
            if (pid == 0) {
                if (run.output >= 0) {
                    dup2(run.output, 1);
                    dup2(run.output, 2);
                }
                child(next);
                _exit(0);
            }
            if (pid < 0) {
                failures[next] = std::string("fork failed: ") + std::strerror(errno);
                close(run.output);
                ++next;
                continue;
            }
            run.pid = pid;
            ++next;
            ++busy;
        }
        // Wait for a child to end, or the nearest deadline.
        const auto now = std::chrono::steady_clock::now();
        for (Running &run : slots) {
            if (run.pid == -1)
                continue;
            int status = 0;
            const pid_t done = waitpid(run.pid, &status, WNOHANG);
            bool timed_out = false;
            if (done == 0 && now >= run.deadline) {
                kill(run.pid, SIGKILL);
                waitpid(run.pid, &status, 0);
                timed_out = true;
            } else if (done == 0) {
                continue;
            }
            if (seconds != nullptr)
                (*seconds)[run.call] = std::chrono::duration<double>(now - run.start).count();
            failures[run.call] = verdict(status, timed_out, run.limit, run.output >= 0 ? read_all(run.output) : std::string());
            if (run.output >= 0)
                close(run.output);
            run.pid = -1;
            --busy;
        }
        if (busy == slots.size() || (next >= count && busy > 0)) {
            // Sleep briefly unless a child ends sooner (SIGCHLD interrupts).
            timespec ts{0, 1000000};
            nanosleep(&ts, nullptr);
        }
    }
    std::vector<std::pair<size_t, std::string>> out;
    for (size_t i = 0; i < count; ++i)
        if (!failures[i].empty())
            out.emplace_back(i, std::move(failures[i]));
    return out;
}

// The scratch folders, one per running child, for the whole program.
const fs::path &scratch_root() {
    static const fs::path root = [] {
        std::string tmpl = (fs::temp_directory_path() / "brindle-sweep-XXXXXX").string();
        if (mkdtemp(tmpl.data()) == nullptr)
            std::abort();
        return fs::path(tmpl);
    }();
    return root;
}

struct RemoveScratch {
    ~RemoveScratch() {
        std::error_code ec;
        fs::remove_all(scratch_root(), ec);
    }
};

size_t jobs() { return static_cast<size_t>(env_seconds("BRINDLE_SWEEP_JOBS", 2)); }

// ---------------------------------------------------------------------------
// The tests.

const Excluded *excluded(const char *name) {
    for (const Excluded &x : kExcluded)
        if (std::strcmp(x.name, name) == 0)
            return &x;
    return nullptr;
}

class Sweep : public ::testing::TestWithParam<size_t> {};

TEST_P(Sweep, HostileArguments) {
    const Export &e = kExports[GetParam()];
    if (const Excluded *x = excluded(e.name))
        GTEST_SKIP() << e.name << " is not swept: it " << x->reason;
    static RemoveScratch remove_at_exit;
    big_text(false), big_text(true);
    const std::vector<Call> calls = calls_of(e);
    const bool files = is_file_family(e);
    const double limit = env_seconds("BRINDLE_SWEEP_LIMIT", 10), big_limit = env_seconds("BRINDLE_SWEEP_BIG_LIMIT", 30);
    std::vector<fs::path> dirs;
    for (size_t s = 0; s < std::max<size_t>(jobs(), 1); ++s) {
        dirs.push_back(scratch_root() / ("w" + std::to_string(s)));
        if (!fs::exists(dirs.back()))
            make_fixture(dirs.back());
    }
    size_t slot_of_next = 0;
    std::vector<double> seconds;
    const auto failures = run_children(
        calls.size(),
        [&](size_t i) {
            if (chdir(dirs[slot_of_next].c_str()) != 0)
                _exit(6);
            // Bare profile-file names live in the configuration directory:
            // keep them in the scratch folder too.
            setenv("XDG_CONFIG_HOME", dirs[slot_of_next].c_str(), 1);
            child_main(e, calls[i]);
        },
        [&](size_t i) { return calls[i].big ? big_limit : limit; },
        [&](size_t, size_t slot) {
            slot_of_next = slot;
            if (files)
                make_fixture(dirs[slot]);
        },
        jobs(), &seconds);
    if (std::getenv("BRINDLE_SWEEP_RSS") != nullptr) {
        std::ifstream status("/proc/self/status");
        for (std::string line; std::getline(status, line);)
            if (line.rfind("VmRSS", 0) == 0)
                std::printf("  %s\n", line.c_str());
    }
    const double slow = env_seconds("BRINDLE_SWEEP_SLOW", 1e9);
    for (size_t i = 0; i < calls.size(); ++i)
        if (seconds[i] >= slow)
            std::printf("  %.2f s  %s\n", seconds[i], describe(e, calls[i]).c_str());
    for (const auto &[i, why] : failures)
        ADD_FAILURE() << describe(e, calls[i]) << ": " << why;
}

std::string export_name(const ::testing::TestParamInfo<size_t> &info) { return kExports[info.param].name; }

INSTANTIATE_TEST_SUITE_P(Exports, Sweep, ::testing::Range<size_t>(0, kExportCount), export_name);

// Every name in the tables above is an export of the list, so that an
// exclusion does not outlive its export.
TEST(SweepRules, NameExportsOfTheList) {
    auto find = [](const char *name) -> const Export * {
        for (size_t i = 0; i < kExportCount; ++i)
            if (std::strcmp(kExports[i].name, name) == 0)
                return &kExports[i];
        return nullptr;
    };
    for (const Excluded &x : kExcluded)
        EXPECT_NE(find(x.name), nullptr) << x.name;
    for (const SafeValues &s : kSafeValues) {
        const Export *e = find(s.name);
        ASSERT_NE(e, nullptr) << s.name;
        const auto it = std::find_if(e->args, e->args + e->argc, [&](const Arg &a) { return std::strcmp(a.name, s.arg) == 0; });
        ASSERT_NE(it, e->args + e->argc) << s.name << " has no argument " << s.arg;
        const Plan p = plan_of(*e);
        EXPECT_EQ(p.allowed[static_cast<size_t>(it - e->args)].size(), s.labels.size())
            << s.name << ": a safe value is not in the pool";
    }
}

void *volatile g_dropped; // a block the leak case below forgets

// The judge sees what it must see: a clean child passes; a crash, a hang, a
// sanitizer report, a failed check and (sanitizer builds) a leak each give
// the verdict they should.
TEST(SweepRules, JudgeCatchesFaults) {
    const std::vector<std::function<void()>> bodies = {
        [] { _exit(0); },
        [] { raise(SIGSEGV); },
        [] {
            for (;;)
                pause();
        },
        [] {
            std::fprintf(stderr, "==1==ERROR: AddressSanitizer: heap-buffer-overflow\n");
            _exit(0);
        },
        [] { end_child(3); },
        [] {
            g_dropped = std::malloc(64);
            g_dropped = nullptr;
            end_child(0);
        },
    };
    const auto failures = run_children(
        bodies.size(), [&](size_t i) { bodies[i](); }, [](size_t) { return 1.0; }, [](size_t, size_t) {}, 2);
    std::vector<std::pair<size_t, const char *>> expected = {
        {1, "signal"}, {2, "within 1 s"}, {3, "sanitizer report"}, {4, "status 3"}};
#ifdef BRINDLE_SWEEP_LSAN
    expected.emplace_back(5, "leaked memory");
#endif
    ASSERT_EQ(failures.size(), expected.size());
    for (size_t k = 0; k < expected.size(); ++k) {
        EXPECT_EQ(failures[k].first, expected[k].first);
        EXPECT_NE(failures[k].second.find(expected[k].second), std::string::npos) << failures[k].second;
    }
}

}  // namespace
}  // namespace brindle::sweep
