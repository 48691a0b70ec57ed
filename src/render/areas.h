// The filled area between a data set's polyline and the lower end of the y range.
#pragma once

#include "base/geometry.h"
#include "graph/model/records.h"
#include "render/DrawSurface.h"
#include "render/data_line.h"

namespace qv::render {

/// Ranges in data values of the axes that were selected when the drawing of the data began.
struct EntryRanges {
    double x_min = 0, x_max = 0;
    double y_min = 0, y_max = 0;

    /// Strictly inside both ranges.
    bool hold(Point value) const {
        return value.x > x_min && value.x < x_max && value.y > y_min && value.y < y_max;
    }
};

/// Fills between the polyline and the value `y_min`, in the symbol colour, each piece between two points
/// outlined on demand in the line's pen; the polyline goes on top. Pieces wholly left, right or below the
/// ranges are left out.
void draw_area(DrawSurface& surface, graph::DataSet const& set, LineMapping const& mapping,
               EntryRanges const& ranges, bool outlined);

} // namespace qv::render
