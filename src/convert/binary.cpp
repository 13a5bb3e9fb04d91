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
#include "convert/memory_image.h"
#include "frame/frame.h"
#include "runtime/crt_parse.h"

#include <algorithm>
#include <bit>
#include <string>
#include <new>

using namespace brindle::frame;
using namespace brindle::convert;

namespace {

// The adapters shared by the typed exports below: views in, the memory
// image engine, the result out.

template <class T> BSTR make_image(const T &value) { return new_string(image_of(value)); }

template <class T> T get_element(BSTR *txt, int16_t pos) { return element_value<T>(StrArg::by_ref(txt).bytes(), pos); }

// In place: 0 for an empty text, pos itself when pos < 1, 0 when the element
// is past the end (nothing written), else pos after writing.
template <class T> int16_t put_element(BSTR *txt, int16_t pos, const T &value) {
    const StrArg text = StrArg::by_ref(txt);
    if (text.empty())
        return 0;
    if (pos < 1)
        return pos;
    return write_element(text.writable(), text.size(), pos, value) ? pos : int16_t{0};
}

// A new copy with the element written: the empty string for an empty text,
// the caller's own handle when pos < 1 or the element is past the end, and
// also when no memory is left for the copy.
template <class T> BSTR put_element_copy(BSTR *txt, int16_t pos, const T &value) {
    const StrArg text = StrArg::by_ref(txt);
    if (text.empty())
        return empty_string();
    if (element_offset(pos, sizeof(T), text.size()) < 0)
        return same_handle(text);
    try {
        StringResult result(text.size());
        std::copy(text.bytes().begin(), text.bytes().end(), result.data());
        write_element(result.data(), text.size(), pos, value);
        return result.take();
    } catch (const std::bad_alloc &) {
        return same_handle(text);
    }
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
        const double value = brindle::runtime::crt_atol(StrArg::by_val(Txt).text());
        return new_string(image_of(value) + std::string(2, '\0'));
    });
}

BRINDLE_EXPORT(uint8_t) cCVB(BSTR *Txt) { return value_from_image<uint8_t>(StrArg::by_ref(Txt).bytes(), 0); }
BRINDLE_EXPORT(int16_t) cCVI(BSTR *Txt) { return value_from_image<int16_t>(StrArg::by_ref(Txt).bytes(), 0); }
BRINDLE_EXPORT(int32_t) cCVL(BSTR *Txt) { return value_from_image<int32_t>(StrArg::by_ref(Txt).bytes(), 0); }
BRINDLE_EXPORT(float) cCVS(BSTR *Txt) { return value_from_image<float>(StrArg::by_ref(Txt).bytes(), 0); }
BRINDLE_EXPORT(double) cCVD(BSTR *Txt) { return value_from_image<double>(StrArg::by_ref(Txt).bytes(), 0); }
BRINDLE_EXPORT(CY) cCVC(BSTR *Txt) {
    CY value;
    value.int64 = value_from_image<int64_t>(StrArg::by_ref(Txt).bytes(), 0);
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
    return std::bit_cast<float>(ieee_from_mbf(value_from_image<uint32_t>(text.bytes(), 0)));
}

BRINDLE_EXPORT(BSTR) cMKSMBF(float Value) {
    return guarded_string([&] { return make_image(mbf_from_ieee(std::bit_cast<uint32_t>(Value))); });
}
