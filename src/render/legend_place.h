// Where a legend stands that finds its own place.
#pragma once

#include "document/ControlState.h"
#include "render/legend.h"

namespace qv::render {

constexpr double legend_gap_mm = 2; // from the plot area's edges

/// Whether a legend leaves most of a plot area free.
bool fits_in_plot(LegendSize size, Box const& plot);

/// The left top corner, on the page in twips, of the current graph's legend: beside the plot area, or where
/// it hides least of the data, the corners first. Its last place is kept while it is about as good.
Point legend_corner(document::ControlState const& state, document::Graph& graph, LegendSize size);

} // namespace qv::render
