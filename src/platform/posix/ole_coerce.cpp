// VariantChangeType and VarR8FromCy: the coercions between the OLE Automation
// value types, with the results and error codes of the Windows implementation
// in the en-US locale.
//
// A conversion is always computed into a local value first. The target is
// cleared and overwritten only when the conversion succeeded, so a failed call
// leaves the target as it was, and a call whose target is its own source
// converts in place.
//
// Rules worth knowing (all as Windows does them):
//  - doubles, dates and currency narrow to integers by rounding half to even;
//    a result outside the target type is DISP_E_OVERFLOW;
//  - integers of the same width and opposite signedness are reinterpreted,
//    not range checked (I2 -1 becomes UI2 65535); other integer narrowings
//    are range checked;
//  - a Boolean converts to an integer by truncating its 16-bit value
//    (True, -1, becomes UI1 255 and UI4 0xFFFFFFFF);
//  - strings hold 16-bit OLECHARs and are read up to SysStringLen or the
//    first NUL, whichever comes first.
#include <brindle/ole.h>

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <initializer_list>
#include <string>
#include <vector>

namespace {

constexpr VARTYPE kVector = 0x1000;
constexpr VARTYPE kReserved = 0x8000;
constexpr VARTYPE kFirstNonVariantType = 24; // VT_VOID and above only describe type libraries
constexpr VARTYPE kUnusedType = 15;
constexpr VARTYPE kClsid = 72;
constexpr USHORT kLocalBool = 0x10; // VARIANT_LOCALBOOL: the same English words here

constexpr int64_t kCyScale = 10000;
constexpr double kDateMin = -657434.0; // 1 January 100
constexpr double kDateMax = 2958465.0; // 31 December 9999
// OLE refuses integers of this magnitude or more as currency, although a few
// of them would fit the 64-bit field.
constexpr uint64_t kCyIntegerLimit = 922337203685477;

// ---------------------------------------------------------------------------
// Type checks and reading the source

// The type codes a VARIANT may carry at all; anything else is
// DISP_E_BADVARTYPE before any conversion is tried.
HRESULT check_type(VARTYPE vt) {
    if (vt & (kVector | kReserved))
        return DISP_E_BADVARTYPE;
    const VARTYPE base = vt & VT_TYPEMASK;
    if (base == kUnusedType || (base >= kFirstNonVariantType && base != VT_RECORD && base != kClsid))
        return DISP_E_BADVARTYPE;
    if ((vt & (VT_BYREF | VT_ARRAY)) && base <= VT_NULL)
        return DISP_E_BADVARTYPE;
    return S_OK;
}

// Copies the value `source` holds or refers to into `out` as a by-value
// variant. Strings and arrays are borrowed, not copied: `out` owns nothing.
// A reference to a VARIANT is followed once; a reference to a reference to a
// VARIANT is E_INVALIDARG, as is a reference to a type that has no value.
HRESULT load_source(const VARIANT *source, VARIANT *out, bool follow_variant) {
    const VARTYPE vt = V_VT(source);
    const HRESULT valid = check_type(vt);
    if (valid != S_OK)
        return valid;
    if (!(vt & VT_BYREF)) {
        *out = *source;
        return S_OK;
    }
    const void *p = V_BYREF(source);
    if (p == nullptr)
        return DISP_E_TYPEMISMATCH;
    const VARTYPE base = vt & VT_TYPEMASK;
    std::memset(out, 0, sizeof *out);
    if (vt & VT_ARRAY) {
        V_VT(out) = static_cast<VARTYPE>(vt & ~VT_BYREF);
        std::memcpy(&V_ARRAY(out), p, sizeof(SAFEARRAY *));
        return S_OK;
    }
    if (base <= VT_NULL || base >= kFirstNonVariantType)
        return E_INVALIDARG;
    size_t size = 0;
    switch (base) {
    case VT_VARIANT: {
        const auto *inner = static_cast<const VARIANT *>(p);
        if (!follow_variant || V_VT(inner) == (VT_VARIANT | VT_BYREF))
            return E_INVALIDARG;
        return load_source(inner, out, false);
    }
    case VT_DECIMAL:
        // A DECIMAL fills the whole variant except the type field.
        std::memcpy(reinterpret_cast<char *>(out) + sizeof(VARTYPE), static_cast<const char *>(p) + sizeof(VARTYPE),
                    16 - sizeof(VARTYPE));
        V_VT(out) = VT_DECIMAL;
        return S_OK;
    case VT_I1:
    case VT_UI1:
        size = 1;
        break;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        size = 2;
        break;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
        size = 4;
        break;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_DATE:
    case VT_CY:
        size = 8;
        break;
    default: // strings and interfaces: the pointer itself
        size = sizeof(void *);
        break;
    }
    std::memcpy(&V_BYREF(out), p, size);
    V_VT(out) = base;
    return S_OK;
}

// The characters of a string value, up to its length or its first NUL.
struct Text {
    const OLECHAR *p = nullptr;
    size_t n = 0;
};

Text text_of(BSTR s) {
    Text t;
    if (s == nullptr)
        return t;
    const size_t length = SysStringLen(s);
    t.p = s;
    while (t.n < length && s[t.n] != 0)
        ++t.n;
    return t;
}

bool is_space(OLECHAR c) { return c == ' ' || (c >= 0x09 && c <= 0x0D) || c == 0xA0; }
bool is_digit(OLECHAR c) { return c >= '0' && c <= '9'; }
bool is_letter(OLECHAR c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
char lower(OLECHAR c) { return static_cast<char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c); }

bool equals_ascii(Text t, const char *word, bool ignore_case) {
    const size_t n = std::strlen(word);
    if (t.n != n)
        return false;
    for (size_t i = 0; i < n; ++i) {
        const OLECHAR c = ignore_case ? static_cast<OLECHAR>(lower(t.p[i])) : t.p[i];
        if (c != static_cast<unsigned char>(word[i]))
            return false;
    }
    return true;
}

// A new BSTR holding ASCII text; null when memory runs out.
BSTR make_bstr(const std::string &ascii) {
    std::vector<OLECHAR> wide(ascii.begin(), ascii.end());
    static const OLECHAR kNothing[1] = {0};
    return SysAllocStringLen(wide.empty() ? kNothing : wide.data(), static_cast<UINT>(wide.size()));
}

// ---------------------------------------------------------------------------
// Numbers in strings
//
// The grammar is the one OLE accepts for VarR8FromStr and friends in en-US:
// leading and trailing white space; one sign, before or after the digits; a
// '$' before the digits and any number of them after; parentheses for a
// negative amount; ',' between the digits (not before the first); one '.';
// an exponent e/E with an optional sign; or &H / &O followed by hexadecimal or
// octal digits. Nothing else may be left over.

constexpr size_t kMaxDigits = 800; // significant digits kept; more only scale the value

struct ParsedNumber {
    bool negative = false;
    bool radix = false; // written &H... or &O...
    bool radix_overflow = false;
    uint64_t radix_value = 0;
    std::string digits;   // significant decimal digits, the first not '0'; empty for zero
    int64_t exponent = 0; // the value is digits x 10^exponent
    bool inexact = false; // a non-zero digit past kMaxDigits was dropped
};

HRESULT parse_number(Text t, ParsedNumber *out) {
    const size_t n = t.n;
    auto at = [&](size_t k) -> OLECHAR { return k < n ? t.p[k] : 0; };
    size_t i = 0;
    bool sign = false, currency = false, paren = false;
    for (;;) {
        const OLECHAR c = at(i);
        if (i < n && is_space(c)) {
            while (i < n && is_space(t.p[i]))
                ++i;
        } else if ((c == '+' || c == '-') && !sign) {
            sign = true;
            out->negative = c == '-';
            ++i;
        } else if (c == '$' && !currency) {
            currency = true;
            ++i;
        } else if (c == '(' && !paren) {
            paren = true;
            ++i;
        } else {
            break;
        }
    }

    bool any_digit = false;
    const OLECHAR marker = at(i + 1);
    if (at(i) == '&' && (marker == 'H' || marker == 'h' || marker == 'O' || marker == 'o')) {
        const unsigned shift = (marker == 'H' || marker == 'h') ? 4 : 3;
        out->radix = true;
        i += 2;
        while (i < n) {
            const OLECHAR c = t.p[i];
            unsigned d;
            if (is_digit(c))
                d = c - '0';
            else if (c >= 'a' && c <= 'f')
                d = c - 'a' + 10;
            else if (c >= 'A' && c <= 'F')
                d = c - 'A' + 10;
            else
                break;
            if (d >= (1u << shift))
                break; // 8 and 9 end an octal number, letters a hexadecimal one
            if (out->radix_value >> (64 - shift))
                out->radix_overflow = true;
            out->radix_value = (out->radix_value << shift) | d;
            any_digit = true;
            ++i;
        }
    } else {
        bool fraction = false;
        while (i < n) {
            const OLECHAR c = t.p[i];
            if (is_digit(c)) {
                any_digit = true;
                if (out->digits.empty() && c == '0') {
                    if (fraction)
                        --out->exponent;
                } else if (out->digits.size() < kMaxDigits) {
                    out->digits.push_back(static_cast<char>(c));
                    if (fraction)
                        --out->exponent;
                } else {
                    if (!fraction)
                        ++out->exponent;
                    if (c != '0')
                        out->inexact = true;
                }
                ++i;
            } else if (c == ',' && any_digit && !fraction) {
                ++i;
            } else if (c == '.' && !fraction) {
                fraction = true;
                ++i;
            } else if ((c == 'e' || c == 'E') && any_digit) {
                size_t k = i + 1;
                const bool negative_exponent = at(k) == '-';
                if (at(k) == '+' || at(k) == '-')
                    ++k;
                if (!is_digit(at(k)))
                    return DISP_E_TYPEMISMATCH;
                int64_t e = 0;
                for (; k < n && is_digit(t.p[k]); ++k)
                    if (e < 1000000000)
                        e = e * 10 + (t.p[k] - '0');
                out->exponent += negative_exponent ? -e : e;
                i = k;
                break;
            } else {
                break;
            }
        }
    }

    bool trailing_sign = false, closed = false;
    for (;;) {
        const OLECHAR c = at(i);
        if (i < n && is_space(c)) {
            while (i < n && is_space(t.p[i]))
                ++i;
        } else if ((c == '+' || c == '-') && !sign && !trailing_sign) {
            trailing_sign = true;
            if (c == '-')
                out->negative = true;
            ++i;
        } else if (c == ')' && paren && !closed) {
            closed = true;
            out->negative = true;
            ++i;
        } else if (c == '$') {
            ++i;
        } else {
            break;
        }
    }
    if (i != n || !any_digit || paren != closed)
        return DISP_E_TYPEMISMATCH;
    return S_OK;
}

// ---------------------------------------------------------------------------
// Integers

struct Magnitude {
    bool negative = false;
    uint64_t value = 0;
};

uint64_t width_mask(int bits) { return bits >= 64 ? ~uint64_t{0} : (uint64_t{1} << bits) - 1; }

// Stores a signed magnitude as the two's complement bits of an integer type
// of `bits` bits, or refuses it with DISP_E_OVERFLOW.
HRESULT fit_integer(Magnitude m, int bits, bool is_signed, uint64_t *raw) {
    if (m.negative && m.value != 0) {
        if (!is_signed || m.value > (uint64_t{1} << (bits - 1)))
            return DISP_E_OVERFLOW;
        *raw = (uint64_t{0} - m.value) & width_mask(bits);
        return S_OK;
    }
    const uint64_t max = is_signed ? (uint64_t{1} << (bits - 1)) - 1 : width_mask(bits);
    if (m.value > max)
        return DISP_E_OVERFLOW;
    *raw = m.value;
    return S_OK;
}

Magnitude magnitude_of(int64_t v) {
    return {v < 0, v < 0 ? uint64_t{0} - static_cast<uint64_t>(v) : static_cast<uint64_t>(v)};
}

// OLE rounds half to even when it narrows a double to an integer.
double round_half_even(double d) {
    const double f = std::floor(d);
    const double diff = d - f;
    if (diff > 0.5)
        return f + 1.0;
    if (diff < 0.5)
        return f;
    return std::fmod(f, 2.0) == 0.0 ? f : f + 1.0;
}

HRESULT round_real(double d, Magnitude *m) {
    if (std::isnan(d))
        return DISP_E_OVERFLOW;
    const double r = round_half_even(d);
    const double a = std::fabs(r);
    if (!(a < 18446744073709551616.0))
        return DISP_E_OVERFLOW;
    m->negative = r < 0.0;
    m->value = static_cast<uint64_t>(a);
    return S_OK;
}

// Currency to the nearest integer, ties to even, computed exactly.
Magnitude round_currency(int64_t cy) {
    Magnitude m = magnitude_of(cy);
    const uint64_t rest = m.value % kCyScale;
    m.value /= kCyScale;
    if (rest > kCyScale / 2 || (rest == kCyScale / 2 && (m.value & 1)))
        ++m.value;
    return m;
}

// The integer nearest a parsed decimal number times 10^shift, ties to even.
HRESULT round_parsed(const ParsedNumber &p, int64_t shift, Magnitude *m) {
    m->negative = p.negative;
    m->value = 0;
    const std::string &d = p.digits;
    if (d.empty())
        return S_OK;
    const int64_t count = static_cast<int64_t>(d.size());
    const int64_t whole = count + p.exponent + shift; // digits before the point
    if (whole > 20)
        return DISP_E_OVERFLOW;
    uint64_t v = 0;
    for (int64_t k = 0; k < whole; ++k) {
        const unsigned digit = k < count ? static_cast<unsigned>(d[static_cast<size_t>(k)] - '0') : 0;
        if (v > (~uint64_t{0} - digit) / 10)
            return DISP_E_OVERFLOW;
        v = v * 10 + digit;
    }
    if (whole >= 0 && whole < count) {
        const size_t first = static_cast<size_t>(whole);
        bool up = d[first] > '5';
        if (d[first] == '5')
            up = d.find_first_not_of('0', first + 1) != std::string::npos || p.inexact || (v & 1);
        if (up) {
            if (v == ~uint64_t{0})
                return DISP_E_OVERFLOW;
            ++v;
        }
    }
    m->value = v;
    return S_OK;
}

// The value of &H / &O text as a double: up to 32 bits it is a Long, up to 64
// bits a LongLong, with the top bit as the sign.
HRESULT radix_real(const ParsedNumber &p, double *out) {
    if (p.radix_overflow)
        return DISP_E_OVERFLOW;
    const uint64_t v = p.radix_value;
    double r = (v >> 32) == 0 ? static_cast<double>(static_cast<int32_t>(static_cast<uint32_t>(v)))
                              : static_cast<double>(static_cast<int64_t>(v));
    *out = p.negative ? -r : r;
    return S_OK;
}

HRESULT parsed_real(const ParsedNumber &p, double *out) {
    if (p.radix)
        return radix_real(p, out);
    if (p.digits.empty()) {
        *out = p.negative ? -0.0 : 0.0;
        return S_OK;
    }
    // Only digits and an exponent: strtod reads them the same in any locale.
    std::string s = p.negative ? "-" : "";
    s += p.digits;
    s += 'e';
    s += std::to_string(p.exponent);
    const double r = std::strtod(s.c_str(), nullptr);
    if (std::isinf(r))
        return DISP_E_OVERFLOW;
    *out = r;
    return S_OK;
}

// Integer types: width and signedness of the types that have them.
bool integer_type(VARTYPE vt, int *bits, bool *is_signed) {
    switch (vt) {
    case VT_I1:
        *bits = 8, *is_signed = true;
        return true;
    case VT_UI1:
        *bits = 8, *is_signed = false;
        return true;
    case VT_I2:
        *bits = 16, *is_signed = true;
        return true;
    case VT_UI2:
        *bits = 16, *is_signed = false;
        return true;
    case VT_I4:
    case VT_INT:
        *bits = 32, *is_signed = true;
        return true;
    case VT_UI4:
    case VT_UINT:
        *bits = 32, *is_signed = false;
        return true;
    case VT_I8:
        *bits = 64, *is_signed = true;
        return true;
    case VT_UI8:
        *bits = 64, *is_signed = false;
        return true;
    default:
        return false;
    }
}

// The raw bits of an integer value, sign-extended for the signed types.
uint64_t integer_bits(const VARIANT &v) {
    switch (V_VT(&v)) {
    case VT_I1:
        return static_cast<uint64_t>(static_cast<int64_t>(V_I1(&v)));
    case VT_UI1:
        return V_UI1(&v);
    case VT_I2:
        return static_cast<uint64_t>(static_cast<int64_t>(V_I2(&v)));
    case VT_UI2:
        return V_UI2(&v);
    case VT_I4:
    case VT_INT:
        return static_cast<uint64_t>(static_cast<int64_t>(V_I4(&v)));
    case VT_UI4:
    case VT_UINT:
        return V_UI4(&v);
    case VT_I8:
        return static_cast<uint64_t>(V_I8(&v));
    default:
        return V_UI8(&v);
    }
}

Magnitude integer_magnitude(const VARIANT &v, bool is_signed) {
    const uint64_t bits = integer_bits(v);
    return is_signed ? magnitude_of(static_cast<int64_t>(bits)) : Magnitude{false, bits};
}

double integer_real(const VARIANT &v, bool is_signed) {
    const uint64_t bits = integer_bits(v);
    return is_signed ? static_cast<double>(static_cast<int64_t>(bits)) : static_cast<double>(bits);
}

HRESULT to_integer(const VARIANT &v, int bits, bool is_signed, uint64_t *raw) {
    int from_bits = 0;
    bool from_signed = false;
    const VARTYPE from = V_VT(&v);
    if (integer_type(from, &from_bits, &from_signed)) {
        if (from_bits == bits && from_signed != is_signed) {
            *raw = integer_bits(v) & width_mask(bits);
            return S_OK;
        }
        return fit_integer(integer_magnitude(v, from_signed), bits, is_signed, raw);
    }
    Magnitude m;
    HRESULT hr = S_OK;
    switch (from) {
    case VT_EMPTY:
        *raw = 0;
        return S_OK;
    case VT_BOOL:
        *raw = static_cast<uint64_t>(static_cast<int64_t>(V_BOOL(&v))) & width_mask(bits);
        return S_OK;
    case VT_R4:
        hr = round_real(V_R4(&v), &m);
        break;
    case VT_R8:
    case VT_DATE:
        hr = round_real(V_R8(&v), &m);
        break;
    case VT_CY:
        m = round_currency(V_CY(&v).int64);
        break;
    case VT_BSTR: {
        ParsedNumber p;
        hr = parse_number(text_of(V_BSTR(&v)), &p);
        if (hr != S_OK)
            return hr;
        if (p.radix) {
            if (p.radix_overflow || p.radix_value > width_mask(bits))
                return DISP_E_OVERFLOW;
            *raw = (p.negative ? uint64_t{0} - p.radix_value : p.radix_value) & width_mask(bits);
            return S_OK;
        }
        hr = round_parsed(p, 0, &m);
        break;
    }
    default:
        return DISP_E_TYPEMISMATCH;
    }
    if (hr != S_OK)
        return hr;
    return fit_integer(m, bits, is_signed, raw);
}

void store_integer(VARIANT *out, VARTYPE vt, uint64_t raw) {
    switch (vt) {
    case VT_I1:
        V_I1(out) = static_cast<int8_t>(raw);
        break;
    case VT_UI1:
        V_UI1(out) = static_cast<BYTE>(raw);
        break;
    case VT_I2:
        V_I2(out) = static_cast<SHORT>(raw);
        break;
    case VT_UI2:
        V_UI2(out) = static_cast<USHORT>(raw);
        break;
    case VT_I4:
    case VT_INT:
        V_I4(out) = static_cast<LONG>(raw);
        break;
    case VT_UI4:
    case VT_UINT:
        V_UI4(out) = static_cast<ULONG>(raw);
        break;
    case VT_I8:
        V_I8(out) = static_cast<int64_t>(raw);
        break;
    default:
        V_UI8(out) = raw;
        break;
    }
}

// ---------------------------------------------------------------------------
// Dates
//
// A DATE counts days from 30 December 1899; the fraction is the time of day.
// Before that day the fraction still adds time to the day the integer part
// names (-1.25 is 29 December 1899, 6 AM).

bool is_leap(int64_t y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; }

int days_in_month(int64_t y, int m) {
    static const int kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return m == 2 && is_leap(y) ? 29 : kDays[m - 1];
}

// Days from 1 January 1970 in the proleptic Gregorian calendar.
constexpr int64_t days_from_civil(int64_t y, int m, int d) {
    y -= m <= 2 ? 1 : 0;
    const int64_t era = (y >= 0 ? y : y - 399) / 400;
    const int64_t yoe = y - era * 400;
    const int64_t mp = m > 2 ? m - 3 : m + 9;
    const int64_t doy = (153 * mp + 2) / 5 + d - 1;
    const int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468;
}

void civil_from_days(int64_t z, int64_t *y, int *m, int *d) {
    z += 719468;
    const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    const int64_t doe = z - era * 146097;
    const int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const int64_t mp = (5 * doy + 2) / 153;
    *d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
    *m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
    *y = yoe + era * 400 + (*m <= 2 ? 1 : 0);
}

constexpr int64_t kOleEpoch = days_from_civil(1899, 12, 30); // -25569

bool date_in_range(double d) { return d > kDateMin - 1.0 && d < kDateMax + 1.0; }

// en-US short date and long time, as VarBstrFromDate writes them: the date
// alone when there is no time of day, the time alone on day zero.
HRESULT format_date(double value, std::string *out) {
    if (!date_in_range(value))
        return E_INVALIDARG;
    const double whole = std::trunc(value);
    const double fraction = std::fabs(value - whole);
    int64_t day = static_cast<int64_t>(whole);
    int64_t seconds = static_cast<int64_t>(std::floor(fraction * 86400.0 + 0.5));
    if (seconds >= 86400) { // a time that rounds up to midnight belongs to the next day
        seconds -= 86400;
        ++day;
    }
    if (day > static_cast<int64_t>(kDateMax))
        return E_INVALIDARG;
    const bool time_only = whole == 0.0;
    const bool date_only = !time_only && fraction < 1e-12;
    std::string s;
    if (!time_only) {
        int64_t y;
        int m, d;
        civil_from_days(day + kOleEpoch, &y, &m, &d);
        s = std::to_string(m) + "/" + std::to_string(d) + "/" + std::to_string(y);
    }
    if (!date_only) {
        const int64_t h = seconds / 3600, mi = seconds / 60 % 60, se = seconds % 60;
        if (!s.empty())
            s += ' ';
        s += std::to_string(h % 12 == 0 ? 12 : h % 12);
        s += mi < 10 ? ":0" : ":";
        s += std::to_string(mi);
        s += se < 10 ? ":0" : ":";
        s += std::to_string(se);
        s += h < 12 ? " AM" : " PM";
    }
    *out = s;
    return S_OK;
}

// Date text: numeric dates (M/D/Y, Y/M/D, D/M/Y when only that reading is
// valid; '/', '-', ',' or spaces between the parts), English month names and
// their three-letter abbreviations, and a time of day h:mm[:ss] or h.mm[.ss]
// with an optional AM/PM (A/P), or h AM/PM, before or after the date. A date
// without a year is in the current year. Numbers alone are not dates.

enum class DateToken { Number, Month, Meridiem, TimeSep, DateSep };

struct DateItem {
    DateToken kind;
    int value = 0;  // number, month 1-12, or 0 for AM / 1 for PM
    int digits = 0; // for numbers
};

int month_from_word(const std::string &w) {
    static const char *const kMonths[12] = {"january", "february", "march",     "april",   "may",      "june",
                                            "july",    "august",   "september", "october", "november", "december"};
    for (int i = 0; i < 12; ++i)
        if (w == kMonths[i] || (w.size() == 3 && std::strncmp(kMonths[i], w.c_str(), 3) == 0))
            return i + 1;
    return 0;
}

bool tokenize_date(Text t, std::vector<DateItem> *items) {
    size_t i = 0, n = t.n;
    while (i < n && is_space(t.p[i]))
        ++i;
    while (n > i && is_space(t.p[n - 1]))
        --n;
    if (i == n || n - i > 255)
        return false;
    while (i < n) {
        const OLECHAR c = t.p[i];
        if (is_digit(c)) {
            DateItem item{DateToken::Number};
            for (; i < n && is_digit(t.p[i]); ++i) {
                if (++item.digits > 9)
                    return false;
                item.value = item.value * 10 + (t.p[i] - '0');
            }
            items->push_back(item);
        } else if (is_letter(c)) {
            std::string word;
            for (; i < n && is_letter(t.p[i]) && word.size() < 16; ++i)
                word += lower(t.p[i]);
            if (i < n && is_letter(t.p[i]))
                return false;
            if (word == "am" || word == "a" || word == "pm" || word == "p") {
                items->push_back({DateToken::Meridiem, word[0] == 'p' ? 1 : 0});
            } else if (const int month = month_from_word(word)) {
                items->push_back({DateToken::Month, month});
            } else {
                return false;
            }
        } else {
            int time_marks = 0, date_marks = 0;
            for (; i < n; ++i) {
                const OLECHAR s = t.p[i];
                if (s == ':' || s == '.')
                    ++time_marks;
                else if (s == '/' || s == '-' || s == ',')
                    ++date_marks;
                else if (!is_space(s))
                    break;
            }
            if (time_marks + date_marks == 0 && !is_space(c))
                return false; // a character that has no place in a date
            if (time_marks > 1 || (time_marks && date_marks))
                return false;
            items->push_back({time_marks ? DateToken::TimeSep : DateToken::DateSep});
        }
    }
    const DateToken first = items->front().kind, last = items->back().kind;
    return first != DateToken::TimeSep && first != DateToken::DateSep && last != DateToken::TimeSep &&
           last != DateToken::DateSep;
}

int expand_year(const DateItem &n) {
    if (n.digits <= 2)
        return n.value < 30 ? 2000 + n.value : 1900 + n.value;
    return n.value;
}

bool valid_date(int64_t y, int m, int d) {
    return y >= 100 && y <= 9999 && m >= 1 && m <= 12 && d >= 1 && d <= days_in_month(y, m);
}

int64_t current_year() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    if (localtime_r(&now, &parts) == nullptr)
        return 2000;
    return parts.tm_year + 1900;
}

