// The legend table of a graph: one row a data set, with samples of its line and symbol before its text.
#pragma once

#include "document/ControlState.h"

#include <cstdint>

namespace qv::render {

/// Draws the legend of a graph and sets its `LegendWidth` and `LegendHeight` (0 when it has no row or its
/// texts are too wide for the frame). The table is moved inside the frame; nothing is drawn outside its edge.
/// A graph index outside the list is reported as fault 9.
void LegendTable(document::ControlState& state, DrawSurface& surface, std::int16_t graph);

/// The rectangle of a legend with its edge, half of which lies outside, in whole pixels of the surface.
Box legend_reach(document::Graph const& graph, DrawSurface const& surface);
/// Restricts later drawing to that and the graph's frame.
void clip_to_legend(DrawSurface& surface, document::Graph const& graph);
void draw_legend_edge(DrawSurface& surface, document::Graph const& graph);

/// Twips.
struct LegendSize {
    double width = 0;
    double height = 0;
};
/// The size a graph's legend takes where the frame has room for it; 0 without a row. Texts are measured on
/// the surface, whose font is changed.
LegendSize legend_size(document::ControlState& state, DrawSurface& surface, document::Graph const& graph);

/// Sets the legend's corner on the page, twips.
void LegendPosition(document::ControlState& state, std::int16_t graph, std::int32_t left, std::int32_t top);

} // namespace qv::render
