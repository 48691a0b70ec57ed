// Axis drawing: line, ticks, grids, labels and titles of every axis of the current graph.
#pragma once

#include "graph/model/ControlState.h"

#include <string_view>

namespace qv::render {

enum class AxesPass {
    Full,     // sets the axis lengths, paints the plot area and draws the title first
    MarksOnly // only the axes, over the data
};
void GraphAxes(graph::ControlState& state, DrawSurface& surface, AxesPass pass);

/// Draws one axis; the first of its kind in a pass starts the stacks of its two sides anew.
void DrawXAxis(graph::ControlState& state, DrawSurface& surface, std::int16_t axis, bool first);
void DrawYAxis(graph::ControlState& state, DrawSurface& surface, std::int16_t axis, bool first);

struct GridLineStyle {
    graph::AxisKind kind = graph::AxisKind::X;
    bool major = true;
};
/// A line across the plot area at a position (twips) on the selected axis of that kind, if it shows grids.
void GridLine(graph::ControlState& state, DrawSurface& surface, double position, GridLineStyle style);

/// Takes the text before the first "," off the front of `text`.
std::string_view NextToken(std::string_view& text);

} // namespace qv::render
