#include "render/kinds/series_kind.h"

#include "render/plot_geometry.h"

#include <cmath>

namespace qv::render {
namespace {

using document::ControlState;
using document::DataSet;
using document::Graph;

SeriesView view_of(ControlState& state, Graph& graph, std::int16_t index, SeriesScope::Maps maps) {
    DataSet const& set = at(graph.DataSets, index);
    graph.SelectedXAxis = set.xAxisIndex;
    graph.SelectedYAxis = set.yAxisIndex;
    document::Axis const& x = selected_x_axis(graph);
    document::Axis const& y = selected_y_axis(graph);
    bool const as_shown = maps == SeriesScope::Maps::AsShown;
    return {state,
            graph,
            set,
            index,
            as_shown ? scale::shown_map(graph, x) : scale::x_map(graph, x),
            as_shown ? scale::shown_map(graph, y) : scale::y_map(graph, y),
            plot_box(graph)};
}

} // namespace

std::vector<std::string> SeriesKind::legend_texts(DataSet const& set) const {
    return set.DataLegend.empty() ? std::vector<std::string>() : std::vector{set.DataLegend};
}

void SeriesKind::draw_row_sample(SeriesView const& view, DrawSurface& surface, Box const& box,
                                 std::size_t /*row*/) const {
    draw_sample(view, surface, box);
}

bool shows_axes(Graph const& graph) {
    if (graph.GraphPolar) return false;
    bool some_need_none = false;
    for (DataSet const& set : graph.DataSets) {
        if (set.DataHide) continue;
        SeriesKind const* const kind = series_kind(set);
        bool const lies_on_axes = kind ? kind->widens_axes() : set.points.size() > 0 || !set.MathFunc.empty();
        if (lies_on_axes) return true;
        some_need_none |= kind && !kind->lies_on_axes();
    }
    return !some_need_none;
}

bool is_finite(Box const& box) {
    return std::isfinite(box.left + box.top + box.width + box.height);
}

std::optional<std::size_t> SeriesKind::item_at(SeriesView const& view, Point place) const {
    for (std::size_t item = item_count(view.set); item-- > 0;)
        if (const Box box = item_box(view, item); is_finite(box) && holds(box, place)) return item;
    return std::nullopt;
}

std::int16_t SeriesKind::third_axis(Graph const&, DataSet const&) const {
    return -1;
}

void SeriesKind::include_third(DataSet const&, AxisReach const&) const {}

SeriesScope::SeriesScope(ControlState& state, Graph& graph, std::int16_t index, Maps maps)
    : selection_(graph), view_(view_of(state, graph, index, maps)) {}

} // namespace qv::render
