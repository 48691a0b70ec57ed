#include "render/read_mark.h"

#include "graph/model/selection.h"
#include "render/plot_geometry.h"
#include "scale/mapping.h"

#include <cmath>

namespace qv::render {
namespace {

using graph::ControlState;
using graph::DataSet;
using graph::Graph;

void invert(ControlState& state, graph::ReadMark const& mark) {
    DrawSurface& page = *state.Picture1;
    const graph::RestoreScope drawing(page.state);
    page.state.draw_mode = DrawMode::Invert;
    page.state.draw_style = DrawStyle::Solid;
    page.state.DrawWidth = 1;
    page.SelectClipPath(mark.clip);
    outline_box(page, mark.frame, 0);
}

} // namespace

std::optional<PointBeingRead> point_being_read(ControlState& state) {
    auto const& read = state.read_point;
    if (!read || read->graph < 0 || read->graph >= state.NumGraphs()) return std::nullopt;
    Graph& graph = *at(state.Graphs, read->graph);
    if (!graph.GraphInclude || read->data_set >= graph.NumDataSets()) return std::nullopt;
    DataSet const& set = at(graph.DataSets, read->data_set);
    std::size_t const dropped = set.points.dropped();
    bool const is_there = read->arrival >= dropped && read->arrival - dropped < set.points.size();
    if (set.DataHide || !is_there) return std::nullopt;
    return PointBeingRead{graph, set, read->arrival - dropped};
}

void draw_read_mark(ControlState& state) {
    state.pointing.mark.reset();
    auto const read = point_being_read(state);
    if (!read || read->graph.GraphNotDrawn) return;
    auto& [graph, set, index] = *read;
    const Box plot = plot_box(graph);
    const graph::SelectedAxesScope selection(graph);
    graph.SelectedXAxis = set.xAxisIndex;
    graph.SelectedYAxis = set.yAxisIndex;
    const graph::PointEntry point = set.points.at(index);
    const Point place{scale::x_map(graph, selected_x_axis(graph))(point.X),
                      scale::y_map(graph, selected_y_axis(graph))(point.Y)};
    if (!std::isfinite(place.x) || !std::isfinite(place.y)) return;
    double const reach = state.UnitsPerMmX;
    state.pointing.mark = {{place.x - reach, place.y - reach, 2 * reach, 2 * reach}, plot};
    invert(state, *state.pointing.mark);
}

void erase_read_mark(ControlState& state) {
    if (!state.pointing.mark) return;
    invert(state, *state.pointing.mark);
    state.pointing.mark.reset();
}

} // namespace qv::render
