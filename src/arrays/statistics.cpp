// Statistics over dimension 1 of a typed array (sums, means, the family's
// deviation, maxima and minima) and the parameters of any array. All of
// them read element by element, so any lower bound works. An array of
// strings or variants (passed where numbers were declared) gives 0.
#include "arrays/block_units.h"
#include "arrays/statistics_engine.h"
#include "frame/frame.h"

#include <cfloat>
#include <climits>

using namespace brindle::frame;

namespace brindle::arrays {

namespace {

// The elements of dimension 1 as numbers of the given type code (an unknown
// code reads 0 for every element).
auto numbers(const ArrayElements &a, int16_t code) {
    return [&a, code](size_t k) { return a.get_number(code, a.lower() + static_cast<int32_t>(k)); };
}

double sum(SAFEARRAY **array, int16_t code) {
    const ArrayElements a(array);
    return series_sum(a.count(), numbers(a, code));
}

double mean(SAFEARRAY **array, int16_t code) {
    const ArrayElements a(array);
    return a.holds_references() ? 0.0 : series_mean(a.count(), numbers(a, code));
}

double deviation(SAFEARRAY **array, int16_t code) {
    const ArrayElements a(array);
    return a.holds_references() ? 0.0 : series_deviation(a.count(), numbers(a, code));
}

// The running value starts from the element at subscript 1 whatever the
// lower bound; when 1 is outside the array the element at the lower bound
// stands in, which gives the same result in every case where subscript 1
// would. An empty array gives 0.
double extreme(SAFEARRAY **array, int16_t code, bool largest) {
    const ArrayElements a(array);
    if (a.count() == 0 || a.holds_references())
        return 0.0;
    const size_t start = (a.lower() <= 1 && 1 <= a.upper()) ? static_cast<size_t>(1 - static_cast<int64_t>(a.lower())) : 0;
    return series_extreme(a.count(), numbers(a, code), start, largest);
}

double extreme_not_x(SAFEARRAY **array, int16_t code, bool largest, double x, double start) {
    const ArrayElements a(array);
    return a.holds_references() ? 0.0 : series_extreme_except(a.count(), numbers(a, code), largest, x, start);
}

// The Max start values are the negated smallest normal numbers, not the most
// negative ones: an array of negative numbers gives the start value back.
constexpr double kMaxStartS = -static_cast<double>(FLT_MIN);
constexpr double kMaxStartD = -DBL_MIN;

int16_t array_parameters(SAFEARRAY **array, ArrayParameters *prm) {
    if (prm != nullptr)
        *prm = read_array_parameters(array);
    return -1;
}

} // namespace

ArrayParameters read_array_parameters(SAFEARRAY **array) noexcept {
    const ArrayElements a(array);
    ArrayParameters prm{};
    if (!a.present())
        return prm;
    prm.LowerBound = static_cast<int16_t>(a.lower());
    prm.UpperBound = static_cast<int16_t>(a.upper());
    prm.ElementSize = static_cast<int16_t>(a.element_size());
    prm.Dimensions = static_cast<int16_t>(a.dims());
    prm.Count = static_cast<int16_t>(prm.UpperBound - prm.LowerBound + 1);
    return prm;
}

} // namespace brindle::arrays

using namespace brindle::arrays;

namespace {
template <class T> T as(double v) { return static_cast<T>(v); }
} // namespace

BRINDLE_EXPORT(double) cSumI(SAFEARRAY **Arr) { return guarded(0.0, [&] { return sum(Arr, 2); }); }
BRINDLE_EXPORT(double) cSumL(SAFEARRAY **Arr) { return guarded(0.0, [&] { return sum(Arr, 3); }); }
BRINDLE_EXPORT(double) cSumS(SAFEARRAY **Arr) { return guarded(0.0, [&] { return sum(Arr, 4); }); }
BRINDLE_EXPORT(double) cSumD(SAFEARRAY **Arr) { return guarded(0.0, [&] { return sum(Arr, 5); }); }
BRINDLE_EXPORT(double) cMeanI(SAFEARRAY **Arr) { return guarded(0.0, [&] { return mean(Arr, 2); }); }
BRINDLE_EXPORT(double) cMeanL(SAFEARRAY **Arr) { return guarded(0.0, [&] { return mean(Arr, 3); }); }
BRINDLE_EXPORT(double) cMeanS(SAFEARRAY **Arr) { return guarded(0.0, [&] { return mean(Arr, 4); }); }
BRINDLE_EXPORT(double) cMeanD(SAFEARRAY **Arr) { return guarded(0.0, [&] { return mean(Arr, 5); }); }
BRINDLE_EXPORT(double) cDeviationI(SAFEARRAY **Arr) { return guarded(0.0, [&] { return deviation(Arr, 2); }); }
BRINDLE_EXPORT(double) cDeviationL(SAFEARRAY **Arr) { return guarded(0.0, [&] { return deviation(Arr, 3); }); }
BRINDLE_EXPORT(double) cDeviationS(SAFEARRAY **Arr) { return guarded(0.0, [&] { return deviation(Arr, 4); }); }
BRINDLE_EXPORT(double) cDeviationD(SAFEARRAY **Arr) { return guarded(0.0, [&] { return deviation(Arr, 5); }); }

