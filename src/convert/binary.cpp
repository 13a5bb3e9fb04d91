// Binary conversions: numbers to the bytes they occupy in memory (MK), bytes
// back to numbers (CV), the same at an element position inside a longer
// string (GetCV, PutMK), and singles to and from Microsoft Binary Format.
// Images are little-endian, as the numbers lie in memory.
//
// Bounds. The functions were made to read and write a record buffer without
// looking at its length; here nothing is read or written outside the string:
//   - CV functions on a text shorter than the type read the missing high
//     bytes as zero (an empty text gives 0);
//   - GetCV of an element that does not lie wholly inside the text gives 0;
//   - PutMK of such an element leaves the text untouched and returns 0, and
//     PutMK...s hands back the caller's own string, as for a position < 1.
#include "convert/mbf.h"
#include "common/ascii.h"
#include "frame/frame.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

using namespace brindle::frame;
using brindle::common::is_ascii_digit;

namespace {

template <class T> BSTR make_image(const T &value) {
    return new_string(std::string_view(reinterpret_cast<const char *>(&value), sizeof(T)));
}

// The value in the bytes from `offset`; bytes past the end read as zero.
template <class T> T read_image(std::string_view bytes, size_t offset) {
    unsigned char raw[sizeof(T)] = {};
    if (offset < bytes.size())
        std::memcpy(raw, bytes.data() + offset, std::min(sizeof(T), bytes.size() - offset));
    T value;
    std::memcpy(&value, raw, sizeof(T));
    return value;
}

// Byte offset of element `pos` (1-based) of type T when it lies wholly inside
// a text of `size` bytes; -1 otherwise.
template <class T> int64_t element_offset(int16_t pos, size_t size) {
    if (pos < 1)
        return -1;
    const uint64_t offset = static_cast<uint64_t>(pos - 1) * sizeof(T);
    return offset + sizeof(T) <= size ? static_cast<int64_t>(offset) : -1;
}

template <class T> T get_element(BSTR *txt, int16_t pos) {
    const StrArg text = StrArg::by_ref(txt);
    const int64_t offset = element_offset<T>(pos, text.size());
    if (text.empty() || offset < 0)
        return T{};
    return read_image<T>(text.bytes(), static_cast<size_t>(offset));
}

// In place: 0 for an empty text, pos itself when pos < 1, 0 when the element
// is past the end (nothing written), else pos after writing.
template <class T> int16_t put_element(BSTR *txt, int16_t pos, const T &value) {
    const StrArg text = StrArg::by_ref(txt);
    if (text.empty())
        return 0;
    if (pos < 1)
        return pos;
    const int64_t offset = element_offset<T>(pos, text.size());
    if (offset < 0)
        return 0;
    std::memcpy(text.writable() + offset, &value, sizeof(T));
    return pos;
}

// A new copy with the element written: the empty string for an empty text,
// the caller's own handle when pos < 1 or the element is past the end, and
// also when no memory is left for the copy.
template <class T> BSTR put_element_copy(BSTR *txt, int16_t pos, const T &value) {
    const StrArg text = StrArg::by_ref(txt);
    if (text.empty())
        return empty_string();
    const int64_t offset = element_offset<T>(pos, text.size());
    if (offset < 0)
        return same_handle(text);
    try {
        StringResult result(text.size());
        std::memcpy(result.data(), text.data(), text.size());
        std::memcpy(result.data() + offset, &value, sizeof(T));
        return result.take();
    } catch (const std::bad_alloc &) {
        return same_handle(text);
    }
}

// The runtime's atol: leading white space, an optional sign, decimal digits;
// anything else ends the number. Out-of-range values give LONG_MAX or
// LONG_MIN of a 32-bit long, as the Windows runtime's atol does.
int32_t runtime_atol(std::string_view text) {
    size_t i = 0;
    auto is_space = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    while (i < text.size() && is_space(text[i]))
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '+' || text[i] == '-'))
        negative = text[i++] == '-';
    int64_t value = 0;
    const int64_t limit = negative ? -static_cast<int64_t>(std::numeric_limits<int32_t>::min())
                                   : std::numeric_limits<int32_t>::max();
    for (; i < text.size() && is_ascii_digit(text[i]); ++i) {
        value = value * 10 + (text[i] - '0');
        if (value > limit)
            value = limit; // stays there; keeps reading the digits
    }
    return static_cast<int32_t>(negative ? -value : value);
}

