// The legend table of a graph.
#pragma once

#include "graph/model/ControlState.h"

namespace qv::render {

/// Draws the legend of a graph. This version lists no data sets: the table has no rows, which leaves its
/// size 0 and draws nothing.
void LegendTable(graph::ControlState& state, DrawSurface& surface, std::int16_t graph);

} // namespace qv::render
