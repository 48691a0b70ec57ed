// The values of bars, written in them or at their ends.
#pragma once

#include "render/bars/bar_places.h"

namespace qv::render {

/// Writes the labels of all bars of the current graph, after the bars, so that none covers one. A label lies
/// in the plot area, and in its bar or beyond its end clear of other bars; where it has no room there, or
/// would touch another, it is left out.
void draw_bar_labels(document::ControlState& state, DrawSurface& surface, document::Graph& graph,
                     BarPlan const& plan);

} // namespace qv::render
