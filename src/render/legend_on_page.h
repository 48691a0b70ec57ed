// The front graph's legend, in front of its data, on the visible page alone: `GraphImage` holds the page
// below it, so that a drag moves it without drawing any graph.
#pragma once

#include "document/ControlState.h"

namespace qv::render {

/// Draws the legend of a graph over the finished page.
void put_legend_on_page(document::ControlState& state, std::int16_t index);

/// Moves that legend to the graph's `LegendLeft` and `LegendTop`; the page is not shown yet. False, and
/// nothing done, when it does not lie there: the graph must be drawn anew.
bool move_legend_on_page(document::ControlState& state, std::int16_t index);

} // namespace qv::render
