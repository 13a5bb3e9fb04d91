// Array arguments. VB passes an array as a pointer to its descriptor pointer,
// usually with an Integer element-type code (the OLE variant numbers).
//
// Two access patterns, and each family uses one:
//
//   ArrayElements  dimension 1 element by element through SafeArrayGet/
//                  PutElement, the other dimensions at their lower bounds.
//                  A lower bound above the upper bound is an empty array.
//   ArrayBlock     the whole data block, locked for the life of the object
//                  and released on every path. More than 2 dimensions is
//                  refused; a 2-dimensional array is a run of records, one
//                  per index of dimension 2, each holding all of dimension 1.
//
// A missing descriptor, or one whose bounds the system will not give, reads
// as an empty array. Numbers are only ever read from or written to elements
// that are plain bytes: an array of strings, variants, interfaces or records
// (a String() passed where a Double() was declared) is refused for numbers,
// and strings are only read from or written to a String() array. Within
// plain elements the element size is not compared with the type code (a
// wrong code gives a wrong result), but no access ever reaches outside the
// array's block or outside a local. Every status the system returns is
// checked: an element it will not give reads as zero (or nothing), one it
// will not take reports false.
#pragma once

#include "platform/ole.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace brindle::frame {

// Element-type codes that the typed families take.
enum class ElementType : int16_t { Integer = 2, Long = 3, Single = 4, Double = 5, Byte = 17 };

// Width in bytes of a known code, or nothing for an unknown one.
std::optional<size_t> element_width(int16_t code) noexcept;

class ArrayElements {
  public:
    explicit ArrayElements(SAFEARRAY **ref) noexcept;

    bool present() const noexcept { return array_ != nullptr; }
    unsigned dims() const noexcept { return dims_; }
    int32_t lower() const noexcept { return lower_; }
    int32_t upper() const noexcept { return upper_; }
    // Number of elements of dimension 1 (0 when lower > upper).
    size_t count() const noexcept { return count_; }
    size_t element_size() const noexcept { return element_size_; }

    // The elements own something (strings, variants, interfaces, records):
    // no number is read from them or written over them. The families give
    // their failure value for such an array.
    bool holds_references() const noexcept { return references_; }
    // The array is a String() array, whose elements get_string and
    // put_string read and write.
    bool holds_strings() const noexcept { return strings_; }

    // Reads element `index` as a T. SafeArrayGetElement copies the array's
    // own element size, so it lands in a buffer that holds it; T takes the
    // leading bytes. An index outside the bounds, or an array that holds
    // references, reads as T{}.
    template <class T> T get(int32_t index) const noexcept {
        static_assert(std::is_trivially_copyable_v<T>);
        T value{};
        read(index, &value, sizeof value);
        return value;
    }

    // Writes element `index` from a T; the rest of a wider element is zeroed.
    // False outside the bounds, for an array that holds references, or when
    // the system refuses.
    template <class T> bool put(int32_t index, const T &value) noexcept {
        static_assert(std::is_trivially_copyable_v<T>);
        return write(index, &value, sizeof value);
    }

    // The element at `index` read by type code as a double (unknown code: 0).
    double get_number(int16_t code, int32_t index) const noexcept;
    // Stores a double converted to the code's type (unknown code: nothing).
    bool put_number(int16_t code, int32_t index, double value) noexcept;

    // Element `index` of a String() array as its bytes; nothing for a null
    // element, an index outside the bounds, an array of anything else, or
    // an element the system will not give.
    std::optional<std::string> get_string(int32_t index) const;
    // Stores a copy of `bytes` at `index` of a String() array (the array owns
    // the copy; the old element is freed). False outside the bounds, for an
    // array of anything else, or when the system refuses.
    bool put_string(int32_t index, std::string_view bytes) noexcept;

    SAFEARRAY *descriptor() const noexcept { return array_; }

  private:
    void read(int32_t index, void *out, size_t out_size) const noexcept;
    bool write(int32_t index, const void *in, size_t in_size) noexcept;

    SAFEARRAY *array_;
    unsigned dims_ = 0;
    int32_t lower_ = 0;
    int32_t upper_ = -1;
    size_t count_ = 0;
    size_t element_size_ = 0;
    bool references_ = false;
    bool strings_ = false;
};

