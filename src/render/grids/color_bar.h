// The strip of colours beside a graph that says which value has which.
#pragma once

#include "qvgraph/DrawSurface.h"
#include "render/axes/axis_frame.h"

namespace qv::render {

/// Draws the strip of a colour bar with an outline in the axis's colour; line, ticks and labels are those of
/// any axis.
void draw_color_bar(document::Graph const& graph, DrawSurface& surface, document::Axis const& axis,
                    AxisFrame const& frame);

} // namespace qv::render
