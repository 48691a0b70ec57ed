// Axis drawing: line, ticks, grids, labels and titles of every axis of the current graph.
#pragma once

#include "document/ControlState.h"

#include <string_view>

namespace qv::render {

/// Axes are painted once, under the data or over them.
enum class AxesPass {
    Full,         // sets the axis lengths, paints the plot area, settles the ranges, draws title and axes
    Measured,     // the same without painting anything, for how far all reaches out of the plot area
    WithoutMarks, // the same, but axes only take their space
    MarksOnly     // only the axes, with the ranges settled before, over the data
};
/// Leaves in `axes_reach` how far it all reaches out of the plot area.
void GraphAxes(document::ControlState& state, DrawSurface& surface, AxesPass pass);

/// All axes become as long as the plot area of the graph's frame.
void set_axis_lengths(document::Graph& graph);

/// Draws one axis; the first of its kind in a pass starts the stacks of its two sides anew. A hidden axis
/// settles its range too.
void DrawXAxis(document::ControlState& state, DrawSurface& surface, std::int16_t axis, bool first,
               AxesPass pass = AxesPass::Full);
void DrawYAxis(document::ControlState& state, DrawSurface& surface, std::int16_t axis, bool first,
               AxesPass pass = AxesPass::Full);

struct GridLineStyle {
    document::AxisKind kind = document::AxisKind::X;
    bool major = true;
};
/// A line across the plot area at a position (twips) on the selected axis of that kind, if it shows grids.
void GridLine(document::ControlState& state, DrawSurface& surface, double position, GridLineStyle style);

/// Takes the text before the first "," off the front of `text`.
std::string_view NextToken(std::string_view& text);

} // namespace qv::render
