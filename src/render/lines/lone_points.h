// Points of a line that no segment reaches: a data set's only one, or one between gaps.
#pragma once

#include "render/lines/data_line.h"

namespace qv::render {

/// Draws a disc in the surface's fore colour, a little wider than the pen, at each such point.
void draw_lone_points(DrawSurface& surface, document::PointStore const& points, LineMapping const& mapping);

} // namespace qv::render
