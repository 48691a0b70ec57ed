// Where a graph's parts lie on the page, the two ways to paint a box there, and its pixels kept for later.
#pragma once

#include "graph/model/ControlState.h"
#include "graph/model/selection.h"
#include "render/pipeline.h"

#include <cmath>

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

inline Box legend_box(graph::Graph const& graph) {
    return {static_cast<double>(graph.LegendLeft), static_cast<double>(graph.LegendTop),
            static_cast<double>(graph.LegendWidth), static_cast<double>(graph.LegendHeight)};
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
    return legend_box(graph);
}

inline void fill_box(DrawSurface& surface, Box const& box, Color color) {
    surface.Line({box.left, box.top}, {box.right(), box.bottom()}, LineShape::FilledBox, color);
}

inline void outline_box(DrawSurface& surface, Box const& box, Color color) {
    surface.Line({box.left, box.top}, {box.right(), box.bottom()}, LineShape::Box, color);
}

/// The pixel a place on the page falls into.
inline PixelPoint in_pixels(DrawSurface const& surface, Point point) {
    return {std::floor(point.x / surface.TwipsPerPixelX() + 0.5),
            std::floor(point.y / surface.TwipsPerPixelY() + 0.5)};
}

/// Makes `kept` the size of a box and copies the pixels of `source` there into it.
inline void keep_pixels(DrawSurface& kept, DrawSurface const& source, Box const& box) {
    kept.Move(box.width, box.height);
    kept.SelectClipPath({0, 0, kept.Width(), kept.Height()});
    kept.Cls();
    kept.BitBlt({0, 0}, kept.GetClientRect(), source, in_pixels(source, {box.left, box.top}));
}

} // namespace qv::render