struct Ymd {
    int64_t y;
    int m, d;
};

bool first_valid(std::initializer_list<Ymd> tries, Ymd *out) {
    for (const Ymd &t : tries)
        if (valid_date(t.y, t.m, t.d)) {
            *out = t;
            return true;
        }
    return false;
}

HRESULT parse_date(Text t, double *out) {
    std::vector<DateItem> items;
    if (!tokenize_date(t, &items))
        return DISP_E_TYPEMISMATCH;

    // Group the time of day, and collect the date parts in order.
    struct Element {
        bool is_time;
        DateItem item;
    };
    std::vector<Element> elements;
    int clock[3] = {0, 0, 0}, clock_parts = 0, meridiem = -1, times = 0;
    for (size_t k = 0; k < items.size();) {
        const DateItem &it = items[k];
        auto kind_at = [&](size_t j) { return j < items.size() ? items[j].kind : DateToken::DateSep; };
        if (it.kind == DateToken::DateSep) {
            ++k;
            continue;
        }
        if (it.kind != DateToken::Number) {
            if (it.kind != DateToken::Month)
                return DISP_E_TYPEMISMATCH; // AM/PM or ':' without an hour
            elements.push_back({false, it});
            ++k;
            continue;
        }
        size_t j = k + 1;
        size_t after = kind_at(j) == DateToken::DateSep && j < items.size() ? j + 1 : j;
        const bool timed = kind_at(j) == DateToken::TimeSep;
        if (!timed && !(after < items.size() && items[after].kind == DateToken::Meridiem)) {
            elements.push_back({false, it});
            ++k;
            continue;
        }
        if (++times > 1)
            return DISP_E_TYPEMISMATCH;
        clock[0] = it.value;
        clock_parts = 1;
        while (kind_at(j) == DateToken::TimeSep && j < items.size()) {
            if (j + 1 >= items.size() || items[j + 1].kind != DateToken::Number || clock_parts == 3)
                return DISP_E_TYPEMISMATCH;
            clock[clock_parts++] = items[j + 1].value;
            j += 2;
        }
        after = kind_at(j) == DateToken::DateSep && j < items.size() ? j + 1 : j;
        if (after < items.size() && items[after].kind == DateToken::Meridiem) {
            meridiem = items[after].value;
            j = after + 1;
        }
        elements.push_back({true, it});
        k = j;
    }
    // The time of day may stand before or after the date, not inside it.
    for (size_t k = 1; k + 1 < elements.size(); ++k)
        if (elements[k].is_time)
            return DISP_E_TYPEMISMATCH;

    std::vector<DateItem> numbers;
    int month = 0;
    for (const Element &e : elements) {
        if (e.is_time)
            continue;
        if (e.item.kind == DateToken::Month) {
            if (month)
                return DISP_E_TYPEMISMATCH;
            month = e.item.value;
        } else {
            numbers.push_back(e.item);
        }
    }

    bool has_date = month != 0 || !numbers.empty();
    Ymd ymd{0, 0, 0};
    if (has_date) {
        bool found = false;
        const int64_t year = current_year();
        if (month != 0 && numbers.size() == 1) {
            const DateItem &x = numbers[0];
            found = first_valid({{year, month, x.value}, {expand_year(x), month, 1}}, &ymd);
        } else if (month != 0 && numbers.size() == 2) {
            const DateItem &a = numbers[0], &b = numbers[1];
            found = first_valid({{expand_year(b), month, a.value}, {expand_year(a), month, b.value}}, &ymd);
        } else if (month == 0 && numbers.size() == 2) {
            const DateItem &a = numbers[0], &b = numbers[1];
            found = first_valid({{year, a.value, b.value},
                                 {year, b.value, a.value},
                                 {expand_year(b), a.value, 1},
                                 {expand_year(a), b.value, 1}},
                                &ymd);
        } else if (month == 0 && numbers.size() == 3) {
            const DateItem &a = numbers[0], &b = numbers[1], &c = numbers[2];
            found = first_valid({{expand_year(c), a.value, b.value},
                                 {expand_year(a), b.value, c.value},
                                 {expand_year(c), b.value, a.value}},
                                &ymd);
        }
        if (!found)
            return DISP_E_TYPEMISMATCH;
    } else if (times == 0) {
        return DISP_E_TYPEMISMATCH;
    }

    int hour = clock[0];
    if (meridiem >= 0 && hour <= 12) { // AM/PM means nothing after 12 o'clock
        if (meridiem == 1 && hour < 12)
            hour += 12;
        else if (meridiem == 0 && hour == 12)
            hour = 0;
    }
    if (hour > 23 || clock[1] > 59 || clock[2] > 59)
        return DISP_E_TYPEMISMATCH;
    const double fraction = (hour * 3600 + clock[1] * 60 + clock[2]) / 86400.0;
    if (!has_date) {
        *out = fraction;
        return S_OK;
    }
    const double days = static_cast<double>(days_from_civil(ymd.y, ymd.m, ymd.d) - kOleEpoch);
    *out = days < 0 ? days - fraction : days + fraction;
    return S_OK;
}

