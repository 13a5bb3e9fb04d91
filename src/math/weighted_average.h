// Inverse-distance weighting (Shepard's method with power 1) of three
// values placed in the plane: each point carries a value in Z at the plane
// position (X, Y), and the estimate at a position is the mean of the three
// values, each weighted by 1 / (its plane distance to the position).
#pragma once

#include "math/vector_ops.h"

namespace brindle::math {

// The estimate at `at`. A point at distance 0 gives its own value (the
// first such point when several coincide with `at`). The weights are taken
// relative to the nearest point (nearest / distance, never above 1), so a
// distance near the smallest Double cannot overflow them. A NaN coordinate or
// value gives NaN.
double inverse_distance_value(const Vec<3> (&points)[3], const Vec<2> &at) noexcept;

} // namespace brindle::math