class ArrayBlock {
  public:
    explicit ArrayBlock(SAFEARRAY **ref) noexcept;
    ~ArrayBlock();
    ArrayBlock(const ArrayBlock &) = delete;
    ArrayBlock &operator=(const ArrayBlock &) = delete;

    // False for a missing descriptor, more than 2 dimensions, bounds the
    // system will not give, or a lock that failed; nothing else is then
    // meaningful.
    bool ok() const noexcept { return array_ != nullptr; }
    unsigned dims() const noexcept { return dims_; }
    size_t element_size() const noexcept { return element_size_; }
    // Elements of dimension 1 (the record length of a 2-dimensional array).
    size_t count1() const noexcept { return count1_; }
    // Elements of dimension 2 (the record count); 1 for a 1-dimensional one.
    size_t count2() const noexcept { return count2_; }
    size_t elements() const noexcept { return count1_ * count2_; }
    size_t bytes() const noexcept { return elements() * element_size_; }
    int32_t lower1() const noexcept { return lower1_; }
    int32_t lower2() const noexcept { return lower2_; }

    void *data() const noexcept { return data_; }
    template <class T> T *as() const noexcept { return static_cast<T *>(data_); }

    // The elements own something (strings, variants, interfaces, records
    // that may hold them): moving their bytes piecemeal would leave the
    // array's owner freeing what it no longer owns, so byte-level routines
    // that split or duplicate elements leave such arrays alone.
    bool holds_references() const noexcept { return references_; }

  private:
    SAFEARRAY *array_ = nullptr;
    void *data_ = nullptr;
    unsigned dims_ = 0;
    size_t element_size_ = 0;
    size_t count1_ = 0;
    size_t count2_ = 0;
    int32_t lower1_ = 0;
    int32_t lower2_ = 0;
    bool references_ = false;
};

// The whole data block of an array of any number of dimensions, locked for
// the life of the object and released on every path: its elements in memory
// order (dimension 1 varying fastest). For a String() array the elements
// are string handles, which only string_at and set_string touch.
class WholeArray {
  public:
    explicit WholeArray(SAFEARRAY **ref) noexcept;
    ~WholeArray();
    WholeArray(const WholeArray &) = delete;
    WholeArray &operator=(const WholeArray &) = delete;

    // False for a missing descriptor, bounds the system will not give, an
    // element count that does not fit in memory, or a lock that failed.
    bool ok() const noexcept { return array_ != nullptr; }
    size_t elements() const noexcept { return elements_; }
    size_t element_size() const noexcept { return element_size_; }
    size_t bytes() const noexcept { return elements_ * element_size_; }
    void *data() const noexcept { return data_; }
    bool holds_references() const noexcept { return references_; }
    bool holds_strings() const noexcept { return strings_; }

    // Element `i` (memory order) of a String() array as its bytes (a null
    // string is empty); nothing outside the array or for another array.
    std::optional<std::string_view> string_at(size_t i) const noexcept;
    // Replaces element `i` of a String() array with a copy of `bytes`, freeing
    // the old one; false outside the array, for another array, or without
    // memory.
    bool set_string(size_t i, std::string_view bytes) noexcept;

  private:
    SAFEARRAY *array_ = nullptr;
    void *data_ = nullptr;
    size_t elements_ = 0;
    size_t element_size_ = 0;
    bool references_ = false;
    bool strings_ = false;
};

// One element of a string array (VB hands a Declare its String arrays as
// arrays of byte strings), by a full index vector listing dimension 1 first.
// Nothing for a null element, an index outside the bounds, a vector whose
// length is not the array's dimension count, or an array that does not hold
// strings (whose elements must never be taken for string handles).
bool is_string_array(SAFEARRAY **ref) noexcept;
std::optional<std::string> string_element(SAFEARRAY **ref, std::initializer_list<int32_t> indices);

// Resizes the last dimension of the caller's array to `count` elements,
// keeping its lower bound (VB's ReDim Preserve). Call it only while no
// ArrayBlock holds the array locked. False when the system refuses.
bool redim_last(SAFEARRAY **ref, size_t count) noexcept;

} // namespace brindle::frame