// ---------------------------------------------------------------------------
// The other targets

HRESULT to_double(const VARIANT &v, double *out) {
    int bits;
    bool is_signed;
    if (integer_type(V_VT(&v), &bits, &is_signed)) {
        *out = integer_real(v, is_signed);
        return S_OK;
    }
    switch (V_VT(&v)) {
    case VT_EMPTY:
        *out = 0.0;
        return S_OK;
    case VT_BOOL:
        *out = V_BOOL(&v);
        return S_OK;
    case VT_R4:
        *out = V_R4(&v);
        return S_OK;
    case VT_R8:
    case VT_DATE:
        *out = V_R8(&v);
        return S_OK;
    case VT_CY:
        return VarR8FromCy(V_CY(&v), out);
    case VT_BSTR: {
        ParsedNumber p;
        const HRESULT hr = parse_number(text_of(V_BSTR(&v)), &p);
        return hr != S_OK ? hr : parsed_real(p, out);
    }
    default:
        return DISP_E_TYPEMISMATCH;
    }
}

HRESULT to_float(const VARIANT &v, float *out) {
    int bits;
    bool is_signed;
    if (integer_type(V_VT(&v), &bits, &is_signed)) { // one rounding, straight from the integer
        const uint64_t raw = integer_bits(v);
        *out = is_signed ? static_cast<float>(static_cast<int64_t>(raw)) : static_cast<float>(raw);
        return S_OK;
    }
    double d;
    const HRESULT hr = to_double(v, &d);
    if (hr != S_OK)
        return hr;
    if (std::fabs(d) > FLT_MAX)
        return DISP_E_OVERFLOW;
    *out = static_cast<float>(d);
    return S_OK;
}

