#include "math/weighted_average.h"

#include <cmath>

namespace brindle::math {

double inverse_distance_value(const Vec<3> (&points)[3], const Vec<2> &at) noexcept {
    double distance[3];
    for (int i = 0; i < 3; ++i) {
        distance[i] = vec_length(Vec<2>{points[i][0] - at[0], points[i][1] - at[1]});
        if (distance[i] == 0.0)
            return points[i][2];
    }
    double nearest = distance[0];
    for (double d : distance)
        if (d < nearest)
            nearest = d;
    double weighted = 0.0, weights = 0.0;
    for (int i = 0; i < 3; ++i) {
        const double w = nearest / distance[i];
        weighted += w * points[i][2];
        weights += w;
    }
    return weighted / weights;
}

} // namespace brindle::math
