// The kinds of data sets that show how values are distributed.
#pragma once

#include "render/kinds/series_kind.h"

namespace qv::render {

/// Bars over the bins of the column Y, which lies along the x axis; where bars lie, along the y axis. Items
/// are the bins.
SeriesKind const& histogram_kind();

/// Box plots of the points of one x each; where they lie, of one y. A point with extra columns is a box of
/// its own: its value is the median, the columns are lower whisker, lower quartile, upper quartile and upper
/// whisker. Items are the boxes in rising order.
SeriesKind const& boxes_kind();

/// A symbol for each point, moved aside from its x (lying from its y) so that equal ones do not hide one
/// another. How far follows from the point's number alone. Items are the points that can be drawn.
SeriesKind const& strip_kind();

} // namespace qv::render
