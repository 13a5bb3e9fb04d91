#include "arrays/record_text_order.h"

#include "arrays/sort_engine.h"
#include "common/ascii.h"

#include <cstdint>
#include <cstring>
#include <utility>

namespace brindle::arrays {

namespace {

using brindle::common::ascii_lower;

} // namespace

int compare_text_nocase(const unsigned char *x, const unsigned char *y, const unsigned char *end,
                        size_t *budget) noexcept {
    for (;; --*budget) {
        if (*budget == 0)
            return 0;
        const int a = x < end ? ascii_lower(*x) : 0;
        const int b = y < end ? ascii_lower(*y) : 0;
        if (a != b || a == 0)
            return a - b;
        ++x;
        ++y;
    }
}

int compare_text_nocase(const unsigned char *x, const unsigned char *y, const unsigned char *end) noexcept {
    // The walk stops at the first terminator, long before this budget ends.
    size_t unlimited = SIZE_MAX;
    return compare_text_nocase(x, y, end, &unlimited);
}

int RecordTextOrder::byte(size_t u, size_t k) const noexcept {
    const size_t at = u * size_ + k;
    return at < length_ ? ascii_lower(base_[at]) : 0;
}

// The first difference of two units' folded bytes; 0 when they are equal,
// whether they end the text (a zero byte) or go on into the next unit.
int RecordTextOrder::compare_units(size_t a, size_t b) const noexcept {
    for (size_t k = 0; k < size_; ++k) {
        const int x = byte(a, k), y = byte(b, k);
        if (x != y || x == 0)
            return x - y;
    }
    return 0;
}

RecordTextOrder::RecordTextOrder(const unsigned char *base, size_t size, size_t length)
    : base_(base), size_(size), length_(length) {
    // Units cover the buffer and the terminator its end stands for.
    const size_t m = (length + 1 + size - 1) / size;
    // Level 0: the units' own order; a unit ends the text when it holds a
    // zero byte (the last one always does).
    std::vector<uint32_t> order(m);
    for (size_t u = 0; u < m; ++u)
        order[u] = static_cast<uint32_t>(u);
    safe_sort(order.data(), m, [this](uint32_t a, uint32_t b) { return compare_units(a, b) < 0; });
    std::vector<uint32_t> rank(m);
    std::vector<uint8_t> ends(m);
    for (size_t i = 0; i < m; ++i)
        rank[order[i]] = i == 0 ? 0 : rank[order[i - 1]] + (compare_units(order[i - 1], order[i]) != 0);
    for (size_t u = 0; u < m; ++u)
        for (size_t k = 0; k < size && !ends[u]; ++k)
            ends[u] = byte(u, k) == 0;
    ranks_.push_back(std::move(rank));
    ends_.push_back(std::move(ends));
    // Level k + 1 from level k: 2^(k+1) units from u are the 2^k from u,
    // then (unless those ended the text) the 2^k from u + 2^k.
    for (size_t span = 1; span < m; span *= 2) {
        const auto &r = ranks_.back();
        const auto &e = ends_.back();
        const auto second = [&](uint32_t u) -> uint64_t { return e[u] ? 0 : uint64_t{r[u + span]} + 1; };
        std::vector<std::pair<uint64_t, uint32_t>> keys(m);
        for (size_t u = 0; u < m; ++u)
            keys[u] = {(uint64_t{r[u]} << 32) | second(static_cast<uint32_t>(u)), static_cast<uint32_t>(u)};
        if (!detail::radix_sort<uint64_t>(keys.data(), m, [](const auto &p) { return p.first; }))
            safe_sort(keys.data(), m, [](const auto &a, const auto &b) { return a.first < b.first; });
        std::vector<uint32_t> next_rank(m);
        std::vector<uint8_t> next_ends(m);
        uint32_t current = 0;
        for (size_t i = 0; i < m; ++i) {
            if (i > 0 && keys[i].first != keys[i - 1].first)
                ++current;
            next_rank[keys[i].second] = current;
        }
        bool all_ended = true;
        for (size_t u = 0; u < m; ++u) {
            next_ends[u] = e[u] || e[u + span];
            all_ended &= next_ends[u] != 0;
        }
        ranks_.push_back(std::move(next_rank));
        ends_.push_back(std::move(next_ends));
        if (all_ended)
            break;
    }
}

int RecordTextOrder::compare(size_t i, size_t j) const noexcept {
    if (i == j)
        return 0;
    // Skip the longest run of equal units that does not end the text: at
    // each level, equal ranks mean the next 2^k units are equal.
    for (size_t k = ranks_.size(); k-- > 0;) {
        if (ranks_[k][i] != ranks_[k][j])
            continue;
        if (ends_[k][i])
            return 0; // equal up to the end of the text
        i += size_t{1} << k;
        j += size_t{1} << k;
    }
    return compare_units(i, j);
}

} // namespace brindle::arrays
