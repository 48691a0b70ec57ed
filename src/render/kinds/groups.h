// Groups of points that share a position on an axis, and how wide they are drawn.
#pragma once

#include "document/records.h"
#include "scale/mapping.h"

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace qv::render {

/// Numbers the different positions in order of arrival.
class PositionIndex {
public:
    std::size_t of(double position);
    std::vector<double> const& positions() const { return positions_; }

private:
    static constexpr std::size_t few = 16; // are looked through sooner than hashed
    std::vector<double> positions_;
    std::unordered_map<double, std::size_t> numbers_;
    std::size_t last_ = 0;
};

/// The smallest distance between neighbouring positions, on a linear and a logarithmic axis; 0 where fewer
/// than two have a place.
struct Gaps {
    double linear = 0;
    double logarithmic = 0; // ln of their ratio
};
Gaps gaps_between(std::vector<double> positions);

/// Half the width of groups on the axis's own scale.
double half_width_of_groups(document::DataSet const& set, Gaps const& gaps, document::Axis const& axis);

/// The position that is so far from another on the axis's own scale.
inline double position_beside(double position, double way, bool is_log) {
    return scale::ScaleFrom{position, is_log}.value_at(way);
}

} // namespace qv::render
