// Where a legend stands that finds its own place.
#pragma once

#include "document/ControlState.h"
#include "render/legend.h"

namespace qv::render {

constexpr double legend_gap_mm = 2; // from the plot area's edges

/// Whether a legend leaves most of a plot area free.
bool fits_in_plot(LegendSize size, Box const& plot);

/// Chooses the place in the plot area where the current graph's legend hides least of the data, the corners
/// first; the last place is kept while it is about as good. Returns the share of the data's strokes that it
/// hides there.
double settle_legend_corner(document::ControlState& state, document::Graph& graph, LegendSize size);

/// The left top corner, on the page in twips, of the current graph's legend: beside the plot area, or where
/// it was settled.
Point legend_corner(document::ControlState& state, document::Graph& graph, LegendSize size);

} // namespace qv::render
