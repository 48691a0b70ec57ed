// Where a graph's parts lie on the page, and the two ways to paint a box there.
#pragma once

#include "graph/model/ControlState.h"
#include "graph/model/selection.h"
#include "render/pipeline.h"

namespace qv::render {

inline Box frame_box(graph::Graph const& graph) {
    return {static_cast<double>(graph.FrameLeft), static_cast<double>(graph.FrameTop),
            static_cast<double>(graph.FrameWidth), static_cast<double>(graph.FrameHeight)};
}

/// The plot area: inside the frame's borders, as long as the selected axes.
inline Box plot_box(graph::Graph& graph) {
    return {graph.FrameLeft + static_cast<double>(graph.BorderLeft),
            graph.FrameTop + static_cast<double>(graph.BorderTop),
            static_cast<double>(graph::selected_x_axis(graph).AxisLength),
            static_cast<double>(graph::selected_y_axis(graph).AxisLength)};
}

inline Box page_box(graph::ControlState const& state) {
    return {0, 0, static_cast<double>(state.PageWidth), static_cast<double>(state.PageHeight)};
}

/// The rectangle of an area of the current graph.
inline Box area_box(graph::ControlState& state, Area area) {
    if (area == Area::Page) return page_box(state);
    graph::Graph& graph = graph::current_graph(state);
    if (area == Area::GraphFrame) return frame_box(graph);
    if (area == Area::PlotArea) return plot_box(graph);
    return {static_cast<double>(graph.LegendLeft), static_cast<double>(graph.LegendTop),
            static_cast<double>(graph.LegendWidth), static_cast<double>(graph.LegendHeight)};
}

inline void fill_box(DrawSurface& surface, Box const& box, Color color) {
    surface.Line({box.left, box.top}, {box.right(), box.bottom()}, LineShape::FilledBox, color);
}

inline void outline_box(DrawSurface& surface, Box const& box, Color color) {
    surface.Line({box.left, box.top}, {box.right(), box.bottom()}, LineShape::Box, color);
}

} // namespace qv::render
