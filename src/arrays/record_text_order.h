// The comparison of the string-record sorts, made fast.
//
// cSortStr and cReverseSortStr compare two records as the C runtime's
// case-insensitive comparison of zero-terminated text started at each
// record's first byte: it does not stop at the record's end but runs on into
// the records behind it until a difference or a zero byte (here also the end
// of the buffer). Done naively, a buffer of many equal records makes every
// comparison run to the end of the buffer: quadratic time, a hang in
// practice.
//
// Because both records are compared from their first bytes, the k-th record
// behind one is always compared with the k-th record behind the other. So
// the buffer, with the terminator its end stands for, is a string of
// record-sized "units" (the records, then whatever follows them, the last
// unit padded with zero bytes), and the comparison of two records is
// the comparison of two suffixes of that string, unit by unit, up to the
// first unit that differs or ends in a zero byte. Ranks of the units and of
// runs of 2^k units (prefix doubling) find the first unit that differs in
// O(log n) steps; that unit pair is then compared byte by byte, giving the
// very difference of folded bytes the runtime's comparison returns.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace brindle::arrays {

// The runtime's case-insensitive comparison ("C" locale: A-Z fold to a-z)
// of the zero-terminated texts at x and y, with `end` counting as a
// terminator: the difference of the first unequal folded bytes, or 0.
int compare_text_nocase(const unsigned char *x, const unsigned char *y, const unsigned char *end) noexcept;

// The same comparison on a budget of bytes: each byte pair read takes one
// from *budget; when it runs out the answer is 0 and *budget stays 0.
int compare_text_nocase(const unsigned char *x, const unsigned char *y, const unsigned char *end,
                        size_t *budget) noexcept;

class RecordTextOrder {
  public:
    // Records of `size` (> 0) bytes from `base`, in a buffer of `length`
    // bytes. Throws std::bad_alloc.
    RecordTextOrder(const unsigned char *base, size_t size, size_t length);

    // compare_text_nocase(record i, record j, end of buffer), exactly.
    int compare(size_t i, size_t j) const noexcept;

  private:
    // Byte k of unit u, folded; 0 past the buffer's end.
    int byte(size_t u, size_t k) const noexcept;
    int compare_units(size_t a, size_t b) const noexcept;

    const unsigned char *base_;
    size_t size_, length_;
    // ranks_[k][u]: order of the 2^k units from u (up to a terminating one);
    // ends_[k][u]: those units hold the end of the text.
    std::vector<std::vector<uint32_t>> ranks_;
    std::vector<std::vector<uint8_t>> ends_;
};

} // namespace brindle::arrays
