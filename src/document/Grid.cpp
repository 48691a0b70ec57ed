#include "document/Grid.h"

#include <cmath>

namespace qv::document {

void Grid::measure() {
    extent = positive = {};
    for (double const value : values) {
        if (!std::isfinite(value)) continue;
        extent.include(value);
        if (value > 0) positive.include(value);
    }
}

} // namespace qv::document