HRESULT to_date(const VARIANT &v, double *out) {
    int bits;
    bool is_signed;
    if (integer_type(V_VT(&v), &bits, &is_signed)) {
        const Magnitude m = integer_magnitude(v, is_signed);
        if (m.value > (m.negative ? static_cast<uint64_t>(-kDateMin) : static_cast<uint64_t>(kDateMax)))
            return DISP_E_OVERFLOW;
        *out = integer_real(v, is_signed);
        return S_OK;
    }
    if (V_VT(&v) == VT_BSTR)
        return parse_date(text_of(V_BSTR(&v)), out);
    double d;
    const HRESULT hr = to_double(v, &d);
    if (hr != S_OK)
        return hr;
    if (!date_in_range(d))
        return DISP_E_OVERFLOW;
    *out = d;
    return S_OK;
}

HRESULT currency_from_real(double d, int64_t *out) {
    if (std::isnan(d))
        return DISP_E_OVERFLOW;
    const double r = round_half_even(d * static_cast<double>(kCyScale));
    if (!(r >= -9223372036854775808.0 && r < 9223372036854775808.0))
        return DISP_E_OVERFLOW;
    *out = static_cast<int64_t>(r);
    return S_OK;
}

HRESULT to_currency(const VARIANT &v, int64_t *out) {
    int bits;
    bool is_signed;
    if (integer_type(V_VT(&v), &bits, &is_signed)) {
        const Magnitude m = integer_magnitude(v, is_signed);
        if (m.value >= kCyIntegerLimit)
            return DISP_E_OVERFLOW;
        const int64_t scaled = static_cast<int64_t>(m.value) * kCyScale;
        *out = m.negative ? -scaled : scaled;
        return S_OK;
    }
    switch (V_VT(&v)) {
    case VT_EMPTY:
        *out = 0;
        return S_OK;
    case VT_BOOL:
        *out = V_BOOL(&v) * kCyScale;
        return S_OK;
    case VT_R4:
        return currency_from_real(V_R4(&v), out);
    case VT_R8:
    case VT_DATE:
        return currency_from_real(V_R8(&v), out);
    case VT_BSTR: {
        ParsedNumber p;
        HRESULT hr = parse_number(text_of(V_BSTR(&v)), &p);
        if (hr != S_OK)
            return hr;
        if (p.radix) {
            double d;
            hr = radix_real(p, &d);
            return hr != S_OK ? hr : currency_from_real(d, out);
        }
        Magnitude m;
        uint64_t raw;
        hr = round_parsed(p, 4, &m);
        if (hr == S_OK)
            hr = fit_integer(m, 64, true, &raw);
        if (hr == S_OK)
            *out = static_cast<int64_t>(raw);
        return hr;
    }
    default:
        return DISP_E_TYPEMISMATCH;
    }
}

