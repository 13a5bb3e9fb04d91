// A whole array of Doubles, of any number of dimensions, as one run of
// values in memory order (the first subscript varies fastest). The matrix
// family reads its matrices this way: the caller may dimension an n x n
// matrix (1 To n, 1 To n), (0 To n * n - 1) or any other shape holding at
// least n x n Doubles.
//
// Only arrays whose elements are Doubles are taken: an array that declares
// another element type, or, when it declares none, one whose elements are
// not 8 bytes wide or own something (strings, variants, interfaces,
// records), is refused. The data stay locked for the life of the object and
// are released on every path.
#pragma once

#include "frame/arrays.h"
#include "platform/ole.h"

#include <cstddef>

namespace brindle::frame {

class DoubleBlock {
  public:
    explicit DoubleBlock(SAFEARRAY **ref) noexcept;
    DoubleBlock(const DoubleBlock &) = delete;
    DoubleBlock &operator=(const DoubleBlock &) = delete;

    // False for a missing descriptor, elements that are not Doubles, bounds
    // the system will not give, a count past the address space, or a lock
    // that failed; count() is then 0 and data() null.
    bool ok() const noexcept { return whole_.ok(); }
    // Elements of all dimensions together (0 for an empty array).
    size_t count() const noexcept { return whole_.elements(); }
    double *data() const noexcept { return static_cast<double *>(whole_.data()); }

  private:
    WholeArray whole_;
};

} // namespace brindle::frame
