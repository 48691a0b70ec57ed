// The line through the points of a data set, thinned to what the surface can show.
#pragma once

#include "document/PointStore.h"
#include "qvgraph/geometry.h"
#include "render/lines/column_thinner.h"
#include "scale/mapping.h"

namespace qv::render {

/// How the points of a data set reach the page.
struct LineMapping {
    scale::AxisMap x;
    scale::AxisMap y;
    Box visible; // what can be seen of the line, the pen's width included, twips
};

/// The line through a store's points as polylines, cut where a point is not finite. Blocks that lie wholly
/// on one side of the visible box contribute their ends only; where x rises, a column is found by search
/// and its points are merely compared.
void draw_data_line(DrawSurface& surface, document::PointStore const& points, LineMapping const& mapping);

} // namespace qv::render
