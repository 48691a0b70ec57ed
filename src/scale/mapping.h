// Frame layout, and the way from data values to page positions and back.
#pragma once

#include "graph/model/ControlState.h"

namespace qv::scale {

/// Lays out the current graph's frame and the position of its legend.
void CalcBorders(graph::ControlState& state);

/// The straight line from a value on the axis's own scale to a page position: position = offset + factor *
/// scale(value), where scale is ln on a logarithmic axis. What PosX and PosY compute, ready for loops.
struct AxisMap {
    double offset = 0;
    double factor = 0;
    bool is_log = false;
    bool valid = false; // false: no value can be mapped (empty range, or a logarithmic one not positive)
    double off_page = 0; // where a value lands that cannot be mapped

    double operator()(double value) const;
};
AxisMap x_map(graph::Graph const& graph, graph::Axis const& axis);
AxisMap y_map(graph::Graph const& graph, graph::Axis const& axis);

/// Page position in twips of a value on the current graph's selected x (y) axis, as a 32-bit float. A value
/// that cannot be mapped lies one axis length outside the plot area.
void PosX(graph::ControlState& state, double value, float& position);
void PosY(graph::ControlState& state, double value, float& position);

/// The data value at a page position, on the given graph's selected x (y) axis.
void GetXCoord(graph::ControlState& state, std::int16_t graph, float position, double& value);
void GetYCoord(graph::ControlState& state, std::int16_t graph, float position, double& value);

} // namespace qv::scale
