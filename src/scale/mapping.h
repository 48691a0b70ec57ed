// Frame layout, and the way from data values to page positions and back.
#pragma once

#include "graph/model/ControlState.h"

#include <cmath>
#include <limits>

namespace qv::scale {

/// Lays out the current graph's frame and the position of its legend.
void CalcBorders(graph::ControlState& state);

/// The straight line from a value on the axis's own scale (ln on a logarithmic axis) to a page position in
/// twips. What PosX and PosY compute, ready for loops.
struct AxisMap {
    double start = 0; // position of AxisValue1
    double origin =
        0; // AxisValue1 on the scale: reckoned from there, narrow ranges of large values stay exact
    double factor = 0; // twips a unit of the scale
    bool is_log = false;
    bool valid = false;  // false: no value can be mapped (empty range, or a logarithmic one not positive)
    double off_page = 0; // where a value lands that cannot be mapped, one that is not a number included
    double limit = std::numeric_limits<double>::infinity(); // a position beyond it becomes beyond_limit

    static constexpr double beyond_limit = 10000;

    double operator()(double value) const {
        if (!valid || (is_log && !(value > 0))) return off_page;
        double const position = start + factor * ((is_log ? std::log(value) : value) - origin);
        if (std::isnan(position)) return off_page;
        return position > limit ? beyond_limit : position;
    }

    /// The value at a position; not a number when the map is not valid.
    double value_at(double position) const {
        if (!valid) return std::numeric_limits<double>::quiet_NaN();
        double const scaled = origin + (position - start) / factor;
        return is_log ? std::exp(scaled) : scaled;
    }
};
AxisMap x_map(graph::Graph const& graph, graph::Axis const& axis);
AxisMap y_map(graph::Graph const& graph, graph::Axis const& axis);

/// Page position in twips of a value on the current graph's selected x (y) axis, as a 32-bit float. A value
/// that cannot be mapped lies one axis length outside the plot area; an x position beyond 1e10 becomes 10000.
void PosX(graph::ControlState& state, double value, float& position);
void PosY(graph::ControlState& state, double value, float& position);

/// The data value at a page position, on the given graph's selected x (y) axis; reversed axes are read the
/// way they are drawn. The y value has the precision of a 32-bit float, unless the axis's range does not
/// fit into one. An axis without length is fault 11; a failure is reported and leaves `value` alone.
void GetXCoord(graph::ControlState& state, std::int16_t graph, float position, double& value);
void GetYCoord(graph::ControlState& state, std::int16_t graph, float position, double& value);

} // namespace qv::scale
