// Plotting of data sets: lines, symbols, bars and texts.
#pragma once

#include "graph/model/ControlState.h"

namespace qv::render {

/// Draws all data sets of the current graph, clipped to its plot area.
void PlotDataSets(graph::ControlState& state, DrawSurface& surface);

} // namespace qv::render
