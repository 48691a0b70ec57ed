// Puts the points of a rising line into fine bars.
#pragma once

#include "render/lines/fine_columns.h"
#include "render/lines/rising_line.h"

namespace qv::render {

/// The points from one to before another.
void walk_into_bars(LineInPixels const& line, PointIndex from, PointIndex to, FineColumns& bars);

} // namespace qv::render
