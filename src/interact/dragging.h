// Dragging graphs, their edges and plot margins, and legends.
#pragma once

#include "document/ControlState.h"
#include "qvgraph/geometry.h"

#include <array>

namespace qv::interact {

/// A graph's frame and its borders in whole twips: what GraphPositionChanged tells of.
using PlaceOnPage = std::array<double, 8>;
PlaceOnPage place_on_page(document::ControlState const& state, document::Graph const& graph);

/// Moves what the hit flags name of `MouseGraph` to the mouse; true when something has moved. The first step
/// of a drag draws the whole page, later ones the graph alone.
bool DragGraph(document::ControlState& state, Point mouse, bool first);

/// Moves the legend of `MouseGraph` to the mouse, inside the graph's frame. One in front of the data moves on
/// the visible page alone; with one behind them the graph is drawn anew.
void DragLegendTable(document::ControlState& state, Point mouse, bool first);

} // namespace qv::interact