uint32_t bits_of(float value) {
    uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

float float_of(uint32_t bits) {
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

} // namespace

BRINDLE_EXPORT(BSTR) cMKB(uint8_t Value) { return guarded_string([&] { return make_image(Value); }); }
BRINDLE_EXPORT(BSTR) cMKI(int16_t Value) { return guarded_string([&] { return make_image(Value); }); }
BRINDLE_EXPORT(BSTR) cMKL(int32_t Value) { return guarded_string([&] { return make_image(Value); }); }
BRINDLE_EXPORT(BSTR) cMKS(float Value) { return guarded_string([&] { return make_image(Value); }); }
BRINDLE_EXPORT(BSTR) cMKD(double Value) { return guarded_string([&] { return make_image(Value); }); }
BRINDLE_EXPORT(BSTR) cMKC(CY Value) { return guarded_string([&] { return make_image(Value.int64); }); }

// Ten bytes: the Double of the text's whole number, then two zero bytes.
BRINDLE_EXPORT(BSTR) cMKN(BSTR Txt) {
    return guarded_string([&] {
        const double value = runtime_atol(StrArg::by_val(Txt).text());
        char image[10] = {};
        std::memcpy(image, &value, sizeof value);
        return new_string(std::string_view(image, sizeof image));
    });
}

BRINDLE_EXPORT(uint8_t) cCVB(BSTR *Txt) { return read_image<uint8_t>(StrArg::by_ref(Txt).bytes(), 0); }
BRINDLE_EXPORT(int16_t) cCVI(BSTR *Txt) { return read_image<int16_t>(StrArg::by_ref(Txt).bytes(), 0); }
BRINDLE_EXPORT(int32_t) cCVL(BSTR *Txt) { return read_image<int32_t>(StrArg::by_ref(Txt).bytes(), 0); }
BRINDLE_EXPORT(float) cCVS(BSTR *Txt) { return read_image<float>(StrArg::by_ref(Txt).bytes(), 0); }
BRINDLE_EXPORT(double) cCVD(BSTR *Txt) { return read_image<double>(StrArg::by_ref(Txt).bytes(), 0); }
BRINDLE_EXPORT(CY) cCVC(BSTR *Txt) {
    CY value;
    value.int64 = read_image<int64_t>(StrArg::by_ref(Txt).bytes(), 0);
    return value;
}

BRINDLE_EXPORT(uint8_t) cGetCVB(BSTR *Txt, int16_t Position) { return get_element<uint8_t>(Txt, Position); }
BRINDLE_EXPORT(int16_t) cGetCVI(BSTR *Txt, int16_t Position) { return get_element<int16_t>(Txt, Position); }
BRINDLE_EXPORT(int32_t) cGetCVL(BSTR *Txt, int16_t Position) { return get_element<int32_t>(Txt, Position); }
BRINDLE_EXPORT(float) cGetCVS(BSTR *Txt, int16_t Position) { return get_element<float>(Txt, Position); }
BRINDLE_EXPORT(double) cGetCVD(BSTR *Txt, int16_t Position) { return get_element<double>(Txt, Position); }
BRINDLE_EXPORT(CY) cGetCVC(BSTR *Txt, int16_t Position) {
    CY value;
    value.int64 = get_element<int64_t>(Txt, Position);
    return value;
}

BRINDLE_EXPORT(int16_t) cPutMKB(BSTR *Txt, int16_t Position, uint8_t Value) { return put_element(Txt, Position, Value); }
BRINDLE_EXPORT(int16_t) cPutMKI(BSTR *Txt, int16_t Position, int16_t Value) { return put_element(Txt, Position, Value); }
BRINDLE_EXPORT(int16_t) cPutMKL(BSTR *Txt, int16_t Position, int32_t Value) { return put_element(Txt, Position, Value); }
BRINDLE_EXPORT(int16_t) cPutMKS(BSTR *Txt, int16_t Position, float Value) { return put_element(Txt, Position, Value); }
BRINDLE_EXPORT(int16_t) cPutMKD(BSTR *Txt, int16_t Position, double Value) { return put_element(Txt, Position, Value); }
BRINDLE_EXPORT(int16_t) cPutMKC(BSTR *Txt, int16_t Position, CY Value) { return put_element(Txt, Position, Value.int64); }

BRINDLE_EXPORT(BSTR) cPutMKBs(BSTR *Txt, int16_t Position, uint8_t Value) {
    return guarded_string([&] { return put_element_copy(Txt, Position, Value); });
}
BRINDLE_EXPORT(BSTR) cPutMKIs(BSTR *Txt, int16_t Position, int16_t Value) {
    return guarded_string([&] { return put_element_copy(Txt, Position, Value); });
}
BRINDLE_EXPORT(BSTR) cPutMKLs(BSTR *Txt, int16_t Position, int32_t Value) {
    return guarded_string([&] { return put_element_copy(Txt, Position, Value); });
}
BRINDLE_EXPORT(BSTR) cPutMKSs(BSTR *Txt, int16_t Position, float Value) {
    return guarded_string([&] { return put_element_copy(Txt, Position, Value); });
}
BRINDLE_EXPORT(BSTR) cPutMKDs(BSTR *Txt, int16_t Position, double Value) {
    return guarded_string([&] { return put_element_copy(Txt, Position, Value); });
}
BRINDLE_EXPORT(BSTR) cPutMKCs(BSTR *Txt, int16_t Position, CY Value) {
    return guarded_string([&] { return put_element_copy(Txt, Position, Value.int64); });
}

// The first four bytes read as an MBF single; an empty text gives 0 (not the
// huge number that four zero bytes give).
BRINDLE_EXPORT(float) cCVSMBF(BSTR *Txt) {
    const StrArg text = StrArg::by_ref(Txt);
    if (text.empty())
        return 0.0f;
    return float_of(brindle::convert::ieee_from_mbf(read_image<uint32_t>(text.bytes(), 0)));
}

BRINDLE_EXPORT(BSTR) cMKSMBF(float Value) {
    return guarded_string([&] { return make_image(brindle::convert::mbf_from_ieee(bits_of(Value))); });
}
