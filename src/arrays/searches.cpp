// Counting and searching: equal elements of a typed array (element by
// element, any lower bound), keys in string arrays and two-column look-up
// tables of strings.
#include "arrays/statistics_engine.h"
#include "arrays/text_search.h"
#include "frame/frame.h"

#include <string>

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

// Subscript of the LAST element equal to the key, or -1 (text_search.h). A
// two-dimensional array is searched along dimension 1 at the lower bound
// of dimension 2.
int32_t search_string(SAFEARRAY **array, BSTR *key_ref, int16_t case_flag) {
    const ArrayElements a(array);
    if (!a.holds_strings() || a.dims() > 2)
        return -1;
    const auto k = last_equal_text(
        a.count(), [&a](size_t i) { return a.get_string(a.lower() + static_cast<int32_t>(i)); },
        StrArg::by_ref(key_ref).text(), flag16(case_flag));
    return k ? a.lower() + static_cast<int32_t>(*k) : -1;
}

// The value column (i, 2) of the last row whose key column (i, 1) equals
// the key; the second subscripts are the literals 1 and 2, whatever the
// lower bound of dimension 2. A null (or unreadable) key element matches
// any key. Empty when no row matches or the array is not two-dimensional.
BSTR look_up(SAFEARRAY **array, BSTR *key_ref, int16_t case_flag) {
    const ArrayElements a(array);
    if (!a.holds_strings() || a.dims() != 2)
        return empty_string();
    const auto row = last_lookup_row(
        a.count(), [&](size_t i) { return string_element(array, {a.lower() + static_cast<int32_t>(i), 1}); },
        StrArg::by_ref(key_ref).text(), flag16(case_flag));
    if (!row)
        return new_string({});
    return new_string(string_element(array, {a.lower() + static_cast<int32_t>(*row), 2}).value_or(std::string()));
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
