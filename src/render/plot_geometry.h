// Where a graph's parts lie on the page, and the two ways to paint a box there.
#pragma once

#include "document/ControlState.h"
#include "document/selection.h"
#include "render/pipeline.h"

#include <algorithm>

namespace qv::render {

inline Box frame_box(document::Graph const& graph) {
    return {static_cast<double>(graph.FrameLeft), static_cast<double>(graph.FrameTop),
            static_cast<double>(graph.FrameWidth), static_cast<double>(graph.FrameHeight)};
}

/// The plot area: inside the frame's borders, as long as the selected axes.
inline Box plot_box(document::Graph& graph) {
    const document::Margins margins = graph.margins();
    return {graph.FrameLeft + static_cast<double>(margins.left),
            graph.FrameTop + static_cast<double>(margins.top),
            static_cast<double>(document::selected_x_axis(graph).AxisLength),
            static_cast<double>(document::selected_y_axis(graph).AxisLength)};
}

inline Box legend_box(document::Graph const& graph) {
    return {static_cast<double>(graph.LegendLeft), static_cast<double>(graph.LegendTop),
            static_cast<double>(graph.LegendWidth), static_cast<double>(graph.LegendHeight)};
}

inline Box page_box(document::ControlState const& state) {
    return {0, 0, static_cast<double>(state.PageWidth), static_cast<double>(state.PageHeight)};
}

/// Whether a place lies in a box, its edges included.
inline bool holds(Box const& box, Point place) {
    return place.x >= box.left && place.x <= box.right() && place.y >= box.top && place.y <= box.bottom();
}

/// The front-most graph on the page that is `meant`, which is asked for a graph; -1 for none.
template <class Meant>
std::int16_t front_graph(document::ControlState const& state, Meant const& meant) {
    auto const is_meant = [&](std::int16_t index) {
        if (index < 0 || index >= state.NumGraphs()) return false;
        document::Graph& graph = *at(state.Graphs, index);
        return graph.GraphInclude && meant(graph);
    };
    auto const found = std::find_if(state.GraphOrder.rbegin(), state.GraphOrder.rend(), is_meant);
    return found == state.GraphOrder.rend() ? std::int16_t{-1} : *found;
}

/// The front-most graph whose frame holds a place, -1 for none.
inline std::int16_t front_graph_at(document::ControlState const& state, Point place) {
    return front_graph(state, [&](document::Graph& graph) { return holds(frame_box(graph), place); });
}

/// The rectangle of an area of the current graph.
inline Box area_box(document::ControlState& state, Area area) {
    if (area == Area::Page) return page_box(state);
    document::Graph& graph = document::current_graph(state);
    if (area == Area::GraphFrame) return frame_box(graph);
    if (area == Area::PlotArea) return plot_box(graph);
    return legend_box(graph);
}

inline void fill_box(DrawSurface& surface, Box const& box, Color color) {
    surface.Line({box.left, box.top}, {box.right(), box.bottom()}, LineShape::FilledBox, color);
}

/// A line as thick as `inside` at 96 to the inch lies whole within the box's pixels, whatever they are; so a
/// clip to the box does not cut it. A thicker one reaches out by half of what it has more.
inline void outline_box(DrawSurface& surface, Box const& box, Color color, int inside = 1) {
    int const whole = whole_pen(surface.pen_pixels(inside));
    int const before = whole / 2, behind = (whole - 1) / 2;
    double const dx = surface.TwipsPerPixelX(), dy = surface.TwipsPerPixelY();
    surface.Line({box.left + before * dx, box.top + before * dy},
                 {box.right() - behind * dx, box.bottom() - behind * dy}, LineShape::Box, color);
}

/// Where two boxes lie over each other, the nearest line or point of the first where they do not.
inline Box common_part(Box const& one, Box const& other) {
    double const left = std::max(one.left, other.left), top = std::max(one.top, other.top);
    return {left, top, std::max(0.0, std::min(one.right(), other.right()) - left),
            std::max(0.0, std::min(one.bottom(), other.bottom()) - top)};
}

} // namespace qv::render