HRESULT to_bool(const VARIANT &v, VARIANT_BOOL *out) {
    int bits;
    bool is_signed;
    if (integer_type(V_VT(&v), &bits, &is_signed)) {
        *out = integer_bits(v) ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    }
    double d = 0.0;
    switch (V_VT(&v)) {
    case VT_EMPTY:
        break;
    case VT_R4:
        d = V_R4(&v);
        break;
    case VT_R8:
    case VT_DATE:
        d = V_R8(&v);
        break;
    case VT_CY:
        d = V_CY(&v).int64 != 0 ? 1.0 : 0.0;
        break;
    case VT_BSTR: {
        const Text t = text_of(V_BSTR(&v));
        if (equals_ascii(t, "true", true) || equals_ascii(t, "#TRUE#", false)) {
            *out = VARIANT_TRUE;
            return S_OK;
        }
        if (equals_ascii(t, "false", true) || equals_ascii(t, "#FALSE#", false)) {
            *out = VARIANT_FALSE;
            return S_OK;
        }
        ParsedNumber p;
        HRESULT hr = parse_number(t, &p);
        if (hr == S_OK)
            hr = parsed_real(p, &d);
        if (hr != S_OK)
            return hr;
        break;
    }
    default:
        return DISP_E_TYPEMISMATCH;
    }
    *out = d != 0.0 ? VARIANT_TRUE : VARIANT_FALSE; // NaN is not zero, so True
    return S_OK;
}

