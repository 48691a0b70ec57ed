// The grid of a polar graph: circles at round values of y, spokes at angles, and their labels.
#pragma once

#include "render/axes/axes.h"

namespace qv::render {

/// Takes as much room for the labels of the current graph as they need, and draws the grid if the axes are
/// painted in this pass.
void draw_polar_grid(document::ControlState& state, DrawSurface& surface, AxesPass pass);

/// Writes the values of the circles of the current graph.
void draw_polar_labels(document::ControlState& state, DrawSurface& surface);

} // namespace qv::render