BRINDLE_EXPORT(int16_t) cMaxI(SAFEARRAY **Arr) { return guarded<int16_t>(0, [&] { return as<int16_t>(extreme(Arr, 2, true)); }); }
BRINDLE_EXPORT(int32_t) cMaxL(SAFEARRAY **Arr) { return guarded<int32_t>(0, [&] { return as<int32_t>(extreme(Arr, 3, true)); }); }
BRINDLE_EXPORT(float) cMaxS(SAFEARRAY **Arr) { return guarded(0.0f, [&] { return as<float>(extreme(Arr, 4, true)); }); }
BRINDLE_EXPORT(double) cMaxD(SAFEARRAY **Arr) { return guarded(0.0, [&] { return extreme(Arr, 5, true); }); }
BRINDLE_EXPORT(int16_t) cMinI(SAFEARRAY **Arr) { return guarded<int16_t>(0, [&] { return as<int16_t>(extreme(Arr, 2, false)); }); }
BRINDLE_EXPORT(int32_t) cMinL(SAFEARRAY **Arr) { return guarded<int32_t>(0, [&] { return as<int32_t>(extreme(Arr, 3, false)); }); }
BRINDLE_EXPORT(float) cMinS(SAFEARRAY **Arr) { return guarded(0.0f, [&] { return as<float>(extreme(Arr, 4, false)); }); }
BRINDLE_EXPORT(double) cMinD(SAFEARRAY **Arr) { return guarded(0.0, [&] { return extreme(Arr, 5, false); }); }

BRINDLE_EXPORT(int16_t) cMaxNotXI(SAFEARRAY **Arr, int16_t X) { return guarded<int16_t>(0, [&] { return as<int16_t>(extreme_not_x(Arr, 2, true, X, SHRT_MIN)); }); }
BRINDLE_EXPORT(int32_t) cMaxNotXL(SAFEARRAY **Arr, int32_t X) { return guarded<int32_t>(0, [&] { return as<int32_t>(extreme_not_x(Arr, 3, true, X, INT_MIN)); }); }
BRINDLE_EXPORT(float) cMaxNotXS(SAFEARRAY **Arr, float X) { return guarded(0.0f, [&] { return as<float>(extreme_not_x(Arr, 4, true, X, kMaxStartS)); }); }
BRINDLE_EXPORT(double) cMaxNotXD(SAFEARRAY **Arr, double X) { return guarded(0.0, [&] { return extreme_not_x(Arr, 5, true, X, kMaxStartD); }); }
BRINDLE_EXPORT(int16_t) cMinNotXI(SAFEARRAY **Arr, int16_t X) { return guarded<int16_t>(0, [&] { return as<int16_t>(extreme_not_x(Arr, 2, false, X, SHRT_MAX)); }); }
BRINDLE_EXPORT(int32_t) cMinNotXL(SAFEARRAY **Arr, int32_t X) { return guarded<int32_t>(0, [&] { return as<int32_t>(extreme_not_x(Arr, 3, false, X, INT_MAX)); }); }
BRINDLE_EXPORT(float) cMinNotXS(SAFEARRAY **Arr, float X) { return guarded(0.0f, [&] { return as<float>(extreme_not_x(Arr, 4, false, X, FLT_MAX)); }); }
BRINDLE_EXPORT(double) cMinNotXD(SAFEARRAY **Arr, double X) { return guarded(0.0, [&] { return extreme_not_x(Arr, 5, false, X, DBL_MAX); }); }

BRINDLE_EXPORT(int16_t) cArrayPrm(SAFEARRAY **Arr, ArrayParameters *Prm) { return guarded<int16_t>(-1, [&] { return array_parameters(Arr, Prm); }); }
