// The filled area between a data set's polyline and the start of its y axis, a value, or another data set.
#pragma once

#include "document/records.h"
#include "qvgraph/DrawSurface.h"
#include "qvgraph/geometry.h"
#include "render/kinds/series_kind.h"
#include "render/lines/data_line.h"

namespace qv::render {

/// A data set's area where it is drawn.
struct AreaView {
    document::Graph const& graph;
    document::DataSet const& set;
    LineMapping const& mapping;
    SeriesScope::Maps maps = SeriesScope::Maps::BeingDrawn; // those of `mapping`
};

/// The other data set at which a data set's area begins, nullptr for none.
document::DataSet const* begins_at(document::Graph const& graph, document::DataSet const& set);

/// Fills from where the area begins, by default the start of the y axis it is mapped through, to the
/// polyline, in the symbol colour, each piece between two points outlined on demand in the line's pen; the
/// polyline goes on top. Pieces of which nothing can be seen are left out.
void draw_area(DrawSurface& surface, AreaView const& area, bool outlined);

/// Whether a place on the page lies in the area.
bool area_holds(AreaView const& area, Point place);

} // namespace qv::render