// %.15G for doubles and %.7G for floats, without a sign on zero.
std::string format_real(double d, int precision) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.*G", precision, d);
    std::string s(buffer);
    if (s[0] == '-' && s.find_first_not_of("0.", 1) == std::string::npos)
        s = "0";
    return s;
}

// Currency in full: every integer digit and up to four decimals.
std::string format_currency(int64_t cy) {
    const Magnitude m = magnitude_of(cy);
    std::string s = (m.negative ? "-" : "") + std::to_string(m.value / kCyScale);
    uint64_t fraction = m.value % kCyScale;
    if (fraction != 0) {
        std::string decimals(4, '0');
        for (int k = 3; k >= 0; --k, fraction /= 10)
            decimals[static_cast<size_t>(k)] = static_cast<char>('0' + fraction % 10);
        s += '.';
        s += decimals.substr(0, decimals.find_last_not_of('0') + 1);
    }
    return s;
}

HRESULT to_text(const VARIANT &v, USHORT flags, std::string *out) {
    int bits;
    bool is_signed;
    if (integer_type(V_VT(&v), &bits, &is_signed)) {
        const uint64_t raw = integer_bits(v);
        *out = is_signed ? std::to_string(static_cast<int64_t>(raw)) : std::to_string(raw);
        return S_OK;
    }
    switch (V_VT(&v)) {
    case VT_EMPTY:
        out->clear();
        return S_OK;
    case VT_BOOL:
        if (flags & (VARIANT_ALPHABOOL | kLocalBool))
            *out = V_BOOL(&v) ? "True" : "False";
        else
            *out = std::to_string(V_BOOL(&v));
        return S_OK;
    case VT_R4:
        *out = format_real(V_R4(&v), 7);
        return S_OK;
    case VT_R8:
        *out = format_real(V_R8(&v), 15);
        return S_OK;
    case VT_DATE:
        return format_date(V_DATE(&v), out);
    case VT_CY:
        *out = format_currency(V_CY(&v).int64);
        return S_OK;
    default:
        return DISP_E_TYPEMISMATCH;
    }
}

