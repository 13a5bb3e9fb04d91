// Number renderings of the Windows C runtime, written out in portable code so
// that every platform gives the same text.
#pragma once

#include <string>

namespace brindle::runtime {

// _gcvt(value, digits): `digits` significant digits, in fixed notation when
// the decimal exponent x of the rounded value satisfies -1 <= x < digits,
// otherwise as d.ddde+XXX (the exponent with at least three digits). Trailing
// zeros after the decimal point are dropped but the point itself stays:
// 100 gives "100.", 1e20 gives "1.e+020", 0.05 gives "5.e-002".
//
// Like the runtime, at most 17 significant digits are produced; any further
// ones are zeros. A digits value below 1 counts as 1; values above 400 give
// the same text as 400 (every double has been in fixed notation by then).
// Infinities and NaNs give "1.#INF" and "1.#QNAN", with "-" when the sign
// bit is set.
std::string crt_gcvt(double value, int digits);

} // namespace brindle::runtime
