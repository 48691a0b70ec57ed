// Where a page's legend stands in its plot area.
#pragma once

#include "qvgraph/geometry.h"
#include "qvplot/layout.h"
#include "qvplot/options.h"
#include "qvplot/series.h"

#include <optional>

namespace qv::plot {

/// The size of a legend in millimetres.
struct LegendRoom {
    double width = 0;
    double height = 0;
};

/// The corner or the middle of a side of the plot area where a legend hides no data, or least: the legend's
/// left top corner in millimetres on the page. Nothing where it would take too much of the plot area.
std::optional<Point> find_legend_place(PlotData const& data, PageLayout const& layout,
                                       PlotOptions const& options, LegendRoom const& legend);

} // namespace qv::plot
