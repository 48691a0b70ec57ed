// Ranges that are settled before their axes are drawn: those that fit the data, those that several axes
// share, and those that make units equally long.
#pragma once

#include "document/ControlState.h"

namespace qv::render {

/// Whether the range of an automatic axis is fitted at each drawing: under AutoFit, or because the points do
/// not tell how far a data set on it reaches.
bool fits_itself(document::ControlState const& state, document::Graph const& graph,
                 document::Axis const& axis);

/// Before a page is drawn: settles the ranges of all graphs with axes that share theirs (`AxisLink`).
void settle_linked_graphs(document::ControlState& state);

/// Before a graph is drawn whose frame is laid out: settles its ranges, unless they are shared.
void settle_graph(document::ControlState& state);

/// Fits the automatic axes of the current graph, and those that share their ranges, to what the data sets
/// show now, and this share of the range more at each end. One that is negative or not finite is fault 5.
void FitAxes(document::ControlState& state, double margin);
/// The same for a caller that is told of failures and announces new ranges; true where there is one.
bool fit_axes(document::ControlState& state, double margin);

/// The ranges of linked axes on all graphs but the front one, back to front.
std::vector<document::AxisRanges> linked_ranges_behind(document::ControlState const& state);
/// Whether none of them gets another range when its graph is drawn.
bool are_links_settled_behind(document::ControlState const& state);

} // namespace qv::render
