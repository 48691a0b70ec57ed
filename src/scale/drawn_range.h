// The range of an axis as it is drawn: what symbols, lines, areas and functions are shown of.
#pragma once

#include "document/records.h"

#include <algorithm>

namespace qv::scale {

/// The values at both ends of an axis; `first` is the larger one where the axis was given so.
struct DrawnRange {
    double first = 0;
    double last = 0;

    double low() const { return std::min(first, last); }
    double high() const { return std::max(first, last); }
    bool rises() const { return first < last; }
};

inline DrawnRange drawn_range(document::Axis const& axis) {
    return {axis.AxisValue1, axis.AxisValue2};
}

} // namespace qv::scale
