// Small RAII helpers that build and free the arguments a VB client would
// pass (strings, arrays, variants) and read the results it gets back.
#pragma once

#ifdef _WIN32
#include "platform/win32/ole_system.h" // the system's OLE, as the library sees it
#else
#include <brindle/ole.h>
#endif
#include <brindle/exports.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace brindle::test {

// A byte string argument (one byte per character), or a null handle.
class Bstr {
  public:
    Bstr() = default; // the null handle
    explicit Bstr(std::string_view bytes)
        : handle_(SysAllocStringByteLen(bytes.data(), static_cast<UINT>(bytes.size()))) {}
    ~Bstr() { SysFreeString(handle_); }
    Bstr(const Bstr &) = delete;
    Bstr &operator=(const Bstr &) = delete;

    BSTR *ref() { return &handle_; } // by reference
    BSTR val() const { return handle_; } // by value
    std::string bytes() const {
        return handle_ == nullptr ? std::string() : std::string(reinterpret_cast<const char *>(handle_), SysStringByteLen(handle_));
    }

  private:
    BSTR handle_ = nullptr;
};

// What a string export returned.
struct Returned {
    std::string bytes;
    bool is_null = false;  // a null handle (never a valid result)
    bool is_input = false; // the very handle of one of the inputs
};

// Reads a string result and frees it, unless it is one of the inputs' own
// handles (the "nothing to do" results), which stay with their owners.
inline Returned returned(BSTR result, std::initializer_list<const Bstr *> inputs = {}) {
    Returned r;
    r.is_null = result == nullptr;
    for (const Bstr *in : inputs)
        if (result != nullptr && result == in->val())
            r.is_input = true;
    if (result != nullptr)
        r.bytes.assign(reinterpret_cast<const char *>(result), SysStringByteLen(result));
    if (!r.is_input)
        SysFreeString(result);
    return r;
}

// The bytes of a new (non-null, not an input) string result.
inline std::string str(BSTR result) {
    const Returned r = returned(result);
    EXPECT_FALSE(r.is_null) << "a string result must never be a null handle";
    return r.bytes;
}

// A SAFEARRAY of one or two dimensions; destroyed with the helper.
class SafeArray {
  public:
    SafeArray(VARTYPE vt, LONG lower, ULONG count) {
        SAFEARRAYBOUND b{count, lower};
        array_ = SafeArrayCreate(vt, 1, &b);
    }
    SafeArray(VARTYPE vt, std::initializer_list<SAFEARRAYBOUND> bounds) {
        std::vector<SAFEARRAYBOUND> b(bounds);
        array_ = SafeArrayCreate(vt, static_cast<UINT>(b.size()), b.data());
    }
    ~SafeArray() { SafeArrayDestroy(array_); }
    SafeArray(const SafeArray &) = delete;
    SafeArray &operator=(const SafeArray &) = delete;

    SAFEARRAY **ref() { return &array_; }
    SAFEARRAY *get() const { return array_; }
    template <class T> T *data() const { return static_cast<T *>(array_->pvData); }

  private:
    SAFEARRAY *array_ = nullptr;
};

// A VARIANT that clears itself.
class Variant {
  public:
    Variant() { VariantInit(&v_); }
    static Variant of_long(int32_t x) {
        Variant v;
        V_VT(&v.v_) = VT_I4;
        V_I4(&v.v_) = x;
        return v;
    }
    static Variant of_double(double x) {
        Variant v;
        V_VT(&v.v_) = VT_R8;
        V_R8(&v.v_) = x;
        return v;
    }
    // Text as VB keeps it in a Variant: UTF-16, here from Latin-1 bytes.
    static Variant of_text(std::string_view latin1) {
        Variant v;
        std::vector<OLECHAR> wide(latin1.begin(), latin1.end());
        for (size_t i = 0; i < latin1.size(); ++i)
            wide[i] = static_cast<unsigned char>(latin1[i]);
        V_VT(&v.v_) = VT_BSTR;
        V_BSTR(&v.v_) = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
        return v;
    }
    Variant(Variant &&other) noexcept : v_(other.v_) { VariantInit(&other.v_); }
    ~Variant() { VariantClear(&v_); }
    Variant(const Variant &) = delete;
    Variant &operator=(const Variant &) = delete;

    VARIANT *ptr() { return &v_; }
    const VARIANT &get() const { return v_; }

  private:
    VARIANT v_;
};

} // namespace brindle::test
