#include "base/convert.h"

#include <cmath>

namespace qv {

double round_half_even_of_any(double value) {
    return std::nearbyint(value);
}

} // namespace qv
