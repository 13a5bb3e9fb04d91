// Counting and searching: equal elements of a typed array (element by
// element, any lower bound), keys in string arrays and two-column look-up
// tables of strings.
#include "arrays/statistics_engine.h"
#include "common/ascii.h"
#include "frame/frame.h"

#include <string_view>

using namespace brindle::frame;

namespace brindle::arrays {

namespace {

auto numbers(const ArrayElements &a, int16_t code) {
    return [&a, code](size_t k) { return a.get_number(code, a.lower() + static_cast<int32_t>(k)); };
}

// Elements of dimension 1 equal to value (numbers compare as numbers: a
// NaN equals nothing).
int32_t count_equal(SAFEARRAY **array, int16_t code, double value) {
    const ArrayElements a(array);
    return a.holds_references() ? 0 : series_count_equal(a.count(), numbers(a, code), value);
}

// Subscript of the first element equal to value, or -1.
int32_t search_equal(SAFEARRAY **array, int16_t code, double value) {
    const ArrayElements a(array);
    if (a.holds_references())
        return -1;
    const auto k = series_find_equal(a.count(), numbers(a, code), value);
    return k ? a.lower() + static_cast<int32_t>(*k) : -1;
}

// The C runtime's comparison of two zero-terminated texts for equality:
// byte for byte, or folding A-Z to a-z.
bool same_text(std::string_view a, std::string_view b, bool case_sensitive) {
    a = a.substr(0, a.find('\0'));
    b = b.substr(0, b.find('\0'));
    return case_sensitive ? a == b : brindle::common::equal_no_case(a, b);
}

// Subscript of the LAST element equal to the key (every match overwrites),
// or -1. A null element matches only an empty key. A two-dimensional array
// is searched along dimension 1 at the lower bound of dimension 2.
int32_t search_string(SAFEARRAY **array, BSTR *key_ref, int16_t case_flag) {
    const ArrayElements a(array);
    if (!a.holds_strings() || a.dims() > 2)
        return -1;
    const std::string_view key = StrArg::by_ref(key_ref).text();
    const bool case_sensitive = flag16(case_flag);
    int32_t found = -1;
    for (size_t k = 0; k < a.count(); ++k) {
        const int32_t at = a.lower() + static_cast<int32_t>(k);
        const auto element = a.get_string(at);
        if (element ? same_text(*element, key, case_sensitive) : key.empty())
            found = at;
    }
    return found;
}

// The value column (i, 2) of the last row whose key column (i, 1) equals
// the key; the second subscripts are the literals 1 and 2, whatever the
// lower bound of dimension 2. A null (or unreadable) key element matches
// any key. Empty when no row matches or the array is not two-dimensional.
BSTR look_up(SAFEARRAY **array, BSTR *key_ref, int16_t case_flag) {
    const ArrayElements a(array);
    if (!a.holds_strings() || a.dims() != 2)
        return empty_string();
    const std::string_view key = StrArg::by_ref(key_ref).text();
    const bool case_sensitive = flag16(case_flag);
    std::string result;
    for (size_t k = 0; k < a.count(); ++k) {
        const int32_t at = a.lower() + static_cast<int32_t>(k);
        const auto element = string_element(array, {at, 1});
        if (!element || same_text(*element, key, case_sensitive))
            result = string_element(array, {at, 2}).value_or(std::string());
    }
    return new_string(result);
}

} // namespace

} // namespace brindle::arrays

using namespace brindle::arrays;

BRINDLE_EXPORT(int32_t) cCountI(SAFEARRAY **Arr, int16_t Value) { return guarded<int32_t>(0, [&] { return count_equal(Arr, 2, Value); }); }
BRINDLE_EXPORT(int32_t) cCountL(SAFEARRAY **Arr, int32_t Value) { return guarded<int32_t>(0, [&] { return count_equal(Arr, 3, Value); }); }
BRINDLE_EXPORT(int32_t) cCountS(SAFEARRAY **Arr, float Value) { return guarded<int32_t>(0, [&] { return count_equal(Arr, 4, Value); }); }
BRINDLE_EXPORT(int32_t) cCountD(SAFEARRAY **Arr, double Value) { return guarded<int32_t>(0, [&] { return count_equal(Arr, 5, Value); }); }
BRINDLE_EXPORT(int32_t) cSearchI(SAFEARRAY **Arr, int16_t Value) { return guarded<int32_t>(-1, [&] { return search_equal(Arr, 2, Value); }); }
BRINDLE_EXPORT(int32_t) cSearchL(SAFEARRAY **Arr, int32_t Value) { return guarded<int32_t>(-1, [&] { return search_equal(Arr, 3, Value); }); }
BRINDLE_EXPORT(int32_t) cSearchS(SAFEARRAY **Arr, float Value) { return guarded<int32_t>(-1, [&] { return search_equal(Arr, 4, Value); }); }
BRINDLE_EXPORT(int32_t) cSearchD(SAFEARRAY **Arr, double Value) { return guarded<int32_t>(-1, [&] { return search_equal(Arr, 5, Value); }); }

BRINDLE_EXPORT(int32_t) cSearchStr(SAFEARRAY **Arr, BSTR *Key, int16_t CaseSensitive) {
    return guarded<int32_t>(-1, [&] { return search_string(Arr, Key, CaseSensitive); });
}
BRINDLE_EXPORT(BSTR) cArrayLookUp(SAFEARRAY **Arr, BSTR *Key, int16_t CaseSensitive) {
    return guarded_string([&] { return look_up(Arr, Key, CaseSensitive); });
}
