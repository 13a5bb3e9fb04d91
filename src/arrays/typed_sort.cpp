#include "arrays/typed_sort.h"

#include "common/ascii.h"

#include "arrays/sort_engine.h"
#include "frame/variants.h"
#include "runtime/crt_parse.h"
#include "platform/ole.h"

#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace brindle::arrays {

namespace {

using Wide = std::basic_string<OLECHAR>;

enum class Kind {
    Never,      // no comparison: every pair is "less" in the key's direction
    Int,        // a whole number read from the record
    Real,       // a floating-point number read from the record
    Text,       // fixed-length 8-bit text
    WidePtr,    // pointer to a zero-terminated wide string
    CachedReal, // a number worked out once per record (Variants, texts of numbers)
    CachedWide, // a wide string worked out once per record (Variants)
};

template <class T> T load(const unsigned char *p) {
    T v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

// Lower case of the letters of Latin-1 and ASCII; other characters as they are.
unsigned fold_wide(unsigned c) {
    if ((c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7))
        return c + 32;
    return c;
}

int compare_wide(const OLECHAR *a, const OLECHAR *b, bool nocase) {
    if (a == nullptr || b == nullptr)
        return (a != nullptr) - (b != nullptr);
    for (;; ++a, ++b) {
        const unsigned x = nocase ? fold_wide(*a) : *a;
        const unsigned y = nocase ? fold_wide(*b) : *b;
        if (x != y)
            return x < y ? -1 : 1;
        if (x == 0)
            return 0;
    }
}

template <class T> int three_way(T a, T b) { return a > b ? 1 : a < b ? -1 : 0; }

// The leading number of 8-bit text, as the runtime's strtod reads it in the
// "C" locale (a client's locale never turns the full stop into a comma).
double text_number(const char *bytes, size_t length) { return runtime::crt_strtod(std::string_view(bytes, length)); }


size_t wide_length(const OLECHAR *text) {
    size_t n = 0;
    while (text[n] != 0)
        ++n;
    return n;
}

class Key {
  public:
    Key(const unsigned char *base, size_t count, size_t size, int16_t offset, uint16_t length, int16_t type,
        int16_t order)
        : base_(base), size_(size), dir_(order > 0 ? 1 : -1), type_(type) {
        const auto fits = [&](size_t width) { return offset >= 0 && static_cast<size_t>(offset) + width <= size; };
        offset_ = offset < 0 ? 0 : static_cast<size_t>(offset);
        switch (type) {
        case 1:
        case 3:
            kind_ = fits(2) ? Kind::Int : Kind::Never;
            break;
        case 2:
            kind_ = fits(1) ? Kind::Int : Kind::Never;
            break;
        case 4:
            kind_ = fits(4) ? Kind::Int : Kind::Never;
            break;
        case 5:
            kind_ = fits(4) ? Kind::Real : Kind::Never;
            break;
        case 6:
        case 7:
        case 8:
            kind_ = fits(8) ? Kind::Real : Kind::Never;
            break;
        case 9:
        case 10:
        case 13:
            if (fits(1)) {
                // A length of 0 reads to the zero byte; the record's end
                // stops both forms.
                const size_t room = size - offset_;
                text_length_ = length == 0 || length > room ? room : length;
                kind_ = type == 13 ? Kind::CachedReal : Kind::Text;
            }
            break;
        case 11:
        case 12:
            kind_ = fits(sizeof(void *)) ? Kind::WidePtr : Kind::Never;
            break;
        case 14:
            kind_ = fits(sizeof(void *)) ? Kind::CachedReal : Kind::Never;
            break;
        case -1: case -2: case -3: case -4: case -5: case -6: case -7: case -8:
            kind_ = fits(sizeof(VARIANT)) ? Kind::CachedReal : Kind::Never;
            break;
        case -11:
        case -12:
            kind_ = fits(sizeof(VARIANT)) ? Kind::CachedWide : Kind::Never;
            break;
        case -14:
            kind_ = fits(sizeof(VARIANT)) ? Kind::CachedReal : Kind::Never;
            break;
        default:
            break;
        }
        if (kind_ == Kind::CachedReal) {
            reals_.resize(count);
            present_.resize(count);
            for (size_t i = 0; i < count; ++i)
                cache_real(i);
        } else if (kind_ == Kind::CachedWide) {
            wides_.resize(count);
            present_.resize(count);
            for (size_t i = 0; i < count; ++i)
                cache_wide(i);
        }
    }

    // The key's comparison of records i and j, in the key's direction.
    int compare(uint32_t i, uint32_t j) const {
        const unsigned char *a = base_ + size_t{i} * size_ + offset_;
        const unsigned char *b = base_ + size_t{j} * size_ + offset_;
        switch (kind_) {
        case Kind::Never:
            return -dir_;
        case Kind::Int:
            return dir_ * compare_int(a, b);
        case Kind::Real:
            return dir_ * (type_ == 5 ? three_way(load<float>(a), load<float>(b))
                                      : three_way(load<double>(a), load<double>(b)));
        case Kind::Text:
            return dir_ * compare_text(a, b);
        case Kind::WidePtr:
            return dir_ * compare_wide(load<const OLECHAR *>(a), load<const OLECHAR *>(b), type_ == 11);
        case Kind::CachedReal:
            if (!present_[i] || !present_[j])
                return dir_ * (int{present_[i]} - int{present_[j]});
            return dir_ * three_way(reals_[i], reals_[j]);
        case Kind::CachedWide:
            if (!present_[i] || !present_[j])
                return dir_ * (int{present_[i]} - int{present_[j]});
            return dir_ * compare_wide(wides_[i].c_str(), wides_[j].c_str(), type_ == -11);
        }
        return -dir_;
    }

    // An unsigned image of the key of record i that orders as the key's
    // comparison does (in its direction), for the radix path; false when the
    // key has none (text keys, keys never compared, NaNs, which compare
    // equal to everything). Equal images mean the comparison says equal.
    bool image(uint32_t i, uint64_t *out) const {
        const unsigned char *field = base_ + size_t{i} * size_ + offset_;
        uint64_t img;
        switch (kind_) {
        case Kind::Int: {
            const int64_t v = type_ == 2 ? *field : type_ == 4 ? load<int32_t>(field) : load<int16_t>(field);
            img = static_cast<uint64_t>(v) ^ 0x8000000000000000u;
            break;
        }
        case Kind::Real:
            if (!real_image(type_ == 5 ? double{load<float>(field)} : load<double>(field), &img))
                return false;
            break;
        case Kind::CachedReal:
            if (!present_[i])
                img = 0; // a null string: below every number's image
            else if (!real_image(reals_[i], &img))
                return false;
            break;
        default:
            return false;
        }
        *out = dir_ > 0 ? img : ~img;
        return true;
    }

  private:
    static bool real_image(double v, uint64_t *out) {
        if (v != v)
            return false;
        if (v == 0)
            v = 0.0; // -0 and +0 compare equal: one image
        const uint64_t bits = std::bit_cast<uint64_t>(v);
        *out = (bits & 0x8000000000000000u) ? ~bits : bits | 0x8000000000000000u;
        return true;
    }

    int compare_int(const unsigned char *a, const unsigned char *b) const {
        switch (type_) {
        case 2:
            return three_way(*a, *b);
        case 4:
            return three_way(load<int32_t>(a), load<int32_t>(b));
        default:
            return three_way(load<int16_t>(a), load<int16_t>(b));
        }
    }

    // strncmp / _strnicmp over the key's characters, stopping at a zero byte.
    int compare_text(const unsigned char *a, const unsigned char *b) const {
        for (size_t k = 0; k < text_length_; ++k) {
            const int x = type_ == 9 ? common::ascii_lower(a[k]) : a[k];
            const int y = type_ == 9 ? common::ascii_lower(b[k]) : b[k];
            if (x != y)
                return x < y ? -1 : 1;
            if (x == 0)
                return 0;
        }
        return 0;
    }

    // A shallow view of record i's Variant (the coercions copy it before
    // changing it); nothing when its type is not one to read.
    std::optional<VARIANT> field_variant(size_t i) const { return frame::variant_in_record(base_ + i * size_ + offset_); }

    static VARTYPE variant_target(int16_t type) {
        switch (type) {
        case -1:
            return VT_BOOL;
        case -2:
            return VT_I1;
        case -3:
            return VT_I2;
        case -4:
            return VT_I4;
        case -5:
            return VT_R4;
        case -6:
            return VT_R8;
        case -7:
            return VT_CY;
        default:
            return VT_DATE;
        }
    }

    void cache_real(size_t i) {
        const unsigned char *field = base_ + i * size_ + offset_;
        std::optional<double> value;
        if (type_ == 13) {
            const auto *text = reinterpret_cast<const char *>(field);
            value = text_number(text, strnlen(text, text_length_));
        } else if (type_ == 14) {
            const auto *wide = load<const OLECHAR *>(field);
            if (wide != nullptr) {
                const std::string text = platform::wide_to_ansi(wide, wide_length(wide));
                value = text_number(text.data(), text.size());
            }
        } else if (type_ == -14) {
            const std::optional<VARIANT> v = field_variant(i);
            if (auto wide = v ? frame::variant_wide(&*v) : std::nullopt) {
                const std::string text = platform::wide_to_ansi(wide->c_str(), wide_length(wide->c_str()));
                value = text_number(text.data(), text.size());
            }
        } else {
            // A Variant whose coercion fails counts as 0, as an unchecked
            // conversion leaves it.
            const std::optional<VARIANT> v = field_variant(i);
            value = (v ? frame::variant_number(&*v, variant_target(type_)) : std::nullopt).value_or(0.0);
        }
        present_[i] = value.has_value();
        reals_[i] = value.value_or(0.0);
    }

    void cache_wide(size_t i) {
        const std::optional<VARIANT> v = field_variant(i);
        auto wide = v ? frame::variant_wide(&*v) : std::nullopt;
        present_[i] = wide.has_value();
        if (wide)
            wides_[i] = std::move(*wide);
    }

    const unsigned char *base_;
    size_t size_;
    size_t offset_ = 0;
    size_t text_length_ = 0;
    int dir_;
    int16_t type_;
    Kind kind_ = Kind::Never;
    std::vector<double> reals_;
    std::vector<Wide> wides_;
    std::vector<uint8_t> present_; // false: a null string, the smallest value
};

class Sorter {
  public:
    explicit Sorter(std::vector<Key> &keys) : keys_(keys) {}

    // Sorts order[0..n) by key k, then refines each run equal on it by the
    // keys after it.
    void sort(uint32_t *order, size_t n, size_t k) {
        if (n >= kRadixMinimum && radix(order, n, k))
            return;
        const Key &key = keys_[k];
        safe_sort(order, n, [&key](uint32_t x, uint32_t y) { return key.compare(x, y) < 0; });
        if (k + 1 >= keys_.size())
            return;
        size_t start = 0;
        for (size_t i = 1; i <= n; ++i) {
            if (i < n && key.compare(order[i - 1], order[i]) == 0)
                continue;
            if (i - start >= 2)
                sort(order + start, i - start, k + 1);
            start = i;
        }
    }

  private:
    static constexpr size_t kRadixMinimum = 512;

    // Long ranges whose next keys are numeric: each record's images of those
    // keys are read once, in order, and a stable radix sort by each key from
    // the last to the first orders the range by all of them at once, which
    // is exactly the sort by the first refined by the others. Runs equal on
    // all of them go on to the next key. False (order untouched) when key k
    // has no image, a NaN turns up, or memory is short.
    bool radix(uint32_t *order, size_t n, size_t k) {
        size_t j = k;
        std::vector<std::vector<uint64_t>> images; // [key - k][position]
        while (j < keys_.size()) {
            std::vector<uint64_t> column(n);
            bool ok = true;
            for (size_t i = 0; i < n && ok; ++i)
                ok = keys_[j].image(order[i], &column[i]);
            if (!ok)
                break;
            images.push_back(std::move(column));
            ++j;
        }
        if (images.empty())
            return false;
        using Pair = std::pair<uint64_t, uint32_t>;
        std::vector<Pair> pairs(n);
        for (size_t i = 0; i < n; ++i)
            pairs[i].second = static_cast<uint32_t>(i); // positions in order[]
        for (size_t key = images.size(); key-- > 0;) {
            for (Pair &p : pairs)
                p.first = images[key][p.second];
            if (!detail::radix_sort<uint64_t>(pairs.data(), n, [](const Pair &p) { return p.first; }))
                return false;
        }
        const std::vector<uint32_t> before(order, order + n);
        for (size_t i = 0; i < n; ++i)
            order[i] = before[pairs[i].second];
        if (j >= keys_.size())
            return true;
        const auto same = [&](size_t a, size_t b) {
            for (const auto &column : images)
                if (column[pairs[a].second] != column[pairs[b].second])
                    return false;
            return true;
        };
        size_t start = 0;
        for (size_t i = 1; i <= n; ++i) {
            if (i < n && same(i - 1, i))
                continue;
            if (i - start >= 2)
                sort(order + start, i - start, j);
            start = i;
        }
        return true;
    }

    std::vector<Key> &keys_;
};

} // namespace

void typed_sort(unsigned char *base, size_t count, size_t size, const TypedSortDescriptor &d) {
    if (base == nullptr || count < 2 || size == 0)
        return;
    if (count > std::numeric_limits<uint32_t>::max())
        count = std::numeric_limits<uint32_t>::max();
    size_t first = 0;
    while (first < 10 && d.KeyOrder[first] == 0)
        ++first;
    std::vector<Key> keys;
    for (size_t k = first; k < 10 && d.KeyOrder[k] != 0; ++k)
        keys.emplace_back(base, count, size, d.KeyOffset[k], d.KeyLength[k], d.KeyType[k], d.KeyOrder[k]);
    if (keys.empty())
        return;
    std::vector<uint32_t> order(count);
    for (size_t i = 0; i < count; ++i)
        order[i] = static_cast<uint32_t>(i);
    Sorter(keys).sort(order.data(), count, 0);
    std::vector<unsigned char> sorted(count * size);
    for (size_t i = 0; i < count; ++i)
        std::memcpy(sorted.data() + i * size, base + size_t{order[i]} * size, size);
    std::memcpy(base, sorted.data(), sorted.size());
}

} // namespace brindle::arrays
