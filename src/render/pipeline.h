// The render pipeline: what is drawn, on which surface and in which order when the page is shown anew.
#pragma once

#include "document/ControlState.h"

namespace qv::render {

/// Redraws all graphs (`which` < 0) or only graph `which`, and shows the page. Only the front graph is drawn
/// alone, over the kept page without it, and only while that page is what would be drawn now; else all graphs
/// are. With `legend_on_page` False the page shown stays as it is, and the front graph's legend is drawn on
/// the page without that graph. A refresh asked for from inside an event of a refresh is done once, after it.
void RefreshGraphs(document::ControlState& state, std::int16_t which, bool legend_on_page);
void Refresh(document::ControlState& state);
void RefreshCurrentGraph(document::ControlState& state);

enum class FrontLegend { Drawn, LeftOut };
/// Draws one graph completely, or without a legend that lies in front of its data: each part once, from the
/// back to the front. An index outside the list draws nothing.
void DrawGraph(document::ControlState& state, DrawSurface& surface, std::int16_t index,
               FrontLegend front_legend = FrontLegend::Drawn);

void DrawPageBackground(document::ControlState& state);
/// Border fill and edge, and the plot-area fill of the current graph.
void DrawPlotArea(document::ControlState& state, DrawSurface& surface);

/// The rectangles that drawing can be restricted to.
enum class Area { Page = 0, GraphFrame = 1, PlotArea = 2, LegendTable = 3 };
/// Restricts later drawing to an area of the current graph; the legend table leaves the clip as it was.
void ClipGraphArea(document::ControlState& state, DrawSurface& surface, Area area);

} // namespace qv::render
