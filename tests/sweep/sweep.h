// The adversarial sweep: every export of the list called with hostile
// arguments, each call in a child process. The table of exports is generated
// from the list (tools/gen_sweep.py); tests/sweep/sweep.cpp builds the
// arguments, runs the calls and judges them.
#pragma once

#include <brindle/ole.h>
#include <brindle/exports.h>

#include <cstddef>

namespace brindle::sweep {

// How an argument travels, as the list declares it.
enum class Kind {
    Str, StrRef, I16, I16Ref, I32, I32Ref, F32, F32Ref, F64, F64Ref, U8, U8Ref,
    Bool, BoolRef, Cy, CyRef, Date, DateRef, VarRef,
    ArrI16, ArrI32, ArrF32, ArrF64, ArrU8, ArrBool, ArrCy, ArrDate, ArrStr, ArrVar, ArrAny,
    Record,
};

// A record's layout: its size and where its String fields (handles) are.
struct RecordInfo {
    const char *name;
    size_t size;
    const size_t *strings;
    size_t string_count;
};

struct Arg {
    Kind kind;
    const char *name;
    const RecordInfo *record; // Kind::Record only
};

// What the call returned, kept for the checks after the call.
class Result {
  public:
    void string(BSTR s) {
        has_string_ = true;
        string_ = s;
    }
    void variant(VARIANT v) {
        has_variant_ = true;
        variant_ = v;
    }
    bool has_string() const { return has_string_; }
    BSTR string_value() const { return string_; }
    bool has_variant() const { return has_variant_; }
    VARIANT *variant_value() { return &variant_; }

  private:
    bool has_string_ = false, has_variant_ = false;
    BSTR string_ = nullptr;
    VARIANT variant_{};
};

constexpr size_t kMaxArgs = 8;

struct Export {
    const char *name;
    const char *file; // the family file of the list
    size_t argc;
    Arg args[kMaxArgs];
    // Calls the export with the argument cells (one heap cell per argument,
    // exactly the size of what it holds); a by-value argument is read from its
    // cell, a by-reference argument is the cell itself.
    void (*call)(void *const *cells, Result &result);
};

extern const Export kExports[];
extern const size_t kExportCount;

} // namespace brindle::sweep
