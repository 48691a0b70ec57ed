// The filled area between a data set's polyline and the start of its y axis.
#pragma once

#include "document/records.h"
#include "qvgraph/DrawSurface.h"
#include "qvgraph/geometry.h"
#include "render/data_line.h"

namespace qv::render {

/// Fills between the polyline and the start of the y axis it is mapped through, in the symbol colour, each
/// piece between two points outlined on demand in the line's pen; the polyline goes on top. Pieces of which
/// nothing can be seen are left out.
void draw_area(DrawSurface& surface, document::DataSet const& set, LineMapping const& mapping, bool outlined);

} // namespace qv::render
