#include "convert/speller.h"

#include "common/ascii.h"
#include "runtime/crt_format.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace brindle::convert {

namespace {

constexpr const char *kUnits[20] = {"Zero",    "One",     "Two",       "Three",    "Four",
                                    "Five",    "Six",     "Seven",     "Eight",    "Nine",
                                    "Ten",     "Eleven",  "Twelve",    "Thirteen", "Fourteen",
                                    "Fifteen", "Sixteen", "Seventeen", "Eighteen", "Nineteen"};
constexpr const char *kTens[8] = {"Twenty", "Thirty", "Forty", "Fifty", "Sixty", "Seventy", "Eighty", "Ninety"};

constexpr double kLargest = 1e15;
constexpr size_t kWordMax = 27;  // the fraction word
constexpr size_t kNameMax = 19;  // currency and cents names
constexpr size_t kMaxDecimals = 30;

std::string_view cut(std::string_view word, size_t max) { return word.substr(0, std::min(word.size(), max)); }

class Speller {
  public:
    // One group of up to three digits and its scale word. Scale steps can
    // hand over a count of 1000 (the scale is found by a floating
    // multiplication, which may fall just short of a power of ten); units
    // has words for every hundreds count up to 19, so n is bounded by 1999.
    void group(int64_t n, std::string_view scale) {
        n = std::clamp<int64_t>(n, 0, 1999);
        if (!out_.empty())
            out_ += ' ';
        if (n >= 100) {
            out_ += kUnits[n / 100];
            out_ += " Hundred ";
            n %= 100;
        }
        if (n != 0) {
            if (n < 20) {
                out_ += kUnits[n];
            } else {
                out_ += kTens[(n - 20) / 10];
                if (n % 10 != 0) {
                    out_ += '-';
                    out_ += kUnits[n % 10];
                }
            }
            out_ += ' ';
        }
        out_ += scale;
    }

    // The whole part of |value|, always ending with a space; returns the
    // fraction left over.
    double whole(double value) {
        double w;
        const double fraction = std::modf(std::fabs(value), &w);
        struct Scale {
            double factor, modulus;
            const char *name;
        };
        static constexpr Scale kScales[] = {
            {1e-12, 1e12, "Trillion"}, {1e-9, 1e9, "Billion"}, {1e-6, 1e6, "Million"}, {0.001, 1000.0, "Thousand"}};
        for (const Scale &s : kScales) {
            const auto t = static_cast<int64_t>(w * s.factor);
            if (t != 0) {
                group(t, s.name);
                w = std::fmod(w, s.modulus);
            }
        }
        group(static_cast<int64_t>(w), "");
        if (out_.empty())
            out_ = "Zero ";
        return fraction;
    }

    void append(std::string_view text) { out_ += text; }
    void drop_trailing_space() {
        if (!out_.empty() && out_.back() == ' ')
            out_.pop_back();
    }

    std::string finish(bool negative) {
        drop_trailing_space();
        return negative && !out_.empty() ? "Minus " + out_ : out_;
    }

  private:
    std::string out_;
};

// The fraction f (0 < f < 1) as _gcvt writes it with `digits` significant
// digits; an exponent form (f below 0.1 after rounding) is rewritten as the
// plain decimals "0.00ddd", cut after kMaxDecimals decimals.
std::string fraction_text(double f, int digits) {
    std::string text = runtime::crt_gcvt(f, digits);
    const size_t e = text.find('e');
    if (e == std::string::npos)
        return text;
    const int exponent = std::atoi(text.c_str() + e + 1); // negative here
    std::string decimals(static_cast<size_t>(-exponent - 1 < 0 ? 0 : -exponent - 1), '0');
    for (size_t i = 0; i < e; ++i)
        if (common::is_ascii_digit(text[i]))
            decimals += text[i];
    if (decimals.size() > kMaxDecimals)
        decimals.resize(kMaxDecimals);
    return "0." + decimals;
}

bool out_of_range(double value) { return std::isnan(value) || std::fabs(value) >= kLargest; }

} // namespace

std::string spell_number(double value, int digits, std::string_view word) {
    if (out_of_range(value))
        return {};
    Speller s;
    const double f = s.whole(value);
    if (f != 0.0) {
        s.append(cut(word, kWordMax));
        const std::string text = fraction_text(f, digits);
        // From the third character on ("0." comes first); each digit is
        // one group with its closing space removed, so a zero adds nothing.
        for (size_t i = 2; i < text.size(); ++i) {
            if (!common::is_ascii_digit(text[i]))
                continue;
            s.group(text[i] - '0', "");
            s.drop_trailing_space();
        }
    }
    return s.finish(value < 0);
}

std::string spell_money(double value, std::string_view currency, std::string_view cents) {
    if (out_of_range(value))
        return {};
    Speller s;
    const double f = s.whole(value);
    currency = cut(currency, kNameMax);
    cents = cut(cents, kNameMax);
    if (!currency.empty())
        s.append(currency);
    else
        s.drop_trailing_space();
    if (f != 0.0) {
        s.append(" and");
        s.group(static_cast<int64_t>(f * 100.0 + 0.5), "");
        if (!cents.empty())
            s.append(cents);
    }
    return s.finish(value < 0);
}

} // namespace brindle::convert