// ---------------------------------------------------------------------------
// Arrays: a copy to the same array type, and the byte arrays VB assigns to
// and from strings (each byte of the string is one element).

HRESULT coerce_array(const VARIANT &v, VARTYPE vt, VARIANT *out) {
    const VARTYPE from = V_VT(&v);
    if ((from & VT_ARRAY) && from == vt) {
        V_ARRAY(out) = nullptr;
        return V_ARRAY(&v) == nullptr ? S_OK : SafeArrayCopy(V_ARRAY(&v), &V_ARRAY(out));
    }
    if (from == VT_BSTR && vt == (VT_ARRAY | VT_UI1)) {
        const BSTR s = V_BSTR(&v);
        const UINT bytes = SysStringByteLen(s);
        SAFEARRAY *a = SafeArrayCreateVector(VT_UI1, 0, bytes);
        if (a == nullptr)
            return E_OUTOFMEMORY;
        if (bytes != 0) {
            void *data = nullptr;
            const HRESULT hr = SafeArrayAccessData(a, &data);
            if (hr != S_OK) {
                SafeArrayDestroy(a);
                return hr;
            }
            std::memcpy(data, s, bytes);
            SafeArrayUnaccessData(a);
        }
        V_ARRAY(out) = a;
        return S_OK;
    }
    if (from == (VT_ARRAY | VT_UI1) && vt == VT_BSTR) {
        SAFEARRAY *a = V_ARRAY(&v);
        if (a == nullptr || SafeArrayGetDim(a) != 1 || SafeArrayGetElemsize(a) != 1)
            return DISP_E_TYPEMISMATCH;
        void *data = nullptr;
        const HRESULT hr = SafeArrayAccessData(a, &data);
        if (hr != S_OK)
            return hr;
        const ULONG count = a->rgsabound[0].cElements;
        V_BSTR(out) = SysAllocStringByteLen(static_cast<const char *>(data), count);
        SafeArrayUnaccessData(a);
        return V_BSTR(out) == nullptr ? E_OUTOFMEMORY : S_OK;
    }
    return DISP_E_TYPEMISMATCH;
}

// ---------------------------------------------------------------------------

VARTYPE same_kind(VARTYPE vt) {
    if (vt == VT_INT)
        return VT_I4;
    return vt == VT_UINT ? static_cast<VARTYPE>(VT_UI4) : vt;
}

// The value of a by-value source, converted to `vt`, into `out` (whose type
// field the caller sets).
HRESULT coerce(const VARIANT &v, USHORT flags, VARTYPE vt, VARIANT *out) {
    const VARTYPE from = V_VT(&v);
    if ((from & VT_ARRAY) || (vt & VT_ARRAY))
        return coerce_array(v, vt, out);
    if (vt & VT_BYREF)
        return DISP_E_TYPEMISMATCH;

    if (same_kind(from) == same_kind(vt)) {
        switch (from) {
        case VT_BSTR: {
            static const OLECHAR kNothing[1] = {0};
            const BSTR s = V_BSTR(&v);
            V_BSTR(out) = s == nullptr ? SysAllocStringLen(kNothing, 0)
                                       : SysAllocStringByteLen(reinterpret_cast<const char *>(s), SysStringByteLen(s));
            return V_BSTR(out) == nullptr ? E_OUTOFMEMORY : S_OK;
        }
        case VT_DISPATCH:
        case VT_UNKNOWN:
        case VT_RECORD:
        case VT_VARIANT:
        case kClsid:
            return DISP_E_TYPEMISMATCH; // no objects to share on POSIX
        default:
            std::memcpy(out, &v, sizeof *out);
            return S_OK;
        }
    }

    int bits;
    bool is_signed;
    if (integer_type(vt, &bits, &is_signed)) {
        uint64_t raw;
        const HRESULT hr = to_integer(v, bits, is_signed, &raw);
        if (hr == S_OK)
            store_integer(out, vt, raw);
        return hr;
    }
    switch (vt) {
    case VT_EMPTY:
        if (from == VT_NULL)
            return DISP_E_TYPEMISMATCH;
        [[fallthrough]];
    case VT_NULL:
        // Any value but an error code (or a record) may be dropped.
        return from <= VT_UINT && from != VT_ERROR ? S_OK : DISP_E_TYPEMISMATCH;
    case VT_R4:
        return to_float(v, &V_R4(out));
    case VT_R8:
        return to_double(v, &V_R8(out));
    case VT_DATE:
        return to_date(v, &V_DATE(out));
    case VT_CY:
        return to_currency(v, &V_CY(out).int64);
    case VT_BOOL:
        return to_bool(v, &V_BOOL(out));
    case VT_BSTR: {
        std::string text;
        const HRESULT hr = to_text(v, flags, &text);
        if (hr != S_OK)
            return hr;
        V_BSTR(out) = make_bstr(text);
        return V_BSTR(out) == nullptr ? E_OUTOFMEMORY : S_OK;
    }
    case VT_DECIMAL:
        if (from != VT_EMPTY)
            return DISP_E_TYPEMISMATCH; // DECIMAL arithmetic is not carried
        std::memset(out, 0, sizeof *out);
        return S_OK;
    default: // VT_ERROR, VT_VARIANT, interfaces and records only come from themselves
        return DISP_E_TYPEMISMATCH;
    }
}

} // namespace

extern "C" {

HRESULT VariantChangeType(VARIANTARG *target, const VARIANTARG *source, USHORT flags, VARTYPE vt) {
    if (target == nullptr || source == nullptr)
        return E_INVALIDARG;
    if (vt == kClsid)
        return DISP_E_BADVARTYPE;
    HRESULT hr = check_type(V_VT(source));
    if (hr == S_OK)
        hr = check_type(vt);
    if (hr != S_OK)
        return hr;
    VARIANT value;
    hr = load_source(source, &value, true);
    if (hr != S_OK)
        return hr;
    VARIANT result;
    std::memset(&result, 0, sizeof result);
    hr = coerce(value, flags, vt, &result);
    if (hr != S_OK)
        return hr;
    V_VT(&result) = vt;
    VariantClear(target); // may free the source's own string when converting in place: it is no longer read
    *target = result;
    return S_OK;
}

HRESULT VarR8FromCy(CY value, double *result) {
    if (result == nullptr)
        return E_INVALIDARG;
    *result = static_cast<double>(value.int64) / static_cast<double>(kCyScale);
    return S_OK;
}

} // extern "C"
